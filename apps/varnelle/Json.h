#pragma once

// The library's records as JSON: an object with the record's own field names in their order, a
// range as [lower, upper], an absent value as null, a list as a list.

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/support/IndexRange.h"
#include "host/HeardWords.h"
#include "host/ReadThrough.h"

namespace Varnelle {

using Json = nlohmann::ordered_json;

[[nodiscard]] Json asJson(const Text& text);
[[nodiscard]] Json asJson(const ScriptToken& token);
[[nodiscard]] Json asJson(const ScriptWord& word);
[[nodiscard]] Json asJson(const ScriptHeading& heading);
[[nodiscard]] Json asJson(const ScriptChapter& chapter);
[[nodiscard]] Json asJson(const PromptLine& line);
[[nodiscard]] Json asJson(const HeardWord& word);

template <class Unit>
[[nodiscard]] Json asJson(const IndexRange<Unit>& range) {
    return Json::array({range.lower(), range.upper()});
}

template <class Value>
[[nodiscard]] Json asJson(const std::optional<Value>& value) {
    return value ? asJson(*value) : Json();
}

template <class List>
[[nodiscard]] Json listAsJson(const List& list) {
    Json result = Json::array();
    for (const auto& entry : list) {
        result.push_back(asJson(entry));
    }
    return result;
}

}  // namespace Varnelle
