// SPDX-License-Identifier: MIT
// The file of templates: how a user comes to it, what is read and written, and where a damaged one goes, step by step.

#include "manager/TemplateStore.h"

#include "manager/StoreFixture.h"
#include "support/AllocationCounter.h"
#include "support/CountedFake.h"

namespace reka::test {
namespace {

// Paths and the first file

TEST_F(StoreFixture, MakesTheFoldersOfTheUsersFile) {
    std::u16string path;
    TemplateStore::GetConfigFilePath(path, false);
    EXPECT_EQ(path, userFile);
    EXPECT_EQ(files.operations, FolderLines());
}

TEST_F(StoreFixture, AddsNoSecondSeparatorToTheUsersFolder) {
    files.userFolder = u"U:/user" + Slash();
    std::u16string path;
    TemplateStore::GetConfigFilePath(path, false);
    EXPECT_EQ(path, userFile);
}

TEST_F(StoreFixture, UsesTheComponentsFolderForAUserWithoutOne) {
    files.hasUserFolder = false;
    std::u16string path;
    TemplateStore::GetConfigFilePath(path, false);
    EXPECT_EQ(path, systemFile);
    EXPECT_EQ(files.operations, (Lines{"user folder", Line("folder", ComponentFolder() + u"data" + Slash())}));
}

TEST_F(StoreFixture, AsksNothingWhereTheUsersFileIsTheSystems) {
    files.hasUserFolder = false;
    Put(systemFile, FileOf({u"A"}), 100);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"A"});
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoreFixture, CopiesTheSystemsFileForANewUser) {
    Put(systemFile, FileOf({u"A", u"B"}), 100);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), (Names{u"A", u"B"}));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(files.entries[userFile].bytes, files.entries[systemFile].bytes);
    EXPECT_EQ(files.operations,
              Join(FolderLines(),
                   {Line("exists", userFile), Line("absent", userFile), Line("copy new", systemFile, userFile),
                    Line("open to read", userFile), "read 4", "read 4", "read 36", "read 4", "read 36", "close"}));
    files.operations.clear();
    store.LoadTemplates();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(files.operations, Join(FolderLines(), {Line("exists", userFile), Line("time", userFile),
                                                     Line("time", systemFile), Line("open to read", userFile), "read 4",
                                                     "read 4", "read 36", "read 4", "read 36", "close"}));
}

TEST_F(StoreFixture, HasNoTemplatesWithoutAnyFile) {
    store.LoadTemplates();
    EXPECT_TRUE(store.templates.empty());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(files.entries.empty());
    store.templates.push_back(MakePackage({}));
    store.StoreTemplates();
    EXPECT_TRUE(files.entries.contains(userFile));
    EXPECT_EQ(files.entries.size(), 1U);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"Test package"});
}

// A newer system file

const UserMessage question = {
    u"The system REKA configuration is newer than the user REKA configuration. Replace user configuration with system "
    u"configuration?",
    u"Newer REKA configuration:", 36, MessageOwner::None};

TEST_F(StoreFixture, AsksAtEveryLoadWhetherToTakeANewerSystemFile) {
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    store.LoadTemplates();
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"mine"});
    EXPECT_EQ(messages.shown, (std::vector<UserMessage>{question, question}));
    EXPECT_EQ(files.entries.size(), 2U);
}

TEST_F(StoreFixture, LeavesAllAsItIsForEveryAnswerButYes) {
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    for (const MessageAnswer answer : {MessageAnswer::None, MessageAnswer::Ok, MessageAnswer::Cancel}) {
        messages.answer = answer;
        store.LoadTemplates();
        EXPECT_EQ(Loaded(), Names{u"mine"});
    }
}

