// SPDX-License-Identifier: MIT
// Each call of an object opens windows of its own, with the floating point settings that belong to them; no dialog
// outlives the call.

#include "editor/win/WindowsEditor.h"

#include <windows.h>

#include "editor/win/CEditorWindows.h"

namespace reka {

namespace {

class CWindowsEditor final : public IEditor {
public:
    bool EditPackage(ReactionPackDefinition& definition) noexcept override {
        return CEditorWindows(GetActiveWindow()).EditPackage(definition);
    }
    void EditTemplates(ITemplateSource& templates) noexcept override {
        CEditorWindows(GetActiveWindow()).EditTemplates(templates);
    }
};

// Not local to its function: the runtime's guard would hold handles that stay when the module is unloaded.
CWindowsEditor editor;

}  // namespace

IEditor& WindowsEditor() {
    return editor;
}

}  // namespace reka
