// SPDX-License-Identifier: MIT
// The file system by POSIX, made to answer as that of Windows does, since what users see rests on it: a rename doesn't
// replace, a folder can't be opened as a file, a copy keeps the time of the last write. The configuration folder of the
// user stands for the folder of application data. Calls that a signal interrupts are made again. What closes or cleans
// up keeps the error number of the failure before, from which the user is told the reason.

#include "platform/Files.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/Utf8.h"

namespace reka {

namespace {

/// An open descriptor, closed at the end.
class CDescriptor {
public:
    explicit CDescriptor(int opened) : number(opened) {}
    CDescriptor(CDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    CDescriptor& operator=(CDescriptor&&) = delete;
    ~CDescriptor() {
        const int error = errno;  // the failure before the close is the one to tell of
        if (number >= 0) close(number);
        errno = error;
    }

    bool IsOpen() const { return number >= 0; }
    int Number() const { return number; }

    std::size_t Read(void* buffer, std::size_t size, bool& hasFailed) const {
        std::size_t got = 0;
        while (got < size) {
            const ssize_t part = read(number, static_cast<char*>(buffer) + got, size - got);
            if (part < 0 && errno == EINTR) continue;
            if (part < 0) hasFailed = true;
            if (part <= 0) break;
            got += static_cast<std::size_t>(part);
        }
        return got;
    }

    bool Write(const void* data, std::size_t size) const {
        std::size_t done = 0;
        while (done < size) {
            const ssize_t part = write(number, static_cast<const char*>(data) + done, size - done);
            if (part < 0 && errno == EINTR) continue;
            if (part == 0) errno = EIO;  // a device that takes nothing gives no reason
            if (part <= 0) return false;
            done += static_cast<std::size_t>(part);
        }
        return true;
    }

private:
    int number;
};

class CPosixFile final : public IFile {
public:
    explicit CPosixFile(CDescriptor opened) : descriptor(std::move(opened)) {}

    std::size_t Read(void* buffer, std::size_t size) override { return descriptor.Read(buffer, size, hasReadFailed); }
    bool HasFailed() const override { return hasReadFailed; }
    bool Write(const void* data, std::size_t size) override { return descriptor.Write(data, size); }
    bool Seek(std::uint64_t offset) override {
        return lseek(descriptor.Number(), static_cast<off_t>(offset), SEEK_SET) >= 0;
    }
    bool Flush() override { return fsync(descriptor.Number()) == 0; }

private:
    CDescriptor descriptor;
    bool hasReadFailed = false;
};

/// A path in the system's encoding. It lies on the stack: once a sequence of operations has begun to delete and rename,
/// none of them may fail for want of memory. One too long for the system is empty, which no operation accepts.
class CNativePath {
public:
    explicit CNativePath(const std::u16string& path) {
        if (WriteUtf8(path, characters) == sizeof characters) characters[0] = '\0';
    }
    const char* Get() const { return characters; }

private:
    char characters[PATH_MAX];
};

CDescriptor Open(const std::u16string& path, int flags) {
    return CDescriptor(open(CNativePath(path).Get(), flags | O_CLOEXEC, 0666));
}

std::unique_ptr<IFile> MakeFile(CDescriptor descriptor) {
    if (!descriptor.IsOpen()) return nullptr;
    return std::make_unique<CPosixFile>(std::move(descriptor));
}

/// Up to `size` bytes, at least one unless the file ends; negative for a failure.
ssize_t ReadPart(const CDescriptor& source, char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t part = read(source.Number(), buffer, size);
        if (part >= 0 || errno != EINTR) return part;
    }
}

/// Copies into the file at `to`, which isn't touched before the source has shown that it can be read.
bool CopyBytes(const CDescriptor& source, const struct stat& sourceStatus, const std::u16string& to, int flags) {
    char buffer[65536];
    ssize_t part = ReadPart(source, buffer, sizeof buffer);
    if (part < 0) return false;
    const CDescriptor target = Open(to, O_WRONLY | O_CREAT | flags);
    if (!target.IsOpen()) return false;
    while (part > 0 && target.Write(buffer, static_cast<std::size_t>(part))) {
        part = ReadPart(source, buffer, sizeof buffer);
    }
    if (part == 0) {
        const timespec times[] = {sourceStatus.st_atim, sourceStatus.st_mtim};
        futimens(target.Number(), times);  // not everywhere, and not by everybody, can the time be set
        return true;
    }
    // Part of a copy is worse than none: it would count as the user's file, or as a backup. A device stays.
    const int error = errno;
    struct stat made;
    if (fstat(target.Number(), &made) == 0 && S_ISREG(made.st_mode)) unlink(CNativePath(to).Get());
    errno = error;
    return false;
}

/// A new file beside `path`, whose name gets into `name`.
CDescriptor MakeBeside(const std::string& path, mode_t rights, std::string& name) {
    constexpr int triedNames = 100;
    for (int number = 0;; ++number) {
        name = path + ".new" + std::to_string(number);
        CDescriptor made(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rights));
        if (made.IsOpen() || errno != EEXIST || number == triedNames) return made;
    }
}

/// Gives a new file the rights of `old`. Whoever may not give it to the old one's group, to which those rights belong,
/// leaves the rights of a group out.
bool TakeRights(const CDescriptor& made, const struct stat& old) {
    mode_t rights = old.st_mode & 07777;
    if (fchown(made.Number(), old.st_uid, old.st_gid) != 0 &&
        fchown(made.Number(), static_cast<uid_t>(-1), old.st_gid) != 0) {
        rights &= ~static_cast<mode_t>(S_IRWXG | S_ISUID | S_ISGID);
    }
    return fchmod(made.Number(), rights) == 0;
}

/// Fills a new file, gives it the rights of `old`, which may be null, and brings it to the disk.
bool FillReplacement(const CDescriptor& made, const struct stat* old, const void* data, std::size_t size) {
    return made.Write(data, size) && (!old || TakeRights(made, *old)) && fsync(made.Number()) == 0;
}

std::string FolderOf(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return end == std::string::npos ? "." : path.substr(0, end + 1);
}

/// Brings a folder's new entry to the disk. A file system that can't has done what it can.
void FlushFolder(const std::string& path) {
    const CDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) fsync(folder.Number());
}

