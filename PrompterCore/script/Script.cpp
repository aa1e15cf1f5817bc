#include "PrompterCore/script/Script.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Trims.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

// How many runs of visible bytes there are: the number of words, as near as can be told without
// looking at characters.
std::size_t estimatedWordCount(std::string_view bytes) noexcept {
    const auto isBlank = [](char byte) { return static_cast<unsigned char>(byte) <= ' '; };
    std::uint32_t count = 1;  // narrow, so that many bytes are counted at once
    for (std::size_t i = 1; i < bytes.size(); ++i)
        count += std::uint32_t{isBlank(bytes[i - 1])} & std::uint32_t{!isBlank(bytes[i])};
    return count;
}

// What an ASCII byte is; what a lead byte's character may be.
enum class Kind : std::uint8_t { visible, blank, unknown };

constexpr std::array<Kind, 256> kinds = [] {
    std::array<Kind, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        const bool isBlank = CharacterClasses::isWhiteSpace(static_cast<char32_t>(c));
        table[c] = c >= 0x80 ? Kind::unknown : isBlank ? Kind::blank : Kind::visible;
    }
    return table;
}();

// The characters of a text by their first code points, unchecked, for the loops over all of them.
class FirstCodePoints {
public:
    explicit FirstCodePoints(const Characters& characters)
        : bytes_(characters.text().utf8()),
          starts_(characters.startTable().empty() ? nullptr : characters.startTable().data()),
          count_(characters.count()) {}

    std::int64_t count() const noexcept { return count_; }
    std::string_view slice(CharacterRange range) const noexcept {
        return bytes_.substr(start(range.lower()), start(range.upper()) - start(range.lower()));
    }
    // CR LF is no tab, no sign and no space: what is asked for here has one code point.
    bool is(std::int64_t index, char ascii) const noexcept {
        return lead(index) == ascii && start(index + 1) - start(index) == 1;
    }
    bool isWhiteSpace(std::int64_t index) const noexcept {
        const Kind kind = kinds[static_cast<unsigned char>(lead(index))];
        return kind == Kind::unknown ? CharacterClasses::isWhiteSpace(codePoint(index))
                                     : kind == Kind::blank;
    }
    // The first white space behind `index`, or the end of the text.
    std::int64_t runEnd(std::int64_t index) const noexcept {
        std::int64_t end = index + 1;
        if (starts_ == nullptr) {
            const char* const bytes = bytes_.data();
            while (end < count_ && kinds[static_cast<unsigned char>(bytes[end])] == Kind::visible)
                ++end;
            return end;
        }
        while (end < count_ && !isWhiteSpace(end))
            ++end;
        return end;
    }
    bool isLineBreak(std::int64_t index) const noexcept {
        return CharacterClasses::isLineBreak(codePoint(index));
    }

private:
    std::size_t start(std::int64_t index) const noexcept {
        const auto i = static_cast<std::size_t>(index);
        return starts_ == nullptr ? i : starts_[i];
    }
    char lead(std::int64_t index) const noexcept { return bytes_[start(index)]; }
    char32_t codePoint(std::int64_t index) const noexcept {
        std::size_t at = start(index);
        return Utf8::next(bytes_, at);
    }

    std::string_view bytes_;
    const std::size_t* starts_;  // null when every character is one byte
    std::int64_t count_;
};

// Becomes the record that `make` gives in the very place where the list wants it: to move a record
// there costs as much as to make it.
template <class Make>
struct InPlace {
    const Make& make;
    operator std::invoke_result_t<const Make&>() const { return make(); }  // NOLINT
};

template <class Record, class Make>
void addInPlace(std::vector<Record>& records, const Make& make) {
    records.emplace_back(InPlace<Make>{make});
}

}  // namespace

// Goes through the text once, line by line. No run of characters crosses a line break, so whether a
// run belongs to a heading is known before its words are made.
class Script::Builder {
public:
    explicit Builder(Text text)
        : contents_{.characters = Characters(std::move(text)),
                    .tokens = {},
                    .words = {},
                    .lineFirstWords = {},
                    .headings = {},
                    .utf16Offsets = {}},
          characters_(contents_.characters) {
        contents_.utf16Offsets = Utf16Offsets(contents_.characters);
        const std::size_t words = estimatedWordCount(contents_.characters.text().utf8());
        contents_.words.reserve(words);
        contents_.tokens.reserve(words + words / 8);  // contractions and numbers are several
        for (std::int64_t at = 0; at < characters_.count(); ++at, ++breaks_) {
            at = afterHeading(at).value_or(at);
            at = afterWords(at);
        }
    }

