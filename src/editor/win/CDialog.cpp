// SPDX-License-Identifier: MIT
// One procedure serves all dialogs: it finds the object in the window's own word and stops what its handlers throw.
// While a handler runs, messages can come in from wherever it leads to, so each one passes the counts below before it
// becomes a call: of handlers, of silences, and whether the dialog has ended.

#include "editor/win/CDialog.h"

#include <algorithm>
#include <utility>

#include "editor/win/DialogLayouts.h"
#include "editor/win/HelpPages.h"
#include "editor/win/WindowDpi.h"
#include "platform/win/SystemModules.h"

namespace reka {

namespace {

static_assert(okButton == IDOK && cancelButton == IDCANCEL);

bool IsOfClass(HWND control, const wchar_t* name) {
    wchar_t className[16] = {};
    GetClassNameW(control, className, 16);
    return lstrcmpiW(className, name) == 0;
}

/// Fields take as much as their records do.
BOOL CALLBACK LiftLimitOf(HWND control, LPARAM /*context*/) {
    if (IsOfClass(control, L"Edit")) LiftLengthLimit(control);
    if (IsOfClass(control, L"ComboBox")) SendMessageW(control, CB_LIMITTEXT, anyTextLength, 0);
    return TRUE;
}

/// A static control that is no label of anything, whatever its text has.
LRESULT CALLBACK PlainTextProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_GETDLGCODE) return 0;
    const auto ownProcedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(control, GWLP_USERDATA));
    return CallWindowProcW(ownProcedure, control, message, wParam, lParam);
}

/// Some systems draw an "&" of a name as it stands, as SS_NOPREFIX tells, and take the letter behind it for a key all
/// the same: Alt and that letter would move the focus. They look only at what says that it is a static control.
BOOL CALLBACK TakeNoKeyFromText(HWND control, LPARAM /*context*/) {
    if (!IsOfClass(control, L"Static") || !(GetWindowLongW(control, GWL_STYLE) & SS_NOPREFIX)) return TRUE;
    SetWindowLongPtrW(control, GWLP_USERDATA, GetWindowLongPtrW(control, GWLP_WNDPROC));
    SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PlainTextProcedure));
    return TRUE;
}

/// Whether a report of a control asks for an action, rather than tells what the control shows now.
bool IsAction(HWND control, int notification) {
    if (!control) return true;  // a key
    if (IsOfClass(control, L"Button")) {
        constexpr LRESULT pushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
        return (SendMessageW(control, WM_GETDLGCODE, 0, 0) & pushButton) != 0;
    }
    return IsOfClass(control, L"ListBox") && notification == LBN_DBLCLK;
}

/// As long as it lives, a handler runs.
class CCount {
public:
    explicit CCount(int& counted) : count(counted) { ++count; }
    ~CCount() { --count; }
    CCount(const CCount&) = delete;
    CCount& operator=(const CCount&) = delete;

private:
    int& count;
};

/// Needs no memory of ours.
void TellThereIsNoMemory(HWND window) {
    MessageBoxW(window ? GetAncestor(window, GA_ROOT) : nullptr, L"out of memory", L"Error:", MB_OK | MB_ICONERROR);
}

}  // namespace

CDialog::~CDialog() {
    if (window) {
        SetWindowLongPtrW(window, DWLP_USER, 0);  // no virtual function of a part that is gone
        DestroyWindow(window);
    }
    DestroyIcons();
}

bool CDialog::CreateChild(CDialog& parent) {
    parentDialog = &parent;
    return CreateDialogParamW(ModuleHandle(), MAKEINTRESOURCEW(templateId), parent.window, Procedure,
                              reinterpret_cast<LPARAM>(this)) != nullptr;
}

// The system's own answer doesn't count: a dialog that a message to quit has ended gives that of OK.
INT_PTR CDialog::RunModal(HWND owner) {
    endCode = 0;
    hasEnded = false;
    isHiding = false;
    const CControlsContext newest(IDM_CONTROLS);
    const CControlsScope scope(&newest);
    controlsContext = &newest;
    DialogBoxParamW(ModuleHandle(), MAKEINTRESOURCEW(templateId), owner, Procedure, reinterpret_cast<LPARAM>(this));
    controlsContext = nullptr;
    return endCode > 0 ? endCode : notShown;
}

