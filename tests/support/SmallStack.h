// SPDX-License-Identifier: MIT
// Runs a test on a small stack, to show that nothing recurses along a tree.

#pragma once

#include <cstddef>
#include <functional>

namespace reka::test {

constexpr std::size_t smallStackBytes = 256 * 1024;

/// Runs `function` on a thread with a stack of `smallStackBytes` and waits for its end.
void RunOnSmallStack(const std::function<void()>& function);

}  // namespace reka::test
