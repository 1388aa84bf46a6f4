// SPDX-License-Identifier: MIT
// How the objects reach the windows of the editor: a seam, since only one platform has windows, and so that a test can
// edit in place of a user.

#pragma once

namespace reka {

class ITemplateSource;
struct ReactionPackDefinition;

/// Each call is modal for the window that is active in the process, and returns when the user has ended the dialog.
class IEditor {
public:
    virtual ~IEditor() = default;

    /// Opens the edit shell on the copy of a package's definition. True for OK: `definition` has passed its check, and
    /// takes the place of the package's own. On anything else, also where no dialog can be shown, it may be half
    /// edited and is thrown away.
    virtual bool EditPackage(ReactionPackDefinition& definition) noexcept = 0;

    /// Opens the dialog in which the user keeps the templates, which were just read. What the user changes stays in the
    /// list, for the caller to store. Where the dialog can't be shown nothing happens, and the reason is the thread's
    /// last error.
    virtual void EditTemplates(ITemplateSource& templates) noexcept = 0;
};

/// The editor of this process: one that shows nothing where there are no windows.
IEditor& Editor();

/// Puts another one in its place, or none for null, and gives the one before. For the start of the module and for
/// tests.
IEditor* ReplaceEditor(IEditor* replacement);

}  // namespace reka
