// SPDX-License-Identifier: MIT
// A system whose monitors have different scales, as dialogs see it.

#pragma once

#include <windows.h>

#include "Driver.h"
#include "editor/win/WindowDpi.h"

namespace reka::test {

/// How a system makes dialogs: in the scale of the monitor, in that of the first screen, or it knows of no scales.
enum class DialogSizing { ByMonitor, ByScreen, Unknown };

/// As long as it lives, every window is on a monitor of that many dots per inch.
class CFakeDpi {
public:
    CFakeDpi(UINT dpi, DialogSizing sizing) {
        monitorDpi = dpi;
        leftAlone = nullptr;
        if (sizing != DialogSizing::Unknown) {
            isByMonitor = sizing == DialogSizing::ByMonitor;
            functions = {OfWindow, AwarenessOf, AreEqual, Metric, SetDialogBehavior};
        }
        ReplaceDpiFunctions(&functions);
    }
    ~CFakeDpi() { ReplaceDpiFunctions(nullptr); }
    CFakeDpi(const CFakeDpi&) = delete;
    CFakeDpi& operator=(const CFakeDpi&) = delete;

    static inline UINT monitorDpi = 0;
    static inline HWND leftAlone = nullptr;  // the dialog whose scaling the system leaves alone

private:
    static UINT WINAPI OfWindow(HWND) { return monitorDpi; }
    static HANDLE WINAPI AwarenessOf(HWND) { return &monitorDpi; }
    static BOOL WINAPI AreEqual(HANDLE, HANDLE) { return isByMonitor; }
    static int WINAPI Metric(int metric, UINT dpi) {
        return MulDiv(GetSystemMetrics(metric), static_cast<int>(dpi), ScreenDpi());
    }
    static BOOL WINAPI SetDialogBehavior(HWND dialog, int flags, int mask) {
        if (flags == 7 && mask == 7) leftAlone = dialog;
        return TRUE;
    }

    static inline bool isByMonitor = false;
    DpiFunctions functions;
};

/// What the system does as the dialog comes to a monitor of that scale, with its left upper corner there.
inline void MoveTo(CUser& u, HWND dialog, int fromDpi, int toDpi, POINT corner = {0, 0}) {
    const RECT before = PlaceOf(dialog);
    const RECT place = {corner.x, corner.y, corner.x + MulDiv(before.right - before.left, toDpi, fromDpi),
                        corner.y + MulDiv(before.bottom - before.top, toDpi, fromDpi)};
    u.Send(dialog, WM_DPICHANGED, MAKEWPARAM(toDpi, toDpi), reinterpret_cast<LPARAM>(&place));
    u.Settle();
}

}  // namespace reka::test
