// SPDX-License-Identifier: MIT
// The second half of the laws.

#include "bench/laws/Law.h"

namespace reka::bench {

std::span<const Law> SecondLaws() {
    return {};
}

}  // namespace reka::bench
