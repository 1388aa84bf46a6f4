// SPDX-License-Identifier: MIT
// Colouring sets the look of a part of the field, which costs more the longer the text is. So what the editor wants to
// show is collected, compared with what the field shows, and only the difference is set.

#include "editor/win/CEditFormulaDlg.h"

#include <richedit.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <utility>

#include "editor/win/DialogLayouts.h"

namespace reka {

namespace {

/// The size of the client area in pixels, and the dots per inch that it has them at: through another scale, rounding
/// would change it at each opening. The sides of a window have 16 bits at most.
struct KeptSize {
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    int dpi = referenceDpi;
};

/// As the user left it last in this process; 0 at first.
std::atomic<KeptSize> keptSize;

}  // namespace

CEditFormulaDlg::CEditFormulaDlg(const ReactionPackDefinition& edited, const std::u16string& shownItem,
                                 const std::u16string& shownUnit, std::u16string& editedExpression)
    : CDialog(IDD_EXPRESSION, expressionLayout),
      definition(edited),
      item(shownItem),
      unit(shownUnit),
      expression(editedExpression),
      editor(edited, *this) {
    LoadExpressionControl();
}

void CEditFormulaDlg::OnInit() {
    SetIcon(IDI_COMPONENT);
    KeepPresentSizeAsSmallest();
    const KeptSize sized = keptSize;
    const ControlSize present = ClientSize();
    Enlarge({std::max(ScaleBetween(sized.width, sized.dpi, Dpi()) - present.width, 0),
             std::max(ScaleBetween(sized.height, sized.dpi, Dpi()) - present.height, 0)});
    SetText(IDC_EXPRESSION_ITEM, item);
    SetText(IDC_EXPRESSION_UNIT, unit);
    field.Attach(Item(IDC_EXPRESSION_TEXT), history);
    field.SetText(expression);
    const std::u16string shown = field.Text();
    history.Start(shown);
    format.Start(shown);
    openingText = Text();
    FocusOn(IDC_EXPRESSION_TEXT);
    const auto end = static_cast<std::int32_t>(shown.size());
    field.Select({end, end});
    editor.TextChanged();
}

void CEditFormulaDlg::OnCommand(int control, int notification) {
    if (control == IDOK) {
        Accept();
        return;
    }
    if (control != IDC_EXPRESSION_TEXT) {
        CDialog::OnCommand(control, notification);
        return;
    }
    switch (notification) {
        case EN_CHANGE:
            TextHasChanged();
            break;
        case static_cast<int>(FieldRequest::Undo):
            Undo();
            break;
        case static_cast<int>(FieldRequest::Redo):
            Redo();
            break;
        case static_cast<int>(FieldRequest::Paste):
            Paste();
            break;
        case static_cast<int>(FieldRequest::Menu):
            ShowMenu(field.TakeMenuPlace(), true);
            break;
        case static_cast<int>(FieldRequest::Offer):
            ShowMenu(field.PlaceOfCaret(), false);
            break;
        default:
            break;
    }
}

/// What it is while it fills the screen doesn't count.
void CEditFormulaDlg::OnLaidOut() {
    if (IsZoomed(Window())) return;
    const ControlSize client = ClientSize();
    keptSize = KeptSize{static_cast<std::uint16_t>(client.width), static_cast<std::uint16_t>(client.height), Dpi()};
}

LRESULT CEditFormulaDlg::OnNotify(NMHDR& header) {
    if (header.idFrom == IDC_EXPRESSION_TEXT && header.code == EN_SELCHANGE) editor.SelectionChanged();
    return 0;
}

/// A new font takes the look of all parts away.
void CEditFormulaDlg::OnScaled(int /*oldDpi*/) {
    format.Forget();
    editor.SelectionChanged();
}

void CEditFormulaDlg::TextHasChanged() {
    NoteText();
    editor.TextChanged();
}

void CEditFormulaDlg::NoteText() {
    history.Change(field.Text(), field.Selection().end);
}

void CEditFormulaDlg::Undo() {
    NoteText();  // it may have changed without memory to note it
    Replace(history.Undo());
}

void CEditFormulaDlg::Redo() {
    NoteText();
    Replace(history.Redo());
}

/// With the commands of a text field, or the offers alone.
void CEditFormulaDlg::ShowMenu(POINT place, bool hasCommands) {
    const std::vector<OfferGroup> groups = ExpressionOffers(definition);
    const TextRange selection = field.Selection();
    const TextCommandsEnabled enabled = {history.CanUndo(), history.CanRedo(), selection.first < selection.end,
                                         IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE, !field.Text().empty()};
    const MenuChoice choice = ShowExpressionMenu(Window(), place, hasCommands ? &enabled : nullptr, groups);
    if (HasEnded()) return;
    if (choice.offer) {
        Replace(InsertOffer(field.Text(), field.Selection(), *choice.offer));
    } else {
        Do(choice.command);
    }
}

void CEditFormulaDlg::Do(TextCommand command) {
    switch (command) {
        case TextCommand::Undo:
            Undo();
            break;
        case TextCommand::Redo:
            Redo();
            break;
        case TextCommand::Cut:
            field.Do(WM_CUT);
            break;
        case TextCommand::Copy:
            field.Do(WM_COPY);
            break;
        case TextCommand::Paste:
            Paste();
            break;
        case TextCommand::Delete:
            field.Do(WM_CLEAR);
            break;
        case TextCommand::SelectAll:
            field.Select({0, static_cast<std::int32_t>(field.Text().size())});
            break;
        case TextCommand::None:
            break;
    }
}

/// What is selected stays where there is nothing to take its place.
void CEditFormulaDlg::Paste() {
    const std::u16string pasted = ClipboardText(Window());
    if (!pasted.empty()) field.Insert(pasted);
}

void CEditFormulaDlg::Replace(const std::optional<TextReplacement>& replacement) {
    if (replacement) field.Replace(*replacement);
}

void CEditFormulaDlg::Accept() {
    std::u16string text = editor.Accept();
    // What wasn't touched stays to the letter, however the field writes a line end.
    if (text != openingText) expression = std::move(text);
    End(IDOK);
}

std::u16string CEditFormulaDlg::Text() {
    wanted.clear();
    lines = CFieldLines(field.Text());
    return lines.Text();
}

TextRange CEditFormulaDlg::Selection() {
    return lines.InText(field.Selection());
}

void CEditFormulaDlg::Show(const ExpressionRun& run) {
    const TextRange range = lines.InField(run.range);
    if (range.first < range.end) wanted.push_back({range, run.isBold, run.colour});
}

/// All runs are known: only what differs is formatted, which moves no selection.
void CEditFormulaDlg::Select(TextRange range) {
    if (!field.Format(format.Change(field.Text(), lines.InField(range).end, wanted))) format.Forget();
}

void CEditFormulaDlg::ShowStatus(const std::u16string& message, const std::u16string& place) {
    SetText(IDC_EXPRESSION_STATUS, message);
    SetText(IDC_EXPRESSION_POSITION, place);
}

}  // namespace reka
