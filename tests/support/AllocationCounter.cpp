#include "tests/support/AllocationCounter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local std::int64_t allocations = 0;

void* countedOrThrow(void* memory) {
    if (memory == nullptr) throw std::bad_alloc();
    ++allocations;
    return memory;
}

}  // namespace

namespace PrompterCore::Tests {

std::int64_t allocationsSoFar() noexcept { return allocations; }

}  // namespace PrompterCore::Tests

// The array forms go through these by default. The nothrow ones would too, but a sanitizer has its
// own, which our delete must not meet: std::stable_sort takes its memory from them.
void* operator new(std::size_t size) { return countedOrThrow(std::malloc(size == 0 ? 1 : size)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto align = static_cast<std::size_t>(alignment);
    const std::size_t rounded = (size + align - 1) / align * align;
    return countedOrThrow(std::aligned_alloc(align, rounded == 0 ? align : rounded));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) ++allocations;
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
