// SPDX-License-Identifier: MIT
// Text goes in and out by messages that name its encoding. Where only a caret stands, parts are formatted by selecting
// them, which is quick; a selection of the user's is left alone, and the control's object model does the work. While
// the field itself works on the control, the control reports nothing.

#include "editor/win/ExpressionField.h"

#include <ole2.h>

#include <richedit.h>
#include <richole.h>
#include <tom.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "editor/win/WindowText.h"
#include "platform/win/SystemModules.h"

namespace reka {

namespace {

constexpr UINT unicode = 1200;  // the code page
constexpr GUID textDocumentId = {0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};

constexpr long autoColour = tomAutoColor;

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

std::size_t TextLength(HWND field) {
    GETTEXTLENGTHEX length = {};
    length.flags = GTL_NUMCHARS | GTL_PRECISE;
    length.codepage = unicode;
    const LRESULT count = SendMessageW(field, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void PutPiece(HWND field, const char16_t* text, DWORD flags) {
    SETTEXTEX how = {};
    how.flags = flags;
    how.codepage = unicode;
    SendMessageW(field, EM_SETTEXTEX, reinterpret_cast<WPARAM>(&how), reinterpret_cast<LPARAM>(text));
}

/// Whether the field would read the text as one in Rich Text Format. Some systems look at the bytes of the characters.
bool LooksFormatted(std::u16string_view text) {
    for (const std::string_view beginning : {"{\\rtf", "{urtf", "{\\urtf"}) {
        if (text.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), text.begin()))
            return true;
        if (text.size() * sizeof(char16_t) >= beginning.size() &&
            std::memcmp(text.data(), beginning.data(), beginning.size()) == 0) {
            return true;
        }
    }
    return false;
}

/// As long as it lives the control reports nothing.
class CFieldSilence {
public:
    explicit CFieldSilence(HWND silenced) : field(silenced), events(SendMessageW(field, EM_SETEVENTMASK, 0, 0)) {}
    ~CFieldSilence() { SendMessageW(field, EM_SETEVENTMASK, 0, events); }
    CFieldSilence(const CFieldSilence&) = delete;
    CFieldSilence& operator=(const CFieldSilence&) = delete;

private:
    HWND field;
    LPARAM events;
};

/// Puts the text as it is in place of what is selected. The first character of what looks formatted goes in alone.
void PutText(HWND field, const std::u16string& text) {
    const CFieldSilence silence(field);
    const char16_t* rest = text.c_str();
    if (LooksFormatted(text)) {
        const char16_t first[] = {*rest++, 0};
        PutPiece(field, first, ST_SELECTION | ST_KEEPUNDO);
    }
    PutPiece(field, rest, ST_SELECTION | ST_KEEPUNDO);
}

/// Sends the dialog a notification of the field.
void Notify(HWND field, int notification) {
    SendMessageW(GetParent(field), WM_COMMAND, static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(field), notification)),
                 reinterpret_cast<LPARAM>(field));
}

void Request(HWND field, FieldRequest request) {
    Notify(field, static_cast<int>(request));
}

/// The same once the messages that are there have been dealt with: a menu would take the character of the key for its
/// own.
void RequestLater(HWND field, FieldRequest request) {
    PostMessageW(GetParent(field), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(field), static_cast<int>(request))),
                 reinterpret_cast<LPARAM>(field));
}

/// Whether the key asks for something that the field passes on.
bool IsRequest(UINT message, WPARAM key, FieldRequest& request) {
    const bool isAlone = !IsDown(VK_MENU);
    if (message == WM_SYSKEYDOWN) {
        request = IsDown(VK_SHIFT) ? FieldRequest::Redo : FieldRequest::Undo;
        return key == VK_BACK && !IsDown(VK_CONTROL);
    }
    if (isAlone && IsDown(VK_CONTROL)) {
        request = key == 'Z' && !IsDown(VK_SHIFT) ? FieldRequest::Undo
                  : key == 'V'                    ? FieldRequest::Paste
                                                  : FieldRequest::Redo;
        return key == 'Z' || key == 'Y' || key == 'V';
    }
    request = FieldRequest::Paste;
    return isAlone && key == VK_INSERT && IsDown(VK_SHIFT);
}

