// SPDX-License-Identifier: MIT
// A mutex that somebody else has made and lets others only wait for, as programs with the rights of an administrator
// do. Wine gives it to all whole, so it is on Windows that these tests hold the way round.

#include <gtest/gtest.h>
#include <windows.h>
// after windows.h
#include <sddl.h>

#include <thread>

#include "platform/NamedMutex.h"

namespace reka::test {
namespace {

/// Makes a mutex of that name with rights that allow all others, and its maker, no more than the text says.
HANDLE MakeMutex(const wchar_t* name, const wchar_t* rights) {
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, nullptr, FALSE};
    EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1,
                                                                     &attributes.lpSecurityDescriptor, nullptr));
    const HANDLE made = CreateMutexW(&attributes, FALSE, name);
    EXPECT_TRUE(made);
    LocalFree(attributes.lpSecurityDescriptor);
    return made;
}

TEST(MutexOfOthers, IsTakenAndGivenBack) {
    const wchar_t name[] = L"RekaTestMutexOfOthers";
    const HANDLE made = MakeMutex(name, L"D:(A;;0x100001;;;WD)");  // waiting and giving back
    const auto mutex = SystemMutexes().Open(u"RekaTestMutexOfOthers");
    ASSERT_NE(mutex, nullptr);
    DWORD whileHeld = WAIT_FAILED;
    EXPECT_TRUE(mutex->Wait());
    std::thread([&] { whileHeld = WaitForSingleObject(made, 0); }).join();
    EXPECT_EQ(whileHeld, static_cast<DWORD>(WAIT_TIMEOUT));
    mutex->Release();
    EXPECT_EQ(WaitForSingleObject(made, 0), WAIT_OBJECT_0);
    ReleaseMutex(made);
    CloseHandle(made);
}

TEST(MutexOfOthers, IsTakenWithTheRightToWaitAlone) {
    const HANDLE made = MakeMutex(L"RekaTestMutexToWaitFor", L"D:(A;;0x100000;;;WD)");
    const auto mutex = SystemMutexes().Open(u"RekaTestMutexToWaitFor");
    ASSERT_NE(mutex, nullptr);
    EXPECT_TRUE(mutex->Wait());
    CloseHandle(made);
}

}  // namespace
}  // namespace reka::test
