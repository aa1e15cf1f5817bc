#pragma once

// Well-formed UTF-8 that is kept exactly as given and compared as a reader would: by Unicode
// canonical equivalence.
//
//   Text composed("caf\u00E9"), decomposed("cafe\u0301");
//   composed == decomposed;                  // true
//   composed.utf8() == decomposed.utf8();    // false: nothing is rewritten
//
// Everything that holds a Text may rely on its being well-formed.

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace PrompterCore {

/// True when both are canonically equivalent. `a` and `b` are well-formed. Equal bytes, and bytes
/// that no normalisation can change, are told apart without normalising; only others have to stay
/// below 2 GB.
[[nodiscard]] bool canonicallyEqual(std::string_view a, std::string_view b);
/// By the code points of the composed forms; weak, since equal texts may differ in bytes.
[[nodiscard]] std::weak_ordering canonicalOrder(std::string_view a, std::string_view b);

/// A string literal, or a pointer to characters that end with a zero. Narrower than what converts
/// to one, so that neither 0 nor null makes a text.
template <class T>
concept CharacterPointer =
    std::is_pointer_v<std::decay_t<T>> && std::convertible_to<T, std::string_view>;

/// Bytes that are known to be well-formed, such as a part of a Text cut between its code points.
/// Refers to them, and compares and hashes as the text of them would.
struct WellFormed {
    std::string_view bytes;

    friend bool operator==(WellFormed a, WellFormed b) {
        return canonicallyEqual(a.bytes, b.bytes);
    }
};

/// A value: cheap to move, ordered, hashable. Two texts that are equal may differ in bytes.
class Text {
public:
    /// The empty text.
    Text() noexcept = default;
    /// The bytes as they are; where they are ill-formed, one U+FFFD for each maximal ill-formed
    /// part. May hold U+0000. O(n) in bytes.
    Text(std::string bytes);       // NOLINT: texts are written as literals and strings
    Text(std::string_view bytes);  // NOLINT
    /// A literal, up to its terminating zero. Stops the program when it is a null pointer.
    template <CharacterPointer Literal>
    Text(Literal&& literal) : Text(untilZero(literal)) {}  // NOLINT
    Text(std::nullptr_t) = delete;
    /// The bytes, which are not looked at.
    explicit Text(WellFormed part) : utf8_(part.bytes) {}

    /// The text of `bytes`. Absent when they are ill-formed.
    [[nodiscard]] static std::optional<Text> fromUtf8(std::string bytes);

    /// The bytes as given.
    [[nodiscard]] const std::string& utf8() const noexcept { return utf8_; }
    [[nodiscard]] bool isEmpty() const noexcept { return utf8_.empty(); }
    /// The text in Unicode normalisation form C.
    [[nodiscard]] Text composed() const;

    friend bool operator==(const Text& a, const Text& b) {
        return canonicallyEqual(a.utf8_, b.utf8_);
    }
    friend std::weak_ordering operator<=>(const Text& a, const Text& b) {
        return canonicalOrder(a.utf8_, b.utf8_);
    }

private:
    static std::string_view untilZero(const char* characters) noexcept;

    std::string utf8_;  // always well-formed
};

}  // namespace PrompterCore

/// Equal texts have equal hashes, whatever their bytes.
template <>
struct std::hash<PrompterCore::WellFormed> {
    std::size_t operator()(PrompterCore::WellFormed text) const;
};

template <>
struct std::hash<PrompterCore::Text> {
    std::size_t operator()(const PrompterCore::Text& text) const {
        return std::hash<PrompterCore::WellFormed>{}({text.utf8()});
    }
};
