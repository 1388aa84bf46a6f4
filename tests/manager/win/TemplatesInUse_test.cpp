// SPDX-License-Identifier: MIT
// The file of templates on the disk itself, while another program holds it or the temporary one: it begins to do so
// before each step of a store or a load in turn, in each way of sharing, and lets go within the second or not at all.
// Whatever comes of it, no templates are lost.

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "manager/TemplateStore.h"
#include "platform/Files.h"
#include "platform/win/support/HeldFile.h"
#include "support/Builders.h"
#include "support/FakeMessages.h"

namespace reka::test {
namespace {

/// The system's files, with a folder of the test's own for the user, and a notice before each operation.
class CWatchedFiles : public IFileSystem {
public:
    explicit CWatchedFiles(std::u16string folder) : userFolder(std::move(folder)), before(ReplaceFiles(this)) {}
    ~CWatchedFiles() override { ReplaceFiles(before); }
    CWatchedFiles(const CWatchedFiles&) = delete;
    CWatchedFiles& operator=(const CWatchedFiles&) = delete;

    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override {
        return Notice("read"), system.OpenForReading(path);
    }
    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override {
        return Notice("write"), system.OpenForWriting(path);
    }
    bool Exists(const std::u16string& path) override { return Notice("look"), system.Exists(path); }
    bool IsAbsent(const std::u16string& path) override { return system.IsAbsent(path); }
    std::uint64_t LastWriteTime(const std::u16string& path) override {
        return Notice("time"), system.LastWriteTime(path);
    }
    bool CreateFolder(const std::u16string& path) override { return system.CreateFolder(path); }
    bool Copy(const std::u16string& from, const std::u16string& to) override { return system.Copy(from, to); }
    bool CopyNew(const std::u16string& from, const std::u16string& to) override {
        ++seeded;
        return system.CopyNew(from, to);
    }
    bool Rename(const std::u16string& from, const std::u16string& to) override {
        return Notice("rename"), system.Rename(from, to);
    }
    bool Delete(const std::u16string& path) override { return Notice("delete"), system.Delete(path); }
    bool Replace(const std::u16string& path, const void* data, std::size_t size) override {
        return system.Replace(path, data, size);
    }
    bool FindUserFolder(std::u16string& path) override { return path = userFolder, true; }
    std::u16string LastErrorText() override { return system.LastErrorText(); }

    std::function<void(const std::string& operation)> onOperation;
    int seeded = 0;  // so often was the user's file looked for among the system's

private:
    void Notice(const char* operation) {
        if (onOperation) onOperation(operation);
    }

