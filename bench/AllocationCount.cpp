#include "bench/AllocationCount.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {
std::size_t allocationCount = 0;
}  // namespace

namespace reka::bench {

std::size_t AllocationCount() {
    return allocationCount;
}

MemoryUse UsedMemory() {
    return {allocationCount, mallinfo2().uordblks};
}

}  // namespace reka::bench

void* operator new(std::size_t size) {
    ++allocationCount;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
