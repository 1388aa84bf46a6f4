// SPDX-License-Identifier: MIT
// A window is looked for until it is there: a dialog that never comes ends the run with a failure rather than standing
// still.

#include "soak/win/Dialogs.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "soak/win/Labels.h"

namespace soak {

std::atomic<int> closedLabels = 0;

namespace {

constexpr ULONGLONG longestWait = 30000;  // ms

struct Search {
    const wchar_t* title;
    HWND found;
};

BOOL CALLBACK TakeDialog(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    wchar_t title[100] = {};
    InternalGetWindowText(window, title, 100);  // which doesn't wait for the other thread
    if (lstrcmpW(title, search.title) == 0 && IsWindowVisible(window) && IsWindowEnabled(window)) search.found = window;
    return TRUE;
}

BOOL CALLBACK PrintWindow(HWND window, LPARAM) {
    wchar_t text[500] = {};
    InternalGetWindowText(window, text, 500);  // the other thread may be the one that stands still
    if (IsWindowVisible(window))
        std::fprintf(stderr, "  %ls%ls\n", text, IsWindowEnabled(window) ? L"" : L" (disabled)");
    if (GetParent(window) == nullptr || GetWindow(window, GW_OWNER)) EnumChildWindows(window, PrintWindow, 0);
    return TRUE;
}

template <class Condition>
bool WaitUntil(Condition&& condition) {
    const ULONGLONG end = GetTickCount64() + longestWait;
    while (!condition()) {
        if (GetTickCount64() > end) return false;
        Sleep(1);
    }
    return true;
}

}  // namespace

HWND CDialogs::Find(const wchar_t* title) const {
    Search search = {title, nullptr};
    EnumThreadWindows(thread, TakeDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND CDialogs::WaitFor(const wchar_t* title) const {
    HWND dialog = nullptr;
    WaitUntil([&] { return (dialog = Find(title)) != nullptr; });
    return dialog;
}

bool CDialogs::Press(const wchar_t* title, int button) const {
    const HWND dialog = WaitFor(title);
    return dialog && PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button),
                                  reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

bool CDialogs::Close(const wchar_t* title, int button) const {
    const HWND dialog = WaitFor(title);
    closedLabels += CountLabels(dialog);
    return Press(title, button) && WaitUntil([&] { return !IsWindow(dialog); });
}

bool ShowAndWork(const std::function<bool()>& show, const std::function<bool(const CDialogs&)>& work) {
    const DWORD thread = GetCurrentThreadId();
    const CDialogs dialogs(thread);
    std::thread worker([&] {
        if (work(dialogs)) return;
        // The call that shows the dialogs would never come back.
        std::fputs("A dialog did not do what was expected within half a minute. There are these:\n", stderr);
        EnumThreadWindows(thread, PrintWindow, 0);
        std::fflush(nullptr);
        std::_Exit(2);
    });
    const bool isShown = show();
    worker.join();
    return isShown;
}

}  // namespace soak
