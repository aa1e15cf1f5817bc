#pragma once

// What a script test looks at most: the texts of its tokens, words and headings, and their bytes.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/SpokenForms.h"
#include "tests/support/Printing.h"

namespace PrompterCore::Tests {

using Strings = std::vector<std::string>;

inline Strings bytes(const std::vector<Text>& texts) {
    Strings result;
    for (const Text& text : texts)
        result.push_back(text.utf8());
    return result;
}

/// The spoken forms of one word, as bytes: what is folded is composed.
inline Strings spoken(std::string_view word) { return bytes(spokenForms(Text(word))); }

inline Strings tokenTexts(const Script& script) {
    Strings result;
    for (const ScriptToken& token : script.tokens())
        result.push_back(token.text.utf8());
    return result;
}

inline Strings wordTexts(const Script& script) {
    Strings result;
    for (const ScriptWord& word : script.words())
        result.push_back(word.text.utf8());
    return result;
}

inline Strings titles(const Script& script) {
    Strings result;
    for (const ScriptHeading& heading : script.headings())
        result.push_back(heading.title.utf8());
    return result;
}

}  // namespace PrompterCore::Tests
