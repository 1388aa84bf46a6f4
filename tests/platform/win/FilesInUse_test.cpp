// SPDX-License-Identifier: MIT
// Files that another program has open, in each way in which it may share them, while they are read, written, looked
// for, renamed and deleted. The other program is a handle of this one, which is closed at the pause that a test chose.

#include "platform/win/FilesInUse.h"

#include <gtest/gtest.h>

#include "platform/Files.h"
#include "platform/win/support/HeldFile.h"
#include "support/TemporaryFile.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// An operation that answers with these errors, one after the other; 0 for success.
class CScript {
public:
    explicit CScript(std::vector<DWORD> answers) : errors(std::move(answers)) {}
    bool operator()() {
        const DWORD error = errors.at(calls++);
        if (error != 0) SetLastError(error);
        return error == 0;
    }
    std::vector<DWORD> errors;
    std::size_t calls = 0;
};

TEST(FilesInUse, AreTriedForASecond) {
    CFakePause pause;
    CTries tries;
    SetLastError(77);
    while (tries.WaitForNext()) EXPECT_EQ(GetLastError(), 77U);
    EXPECT_EQ(pause.waits, (std::vector<DWORD>{5, 10, 20, 40, 80, 100, 100, 100, 100, 100, 100, 100, 100, 45}));
    EXPECT_FALSE(tries.WaitForNext());
}

TEST(FilesInUse, AreTriedAgainForTheseErrors) {
    for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_ACCESS_DENIED,
                              ERROR_USER_MAPPED_FILE, 303L /* ERROR_DELETE_PENDING */}) {
        CFakePause pause;
        CScript script({error, error, 0});
        EXPECT_TRUE(TryWhileInUse(script)) << error;
        EXPECT_EQ(pause.waits, (std::vector<DWORD>{5, 10}));
        CScript lasting(std::vector<DWORD>(15, error));
        EXPECT_FALSE(TryWhileInUse(lasting));
        EXPECT_EQ(GetLastError(), error);
        EXPECT_EQ(lasting.calls, 15U);
    }
}

TEST(FilesInUse, AreNotTriedAgainForOtherErrors) {
    CFakePause pause;
    for (const DWORD error : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ALREADY_EXISTS, ERROR_FILE_EXISTS,
                              ERROR_INVALID_NAME, ERROR_DISK_FULL}) {
        CScript script({error, 0});
        EXPECT_FALSE(TryWhileInUse(script)) << error;
        EXPECT_EQ(GetLastError(), error);
        CScript look({error, 0});
        EXPECT_FALSE(FindWhileInUse(look)) << error;
        CScript later({ERROR_SHARING_VIOLATION, error, 0});
        EXPECT_FALSE(TryWhileInUse(later)) << error;
    }
    EXPECT_EQ(pause.waits, std::vector<DWORD>(6, 5));
}

/// What goes is being replaced, so the new one is waited for.
TEST(FilesInUse, AreLookedForAfterTheyHaveGone) {
    CFakePause pause;
    CScript script({ERROR_ACCESS_DENIED, ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND, 0});
    EXPECT_TRUE(FindWhileInUse(script));
    std::vector<DWORD> gone(15, ERROR_FILE_NOT_FOUND);
    gone.front() = ERROR_ACCESS_DENIED;
    CScript lasting(gone);
    EXPECT_FALSE(FindWhileInUse(lasting));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(lasting.calls, 15U);
}

class FileInUse : public testing::TestWithParam<DWORD> {
protected:
    /// Holds the file for that many pauses; -1 for good.
    void Hold(int pauses) {
        pause.waits.clear();
        held.Open(path, GetParam());
        pause.onWait = [this, left = pauses]() mutable {
            if (left-- == 1) held.Close();
        };
    }
    bool IsShared(DWORD way) const { return (GetParam() & way) != 0; }
    std::string Content() {
        const auto opened = files.OpenForReading(path);
        char bytes[10];
        return opened ? std::string(bytes, opened->Read(bytes, sizeof bytes)) : "<none>";
    }