    IFileSystem& system = SystemFiles();
    std::u16string userFolder;
    IFileSystem* before;
};

class TemplatesInUse : public testing::TestWithParam<DWORD> {
protected:
    TemplatesInUse() {
        std::filesystem::create_directories(root);
        TemplateStore::GetConfigFilePath(userFile, false);
        temporaryFile = userFile + u".tmp";
    }
    ~TemplatesInUse() override {
        held.Close();
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    static std::filesystem::path MakeRoot() {
        std::random_device random;
        return std::filesystem::temp_directory_path() / ("reka-templates-" + std::to_string(random()));
    }

    /// Stores one template of that name.
    static void Store(const char16_t* name) {
        TemplateStore store;
        store.templates.push_back(MakePackage({}));
        store.templates[0]->name = CBstr::Make(name);
        store.StoreTemplates();
    }

    /// Before the operation `step`, for so many pauses; -1 for good.
    void HoldBefore(const char* step, const std::u16string& path, int pauses) {
        pause.waits.clear();
        files.onOperation = [this, step, path, isDone = false](const std::string& operation) mutable {
            if (isDone || operation != step || !SystemFiles().Exists(path)) return;
            isDone = true;
            held.Open(path, GetParam());
        };
        pause.onWait = [this, left = pauses]() mutable {
            if (left-- == 1) held.Close();
        };
    }
    void LetGo() {
        files.onOperation = nullptr;
        pause.onWait = nullptr;
        held.Close();
    }

    /// The name of the only template in the file.
    static std::u16string NameIn(const std::u16string& path) {
        const auto file = SystemFiles().OpenForReading(path);
        char bytes[1024];
        const std::size_t size = file ? file->Read(bytes, sizeof bytes) : 0;
        const std::u16string_view names[] = {u"old", u"new", u"leftover"};
        const std::string_view content(bytes, size);
        for (const std::u16string_view name : names) {
            const std::string_view wide(reinterpret_cast<const char*>(name.data()), 2 * name.size());
            if (content.find(wide) != std::string_view::npos) return std::u16string(name);
        }
        return u"<none>";
    }

    const std::filesystem::path root = MakeRoot();
    CWatchedFiles files{root.u16string()};
    CFakeMessages messages;
    CFakePause pause;
    CHeldFile held;
    std::u16string userFile;
    std::u16string temporaryFile;
};

/// The steps of a store before which a file is there to be held.
const struct {
    const char* step;
    bool isTemporary;
} storeSteps[] = {{"write", false}, {"write", true}, {"delete", false},
                  {"delete", true}, {"look", true},  {"rename", true}};

TEST_P(TemplatesInUse, AreStoredOnceTheOtherProgramLetsGo) {
    for (const auto& row : storeSteps) {
        SCOPED_TRACE(std::string(row.step) + (row.isTemporary ? " temporary" : " user's"));
        Store(u"leftover");
        ASSERT_TRUE(SystemFiles().Copy(userFile, temporaryFile));
        Store(u"old");
        ASSERT_TRUE(SystemFiles().Copy(userFile, temporaryFile));
        HoldBefore(row.step, row.isTemporary ? temporaryFile : userFile, 5);
        Store(u"new");
        EXPECT_EQ(messages.shown, std::vector<UserMessage>());
        LetGo();
        EXPECT_EQ(NameIn(userFile), u"new");
        EXPECT_TRUE(SystemFiles().IsAbsent(temporaryFile));
    }
}

TEST_P(TemplatesInUse, AreKeptWhereTheOtherProgramDoesNotLetGo) {
    for (const auto& row : storeSteps) {
        SCOPED_TRACE(std::string(row.step) + (row.isTemporary ? " temporary" : " user's"));
        messages.shown.clear();
        Store(u"old");
        if (row.isTemporary && std::string_view(row.step) == "write") {
            ASSERT_TRUE(SystemFiles().Copy(userFile, temporaryFile));
        }
        ASSERT_EQ(messages.shown, std::vector<UserMessage>());
        HoldBefore(row.step, row.isTemporary ? temporaryFile : userFile, -1);
        Store(u"new");
        // Each step of a store waits for a second at most.
        EXPECT_LE(pause.waits.size(), 3 * 14U);
        const std::vector<UserMessage> shown = messages.shown;
        files.seeded = 0;
        TemplateStore next;
        const bool isHeld = !SystemFiles().IsAbsent(userFile);
        next.LoadTemplates();
        if (isHeld) {
            EXPECT_EQ(files.seeded, 0);
        }
        LetGo();
        if (shown.empty()) {
            EXPECT_EQ(NameIn(userFile), u"new");
            continue;
        }
        ASSERT_EQ(shown.size(), 1U);
        const std::u16string& text = shown[0].text;
        const bool isOldWhole = NameIn(userFile) == u"old";
        const bool isNewWhole = NameIn(temporaryFile) == u"new";
        EXPECT_TRUE((isOldWhole && text.find(userFile) != std::u16string::npos) ||
                    (isNewWhole && text.find(temporaryFile) != std::u16string::npos))
            << Utf8FromUtf16(text);
        SystemFiles().Delete(userFile);
        SystemFiles().Delete(temporaryFile);
    }
}

TEST_P(TemplatesInUse, AreLoaded) {
    for (const char* const step : {"look", "time", "read"}) {
        SCOPED_TRACE(step);
        Store(u"old");
        HoldBefore(step, userFile, 5);
        TemplateStore store;
        store.LoadTemplates();
        ASSERT_EQ(store.templates.size(), 1U);
        EXPECT_EQ(store.templates[0]->name.View(), u"old");
        LetGo();
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_P(TemplatesInUse, AreSetAsideOnceTheOtherProgramLetsGo) {
    const std::u16string backup = userFile + u".backup";
    for (const char* const step : {"read", "delete", "rename"}) {
        for (const std::u16string& path : {userFile, backup}) {
            SCOPED_TRACE(std::string(step) + " " + Utf8FromUtf16(path));
            messages.shown.clear();
            Store(u"leftover");
            ASSERT_TRUE(SystemFiles().Copy(userFile, backup));
            ASSERT_TRUE(SystemFiles().Replace(userFile, "damaged", 7));
            HoldBefore(step, path, 5);
            TemplateStore store;
            store.LoadTemplates();
            LetGo();
            ASSERT_EQ(messages.shown.size(), 1U);
            EXPECT_TRUE(messages.shown[0].text.ends_with(u"The file has been renamed to " + backup));
            EXPECT_EQ(NameIn(backup + u"1"), u"leftover");
            EXPECT_TRUE(SystemFiles().IsAbsent(userFile));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shared, TemplatesInUse, testing::ValuesIn(sharingModes), NameOfSharing);

}  // namespace
}  // namespace reka::test
