// SPDX-License-Identifier: MIT
// Lets calloc fail when it is the turn of an allocation. The linker leads the calls of all that is linked into the
// tests here (--wrap), and only those: the sanitizers keep their own.

#include <cstddef>

#include "support/AllocationCounter.h"

extern "C" {

// The linker's names.
void* __real_calloc(std::size_t count, std::size_t size) noexcept;  // NOLINT(bugprone-reserved-identifier)

void* __wrap_calloc(std::size_t count, std::size_t size) noexcept {  // NOLINT(bugprone-reserved-identifier)
    return reka::test::CountAllocation() ? nullptr : __real_calloc(count, size);
}

}  // extern "C"
