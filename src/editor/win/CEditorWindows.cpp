// SPDX-License-Identifier: MIT
// The dialogs that are open are a chain on the stack, each linked to the one below it. A message box or a dialog
// belongs to the topmost of them whose window there is; where the system has ended one meanwhile, nothing opens above
// it.

#include "editor/win/CEditorWindows.h"

#include "editor/EditShell.h"
#include "editor/TemplateManager.h"
#include "editor/win/CAddCompDlg.h"
#include "editor/win/CCompoundsFromMaterialDlg.h"
#include "editor/win/CEditFormulaDlg.h"
#include "editor/win/CEditReactionPackDescDlg.h"
#include "editor/win/CInputDlg.h"
#include "editor/win/CLoadDlg.h"
#include "editor/win/CManagerDlg.h"
#include "editor/win/CPowerLawDlg.h"
#include "editor/win/CSelectCompoundMatTemplateDlg.h"
#include "editor/win/CStoreDlg.h"
#include "editor/win/ChooseFile.h"
#include "editor/win/HtmlHelp.h"
#include "manager/ManagerTemplates.h"

namespace reka {

/// One of the dialogs that lie upon each other, as long as it runs.
class CEditorWindows::COpenDialog {
public:
    COpenDialog(CEditorWindows& allWindows, const CDialog& opened)
        : windows(allWindows), dialog(opened), below(allWindows.topmost) {
        windows.topmost = this;
    }
    ~COpenDialog() { windows.topmost = below; }
    COpenDialog(const COpenDialog&) = delete;
    COpenDialog& operator=(const COpenDialog&) = delete;

    HWND Window() const { return dialog.Window(); }
    /// Also by the system.
    bool HasEnded() const { return dialog.HasEnded() || !dialog.Window(); }
    const COpenDialog* Below() const { return below; }

private:
    CEditorWindows& windows;
    const CDialog& dialog;
    const COpenDialog* below;
};

HWND CEditorWindows::Owner() const {
    for (const COpenDialog* open = topmost; open; open = open->Below()) {
        if (open->Window()) return open->Window();
    }
    return firstOwner;
}

template <class Dialog>
bool CEditorWindows::Run(Dialog& dialog) {
    if (topmost && topmost->HasEnded()) return false;
    const HWND owner = Owner();
    const COpenDialog open(*this, dialog);
    return dialog.Run(owner);
}

bool CEditorWindows::EditPackage(ReactionPackDefinition& definition) noexcept {
    try {
        CEditShell shell(definition, MakeManagerTemplates, *this);
        CEditReactionPackDescDlg dialog(shell, definition);
        return Run(dialog);
    } catch (...) {
        SetLastError(ERROR_OUTOFMEMORY);
        return false;
    }
}

void CEditorWindows::EditTemplates(ITemplateSource& templates) noexcept {
    try {
        CTemplateManager manager(templates, *this);
        CManagerDlg dialog(manager);
        Run(dialog);
    } catch (...) {
        SetLastError(ERROR_OUTOFMEMORY);
    }
}

bool CEditorWindows::EditTemplate(ReactionPackDefinition& definition, ITemplateSource& templates) {
    CEditShell shell(definition, templates, *this);
    CEditReactionPackDescDlg dialog(shell, definition);
    return Run(dialog);
}

MessageAnswer CEditorWindows::Show(const UserMessage& message) noexcept {
    const HWND owner = message.owner == MessageOwner::None ? nullptr : Owner();
    return static_cast<MessageAnswer>(
        MessageBoxW(owner, SystemText(message.text), SystemText(message.title), message.style));
}

bool CEditorWindows::AskForText(const std::u16string& title, CBstr& inputText) {
    CInputDlg dialog(title, inputText);
    return Run(dialog);
}

bool CEditorWindows::EditExpression(const ReactionPackDefinition& definition, const std::u16string& item,
                                    const std::u16string& unit, std::u16string& expression) {
    CEditFormulaDlg dialog(definition, item, unit, expression);
    return Run(dialog);
}

bool CEditorWindows::AskForRate(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                                std::u16string& rateText) {
    CPowerLawDlg dialog(reaction, definition, rateText, *this);
    return Run(dialog);
}

bool CEditorWindows::AskForCompoundSource(const std::vector<std::u16string>& templateNames,
                                          std::int32_t& selectedTemplate) {
    CSelectCompoundMatTemplateDlg dialog(templateNames, selectedTemplate);
    return Run(dialog);
}

bool CEditorWindows::AddCompoundsOfMaterial(const MaterialCompounds& compounds, ReactionPackDefinition& definition) {
    CCompoundsFromMaterialDlg dialog(compounds, definition, *this);
    return Run(dialog);
}

bool CEditorWindows::AddCompoundsOfFile(ReactionPackDefinition& definition) {
    CAddCompDlg dialog(definition, *this);
    return Run(dialog);
}

bool CEditorWindows::AskForTemplateToLoad(ITemplateSource& templates, std::u16string& templateName) {
    CLoadDlg dialog(templates, templateName, *this);
    return Run(dialog);
}

bool CEditorWindows::AskForTemplateToStore(ITemplateSource& templates, std::u16string& templateName) {
    CStoreDlg dialog(templates, templateName, *this);
    return Run(dialog);
}

OpenFileAnswer CEditorWindows::AskForFile(const OpenFileRequest& request, std::u16string& path) {
    return ChooseFile(Owner(), request, path);
}

bool CEditorWindows::ShowHelp(const std::u16string& path, const std::u16string& topic) {
    return HtmlHelp().Show(Owner(), path, topic);
}

}  // namespace reka