/// Whether the field itself deals with a key that is pressed together with Ctrl: copying, selecting all, moving and
/// deleting. Its other keys of that kind change how the text looks.
bool IsOwnKey(WPARAM key) {
    const bool isMove = key >= VK_PRIOR && key <= VK_DOWN;
    const bool isModifier = key == VK_CONTROL || key == VK_SHIFT || key == VK_MENU;
    if (isMove || isModifier || key == VK_DELETE || key == VK_BACK) return true;
    return !IsDown(VK_SHIFT) && (key == 'A' || key == 'C' || key == 'X' || key == VK_INSERT);
}

/// Whether a request for a menu is one for that of the text: by a key, which gives no place, or there.
bool IsOnText(HWND field, LPARAM place) {
    if (place == -1) return true;
    POINT point = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    RECT client = {};
    GetClientRect(field, &client);
    ScreenToClient(field, &point);
    return PtInRect(&client, point) != FALSE;
}

/// Whether the character comes of Ctrl and a key that isn't one of the field's own.
bool IsStrayControl(WPARAM character) {
    if (character > ' ' || !IsDown(VK_CONTROL) || IsDown(VK_MENU)) return false;
    if (character == ' ') return true;
    return !IsOwnKey(character + '@') && character != VK_BACK;
}

/// Sets what isn't so already: each setting makes the field lay its text out afresh.
bool SetLook(ITextFont& font, long isBold, long colour) {
    long present = 0;
    if (FAILED(font.GetBold(&present)) || (present != isBold && FAILED(font.SetBold(isBold)))) return false;
    return SUCCEEDED(font.GetForeColor(&present)) && (present == colour || SUCCEEDED(font.SetForeColor(colour)));
}

