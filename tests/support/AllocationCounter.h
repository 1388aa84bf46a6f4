// Watches what a thread takes from the heap by operator new, and lets an allocation of its own choice fail. The tests
// replace the global operators for that.

#pragma once

#include <cstddef>

namespace reka::test {

/// Counts the allocations that this thread makes from here on.
class CAllocationCounter {
public:
    CAllocationCounter();
    std::size_t Count() const;    // allocations since this was made
    std::ptrdiff_t Left() const;  // of what was allocated since, how much isn't freed; negative if older things were

private:
    std::size_t countBefore;
    std::ptrdiff_t leftBefore;
};

/// Makes the `n`-th allocation of this thread from here on throw std::bad_alloc, counted from 1. The ones after it
/// succeed again. 0 takes an earlier call back.
void FailAllocation(std::size_t n);

/// Whether the allocation chosen by `FailAllocation` is still to come.
bool IsAllocationToFail();

}  // namespace reka::test
