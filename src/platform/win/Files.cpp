// SPDX-License-Identifier: MIT
// The system's file system. Others may read and write a file while it is open here, as several simulators share one
// file of templates, and one that is only read may be deleted as well: a store must not fail because another simulator
// loads. What others keep from its end is tried again for a moment (FilesInUse.h). Large reads and writes go in parts,
// since a call takes a 32-bit count; and a handle is closed without touching the thread's last error, from which the
// user is told why an operation failed.

#include "platform/Files.h"

#include <windows.h>
// after windows.h
#include <shlobj.h>

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "platform/SystemMessages.h"
#include "platform/win/FilesInUse.h"

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
            if (!ReadFile(file.Get(), static_cast<char*>(buffer) + got, asked, &part, nullptr)) hasReadFailed = true;
            if (hasReadFailed || part == 0) break;
            got += part;
        }
        return got;
    }

    bool HasFailed() const override { return hasReadFailed; }

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
    bool hasReadFailed = false;
};

CFileHandle Open(const std::u16string& path, DWORD access, DWORD shared, DWORD disposition) {
    return CFileHandle(CreateFileW(Wide(path), access, shared, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool IsSeen(const std::u16string& path) {
    return GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES;
}

/// Whether `path` is free for a file. The name of one that was deleted while others have it open may stay until they
/// have closed it.
bool IsNameFree(const std::u16string& path) {
    return !IsSeen(path) && IsMissing(GetLastError());
}

/// Whether a file can take the name `path` that was refused as taken: its file is one that goes, or has gone meanwhile.
bool IsNameGoing(const std::u16string& path) {
    return !IsSeen(path) && (IsInUse(GetLastError()) || IsMissing(GetLastError()));
}

std::unique_ptr<IFile> MakeFile(CFileHandle handle) {
    if (!handle.IsOpen()) return nullptr;
    return std::make_unique<CWindowsFile>(std::move(handle));
}

/// The file that `path` leads to through links; `path` itself if there is none, and nothing for a link to nowhere.
std::wstring FollowLinks(const std::u16string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(path));
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return Wide(path);
    const CFileHandle file(CreateFileW(Wide(path), FILE_READ_ATTRIBUTES, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsOpen()) return {};
    wchar_t found[1024];
    const DWORD length = GetFinalPathNameByHandleW(file.Get(), found, 1024, 0);
    return length > 0 && length < 1024 ? std::wstring(found, length) : std::wstring(Wide(path));
}

/// Whether the name is that of a console, a printer or the like, which nothing can take the place of.
bool IsDevice(const std::wstring& path) {
    const CFileHandle file(
        CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD type = file.IsOpen() ? GetFileType(file.Get()) : FILE_TYPE_UNKNOWN;
    return type == FILE_TYPE_CHAR || type == FILE_TYPE_PIPE;
}

/// A new file beside `path`, whose name gets into `name`. Another program may take a name that was free.
CFileHandle MakeBeside(const std::wstring& path, std::wstring& name) {
    constexpr int triedNames = 100;
    for (int number = 0;; ++number) {
        name = path + L".new" + std::to_wstring(number);
        CFileHandle made(
            CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (made.IsOpen() || GetLastError() != ERROR_FILE_EXISTS || number == triedNames) return made;
    }
}

/// Puts the file `made` in the place of `target`, with the access rights of the old one, which has the name `kept` in
/// between. Where the system stops half-way the old one gets its name back.
bool PutInPlace(const std::wstring& made, const std::wstring& target) {
    const std::wstring kept = made + L".old";
    const bool isReplaced = TryWhileInUse([&] {
        return ReplaceFileW(target.c_str(), made.c_str(), kept.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                            nullptr) != 0;
    });
    if (isReplaced) {
        TryWhileInUse([&] { return DeleteFileW(kept.c_str()) != 0; });
        return true;
    }
    const DWORD error = GetLastError();
    if (GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES) MoveFileW(kept.c_str(), target.c_str());
    SetLastError(error);
    return false;
}

/// Deletes the file of that name at its end, unless it has gone into its place. The last error stays: the failure is
/// the one to tell of.
class CFileBeside {
public:
    explicit CFileBeside(const std::wstring& fileName) : name(fileName) {}
    ~CFileBeside() {
        const DWORD error = GetLastError();
        if (!isInPlace) DeleteFileW(name.c_str());
        SetLastError(error);
    }
    CFileBeside(const CFileBeside&) = delete;
    CFileBeside& operator=(const CFileBeside&) = delete;

    bool isInPlace = false;

private:
    const std::wstring& name;
};

/// Puts a file in the place of `target`, which may be there.
bool ReplacePlainFile(const std::wstring& target, bool isThere, const void* data, std::size_t size) {
    std::wstring name;
    CFileHandle handle = MakeBeside(target, name);
    if (!handle.IsOpen()) return false;
    CFileBeside made(name);
    std::unique_ptr<IFile> file = MakeFile(std::move(handle));
    if (!file->Write(data, size) || !file->Flush()) return false;
    file.reset();
    made.isInPlace =
        isThere ? PutInPlace(name, target) : MoveFileExW(name.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    return made.isInPlace;
}

/// What `Replace` does; may throw std::bad_alloc, with the old file as it was and nothing beside it.
bool ReplaceBehindLinks(const std::u16string& path, const void* data, std::size_t size) {
    const std::wstring target = FollowLinks(path);
    if (target.empty()) return false;
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    }
    if (!IsDevice(target)) return ReplacePlainFile(target, isThere, data, size);
    const std::unique_ptr<IFile> device =
        MakeFile(CFileHandle(CreateFileW(target.c_str(), GENERIC_WRITE, sharing, nullptr, OPEN_EXISTING, 0, nullptr)));
    return device && device->Write(data, size);
}

class CWindowsFiles final : public IFileSystem {
public:
    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override {
        std::unique_ptr<IFile> file;
        FindWhileInUse([&] {
            file = MakeFile(Open(path, GENERIC_READ, sharing | FILE_SHARE_DELETE, OPEN_EXISTING));
            return file != nullptr;
        });
        return file;
    }

    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override {
        std::unique_ptr<IFile> file;
        TryWhileInUse([&] {
            file = MakeFile(Open(path, GENERIC_WRITE, sharing, CREATE_ALWAYS));
            return file != nullptr;
        });
        return file;
    }

    bool Exists(const std::u16string& path) override {
        return FindWhileInUse([&] { return IsSeen(path); });
    }

    bool IsAbsent(const std::u16string& path) override { return IsNameFree(path); }

    std::uint64_t LastWriteTime(const std::u16string& path) override {
        FILETIME time = {};
        const bool isRead = FindWhileInUse([&] {
            const CFileHandle file = Open(path, FILE_READ_ATTRIBUTES, sharing | FILE_SHARE_DELETE, OPEN_EXISTING);
            return file.IsOpen() && GetFileTime(file.Get(), nullptr, nullptr, &time);
        });
        if (!isRead) return 0;
        return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    }

    bool CreateFolder(const std::u16string& path) override { return CreateDirectoryW(Wide(path), nullptr) != 0; }

    bool Copy(const std::u16string& from, const std::u16string& to) override {
        return TryWhileInUse([&] { return CopyFileW(Wide(from), Wide(to), FALSE) != 0; });
    }

    bool CopyNew(const std::u16string& from, const std::u16string& to) override {
        // Not tried again: a name that is only waiting to go belongs to whoever made it wait.
        return CopyFileW(Wide(from), Wide(to), TRUE) != 0;
    }

    bool Rename(const std::u16string& from, const std::u16string& to) override {
        return TryWhileInUse([&] {
            if (MoveFileW(Wide(from), Wide(to))) return true;
            const DWORD error = GetLastError();
            const bool isWaiting = error == ERROR_ALREADY_EXISTS && IsNameGoing(to);
            SetLastError(isWaiting ? ERROR_SHARING_VIOLATION : error);
            return false;
        });
    }

    bool Delete(const std::u16string& path) override {
        if (!TryWhileInUse([&] { return DeleteFileW(Wide(path)) != 0; })) return false;
        for (CTries tries; !IsNameFree(path);) {
            if (!tries.WaitForNext()) return false;
        }
        return true;
    }

    bool Replace(const std::u16string& path, const void* data, std::size_t size) override {
        try {
            return ReplaceBehindLinks(path, data, size);
        } catch (const std::bad_alloc&) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return false;
        }
    }

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
