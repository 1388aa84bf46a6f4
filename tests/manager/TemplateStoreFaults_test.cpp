// SPDX-License-Identifier: MIT
// Each file operation of a store fails in turn, and the outcome is what it must be.

#include <cctype>

#include "manager/StoreFixture.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

/// What a failing operation of a store leads to.
struct StoreFault {
    const char* operation;  // the start of its record
    enum Outcome { Stored, OldKept, PartialStored, BothLeft, TemporaryLeft } outcome;
    const char* text;  // with U for the user's file and T for the temporary one; null for none
};

/// Storing one template, in the order of the operations.
const StoreFault storeFaults[] = {
    {"user folder", StoreFault::Stored, nullptr},  // in the component's folder then
    {"folder", StoreFault::Stored, nullptr},
    {"folder", StoreFault::Stored, nullptr},
    {"open to write", StoreFault::OldKept,
     "Failed to open reaction package template file T for writing. The current state of the reaction package templates "
     "cannot be stored."},
    {"write 4", StoreFault::PartialStored,
     "An error occurred while writing to reaction package template file U. The current state of the reaction package "
     "templates cannot be stored."},
    {"write 4", StoreFault::PartialStored,
     "An error occurred while writing to reaction package template file U. The current state of the reaction package "
     "templates cannot be stored."},
    {"write 36", StoreFault::PartialStored,
     "An error occurred while writing to reaction package template file U. The current state of the reaction package "
     "templates cannot be stored."},
    {"flush", StoreFault::BothLeft,
     "An error occurred while writing to reaction package template file U. The current state of the reaction package "
     "templates cannot be stored."},
    {"close", StoreFault::Stored, nullptr},
    {"delete", StoreFault::BothLeft,
     "Failed to remove U; unable to move new T; the current configuration is not stored."},
    {"exists", StoreFault::Stored, nullptr},  // taken for gone, as it is
    {"rename", StoreFault::TemporaryLeft,
     "Failed to rename T to U (the system's reason\r\n); the current configuration is not stored, please rename this "
     "file by hand."},
};

class StoreFaults : public StoreFixture {
protected:
    std::u16string WithPaths(const char* text) const {
        std::u16string result;
        const std::string_view words(text);
        for (std::size_t i = 0; i < words.size(); ++i) {
            const bool isAlone =
                (i == 0 || words[i - 1] == ' ') && (i + 1 == words.size() || !std::isalpha(words[i + 1]));
            if (isAlone && words[i] == 'U') {
                result += userFile;
            } else if (isAlone && words[i] == 'T') {
                result += temporaryFile;
            } else {
                result += static_cast<char16_t>(words[i]);
            }
        }
        return result;
    }
};

TEST_F(StoreFaults, LeadToWhatTheyMust) {
    const auto old = FileOf({u"old"});
    const auto fresh = FileOf({u"N"});
    int fault = 0;
    for (const StoreFault& row : storeFaults) {
        SCOPED_TRACE(std::to_string(++fault) + " " + row.operation);
        files.entries.clear();
        files.operations.clear();
        messages.shown.clear();
        Put(userFile, old, 100);
        store.templates.clear();
        store.templates.push_back(MakePackage({}));
        store.templates[0]->name = CBstr::Make(u"N");
        store.templates[0]->pcdFile.clear();
        files.failAt = fault;
        store.StoreTemplates();
        ASSERT_GE(files.operations.size(), static_cast<std::size_t>(fault));
        const std::string& failed = files.operations[static_cast<std::size_t>(fault) - 1];
        EXPECT_EQ(failed.substr(0, std::string_view(row.operation).size()), row.operation);
        EXPECT_EQ(files.openFiles, 0);
        EXPECT_EQ(store.templates.size(), 1U);
        std::vector<UserMessage> expected;
        if (row.text) expected = {{WithPaths(row.text), u"Error:", 16, MessageOwner::ActiveWindow}};
        EXPECT_EQ(messages.shown, expected);
        const std::u16string& target = fault == 1 ? systemFile : userFile;
        switch (row.outcome) {
            case StoreFault::Stored:
                EXPECT_EQ(files.entries[target].bytes, fresh);
                EXPECT_FALSE(files.entries.contains(temporaryFile));
                break;
            case StoreFault::OldKept:
                EXPECT_EQ(files.entries[userFile].bytes, old);
                EXPECT_FALSE(files.entries.contains(temporaryFile));
                break;
            case StoreFault::PartialStored:  // what the old file held is gone
                EXPECT_LT(files.entries[userFile].bytes.size(), fresh.size());
                EXPECT_TRUE(std::equal(files.entries[userFile].bytes.begin(), files.entries[userFile].bytes.end(),
                                       fresh.begin()));
                EXPECT_FALSE(files.entries.contains(temporaryFile));
                break;
            case StoreFault::BothLeft:
                EXPECT_EQ(files.entries[userFile].bytes, old);
                EXPECT_EQ(files.entries[temporaryFile].bytes, fresh);
                break;
            case StoreFault::TemporaryLeft:  // the old file is deleted by then
                EXPECT_FALSE(files.entries.contains(userFile));
                EXPECT_EQ(files.entries[temporaryFile].bytes, fresh);
                break;
        }
    }
    files.failAt = 0;
    files.operations.clear();
    store.StoreTemplates();
    EXPECT_EQ(files.operations.size(), std::size(storeFaults));
}

