// SPDX-License-Identifier: MIT
// The windows through which the editor asks its user.

#pragma once

#include <windows.h>

#include "editor/EditorUi.h"
#include "editor/win/CDialog.h"

namespace reka {

/// The dialogs of one editing, from the call of the simulator to its end. Each belongs to the topmost one that is open,
/// and the first to the window that is handed in, null for none. Where the system refuses a dialog, or the one
/// below has ended meanwhile, it counts as cancelled. May throw std::bad_alloc.
///
/// As long as this lives the floating point settings are ours: a simulator may trap on what pages compute and on what
/// the system's drawing does. So they are for the simulator's own windows too, to which a dialog passes on their
/// messages: to change them for each message would put the system's drawing under the simulator's again.
class CEditorWindows final : public IEditorUi {
public:
    explicit CEditorWindows(HWND simulatorWindow) : firstOwner(simulatorWindow) {}

    bool EditPackage(ReactionPackDefinition& definition) noexcept override;
    void EditTemplates(ITemplateSource& templates) noexcept override;
    MessageAnswer Show(const UserMessage& message) noexcept override;
    const COwnArithmetic& Arithmetic() const override { return arithmetic; }
    bool AskForText(const std::u16string& title, CBstr& inputText) override;
    bool EditExpression(const ReactionPackDefinition& definition, const std::u16string& item,
                        const std::u16string& unit, std::u16string& expression) override;
    bool AskForRate(const ReactionDefinition& reaction, const ReactionPackDefinition& definition,
                    std::u16string& rateText) override;
    bool AskForCompoundSource(const std::vector<std::u16string>& templateNames,
                              std::int32_t& selectedTemplate) override;
    bool AddCompoundsOfMaterial(const MaterialCompounds& compounds, ReactionPackDefinition& definition) override;
    bool AddCompoundsOfFile(ReactionPackDefinition& definition) override;
    OpenFileAnswer AskForFile(const OpenFileRequest& request, std::u16string& path) override;
    bool EditTemplate(ReactionPackDefinition& definition, ITemplateSource& templates) override;
    bool AskForTemplateToLoad(ITemplateSource& templates, std::u16string& templateName) override;
    bool AskForTemplateToStore(ITemplateSource& templates, std::u16string& templateName) override;
    bool ShowHelp(const std::u16string& path, const std::u16string& topic) override;

private:
    class COpenDialog;

    /// The topmost dialog that is open, or what the first one belongs to.
    HWND Owner() const;
    template <class Dialog>
    bool Run(Dialog& dialog);

    const COwnArithmetic arithmetic;
    HWND firstOwner;
    const COpenDialog* topmost = nullptr;
};

}  // namespace reka
