#pragma once

// Prompt lines measured in terminal columns.

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/text/Columns.h"

namespace Varnelle {

/// A breaker for lines of `width` columns.
[[nodiscard]] inline PrompterCore::LineBreaker columnBreaker(double width) {
    return {.width = width, .measure = [](std::string_view text) {
                return static_cast<double>(PrompterCore::columnsOf(text));
            }};
}

}  // namespace Varnelle
