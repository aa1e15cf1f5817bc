#pragma once

// Whose customs a text follows: a value over a locale's identifier.
//
//   Locale();                                // the user's own
//   Locale::fromIdentifier("de_DE");         // German as in Germany
//   Locale::fixed();                         // nobody's: for what is stored and read back

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace PrompterCore {

/// Two are equal when their identifiers are.
class Locale {
public:
    /// The user's own, as the system said when the program first asked.
    Locale();
    /// The locale of "en_US", "en-US" and the like; one that no data exist for follows its nearest
    /// relative. Absent where the text is no identifier.
    [[nodiscard]] static std::optional<Locale> fromIdentifier(std::string_view identifier);
    /// en_US_POSIX, which never changes: ASCII digits, the Gregorian calendar.
    [[nodiscard]] static Locale fixed();

    /// In its canonical form, such as "en_US".
    [[nodiscard]] const std::string& identifier() const noexcept { return identifier_; }

    friend bool operator==(const Locale&, const Locale&) = default;

private:
    explicit Locale(std::string identifier) noexcept : identifier_(std::move(identifier)) {}

    std::string identifier_;
};

}  // namespace PrompterCore
