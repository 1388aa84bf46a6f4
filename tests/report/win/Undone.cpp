// SPDX-License-Identifier: MIT
// The system ends the program when its handler returns, five seconds after a window is closed at the latest: so a test
// program that runs isn't waited for but ended, and couldn't change anything behind what is taken back.

#include "report/win/Undone.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace testreport {

namespace {

std::vector<std::function<void()>> undos;  // guarded by Beginnings, as are the jobs
std::vector<HANDLE> jobs;

void UndoLast() {
    const std::function<void()> undo = std::move(undos.back());
    undos.pop_back();
    try {
        undo();
    } catch (const std::exception&) {
        return;  // the others are taken back all the same
    }
}

BOOL WINAPI Interrupt(DWORD /*event*/) {
    Beginnings().lock();  // for good
    for (const HANDLE job : jobs) TerminateJobObject(job, 1);
    while (!undos.empty()) UndoLast();
    return FALSE;  // which ends the program
}

}  // namespace

std::recursive_mutex& Beginnings() {
    static std::recursive_mutex mutex;
    return mutex;
}

CUndone::CUndone(std::function<void()> undo) {
    const std::lock_guard lock(Beginnings());
    undos.push_back(std::move(undo));
}

CUndone::~CUndone() {
    const std::lock_guard lock(Beginnings());
    UndoLast();
}

CEndedJob::CEndedJob(HANDLE owned) : job(owned) {
    const std::lock_guard lock(Beginnings());
    if (job) jobs.push_back(job);
}

CEndedJob::~CEndedJob() {
    const std::lock_guard lock(Beginnings());
    std::erase(jobs, job);
    if (job) CloseHandle(job);
}

void WatchForInterruption() {
    SetConsoleCtrlHandler(Interrupt, TRUE);
}

}  // namespace testreport
