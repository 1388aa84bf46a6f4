// SPDX-License-Identifier: MIT
// The global operators new and delete of the tests, on top of malloc, so that the address sanitizer sees every block.

#include "support/AllocationCounter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace reka::test {

namespace {

thread_local std::size_t allocationCount = 0;
thread_local std::size_t allocationBytes = 0;
thread_local std::ptrdiff_t allocationsLeft = 0;
thread_local std::size_t allocationsUntilFailure = 0;  // 0 for none to fail
thread_local std::size_t failuresLeft = 0;             // once the first has failed
thread_local int sparings = 0;

void* Allocate(std::size_t size) noexcept {
    if (CountAllocation()) return nullptr;
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block) {
        ++allocationCount;
        allocationBytes += size;
        ++allocationsLeft;
    }
    return block;
}

void* AllocateOrThrow(std::size_t size) {
    void* const block = Allocate(size);
    if (!block) throw std::bad_alloc();
    return block;
}

void Free(void* block) noexcept {
    if (!block) return;
    --allocationsLeft;
    std::free(block);
}

}  // namespace

CAllocationCounter::CAllocationCounter()
    : countBefore(allocationCount), bytesBefore(allocationBytes), leftBefore(allocationsLeft) {}

std::size_t CAllocationCounter::Count() const {
    return allocationCount - countBefore;
}

std::size_t CAllocationCounter::Bytes() const {
    return allocationBytes - bytesBefore;
}

std::ptrdiff_t CAllocationCounter::Left() const {
    return allocationsLeft - leftBefore;
}

void FailAllocation(std::size_t n, std::size_t count) {
    allocationsUntilFailure = n;
    failuresLeft = n == 0 ? 0 : count - 1;
}

CSparedAllocations::CSparedAllocations() {
    ++sparings;
}

CSparedAllocations::~CSparedAllocations() {
    --sparings;
}

bool CountAllocation() {
    if (sparings > 0) return false;
    if (allocationsUntilFailure != 0) return --allocationsUntilFailure == 0;
    if (failuresLeft == 0) return false;
    --failuresLeft;
    return true;
}

bool IsAllocationToFail() {
    return allocationsUntilFailure != 0;
}

}  // namespace reka::test

void* operator new(std::size_t size) {
    return reka::test::AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return reka::test::AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return reka::test::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return reka::test::Allocate(size);
}
// As the standard library's memory resources call it, with no more alignment than every block of malloc has.
void* operator new(std::size_t size, std::align_val_t alignment) {
    if (static_cast<std::size_t>(alignment) > alignof(std::max_align_t)) throw std::bad_alloc();
    return reka::test::AllocateOrThrow(size);
}
void operator delete(void* block, std::align_val_t) noexcept {
    reka::test::Free(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    reka::test::Free(block);
}
void operator delete(void* block) noexcept {
    reka::test::Free(block);
}
void operator delete[](void* block) noexcept {
    reka::test::Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    reka::test::Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    reka::test::Free(block);
}
