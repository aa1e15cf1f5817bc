#pragma once

// A script built in separate passes over a list of characters: lines, runs, the runs left when the
// heading lines are dropped, tokens, and the merge of words and headings. Every count looks back
// over the characters again.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "PrompterCore/script/Script.h"
#include "tests/reference/PlainSpokenForms.h"

namespace PrompterCore::Plain {

struct PlainScript {
    CharacterList characters;
    std::vector<ScriptToken> tokens;
    std::vector<ScriptWord> words;
    std::vector<ScriptHeading> headings;
    std::vector<std::int64_t> utf16Offsets;
};

struct Stretch {
    std::size_t from, to;
    std::string title;  // of a heading line

    CharacterRange range() const {
        return CharacterRange(static_cast<std::int64_t>(from), static_cast<std::int64_t>(to));
    }
};

inline std::vector<Stretch> headingLines(const CharacterList& characters) {
    std::vector<Stretch> headings;
    for (std::size_t from = 0, to = 0; from <= characters.size(); from = to + 1) {
        for (to = from; to < characters.size() && !isLineBreak(characters[to]);)
            ++to;
        CharacterList line(characters.begin() + static_cast<std::ptrdiff_t>(from),
                           characters.begin() + static_cast<std::ptrdiff_t>(to));
        while (!line.empty() && (line.front() == " " || line.front() == "\t"))
            line.erase(line.begin());
        if (line.size() < 2 || line[0] != "#" || line[1] != " ") continue;
        line.erase(line.begin(), line.begin() + 2);
        while (!line.empty() && isWhiteSpace(line.front()))
            line.erase(line.begin());
        while (!line.empty() && isWhiteSpace(line.back()))
            line.pop_back();
        if (!line.empty()) headings.push_back({from, to, joined(line, 0, line.size())});
    }
    return headings;
}

inline std::vector<Stretch> runsOutside(const CharacterList& characters,
                                        const std::vector<Stretch>& headings) {
    std::vector<Stretch> runs;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (isWhiteSpace(characters[i])) continue;
        if (runs.empty() || runs.back().to != i) runs.push_back({i, i, ""});
        runs.back().to = i + 1;
    }
    std::erase_if(runs, [&](const Stretch& run) {
        return std::any_of(headings.begin(), headings.end(), [&](const Stretch& line) {
            return line.from <= run.from && run.from < line.to;
        });
    });
    return runs;
}

inline std::int64_t indentOf(const CharacterList& characters, std::size_t start) {
    std::int64_t columns = 0;
    for (std::size_t i = start; i > 0 && !isLineBreak(characters[i - 1]); --i) {
        if (!isWhiteSpace(characters[i - 1])) return 0;
        columns += characters[i - 1] == "\t" ? 4 : 1;
    }
    return columns;
}

inline std::int64_t breaksBetween(const CharacterList& characters, std::size_t from,
                                  std::size_t to) {
    std::int64_t breaks = 0;
    for (std::size_t i = from; i < to; ++i)
        breaks += isLineBreak(characters[i]) ? 1 : 0;
    return breaks;
}

inline PlainScript build(const Unicode& unicode, const std::string& text) {
    PlainScript script;
    const CharacterList& characters = script.characters = unicode.characters(text);
    const std::vector<Stretch> headings = headingLines(characters);
    const std::vector<Stretch> runs = runsOutside(characters, headings);

    for (const Stretch& run : runs) {
        for (const std::string& form : spokenForms(unicode, joined(characters, run.from, run.to))) {
            script.tokens.push_back({.index = signedCount(script.tokens.size()),
                                     .text = form,
                                     .sourceRange = run.range()});
        }
    }

    std::size_t previousEnd = 0, nextHeading = 0, claimed = 0;
    const auto placeHeading = [&] {
        const Stretch& line = headings[nextHeading++];
        script.headings.push_back(
            {.title = line.title,
             .sourceRange = line.range(),
             .wordIndex = signedCount(script.words.size()),
             .firstToken = signedCount(claimed),
             .breaksBefore = breaksBetween(characters, previousEnd, line.from)});
        previousEnd = line.to;
    };
    for (const Stretch& run : runs) {
        while (nextHeading < headings.size() && headings[nextHeading].from < run.from)
            placeHeading();
        const std::size_t firstToken = claimed;
        while (claimed < script.tokens.size() && script.tokens[claimed].sourceRange == run.range())
            ++claimed;
        script.words.push_back(
            {.text = joined(characters, run.from, run.to),
             .tokenRange = TokenRange(signedCount(firstToken), signedCount(claimed)),
             .breaksBefore = breaksBetween(characters, previousEnd, run.from),
             .indent = indentOf(characters, run.from)});
        previousEnd = run.to;
    }
    while (nextHeading < headings.size())
        placeHeading();

    script.utf16Offsets = {0};
    for (const std::string& character : characters) {
        script.utf16Offsets.push_back(script.utf16Offsets.back() +
                                      icu::UnicodeString::fromUTF8(character).length());
    }
    return script;
}

}  // namespace PrompterCore::Plain
