// See WindowsEditor.h.

#include "editor/win/WindowsEditor.h"

#include <windows.h>

#include "editor/win/CEditorWindows.h"
#include "manager/ManagerTemplates.h"

namespace reka {

namespace {

class CWindowsEditor final : public IEditor {
public:
    bool EditPackage(ReactionPackDefinition& definition) noexcept override {
        try {
            return CEditorWindows(GetActiveWindow()).EditPackage(definition, MakeManagerTemplates);
        } catch (...) {
            SetLastError(ERROR_OUTOFMEMORY);
            return false;
        }
    }

    void EditTemplates(ITemplateSource& templates) noexcept override {
        try {
            CEditorWindows(GetActiveWindow()).ManageTemplates(templates);
        } catch (...) {
            SetLastError(ERROR_OUTOFMEMORY);
        }
    }
};

// Not local to its function: the runtime's guard would hold handles that stay when the module is unloaded.
CWindowsEditor editor;

}  // namespace

IEditor& WindowsEditor() {
    return editor;
}

}  // namespace reka