    Contents take() { return std::move(contents_); }

private:
    // Adds the heading whose line starts at `start`, and gives the line's end. Absent when the line
    // is no heading.
    std::optional<std::int64_t> afterHeading(std::int64_t start) {
        std::int64_t at = start;
        while (at < characters_.count() && (characters_.is(at, ' ') || characters_.is(at, '\t'))) {
            ++at;
        }
        for (const char sign : ScriptHeadings::marker) {
            if (at == characters_.count() || !characters_.is(at, sign)) return std::nullopt;
            ++at;
        }
        std::int64_t end = at;
        while (end < characters_.count() && !characters_.isLineBreak(end))
            ++end;
        const std::string_view title =
            trimmedOfWhiteSpace(characters_.slice(CharacterRange(at, end)));
        if (title.empty()) return std::nullopt;
        contents_.headings.push_back({.title = Text(WellFormed{title}),
                                      .sourceRange = CharacterRange(start, end),
                                      .wordIndex = signedCount(contents_.words.size()),
                                      .firstToken = signedCount(contents_.tokens.size()),
                                      .breaksBefore = std::exchange(breaks_, 0)});
        return end;
    }

    // Adds the words from `start` to the end of the line, which is given.
    std::int64_t afterWords(std::int64_t start) {
        std::int64_t indent = 0;  // of the line's first word; the others have none
        bool isFirst = true;
        std::int64_t at = start;
        while (at < characters_.count()) {
            if (!characters_.isWhiteSpace(at)) {
                const std::int64_t end = characters_.runEnd(at);
                addWord(CharacterRange(at, end), isFirst ? indent : 0);
                isFirst = false;
                at = end;
            } else if (characters_.isLineBreak(at)) {
                break;
            } else {
                indent += characters_.is(at, '\t') ? 4 : 1;
                ++at;
            }
        }
        return at;
    }

    void addWord(CharacterRange run, std::int64_t indent) {
        const std::string_view written = characters_.slice(run);
        std::vector<ScriptToken>& tokens = contents_.tokens;
        const std::int64_t firstToken = signedCount(tokens.size());
        const auto addToken = [&tokens, run](std::string_view form) {
            addInPlace(tokens, [&] {
                return ScriptToken{.index = signedCount(tokens.size()),
                                   .text = Text(WellFormed{form}),
                                   .sourceRange = run};
            });
        };
        takeSpokenForms(written, WordTaker(addToken));
        const std::int64_t word = signedCount(contents_.words.size());
        if (word == 0 || breaks_ >= 1) contents_.lineFirstWords.push_back(word);
        addInPlace(contents_.words, [&] {
            return ScriptWord{.text = Text(WellFormed{written}),
                              .tokenRange = TokenRange(firstToken, signedCount(tokens.size())),
                              .breaksBefore = std::exchange(breaks_, 0),
                              .indent = indent};
        });
    }

    Contents contents_;
    FirstCodePoints characters_;  // of contents_, whose bytes stay where they are
    std::int64_t breaks_ = 0;     // line breaks since the last word or heading line
};

Script::Script(Text text)
    : contents_(std::make_shared<const Contents>(Builder(std::move(text)).take())) {}

std::optional<ScriptToken> Script::tokenAt(std::int64_t index) const {
    if (index < 0 || index >= signedCount(tokens().size())) return std::nullopt;
    return tokens()[static_cast<std::size_t>(index)];
}

std::int64_t Script::utf16OffsetOfCharacter(std::int64_t index) const noexcept {
    return utf16Offsets()[std::clamp<std::int64_t>(index, 0, characters().count())];
}

std::int64_t Script::characterIndexAtUTF16(std::int64_t offset) const noexcept {
    return utf16Offsets().lastAtOrBefore(offset);
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
