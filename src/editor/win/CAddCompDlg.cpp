// SPDX-License-Identifier: MIT
// The list asks for the text of each cell when it draws it, and knows its rows by their number alone. So selection and
// focus are set anew, by record, whenever the rows change places.

#include "editor/win/CAddCompDlg.h"

#include <algorithm>
#include <new>

#include "editor/win/DialogLayouts.h"

namespace reka {

namespace {

/// The pointer that tells the user to wait, while it lives.
class CWaitPointer {
public:
    CWaitPointer() : before(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~CWaitPointer() { SetCursor(before); }
    CWaitPointer(const CWaitPointer&) = delete;
    CWaitPointer& operator=(const CWaitPointer&) = delete;

private:
    HCURSOR before;
};

void SetRowState(HWND list, WPARAM row, UINT state, UINT mask) {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
}

constexpr int cellMargin = 16;  // pixels on both sides of a cell's text together

constexpr auto allRows = static_cast<WPARAM>(-1);

/// Selects the rows that `isSelected` tells, gives the focus to one of them, and scrolls to it.
template <class Predicate>
void SelectRows(HWND list, std::size_t rowCount, std::size_t focused, Predicate isSelected) {
    SetRowState(list, allRows, 0, LVIS_SELECTED | LVIS_FOCUSED);
    std::size_t count = 0;
    for (std::size_t row = 0; row < rowCount; ++row) count += isSelected(row) ? 1 : 0;
    if (count > 0 && count == rowCount) {
        SetRowState(list, allRows, LVIS_SELECTED, LVIS_SELECTED);
    } else if (count > 0) {
        for (std::size_t row = 0; row < rowCount; ++row) {
            if (isSelected(row)) SetRowState(list, row, LVIS_SELECTED, LVIS_SELECTED);
        }
    }
    if (focused < rowCount) CListView(list).FocusRow(focused);
}

}  // namespace

CAddCompDlg::CAddCompDlg(ReactionPackDefinition& definition, IEditorUi& asked)
    : CDialog(IDD_ADD_COMPOUNDS, addCompoundsLayout), compounds(definition, asked), messages(asked) {}

void CAddCompDlg::OnInit() {
    SetIcon(IDI_COMPONENT);
    KeepPresentSizeAsSmallest();

    CListView list(Item(IDC_ADD_COMPOUNDS_LIST));
    list.UseWholeRows();
    int position = 0;
    for (const FileCompoundColumn& column : fileCompoundColumns) list.InsertColumn(position++, column.label, 0);
    BeginColumns();
    FocusOn(IDC_ADD_COMPOUNDS_FILTER);
    const std::u16string errorText = LoadFile();
    BeginColumns();  // beside the bar that scrolls
    Tell(errorText);
}

/// The reason of a failure, or nothing.
std::u16string CAddCompDlg::LoadFile() {
    const CSilence silence(*this);
    const CWaitPointer pointer;
    SetText(IDC_ADD_COMPOUNDS_FILTER, u"");
    SetText(IDC_ADD_COMPOUNDS_FILE, compounds.FilePath());
    std::u16string errorText = compounds.LoadFile();
    RefillList();
    return errorText;
}

void CAddCompDlg::Tell(const std::u16string& errorText) {
    if (errorText.empty()) return;
    ShowWithLayout();
    messages.ShowError(errorText);
}

/// The user sees what a message speaks of, also while the dialog opens.
void CAddCompDlg::ShowWithLayout() {
    if (IsWindowVisible(Window())) return;
    LayOut();
    ShowWindow(Window(), SW_SHOW);
}

void CAddCompDlg::RefillList() {
    const HWND list = Item(IDC_ADD_COMPOUNDS_LIST);
    const std::vector<FileCompoundRow>& rows = compounds.Rows();
    const CSilence silence(*this);
    const CListFilling filling(list);
    SendMessageW(list, LVM_SETITEMCOUNT, rows.size(), 0);
    const auto first =
        std::find_if(rows.begin(), rows.end(), [](const FileCompoundRow& row) { return row.isSelected; });
    const auto focused = first == rows.end() ? 0 : static_cast<std::size_t>(first - rows.begin());
    SelectRows(list, rows.size(), focused, [&](std::size_t row) { return rows[row].isSelected; });
}

void CAddCompDlg::Sort(int column) {
    const HWND list = Item(IDC_ADD_COMPOUNDS_LIST);
    const std::vector<FileCompoundRow>& rows = compounds.Rows();
    const CWaitPointer pointer;
    // What is selected, and where the keyboard is, stays with the compound.
    std::size_t recordCount = 0;
    for (const FileCompoundRow& row : rows) recordCount = std::max(recordCount, row.record + 1);
    std::vector<bool> isSelected(recordCount);
    for (const std::size_t row : SelectedRows()) isSelected[rows[row].record] = true;
    const auto focusedRow = static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, allRows, LVNI_FOCUSED));
    const bool hasFocus = focusedRow >= 0 && static_cast<std::size_t>(focusedRow) < rows.size();
    const std::size_t focusedRecord = hasFocus ? rows[static_cast<std::size_t>(focusedRow)].record : recordCount;

