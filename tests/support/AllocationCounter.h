// SPDX-License-Identifier: MIT
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
    std::size_t Bytes() const;    // their sizes, added up
    std::ptrdiff_t Left() const;  // of what was allocated since, how much isn't freed; negative if older things were

private:
    std::size_t countBefore;
    std::size_t bytesBefore;
    std::ptrdiff_t leftBefore;
};

/// Makes the `n`-th allocation of this thread from here on throw std::bad_alloc, counted from 1, and as many as `count`
/// in all. The ones after them succeed again. 0 takes an earlier call back. Off Windows calloc counts too, and returns
/// null.
void FailAllocation(std::size_t n, std::size_t count = 1);

/// While it lives, the allocations of this thread belong to a fake, not to what is tested: none of them fails or
/// counts.
class CSparedAllocations {
public:
    CSparedAllocations();
    ~CSparedAllocations();
    CSparedAllocations(const CSparedAllocations&) = delete;
    CSparedAllocations& operator=(const CSparedAllocations&) = delete;
};

/// What each allocation function calls: counts an allocation towards those to fail. True if it is one of them.
bool CountAllocation();

/// Whether the first allocation chosen by `FailAllocation` is still to come.
bool IsAllocationToFail();

}  // namespace reka::test
