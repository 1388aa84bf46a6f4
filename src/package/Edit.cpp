// The place where the windows are put by the module that has them. Until then, and where there are none, an editor
// stands here that shows nothing, so that no caller asks whether there is one.

#include "package/Edit.h"

#include <utility>

namespace reka {

namespace {

/// Stands where there are no windows: every dialog counts as one that couldn't be shown.
class CNoEditor final : public IEditor {
public:
    bool EditPackage(ReactionPackDefinition& /*definition*/) noexcept override { return false; }
    void EditTemplates(ITemplateSource& /*templates*/) noexcept override {}
};

CNoEditor noEditor;
IEditor* present = nullptr;

}  // namespace

IEditor& Editor() {
    return present ? *present : noEditor;
}

IEditor* ReplaceEditor(IEditor* replacement) {
    return std::exchange(present, replacement);
}

}  // namespace reka
