#pragma once

// Whole files and the texts in them; standard input goes under the name "-".
//
//   Text script = readText("talk.txt");   // throws NoInput("talk.txt: No such file or directory")

#include <string>
#include <string_view>

#include "PrompterCore/text/Text.h"
#include "host/InputFile.h"

namespace Varnelle {

/// The bytes of the file `name`, or of standard input for "-". Throws NoInput when it is missing,
/// a directory or unreadable.
[[nodiscard]] std::string readFile(const std::string& name);

/// A text, and whether its file begins with a byte order mark, which is no part of it.
struct FileText {
    static constexpr std::string_view mark = "\uFEFF";

    PrompterCore::Text text;
    bool hasMark = false;
};

/// What the file `name` holds. Throws NoInput as readFile does, and BadData with the line of the
/// first byte that is not UTF-8.
[[nodiscard]] FileText readFileText(const std::string& name);

/// The text alone.
[[nodiscard]] PrompterCore::Text readText(const std::string& name);

}  // namespace Varnelle
