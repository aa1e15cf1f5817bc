#pragma once

// Lines broken step by step: the pending words are a list, and every candidate is built from the
// whole list again.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"

namespace PrompterCore::Plain {

inline std::string joinedBySpaces(const std::vector<ScriptWord>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : " ") + words[i].text.utf8();
    }
    return text;
}

inline std::vector<PromptLine> linesFor(const Script& script, double width,
                                        const std::function<double(std::string_view)>& measure) {
    std::vector<PromptLine> lines;
    std::vector<ScriptWord> pending;
    std::int64_t first = 0, next = 0;  // words: of the line, and the one to come
    std::int64_t indent = script.words().empty() ? 0 : script.words()[0].indent;

    const auto flush = [&] {
        if (!pending.empty()) {
            const TokenRange tokens(pending.front().tokenRange.lower(),
                                    pending.back().tokenRange.upper());
            lines.push_back({joinedBySpaces(pending), tokens, WordRange(first, next), indent, {}});
        }
        pending.clear();
        first = next;
    };
    const auto addBlanks = [&](std::int64_t count, std::int64_t token) {
        for (; count > 0; --count) {
            lines.push_back({"", TokenRange(token, token), WordRange(next, next), 0, {}});
        }
    };
    const auto placeHeadings = [&](std::int64_t word) {
        for (const ScriptHeading& heading : script.headings()) {
            if (heading.wordIndex != word) continue;
            const bool wasPending = !pending.empty();
            flush();
            if (!wasPending && !lines.empty()) {
                addBlanks(heading.breaksBefore - 1, heading.firstToken);
            }
            lines.push_back({"", TokenRange(heading.firstToken, heading.firstToken),
                             WordRange(heading.wordIndex, heading.wordIndex), 0, heading.title});
        }
    };

    for (const ScriptWord& word : script.words()) {
        placeHeadings(next);
        if (word.breaksBefore >= 1) {
            flush();
            addBlanks(word.breaksBefore - 1, word.tokenRange.lower());
            indent = word.indent;
        }
        std::vector<ScriptWord> candidate = pending;
        candidate.push_back(word);
        if (!pending.empty() && width < measure(std::string(static_cast<std::size_t>(indent), ' ') +
                                                joinedBySpaces(candidate))) {
            flush();
        }
        pending.push_back(word);
        ++next;
    }
    flush();
    placeHeadings(next);
    return lines;
}

}  // namespace PrompterCore::Plain
