// SPDX-License-Identifier: MIT
// A file system in memory that records its operations and fails as it is told.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Files.h"

namespace reka::test {

/// Takes the place of the system's files while it lives. Paths are kept as they come.
class CFakeFiles : public IFileSystem {
public:
    CFakeFiles() : before(ReplaceFiles(this)) {}
    ~CFakeFiles() override { ReplaceFiles(before); }
    CFakeFiles(const CFakeFiles&) = delete;
    CFakeFiles& operator=(const CFakeFiles&) = delete;

    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override;
    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override;
    bool Exists(const std::u16string& path) override;
    bool IsAbsent(const std::u16string& path) override;
    std::uint64_t LastWriteTime(const std::u16string& path) override;
    bool CreateFolder(const std::u16string& path) override;
    bool Copy(const std::u16string& from, const std::u16string& to) override;
    bool CopyNew(const std::u16string& from, const std::u16string& to) override;
    bool Rename(const std::u16string& from, const std::u16string& to) override;
    bool Delete(const std::u16string& path) override;
    bool Replace(const std::u16string& path, const void* data, std::size_t size) override;
    bool FindUserFolder(std::u16string& path) override;
    std::u16string LastErrorText() override { return errorText; }

    /// Records an operation; true if it is one that fails. Boxes aren't counted.
    bool Record(const std::string& operation);

    struct Entry {
        std::vector<std::uint8_t> bytes;
        std::uint64_t time = 0;
    };
    std::map<std::u16string, Entry> entries;
    std::set<std::u16string> undeletable;
    std::uint64_t now = 1000;  // the time of the next write
    std::u16string userFolder = u"U:/user";
    bool hasUserFolder = true;
    std::u16string errorText = u"the system's reason\r\n";

    std::vector<std::string> operations;  // in order: "copy A -> B", "read 4", ...; a test may add lines like "box ..."
    int failAt = 0;                       // number of the operation that fails, counted from 1; 0 for none
    int failCount = 1;                    // so many fail from there on
    std::function<void()> onWritten;      // runs at the end of each write
    int openFiles = 0;

private:
    IFileSystem* before;
};

}  // namespace reka::test
