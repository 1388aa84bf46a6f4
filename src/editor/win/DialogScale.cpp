// SPDX-License-Identifier: MIT
// What the system scales itself in some programs and not in others is done here in all of them; the system is told to
// leave it alone. Columns have no made width, since the user sets them: theirs goes by the one before.

#include "editor/win/DialogScale.h"

#include <commctrl.h>

#include <cstdint>

#include "editor/win/WindowDpi.h"

namespace reka {

namespace {

bool IsOfClass(HWND control, const wchar_t* name) {
    wchar_t className[16] = {};
    GetClassNameW(control, className, 16);
    return lstrcmpiW(className, name) == 0;
}

void ScaleColumns(HWND list, int oldDpi, int newDpi) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const LRESULT count = header ? SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) : 0;
    for (LRESULT column = 0; column < count; ++column) {
        const auto number = static_cast<WPARAM>(column);
        const auto width = static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, number, 0));
        SendMessageW(list, LVM_SETCOLUMNWIDTH, number, ScaleBetween(width, oldDpi, newDpi));
    }
}

int ScaleUp(int pixels, int fromDpi, int toDpi) {
    const int scaled = ScaleBetween(pixels, fromDpi, toDpi);
    return std::int64_t{scaled} * fromDpi < std::int64_t{pixels} * toDpi ? scaled + 1 : scaled;
}

}  // namespace

ControlPlace ScaleBetween(const ControlPlace& place, int fromDpi, int toDpi) {
    const int left = ScaleBetween(place.left, fromDpi, toDpi);
    const int top = ScaleBetween(place.top, fromDpi, toDpi);
    return {left, top, left + ScaleUp(place.right - place.left, fromDpi, toDpi),
            top + ScaleUp(place.bottom - place.top, fromDpi, toDpi)};
}

int HeightToSet(HWND control, int height) {
    RECT open = {};
    if (!IsOfClass(control, L"ComboBox")) return height;
    if (!SendMessageW(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open))) return height;
    return open.bottom - open.top;
}

CDialogScale::~CDialogScale() {
    End();
}

void CDialogScale::Begin(HWND madeDialog) {
    End();
    dialog = madeDialog;
    TakeOverScaling(dialog);
    madeDpi = dpi = DpiOfNewDialog(dialog);
    const auto shown = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    hasMadeFont = shown && GetObjectW(shown, sizeof madeFont, &madeFont) > 0;
    try {
        NoteControls();
    } catch (...) {  // the dialog can be used, and keeps its scale
        made.clear();
        hasMadeFont = false;
    }
}

void CDialogScale::NoteControls() {
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        RECT place = {};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        const int height = HeightToSet(control, place.bottom - place.top);
        made.push_back({control, {place.left, place.top, place.right, place.top + height}});
    }
}

void CDialogScale::End() {
    if (font) DeleteObject(font);
    font = nullptr;
    made.clear();
    dialog = nullptr;
}

bool CDialogScale::ScaleTo(int newDpi) {
    if (made.empty() || newDpi <= 0 || newDpi == dpi) return false;
    const int oldDpi = dpi;
    dpi = newDpi;
    ScaleFont();
    for (const MadeControl& control : made) {
        const ControlPlace place = ScaleBetween(control.place, madeDpi, dpi);
        SetWindowPos(control.control, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    ScaleLists(oldDpi);
    return true;
}

/// Where the system refuses the font, the one before stays.
void CDialogScale::ScaleFont() {
    if (!hasMadeFont) return;
    LOGFONTW description = madeFont;
    description.lfHeight = ScaleBetween(description.lfHeight, madeDpi, dpi);
    description.lfWidth = ScaleBetween(description.lfWidth, madeDpi, dpi);
    const HFONT scaled = CreateFontIndirectW(&description);
    if (!scaled) return;
    SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(scaled), FALSE);
    for (const MadeControl& control : made) {
        SendMessageW(control.control, WM_SETFONT, reinterpret_cast<WPARAM>(scaled), TRUE);
    }
    if (font) DeleteObject(font);
    font = scaled;
}

void CDialogScale::ScaleLists(int oldDpi) const {
    for (const MadeControl& control : made) {
        if (IsOfClass(control.control, WC_LISTVIEWW)) ScaleColumns(control.control, oldDpi, dpi);
        if (!IsOfClass(control.control, L"ListBox")) continue;
        const auto extent = static_cast<int>(SendMessageW(control.control, LB_GETHORIZONTALEXTENT, 0, 0));
        const int scaled = ScaleBetween(extent, oldDpi, dpi);
        SendMessageW(control.control, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(scaled), 0);
    }
}

}  // namespace reka
