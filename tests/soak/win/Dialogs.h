// SPDX-License-Identifier: MIT
// Works the component's dialogs from a second thread by the messages of their buttons: neither keyboard nor mouse,
// which would cost more time than the dialogs do.

#pragma once

#include <windows.h>

#include <atomic>
#include <functional>

namespace soak {

constexpr wchar_t shellTitle[] = L"Edit:";
constexpr wchar_t storeTitle[] = L"Store reaction package template:";
constexpr wchar_t overwriteTitle[] = L"Store template:";

/// The labels of all dialogs that `CDialogs::Close` has closed.
extern std::atomic<int> closedLabels;

/// A dialog of the thread that `ShowAndWork` runs on. Each waits for half a minute at most, and gives false then.
class CDialogs {
public:
    explicit CDialogs(DWORD of) : thread(of) {}

    /// Waits for the dialog of that title, and presses one of its buttons.
    bool Press(const wchar_t* title, int button) const;
    /// The same with a button that closes the dialog, and waits until it is gone.
    bool Close(const wchar_t* title, int button) const;

private:
    HWND Find(const wchar_t* title) const;
    HWND WaitFor(const wchar_t* title) const;

    DWORD thread;
};

/// Runs `work` on a thread of its own while `show` shows dialogs on this one, and gives what `show` gives. Ends the
/// process with status 2 where `work` fails, since the dialogs would stand open for ever.
bool ShowAndWork(const std::function<bool()>& show, const std::function<bool(const CDialogs&)>& work);

}  // namespace soak
