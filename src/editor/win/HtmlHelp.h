// SPDX-License-Identifier: MIT
// HTML Help.

#pragma once

#include <atomic>
#include <string>

#include <windows.h>

namespace reka {

/// HTML Help by its control library, which is loaded when help is first asked for. What was found then counts as long
/// as this lives: where there is no HTML Help it is looked for once.
class CHtmlHelp {
public:
    /// Shows `topic` of the help file at `path`, in a window of its own that lies above `owner`. False if there is no
    /// HTML Help on the system, or if it shows nothing.
    bool Show(HWND owner, const std::u16string& path, const std::u16string& topic);

private:
    using Function = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);

    Function Find();

    // Two threads that look for it at once find the same.
    std::atomic<bool> isLookedFor = false;
    std::atomic<Function> htmlHelp = nullptr;
};

/// The one of the module.
CHtmlHelp& HtmlHelp();

/// Path of the control library as the system's classes name it, with the values of variables; empty if they don't.
std::u16string FindHelpLibrary();

}  // namespace reka
