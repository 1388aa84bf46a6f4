// SPDX-License-Identifier: MIT
// The pages are children that live from the opening to the end, so what was typed in one stays while another is shown;
// the tabs only show and hide. Keys pressed in a page are kept from the buttons of the shell.

#include "editor/win/CEditReactionPackDescDlg.h"

#include <commctrl.h>

#include "editor/win/DialogLayouts.h"

namespace reka {

namespace {

/// Where the system draws controls in its newer look, gives a page the background of the tabs around it.
void UseBackgroundOfTabs(HWND page) {
    using EnableTexture = HRESULT(WINAPI*)(HWND, DWORD);
    constexpr DWORD pageOfTabs = 6;
    const HMODULE themes = GetModuleHandleW(L"uxtheme.dll");
    if (!themes) return;
    const auto enable =
        reinterpret_cast<EnableTexture>(reinterpret_cast<void*>(GetProcAddress(themes, "EnableThemeDialogTexture")));
    if (enable) enable(page, pageOfTabs);
}

bool IsFocusIn(const CDialog& page) {
    const HWND focus = GetFocus();
    return focus && page.Window() && IsChild(page.Window(), focus);
}

}  // namespace

CEditReactionPackDescDlg::CEditReactionPackDescDlg(CEditShell& editShell, const ReactionPackDefinition& edited)
    : CDialog(IDD_EDIT, editLayout),
      shell(editShell),
      initialFields(FillGeneralPage(edited)),
      general(initialFields),
      reactions(shell.reactionPage),
      compounds(shell.compoundPage, reactions),
      pages{&general, &compounds, &reactions} {}

bool CEditReactionPackDescDlg::Run(HWND owner) {
    const CKeyHook hook;
    return RunModal(owner) == IDOK;
}

void CEditReactionPackDescDlg::OnInit() {
    SetIcon(IDI_COMPONENT);
    AddTabs();
    Show(IDC_EDIT_STORE, shell.IsStoreShown());
    for (CDialog* const page : pages) CreatePage(*page);
    LayOut();
    Enlarge({compounds.LackingWidth(), 0});  // the compounds are seen with all of their columns
    KeepPresentSizeAsSmallest();
    ShowSelectedPage();
    FocusOn(general.NameField());
}

void CEditReactionPackDescDlg::AddTabs() {
    int position = 0;
    for (const char16_t* const label : editPageLabels) {
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = reinterpret_cast<wchar_t*>(const_cast<char16_t*>(label));
        SendMessageW(Item(IDC_EDIT_TABS), TCM_INSERTITEMW, static_cast<WPARAM>(position++),
                     reinterpret_cast<LPARAM>(&tab));
    }
}

// A page that the system refuses leaves its tab without content.
void CEditReactionPackDescDlg::CreatePage(CDialog& page) {
    if (!page.CreateChild(*this)) return;
    SetWindowPos(page.Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    UseBackgroundOfTabs(page.Window());
}

std::int32_t CEditReactionPackDescDlg::SelectedTab() const {
    return static_cast<std::int32_t>(SendMessageW(Item(IDC_EDIT_TABS), TCM_GETCURSEL, 0, 0));
}

// The tabs report no change that isn't the user's.
void CEditReactionPackDescDlg::ShowPage(EditPage page) {
    SendMessageW(Item(IDC_EDIT_TABS), TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
    ShowSelectedPage();
}

void CEditReactionPackDescDlg::ShowSelectedPage() {
    const HWND tabs = Item(IDC_EDIT_TABS);
    const std::int32_t selected = SelectedTab();
    const auto shown = static_cast<std::int32_t>(PageOfTab(selected));
    if (shown != selected) SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(shown), 0);
    for (std::int32_t tab = 0; tab < 3; ++tab) {
        if (tab == shown) continue;
        if (IsFocusIn(*pages[tab])) FocusOn(tabs);  // a click on a tab alone leaves the keyboard in the page
        ShowWindow(pages[tab]->Window(), SW_HIDE);
    }
    ShowWindow(pages[shown]->Window(), SW_SHOWNA);
}

// Who works in a page goes on in the next one; who is at the tabs or a button stays there.
void CEditReactionPackDescDlg::GoToPageBeside(std::int32_t steps) {
    const bool isInPage = IsFocusInPage();
    const EditPage next = PageBeside(SelectedTab(), steps);
    ShowPage(next);
    const HWND page = pages[static_cast<std::size_t>(next)]->Window();
    if (isInPage && page) FocusOn(GetNextDlgTabItem(page, nullptr, FALSE));
}

// The keys by which all dialogs with tabs change their page.
bool CEditReactionPackDescDlg::OnKey(WPARAM key) {
    if (GetKeyState(VK_CONTROL) >= 0) return false;
    switch (key) {
        case VK_TAB:
            GoToPageBeside(GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
            return true;
        case VK_NEXT:
            GoToPageBeside(1);
            return true;
        case VK_PRIOR:
            GoToPageBeside(-1);
            return true;
        default:
            return false;
    }
}

bool CEditReactionPackDescDlg::IsFocusInPage() const {
    for (const CDialog* const page : pages) {
        if (IsFocusIn(*page)) return true;
    }
    return false;
}

// A key that means OK or Cancel, pressed in a page, is the page's, which has no use for it; not every system tells the
// page. The focus alone wouldn't tell: after a click that activates the window it may still be in the page.
bool CEditReactionPackDescDlg::IsKeyOfPage() const {
    const bool isPressed = GetKeyState(VK_RETURN) < 0 || GetKeyState(VK_ESCAPE) < 0;
    return isPressed && IsFocusInPage();
}

void CEditReactionPackDescDlg::OnCommand(int control, int notification) {
    if (notification != BN_CLICKED) return;
    switch (control) {
        case IDOK:
            if (!IsKeyOfPage()) Accept();
            break;
        case IDCANCEL:
            if (!IsKeyOfPage()) End(IDCANCEL);
            break;
        case IDC_EDIT_HELP:
            shell.ShowHelp();
            break;
        case IDC_EDIT_LOAD:
            Load();
            break;
        case IDC_EDIT_STORE:
            shell.Store(general.Fields());
            GoToComplaint();
            break;
        default:
            break;
    }
}

void CEditReactionPackDescDlg::Accept() {
    if (shell.Accept(general.Fields())) {
        End(IDOK);
    } else {
        GoToComplaint();
    }
}

/// Leads the user, who has been told what won't do, to where that is corrected.
void CEditReactionPackDescDlg::GoToComplaint() {
    if (!shell.Complaint()) return;
    const auto [part, reaction] = *shell.Complaint();
    const EditPage page = PageOfPart(part);
    ShowPage(page);
    switch (page) {
        case EditPage::General:
            FocusOn(general.NameField());
            break;
        case EditPage::Compounds:
            FocusOn(compounds.AddButton());
            break;
        case EditPage::Reactions:
            reactions.ShowReaction(reaction);
            FocusOn(reactions.ControlOf(part));
            break;
    }
}

// The general page keeps what it shows: the next check takes the version from there.
void CEditReactionPackDescDlg::Load() {
    if (!shell.Load(general.Fields())) return;
    reactions.RefillReactionList();
    reactions.RefreshReactionPage();
    compounds.RefillCompoundList();
}

LRESULT CEditReactionPackDescDlg::OnNotify(NMHDR& header) {
    if (header.idFrom == IDC_EDIT_TABS && header.code == TCN_SELCHANGE) ShowSelectedPage();
    return 0;
}

// The pages fill what the tab control leaves of itself.
void CEditReactionPackDescDlg::OnLaidOut() {
    const ControlPlace tabs = PlaceOf(IDC_EDIT_TABS);
    RECT area = {tabs.left, tabs.top, tabs.right, tabs.bottom};
    SendMessageW(Item(IDC_EDIT_TABS), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (const CDialog* const page : pages) {
        if (!page->Window()) continue;
        SetWindowPos(page->Window(), nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

}  // namespace reka
