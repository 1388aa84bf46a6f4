// SPDX-License-Identifier: MIT
// The controls of a dialog are found by walking along its windows, as a person would by looking, and not by the numbers
// in the template: what was forgotten there is missing here, and what nobody expected shows. The rules for all dialogs,
// that nothing is cut off or covers something else, are checked on the way.

#include "ControlTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <map>

#include "Accessibility.h"
#include "text/Utf8.h"

namespace reka::test {

namespace {

std::u16string ClassOf(HWND window) {
    wchar_t name[100] = {};
    GetClassNameW(window, name, 100);
    return reinterpret_cast<const char16_t*>(name);
}

DWORD StyleOf(HWND window) {
    return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
}

bool IsButtonOf(HWND window, DWORD type) {
    return ClassOf(window) == u"Button" && (StyleOf(window) & BS_TYPEMASK) == type;
}

/// What other controls stand in: group boxes, tab controls and pages.
bool IsFrame(HWND window) {
    const std::u16string name = ClassOf(window);
    return IsButtonOf(window, BS_GROUPBOX) || name == u"SysTabControl32" || name == u"#32770";
}

std::vector<HWND> ChildrenOf(HWND parent) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

std::string Described(CUser& user, HWND control) {
    return "control " + std::to_string(static_cast<short>(GetDlgCtrlID(control))) + " \"" +
           Utf8FromUtf16(user.TextOf(control)) + "\" of class " + Utf8FromUtf16(ClassOf(control));
}

/// The visible controls of a dialog, those of its pages too, without the pages themselves.
void CollectVisible(HWND parent, std::vector<HWND>& visible) {
    for (const HWND child : ChildrenOf(parent)) {
        if (!IsWindowVisible(child)) continue;
        if (ClassOf(child) == u"#32770") {
            CollectVisible(child, visible);
        } else {
            visible.push_back(child);
        }
    }
}

bool Overlap(const RECT& one, const RECT& other) {
    RECT common = {};
    return IntersectRect(&common, &one, &other) != FALSE;
}

void CheckPlaces(CUser& user, HWND dialog, const std::vector<HWND>& visible) {
    RECT client = {};
    GetClientRect(dialog, &client);
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
    for (const HWND control : visible) {
        const RECT place = PlaceOf(control);
        EXPECT_TRUE(place.left < place.right && place.top < place.bottom) << Described(user, control) << " has no size";
        EXPECT_TRUE(place.left >= client.left && place.top >= client.top && place.right <= client.right &&
                    place.bottom <= client.bottom)
            << Described(user, control) << " reaches over the edge";
        if (IsFrame(control)) continue;
        for (const HWND other : visible) {
            if (other == control || IsFrame(other)) continue;
            EXPECT_FALSE(Overlap(place, PlaceOf(other)))
                << Described(user, control) << " overlaps " << Described(user, other);
        }
    }
}

SIZE TextSize(CUser& user, HWND control, const std::u16string& text, int width) {
    const HDC device = GetDC(control);
    const HGDIOBJ before = SelectObject(device, reinterpret_cast<HFONT>(user.Send(control, WM_GETFONT)));
    RECT needed = {0, 0, width, 0};
    const UINT wrap = ClassOf(control) == u"Static" ? DT_WORDBREAK : 0U;
    DrawTextW(device, Wide(text), -1, &needed, DT_CALCRECT | wrap);
    SelectObject(device, before);
    ReleaseDC(control, device);
    return {needed.right, needed.bottom};
}

/// What a button needs beside its text: the box of a check box, the frame of a push button.
int WidthBesideText(HWND control) {
    if (ClassOf(control) == u"Static") return 0;
    const int box = GetSystemMetrics(SM_CXMENUCHECK);
    const DWORD type = StyleOf(control) & BS_TYPEMASK;
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON ? 6 : box;
}

void CheckLabels(CUser& user, const std::vector<HWND>& visible) {
    for (const HWND control : visible) {
        const std::u16string name = ClassOf(control);
        if (name != u"Static" && name != u"Button") continue;
        if (name == u"Button" && (StyleOf(control) & (BS_ICON | BS_BITMAP)) != 0) continue;
        const std::u16string text = user.TextOf(control);
        RECT client = {};
        GetClientRect(control, &client);
        const SIZE needed = TextSize(user, control, text, client.right);
        EXPECT_LE(needed.cx + WidthBesideText(control), client.right) << Described(user, control) << " is cut off";
        if (IsButtonOf(control, BS_GROUPBOX)) continue;
        EXPECT_LE(needed.cy, client.bottom) << Described(user, control) << " is cut off";
    }
}

void CheckLetters(CUser& user, const std::vector<HWND>& visible) {
    std::map<std::wint_t, HWND> owners;
    for (const HWND control : visible) {
        const std::u16string name = ClassOf(control);
        if ((name != u"Static" && name != u"Button") || (name == u"Static" && (StyleOf(control) & SS_NOPREFIX) != 0)) {
            continue;
        }
        const std::u16string text = user.TextOf(control);
        const std::size_t mark = text.find(u'&');
        if (mark == std::u16string::npos || mark + 1 >= text.size() || text[mark + 1] == u'&') continue;
        const auto [owner, isNew] = owners.emplace(std::towlower(text[mark + 1]), control);
        EXPECT_TRUE(isNew) << Described(user, control) << " has the letter of " << Described(user, owner->second);
    }
}

/// The tab key reaches one control of each group of radio buttons.
void CheckTabOrder(CUser& user, HWND dialog, const std::vector<HWND>& visible) {
    std::vector<HWND> reached;
    HWND control = nullptr;
    for (std::size_t i = 0; i <= visible.size(); ++i) {
        control = GetNextDlgTabItem(dialog, control, FALSE);
        if (!control || std::find(reached.begin(), reached.end(), control) != reached.end()) break;
        reached.push_back(control);
    }
    for (const HWND stop : visible) {
        if (!(StyleOf(stop) & WS_TABSTOP) || !IsWindowEnabled(stop)) continue;
        if (IsButtonOf(stop, BS_AUTORADIOBUTTON) && user.Send(stop, BM_GETCHECK) != BST_CHECKED) continue;
        EXPECT_NE(std::find(reached.begin(), reached.end(), stop), reached.end())
            << Described(user, stop) << " isn't reached by the tab key";
    }
}

/// Whoever can't see the dialog is told a name where the keyboard is; tabs have their own.
void CheckNames(CUser& user, const std::vector<HWND>& visible) {
    for (const HWND control : visible) {
        if (!(StyleOf(control) & WS_TABSTOP) || ClassOf(control) == u"SysTabControl32") continue;
        EXPECT_NE(NameByRule(user, control), u"") << Described(user, control) << " has no name";
    }
}

void CheckControl(CUser& user, HWND control, const ExpectedControl& row) {
    SCOPED_TRACE(Described(user, control));
    EXPECT_EQ(static_cast<short>(GetDlgCtrlID(control)), row.control);
    EXPECT_EQ(lstrcmpiW(Wide(ClassOf(control)), reinterpret_cast<const wchar_t*>(row.windowClass)), 0);
    if (row.label) {
        EXPECT_EQ(Utf8FromUtf16(user.TextOf(control)), Utf8FromUtf16(row.label));
    }
    const DWORD style = StyleOf(control);
    EXPECT_EQ(style & row.style, row.style);
    EXPECT_EQ(style & row.absentStyle, 0U);
    EXPECT_EQ(IsWindowEnabled(control) != FALSE, row.isEnabled);
    EXPECT_EQ((style & WS_VISIBLE) != 0, row.isVisible);
}

}  // namespace

void CheckControls(CUser& user, HWND parent, const ExpectedControls& expected) {
    const std::vector<HWND> children = ChildrenOf(parent);
    EXPECT_EQ(children.size(), expected.size());
    for (std::size_t i = 0; i < std::min(children.size(), expected.size()); ++i) {
        CheckControl(user, children[i], expected[i]);
    }
}

void CheckLayout(CUser& user, HWND dialog) {
    std::vector<HWND> visible;
    CollectVisible(dialog, visible);
    CheckPlaces(user, dialog, visible);
    CheckLabels(user, visible);
    CheckLetters(user, visible);
    CheckTabOrder(user, dialog, visible);
    CheckNames(user, visible);
}

}  // namespace reka::test
