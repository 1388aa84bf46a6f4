// SPDX-License-Identifier: MIT
// Files in memory, so that a benchmark of a reader or writer isn't one of the disk.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Files.h"

namespace reka::bench {

/// In force as long as it lives. Nothing fails but to open what isn't there.
class CMemoryFiles : public IFileSystem {
public:
    CMemoryFiles() : before(ReplaceFiles(this)) {}
    ~CMemoryFiles() override { ReplaceFiles(before); }

    using Bytes = std::vector<std::uint8_t>;
    Bytes& operator[](const std::u16string& path) { return files[path]; }

    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override;
    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override;
    bool Exists(const std::u16string& path) override { return files.contains(path); }
    std::uint64_t LastWriteTime(const std::u16string&) override { return 1; }
    bool CreateFolder(const std::u16string&) override { return true; }
    bool Copy(const std::u16string&, const std::u16string&) override { return false; }
    bool CopyNew(const std::u16string&, const std::u16string&) override { return false; }
    bool IsAbsent(const std::u16string& path) override { return !Exists(path); }
    bool Rename(const std::u16string& from, const std::u16string& to) override;
    bool Delete(const std::u16string& path) override;
    bool Replace(const std::u16string&, const void*, std::size_t) override { return false; }
    bool FindUserFolder(std::u16string& path) override;
    std::u16string LastErrorText() override { return {}; }

private:
    IFileSystem* before;
    std::map<std::u16string, Bytes> files;
    Bytes spare;  // of the file deleted last, for the next one: its growth is not what is measured
};

}  // namespace reka::bench
