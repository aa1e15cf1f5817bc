#pragma once

// The bytes that a fuzzer gives, taken off one after the other. Past their end there are zeros.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>

class Bytes {
public:
    explicit Bytes(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    bool isEmpty() const { return rest_.empty(); }

    std::uint8_t next() {
        if (rest_.empty()) return 0;
        const std::uint8_t byte = rest_.front();
        rest_ = rest_.subspan(1);
        return byte;
    }

    /// The next `count`, or all that are left.
    std::span<const std::uint8_t> take(std::size_t count) {
        const auto taken = rest_.first(std::min(count, rest_.size()));
        rest_ = rest_.subspan(taken.size());
        return taken;
    }

    /// All that are left, which stay.
    std::string text() const { return std::string(rest_.begin(), rest_.end()); }

    /// The bytes up to FF, which goes with them; not more than `limit`, for twins are slow.
    std::string textUpToFF(std::size_t limit) {
        std::string result;
        while (!isEmpty()) {
            const std::uint8_t byte = next();
            if (byte == 0xFF) break;
            if (result.size() < limit) result.push_back(static_cast<char>(byte));
        }
        return result;
    }

    /// A small count, negative for the upper half of the bytes.
    std::int64_t count() { return static_cast<std::int8_t>(next()); }

    /// Around nought in steps of an eighth; the ends of the byte are the odd numbers.
    double number() {
        const auto byte = static_cast<std::int8_t>(next());
        if (byte == 127) return std::numeric_limits<double>::infinity();
        if (byte == -127) return -std::numeric_limits<double>::infinity();
        if (byte == -128) return std::numeric_limits<double>::quiet_NaN();
        return byte / 8.0;
    }

private:
    std::span<const std::uint8_t> rest_;
};
