// SPDX-License-Identifier: MIT
// How long is waited for a file that others have open. The first pauses are short, as most programs only look into a
// file; together all come to a second, which a user still takes for the disk.

#include "platform/win/FilesInUse.h"

#include <algorithm>

#include "platform/Seam.h"

namespace reka {

namespace {

constexpr DWORD longestPause = 100;  // milliseconds, as are the others
constexpr DWORD longestWait = 1000;
constexpr DWORD deletePending = 303;  // ERROR_DELETE_PENDING

class CSystemPause final : public IFilePause {
public:
    void Wait(DWORD milliseconds) noexcept override { Sleep(milliseconds); }
};

CSystemPause systemPause;
CSeam<IFilePause> seam;

}  // namespace

IFilePause* ReplaceFilePause(IFilePause* other) {
    return seam.Replace(other);
}

bool IsInUse(DWORD error) noexcept {
    // Access is denied to a file that is deleted while others have it open.
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED ||
           error == ERROR_USER_MAPPED_FILE || error == deletePending;
}

bool IsMissing(DWORD error) noexcept {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool CTries::WaitForNext() noexcept {
    if (waited == longestWait) return false;
    const DWORD pause = std::min(nextPause, longestWait - waited);
    waited += pause;
    nextPause = std::min(2 * nextPause, longestPause);
    const DWORD error = GetLastError();
    seam.Or(systemPause).Wait(pause);
    SetLastError(error);
    return true;
}

}  // namespace reka