TEST_F(StoreFixture, KeepsABackupOfAFileThatIsReplaced) {
    messages.answer = MessageAnswer::Yes;
    const auto mine = FileOf({u"mine"});
    Put(userFile, mine, 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"theirs"});
    EXPECT_EQ(files.entries[backup + u"1"].bytes, mine);
    const UserMessage told = {u"Backing up user REKA configuration file \"" + userFile + u"\" to \"" + backup +
                                  u"1\" and replacing by system REKA configuration file, which is newer.",
                              u"REKA Configuration:", 64, MessageOwner::None};
    EXPECT_EQ(messages.shown, (std::vector<UserMessage>{question, told}));
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("exists", userFile), Line("time", userFile), Line("time", systemFile),
                                   "box Newer REKA configuration:", Line("exists", backup + u"1"),
                                   Line("copy", userFile, backup + u"1"), Line("copy", systemFile, userFile),
                                   "box REKA Configuration:", Line("open to read", userFile), "read 4", "read 4",
                                   "read 46", "close"}));
    store.LoadTemplates();  // both are of the same time now
    EXPECT_EQ(messages.shown.size(), 2U);
    files.entries[systemFile].time = 200;
    store.LoadTemplates();
    EXPECT_TRUE(files.entries.contains(backup + u"2"));
    EXPECT_FALSE(files.entries.contains(backup));
}

TEST_F(StoreFixture, TakesTheFirstFreeNumberForTheBackup) {
    messages.answer = MessageAnswer::Yes;
    const auto mine = FileOf({u"mine"});
    Put(userFile, mine, 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    for (const char16_t* const taken : {u"1", u"2", u"3", u"5"}) Put(backup + taken, {9}, 1);
    store.LoadTemplates();
    EXPECT_EQ(files.entries[backup + u"4"].bytes, mine);
    for (const char16_t* const taken : {u"1", u"2", u"3", u"5"}) {
        EXPECT_EQ(files.entries[backup + taken].bytes, std::vector<std::uint8_t>{9});
    }
    EXPECT_NE(messages.shown.back().text.find(u"\" to \"" + backup + u"4\" and"), std::u16string::npos);
}

TEST_F(StoreFixture, CountsBackupsInDecimal) {
    messages.answer = MessageAnswer::Yes;
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    for (char16_t digit = u'1'; digit <= u'9'; ++digit) Put(backup + digit, {9}, 1);
    store.LoadTemplates();
    EXPECT_TRUE(files.entries.contains(backup + u"10"));
}

TEST_F(StoreFixture, HasAnEmptyListWhileItAsks) {
    Put(userFile, FileOf({u"mine"}), 100);
    Put(systemFile, FileOf({u"theirs"}), 50);
    store.LoadTemplates();
    files.entries[systemFile].time = 200;
    bool wasEmpty = false;
    messages.onShow = [&] { wasEmpty = store.templates.empty(); };
    store.LoadTemplates();
    EXPECT_TRUE(wasEmpty);
    EXPECT_EQ(Loaded(), Names{u"mine"});
}

TEST_F(StoreFixture, EndsTheQuestionByStoring) {
    Put(userFile, FileOf({u"mine"}), 99);
    Put(systemFile, FileOf({u"theirs"}), 100);
    store.LoadTemplates();
    store.StoreTemplates();
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(StoreFixture, TakesAFileItCanNotOpenForOldest) {
    Put(userFile, FileOf({u"mine"}), 99);  // and no system file
    store.LoadTemplates();
    EXPECT_TRUE(messages.shown.empty());
}

// Reading

TEST_F(StoreFixture, IgnoresWhatStandsBehindTheLastBlock) {
    auto bytes = FileOf({u"A"});
    const auto clean = bytes;
    bytes.insert(bytes.end(), {1, 2, 3});
    Put(userFile, bytes, 100);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"A"});
    store.StoreTemplates();
    EXPECT_EQ(files.entries[userFile].bytes, clean);
}

