#pragma once

// The user-perceived characters of a text (extended grapheme clusters) as a random-access list.
//
//   Characters characters(Text("e\u0301a"));
//   characters.count();              // 2
//   characters[0].utf8();            // "e\u0301"
//   characters[0] == Character("\u00E9");   // true: canonically equivalent

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

/// One user-perceived character: a view into bytes that outlive it. Its class is that of its first
/// code point.
class Character {
public:
    /// `cluster` is one extended grapheme cluster of a well-formed text. Stops the program unless
    /// it has a byte.
    constexpr explicit Character(std::string_view cluster) noexcept : utf8_(cluster) {
        require(!cluster.empty(), "a character is not empty");
    }

    [[nodiscard]] constexpr std::string_view utf8() const noexcept { return utf8_; }
    [[nodiscard]] constexpr char32_t firstCodePoint() const noexcept {
        std::size_t at = 0;
        return Utf8::next(utf8_, at);
    }
    /// UTF-16 code units.
    [[nodiscard]] constexpr std::int64_t utf16Length() const noexcept {
        std::size_t end = 0;
        const char32_t first = Utf8::next(utf8_, end);
        // Nearly every character has one code point.
        if (end == utf8_.size()) return first < 0x10000 ? 1 : 2;
        return Utf8::utf16Length(utf8_);
    }
    /// White_Space.
    [[nodiscard]] constexpr bool isWhiteSpace() const noexcept {
        return CharacterClasses::isWhiteSpace(firstCodePoint());
    }
    /// CR LF is one line break.
    [[nodiscard]] constexpr bool isLineBreak() const noexcept {
        return CharacterClasses::isLineBreak(firstCodePoint());
    }
    [[nodiscard]] bool isLetter() const noexcept;   ///< Alphabetic
    [[nodiscard]] bool isNumeric() const noexcept;  ///< Numeric_Type other than None
    /// True for exactly this ASCII character, nothing combined with it.
    [[nodiscard]] constexpr bool is(char ascii) const noexcept {
        return utf8_.size() == 1 && utf8_.front() == ascii;
    }

    /// Canonical equivalence.
    friend bool operator==(Character a, Character b) { return canonicallyEqual(a.utf8_, b.utf8_); }

private:
    std::string_view utf8_;
};

/// Owns its text. O(1) access; a text of ASCII without CR LF costs no table.
class Characters {
public:
    /// No characters.
    Characters() = default;
    /// Splits `text`. O(n).
    explicit Characters(Text text);

    [[nodiscard]] const Text& text() const noexcept { return text_; }
    [[nodiscard]] std::int64_t count() const noexcept {
        return signedCount(starts_.empty() ? text_.utf8().size() : starts_.size() - 1);
    }
    [[nodiscard]] bool isEmpty() const noexcept { return text_.isEmpty(); }
    /// Stops the program unless 0 <= `index` < count().
    [[nodiscard]] Character operator[](std::int64_t index) const noexcept {
        require(0 <= index && index < count(), "a character index lies within the text");
        const std::size_t start = startOf(index);
        return Character(std::string_view(text_.utf8()).substr(start, startOf(index + 1) - start));
    }
    /// The UTF-8 of a stretch. Stops the program unless it lies within 0 ... count().
    [[nodiscard]] std::string_view slice(CharacterRange range) const noexcept;
    /// The byte at which character `index` starts; the text's size for count().
    /// Stops the program unless 0 <= `index` <= count().
    [[nodiscard]] std::size_t byteOffset(std::int64_t index) const noexcept {
        require(0 <= index && index <= count(), "a character index lies within the text");
        return startOf(index);
    }
    /// The bytes at which all characters start, and the text's size; none when every character is
    /// one byte. For loops over whole texts.
    [[nodiscard]] std::span<const std::size_t> startTable() const noexcept { return starts_; }

    class Iterator;
    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] Iterator end() const noexcept;

    /// Character by character, canonically: the same as comparing the texts.
    friend bool operator==(const Characters& a, const Characters& b) { return a.text_ == b.text_; }

private:
    [[nodiscard]] std::size_t startOf(std::int64_t index) const noexcept {
        const auto i = static_cast<std::size_t>(index);
        return starts_.empty() ? i : starts_[i];
    }

    Text text_;
    std::vector<std::size_t> starts_;  // count() + 1 entries; none when every character is one byte
};

/// Random access over Characters, which it must not outlive.
class Characters::Iterator {
public:
    using iterator_concept = std::random_access_iterator_tag;
    using iterator_category = std::input_iterator_tag;
    using value_type = Character;
    using difference_type = std::int64_t;
    using reference = Character;
    using pointer = void;

    Iterator() = default;
    Iterator(const Characters* characters, std::int64_t index) noexcept
        : characters_(characters), index_(index) {}

    Character operator*() const noexcept { return (*characters_)[index_]; }
    Character operator[](difference_type n) const noexcept { return (*characters_)[index_ + n]; }
    Iterator& operator++() noexcept { return *this += 1; }
    Iterator& operator--() noexcept { return *this += -1; }
    Iterator operator++(int) noexcept {
        Iterator old = *this;
        ++*this;
        return old;
    }
    Iterator operator--(int) noexcept {
        Iterator old = *this;
        --*this;
        return old;
    }
    Iterator& operator+=(difference_type n) noexcept {
        index_ += n;
        return *this;
    }
    Iterator& operator-=(difference_type n) noexcept { return *this += -n; }
    friend Iterator operator+(Iterator i, difference_type n) noexcept { return i += n; }
    friend Iterator operator+(difference_type n, Iterator i) noexcept { return i += n; }
    friend Iterator operator-(Iterator i, difference_type n) noexcept { return i -= n; }
    friend difference_type operator-(Iterator a, Iterator b) noexcept {
        return a.index_ - b.index_;
    }
    friend bool operator==(Iterator a, Iterator b) noexcept { return a.index_ == b.index_; }
    friend auto operator<=>(Iterator a, Iterator b) noexcept { return a.index_ <=> b.index_; }

private:
    const Characters* characters_ = nullptr;
    std::int64_t index_ = 0;
};

inline Characters::Iterator Characters::begin() const noexcept { return {this, 0}; }
inline Characters::Iterator Characters::end() const noexcept { return {this, count()}; }

}  // namespace PrompterCore
