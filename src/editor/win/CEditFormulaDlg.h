// SPDX-License-Identifier: MIT
// The expression editor.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/ExpressionEditor.h"
#include "editor/FieldLines.h"
#include "editor/TextHistory.h"
#include "editor/win/CDialog.h"
#include "editor/win/ExpressionField.h"
#include "editor/win/ExpressionMenu.h"

namespace reka {

class CEditFormulaDlg : public CDialog, private IExpressionField {
public:
    /// `edited` and `editedExpression` outlive the dialog.
    CEditFormulaDlg(const ReactionPackDefinition& edited, const std::u16string& shownItem,
                    const std::u16string& shownUnit, std::u16string& editedExpression);

    /// True for OK, with the text of the field, faulty or not. Otherwise the expression is as it was.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    LRESULT OnNotify(NMHDR& header) override;
    void OnLaidOut() override;
    void OnScaled(int oldDpi) override;

    // The editor's positions are those of the text, with line ends of two characters; the history and the format go by
    // the field's.
    std::u16string Text() override;
    TextRange Selection() override;
    void Show(const ExpressionRun& run) override;
    void Select(TextRange range) override;
    void ShowStatus(const std::u16string& message, const std::u16string& place) override;

    void TextHasChanged();
    void NoteText();
    void Paste();
    void ShowMenu(POINT place, bool hasCommands);
    void Do(TextCommand command);
    void Undo();
    void Redo();
    void Replace(const std::optional<TextReplacement>& replacement);
    void Accept();

    const ReactionPackDefinition& definition;
    std::u16string item;
    std::u16string unit;
    std::u16string& expression;
    CExpressionField field;
    CTextHistory history;
    CShownFormat format;
    CFieldLines lines;                  // of the text that the editor was given last
    std::vector<ExpressionRun> wanted;  // collected until all runs are known
    std::u16string openingText;
    CExpressionEditor editor;
};

}  // namespace reka
