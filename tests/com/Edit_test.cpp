// The editor of the registered module: its dialog opens out of the module's own resources.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <commctrl.h>

#include "Host.h"

namespace host {
namespace {

/// What somebody else sees of the edit shell, which is then closed by its frame.
struct Seen {
    LRESULT tabs = 0;
    int pages = 0;
    LRESULT icon = 0;
};

BOOL CALLBACK TakeShell(HWND window, LPARAM found) {
    wchar_t title[50] = {};
    GetWindowTextW(window, title, 50);
    if (IsWindowVisible(window) && lstrcmpW(title, L"Edit:") == 0) *reinterpret_cast<HWND*>(found) = window;
    return TRUE;
}

HWND FindShell(DWORD thread) {
    HWND found = nullptr;
    EnumThreadWindows(thread, TakeShell, reinterpret_cast<LPARAM>(&found));
    return found;
}

Seen LookAndClose(DWORD thread, const std::atomic<bool>& isOver) {
    Seen seen;
    HWND shell = nullptr;
    while (!isOver && !(shell = FindShell(thread))) Sleep(20);
    if (!shell) return seen;
    seen.tabs = SendMessageW(GetDlgItem(shell, 201), TCM_GETITEMCOUNT, 0, 0);
    seen.icon = SendMessageW(shell, WM_GETICON, ICON_BIG, 0);
    for (HWND child = GetWindow(shell, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[20] = {};
        GetClassNameW(child, name, 20);
        if (lstrcmpW(name, L"#32770") == 0) ++seen.pages;
    }
    PostMessageW(shell, WM_CLOSE, 0, 0);
    return seen;
}

TEST(Edit, OpensTheEditorOfAPackage) {
    const CApartment apartment;
    const auto maker = MakeManager<reka::ICapeThermoNewPropertyPackage>();
    ASSERT_TRUE(maker);
    CRef<IDispatch> made;
    ASSERT_EQ(maker->NewPropertyPackage(made.Receive()), S_OK);
    const auto package = made.As<reka::ICapeUtilities>();
    for (int round = 0; round < 2; ++round) {
        Seen seen;
        std::atomic<bool> isOver = false;
        const DWORD thread = GetCurrentThreadId();
        std::thread user([&] { seen = LookAndClose(thread, isOver); });
        const HRESULT result = package->Edit();
        isOver = true;
        user.join();
        EXPECT_EQ(result, S_FALSE);
        EXPECT_EQ(seen.tabs, 3);
        EXPECT_EQ(seen.pages, 3);
        EXPECT_NE(seen.icon, 0);
    }
}

}  // namespace
}  // namespace host
