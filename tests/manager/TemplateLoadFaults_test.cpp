// SPDX-License-Identifier: MIT
// Each file operation of a load fails in turn: what can be read is read, what can't is set aside or left where it is,
// and nothing is stored over a file that could not be read.

#include "manager/StoreFixture.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

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

TEST_F(UnreadFile, IsNotReplacedWhereAnotherSimulatorWasReplacingIt) {
    Put(systemFile, FileOf({u"S"}), 200);  // newer, so there is a question; meanwhile the other one deletes the file
    messages.onNextShow = [&] { files.entries.erase(userFile); };
    store.LoadTemplates();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(store.templates.empty());
    files.entries.erase(systemFile);
    Put(userFile, mine, 300);  // and puts the new one there
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

}  // namespace
}  // namespace reka::test
