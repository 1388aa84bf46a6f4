// SPDX-License-Identifier: MIT
// Operations on a file that other programs have open: a virus scanner, a backup or another simulator. Most of them let
// it go within a moment, so an operation that they keep from its end is tried again for about a second. The same errors
// come where the user has no rights to a file; that costs this second, too, since the system doesn't tell the two
// apart.

#pragma once

#include <windows.h>

#include <utility>

namespace reka {

/// What lets time pass between two tries.
class IFilePause {
public:
    virtual ~IFilePause() = default;
    virtual void Wait(DWORD milliseconds) noexcept = 0;
};

/// Puts another one in place of the system's, or the system's again for null, and gives the one before. For tests.
IFilePause* ReplaceFilePause(IFilePause* replacement);

/// Whether the error says that others have the file open, or that it is deleted and only waits for them to close it.
bool IsInUse(DWORD error) noexcept;

/// Whether the error says that there is no file of that name.
bool IsMissing(DWORD error) noexcept;

/// Counts the pauses between the tries of one operation.
class CTries {
public:
    /// Waits for the next try. False once a second is used up. The thread's last error stays.
    bool WaitForNext() noexcept;

private:
    DWORD waited = 0;
    DWORD nextPause = 5;  // milliseconds, twice as many each time
};

/// Calls `succeeds` again as long as it is false with an error of a file in use. False: the last error is that of the
/// last try.
template <class Operation>
bool TryWhileInUse(Operation&& succeeds) {
    CTries tries;
    while (!succeeds()) {
        if (!IsInUse(GetLastError()) || !tries.WaitForNext()) return false;
    }
    return true;
}

/// The same for what looks for a file. One that was in use and is gone in the next moment is being replaced: whoever
/// does that gets the rest of the time to put the new one there.
template <class Operation>
bool FindWhileInUse(Operation&& finds) {
    CTries tries;
    bool wasInUse = false;
    while (!finds()) {
        const DWORD error = GetLastError();
        wasInUse = wasInUse || IsInUse(error);
        const bool isAgain = IsInUse(error) || (wasInUse && IsMissing(error));
        if (!isAgain || !tries.WaitForNext()) return false;
    }
    return true;
}

}  // namespace reka