TEST_F(StoreFixture, TakesACountOfZeroOrLessForNone) {
    for (const std::uint32_t count : {0U, 0xFFFFFFFFU, 0x80000000U}) {
        Put(userFile, CStoredBytes().U32(count).U32(7).bytes, 100);
        store.LoadTemplates();
        EXPECT_TRUE(store.templates.empty());
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoreFixture, GivesItsContextToWhatItReads) {
    CFakeObject context;
    store.simulationContext = CComRef<IDispatch>(&context);
    Put(userFile, FileOf({u"A"}), 100);
    store.LoadTemplates();
    EXPECT_EQ(store.templates[0]->simulationContext.Get(), &context);
    EXPECT_EQ(context.references.Held(), 2);
    store.templates.clear();
    store.simulationContext.Reset();
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(StoreFixture, WarnsOfEachOldBlockUntilItIsStored) {
    Put(userFile, File({OldBlock(u"A"), Block(u"B"), OldBlock(u"C")}).bytes, 100);
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].title, u"REKA warning:");
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.size(), 4U);
    EXPECT_EQ(store.templates[2]->reactions[0]->rateEquation, u"(T)/3.6");
    store.StoreTemplates();
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.size(), 4U);
    EXPECT_EQ(store.templates[2]->reactions[0]->rateEquation, u"(T)/3.6");
}

// Damaged files

class DamagedFile : public StoreFixture {
protected:
    UserMessage ToldOf(const std::u16string& reason) {
        return {u"There was an error reading the reaction package templates in " + userFile + u": " + reason +
                    u".\r\nThe file has been renamed to " + backup,
                u"REKA:", 16, MessageOwner::None};
    }
};

TEST_F(DamagedFile, IsSetAsideAndReplacedAtTheNextLoad) {
    auto bytes = FileOf({u"A", u"B", u"C"});
    bytes.pop_back();
    Put(userFile, bytes, 100);
    Put(systemFile, FileOf({u"S"}), 50);
    store.LoadTemplates();
    EXPECT_TRUE(store.templates.empty());
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{ToldOf(u"read error / unexpected end of file")});
    EXPECT_EQ(files.entries[backup].bytes, bytes);
    EXPECT_FALSE(files.entries.contains(userFile));
    EXPECT_EQ(files.openFiles, 0);
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"S"});
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(DamagedFile, IsOneThatEndsAnywhere) {
    const auto whole = FileOf({u"A", u"B"});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        files.entries.clear();
        messages.shown.clear();
        Put(userFile, {whole.begin(), whole.begin() + static_cast<long>(size)}, 100);
        store.LoadTemplates();
        EXPECT_TRUE(store.templates.empty()) << size;
        EXPECT_EQ(messages.shown, std::vector<UserMessage>{ToldOf(u"read error / unexpected end of file")}) << size;
        EXPECT_TRUE(files.entries.contains(backup)) << size;
    }
}

TEST_F(DamagedFile, IsSetAsideForOneBadBlock) {
    const auto newer = Block(u"B").U8(0);
    Put(userFile, File({Block(u"A"), newer, Block(u"C")}).bytes, 100);
    store.LoadTemplates();
    EXPECT_TRUE(store.templates.empty());
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{ToldOf(
                                  u"unexpected data at the end of the stored reaction package data: reaction pack data "
                                  u"may have been saved with newer version")});
}

TEST_F(DamagedFile, HasNoTemplatesLeftWhenItIsTold) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    CFakeObject context;
    store.simulationContext = CComRef<IDispatch>(&context);
    store.LoadTemplates();
    EXPECT_EQ(context.references.Held(), 3);
    files.entries[userFile].bytes.pop_back();
    int held = 0;
    bool wasEmpty = false;
    messages.onShow = [&] {
        held = context.references.Held();
        wasEmpty = store.templates.empty();
    };
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_TRUE(wasEmpty);
    EXPECT_EQ(held, 1);  // the store's own: neither the older templates nor the first one of the file are left
    store.simulationContext.Reset();
}

TEST_F(DamagedFile, IsOneWithABlockOfNoBytes) {
    Put(userFile, CStoredBytes().U32(1).U32(0).bytes, 100);
    store.LoadTemplates();
    EXPECT_TRUE(store.templates.empty());
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{ToldOf(u"data corrupted")});
    messages.shown.clear();
    Put(userFile, CStoredBytes().U32(2).U32(0).U32(36).Add(Block(u"A")).bytes, 100);
    store.LoadTemplates();
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{ToldOf(u"data corrupted")});
}

