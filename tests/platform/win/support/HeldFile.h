// SPDX-License-Identifier: MIT
// A file that another program has open, in this program, and pauses in which no time passes. What a person or a virus
// scanner does meanwhile happens in such a pause.

#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/win/FilesInUse.h"

namespace reka::test {

/// How another program may share a file that it reads.
constexpr DWORD sharingModes[] = {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE};

inline std::string NameOfSharing(const testing::TestParamInfo<DWORD>& row) {
    std::string name;
    if ((row.param & FILE_SHARE_READ) != 0) name += "Read";
    if ((row.param & FILE_SHARE_WRITE) != 0) name += "Write";
    if ((row.param & FILE_SHARE_DELETE) != 0) name += "Delete";
    return name.empty() ? "Nothing" : name;
}

class CHeldFile {
public:
    CHeldFile() = default;
    ~CHeldFile() { Close(); }
    CHeldFile(const CHeldFile&) = delete;
    CHeldFile& operator=(const CHeldFile&) = delete;

    /// Opens the file for reading, shared as `sharing` says.
    void Open(const std::u16string& path, DWORD sharing) {
        Close();
        handle = CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ, sharing, nullptr,
                             OPEN_EXISTING, 0, nullptr);
        EXPECT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    }
    void Close() {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE handle = INVALID_HANDLE_VALUE;
};

/// Takes the place of the system's pauses while it lives.
class CFakePause : public IFilePause {
public:
    CFakePause() : before(ReplaceFilePause(this)) {}
    ~CFakePause() override { ReplaceFilePause(before); }
    CFakePause(const CFakePause&) = delete;
    CFakePause& operator=(const CFakePause&) = delete;

    void Wait(DWORD milliseconds) noexcept override {
        waits.push_back(milliseconds);
        if (onWait) onWait();
    }

    std::vector<DWORD> waits;
    std::function<void()> onWait;

private:
    IFilePause* before;
};

}  // namespace reka::test
