// SPDX-License-Identifier: MIT
// Dots per inch of a window. A program that is aware of them per monitor has windows of different scale at a time, and
// newer systems say which; elsewhere all windows have that of the screen.

#pragma once

#include <windows.h>

namespace reka {

/// What newer systems have in user32.dll; null where one has it not.
struct DpiFunctions {
    UINT(WINAPI* ofWindow)(HWND) = nullptr;
    HANDLE(WINAPI* awarenessOf)(HWND) = nullptr;
    BOOL(WINAPI* areEqual)(HANDLE, HANDLE) = nullptr;
    int(WINAPI* metric)(int, UINT) = nullptr;
    BOOL(WINAPI* setDialogBehavior)(HWND, int, int) = nullptr;
};

/// Takes these functions for the system's, null for the system's own, and returns what was taken before. For tests.
const DpiFunctions* ReplaceDpiFunctions(const DpiFunctions* functions);

/// To which the system has sized a dialog that it has just made of a template, with its font and controls: those of
/// the window where it sizes dialogs by their monitors, otherwise those of the screen.
int DpiOfNewDialog(HWND dialog);

/// In which the window should be shown; those of a new dialog where the system can't tell.
int DpiOfWindow(HWND dialog);

/// A measure of the system, as `GetSystemMetrics` numbers them, in that many dots per inch.
int SystemMetric(int metric, int dpi);

/// The system, which may scale what is in a dialog as it moves to another monitor, leaves that to the dialog.
void TakeOverScaling(HWND dialog);

}  // namespace reka
