// SPDX-License-Identifier: MIT
// The dialog in which a user keeps the templates: the list of their names, and what its buttons do with the templates.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/EditorUi.h"
#include "manager/TemplateSource.h"

namespace reka {

/// The dialog on the templates of `manager`, which are read by whoever opens it, and stored when it has ended. Both
/// outlive this. May throw std::bad_alloc; the list of templates is then whole, and the file may lack the last change.
///
/// The list shows the templates as they were when it was filled. A template is told by its index there, and by the name
/// in that row: where the templates were read afresh from the file meanwhile and another one stands there, nothing
/// happens to it.
///
/// A deletion waits in memory for the end of the dialog. To create or edit a template reads the file, so that what was
/// deleted is back: the user is asked before that.
class CTemplateManager {
public:
    /// Fills the list.
    CTemplateManager(ITemplateSource& manager, IEditorUi& asked);

    /// The names in the list, in the order of the templates.
    const std::vector<std::u16string>& Names() const { return names; }

    /// The index of the selected row; -1 for none, as after each filling of the list.
    std::int32_t Selection() const;
    /// Any index that isn't one of a row selects none.
    void Select(std::int32_t index) { selection = index; }
    /// The row from which the keyboard goes on after the filling of the list: that of what was edited or made, or of
    /// what came behind a deleted one; -1 for an empty list.
    std::int32_t Caret() const { return caret; }
    /// Edit and Delete can be used for a selected row alone; Create and Close always can.
    bool IsEditEnabled() const { return Selection() >= 0; }
    bool IsDeleteEnabled() const { return IsEditEnabled(); }

    // The buttons. True: the list is filled afresh, to be shown again.
    bool Create();
    bool Edit();
    bool Delete();

private:
    /// With the caret in that row, or the last one if there are less.
    void FillList(std::size_t caretRow);
    /// Whether the file may be read again, for all that waits to be deleted.
    bool MayReadAgain();
    /// Reads the file. True where that brought back what was deleted, with the list filled afresh.
    bool ReadAgain();
    /// Whether a template of this name stands at `index`.
    bool IsInRow(std::size_t index, std::u16string_view name);
    /// Tells that the template of that name has left the row `index`, and shows the list as it is. True.
    bool TellItHasMoved(std::size_t index, const std::u16string& name);
    /// Whether what is edited can be stored; false after the user has been told that it can't.
    bool CanStore();

    ITemplateSource& source;
    IEditorUi& ui;
    std::vector<std::u16string> names;
    std::int32_t selection = -1;
    std::int32_t caret = -1;
    bool isDeletionWaiting = false;
};

}  // namespace reka