TEST_F(DamagedFile, CostsNoMemoryForASizeThatLies) {
    constexpr std::size_t enough = std::size_t{6} << 20;  // a part of 4 MiB, and what the fakes take
    const CAllocationCounter counter;
    for (const std::uint32_t size : {0x7FFFFFFFU, 0xFFFFFFFFU}) {
        Put(userFile, CStoredBytes().U32(1).U32(size).Add(Block(u"A")).bytes, 100);
        store.LoadTemplates();
        EXPECT_EQ(messages.shown.back(), ToldOf(u"read error / unexpected end of file"));
        files.entries.clear();
    }
    EXPECT_LT(counter.Bytes(), 2 * enough);
    const CAllocationCounter ofTheCount;
    Put(userFile, CStoredBytes().U32(0x7FFFFFFF).U32(36).Add(Block(u"A")).bytes, 100);
    store.LoadTemplates();
    EXPECT_EQ(messages.shown.back(), ToldOf(u"read error / unexpected end of file"));
    EXPECT_LT(ofTheCount.Bytes(), enough);
}

TEST_F(DamagedFile, MovesOlderOnesUp) {
    for (std::uint8_t turn = 1; turn <= 3; ++turn) {
        Put(userFile, {turn}, 100);
        store.LoadTemplates();
    }
    EXPECT_EQ(files.entries[backup].bytes, std::vector<std::uint8_t>{3});
    EXPECT_EQ(files.entries[backup + u"1"].bytes, std::vector<std::uint8_t>{2});
    EXPECT_EQ(files.entries[backup + u"2"].bytes, std::vector<std::uint8_t>{1});
    EXPECT_EQ(files.entries.size(), 3U);
}

TEST_F(DamagedFile, IsMovedInTheseSteps) {
    Put(userFile, {9}, 100);
    Put(backup, {1}, 1);
    Put(backup + u"1", {2}, 1);
    Put(backup + u"3", {4}, 1);  // behind a gap, which ends the row
    store.LoadTemplates();
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("exists", userFile), Line("time", userFile), Line("time", systemFile),
                                   Line("open to read", userFile), "read 4", "close", Line("exists", backup),
                                   Line("exists", backup + u"1"), Line("exists", backup + u"2"),
                                   Line("delete", backup + u"2"), Line("rename", backup + u"1", backup + u"2"),
                                   Line("delete", backup + u"1"), Line("rename", backup, backup + u"1"),
                                   Line("delete", backup), Line("rename", userFile, backup), "box REKA:"}));
    EXPECT_EQ(files.entries[backup + u"3"].bytes, std::vector<std::uint8_t>{4});
}

// Writing

TEST_F(StoreFixture, WritesWhatItReads) {
    const auto bytes = FileOf({u"A", u"B"});
    Put(userFile, bytes, 100);
    store.LoadTemplates();
    files.operations.clear();
    store.StoreTemplates();
    EXPECT_EQ(files.entries[userFile].bytes, bytes);
    EXPECT_EQ(files.entries.size(), 1U);
    EXPECT_EQ(files.operations,
              Join(FolderLines(), {Line("open to write", temporaryFile), "write 4", "write 4", "write 36", "write 4",
                                   "write 36", "flush", "close", Line("delete", userFile), Line("exists", userFile),
                                   Line("rename", temporaryFile, userFile)}));
    EXPECT_EQ(Loaded(), (Names{u"A", u"B"}));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoreFixture, WritesFourZeroBytesForAnEmptyList) {
    store.StoreTemplates();
    EXPECT_EQ(files.entries[userFile].bytes, (std::vector<std::uint8_t>{0, 0, 0, 0}));
}

TEST_F(StoreFixture, ReplacesATemporaryFileLeftBehind) {
    Put(temporaryFile, {1, 2, 3, 4, 5, 6, 7, 8}, 5);
    store.StoreTemplates();
    EXPECT_EQ(files.entries[userFile].bytes, (std::vector<std::uint8_t>{0, 0, 0, 0}));
    EXPECT_FALSE(files.entries.contains(temporaryFile));
}

