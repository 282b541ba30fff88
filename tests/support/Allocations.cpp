#include "support/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace wendmark::test {

namespace {

thread_local constinit Allocations allocations;

void* allocate(std::size_t size) noexcept {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): what the operators below stand on
    void* const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr)
        return nullptr;
    const std::size_t taken = malloc_usable_size(block);
    ++allocations.count;
    allocations.bytes += taken;
    allocations.held += static_cast<std::ptrdiff_t>(taken);
    allocations.peak = std::max(allocations.peak, allocations.held);
    return block;
}

void* allocateOrThrow(std::size_t size) {
    void* const block = allocate(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void release(void* block) noexcept {
    allocations.held -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    std::free(block); // NOLINT(cppcoreguidelines-no-malloc): as above
}

} // namespace

Allocations Allocations::now() {
    return allocations;
}

void Allocations::forgetPeak() {
    allocations.peak = allocations.held;
}

} // namespace wendmark::test

// All that are not for over-aligned types: the sanitizers bring their own, which would not fit to ours.

void* operator new(std::size_t size) {
    return wendmark::test::allocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return wendmark::test::allocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return wendmark::test::allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return wendmark::test::allocate(size);
}

void operator delete(void* block) noexcept {
    wendmark::test::release(block);
}

void operator delete[](void* block) noexcept {
    wendmark::test::release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    wendmark::test::release(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    wendmark::test::release(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    wendmark::test::release(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    wendmark::test::release(block);
}
