// SPDX-License-Identifier: MIT
// What becomes of a system mutex whose holder ended.

#include <gtest/gtest.h>

#include <thread>

#include "platform/NamedMutex.h"

namespace reka::test {
namespace {

TEST(AbandonedMutex, IsTakenLikeAnyOther) {
    const auto mutex = SystemMutexes().Open(u"RekaTestMutexAbandoned");
    ASSERT_NE(mutex, nullptr);
    std::thread([&] { EXPECT_TRUE(mutex->Wait()); }).join();
    EXPECT_TRUE(mutex->Wait());
    mutex->Release();
}

}  // namespace
}  // namespace reka::test