TEST_F(StoreFixture, LetsTheLastWriterWin) {
    Put(userFile, FileOf({u"A"}), 100);
    TemplateStore other;
    store.LoadTemplates();
    other.LoadTemplates();
    other.templates.push_back(MakePackage({}));
    other.StoreTemplates();
    store.StoreTemplates();
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), Names{u"A"});
}

TEST_F(StoreFixture, SurvivesACallWhileABoxIsOpen) {
    Put(userFile, File({OldBlock(u"A"), Block(u"B")}).bytes, 100);
    messages.onNextShow = [&] { store.LoadTemplates(); };
    store.LoadTemplates();
    EXPECT_EQ(Loaded(), (Names{u"A", u"B"}));
}

// Calls of a host while its context is released

TEST_F(StoreFixture, LetsAHostLoadWhileOlderTemplatesGo) {
    Put(userFile, FileOf({u"A", u"B", u"C"}), 100);
    CFakeObject context;
    store.simulationContext = CComRef<IDispatch>(&context);
    store.LoadTemplates();
    EXPECT_EQ(context.references.Held(), 4);
    bool hasCalled = false;
    Names seen;
    context.onRelease = [&] {
        hasCalled = true;
        EXPECT_TRUE(store.templates.empty());
        store.LoadTemplates();
        seen = Loaded();
    };
    store.LoadTemplates();
    EXPECT_TRUE(hasCalled);
    EXPECT_EQ(seen, (Names{u"A", u"B", u"C"}));
    EXPECT_EQ(Loaded(), (Names{u"A", u"B", u"C"}));
    EXPECT_EQ(context.references.Held(), 4);  // each reference is given back once
    store.DiscardTemplates();
    store.simulationContext.Reset();
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(StoreFixture, LetsAHostLoadWhileWhatAnotherCallReadGoes) {
    Put(userFile, File({OldBlock(u"A"), Block(u"B")}).bytes, 100);
    CFakeObject context;
    store.simulationContext = CComRef<IDispatch>(&context);
    messages.onNextShow =
        [&] {  // while the outer call reads, an inner one fills the list, which the outer one replaces
            store.LoadTemplates();
            // The first release is of the reading's own reference, the next one of a template that is replaced.
            context.onRelease = [&] { context.onRelease = [&] { store.LoadTemplates(); }; };
        };
    store.LoadTemplates();
    EXPECT_FALSE(context.onRelease);
    EXPECT_EQ(Loaded(), (Names{u"A", u"B"}));
    EXPECT_EQ(context.references.Held(), 3);
    store.DiscardTemplates();
    store.simulationContext.Reset();
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(StoreFixture, LetsAHostLoadWhileTemplatesGoForWantOfMemory) {
    Put(userFile, FileOf({u"A", u"B"}), 100);
    Put(systemFile, FileOf({u"S"}), 200);
    CFakeObject context;
    store.simulationContext = CComRef<IDispatch>(&context);
    messages.onNextShow = [&] {
        files.entries[systemFile].time = 50;
        store.LoadTemplates();
        context.onRelease = [&] { store.LoadTemplates(); };
        FailAllocation(1);
    };
    store.LoadTemplates();
    EXPECT_FALSE(IsAllocationToFail());
    EXPECT_FALSE(context.onRelease);
    EXPECT_EQ(messages.shown.back(),
              (UserMessage{u"There was an error reading the reaction package templates: out of memory.", u"REKA:", 16,
                           MessageOwner::None}));
    EXPECT_EQ(Loaded(), (Names{u"A", u"B"}));  // as the host's own call left it
    EXPECT_EQ(context.references.Held(), 3);
    store.DiscardTemplates();
    store.simulationContext.Reset();
    EXPECT_EQ(context.references.Held(), 0);
}

}  // namespace
}  // namespace reka::test
