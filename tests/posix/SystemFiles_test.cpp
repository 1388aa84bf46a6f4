// SPDX-License-Identifier: MIT
// What the system's files do when the system fails.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "platform/Files.h"
#include "support/AllocationCounter.h"
#include "text/Utf8.h"

namespace {

int writesOfNothing = 0;  // that are still to come: each takes no byte and gives no reason

}  // namespace

/// Stands before the library's own.
extern "C" ssize_t write(int file, const void* data, size_t size) {
    if (writesOfNothing == 0) return syscall(SYS_write, file, data, size);
    --writesOfNothing;
    return 0;
}

namespace reka::test {
namespace {

namespace fs = std::filesystem;

class PosixFile : public testing::Test {
protected:
    PosixFile() : root(fs::temp_directory_path() / ("reka-posix-" + std::to_string(std::random_device()()))) {
        fs::create_directories(root);
    }
    ~PosixFile() override {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }
    std::u16string Path(const char* name) const { return (root / name).u16string(); }
    void Write(const char* name, std::string_view bytes) const {
        std::ofstream(root / name, std::ios::binary) << bytes;
    }
    std::string Read(const char* name) const {
        std::ifstream file(root / name, std::ios::binary);
        if (!file) return "<none>";
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    IFileSystem& files = SystemFiles();
    const fs::path root;
};

TEST_F(PosixFile, IsNotReplacedByWhatIsNoFile) {
    Write("user", "mine");
    fs::create_directory(root / "folder");
    ASSERT_EQ(mkfifo((root / "pipe").c_str(), 0600), 0);
    const std::u16string sources[] = {Path("folder"), Path("pipe"), u"/dev/null", Path("none")};
    for (const std::u16string& source : sources) {
        EXPECT_FALSE(files.Copy(source, Path("user"))) << Utf8FromUtf16(source);
        EXPECT_EQ(Read("user"), "mine");
        EXPECT_FALSE(files.Copy(source, Path("new"))) << Utf8FromUtf16(source);
        EXPECT_FALSE(fs::exists(root / "new"));
    }
}

TEST_F(PosixFile, IsNotReplacedByOneThatCanNotBeRead) {
    Write("user", "mine");
    // A regular file by its kind, whose first bytes are no memory of this process.
    EXPECT_FALSE(files.Copy(u"/proc/self/mem", Path("user")));
    EXPECT_FALSE(files.LastErrorText().empty());
    EXPECT_EQ(Read("user"), "mine");
    EXPECT_FALSE(files.Copy(u"/proc/self/mem", Path("new")));
    EXPECT_FALSE(fs::exists(root / "new"));
}

TEST_F(PosixFile, IsCopiedWholeOrNotAtAll) {
    Write("large", std::string(300000, 'x'));
    Write("user", "mine");
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limited = {100000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const bool isReplaced = files.Copy(Path("large"), Path("user"));
    const int error = errno;
    const bool isMade = files.Copy(Path("large"), Path("new"));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isReplaced);
    EXPECT_EQ(error, EFBIG);
    EXPECT_FALSE(isMade);
    EXPECT_FALSE(fs::exists(root / "user"));  // rather than a part
    EXPECT_FALSE(fs::exists(root / "new"));
    EXPECT_TRUE(files.Copy(Path("large"), Path("new")));
    EXPECT_EQ(Read("new"), std::string(300000, 'x'));
    Write("empty", "");
    EXPECT_TRUE(files.Copy(Path("empty"), Path("new")));
    EXPECT_EQ(Read("new"), "");
}

/// What is in a folder, by name.
std::set<std::string> NamesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}

TEST_F(PosixFile, StaysWhereThereIsNoRoomForTheOneThatReplacesIt) {
    Write("user", "mine");
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limited = {100000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const std::string large(300000, 'x');
    const bool isReplaced = files.Replace(Path("user"), large.data(), large.size());
    const int error = errno;
    const bool isMade = files.Replace(Path("new"), large.data(), large.size());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isReplaced);
    EXPECT_EQ(error, EFBIG);
    EXPECT_FALSE(isMade);
    EXPECT_EQ(Read("user"), "mine");
    EXPECT_EQ(NamesIn(root), std::set<std::string>{"user"});
    EXPECT_TRUE(files.Replace(Path("user"), large.data(), large.size()));
    EXPECT_EQ(Read("user"), large);
    EXPECT_EQ(NamesIn(root), std::set<std::string>{"user"});
}

TEST_F(PosixFile, IsReplacedWithTheRightsThatItHad) {
    Write("user", "old");
    fs::permissions(root / "user", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_exec);
    ASSERT_TRUE(files.Replace(Path("user"), "new", 3));
    EXPECT_EQ(Read("user"), "new");
    EXPECT_EQ(fs::status(root / "user").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_exec);
    const mode_t mask = umask(0027);
    const bool isMade = files.Replace(Path("other"), "new", 3);
    umask(mask);
    EXPECT_TRUE(isMade);
    EXPECT_EQ(fs::status(root / "other").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(PosixFile, IsReplacedBehindItsLinks) {
    fs::create_directory(root / "far");
    Write("far/user", "old");
    fs::create_symlink("far/user", root / "near");
    fs::create_symlink("near", root / "nearer");
    ASSERT_TRUE(files.Replace(Path("nearer"), "new", 3));
    EXPECT_TRUE(fs::is_symlink(root / "nearer"));
    EXPECT_TRUE(fs::is_symlink(root / "near"));
    EXPECT_EQ(Read("far/user"), "new");
    fs::create_symlink("far/none", root / "dangling");
    ASSERT_TRUE(files.Replace(Path("dangling"), "made", 4));
    EXPECT_TRUE(fs::is_symlink(root / "dangling"));
    EXPECT_EQ(Read("far/none"), "made");
}

TEST_F(PosixFile, IsWrittenWhereItIsADevice) {
    EXPECT_TRUE(files.Replace(u"/dev/null", "abc", 3));
    EXPECT_FALSE(files.Replace(u"/dev/full", "abc", 3));
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_FALSE(fs::is_regular_file("/dev/null"));
    EXPECT_FALSE(files.Replace(Path("none/user"), "abc", 3));
    fs::create_directory(root / "folder");
    EXPECT_FALSE(files.Replace(Path("folder"), "abc", 3));
    EXPECT_EQ(NamesIn(root), std::set<std::string>{"folder"});
}

/// A name beside it that is taken belongs to somebody else.
TEST_F(PosixFile, IsReplacedBesideOthers) {
    Write("user", "old");
    Write("user.new0", "somebody's");
    ASSERT_TRUE(files.Replace(Path("user"), "new", 3));
    EXPECT_EQ(Read("user"), "new");
    EXPECT_EQ(Read("user.new0"), "somebody's");
    EXPECT_EQ(NamesIn(root), (std::set<std::string>{"user", "user.new0"}));
}

TEST_F(PosixFile, LeavesADeviceThatItCanNotCopyTo) {
    Write("a", "content");
    ASSERT_EQ(symlink("/dev/full", (root / "device").c_str()), 0);
    EXPECT_FALSE(files.Copy(Path("a"), Path("device")));
    EXPECT_TRUE(fs::is_symlink(root / "device"));
}

TEST_F(PosixFile, StopsWritingWhenNothingIsTaken) {
    const auto file = files.OpenForWriting(Path("a"));
    ASSERT_TRUE(file);
    writesOfNothing = 1000;
    errno = 0;
    const bool isWritten = file->Write("abc", 3);
    const int error = errno;
    const int left = std::exchange(writesOfNothing, 0);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(left, 999);
    EXPECT_EQ(error, EIO);
    EXPECT_TRUE(file->Write("", 0));
}

TEST_F(PosixFile, IsNotFoundUnderAPathTooLong) {
    const std::u16string longest(PATH_MAX, u'a');
    EXPECT_FALSE(files.Exists(longest));
    EXPECT_FALSE(files.OpenForReading(longest));
    EXPECT_FALSE(files.Delete(longest));
    EXPECT_FALSE(files.Exists(u""));
    // The path of a file, made longer than the system takes but still leading there, is none.
    Write("a", "content");
    std::u16string path = root.u16string();
    while (path.size() < PATH_MAX) path += u"/.";
    EXPECT_FALSE(files.Exists(path + u"/a"));
}

TEST_F(PosixFile, IsDeletedAndRenamedWithoutMemory) {
    Write("a", "a");
    Write("b", "b");
    const std::u16string paths[] = {Path("a"), Path("b"), Path("c")};
    FailAllocation(1);
    const bool done = files.Exists(paths[0]) && files.Delete(paths[1]) && !files.Exists(paths[1]) &&
                      files.Rename(paths[0], paths[1]) && files.Copy(paths[1], paths[2]) &&
                      files.LastWriteTime(paths[2]) != 0;
    const bool isLeft = IsAllocationToFail();
    FailAllocation(0);
    EXPECT_TRUE(done);
    EXPECT_TRUE(isLeft);
    EXPECT_EQ(Read("c"), "a");
}

}  // namespace
}  // namespace reka::test