/// Puts a file in the place of `target`, whose status is `old`; null if there is none.
bool ReplacePlainFile(const std::string& target, const struct stat* old, const void* data, std::size_t size) {
    const std::string folder = FolderOf(target);  // here, since nothing may fail once the file has its name
    std::string name;
    const CDescriptor made = MakeBeside(target, old ? 0600 : 0666, name);  // no one else reads it meanwhile
    if (!made.IsOpen()) return false;
    if (FillReplacement(made, old, data, size) && rename(name.c_str(), target.c_str()) == 0) {
        FlushFolder(folder);
        return true;
    }
    const int error = errno;  // the failure is the one to tell of
    unlink(name.c_str());
    errno = error;
    return false;
}

/// The file that `path` leads to, through links; `path` itself if there is none.
std::string FollowLinks(const char* path) {
    char resolved[PATH_MAX];
    return realpath(path, resolved) ? resolved : path;
}

/// `flags` say what becomes of a file that is there: O_TRUNC or O_EXCL.
bool CopyFile(const std::u16string& from, const std::u16string& to, int flags) {
    const CDescriptor source = Open(from, O_RDONLY | O_NONBLOCK);  // a pipe would wait for its other end
    struct stat found;
    if (!source.IsOpen() || fstat(source.Number(), &found) != 0) return false;
    if (!S_ISREG(found.st_mode)) {
        errno = S_ISDIR(found.st_mode) ? EISDIR : EINVAL;
        return false;
    }
    struct stat existing;
    if (stat(CNativePath(to).Get(), &existing) == 0 && existing.st_dev == found.st_dev &&
        existing.st_ino == found.st_ino) {
        errno = EEXIST;  // the same file, which opening for writing would empty
        return false;
    }
    return CopyBytes(source, found, to, flags);
}

/// Makes the folder and those above it. The path has no separator at its end.
bool MakeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        mkdir(path.substr(0, end).c_str(), 0777);
    }
    if (mkdir(path.c_str(), 0777) == 0) return true;
    struct stat found;
    return stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

/// A link to nothing, since `FollowLinks` has gone along all others.
bool IsLink(const std::string& path) {
    struct stat found;
    return lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
}

