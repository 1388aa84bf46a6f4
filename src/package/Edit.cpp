// SPDX-License-Identifier: MIT
// Where no editor has been put in, as on a platform without windows, there is one that shows nothing, so that callers
// need no case of their own. A module puts the windows in as it starts, before any object is made.

#include "package/Edit.h"

#include "platform/Seam.h"

namespace reka {

namespace {

/// Stands where there are no windows: every dialog counts as one that couldn't be shown.
class CNoEditor final : public IEditor {
public:
    bool EditPackage(ReactionPackDefinition& /*definition*/) noexcept override { return false; }
    void EditTemplates(ITemplateSource& /*templates*/) noexcept override {}
};

CNoEditor noEditor;
CSeam<IEditor> seam;

}  // namespace

IEditor& Editor() {
    return seam.Or(noEditor);
}

IEditor* ReplaceEditor(IEditor* replacement) {
    return seam.Replace(replacement);
}

}  // namespace reka