void CDialog::End(int code) {
    endCode = code;
    hasEnded = true;  // before the system hides the dialog, which takes the focus from its fields
    EndDialog(window, code);
}

INT_PTR CALLBACK CDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<CDialog*>(lParam)->window = window;
        SetWindowLongPtrW(window, DWLP_USER, lParam);
    }
    auto* const dialog = reinterpret_cast<CDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog) return FALSE;
    const CControlsScope scope(dialog->Root().controlsContext);  // some systems call here with that of the program
    try {
        return dialog->Handle(message, wParam, lParam);
    } catch (...) {  // nothing here throws but for want of memory
        const LONG_PTR result = GetWindowLongPtrW(window, DWLP_MSGRESULT);
        TellThereIsNoMemory(window);
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);  // not that of what came in meanwhile
        return TRUE;
    }
}

// The message may belong to any window of the thread: only a dialog of ours has this procedure.
LRESULT CALLBACK CDialog::FilterKey(int code, WPARAM wParam, LPARAM lParam) noexcept {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message->message == WM_KEYDOWN) {
        const HWND root = GetAncestor(message->hwnd, GA_ROOT);
        const bool isOurs = GetWindowLongPtrW(root, DWLP_DLGPROC) == reinterpret_cast<LONG_PTR>(Procedure);
        auto* const dialog = isOurs ? reinterpret_cast<CDialog*>(GetWindowLongPtrW(root, DWLP_USER)) : nullptr;
        if (dialog && dialog->TakeKey(message->wParam)) return TRUE;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool CDialog::TakeKey(WPARAM key) noexcept {
    if (IsSilent()) return false;
    try {
        const CCount handler(Root().handlers);
        return OnKey(key);
    } catch (...) {
        TellThereIsNoMemory(window);
        return true;
    }
}

INT_PTR CDialog::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            // where the keyboard begins is a matter of the dialog around a page
            return Initialise() && !parentDialog ? TRUE : FALSE;
        case WM_COMMAND:
            Command(wParam, lParam);
            return TRUE;
        case WM_NOTIFY:
            Notify(lParam);
            return TRUE;
        case WM_SIZE:
            Size(wParam);
            return TRUE;
        case WM_DPICHANGED:
            MoveToMonitor(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return TRUE;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
            return TRUE;
        case WM_CLOSE:
            Close();
            return TRUE;
        case WM_HELP:  // F1
            ShowHelpPage(Root().window, templateId);
            return TRUE;
        case WM_WINDOWPOSCHANGING:
            NoteHiding(reinterpret_cast<const WINDOWPOS*>(lParam)->flags);
            return FALSE;
        case WM_DESTROY:
            hasEnded = true;
            return FALSE;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window, DWLP_USER, 0);
            window = nullptr;
            isInitialised = false;
            DestroyIcons();
            scale.End();
            // A loop that waits for messages finds only at the next one that its window is gone.
            if (!parentDialog) PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
            return FALSE;
        default:
            return FALSE;
    }
}

// The dialog stays usable where memory runs out meanwhile.
bool CDialog::Initialise() {
    isFocusSet = false;
    iconNumber = 0;
    smallest = {};
    NoteDesign();
    if (!(GetWindowLongW(window, GWL_STYLE) & WS_CHILD)) CentreOverOwner();  // before anything may be told
    EnumChildWindows(window, LiftLimitOf, 0);
    EnumChildWindows(window, TakeNoKeyFromText, 0);
    try {
        const CSilence silence(*this);
        OnInit();
    } catch (...) {
        TellThereIsNoMemory(window);
    }
    isInitialised = true;
    LayOut();
    FitToMonitor();
    return !isFocusSet;
}

