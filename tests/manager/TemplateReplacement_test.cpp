// SPDX-License-Identifier: MIT
// The user said yes to newer templates of the system: each operation on the way to them fails in turn, and his own are
// kept.

#include "manager/StoreFixture.h"

namespace reka::test {
namespace {

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
