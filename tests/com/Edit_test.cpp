// SPDX-License-Identifier: MIT
// The editor of the registered module: its dialog opens out of the module's own resources.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include <commctrl.h>

#include "Host.h"

namespace host {
namespace {

/// What somebody else sees of a dialog, which is then closed by its frame.
struct Seen {
    int controls = 0;
    int pages = 0;
    LRESULT tabs = 0;
    LRESULT icon = 0;
    std::wstring libraryOfButtons;
};

struct Search {
    const wchar_t* title;
    HWND found;
};

BOOL CALLBACK TakeDialog(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    wchar_t title[50] = {};
    GetWindowTextW(window, title, 50);
    if (IsWindowVisible(window) && lstrcmpW(title, search.title) == 0) search.found = window;
    return TRUE;
}

/// The file, in small letters, that the class of a window comes from.
std::wstring LibraryOf(HWND window) {
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(GetClassLongPtrW(window, GCLP_WNDPROC)), &library);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(library, path, MAX_PATH);
    CharLowerW(path);
    return path;
}

HWND FindDialog(DWORD thread, const wchar_t* title) {
    Search search = {title, nullptr};
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

Seen LookAndClose(DWORD thread, const wchar_t* title, const std::atomic<bool>& isOver) {
    Seen seen;
    HWND dialog = nullptr;
    while (!isOver && !(dialog = FindDialog(thread, title))) Sleep(20);
    if (!dialog) return seen;
    const HWND tabs = GetDlgItem(dialog, 201);
    seen.tabs = tabs ? SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0) : 0;
    seen.libraryOfButtons = LibraryOf(GetDlgItem(dialog, IDOK));
    seen.icon = SendMessageW(dialog, WM_GETICON, ICON_BIG, 0);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t name[20] = {};
        GetClassNameW(child, name, 20);
        if (IsWindowVisible(child)) ++seen.controls;  // there are labels that only screen readers read
        if (lstrcmpW(name, L"#32770") == 0) ++seen.pages;
    }
    PostMessageW(dialog, WM_CLOSE, 0, 0);
    return seen;
}

/// `Edit` of the object while somebody looks at the dialog of that title.
Seen Edit(reka::ICapeUtilities& object, const wchar_t* title, HRESULT expected) {
    Seen seen;
    std::atomic<bool> isOver = false;
    const DWORD thread = GetCurrentThreadId();
    std::thread user([&] { seen = LookAndClose(thread, title, isOver); });
    const HRESULT result = object.Edit();
    isOver = true;
    user.join();
    EXPECT_EQ(result, expected);
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
        const Seen seen = Edit(*package.Get(), L"Edit:", S_FALSE);
        EXPECT_EQ(seen.tabs, 3);
        // Version 6 of the common controls has them; this program has no manifest that asks for it.
        EXPECT_TRUE(seen.libraryOfButtons.ends_with(L"\\comctl32.dll"));
        EXPECT_EQ(seen.pages, 3);
        EXPECT_NE(seen.icon, 0);
    }
}

TEST(Edit, OpensTheDialogOfTheManager) {
    const CApartment apartment;
    const auto manager = MakeManager<reka::ICapeUtilities>();
    ASSERT_TRUE(manager);
    const Seen seen = Edit(*manager.Get(), L"REKA Reaction Numerics:", S_OK);
    EXPECT_EQ(seen.controls, 5);
    EXPECT_EQ(seen.pages, 0);
    EXPECT_NE(seen.icon, 0);
}

}  // namespace
}  // namespace host
