// SPDX-License-Identifier: MIT
// The interface lends its object to the thread that owns the window, so it is asked there. Wine's knows the label of an
// edit field alone; the rule is that of the interface's own documents, and holds for lists and boxes as well.

#include "Accessibility.h"

#include <oleacc.h>

#include <algorithm>

#include "platform/Holders.h"

namespace reka::test {

namespace {

/// Without the mark of its letter.
std::u16string Plain(std::u16string text) {
    text.erase(std::remove(text.begin(), text.end(), u'&'), text.end());
    return text;
}

bool IsButton(CUser& user, HWND control) {
    return (user.Send(control, WM_GETDLGCODE) & (DLGC_BUTTON | DLGC_STATIC)) == DLGC_BUTTON;
}

}  // namespace

std::u16string AccessibleName(CUser& user, HWND control) {
    constexpr GUID accessible = {0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
    std::u16string name;
    user.OnTestThread([&] {
        CComRef<IAccessible> object;
        if (AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), accessible,
                                       reinterpret_cast<void**>(object.Receive())) != S_OK) {
            return;
        }
        VARIANT self = {};
        self.vt = VT_I4;
        CBstr text;
        if (object->get_accName(self, text.Receive()) == S_OK) name = text.View();
    });
    return name;
}

std::u16string NameByRule(CUser& user, HWND control) {
    if (IsButton(user, control)) return Plain(user.TextOf(control));
    for (HWND before = GetWindow(control, GW_HWNDPREV); before; before = GetWindow(before, GW_HWNDPREV)) {
        if (user.Send(before, WM_GETDLGCODE) & DLGC_STATIC) return Plain(user.TextOf(before));
        const auto style = static_cast<DWORD>(GetWindowLongW(before, GWL_STYLE));
        if ((style & WS_VISIBLE) && (style & WS_TABSTOP)) return {};
    }
    return {};
}

}  // namespace reka::test
