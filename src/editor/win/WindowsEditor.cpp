// See WindowsEditor.h.

#include "editor/win/WindowsEditor.h"

#include <windows.h>

#include "editor/win/CEditorWindows.h"
#include "manager/ManagerTemplates.h"
#include "platform/HostArithmetic.h"

namespace reka {

namespace {

// A simulator may trap on what pages compute and on what the system's drawing does: while a dialog is open the settings
// are ours.
class CWindowsEditor final : public IEditor {
public:
    bool EditPackage(ReactionPackDefinition& definition) noexcept override {
        const COwnArithmetic arithmetic;
        try {
            return CEditorWindows(GetActiveWindow()).EditPackage(definition, MakeManagerTemplates);
        } catch (...) {
            SetLastError(ERROR_OUTOFMEMORY);
            return false;
        }
    }

    void EditTemplates(ITemplateSource& templates) noexcept override {
        const COwnArithmetic arithmetic;
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
