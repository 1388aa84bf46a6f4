// How often the program has asked for memory.

#pragma once

#include <cstddef>

namespace reka::bench {

std::size_t AllocationCount();

}  // namespace reka::bench