TEST_F(StoreFaults, LoseTheOldFileToOneThatIsPartlyWritten) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    store.LoadTemplates();
    files.operations.clear();
    files.failAt = 8;  // the size of the second block
    store.StoreTemplates();
    EXPECT_EQ(messages.shown.size(), 1U);
    files.failAt = 0;
    store.LoadTemplates();
    EXPECT_TRUE(store.templates.empty());  // and the damaged file is kept
    EXPECT_TRUE(files.entries.contains(backup));
}

TEST_F(StoreFaults, BringAPartialFileToTheDiskBeforeTheOldOneGoes) {
    Put(userFile, FileOf({u"old"}), 100);
    store.LoadTemplates();
    const Lines rest = {"close", Line("delete", userFile), Line("exists", userFile),
                        Line("rename", temporaryFile, userFile)};
    for (const int failCount : {1, 2}) {  // of the write, or of the flush as well, which changes nothing then
        files.operations.clear();
        messages.shown.clear();
        files.failAt = 7;
        files.failCount = failCount;
        store.StoreTemplates();
        EXPECT_EQ(files.operations, Join(Join(FolderLines(), {Line("open to write", temporaryFile), "write 4",
                                                              "write 4", "write 40", "flush", "box Error:"}),
                                         rest));
        EXPECT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(files.entries[userFile].bytes.size(), 8U + 20U);
        EXPECT_FALSE(files.entries.contains(temporaryFile));
    }
}

TEST_F(StoreFaults, AreToldInTheirPlace) {
    Put(userFile, FileOf({u"old"}), 100);
    const Lines folders = FolderLines();
    const Lines written = Join(folders, {Line("open to write", temporaryFile), "write 4"});
    const struct {
        int failAt;
        Lines lines;
    } rows[] = {
        {4, Join(folders, {Line("open to write", temporaryFile), "box Error:"})},
        {6, Join(written, {"flush", "box Error:", "close"})},
        {8, Join(written, {"flush", "close", Line("delete", userFile), Line("exists", userFile), "box Error:"})},
        {10, Join(written, {"flush", "close", Line("delete", userFile), Line("exists", userFile),
                            Line("rename", temporaryFile, userFile), "box Error:"})},
    };
    for (const auto& row : rows) {
        files.operations.clear();
        files.failAt = row.failAt;
        store.StoreTemplates();
        EXPECT_EQ(files.operations, row.lines) << row.failAt;
    }
}

TEST_F(StoreFaults, KeepTheOldFileWhenItCanNotBeRemoved) {
    const auto old = FileOf({u"old"});
    Put(userFile, old, 100);
    files.undeletable.insert(userFile);
    store.StoreTemplates();
    EXPECT_EQ(files.entries[userFile].bytes, old);
    EXPECT_EQ(files.entries[temporaryFile].bytes, (std::vector<std::uint8_t>{0, 0, 0, 0}));
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("open to write", temporaryFile), "write 4", "flush", "close",
                                   Line("delete", userFile), Line("exists", userFile), "box Error:"}));
}

TEST_F(StoreFaults, NameATemplateThatCanNotBeStored) {
    const auto old = FileOf({u"old"});
    Put(userFile, old, 100);
    store.templates.push_back(MakePackage({}));
    files.onWritten = [] { FailAllocation(1); };  // of the block, which comes next behind the count
    store.StoreTemplates();
    EXPECT_FALSE(IsAllocationToFail());
    EXPECT_EQ(messages.shown, (std::vector<UserMessage>{{u"Failed to store templates: out of memory", u"Error:", 16,
                                                         MessageOwner::ActiveWindow}}));
    EXPECT_EQ(files.entries[userFile].bytes, old);
    EXPECT_EQ(files.entries[temporaryFile].bytes, (std::vector<std::uint8_t>{1, 0, 0, 0}));
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("open to write", temporaryFile), "write 4", "box Error:", "close"}));
    EXPECT_EQ(files.openFiles, 0);
}

}  // namespace
}  // namespace reka::test
