// The system's file system. Others may read and write a file while it is open here, as several simulators share one
// file of templates. Large reads and writes go in parts, since a call takes a 32-bit count; and a handle is closed
// without touching the thread's last error, from which the user is told why an operation failed.

#include "platform/Files.h"

#include <windows.h>
// after windows.h
#include <shlobj.h>

#include <algorithm>
#include <utility>

#include "platform/SystemMessages.h"

namespace reka {

namespace {

const wchar_t* Wide(const std::u16string& path) {
    return reinterpret_cast<const wchar_t*>(path.c_str());
}

/// An open handle, closed at the end.
class CFileHandle {
public:
    explicit CFileHandle(HANDLE opened) : handle(opened) {}
    CFileHandle(CFileHandle&& other) noexcept : handle(std::exchange(other.handle, INVALID_HANDLE_VALUE)) {}
    CFileHandle& operator=(CFileHandle&&) = delete;
    ~CFileHandle() {
        const DWORD error = GetLastError();  // the failure before the close is the one to tell of
        if (IsOpen()) CloseHandle(handle);
        SetLastError(error);
    }
    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle; }

private:
    HANDLE handle;
};

constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr std::size_t largestPart = 1U << 30;  // a call takes a 32-bit count

class CWindowsFile final : public IFile {
public:
    explicit CWindowsFile(CFileHandle opened) : file(std::move(opened)) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        std::size_t got = 0;
        while (got < size) {
            const auto asked = static_cast<DWORD>(std::min(size - got, largestPart));
            DWORD part = 0;
            if (!ReadFile(file.Get(), static_cast<char*>(buffer) + got, asked, &part, nullptr) || part == 0) break;
            got += part;
        }
        return got;
    }

    bool Write(const void* data, std::size_t size) override {
        std::size_t done = 0;
        while (done < size) {
            const auto asked = static_cast<DWORD>(std::min(size - done, largestPart));
            DWORD part = 0;
            if (!WriteFile(file.Get(), static_cast<const char*>(data) + done, asked, &part, nullptr)) return false;
            if (part == 0) return false;
            done += part;
        }
        return true;
    }

    bool Seek(std::uint64_t offset) override {
        LARGE_INTEGER position;
        position.QuadPart = static_cast<LONGLONG>(offset);
        return SetFilePointerEx(file.Get(), position, nullptr, FILE_BEGIN) != 0;
    }

    bool Flush() override { return FlushFileBuffers(file.Get()) != 0; }

private:
    CFileHandle file;
};

std::unique_ptr<IFile> MakeFile(CFileHandle handle) {
    if (!handle.IsOpen()) return nullptr;
    return std::make_unique<CWindowsFile>(std::move(handle));
}

class CWindowsFiles final : public IFileSystem {
public:
    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override {
        return MakeFile(CFileHandle(
            CreateFileW(Wide(path), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
    }

    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override {
        return MakeFile(CFileHandle(
            CreateFileW(Wide(path), GENERIC_WRITE, sharing, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)));
    }

    bool Exists(const std::u16string& path) override {
        return GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES;
    }

    std::uint64_t LastWriteTime(const std::u16string& path) override {
        const CFileHandle file(CreateFileW(Wide(path), FILE_READ_ATTRIBUTES, sharing, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
        FILETIME time = {};
        if (!file.IsOpen() || !GetFileTime(file.Get(), nullptr, nullptr, &time)) return 0;
        return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    }

    bool CreateFolder(const std::u16string& path) override { return CreateDirectoryW(Wide(path), nullptr) != 0; }

    bool Copy(const std::u16string& from, const std::u16string& to) override {
        return CopyFileW(Wide(from), Wide(to), FALSE) != 0;
    }

    bool Rename(const std::u16string& from, const std::u16string& to) override {
        return MoveFileW(Wide(from), Wide(to)) != 0;
    }

    bool Delete(const std::u16string& path) override { return DeleteFileW(Wide(path)) != 0; }

    bool FindUserFolder(std::u16string& path) override {
        wchar_t folder[MAX_PATH];
        if (!SHGetSpecialFolderPathW(nullptr, folder, CSIDL_APPDATA, TRUE)) return false;
        path = reinterpret_cast<const char16_t*>(folder);
        return true;
    }

    std::u16string LastErrorText() override {
        std::u16string text;
        FindSystemMessage(static_cast<HRESULT>(GetLastError()), text);
        return text;
    }
};

// Not local to its function: the runtime's guard would hold handles that stay when the module is unloaded.
CWindowsFiles files;

}  // namespace

IFileSystem& SystemFiles() {
    return files;
}

}  // namespace reka
