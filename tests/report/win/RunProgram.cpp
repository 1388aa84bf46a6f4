// SPDX-License-Identifier: MIT
// A test program starts others, so all of them are in a job, which ends when the program has. The output goes into a
// file rather than into a pipe, so that a program that a test has left running can't hold the reader up.

#include "report/win/RunProgram.h"

#include <cstdio>
#include <fstream>
#include <mutex>
#include <sstream>

#include "report/win/Undone.h"

namespace testreport {

namespace {

constexpr DWORD firstCrash = 0xC0000000;

class CHandle {
public:
    explicit CHandle(HANDLE owned) : handle(owned) {}
    ~CHandle() {
        if (handle && handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    }
    CHandle(const CHandle&) = delete;
    CHandle& operator=(const CHandle&) = delete;
    HANDLE Get() const { return handle; }

private:
    HANDLE handle;
};

/// A job whose processes end with it, those included that they start; null if the system makes none.
HANDLE MakeJob() {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (job) SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

HANDLE OpenInherited(const wchar_t* path, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited, creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string EndingOf(HANDLE process, HANDLE job, unsigned mostSeconds) {
    if (WaitForSingleObject(process, mostSeconds * 1000) != WAIT_OBJECT_0) {
        if (job) TerminateJobObject(job, 1);
        TerminateProcess(process, 1);  // which no job holds where the run itself is in one of an old Windows
        WaitForSingleObject(process, 10000);
        return "it took longer than " + std::to_string(mostSeconds) + " seconds";
    }
    DWORD status = 1;
    GetExitCodeProcess(process, &status);
    if (status == 0) return {};
    char text[40] = {};
    std::snprintf(text, sizeof text, status < firstCrash ? "it ended with status %lu" : "it crashed with 0x%08lX",
                  status);
    return text;
}

std::string ReadWhole(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

}  // namespace

bool IsOfOtherWidth(DWORD startError) {
    return startError == ERROR_BAD_EXE_FORMAT || startError == ERROR_EXE_MACHINE_TYPE_MISMATCH;
}

Ended RunProgram(const std::filesystem::path& program, const std::wstring& arguments,
                 const std::filesystem::path& folder, unsigned mostSeconds) {
    std::filesystem::create_directories(folder);
    const std::filesystem::path outputPath = folder / L"output.txt";
    Ended ended;
    PROCESS_INFORMATION started = {};
    const CEndedJob job(MakeJob());
    {
        const std::lock_guard lock(Beginnings());
        const CHandle output(OpenInherited(outputPath.c_str(), GENERIC_WRITE, CREATE_ALWAYS));
        const CHandle input(OpenInherited(L"NUL", GENERIC_READ, OPEN_EXISTING));
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = input.Get();
        start.hStdOutput = output.Get();
        start.hStdError = output.Get();
        std::wstring command = L"\"" + program.wstring() + L"\" " + arguments;
        if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                            folder.c_str(), &start, &started)) {
            ended.startError = GetLastError();
            ended.ending = "it can't be started (error " + std::to_string(ended.startError) + ")";
            return ended;
        }
        AssignProcessToJobObject(job.Get(), started.hProcess);
        ResumeThread(started.hThread);
    }
    const CHandle thread(started.hThread);
    const CHandle process(started.hProcess);
    ended.ending = EndingOf(process.Get(), job.Get(), mostSeconds);
    ended.output = ReadWhole(outputPath);
    return ended;
}

}  // namespace testreport
