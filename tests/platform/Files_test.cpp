// SPDX-License-Identifier: MIT
// The system's own files, in a folder of the test's own.

#include "platform/Files.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <iterator>
#include <random>

#include "platform/ModuleFile.h"
#include "support/AllocationCounter.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

namespace fs = std::filesystem;

class SystemFile : public testing::Test {
protected:
    SystemFile() {
        std::random_device random;
        root = fs::temp_directory_path() / ("reka-files-" + std::to_string(random()));
        fs::create_directories(root);
    }
    ~SystemFile() override {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    std::u16string Path(std::u16string_view name) const {
        return root.u16string() + std::u16string(1, pathSeparator) + std::u16string(name);
    }
    void Write(const std::u16string& path, std::string_view text) {
        const auto file = files.OpenForWriting(path);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->Write(text.data(), text.size()));
        EXPECT_TRUE(file->Flush());
    }
    std::string Read(const std::u16string& path) {
        const auto file = files.OpenForReading(path);
        if (!file) return "<none>";
        char buffer[100];
        return std::string(buffer, file->Read(buffer, sizeof buffer));
    }

    IFileSystem& files = SystemFiles();
    fs::path root;
};

TEST_F(SystemFile, IsWrittenAndRead) {
    const std::u16string path = Path(u"a \u00E9\u4E2D.dat");
    EXPECT_FALSE(files.Exists(path));
    EXPECT_EQ(files.LastWriteTime(path), 0U);
    Write(path, "hello");
    EXPECT_TRUE(files.Exists(path));
    EXPECT_GT(files.LastWriteTime(path), 0U);
    EXPECT_EQ(Read(path), "hello");
    Write(path, "x");
    EXPECT_EQ(Read(path), "x");
}

TEST_F(SystemFile, IsReadFromAnywhere) {
    const std::u16string path = Path(u"a");
    Write(path, "0123456789");
    const auto file = files.OpenForReading(path);
    char buffer[4] = {};
    EXPECT_TRUE(file->Seek(7));
    EXPECT_EQ(file->Read(buffer, 2), 2U);
    EXPECT_EQ(std::string(buffer, 2), "78");
    EXPECT_EQ(file->Read(buffer, 4), 1U);
    EXPECT_EQ(file->Read(buffer, 4), 0U);
    EXPECT_TRUE(file->Seek(100));
    EXPECT_EQ(file->Read(buffer, 4), 0U);
    EXPECT_TRUE(file->Seek(0));
    EXPECT_EQ(file->Read(buffer, 1), 1U);
    EXPECT_EQ(buffer[0], '0');
}

TEST_F(SystemFile, DoesNotOpenWhereThereIsNone) {
    EXPECT_FALSE(files.OpenForReading(Path(u"none")));
    EXPECT_FALSE(files.LastErrorText().empty());
    EXPECT_FALSE(files.OpenForReading(root.u16string()));
    EXPECT_FALSE(files.OpenForWriting(Path(u"none") + std::u16string(1, pathSeparator) + u"a"));
    EXPECT_FALSE(files.OpenForReading(u""));
}

TEST_F(SystemFile, IsCopiedWithItsTime) {
    Write(Path(u"a"), "content");
    fs::last_write_time(root / "a", fs::last_write_time(root / "a") - std::chrono::hours(100));
    Write(Path(u"b"), "longer than that");
    EXPECT_LT(files.LastWriteTime(Path(u"a")), files.LastWriteTime(Path(u"b")));
    EXPECT_TRUE(files.Copy(Path(u"a"), Path(u"b")));
    EXPECT_EQ(Read(Path(u"b")), "content");
    EXPECT_EQ(files.LastWriteTime(Path(u"a")), files.LastWriteTime(Path(u"b")));
    EXPECT_FALSE(files.Copy(Path(u"none"), Path(u"b")));
    EXPECT_EQ(Read(Path(u"b")), "content");
    files.Copy(Path(u"a"), Path(u"a"));  // onto itself: whatever it says, nothing is lost
    EXPECT_EQ(Read(Path(u"a")), "content");
}

TEST_F(SystemFile, IsRenamedToAFreeName) {
    Write(Path(u"a"), "a");
    Write(Path(u"b"), "b");
    EXPECT_FALSE(files.Rename(Path(u"a"), Path(u"b")));
    EXPECT_FALSE(files.LastErrorText().empty());
    EXPECT_EQ(Read(Path(u"b")), "b");
    EXPECT_TRUE(files.Delete(Path(u"b")));
    EXPECT_FALSE(files.Delete(Path(u"b")));
    EXPECT_TRUE(files.Rename(Path(u"a"), Path(u"b")));
    EXPECT_EQ(Read(Path(u"b")), "a");
    EXPECT_FALSE(files.Exists(Path(u"a")));
}

TEST_F(SystemFile, IsReplacedAsAWhole) {
    EXPECT_TRUE(files.Replace(Path(u"a"), "first", 5));
    EXPECT_EQ(Read(Path(u"a")), "first");
    EXPECT_TRUE(files.Replace(Path(u"a"), "second", 6));
    EXPECT_EQ(Read(Path(u"a")), "second");
    EXPECT_TRUE(files.Replace(Path(u"a"), "", 0));
    EXPECT_EQ(Read(Path(u"a")), "");
    EXPECT_FALSE(files.Exists(Path(u"a.new0")));
    EXPECT_FALSE(files.Replace(Path(u"none") + pathSeparator + u"a", "x", 1));
}

TEST_F(SystemFile, IsReplacedOrStaysWithoutMemory) {
    Write(Path(u"a"), "old");
    const std::u16string path = Path(u"a");
    std::size_t n = 1;
    for (bool isReached = true; isReached; ++n) {
        FailAllocation(n);
        const bool isReplaced = files.Replace(path, "new", 3);
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(isReplaced, !isReached);
        EXPECT_EQ(Read(path), isReplaced ? "new" : "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(root), fs::directory_iterator()), 1);
    }
    EXPECT_GT(n, 2U);
}

TEST_F(SystemFile, LiesInFoldersThatAreMade) {
    const std::u16string folder = Path(u"new") + std::u16string(1, pathSeparator);
    EXPECT_TRUE(files.CreateFolder(folder));
    EXPECT_FALSE(files.CreateFolder(folder));
    Write(folder + u"a", "a");
    EXPECT_EQ(Read(folder + u"a"), "a");
}

TEST_F(SystemFile, HasAPlaceForTheUser) {
    std::u16string folder;
    ASSERT_TRUE(files.FindUserFolder(folder));
    EXPECT_TRUE(fs::is_directory(folder)) << Utf8FromUtf16(folder);
}

}  // namespace
}  // namespace reka::test
