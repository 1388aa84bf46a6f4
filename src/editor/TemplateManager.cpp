// SPDX-License-Identifier: MIT
// Each template is edited as a copy, which takes its place at OK. While a dialog is open anything may read the list of
// templates afresh - the dialog itself, to load one, or the simulator - so that nothing but its index leads back to a
// template.

#include "editor/TemplateManager.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/SameText.h"

namespace reka {

namespace {

ReactionPackDefinition* TemplateAt(const TemplateStore& store, std::size_t index) {
    return index < store.templates.size() ? store.templates[index].get() : nullptr;
}

/// The templates as the shell sees them while that of one index is open in it: whenever they are asked for, the one at
/// that index counts as the one under edit, with which the check of a name compares nothing.
class CTemplatesUnderEdit : public ITemplateSource {
public:
    CTemplatesUnderEdit(ITemplateSource& all, std::size_t editedIndex) : source(all), index(editedIndex) {}
    ~CTemplatesUnderEdit() override { source.Store().templateUnderEdit = nullptr; }
    CTemplatesUnderEdit(const CTemplatesUnderEdit&) = delete;
    CTemplatesUnderEdit& operator=(const CTemplatesUnderEdit&) = delete;

    HRESULT GetListOfReactionsPackages(VARIANT* names) override { return source.GetListOfReactionsPackages(names); }
    TemplateStore& Store() override {
        TemplateStore& store = source.Store();
        store.templateUnderEdit = TemplateAt(store, index);
        return store;
    }

private:
    ITemplateSource& source;
    std::size_t index;
};

}  // namespace

CTemplateManager::CTemplateManager(ITemplateSource& manager, IEditorUi& asked) : source(manager), ui(asked) {
    FillList(0);
}

void CTemplateManager::FillList(std::size_t caretRow) {
    selection = -1;
    names.clear();
    for (const auto& definition : source.Store().templates) names.emplace_back(definition->name.View());
    caret = names.empty() ? -1 : static_cast<std::int32_t>(std::min(caretRow, names.size() - 1));
}

std::int32_t CTemplateManager::Selection() const {
    // a negative one is beyond any list
    return static_cast<std::size_t>(selection) < names.size() ? selection : -1;
}

// Nobody is to work for nothing.
bool CTemplateManager::CanStore() {
    std::u16string text;
    if (source.Store().CanStore(text)) return true;
    ui.ShowError(text);
    return false;
}

bool CTemplateManager::MayReadAgain() {
    if (!isDeletionWaiting) return true;
    return ui.ShowMessage(
               u"Deleted templates stand in the file until this window is closed, and come back now; do you "
               u"want to go on?",
               u"Deleted templates:", messagestyle::carefulQuestion) == MessageAnswer::Yes;
}

bool CTemplateManager::ReadAgain() {
    const bool isBack = std::exchange(isDeletionWaiting, false);
    source.Store().LoadTemplates();
    if (isBack) FillList(static_cast<std::size_t>(std::max(selection, 0)));
    return isBack;
}

bool CTemplateManager::IsInRow(std::size_t index, std::u16string_view name) {
    const ReactionPackDefinition* const found = TemplateAt(source.Store(), index);
    return found && SameText(found->name.View(), name);
}

bool CTemplateManager::TellItHasMoved(std::size_t index, const std::u16string& name) {
    ui.ShowError(u"The template \"" + name +
                 u"\" does not stand in its row any more: close this window first, and open it again.");
    FillList(index);
    return true;
}

bool CTemplateManager::Create() {
    if (!MayReadAgain()) return false;
    TemplateStore& store = source.Store();
    auto created = std::make_unique<ReactionPackDefinition>(store.simulationContext.Get());
    store.templateUnderEdit = nullptr;
    const bool isFilled = ReadAgain();
    if (!CanStore() || !ui.EditTemplate(*created, source)) return isFilled;
    store.templates.push_back(std::move(created));
    FillList(store.templates.size());
    store.StoreTemplates();
    return true;
}

bool CTemplateManager::Edit() {
    if (Selection() < 0 || !MayReadAgain()) return false;
    TemplateStore& store = source.Store();
    const auto index = static_cast<std::size_t>(selection);
    const std::u16string name = names[index];
    auto copy = std::make_unique<ReactionPackDefinition>(store.simulationContext.Get());
    const bool wasInRow = IsInRow(index, name);
    if (wasInRow) copy->CopyFrom(*store.templates[index]);
    const bool isFilled = ReadAgain();
    if (!CanStore()) return isFilled;
    if (!wasInRow || !IsInRow(index, name)) return TellItHasMoved(index, name);
    {
        CTemplatesUnderEdit others(source, index);
        others.Store();
        if (!ui.EditTemplate(*copy, others)) return isFilled;
    }
    if (index < store.templates.size()) {
        store.templates[index].swap(copy);  // the old one goes when all is done: its end may let the simulator call in
    } else {
        store.templates.push_back(std::move(copy));  // the file has become shorter: what was edited isn't lost
    }
    FillList(index);
    store.StoreTemplates();
    return true;
}

bool CTemplateManager::Delete() {
    if (Selection() < 0) return false;
    TemplateStore& store = source.Store();
    const auto index = static_cast<std::size_t>(selection);
    const std::u16string shown = names[index];
    if (!IsInRow(index, shown)) return TellItHasMoved(index, shown);
    const std::u16string name(store.templates[index]->name.View());
    const std::u16string question =
        u"Are you sure you want to permanently delete the reaction package definition " + name + u"?";
    if (ui.ShowMessage(question, u"Delete Reaction Package Definition:", messagestyle::carefulQuestion) !=
        MessageAnswer::Yes) {
        return false;
    }
    // The question may have let the simulator read the file.
    if (!IsInRow(index, name)) return TellItHasMoved(index, name);
    std::unique_ptr<ReactionPackDefinition> erased;
    erased.swap(store.templates[index]);
    store.templates.erase(store.templates.begin() + static_cast<std::ptrdiff_t>(index));
    isDeletionWaiting = true;
    FillList(index);
    return true;
}

}  // namespace reka
