// SPDX-License-Identifier: MIT
// The edit shell: the dialog in which one definition is edited, with its three pages, and the buttons that check it,
// load it from a template and store it as one.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "editor/CompoundPage.h"
#include "editor/EditorUi.h"
#include "editor/GeneralPage.h"
#include "editor/ReactionPage.h"
#include "manager/TemplateSource.h"
#include "manager/ValidateDefinition.h"
#include "records/Definition.h"

namespace reka {

/// The tabs in their order, and the page that each one shows.
enum class EditPage : std::int32_t { General = 0, Compounds = 1, Reactions = 2 };
constexpr const char16_t* editPageLabels[] = {u"General", u"Compounds", u"Reactions"};

/// The page of the tab that is selected; the first one where none is.
EditPage PageOfTab(std::int32_t selectedTab);

/// The page of the tab that many steps behind the selected one, or before it; the last tab and the first are
/// neighbours, too.
EditPage PageBeside(std::int32_t selectedTab, std::int32_t steps);

/// The page on which a user corrects what a check speaks of.
EditPage PageOfPart(CheckedPart part);

/// The shell on a private copy of a definition, which the opener takes over after OK and throws away otherwise: nothing
/// is ever undone. A button that reads the general page is handed its fields. What is handed in outlives this. May
/// throw std::bad_alloc; the definition can be edited further.
class CEditShell {
public:
    /// On the definition of a package. Load and Store get the templates from `makeTemplates`, for one action each.
    CEditShell(ReactionPackDefinition& edited, TemplateSourceFactory makeTemplates, IEditorUi& asked);
    /// On a template, one of those of `templates` or a new one.
    CEditShell(ReactionPackDefinition& edited, ITemplateSource& templates, IEditorUi& asked);

    /// A template is stored by OK: the button Store is hidden.
    bool IsStoreShown() const { return storeAllowed; }

    /// OK. True: the dialog ends, and the definition has passed the check. False: the user has been told why not.
    bool Accept(const GeneralPageFields& general);

    /// What the last check by `Accept` or `Store` has complained of; nothing where it has passed.
    const std::optional<CheckSubject>& Complaint() const { return complaint; }

    /// True: the definition has got compounds, reactions, thermo version and file of the template that the user chose,
    /// and the compounds page and the reactions page are to be shown afresh. The general page stays as it is: its name,
    /// description and version are those that the next check takes.
    bool Load(const GeneralPageFields& general);

    /// Stores the definition, if it passes the check, as the template that the user names.
    void Store(const GeneralPageFields& general);

    void ShowHelp();

    CCompoundPage compoundPage;
    CReactionPage reactionPage;

private:
    CEditShell(ReactionPackDefinition& edited, ITemplateSource* templates, TemplateSourceFactory makeTemplates,
               IEditorUi& asked);
    bool Check(const GeneralPageFields& general, std::u16string& errorText);
    std::unique_ptr<ITemplateSource> MakeTemplateSource();
    void StoreAs(const std::u16string& templateName, TemplateStore& store);

    ReactionPackDefinition& definition;
    IEditorUi& ui;
    ITemplateSource* templateSource;  // null for a package
    TemplateSourceFactory makeTemplateSource;
    bool storeAllowed;
    std::optional<CheckSubject> complaint;
};

}  // namespace reka
