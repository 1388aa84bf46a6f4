// SPDX-License-Identifier: MIT
// The program's own operators new and delete. The count costs an addition and is always on; the bytes cost a question
// to the heap for each block, so they are followed only from the moment that a program says so, before its first
// measurement of memory.

#include "bench/AllocationCount.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {
std::size_t allocationCount = 0;
bool isMeasuring = false;
std::size_t bytesInUse = 0;

void Free(void* memory) {
    if (isMeasuring && memory) bytesInUse -= malloc_usable_size(memory) + sizeof(std::size_t);
    std::free(memory);
}
}  // namespace

namespace reka::bench {

std::size_t AllocationCount() {
    return allocationCount;
}

void StartMeasuringMemory() {
    isMeasuring = true;
}

MemoryUse UsedMemory() {
    return {allocationCount, bytesInUse};
}

}  // namespace reka::bench

void* operator new(std::size_t size) {
    ++allocationCount;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    if (isMeasuring) bytesInUse += malloc_usable_size(memory) + sizeof(std::size_t);  // with the heap's own word
    return memory;
}

// No more alignment is asked for than every block of malloc has.
void* operator new(std::size_t size, std::align_val_t) {
    return operator new(size);
}

void operator delete(void* memory) noexcept {
    Free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    Free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    Free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