    compounds.SortByColumn(static_cast<std::size_t>(column));
    const auto focused =
        std::find_if(rows.begin(), rows.end(), [&](const FileCompoundRow& row) { return row.record == focusedRecord; });
    const CSilence silence(*this);
    const CListFilling filling(list);
    SelectRows(list, rows.size(), static_cast<std::size_t>(focused - rows.begin()),
               [&](std::size_t row) { return isSelected[rows[row].record]; });
}

std::vector<std::size_t> CAddCompDlg::SelectedRows() const {
    const HWND list = Item(IDC_ADD_COMPOUNDS_LIST);
    std::vector<std::size_t> selected;
    const std::size_t rowCount = compounds.Rows().size();
    WPARAM row = allRows;
    for (;;) {
        const auto next = static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, row, LVNI_SELECTED));
        if (next < 0 || static_cast<std::size_t>(next) >= rowCount) return selected;
        row = static_cast<WPARAM>(next);
        selected.push_back(row);
    }
}

void CAddCompDlg::Accept() {
    if (compounds.Accept(SelectedRows())) End(IDOK);
}

void CAddCompDlg::OnCommand(int control, int notification) {
    switch (control) {
        case IDC_ADD_COMPOUNDS_FILTER:
            if (notification != EN_CHANGE) break;
            compounds.SetFilter(Text(IDC_ADD_COMPOUNDS_FILTER));
            RefillList();
            break;
        case IDC_ADD_COMPOUNDS_BROWSE:
            if (!compounds.Browse()) break;
            {
                const std::u16string errorText = LoadFile();
                FitColumns();
                Tell(errorText);
            }
            break;
        case IDOK:
            Accept();
            break;
        default:
            CDialog::OnCommand(control, notification);
    }
}

LRESULT CAddCompDlg::OnNotify(NMHDR& header) {
    if (header.idFrom != IDC_ADD_COMPOUNDS_LIST) return 0;
    switch (header.code) {
        case static_cast<UINT>(LVN_GETDISPINFOW):
            ShowCell(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case static_cast<UINT>(LVN_COLUMNCLICK):
            Sort(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            return 0;
        case static_cast<UINT>(NM_DBLCLK):
            if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) Accept();
            return 0;
        case static_cast<UINT>(LVN_ODFINDITEMW): {
            const auto& request = reinterpret_cast<const NMLVFINDITEMW&>(header);
            if (!(request.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !request.lvfi.psz) return -1;
            return compounds.FindRow(static_cast<std::size_t>(std::max(request.iStart, 0)),
                                     reinterpret_cast<const char16_t*>(request.lvfi.psz));
        }
        default:
            return 0;
    }
}

void CAddCompDlg::ShowCell(NMLVDISPINFOW& request) const {
    LVITEMW& cell = request.item;
    if (!(cell.mask & LVIF_TEXT) || !cell.pszText || cell.cchTextMax <= 0) return;
    cell.pszText[0] = 0;
    if (cell.iItem < 0 || cell.iSubItem < 0 || static_cast<std::size_t>(cell.iSubItem) >= fileCompoundColumnCount) {
        return;
    }
    try {
        const auto texts = compounds.RowTexts(static_cast<std::size_t>(cell.iItem));
        lstrcpynW(cell.pszText, SystemText(texts[static_cast<std::size_t>(cell.iSubItem)]), cell.cchTextMax);
    } catch (const std::bad_alloc&) {
        // Empty until it is drawn again: a message for each cell would have no end.
    }
}

void CAddCompDlg::BeginColumns() {
    CListView list(Item(IDC_ADD_COMPOUNDS_LIST));
    openingDpi = Dpi();
    openingWidths = FitFileCompoundColumns(list.ClientWidth());
    leftOver = list.ClientWidth();
    int column = 0;
    for (const int width : openingWidths) {
        list.SetColumnWidth(column++, width);
        leftOver -= width;
    }
    columns.Begin(Item(IDC_ADD_COMPOUNDS_LIST), fileCompoundColumnCount);
}

/// A larger list gives what it has more to the columns whose texts are cut.
void CAddCompDlg::FitColumns() {
    const CListView list(Item(IDC_ADD_COMPOUNDS_LIST));
    const auto& texts = compounds.LongestTexts();
    std::array<ColumnWish, fileCompoundColumnCount> wishes;
    for (std::size_t i = 0; i < fileCompoundColumnCount; ++i) {
        const int needed = list.TextWidth(texts[i].c_str()) + Scale(cellMargin);
        const int least = ScaleBetween(openingWidths[i], openingDpi, Dpi());
        wishes[i] = {std::max(needed, least), least};
    }
    columns.Fit(wishes, list.ClientWidth() - ScaleBetween(leftOver, openingDpi, Dpi()));
}

void CAddCompDlg::OnLaidOut() {
    FitColumns();
}

void CAddCompDlg::OnScaled(int oldDpi) {
    columns.FollowScale(oldDpi, Dpi());
}

}  // namespace reka
