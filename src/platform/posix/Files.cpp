// The file system by POSIX. The configuration folder of the user stands for the folder of application data.

#include "platform/Files.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Utf8.h"

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

    std::size_t Read(void* buffer, std::size_t size) const {
        std::size_t got = 0;
        while (got < size) {
            const ssize_t part = read(number, static_cast<char*>(buffer) + got, size - got);
            if (part < 0 && errno == EINTR) continue;
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
            if (part < 0) return false;
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

    std::size_t Read(void* buffer, std::size_t size) override { return descriptor.Read(buffer, size); }
    bool Write(const void* data, std::size_t size) override { return descriptor.Write(data, size); }
    bool Seek(std::uint64_t offset) override {
        return lseek(descriptor.Number(), static_cast<off_t>(offset), SEEK_SET) >= 0;
    }
    bool Flush() override { return fsync(descriptor.Number()) == 0; }

private:
    CDescriptor descriptor;
};

CDescriptor Open(const std::u16string& path, int flags) {
    return CDescriptor(open(Utf8FromUtf16(path).c_str(), flags | O_CLOEXEC, 0666));
}

std::unique_ptr<IFile> MakeFile(CDescriptor descriptor) {
    if (!descriptor.IsOpen()) return nullptr;
    return std::make_unique<CPosixFile>(std::move(descriptor));
}

bool CopyBytes(const CDescriptor& source, const CDescriptor& target) {
    char buffer[65536];
    for (;;) {
        const ssize_t part = read(source.Number(), buffer, sizeof buffer);
        if (part < 0 && errno == EINTR) continue;
        if (part <= 0) return part == 0;
        if (!target.Write(buffer, static_cast<std::size_t>(part))) return false;
    }
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

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home && *home == '/') return home;
    const passwd* const user = getpwuid(getuid());
    return user && user->pw_dir ? user->pw_dir : "";
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

    bool Exists(const std::u16string& path) override { return access(Utf8FromUtf16(path).c_str(), F_OK) == 0; }

    std::uint64_t LastWriteTime(const std::u16string& path) override {
        struct stat found;
        if (stat(Utf8FromUtf16(path).c_str(), &found) != 0) return 0;
        return static_cast<std::uint64_t>(found.st_mtim.tv_sec) * 10'000'000U +
               static_cast<std::uint64_t>(found.st_mtim.tv_nsec) / 100U;
    }

    bool CreateFolder(const std::u16string& path) override { return mkdir(Utf8FromUtf16(path).c_str(), 0777) == 0; }

    bool Copy(const std::u16string& from, const std::u16string& to) override {
        const CDescriptor source = Open(from, O_RDONLY);
        struct stat found;
        if (!source.IsOpen() || fstat(source.Number(), &found) != 0) return false;
        struct stat existing;
        if (stat(Utf8FromUtf16(to).c_str(), &existing) == 0 && existing.st_dev == found.st_dev &&
            existing.st_ino == found.st_ino) {
            errno = EEXIST;  // the same file, which opening for writing would empty
            return false;
        }
        const CDescriptor target = Open(to, O_WRONLY | O_CREAT | O_TRUNC);
        if (!target.IsOpen() || !CopyBytes(source, target)) return false;
        const timespec times[] = {found.st_atim, found.st_mtim};
        return futimens(target.Number(), times) == 0;
    }

    bool Rename(const std::u16string& from, const std::u16string& to) override {
        const std::string source = Utf8FromUtf16(from);
        const std::string target = Utf8FromUtf16(to);
        if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
        if (errno != EINVAL && errno != ENOSYS) return false;
        // A file system that can't rename without replacing.
        if (access(target.c_str(), F_OK) == 0) {
            errno = EEXIST;
            return false;
        }
        return rename(source.c_str(), target.c_str()) == 0;
    }

    bool Delete(const std::u16string& path) override { return unlink(Utf8FromUtf16(path).c_str()) == 0; }

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