/// What `Replace` does; may throw std::bad_alloc, with the old file as it was and nothing beside it.
bool ReplaceBehindLinks(const std::u16string& path, const void* data, std::size_t size) {
    const std::string target = FollowLinks(CNativePath(path).Get());
    struct stat old;
    const bool isThere = stat(target.c_str(), &old) == 0;
    if ((isThere && !S_ISREG(old.st_mode)) || IsLink(target)) {
        const CDescriptor device(open(target.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
        return device.IsOpen() && device.Write(data, size);
    }
    // Who may write into the folder could replace what he may not write.
    if (isThere && access(target.c_str(), W_OK) != 0) return false;
    return ReplacePlainFile(target, isThere ? &old : nullptr, data, size);
}

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home && *home == '/') return home;
    passwd user;
    passwd* found = nullptr;
    constexpr std::size_t longest = std::size_t{1} << 24;
    // The texts of this call: the answers of getpwuid are one for all threads.
    for (std::vector<char> texts(16384); texts.size() <= longest; texts.resize(2 * texts.size())) {
        const int error = getpwuid_r(getuid(), &user, texts.data(), texts.size(), &found);
        if (error != ERANGE) return error == 0 && found && user.pw_dir ? user.pw_dir : std::string();
    }
    return {};
}

class CPosixFiles final : public IFileSystem {
public:
    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override {
        CDescriptor descriptor = Open(path, O_RDONLY);
        struct stat found;
        if (descriptor.IsOpen() && fstat(descriptor.Number(), &found) == 0 && S_ISDIR(found.st_mode)) {
            errno = EISDIR;  // a folder opens like a file here
            return nullptr;
        }
        return MakeFile(std::move(descriptor));
    }

    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override {
        return MakeFile(Open(path, O_WRONLY | O_CREAT | O_TRUNC));
    }

    bool Exists(const std::u16string& path) override { return access(CNativePath(path).Get(), F_OK) == 0; }

    bool IsAbsent(const std::u16string& path) override {
        return access(CNativePath(path).Get(), F_OK) != 0 && (errno == ENOENT || errno == ENOTDIR);
    }

    std::uint64_t LastWriteTime(const std::u16string& path) override {
        struct stat found;
        if (stat(CNativePath(path).Get(), &found) != 0) return 0;
        return static_cast<std::uint64_t>(found.st_mtim.tv_sec) * 10'000'000U +
               static_cast<std::uint64_t>(found.st_mtim.tv_nsec) / 100U;
    }

    bool CreateFolder(const std::u16string& path) override { return mkdir(CNativePath(path).Get(), 0777) == 0; }

    bool Copy(const std::u16string& from, const std::u16string& to) override { return CopyFile(from, to, O_TRUNC); }

    bool CopyNew(const std::u16string& from, const std::u16string& to) override { return CopyFile(from, to, O_EXCL); }

    bool Rename(const std::u16string& from, const std::u16string& to) override {
        const CNativePath source(from);
        const CNativePath target(to);
        if (renameat2(AT_FDCWD, source.Get(), AT_FDCWD, target.Get(), RENAME_NOREPLACE) == 0) return true;
        if (errno != EINVAL && errno != ENOSYS) return false;
        // A file system that can't rename without replacing.
        if (access(target.Get(), F_OK) == 0) {
            errno = EEXIST;
            return false;
        }
        return rename(source.Get(), target.Get()) == 0;
    }

    bool Delete(const std::u16string& path) override { return unlink(CNativePath(path).Get()) == 0; }

    bool Replace(const std::u16string& path, const void* data, std::size_t size) override {
        try {
            return ReplaceBehindLinks(path, data, size);
        } catch (const std::bad_alloc&) {
            errno = ENOMEM;
            return false;
        }
    }

    bool FindUserFolder(std::u16string& path) override {
        const char* const configured = std::getenv("XDG_CONFIG_HOME");
        std::string folder = configured && *configured == '/' ? configured : "";
        if (folder.empty()) {
            folder = HomeFolder();
            if (folder.empty()) return false;
            folder += "/.config";
        }
        while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
        if (!MakeFolders(folder)) return false;
        path = Utf16FromUtf8(folder);
        return true;
    }

    std::u16string LastErrorText() override {
        char buffer[256];
        return Utf16FromUtf8(strerror_r(errno, buffer, sizeof buffer));
    }
};

}  // namespace

IFileSystem& SystemFiles() {
    static CPosixFiles files;
    return files;
}

}  // namespace reka
