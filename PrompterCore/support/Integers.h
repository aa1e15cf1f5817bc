#pragma once

// 64-bit signed arithmetic that never wraps: the checked operations stop the program when the
// result does not fit; the saturating one serves operations that answer every input.
//
//   checkedMultiply(400, 60);                          // 24000
//   saturatingAdd(std::int64_t{1}, std::int64_t{2});   // 3

#include <cstddef>
#include <cstdint>

namespace PrompterCore {

/// The sum. Stops the program unless it fits.
[[nodiscard]] std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept;
/// `a - b`. Stops the program unless it fits.
[[nodiscard]] std::int64_t checkedSubtract(std::int64_t a, std::int64_t b) noexcept;
/// The product. Stops the program unless it fits.
[[nodiscard]] std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) noexcept;

/// The sum, or the nearest end of the 64-bit range where it does not fit.
[[nodiscard]] std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) noexcept;

/// How far `upper` lies above `lower`, which is not above it. Always fits.
[[nodiscard]] constexpr std::uint64_t distanceBetween(std::int64_t lower,
                                                      std::int64_t upper) noexcept {
    return static_cast<std::uint64_t>(upper) - static_cast<std::uint64_t>(lower);
}

/// A container's size as the signed count that positions are compared with.
[[nodiscard]] constexpr std::int64_t signedCount(std::size_t size) noexcept {
    return static_cast<std::int64_t>(size);
}

}  // namespace PrompterCore
