// SPDX-License-Identifier: MIT
// Files as vectors of bytes. The memory of a deleted file is kept for the next one that is written, so that a store
// which is measured again and again doesn't measure the heap.

#include "bench/MemoryFiles.h"

#include <algorithm>
#include <utility>

namespace reka::bench {

namespace {

class CMemoryFile : public IFile {
public:
    explicit CMemoryFile(CMemoryFiles::Bytes& content) : bytes(content) {}

    std::size_t Read(void* target, std::size_t size) override {
        const std::size_t count = place < bytes.size() ? std::min(size, bytes.size() - place) : 0;
        if (count > 0) std::copy_n(bytes.data() + place, count, static_cast<std::uint8_t*>(target));
        place += count;
        return count;
    }
    bool HasFailed() const override { return false; }
    bool Write(const void* source, std::size_t size) override {
        const auto* first = static_cast<const std::uint8_t*>(source);
        bytes.insert(bytes.end(), first, first + size);
        return true;
    }
    bool Seek(std::uint64_t offset) override {
        place = static_cast<std::size_t>(offset);
        return true;
    }
    bool Flush() override { return true; }

private:
    CMemoryFiles::Bytes& bytes;
    std::size_t place = 0;
};

}  // namespace

std::unique_ptr<IFile> CMemoryFiles::OpenForReading(const std::u16string& path) {
    const auto found = files.find(path);
    return found == files.end() ? nullptr : std::make_unique<CMemoryFile>(found->second);
}

std::unique_ptr<IFile> CMemoryFiles::OpenForWriting(const std::u16string& path) {
    Bytes& bytes = files[path];
    if (spare.capacity() > bytes.capacity()) bytes.swap(spare);
    bytes.clear();
    return std::make_unique<CMemoryFile>(bytes);
}

bool CMemoryFiles::Rename(const std::u16string& from, const std::u16string& to) {
    files[to] = std::exchange(files[from], {});
    files.erase(from);
    return true;
}

bool CMemoryFiles::Delete(const std::u16string& path) {
    const auto found = files.find(path);
    if (found == files.end()) return false;
    spare.swap(found->second);
    files.erase(found);
    return true;
}

bool CMemoryFiles::FindUserFolder(std::u16string& path) {
    path = u"/user/";
    return true;
}

}  // namespace reka::bench
