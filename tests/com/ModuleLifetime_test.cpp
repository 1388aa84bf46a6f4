// SPDX-License-Identifier: MIT
// The module loaded and unloaded over and over, and from an odd place: it leaves nothing behind.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "LateCalls.h"
#include "LoadedModule.h"

namespace host {
namespace {

/// Handles of this process, tried one by one: not every system counts them.
int CountHandles() {
    int count = 0;
    for (std::uintptr_t value = 4; value < 0x4000; value += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

/// Has the object tell a member by its name, for which the module loads its type library.
void ExpectNames(IDispatch* object) {
    DISPID member = 0;
    EXPECT_EQ(FindMember(object, L"Terminate", member), S_OK);
}

TEST(Module, LoadsAndGoesAThousandTimes) {
    CoFreeUnusedLibrariesEx(0, 0);
    const std::wstring path = ModulePath();
    ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    int handles = CountHandles();
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_EQ(CountHandles(), handles + 1);  // the count tells something
    CloseHandle(event);
    for (int i = 0; i < 1000; ++i) {
        if (i == 100) handles = CountHandles();  // by now the system has what it keeps for itself
        {
            const CLoadedModule loaded(path);
            {
                const auto manager = loaded.MakeManager();
                ASSERT_TRUE(manager);
                // A call by name has the module keep its type library, which takes long to load.
                if (i % 50 == 0) ExpectNames(manager.Get());
            }
            ASSERT_EQ(loaded.CanUnloadNow(), S_OK);
        }
        ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    }
    EXPECT_EQ(CountHandles(), handles);
}

/// The system's loader of type libraries takes no such path.
TEST(Module, AnswersLateBoundCallsFromALongPath) {
    const std::wstring path = ModulePath();
    wchar_t temporary[MAX_PATH + 1] = {};
    ASSERT_GT(GetTempPathW(MAX_PATH, temporary), 0U);
    const std::wstring top =
        L"\\\\?\\" + std::wstring(temporary) + L"reka-long-" + std::to_wstring(GetCurrentProcessId());
    std::vector<std::wstring> folders = {top};
    while (folders.back().size() < 300) folders.push_back(folders.back() + L"\\" + std::wstring(100, L'x'));
    for (const std::wstring& folder : folders) ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr)) << folder;
    const std::wstring copy = folders.back() + L"\\REKA.dll";
    ASSERT_TRUE(CopyFileW(path.c_str(), copy.c_str(), TRUE));
    {
        const CLoadedModule loaded(copy);
        const auto manager = loaded.MakeManager();
        EXPECT_TRUE(manager);
        if (manager) ExpectNames(manager.Get());
    }
    EXPECT_TRUE(DeleteFileW(copy.c_str()));
    folders.push_back(folders.back() + L"\\data");  // which a manager makes
    for (; !folders.empty(); folders.pop_back()) EXPECT_TRUE(RemoveDirectoryW(folders.back().c_str()));
}

/// What is allocated from all heaps of this process, in bytes.
std::size_t CountHeap() {
    HANDLE heaps[64] = {};
    const DWORD count = GetProcessHeaps(64, heaps);
    EXPECT_LE(count, 64U);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

TEST(Module, LeavesNothingOnTheHeap) {
    CoFreeUnusedLibrariesEx(0, 0);
    const std::wstring path = ModulePath();
    ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    const std::size_t empty = CountHeap();
    const auto block = std::make_unique<char[]>(5000);
    EXPECT_GE(CountHeap(), empty + 5000);  // the count tells something
    std::size_t before = 0;
    constexpr int rounds = 200;
    constexpr int warm = 20;  // by then the system has what it keeps for itself
    for (int i = 0; i < rounds; ++i) {
        if (i == warm) before = CountHeap();
        {
            const CLoadedModule loaded(path);
            ASSERT_TRUE(loaded.MakeManager());
        }
        ASSERT_EQ(GetModuleHandleW(path.c_str()), nullptr);
    }
    EXPECT_LT(CountHeap(), before + (rounds - warm) * sizeof(void*));  // less than the smallest block a load
}

}  // namespace
}  // namespace host
