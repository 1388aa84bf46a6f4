// SPDX-License-Identifier: MIT
// What this process holds of the system: memory, heap, handles, and objects of windows and of drawing. Windows answers
// three questions for that, to which Wine answers 0; so each is counted one by one in the tables that both have.

#pragma once

#include <vector>

#include "soak/Flatness.h"

namespace soak {

/// What is allocated from all heaps of this process.
struct HeapCounts {
    double blocks = 0;
    double bytes = 0;
};
HeapCounts CountHeap();

/// What `ReadCounts` counts, in its order, with the growth that counts as flat:
/// private memory may grow by what the system's allocators take at once, drawing objects by what it has in caches, and
/// everything else by next to nothing.
std::vector<Quantity> CountedQuantities();

/// The places of some of them.
constexpr std::size_t privateBytes = 0;
constexpr std::size_t heapBytes = 1;
constexpr std::size_t heapBlocks = 2;

/// A count that fails is -1.
std::vector<double> ReadCounts();

}  // namespace soak
