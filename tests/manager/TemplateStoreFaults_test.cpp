// SPDX-License-Identifier: MIT
// Each file operation of the store fails in turn, and the outcome is what it must be.

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

/// What a failing operation of a load leads to.
struct LoadFault {
    const char* operation;
    enum Outcome { Loaded, Empty, SetAside } outcome;
};

/// Loading a file with two templates, beside an older system file.
const LoadFault loadFaults[] = {
    {"user folder", LoadFault::Loaded},  // from the component's folder then
    {"folder", LoadFault::Loaded},      {"folder", LoadFault::Loaded},
    {"exists", LoadFault::Loaded},  // taken for a new user, but the system's file never overwrites
    {"time", LoadFault::Loaded},    // a file without a time is the oldest, so there is a question
    {"time", LoadFault::Loaded},        {"open to read", LoadFault::Empty},
    {"read 4", LoadFault::SetAside},    {"read 4", LoadFault::SetAside},
    {"read 36", LoadFault::SetAside},   {"read 4", LoadFault::SetAside},
    {"read 36", LoadFault::SetAside},   {"close", LoadFault::Loaded},
};

TEST_F(StoreFixture, ReadsOrSetsAsideWhicheverOperationFails) {
    const auto mine = FileOf({u"A", u"B"});
    const auto theirs = FileOf({u"S", u"T"});
    int fault = 0;
    for (const LoadFault& row : loadFaults) {
        SCOPED_TRACE(std::to_string(++fault) + " " + row.operation);
        files.entries.clear();
        files.operations.clear();
        messages.shown.clear();
        Put(userFile, mine, 100);
        Put(systemFile, theirs, 50);
        files.failAt = fault;
        store.LoadTemplates();
        const std::string& failed = files.operations.at(static_cast<std::size_t>(fault) - 1);
        EXPECT_EQ(failed.substr(0, std::string_view(row.operation).size()), row.operation);
        EXPECT_EQ(files.openFiles, 0);
        const bool isSystems = fault == 1;
        switch (row.outcome) {
            case LoadFault::Loaded:
                EXPECT_EQ(Loaded(), isSystems ? (Names{u"S", u"T"}) : (Names{u"A", u"B"}));
                EXPECT_EQ(messages.shown.size(), fault == 5 ? 1U : 0U);
                break;
            case LoadFault::Empty:
                EXPECT_TRUE(store.templates.empty());
                EXPECT_TRUE(messages.shown.empty());
                EXPECT_EQ(files.entries[userFile].bytes, mine);
                break;
            case LoadFault::SetAside:
                EXPECT_TRUE(store.templates.empty());
                EXPECT_EQ(messages.shown.size(), 1U);
                EXPECT_EQ(files.entries[backup].bytes, mine);
                break;
        }
    }
    files.failAt = 0;
    files.operations.clear();
    files.entries.clear();
    Put(userFile, mine, 100);
    Put(systemFile, theirs, 50);
    store.LoadTemplates();
    EXPECT_EQ(files.operations.size(), std::size(loadFaults));
}

class UnreadFile : public StoreFixture {
protected:
    UnreadFile() { Put(userFile, mine, 100); }

    /// That the store refuses to store, says so, and touches no file.
    void ExpectNothingIsStored() {
        files.failAt = 0;
        files.operations.clear();
        messages.shown.clear();
        store.templates.push_back(MakePackage({u"new"}));
        std::u16string text;
        EXPECT_FALSE(store.CanStore(text));
        EXPECT_EQ(text, u"Failed to open reaction package template file " + userFile +
                            u" for writing. The current state of the reaction package templates cannot be stored.");
        store.StoreTemplates();
        EXPECT_EQ(messages.shown, (std::vector<UserMessage>{{text, u"Error:", 16, MessageOwner::ActiveWindow}}));
        EXPECT_EQ(files.entries[userFile].bytes, mine);
        EXPECT_EQ(files.entries.size(), 1U);
    }

    const std::vector<std::uint8_t> mine = FileOf({u"A", u"B"});
};

TEST_F(UnreadFile, IsNotReplacedAfterItCouldNotBeOpened) {
    files.failAt = 7;
    store.LoadTemplates();
    ASSERT_EQ(files.operations.at(6), Line("open to read", userFile));
    EXPECT_TRUE(store.templates.empty());
    EXPECT_TRUE(messages.shown.empty());
    ExpectNothingIsStored();
}

