#pragma once

// Where each character of a text starts, in UTF-16 code units: a list with access in O(1).
//
//   Utf16Offsets offsets(Characters(Text("a\U0001F600b")));
//   offsets[2];                                           // 3: the emoji takes two units
//   offsets == std::vector<std::int64_t>{0, 1, 3, 4};     // true
//   offsets.lastAtOrBefore(2);                            // 1: the emoji, at offset 2

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/Characters.h"

namespace PrompterCore {

/// One entry more than there are characters; the last is the length of the text. A text whose
/// characters are one unit each, as nearly all are, costs no table. It reads and compares like the
/// plain list, and goes where one is wanted.
class Utf16Offsets {
public:
    class Iterator;
    using value_type = std::int64_t;
    using iterator = Iterator;
    using const_iterator = Iterator;

    /// Of the empty text: the one entry 0.
    Utf16Offsets() = default;
    /// O(n).
    explicit Utf16Offsets(const Characters& characters);

    // What was moved from is that of the empty text, never a count without its table.
    Utf16Offsets(const Utf16Offsets&) = default;
    Utf16Offsets(Utf16Offsets&& other) noexcept
        : characters_(std::exchange(other.characters_, 0)),
          offsets_(std::exchange(other.offsets_, {})) {}
    Utf16Offsets& operator=(Utf16Offsets other) noexcept {
        characters_ = other.characters_;
        offsets_ = std::move(other.offsets_);
        return *this;
    }
    ~Utf16Offsets() = default;

    /// The number of entries: one more than there are characters.
    [[nodiscard]] std::size_t size() const noexcept {
        return static_cast<std::size_t>(characters_) + 1;
    }
    /// Stops the program unless 0 <= `index` < size().
    [[nodiscard]] std::int64_t operator[](std::int64_t index) const noexcept {
        require(0 <= index && index <= characters_,
                "an offset's index is that of a character or the end");
        return offsets_.empty() ? index : offsets_[static_cast<std::size_t>(index)];
    }
    /// The length of the text.
    [[nodiscard]] std::int64_t back() const noexcept { return (*this)[characters_]; }
    /// The index of the last entry that is not above `offset`; 0 when there is none. O(log n).
    [[nodiscard]] std::int64_t lastAtOrBefore(std::int64_t offset) const noexcept;

    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] Iterator end() const noexcept;
    /// The entries. O(n).
    operator std::vector<std::int64_t>() const;  // NOLINT: it stands for the list

    friend bool operator==(const Utf16Offsets&, const Utf16Offsets&) = default;
    friend bool operator==(const Utf16Offsets& offsets, const std::vector<std::int64_t>& list);

private:
    std::int64_t characters_ = 0;
    std::vector<std::int64_t> offsets_;  // none when every character is one unit
};

/// Forward over Utf16Offsets, which it must not outlive.
class Utf16Offsets::Iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;
    using value_type = std::int64_t;
    using difference_type = std::ptrdiff_t;
    using reference = std::int64_t;
    using pointer = void;

    Iterator() = default;
    Iterator(const Utf16Offsets* offsets, std::int64_t index) noexcept
        : offsets_(offsets), index_(index) {}

    std::int64_t operator*() const noexcept { return (*offsets_)[index_]; }
    Iterator& operator++() noexcept {
        ++index_;
        return *this;
    }
    Iterator operator++(int) noexcept { return {offsets_, index_++}; }
    friend bool operator==(Iterator a, Iterator b) noexcept { return a.index_ == b.index_; }

private:
    const Utf16Offsets* offsets_ = nullptr;
    std::int64_t index_ = 0;
};

inline Utf16Offsets::Iterator Utf16Offsets::begin() const noexcept { return {this, 0}; }
inline Utf16Offsets::Iterator Utf16Offsets::end() const noexcept { return {this, characters_ + 1}; }

}  // namespace PrompterCore
