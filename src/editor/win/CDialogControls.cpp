// SPDX-License-Identifier: MIT
// The operations on controls that the dialogs share: each is a message or two to the control, and what differs between
// systems is evened out here.

#include <algorithm>

#include "editor/win/CDialog.h"

namespace reka {

void CDialog::SetText(int control, const std::u16string& text) {
    SetWindowTextW(Item(control), SystemText(text));
}

void CDialog::ReplaceText(int control, const std::u16string& text) {
    if (Text(control) == text) return;  // what was typed last can still be taken back
    const HWND field = Item(control);
    SendMessageW(field, EM_EMPTYUNDOBUFFER, 0, 0);  // some systems join what is deleted in a row to one step
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(field, EM_SETSEL, 0, 0);
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
    // A field of one line may stop at a line end; a text that is set comes whole.
    if (Text(control) != text) SetText(control, text);
}

void CDialog::SetChecked(int control, bool isChecked) {
    CheckDlgButton(window, control, isChecked ? BST_CHECKED : BST_UNCHECKED);
}

void CDialog::Enable(int control, bool isEnabled) {
    const HWND item = Item(control);
    const HWND focus = GetFocus();
    const bool hasFocus = focus && (focus == item || IsChild(item, focus));
    if (!isEnabled && hasFocus) SendMessageW(window, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(item, isEnabled);
}

void CDialog::FocusOn(HWND control) {
    if (!control) return;
    isFocusSet = true;
    // What the dialog's own keys do, so that the frame of the default button follows.
    SendMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void CDialog::FillListBox(int control, std::span<const std::u16string> items, int selection) const {
    const HWND list = Item(control);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::u16string& item : items) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(selection), 0);
    FitScrolling(control, items);
}

bool CDialog::IsSelectedItemClicked(int control) const {
    const HWND list = Item(control);
    const LRESULT item = SendMessageW(list, LB_GETCURSEL, 0, 0);
    RECT place = {};
    if (item < 0 || SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place)) < 0)
        return false;
    const DWORD packed = GetMessagePos();
    POINT click = {static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))};  // of several screens
    ScreenToClient(list, &click);
    return click.y >= place.top && click.y < place.bottom;
}

void CDialog::FitScrolling(int listBox, std::span<const std::u16string> items) const {
    int widest = 0;
    for (const std::u16string& item : items) widest = std::max(widest, TextWidth(listBox, item));
    SendMessageW(Item(listBox), LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + Scale(6)), 0);
}

void CDialog::AddChoice(int control, const char16_t* text, int data) const {
    const HWND choices = Item(control);
    const LRESULT item = SendMessageW(choices, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    if (item >= 0) SendMessageW(choices, CB_SETITEMDATA, static_cast<WPARAM>(item), data);
}

void CDialog::SelectChoice(int control, int data, int otherwise) const {
    const HWND choices = Item(control);
    const auto count = static_cast<int>(SendMessageW(choices, CB_GETCOUNT, 0, 0));
    int item = 0;
    while (item < count && SendMessageW(choices, CB_GETITEMDATA, static_cast<WPARAM>(item), 0) != data) ++item;
    SendMessageW(choices, CB_SETCURSEL, static_cast<WPARAM>(item < count ? item : otherwise), 0);
}

int CDialog::TextWidth(int control, const std::u16string& text) const {
    const HWND item = Item(control);
    const HDC device = GetDC(item);
    if (!device) return 0;
    const HGDIOBJ before = SelectObject(device, reinterpret_cast<HFONT>(SendMessageW(item, WM_GETFONT, 0, 0)));
    SIZE size = {};
    GetTextExtentPoint32W(device, SystemText(text), static_cast<int>(text.size()), &size);
    SelectObject(device, before);
    ReleaseDC(item, device);
    return size.cx;
}

}  // namespace reka
