// SPDX-License-Identifier: MIT
// The buttons of the shell: OK and Store check the definition, Load and Store go to the templates. A template under
// edit has its templates at hand; a package makes a manager for the time of the action, whose list is as fresh as its
// file.

#include "editor/EditShell.h"

#include <iterator>
#include <memory>
#include <utility>

#include "editor/HelpFile.h"
#include "platform/Holders.h"
#include "platform/SameText.h"

namespace reka {

namespace {

std::unique_ptr<ReactionPackDefinition>* FindTemplate(TemplateStore& store, const std::u16string& name) {
    for (auto& candidate : store.templates) {
        if (SameText(candidate->name.View(), name)) return &candidate;
    }
    return nullptr;
}

/// A template brings everything but the package's own name and description.
void TakeContent(ReactionPackDefinition& definition, const ReactionPackDefinition& source) {
    ReactionPackDefinition copy(nullptr);
    copy.CopyFrom(source);
    definition.compounds.swap(copy.compounds);
    definition.reactions.swap(copy.reactions);
    definition.pcdFile.swap(copy.pcdFile);
    definition.thermoVersion = copy.thermoVersion;
}

}  // namespace

EditPage PageOfTab(std::int32_t selectedTab) {
    const bool isPage = selectedTab >= 0 && selectedTab < static_cast<std::int32_t>(std::size(editPageLabels));
    return isPage ? static_cast<EditPage>(selectedTab) : EditPage::General;
}

EditPage PageBeside(std::int32_t selectedTab, std::int32_t steps) {
    constexpr auto count = static_cast<std::int32_t>(std::size(editPageLabels));
    const std::int32_t tab = (static_cast<std::int32_t>(PageOfTab(selectedTab)) + steps) % count;
    return PageOfTab(tab < 0 ? tab + count : tab);
}

EditPage PageOfPart(CheckedPart part) {
    switch (part) {
        case CheckedPart::Name:
            return EditPage::General;
        case CheckedPart::Compounds:
            return EditPage::Compounds;
        default:
            return EditPage::Reactions;
    }
}

CEditShell::CEditShell(ReactionPackDefinition& edited, ITemplateSource* templates, TemplateSourceFactory makeTemplates,
                       IEditorUi& asked)
    : compoundPage(edited, asked),
      reactionPage(edited, asked),
      definition(edited),
      ui(asked),
      templateSource(templates),
      makeTemplateSource(std::move(makeTemplates)),
      storeAllowed(!templates) {}

CEditShell::CEditShell(ReactionPackDefinition& edited, TemplateSourceFactory makeTemplates, IEditorUi& asked)
    : CEditShell(edited, nullptr, std::move(makeTemplates), asked) {}

CEditShell::CEditShell(ReactionPackDefinition& edited, ITemplateSource& templates, IEditorUi& asked)
    : CEditShell(edited, &templates, nullptr, asked) {}

bool CEditShell::Check(const GeneralPageFields& general, std::u16string& errorText) {
    const TemplateStore* const store = templateSource ? &templateSource->Store() : nullptr;
    return ValidateDefinition(definition, store, storeAllowed, general.name, general.description, general.versionIndex,
                              errorText, ui, complaint);
}

bool CEditShell::Accept(const GeneralPageFields& general) {
    std::u16string errorText;
    if (Check(general, errorText)) return true;
    ui.ShowError(errorText);
    return false;
}

std::unique_ptr<ITemplateSource> CEditShell::MakeTemplateSource() {
    std::unique_ptr<ITemplateSource> made = makeTemplateSource ? makeTemplateSource() : nullptr;
    if (!made) ui.ShowError(u"out of memory");
    return made;
}

bool CEditShell::Load(const GeneralPageFields& general) {
    const std::unique_ptr<ITemplateSource> made = templateSource ? nullptr : MakeTemplateSource();
    ITemplateSource* const templates = templateSource ? templateSource : made.get();
    if (!templates) return false;
    definition.name = BstrFromString(general.name);
    std::u16string templateName = general.name;
    if (!ui.AskForTemplateToLoad(*templates, templateName)) return false;
    const auto* const found = FindTemplate(templates->Store(), templateName);
    if (!found) {
        ui.ShowError(u"Error: specified template not found");
        return false;
    }
    TakeContent(definition, **found);
    compoundPage.Select(-1);
    reactionPage.Select(0);
    return true;
}

void CEditShell::Store(const GeneralPageFields& general) {
    if (templateSource) {  // the button is hidden
        ui.ShowMessage(u"Internal error.", u"Error:", messagestyle::ok);
        return;
    }
    std::u16string errorText;
    if (!Check(general, errorText)) {
        ui.ShowMessage(errorText, u"Cannot store:", messagestyle::ok | messagestyle::iconError);
        return;
    }
    const std::unique_ptr<ITemplateSource> templates = MakeTemplateSource();
    if (!templates) return;
    std::u16string templateName = general.name;
    if (!ui.AskForTemplateToStore(*templates, templateName)) return;
    StoreAs(templateName, templates->Store());
}

// The list is written whatever the user answers, so that a file that was set aside as damaged is whole again.
void CEditShell::StoreAs(const std::u16string& templateName, TemplateStore& store) {
    definition.name = BstrFromString(templateName);  // the field keeps its text, which counts again at the next check
    auto copy = std::make_unique<ReactionPackDefinition>(store.simulationContext.Get());
    copy->CopyFrom(definition);
    if (auto* const found = FindTemplate(store, templateName)) {
        const std::u16string question =
            u"A reaction package template with the name " + templateName + u" already exists. Overwrite?";
        if (ui.ShowMessage(question, u"Store template:", messagestyle::okCancel) == MessageAnswer::Ok) {
            found->swap(copy);
        }
    } else {
        store.templates.push_back(std::move(copy));
    }
    store.StoreTemplates();
}

void CEditShell::ShowHelp() {
    if (!ui.ShowHelp(HelpFilePath(), firstHelpTopic)) TellHelpIsMissing(ui);
}

}  // namespace reka
