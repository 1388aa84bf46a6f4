// SPDX-License-Identifier: MIT
// The system's own mutexes.

#include "platform/NamedMutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace reka::test {
namespace {

// Whether another thread gets the mutex of that name within a moment, while this one does `whileWaiting`.
template <class Action>
bool IsTakenElsewhereBefore(const char16_t* name, Action&& release) {
    std::atomic<bool> isTaken = false;
    std::thread other([&] {
        const auto mutex = SystemMutexes().Open(name);
        const CNamedMutexLock lock(*mutex);
        isTaken = lock.IsHeld();
    });
    for (int i = 0; i < 100 && !isTaken; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const bool wasTaken = isTaken;
    release();
    other.join();
    EXPECT_TRUE(isTaken);
    return wasTaken;
}

TEST(NamedMutex, IsFreeWhenItIsMade) {
    const auto mutex = SystemMutexes().Open(u"RekaTestMutexFree");
    ASSERT_NE(mutex, nullptr);
    EXPECT_TRUE(IsTakenElsewhereBefore(u"RekaTestMutexFree", [] {}));
}

TEST(NamedMutex, KeepsOthersOutUntilItIsReleasedAsOftenAsTaken) {
    const auto first = SystemMutexes().Open(u"RekaTestMutexHeld");
    const auto second = SystemMutexes().Open(u"RekaTestMutexHeld");
    ASSERT_TRUE(first->Wait());
    ASSERT_TRUE(second->Wait());  // the thread that holds it doesn't wait
    second->Release();
    EXPECT_FALSE(IsTakenElsewhereBefore(u"RekaTestMutexHeld", [&] { first->Release(); }));
}

TEST(NamedMutex, OfAnotherNameIsAnother) {
    const auto mutex = SystemMutexes().Open(u"RekaTestMutexOne");
    const CNamedMutexLock lock(*mutex);
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_TRUE(IsTakenElsewhereBefore(u"RekaTestMutexTwo", [] {}));
}

TEST(NamedMutex, CanBeMadeAgainAfterItsEnd) {
    for (int i = 0; i < 3; ++i) {
        const auto mutex = SystemMutexes().Open(u"RekaTestMutexAgain");
        const CNamedMutexLock lock(*mutex);
        EXPECT_TRUE(lock.IsHeld());
    }
    EXPECT_TRUE(IsTakenElsewhereBefore(u"RekaTestMutexAgain", [] {}));
}

}  // namespace
}  // namespace reka::test
