#pragma once

// A script's text and all that is derived from it: characters, spoken tokens, written words,
// heading lines, and the way between characters and UTF-16 offsets.
//
// Units: a character index counts user-perceived characters (Script::characters), a UTF-16 offset
// counts UTF-16 code units of the text, a token or word index counts Script::tokens or
// Script::words. Ranges are half-open.
//
//   Script script("# Intro\nDon't stop.");
//   script.headings()[0].title;     // "Intro"
//   script.words()[0].text;         // "Don't"
//   script.tokens()[0].text;        // "do"
//   script.tokenAtUTF16(9);         // 0: the word at that offset begins with token 0

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "PrompterCore/script/Utf16Offsets.h"
#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One spoken word: what a recogniser is expected to hear.
struct ScriptToken {
    std::int64_t index = 0;      ///< its own place in Script::tokens
    Text text;                   ///< the spoken form
    CharacterRange sourceRange;  ///< the whole written word it comes from, punctuation included;
                                 ///< the same for all tokens of one word

    friend bool operator==(const ScriptToken&, const ScriptToken&) = default;
};

/// One written word outside the heading lines: a run of characters that are not white space.
struct ScriptWord {
    Text text;              ///< as written
    TokenRange tokenRange;  ///< its tokens; empty for one that is not spoken, such as a dash
    std::int64_t breaksBefore = 0;  ///< line breaks since the previous word or heading line (or the
                                    ///< start): 0 goes on, 1 is a new line, 2 or more a paragraph
    std::int64_t indent = 0;        ///< columns before the first word of a line, a tab counting 4;
                                    ///< 0 for every other word

    friend bool operator==(const ScriptWord&, const ScriptWord&) = default;
};

/// One heading line.
struct ScriptHeading {
    Text title;                   ///< what follows the marker, without white space around it
    CharacterRange sourceRange;   ///< the whole line, without its line break
    std::int64_t wordIndex = 0;   ///< of the first word after it; words().size() when none follows
    std::int64_t firstToken = 0;  ///< of the first token after it; tokens().size() likewise
    std::int64_t breaksBefore = 0;  ///< line breaks since the previous word or heading line

    friend bool operator==(const ScriptHeading&, const ScriptHeading&) = default;
};

/// A stretch of the text in UTF-16 code units.
struct Utf16Range {
    std::int64_t location = 0;  ///< code units before it
    std::int64_t length = 0;    ///< code units

    friend bool operator==(const Utf16Range&, const Utf16Range&) = default;
};

/// An immutable value. Copies share what was built: a copy is one reference count, and any thread
/// may read it.
class Script {
public:
    /// Builds everything; any text makes a script, the empty one included. O(n).
    explicit Script(Text text);

    // Only the copies are declared, so that moving copies too: what was moved from is still a
    // script.
    Script(const Script&) noexcept = default;
    Script& operator=(const Script&) noexcept = default;
    ~Script() = default;

    /// The text as given.
    [[nodiscard]] const Text& text() const noexcept { return contents_->characters.text(); }
    /// The text's user-perceived characters.
    [[nodiscard]] const Characters& characters() const noexcept { return contents_->characters; }
    /// All tokens of all words, in text order.
    [[nodiscard]] const std::vector<ScriptToken>& tokens() const noexcept {
        return contents_->tokens;
    }
    /// All words outside heading lines, in text order.
    [[nodiscard]] const std::vector<ScriptWord>& words() const noexcept { return contents_->words; }
    /// The words that begin a line of the text, by index: the first one, and each behind a line
    /// break.
    [[nodiscard]] const std::vector<std::int64_t>& lineFirstWords() const noexcept {
        return contents_->lineFirstWords;
    }
    /// All heading lines, in text order.
    [[nodiscard]] const std::vector<ScriptHeading>& headings() const noexcept {
        return contents_->headings;
    }
    /// Where each character starts; one entry more than there are characters, the last the length
    /// of the text.
    [[nodiscard]] const Utf16Offsets& utf16Offsets() const noexcept {
        return contents_->utf16Offsets;
    }

    /// True when nothing is spoken: a script of headings or of punctuation is empty too.
    [[nodiscard]] bool isEmpty() const noexcept { return tokens().empty(); }

    /// Absent when there is no such token.
    [[nodiscard]] std::optional<ScriptToken> tokenAt(std::int64_t index) const;
    /// Where a character starts; `index` is taken as the nearest of 0 ... characters().count().
    [[nodiscard]] std::int64_t utf16OffsetOfCharacter(std::int64_t index) const noexcept;
    /// The last character that starts at or before `offset`: for an offset inside a character that
    /// character, for one at or past the end characters().count(), for a negative one 0.
    /// O(log n).
    [[nodiscard]] std::int64_t characterIndexAtUTF16(std::int64_t offset) const noexcept;
    /// The whole written word that token `index` comes from. Absent when there is no such token.
    [[nodiscard]] std::optional<Utf16Range> utf16RangeOfToken(std::int64_t index) const noexcept;
    /// The first token of the word at `offset`, or of the last spoken word before it; token 0 for
    /// an offset before the first. Absent when there are no tokens or `offset` is negative.
    /// O(log n).
    [[nodiscard]] std::optional<std::int64_t> tokenAtUTF16(std::int64_t offset) const noexcept;

    /// Field by field. Texts that are canonically equivalent but have other UTF-16 offsets make
    /// different scripts.
    friend bool operator==(const Script& a, const Script& b);

private:
    struct Contents {
        Characters characters;
        std::vector<ScriptToken> tokens;
        std::vector<ScriptWord> words;
        std::vector<std::int64_t> lineFirstWords;  // a display asks for line numbers on every frame
        std::vector<ScriptHeading> headings;
        Utf16Offsets utf16Offsets;

        friend bool operator==(const Contents&, const Contents&) = default;
    };
    class Builder;

    std::shared_ptr<const Contents> contents_;  // never null
};

}  // namespace PrompterCore
