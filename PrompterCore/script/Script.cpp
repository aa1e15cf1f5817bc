#include "PrompterCore/script/Script.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Trims.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

// Goes through the text line by line. No run of characters crosses a line break, so whether a run
// belongs to a heading is known before its words are made.
class Script::Builder {
public:
    explicit Builder(Text text) {
        contents_.characters = Characters(std::move(text));
        convertOffsets();
        const std::int64_t count = contents_.characters.count();
        for (std::int64_t start = 0; start <= count;) {
            std::int64_t end = start;
            while (end < count && !contents_.characters[end].isLineBreak()) {
                ++end;
            }
            addLine(CharacterRange(start, end));
            ++breaks_;
            start = end + 1;
        }
    }

    Contents take() { return std::move(contents_); }

private:
    void convertOffsets() {
        std::vector<std::int64_t>& offsets = contents_.utf16Offsets;
        offsets.reserve(static_cast<std::size_t>(contents_.characters.count()) + 1);
        std::int64_t offset = 0;
        offsets.push_back(offset);
        for (const Character character : contents_.characters) {
            offset += character.utf16Length();
            offsets.push_back(offset);
        }
    }

    void addLine(CharacterRange line) {
        if (const std::string_view title = headingTitle(line); !title.empty()) {
            contents_.headings.push_back({.title = title,
                                          .sourceRange = line,
                                          .wordIndex = signedCount(contents_.words.size()),
                                          .firstToken = signedCount(contents_.tokens.size()),
                                          .breaksBefore = std::exchange(breaks_, 0)});
            return;
        }
        addWords(line);
    }

    // Empty when the line is no heading.
    std::string_view headingTitle(CharacterRange line) const {
        const Characters& characters = contents_.characters;
        std::int64_t at = line.lower();
        while (at < line.upper() && (characters[at].is(' ') || characters[at].is('\t'))) {
            ++at;
        }
        for (const char sign : ScriptHeadings::marker) {
            if (at == line.upper() || !characters[at].is(sign)) return {};
            ++at;
        }
        return trimmedOfWhiteSpace(characters.slice(CharacterRange(at, line.upper())));
    }

    void addWords(CharacterRange line) {
        const Characters& characters = contents_.characters;
        std::int64_t indent = 0;  // of the line's first word; the others have none
        bool isFirst = true;
        for (std::int64_t at = line.lower(); at < line.upper();) {
            if (const Character blank = characters[at]; blank.isWhiteSpace()) {
                indent += blank.is('\t') ? 4 : 1;
                ++at;
                continue;
            }
            std::int64_t end = at + 1;
            while (end < line.upper() && !characters[end].isWhiteSpace()) {
                ++end;
            }
            addWord(CharacterRange(at, end), isFirst ? indent : 0);
            isFirst = false;
            at = end;
        }
    }

    void addWord(CharacterRange run, std::int64_t indent) {
        const std::string_view written = contents_.characters.slice(run);
        const std::int64_t firstToken = signedCount(contents_.tokens.size());
        forms_.clear();
        appendSpokenForms(written, forms_);
        for (Text& form : forms_) {
            contents_.tokens.push_back({.index = signedCount(contents_.tokens.size()),
                                        .text = std::move(form),
                                        .sourceRange = run});
        }
        contents_.words.push_back(
            {.text = written,
             .tokenRange = TokenRange(firstToken, signedCount(contents_.tokens.size())),
             .breaksBefore = std::exchange(breaks_, 0),
             .indent = indent});
    }

    Contents contents_;
    std::int64_t breaks_ = 0;  // line breaks since the last word or heading line
    std::vector<Text> forms_;  // of the word being added; kept for its memory
};

Script::Script(Text text)
    : contents_(std::make_shared<const Contents>(Builder(std::move(text)).take())) {}

std::optional<ScriptToken> Script::tokenAt(std::int64_t index) const {
    if (index < 0 || index >= signedCount(tokens().size())) return std::nullopt;
    return tokens()[static_cast<std::size_t>(index)];
}

std::int64_t Script::utf16OffsetOfCharacter(std::int64_t index) const noexcept {
    return utf16Offsets()[static_cast<std::size_t>(
        std::clamp<std::int64_t>(index, 0, characters().count()))];
}

std::int64_t Script::characterIndexAtUTF16(std::int64_t offset) const noexcept {
    const auto after = std::upper_bound(utf16Offsets().begin(), utf16Offsets().end(), offset);
    return std::max<std::int64_t>(std::distance(utf16Offsets().begin(), after) - 1, 0);
}

std::optional<Utf16Range> Script::utf16RangeOfToken(std::int64_t index) const noexcept {
    if (index < 0 || index >= signedCount(tokens().size())) return std::nullopt;
    const CharacterRange source = tokens()[static_cast<std::size_t>(index)].sourceRange;
    const std::int64_t location = utf16OffsetOfCharacter(source.lower());
    return Utf16Range{.location = location,
                      .length = utf16OffsetOfCharacter(source.upper()) - location};
}

std::optional<std::int64_t> Script::tokenAtUTF16(std::int64_t offset) const noexcept {
    if (tokens().empty() || offset < 0) return std::nullopt;
    const auto start = [this](const ScriptToken& token) {
        return utf16OffsetOfCharacter(token.sourceRange.lower());
    };
    // Behind the last token that starts at or before the offset.
    const auto after = std::ranges::upper_bound(tokens(), offset, {}, start);
    if (after == tokens().begin()) return 0;
    // Back to the first token of that word.
    const auto first =
        std::ranges::lower_bound(tokens().begin(), after, start(*(after - 1)), {}, start);
    return first->index;
}

bool operator==(const Script& a, const Script& b) {
    return a.contents_ == b.contents_ || *a.contents_ == *b.contents_;
}

}  // namespace PrompterCore
