#pragma once

// A value of whatever kind a client of the network attaches to an event: kept as it is, asked only
// whether it is a text.
//
//   PropertyValue("3.2.1").text();    // "3.2.1"
//   PropertyValue(3.2).text();        // null: a number

#include <concepts>
#include <cstdint>
#include <map>
#include <utility>
#include <variant>
#include <vector>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value of one of several types. Values of different types are never equal: 1 is not 1.0.
class PropertyValue {
public:
    /// Several, in order.
    using List = std::vector<PropertyValue>;

    /// Nothing.
    PropertyValue() noexcept = default;
    /// A boolean and nothing that merely converts to one, as a literal would.
    template <std::same_as<bool> Boolean>
    PropertyValue(Boolean value) : value_(value) {}  // NOLINT: properties are written as literals
    /// A number.
    template <std::signed_integral Integer>
    PropertyValue(Integer value) : value_(std::int64_t{value}) {}  // NOLINT
    PropertyValue(double value) : value_(value) {}                 // NOLINT
    PropertyValue(List value) : value_(std::move(value)) {}        // NOLINT
    /// A text, or whatever one is made of.
    template <std::convertible_to<Text> Written>
    PropertyValue(Written&& text) : value_(Text(std::forward<Written>(text))) {}  // NOLINT

    /// The text. Null when the value is of another type.
    [[nodiscard]] const Text* text() const noexcept { return std::get_if<Text>(&value_); }

    /// Calls the one of `cases` that takes what this is: a std::monostate, bool, std::int64_t,
    /// double, Text or List.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, value_);
    }

    friend bool operator==(const PropertyValue&, const PropertyValue&) = default;

private:
    std::variant<std::monostate, bool, std::int64_t, double, Text, List> value_;
};

/// A key is compared as a whole, with its case.
using PropertyMap = std::map<Text, PropertyValue>;

}  // namespace PrompterCore
