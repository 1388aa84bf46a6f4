// SPDX-License-Identifier: MIT
// Colouring sets the look of a part of the field, which costs more the longer the text is. So what the editor wants to
// show is collected, compared with what the field shows, and only the difference is set.

#include "editor/win/CEditFormulaDlg.h"

#include <richedit.h>

#include <utility>

#include "editor/win/resource.h"

namespace reka {

CEditFormulaDlg::CEditFormulaDlg(const ReactionPackDefinition& definition, const std::u16string& shownItem,
                                 const std::u16string& shownUnit, std::u16string& editedExpression)
    : CDialog(IDD_EXPRESSION),
      item(shownItem),
      unit(shownUnit),
      expression(editedExpression),
      editor(definition, *this) {
    LoadExpressionControl();
}

void CEditFormulaDlg::OnInit() {
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
            NoteText();  // it may have changed without memory to note it
            Replace(history.Undo());
            break;
        case static_cast<int>(FieldRequest::Redo):
            NoteText();
            Replace(history.Redo());
            break;
        case static_cast<int>(FieldRequest::Paste):
            Paste();
            break;
        default:
            break;
    }
}

LRESULT CEditFormulaDlg::OnNotify(NMHDR& header) {
    if (header.idFrom == IDC_EXPRESSION_TEXT && header.code == EN_SELCHANGE) editor.SelectionChanged();
    return 0;
}

/// A new font takes the look of all parts away.
void CEditFormulaDlg::OnScaled() {
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

void CEditFormulaDlg::ShowStatus(const std::u16string& message) {
    SetText(IDC_EXPRESSION_STATUS, message);
}

}  // namespace reka
