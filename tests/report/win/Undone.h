// SPDX-License-Identifier: MIT
// What a run has changed on somebody's computer is taken back however the run ends: by itself, by a failure, or by
// Ctrl+C, a closed window or the end of the session, of which the system tells a thread of its own.

#pragma once

#include <windows.h>

#include <functional>
#include <mutex>

namespace testreport {

/// Held while something is started or taken back. Once the run is interrupted it is never free again: nothing is begun
/// any more until the system ends the program.
std::recursive_mutex& Beginnings();

/// Takes something back at its end. Those that are alive at once go in the reverse of their order.
class CUndone {
public:
    explicit CUndone(std::function<void()> undo);
    ~CUndone();
    CUndone(const CUndone&) = delete;
    CUndone& operator=(const CUndone&) = delete;
};

/// Ends the processes of a job when the run is interrupted, before anything is taken back.
class CEndedJob {
public:
    /// `owned` may be null.
    explicit CEndedJob(HANDLE owned);
    ~CEndedJob();
    CEndedJob(const CEndedJob&) = delete;
    CEndedJob& operator=(const CEndedJob&) = delete;
    HANDLE Get() const { return job; }

private:
    HANDLE job;
};

/// Has all of this done when the console says that the program is to end.
void WatchForInterruption();

}  // namespace testreport