TEST_F(UnreadFile, IsNotReplacedWhereNobodyKnowsWhetherItIsThere) {
    files.failAt = 7;
    files.failCount = 2;
    store.LoadTemplates();
    ASSERT_EQ(files.operations.at(7), Line("absent", userFile));
    files.failCount = 1;
    ExpectNothingIsStored();
}

TEST_F(UnreadFile, IsNotReplacedAfterItCouldNotBeSetAside) {
    files.entries[userFile].bytes.pop_back();
    const auto damaged = files.entries[userFile].bytes;
    files.failAt = 16;
    store.LoadTemplates();
    ASSERT_EQ(files.operations.at(15), Line("rename", userFile, backup));
    ASSERT_EQ(messages.shown.size(), 1U);
    files.failAt = 0;
    store.StoreTemplates();
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(files.entries[userFile].bytes, damaged);
}

TEST_F(UnreadFile, IsForgottenOnceItIsGoneOrRead) {
    files.failAt = 7;
    store.LoadTemplates();
    files.failAt = 0;
    files.entries.clear();
    store.templates.push_back(MakePackage({u"new"}));
    store.StoreTemplates();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(files.entries.contains(userFile));
    store.LoadTemplates();
    std::u16string text;
    EXPECT_TRUE(store.CanStore(text));
    EXPECT_EQ(store.templates.size(), 1U);
}

TEST_F(StoreFixture, TellsWhatItCouldNotRename) {
    const auto text = [&](const std::u16string& failed) {
        return u"There was an error reading the reaction package templates in " + userFile +
               u": the system's reason\r\n.\r\nFailed rename " + failed + u"; " + userFile + u" was not removed.\r\n";
    };
    // The operations of a recovery with two older backups; what each failure is told with, empty for none; and how many
    // files are there afterwards. A backup that looks absent is overwritten.
    const struct {
        const char* operation;
        std::u16string failed;
        std::size_t left;
    } rows[] = {
        {"exists", u"", 2},    {"exists", u"", 2},
        {"exists", u"", 3},  // of number 2, which isn't there anyway
        {"delete", u"", 3},    {"rename", backup + u"1", 3},
        {"delete", u"", 3},  // of number 1, which has just been renamed
        {"rename", backup, 3}, {"delete", u"", 3},
        {"rename", backup, 3},  // of the file itself
    };
    int fault = 6;  // behind the read
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(++fault) + " " + row.operation);
        files.entries.clear();
        files.operations.clear();
        messages.shown.clear();
        Put(userFile, {9}, 100);
        Put(backup, {1}, 1);
        Put(backup + u"1", {2}, 1);
        files.failAt = fault + 3;
        store.LoadTemplates();
        const std::string& failed = files.operations.at(static_cast<std::size_t>(fault) + 2);
        EXPECT_EQ(failed.substr(0, std::string_view(row.operation).size()), row.operation);
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].title, u"REKA:");
        EXPECT_EQ(messages.shown[0].style, 16U);
        if (row.failed.empty()) {
            EXPECT_FALSE(files.entries.contains(userFile));
        } else {
            EXPECT_EQ(messages.shown[0].text, text(row.failed));
            EXPECT_TRUE(files.entries.contains(userFile));
        }
        EXPECT_EQ(files.entries.size(), row.left);
    }
}

TEST_F(StoreFixture, TellsAFailedRenameBehindIt) {
    Put(userFile, {9}, 100);
    files.failAt = 12;
    store.LoadTemplates();
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("exists", userFile), Line("time", userFile), Line("time", systemFile),
                                   Line("open to read", userFile), "read 4", "close", Line("exists", backup),
                                   Line("delete", backup), Line("rename", userFile, backup), "box REKA:"}));
}

TEST_F(StoreFixture, HasNoTemplatesIfAFirstCopyFails) {
    Put(systemFile, FileOf({u"S"}), 50);
    files.failAt = 6;
    store.LoadTemplates();
    EXPECT_EQ(files.operations, Join(FolderLines(), {Line("exists", userFile), Line("absent", userFile),
                                                     Line("copy new", systemFile, userFile),
                                                     Line("open to read", userFile), Line("absent", userFile)}));
    EXPECT_TRUE(store.templates.empty());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(files.entries.contains(userFile));
    files.failAt = 0;
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"S"});
}

