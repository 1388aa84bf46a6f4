// SPDX-License-Identifier: MIT
// Lets each allocation of a method fail in turn, of the heap, of the C library and of automation. The stand-in's
// strings and arrays can be made to fail, which the system's own can't.

#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>

#include "platform/Automation.h"
#include "support/AllocationCounter.h"

namespace reka::test {

inline int automationAllocationsLeft = 0;  // until one fails; 0: none does

inline void* AllocateUntilTold(std::size_t size) {
    if (automationAllocationsLeft > 0 && --automationAllocationsLeft == 0) return nullptr;
    return std::malloc(size);
}

/// Fails the n-th automation allocation of `method`, and after that the n-th of the heap, for n from 1 on until the
/// method gets by with fewer. `prepare` runs before each try; `check` is told the result and whether an allocation
/// failed.
template <class Prepare, class Method, class Check>
void ForEachFailure(Prepare&& prepare, Method&& method, Check&& check) {
    int failures = 0;
    automationAllocate = AllocateUntilTold;
    for (bool isReached = true; isReached; ++failures) {
        prepare();
        automationAllocationsLeft = failures + 1;
        const HRESULT result = method();
        isReached = automationAllocationsLeft == 0;
        automationAllocationsLeft = 0;
        check(result, isReached);
    }
    automationAllocate = nullptr;
    EXPECT_GT(failures, 1);
    failures = 0;
    for (bool isReached = true; isReached; ++failures) {
        prepare();
        FailAllocation(static_cast<std::size_t>(failures) + 1);
        const HRESULT result = method();
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        check(result, isReached);
    }
    EXPECT_GT(failures, 1);
}

inline void* AllocateWithTheOthers(std::size_t size) {
    return CountAllocation() ? nullptr : std::malloc(size);
}

/// Fails the n-th allocation of `method`, of whichever kind, for n from 1 on until the method gets by with fewer: first
/// that one alone, and then all from it on. `prepare` runs before each try; `check` is told the result, whether an
/// allocation failed, and whether it was the only one. The number of tries in which one failed.
template <class Prepare, class Method, class Check>
int ForEachFault(Prepare&& prepare, Method&& method, Check&& check) {
    int faults = 0;
    for (const bool isAlone : {true, false}) {
        for (std::size_t n = 1;; ++n) {
            prepare();
            automationAllocate = AllocateWithTheOthers;
            FailAllocation(n, isAlone ? 1 : static_cast<std::size_t>(-1));
            const auto result = method();
            const bool isReached = !IsAllocationToFail();
            FailAllocation(0);
            automationAllocate = nullptr;
            SCOPED_TRACE("allocation " + std::to_string(n) + (isAlone ? "" : " and all behind it"));
            check(result, isReached, isAlone);
            if (!isReached) break;
            ++faults;
        }
    }
    return faults;
}

}  // namespace reka::test