/// What is scrolled to stays, nothing is drawn and nothing reported while it lives.
class CFieldFilling {
public:
    explicit CFieldFilling(HWND filled) : field(filled), silence(filled) {
        SendMessageW(field, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
        SendMessageW(field, WM_SETREDRAW, FALSE, 0);
    }
    ~CFieldFilling() {
        SendMessageW(field, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
        SendMessageW(field, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(field, nullptr, FALSE);
    }
    CFieldFilling(const CFieldFilling&) = delete;
    CFieldFilling& operator=(const CFieldFilling&) = delete;

private:
    HWND field;
    CFieldSilence silence;
    POINT scrolled = {};
};

class COpenClipboard {
public:
    explicit COpenClipboard(HWND window) : isOpen(OpenClipboard(window) != FALSE) {}
    ~COpenClipboard() {
        if (isOpen) CloseClipboard();
    }
    COpenClipboard(const COpenClipboard&) = delete;
    COpenClipboard& operator=(const COpenClipboard&) = delete;
    bool IsOpen() const { return isOpen; }

private:
    bool isOpen;
};

}  // namespace

void LoadExpressionControl() noexcept {
    // The library stays: freeing it while the process detaches isn't allowed, and the process keeps a single copy.
    for (const wchar_t* const library : {L"riched32.dll", L"riched20.dll"}) LoadSystemLibrary(library);
}

CExpressionField::CExpressionField() = default;
CExpressionField::~CExpressionField() = default;

void CExpressionField::Attach(HWND richEdit, const CTextHistory& shownHistory) {
    field = richEdit;
    history = &shownHistory;
    SetWindowLongPtrW(field, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ownProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    RevokeDragDrop(field);  // what is dropped may have a look of its own
    SendMessageW(field, EM_EXLIMITTEXT, 0, anyTextLength);
    SendMessageW(field, EM_SETUNDOLIMIT, 0, 0);
    SendMessageW(field, EM_SETEVENTMASK, 0, ENM_CHANGE | ENM_SELCHANGE);
    CComRef<IUnknown> model;
    if (!SendMessageW(field, EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(model.Receive())) || !model) return;
    model->QueryInterface(textDocumentId, reinterpret_cast<void**>(document.Receive()));
}

std::u16string CExpressionField::Text() const {
    std::u16string text(TextLength(field) + 1, u'\0');
    GETTEXTEX how = {};
    how.cb = static_cast<DWORD>(text.size() * sizeof(char16_t));
    how.codepage = unicode;
    const LRESULT copied =
        SendMessageW(field, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&how), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

void CExpressionField::SetText(const std::u16string& text) {
    SendMessageW(field, EM_SETSEL, 0, -1);
    PutText(field, text);
}

/// Without the end of the last line, which isn't in the text: where all is selected, it is as well.
TextRange CExpressionField::Selection() const {
    CHARRANGE selection = {};
    SendMessageW(field, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
    const auto length = static_cast<LONG>(TextLength(field));
    return {std::min(selection.cpMin, length), std::min(selection.cpMax, length)};
}

void CExpressionField::Select(TextRange range) const {
    CHARRANGE selection = {range.first, range.end};
    SendMessageW(field, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection));
}

void CExpressionField::Insert(const std::u16string& text) const {
    PutText(field, text);
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
    ReportChange();
}

void CExpressionField::Replace(const TextReplacement& replacement) const {
    {
        const CFieldSilence silence(field);
        Select(replacement.range);
        PutText(field, replacement.text);
        Select(replacement.selection);
    }
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
    ReportChange();
}

void CExpressionField::ReportChange() const {
    Notify(field, EN_CHANGE);
}

bool CExpressionField::Format(const std::vector<ExpressionRun>& runs) {
    if (runs.empty()) return true;
    const TextRange selection = Selection();
    const bool isCaret = selection.first == selection.end;
    const CFieldFilling filling(field);
    bool isFormatted = true;
    for (const ExpressionRun& run : runs)
        isFormatted = (isCaret ? FormatAsSelected(run) : FormatRun(run)) && isFormatted;
    if (isCaret) Select(selection);
    return isFormatted;
}

/// The quick way, for texts of any length; it costs the selection, and with that which of its ends moves.
bool CExpressionField::FormatAsSelected(const ExpressionRun& run) const {
    Select(run.range);
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    format.dwMask = CFM_BOLD | CFM_COLOR;
    format.dwEffects = run.isBold ? CFE_BOLD : 0U;
    // Black is what the system writes in: on a screen of high contrast that may be white.
    if (run.colour == expressionTextColour) {
        format.dwEffects |= CFE_AUTOCOLOR;
    } else {
        format.crTextColor = run.colour;
    }
    return SendMessageW(field, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format)) != 0;
}

/// The way that leaves the selection alone, through the control's object model.
bool CExpressionField::FormatRun(const ExpressionRun& run) const {
    CComRef<ITextRange> range;
    CComRef<ITextFont> font;
    if (!document || FAILED(document->Range(run.range.first, run.range.end, range.Receive())) || !range) return false;
    if (FAILED(range->GetFont(font.Receive())) || !font) return false;
    const long colour = run.colour == expressionTextColour ? autoColour : static_cast<long>(run.colour);
    return SetLook(*font, run.isBold ? tomTrue : tomFalse, colour);
}

LRESULT CALLBACK CExpressionField::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const field = reinterpret_cast<CExpressionField*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    LRESULT result = 0;
    if (field->Handle(message, wParam, lParam, result)) return result;
    return CallWindowProcW(field->ownProcedure, window, message, wParam, lParam);
}

/// The two units of a character are put in together: in between, the text would have half a character.
bool CExpressionField::TakeHalf(char16_t unit) {
    const char16_t first = std::exchange(firstHalf, u'\0');
    if ((unit & 0xFC00) == 0xD800) {
        firstHalf = unit;
        return true;
    }
    if (!first || (unit & 0xFC00) != 0xDC00) return false;
    const char16_t character[] = {first, unit, 0};
    {
        const CFieldSilence silence(field);
        PutPiece(field, character, ST_SELECTION | ST_KEEPUNDO);
    }
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
    ReportChange();
    return true;
}

POINT CExpressionField::PlaceOfCaret() const {
    POINTL caret = {};
    SendMessageW(field, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&caret), Selection().end);
    RECT client = {};
    GetClientRect(field, &client);
    POINT place = {std::clamp<LONG>(caret.x, client.left, client.right),
                   std::clamp<LONG>(caret.y + GetSystemMetrics(SM_CYMENU), client.top, client.bottom)};
    ClientToScreen(field, &place);
    return place;
}

POINT CExpressionField::TakeMenuPlace() {
    isMenuAsked = false;
    return menuPlace;
}

/// Once for a click. A key gives no place.
void CExpressionField::AskForMenu(LPARAM place) {
    if (place != -1 && std::exchange(isMenuAsked, true)) return;
    menuPlace =
        place == -1 ? PlaceOfCaret() : POINT{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    RequestLater(field, FieldRequest::Menu);
}

/// Nothing here throws: what may is left to the dialog.
bool CExpressionField::Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    FieldRequest request;
    switch (message) {
        case WM_GETDLGCODE:
            result = DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_HASSETSEL;  // Tab, Enter and Escape are the dialog's
            return true;
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (IsRequest(message, wParam, request)) {
                Request(field, request);
                return true;
            }
            if (message == WM_KEYDOWN && wParam == VK_SPACE && IsDown(VK_CONTROL) && !IsDown(VK_MENU)) {
                RequestLater(field, FieldRequest::Offer);
                return true;
            }
            return message == WM_KEYDOWN && IsDown(VK_CONTROL) && !IsDown(VK_MENU) && !IsOwnKey(wParam);
        case WM_CHAR:
            if (wParam == 'Z' - '@' || wParam == 'Y' - '@' || wParam == 'V' - '@') return true;  // dealt with as a key
            return IsStrayControl(wParam) || TakeHalf(static_cast<char16_t>(wParam));
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            isMenuAsked = false;
            return false;
        case WM_RBUTTONUP: {  // of which some systems make a request for the menu, and others don't
            result = CallWindowProcW(ownProcedure, field, message, wParam, lParam);
            POINT place = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
            ClientToScreen(field, &place);
            AskForMenu(MAKELPARAM(place.x, place.y));
            return true;
        }
        case WM_CONTEXTMENU:
            if (!IsOnText(field, lParam)) return false;  // a bar that scrolls has its own
            AskForMenu(lParam);
            return true;
        case WM_PASTE:
            Request(field, FieldRequest::Paste);
            return true;
        case WM_UNDO:
        case EM_UNDO:
            Request(field, FieldRequest::Undo);
            result = TRUE;
            return true;
        case EM_REDO:
            Request(field, FieldRequest::Redo);
            result = TRUE;
            return true;
        case EM_CANUNDO:
            result = history->CanUndo();
            return true;
        case EM_CANREDO:
            result = history->CanRedo();
            return true;
        default:
            return false;
    }
}

std::u16string ClipboardText(HWND window) {
    const COpenClipboard clipboard(window);
    if (!clipboard.IsOpen()) return {};
    const HANDLE held = GetClipboardData(CF_UNICODETEXT);
    const auto* const text = held ? static_cast<const char16_t*>(GlobalLock(held)) : nullptr;
    if (!text) return {};
    const std::u16string_view whole(text, GlobalSize(held) / sizeof(char16_t));
    std::u16string copy;
    try {
        copy = whole.substr(0, whole.find(u'\0'));
    } catch (...) {
        GlobalUnlock(held);
        throw;
    }
    GlobalUnlock(held);
    return copy;
}

}  // namespace reka