TEST_F(StoreFixture, LeavesANameThatIsOnlyWaitingToGo) {
    Put(systemFile, FileOf({u"S"}), 50);
    files.failAt = 5;  // the system doesn't say that nothing is there
    store.LoadTemplates();
    EXPECT_EQ(files.operations, Join(FolderLines(), {Line("exists", userFile), Line("absent", userFile),
                                                     Line("open to read", userFile), Line("absent", userFile)}));
    EXPECT_TRUE(store.templates.empty());
    EXPECT_FALSE(files.entries.contains(userFile));
}

/// What a failing operation leads to on the road from a yes to the newer file.
struct ReplacementFault {
    const char* operation;
    std::size_t boxes;
    const char16_t* loaded;   // null for none
    const char16_t* backup1;  // the package in the backup of that number, null for no such file
    const char16_t* backup2;
};

/// Replacing the user's file, of which there is one backup already.
const ReplacementFault replacementFaults[] = {
    {"user folder", 0, u"theirs", u"older", nullptr},  // both files are the system's then
    {"folder", 2, u"theirs", u"older", u"mine"},
    {"folder", 2, u"theirs", u"older", u"mine"},
    {"exists", 0, u"mine", u"older", nullptr},  // taken for a new user, and what is there stays
    {"time", 2, u"theirs", u"older", u"mine"},
    {"time", 0, u"mine", u"older", nullptr},      // a system file without a time is the oldest
    {"exists", 2, u"theirs", u"mine", nullptr},   // the older backup is taken for gone, and overwritten
    {"exists", 2, u"theirs", u"older", u"mine"},  // the second isn't there anyway
    {"copy", 2, u"theirs", u"older", nullptr},    // the user's templates are lost
    {"copy", 2, u"mine", u"older", u"mine"},
    {"open to read", 2, nullptr, u"older", u"mine"},
    {"read 4", 3, nullptr, u"older", u"mine"},
    {"read 4", 3, nullptr, u"older", u"mine"},
    {"read 46", 3, nullptr, u"older", u"mine"},
    {"close", 2, u"theirs", u"older", u"mine"},
};

TEST_F(StoreFixture, ReplacesTheUsersFileWhicheverOperationFails) {
    messages.answer = MessageAnswer::Yes;
    std::size_t operationCount = 0;
    int fault = 0;
    for (const ReplacementFault& row : replacementFaults) {
        SCOPED_TRACE(std::to_string(++fault) + " " + row.operation);
        files.entries.clear();
        files.operations.clear();
        messages.shown.clear();
        Put(userFile, FileOf({u"mine"}), 99);
        Put(systemFile, FileOf({u"theirs"}), 100);
        Put(backup + u"1", FileOf({u"older"}), 1);
        files.failAt = fault;
        store.LoadTemplates();
        Lines operations;
        for (const std::string& line : files.operations) {
            if (!line.starts_with("box ")) operations.push_back(line);
        }
        EXPECT_TRUE(operations.at(static_cast<std::size_t>(fault) - 1).starts_with(row.operation));
        operationCount = operations.size();
        EXPECT_EQ(messages.shown.size(), row.boxes);
        EXPECT_EQ(Loaded(), row.loaded ? Names{row.loaded} : Names{});
        const std::pair<const char16_t*, const char16_t*> backups[] = {{u"1", row.backup1}, {u"2", row.backup2}};
        for (const auto& [number, expected] : backups) {
            const auto found = files.entries.find(backup + number);
            ASSERT_EQ(found != files.entries.end(), expected != nullptr) << Utf8FromUtf16(number);
            if (expected) {
                EXPECT_EQ(found->second.bytes, FileOf({expected}));
            }
        }
        EXPECT_EQ(files.openFiles, 0);
    }
    EXPECT_EQ(operationCount, std::size(replacementFaults));  // the close is the last
}

TEST_F(StoreFixture, ReplacesTheUsersFileEvenIfTheBackupFails) {
    messages.answer = MessageAnswer::Yes;
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    files.failAt = 8;  // the copy to the backup
    store.LoadTemplates();
    EXPECT_EQ(files.operations[8], Line("copy", userFile, backup + u"1"));  // behind the question
    EXPECT_EQ(Loaded(), Names{u"theirs"});
    EXPECT_FALSE(files.entries.contains(backup + u"1"));
    EXPECT_EQ(messages.shown.size(), 2U);
}

TEST_F(StoreFixture, KeepsTheUsersFileIfTheSystemsCanNotBeCopied) {
    messages.answer = MessageAnswer::Yes;
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    files.failAt = 9;
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"mine"});
    EXPECT_EQ(messages.shown.size(), 2U);
}

}  // namespace
}  // namespace reka::test
