#include "PrompterCore/support/Integers.h"

#include <limits>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t sum = 0;
    require(!__builtin_add_overflow(a, b, &sum), "a sum fits 64 bits");
    return sum;
}

std::int64_t checkedSubtract(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t difference = 0;
    require(!__builtin_sub_overflow(a, b, &difference), "a difference fits 64 bits");
    return difference;
}

std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t product = 0;
    require(!__builtin_mul_overflow(a, b, &product), "a product fits 64 bits");
    return product;
}

std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) noexcept {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(a, b, &sum)) return sum;
    return a < 0 ? std::numeric_limits<std::int64_t>::min()
                 : std::numeric_limits<std::int64_t>::max();
}

}  // namespace PrompterCore
