#pragma once

// A field without a default: left out of a record's initialiser, the record does not compile.
//
//   struct Config { Required<double> rate; };
//   Config config{.rate = 2.5};   // Config{} is refused by the compiler

#include <utility>

namespace PrompterCore {

/// Holds a T that somebody chose. Reads and assigns like the T itself.
template <class T>
class Required {
public:
    constexpr Required(T value) : value_(std::move(value)) {}  // NOLINT: reads like the T
    constexpr operator const T&() const noexcept { return value_; }

private:
    T value_;
};

/// The values' own ==. Deduced, so that comparing with a plain value goes by the plain values.
template <class T>
[[nodiscard]] constexpr bool operator==(const Required<T>& a, const Required<T>& b) {
    return static_cast<const T&>(a) == static_cast<const T&>(b);
}

}  // namespace PrompterCore
