// SPDX-License-Identifier: MIT
// The functions are looked for each time: only as a dialog opens, moves to another monitor or loads an icon. Of the two
// ways of being aware per monitor the system sizes dialogs in the second alone; in the first they have the size of the
// screen that the program started on, and are to be scaled to their monitor's.

#include "editor/win/WindowDpi.h"

#include "editor/DialogLayout.h"

namespace reka {

namespace {

const DpiFunctions* replacement = nullptr;

HANDLE PerMonitorAwareV2() {
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-4));  // as the system numbers it
}
constexpr int disableAllScaling = 7;  // of the font, of the size, of the controls' places

template <class Function>
void Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

DpiFunctions Functions() {
    if (replacement) return *replacement;
    DpiFunctions found;
    const HMODULE library = GetModuleHandleW(L"user32.dll");
    Find(library, "GetDpiForWindow", found.ofWindow);
    Find(library, "GetWindowDpiAwarenessContext", found.awarenessOf);
    Find(library, "AreDpiAwarenessContextsEqual", found.areEqual);
    Find(library, "GetSystemMetricsForDpi", found.metric);
    Find(library, "SetDialogDpiChangeBehavior", found.setDialogBehavior);
    return found;
}

int DpiOfScreen(HWND window) {
    const HDC device = GetDC(window);
    const int dpi = device ? GetDeviceCaps(device, LOGPIXELSX) : referenceDpi;
    if (device) ReleaseDC(window, device);
    return dpi;
}

/// 0 where the system can't tell.
int ToldDpi(const DpiFunctions& functions, HWND window) {
    return functions.ofWindow ? static_cast<int>(functions.ofWindow(window)) : 0;
}

}  // namespace

const DpiFunctions* ReplaceDpiFunctions(const DpiFunctions* functions) {
    const DpiFunctions* const before = replacement;
    replacement = functions;
    return before;
}

int DpiOfNewDialog(HWND dialog) {
    const DpiFunctions functions = Functions();
    const bool isSizedByMonitor = functions.awarenessOf && functions.areEqual &&
                                  functions.areEqual(functions.awarenessOf(dialog), PerMonitorAwareV2());
    const int told = isSizedByMonitor ? ToldDpi(functions, dialog) : 0;
    return told > 0 ? told : DpiOfScreen(dialog);
}

int DpiOfWindow(HWND dialog) {
    const int told = ToldDpi(Functions(), dialog);
    return told > 0 ? told : DpiOfNewDialog(dialog);
}

int SystemMetric(int metric, int dpi) {
    const DpiFunctions functions = Functions();
    const int scaled = functions.metric ? functions.metric(metric, static_cast<UINT>(dpi)) : 0;
    return scaled > 0 ? scaled : GetSystemMetrics(metric);
}

void TakeOverScaling(HWND dialog) {
    const DpiFunctions functions = Functions();
    if (functions.setDialogBehavior) functions.setDialogBehavior(dialog, disableAllScaling, disableAllScaling);
}

}  // namespace reka
