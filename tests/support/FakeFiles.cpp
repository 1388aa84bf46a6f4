// SPDX-License-Identifier: MIT
// Operations are written down as they come, and the one with the number that the test chose fails. A write that fails
// has written half, as on a full disk; boxes of the user, which a test may put among the lines to see their order,
// don't count.

#include "support/FakeFiles.h"

#include <algorithm>
#include <cstring>

#include "text/Utf8.h"

namespace reka::test {

namespace {

/// An open file of the fake, which it must not outlive.
class CFakeFile : public IFile {
public:
    CFakeFile(CFakeFiles& owner, const std::u16string& name) : files(owner), path(name) { ++files.openFiles; }
    ~CFakeFile() override {
        --files.openFiles;
        files.Record("close");
    }

    std::size_t Read(void* buffer, std::size_t size) override {
        const auto& bytes = files.entries.at(path).bytes;
        std::size_t part = position < bytes.size() ? std::min(size, bytes.size() - position) : 0;
        if (files.Record("read " + std::to_string(size))) {
            part /= 2;
            hasReadFailed = true;
        }
        if (part > 0) std::memcpy(buffer, bytes.data() + position, part);
        position += part;
        return part;
    }
    bool HasFailed() const override { return hasReadFailed; }
    bool Write(const void* data, std::size_t size) override {
        const bool fails = files.Record("write " + std::to_string(size));
        const std::size_t part = fails ? size / 2 : size;
        const auto* const first = static_cast<const std::uint8_t*>(data);
        auto& entry = files.entries.at(path);
        entry.bytes.insert(entry.bytes.end(), first, first + part);
        entry.time = files.now++;
        if (files.onWritten) files.onWritten();
        return !fails;
    }
    bool Seek(std::uint64_t offset) override {
        if (files.Record("seek " + std::to_string(offset))) return false;
        position = static_cast<std::size_t>(offset);
        return true;
    }
    bool Flush() override { return !files.Record("flush"); }

private:
    CFakeFiles& files;
    std::u16string path;
    std::size_t position = 0;
    bool hasReadFailed = false;
};

}  // namespace

bool CFakeFiles::Record(const std::string& operation) {
    operations.push_back(operation);
    if (failAt == 0) return false;
    const auto isBox = [](const std::string& line) { return line.starts_with("box "); };
    const auto boxes = std::count_if(operations.begin(), operations.end(), isBox);
    const auto number = static_cast<int>(operations.size()) - static_cast<int>(boxes);
    return number >= failAt && number < failAt + failCount;
}

std::unique_ptr<IFile> CFakeFiles::OpenForReading(const std::u16string& path) {
    if (Record("open to read " + Utf8FromUtf16(path)) || !entries.contains(path)) return nullptr;
    return std::make_unique<CFakeFile>(*this, path);
}

std::unique_ptr<IFile> CFakeFiles::OpenForWriting(const std::u16string& path) {
    if (Record("open to write " + Utf8FromUtf16(path))) return nullptr;
    entries[path] = {{}, now++};
    return std::make_unique<CFakeFile>(*this, path);
}

bool CFakeFiles::Exists(const std::u16string& path) {
    return !Record("exists " + Utf8FromUtf16(path)) && entries.contains(path);
}

bool CFakeFiles::IsAbsent(const std::u16string& path) {
    return !Record("absent " + Utf8FromUtf16(path)) && !entries.contains(path);
}

std::uint64_t CFakeFiles::LastWriteTime(const std::u16string& path) {
    if (Record("time " + Utf8FromUtf16(path)) || !entries.contains(path)) return 0;
    return entries[path].time;
}

bool CFakeFiles::CreateFolder(const std::u16string& path) {
    return !Record("folder " + Utf8FromUtf16(path));
}

bool CFakeFiles::Copy(const std::u16string& from, const std::u16string& to) {
    if (Record("copy " + Utf8FromUtf16(from) + " -> " + Utf8FromUtf16(to)) || !entries.contains(from)) return false;
    if (from != to) entries[to] = entries[from];
    return true;
}

bool CFakeFiles::CopyNew(const std::u16string& from, const std::u16string& to) {
    if (Record("copy new " + Utf8FromUtf16(from) + " -> " + Utf8FromUtf16(to))) return false;
    if (!entries.contains(from) || entries.contains(to)) return false;
    entries[to] = entries[from];
    return true;
}

bool CFakeFiles::Rename(const std::u16string& from, const std::u16string& to) {
    if (Record("rename " + Utf8FromUtf16(from) + " -> " + Utf8FromUtf16(to))) return false;
    if (!entries.contains(from) || entries.contains(to)) return false;
    auto node = entries.extract(from);
    node.key() = to;
    entries.insert(std::move(node));
    return true;
}

bool CFakeFiles::Delete(const std::u16string& path) {
    if (Record("delete " + Utf8FromUtf16(path)) || undeletable.contains(path)) return false;
    return entries.erase(path) > 0;
}

bool CFakeFiles::Replace(const std::u16string& path, const void* data, std::size_t size) {
    if (Record("replace " + Utf8FromUtf16(path))) return false;
    const auto* const first = static_cast<const std::uint8_t*>(data);
    entries[path] = {{first, first + size}, now++};
    return true;
}

bool CFakeFiles::FindUserFolder(std::u16string& path) {
    if (Record("user folder") || !hasUserFolder) return false;
    path = userFolder;
    return true;
}

}  // namespace reka::test