    CTemporaryFile file{"file", "content"};
    const std::u16string path = Utf16FromUtf8(file.Path());
    IFileSystem& files = SystemFiles();
    CFakePause pause;
    CHeldFile held;
};

TEST_P(FileInUse, IsRead) {
    Hold(3);
    EXPECT_EQ(Content(), "content");
    EXPECT_EQ(pause.waits.size(), IsShared(FILE_SHARE_READ) ? 0U : 3U);
    Hold(-1);
    EXPECT_EQ(files.OpenForReading(path) != nullptr, IsShared(FILE_SHARE_READ));
}

TEST_P(FileInUse, IsWritten) {
    Hold(3);
    EXPECT_TRUE(files.OpenForWriting(path));
    EXPECT_EQ(pause.waits.size(), IsShared(FILE_SHARE_WRITE) ? 0U : 3U);
    Hold(-1);
    EXPECT_EQ(files.OpenForWriting(path) != nullptr, IsShared(FILE_SHARE_WRITE));
}

TEST_P(FileInUse, IsDeletedOnceItsNameIsFree) {
    Hold(3);
    EXPECT_TRUE(files.Delete(path));
    EXPECT_FALSE(files.Exists(path));
    EXPECT_TRUE(files.IsAbsent(path));
}

TEST_P(FileInUse, IsNotDeletedWhileItIsHeld) {
    Hold(-1);
    if (!IsShared(FILE_SHARE_DELETE)) {
        EXPECT_FALSE(files.Delete(path));
        EXPECT_EQ(pause.waits.size(), 14U);
        EXPECT_TRUE(files.Exists(path));
        held.Close();
        EXPECT_EQ(Content(), "content");
        return;
    }
    // A system frees the name at once or with the last handle, and says which.
    EXPECT_EQ(files.Delete(path), files.IsAbsent(path));
}

TEST_P(FileInUse, IsRenamed) {
    const std::u16string other = path + u".other";
    Hold(3);
    EXPECT_TRUE(files.Rename(path, other));
    EXPECT_EQ(pause.waits.size(), IsShared(FILE_SHARE_DELETE) ? 0U : 3U);
    held.Close();
    EXPECT_TRUE(files.Rename(other, path));
    Hold(-1);
    EXPECT_EQ(files.Rename(path, other), IsShared(FILE_SHARE_DELETE));
    held.Close();
    files.Delete(other);
}

TEST_P(FileInUse, IsNotReplacedByARenaming) {
    const CTemporaryFile other("other", "new");
    Hold(3);
    EXPECT_FALSE(files.Rename(Utf16FromUtf8(other.Path()), path));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_TRUE(pause.waits.empty());
}

TEST_P(FileInUse, IsCopied) {
    const CTemporaryFile other("other", "");
    Hold(3);
    EXPECT_TRUE(files.Copy(path, Utf16FromUtf8(other.Path())));
    EXPECT_EQ(other.Content(), "content");
    EXPECT_EQ(pause.waits.size(), IsShared(FILE_SHARE_READ) ? 0U : 3U);
}

TEST_P(FileInUse, IsReplaced) {
    Hold(3);
    EXPECT_TRUE(files.Replace(path, "new", 3));
    held.Close();
    EXPECT_EQ(Content(), "new");
    Hold(-1);
    const bool isReplaced = files.Replace(path, "newer", 5);
    held.Close();
    EXPECT_EQ(Content(), isReplaced ? "newer" : "new");
    EXPECT_TRUE(files.IsAbsent(path + u".new0"));
}

INSTANTIATE_TEST_SUITE_P(Shared, FileInUse, testing::ValuesIn(sharingModes), NameOfSharing);

/// A load of another simulator keeps no store from its end.
TEST(FileBeingRead, CanBeDeleted) {
    const CTemporaryFile file("file", "content");
    const std::u16string path = Utf16FromUtf8(file.Path());
    const std::unique_ptr<IFile> reader = SystemFiles().OpenForReading(path);
    ASSERT_TRUE(reader);
    EXPECT_TRUE(DeleteFileW(reinterpret_cast<const wchar_t*>(path.c_str())));
}

}  // namespace
}  // namespace reka::test
