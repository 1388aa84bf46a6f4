// SPDX-License-Identifier: MIT
// The templates of a user: package definitions kept in one configuration file per user, which a file beside the
// component seeds and may later replace.
//
// The file has no header beyond its count, all numbers are little-endian:
//     i32  number of templates; 0 or less for none
//     then for each: u32 size of its block, and the block as WriteStoredDefinition.h has it
// What stands behind the last block isn't looked at.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "records/Definition.h"

namespace reka {

/// The list of templates with its file. The list is a throwaway mirror: it is read again before almost every use, and
/// the file is all that counts in between. There is no lock on the file, so the last writer wins.
///
/// Nothing here reports to its caller. Trouble with the file, and want of memory, is shown to the user
/// (platform/UserMessages.h) and ends in an empty list or an unchanged file.
class TemplateStore {
public:
    /// The user's file, with its folders made if need be. With `reconcile` a user without a file gets a copy of the
    /// system's, and one whose file is older than the system's is asked whether to replace it; the file replaced is
    /// kept as a numbered backup, if that can be copied. Whether the user's file was seen, which without `reconcile`
    /// isn't looked for. May throw std::bad_alloc.
    static bool GetConfigFilePath(std::u16string& path, bool reconcile);

    /// Destroys the templates. That releases the context of each, which may run code of the host and let it call in: by
    /// then the list is empty, or already holds what was read in that call.
    void DiscardTemplates() noexcept;

    /// Reads the list afresh from the user's file. A file that can't be read whole gives an empty list: it is kept
    /// under the name of a backup, and the user is told. Pointers into the list are good until the next call.
    ///
    /// The list is empty as well where the file stands but couldn't be opened, couldn't be given the name of a backup,
    /// or where memory ran out. It says nothing of the file then, which nothing may replace: see `CanStore`.
    void LoadTemplates() noexcept;

    /// False, with the words for the user in `text`, after a load that has left a file unread which still stands: what
    /// the list has got since then doesn't hold what the file holds. May throw std::bad_alloc.
    bool CanStore(std::u16string& text) const;

    /// Writes the list to the user's file: to a temporary file first, which then takes its place. Where the list can't
    /// be stored the user is told, and nothing is written.
    ///
    /// Where writing fails half-way the user is told that nothing could be stored, and the partial file takes the place
    /// of the old one all the same; the next load sets it aside as damaged. That loses what the old file held. Want of
    /// memory never does: once the old file is deleted, nothing needs any until the new one is in its place.
    void StoreTemplates() noexcept;

    std::vector<std::unique_ptr<ReactionPackDefinition>> templates;  // in the order of the file
    const ReactionPackDefinition* templateUnderEdit = nullptr;       // the one that a dialog has open; not owned
    CComRef<IDispatch> simulationContext;                            // given to every definition made from now on

private:
    /// What a load has found. `isUnread` tells of a file that stands as it was and isn't in the list.
    struct LoadedTemplates {
        std::vector<std::unique_ptr<ReactionPackDefinition>> list;
        bool isUnread = false;
    };
    LoadedTemplates ReadTemplates(const std::u16string& path, bool wasSeen) const;

    bool isUnread = false;  // by the last load
};

}  // namespace reka