RECT CDialog::WorkArea() const {
    const HWND owner = GetWindow(window, GW_OWNER);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner ? owner : window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

/// In the middle of its owner, or of the screen without one, and with its title on the screen in any case.
void CDialog::CentreOverOwner() {
    const HWND owner = GetWindow(window, GW_OWNER);
    const RECT screen = WorkArea();
    if (IsRectEmpty(&screen)) return;
    RECT around = screen;
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &around);
    RECT frame = {};
    GetWindowRect(window, &frame);
    const LONG width = frame.right - frame.left;
    const LONG height = frame.bottom - frame.top;
    const LONG left = std::min((around.left + around.right - width) / 2, screen.right - width);
    const LONG top = std::min((around.top + around.bottom - height) / 2, screen.bottom - height);
    SetWindowPos(window, nullptr, std::max(left, screen.left), std::max(top, screen.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CDialog::Enlarge(const ControlSize& by) {
    RECT frame = {};
    GetWindowRect(window, &frame);
    const RECT screen = WorkArea();
    SIZE size = {frame.right - frame.left + by.width, frame.bottom - frame.top + by.height};
    if (!IsRectEmpty(&screen)) {
        size = {std::min(size.cx, screen.right - screen.left), std::min(size.cy, screen.bottom - screen.top)};
    }
    SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CentreOverOwner();
}

/// The dialog around the page, or itself.
CDialog& CDialog::Root() {
    CDialog* root = this;
    while (root->parentDialog) root = root->parentDialog;
    return *root;
}

/// Whether what is reported now isn't the user's.
bool CDialog::IsSilent() {
    const CDialog& root = Root();
    return !isInitialised || silences > 0 || root.hasEnded || root.isHiding;
}

/// The system hides a window before it destroys it, which takes the focus from its fields.
void CDialog::NoteHiding(UINT flags) {
    if (flags & SWP_HIDEWINDOW) isHiding = true;
    if (flags & SWP_SHOWWINDOW) isHiding = false;
}

void CDialog::Command(WPARAM wParam, LPARAM lParam) {
    const auto control = reinterpret_cast<HWND>(lParam);
    // Some systems report a button of a page, pressed by a key, to the window around the page.
    const HWND parent = control ? GetParent(control) : nullptr;
    if (parent && parent != window && IsChild(window, control)) {
        SendMessageW(parent, WM_COMMAND, wParam, lParam);
        return;
    }
    int& running = Root().handlers;
    if (IsSilent() || (running > 0 && IsAction(control, HIWORD(wParam)))) return;
    const CCount handler(running);
    OnCommand(LOWORD(wParam), HIWORD(wParam));
}

void CDialog::Close() {
    int& running = Root().handlers;
    if (Root().hasEnded || running > 0) return;
    const CCount handler(running);
    OnClose();
}

void CDialog::Notify(LPARAM lParam) {
    SetWindowLongPtrW(window, DWLP_MSGRESULT, 0);  // also where memory runs out
    if (IsSilent()) return;
    const CCount handler(Root().handlers);
    const LRESULT result = OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    if (window) SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
}

void CDialog::Size(WPARAM kind) {
    if (!isInitialised || kind == SIZE_MINIMIZED) return;
    LayOut();
    // Group boxes don't erase what they uncover, and what was moved over other controls leaves traces there.
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void CDialog::OnCommand(int control, int /*notification*/) {
    if (control == IDOK || control == IDCANCEL) End(control);
}

LRESULT CDialog::OnNotify(NMHDR& /*header*/) {
    return 0;
}

/// The controls as the template has them, before anything moves them.
void CDialog::NoteDesign() {
    scale.Begin(window);
    designedClient = ClientSize();
    for (std::size_t i = 0; i < layout.size(); ++i) {
        designed[i] = {};
        if (!IsLayoutLine(layout[i].control)) designed[i].place = PlaceOf(layout[i].control);
    }
}

/// With its pages, of which nobody else tells that they have moved.
void CDialog::ScaleTo(int dpi) {
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsOfClass(child, L"#32770")) continue;
        if (auto* const page = reinterpret_cast<CDialog*>(GetWindowLongPtrW(child, DWLP_USER))) page->ScaleTo(dpi);
    }
    const CSilence silence(*this);
    const int before = Dpi();
    if (!scale.ScaleTo(dpi)) return;
    smallest = {ScaleBetween(smallest.cx, before, dpi), ScaleBetween(smallest.cy, before, dpi)};
    if (iconNumber) SetIcon(iconNumber);
    OnScaled(before);
    if (isInitialised) LayOut();
}

void CDialog::MoveToMonitor(int dpi, const RECT& place) {
    ScaleTo(dpi);
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// For a system that makes dialogs in the scale of its first screen and shows them as they are on all.
void CDialog::FitToMonitor() {
    const int dpi = DpiOfWindow(window);
    if (parentDialog || dpi == Dpi()) return;
    RECT place = {};
    GetWindowRect(window, &place);
    place.right = place.left + ScaleBetween(place.right - place.left, Dpi(), dpi);
    place.bottom = place.top + ScaleBetween(place.bottom - place.top, Dpi(), dpi);
    MoveToMonitor(dpi, place);
    CentreOverOwner();
}

void CDialog::LayOut() {
    if (layout.empty()) return;
    const int from = scale.MadeDpi();
    std::array<DesignedControl, mostLayoutRows> scaled = designed;
    for (DesignedControl& control : scaled) control.place = ScaleBetween(control.place, from, Dpi());
    const ControlSize client = {ScaleBetween(designedClient.width, from, Dpi()),
                                ScaleBetween(designedClient.height, from, Dpi())};
    std::array<ControlPlace, mostLayoutRows> places;
    reka::LayOut(layout, {client, {scaled.data(), layout.size()}}, ClientSize(), Dpi(), places);
    for (std::size_t i = 0; i < layout.size(); ++i) {
        if (!IsLayoutLine(layout[i].control)) Place(layout[i].control, places[i]);
    }
    OnLaidOut();
}

void CDialog::MakeRoomForText(int control, int width) {
    for (std::size_t i = 0; i < layout.size(); ++i) {
        if (layout[i].control != control) continue;
        if (std::exchange(designed[i].textWidth, width) == width) return;
        LayOut();
        InvalidateRect(window, nullptr, TRUE);
    }
}

void CDialog::KeepPresentSizeAsSmallest() {
    RECT frame = {};
    GetWindowRect(window, &frame);
    const RECT screen = WorkArea();
    SIZE size = {frame.right - frame.left, frame.bottom - frame.top};
    if (!IsRectEmpty(&screen)) {
        size = {std::min(size.cx, screen.right - screen.left), std::min(size.cy, screen.bottom - screen.top)};
        SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    smallest = size;
}

void CDialog::SetIcon(int iconResource) {
    iconNumber = iconResource;
    const HICON large = LoadModuleIcon(iconResource, SM_CXICON, SM_CYICON);
    const HICON small = LoadModuleIcon(iconResource, SM_CXSMICON, SM_CYSMICON);
    SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large));
    SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small));
    DestroyIcons();
    largeIcon = large;
    smallIcon = small;
}

void CDialog::DestroyIcons() {
    for (HICON* const icon : {&largeIcon, &smallIcon}) {
        if (*icon) DestroyIcon(*icon);
        *icon = nullptr;
    }
}

void CDialog::Place(int control, const ControlPlace& place) {
    const HWND item = Item(control);
    SetWindowPos(item, nullptr, place.left, place.top, place.right - place.left,
                 HeightToSet(item, place.bottom - place.top), SWP_NOZORDER | SWP_NOACTIVATE);
}

ControlPlace CDialog::PlaceOf(int control) const {
    RECT place = {};
    GetWindowRect(Item(control), &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    return {place.left, place.top, place.right, place.bottom};
}

ControlSize CDialog::ClientSize() const {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

HICON CDialog::LoadModuleIcon(int resource, int widthMetric, int heightMetric) const {
    return static_cast<HICON>(LoadImageW(ModuleHandle(), MAKEINTRESOURCEW(resource), IMAGE_ICON,
                                         SystemMetric(widthMetric, Dpi()), SystemMetric(heightMetric, Dpi()),
                                         LR_DEFAULTCOLOR));
}

}  // namespace reka
