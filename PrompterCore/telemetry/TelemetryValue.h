#pragma once

// What an event's property may hold: never a free text, never an exact number.
//
//   TelemetryValue::bucket("under_1").visit([](const TelemetryValue::Bucket&) { ... }, ...);

#include <utility>
#include <variant>

#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A yes or no, a name out of a closed set, or a coarse range.
class TelemetryValue {
public:
    /// A yes or no.
    struct Flag {
        bool isSet = false;  ///< yes
        friend bool operator==(const Flag&, const Flag&) = default;
    };
    /// One of a closed set of names.
    struct Name {
        Text name;  ///< a raw value, such as that of a TelemetryTier
        friend bool operator==(const Name&, const Name&) = default;
    };
    /// A coarse range.
    struct Bucket {
        Text label;  ///< one of TelemetryBucket's
        friend bool operator==(const Bucket&, const Bucket&) = default;
    };

    /// A Flag.
    [[nodiscard]] static TelemetryValue flag(bool isSet) { return TelemetryValue(Flag{isSet}); }
    /// A Name.
    [[nodiscard]] static TelemetryValue name(Text name) {
        return TelemetryValue(Name{std::move(name)});
    }
    /// A Bucket.
    [[nodiscard]] static TelemetryValue bucket(Text label) {
        return TelemetryValue(Bucket{std::move(label)});
    }

    /// Calls the one of `cases` that takes what this is: a Flag, a Name or a Bucket.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, value_);
    }

    friend bool operator==(const TelemetryValue&, const TelemetryValue&) = default;

private:
    using Value = std::variant<Flag, Name, Bucket>;
    explicit TelemetryValue(Value value) : value_(std::move(value)) {}

    Value value_;
};

}  // namespace PrompterCore
