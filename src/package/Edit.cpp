// Where no editor has been put in, as on a platform without windows, there is one that shows nothing, so that callers
// need no case of their own. A module puts the windows in as it starts, before any object is made.

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
