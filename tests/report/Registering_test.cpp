// SPDX-License-Identifier: MIT
// Where the tests of a registered component may run: nothing of somebody's is there to be changed.

#include "report/Registering.h"

#include <gtest/gtest.h>

#include "tools/rekadoctor/FakeComputer.h"

namespace testreport {
namespace {

const std::string own = "C:\\tests (1)\\results\\user";

class Registering : public testing::Test {
protected:
    Registering() {
        computer.surroundings.isElevated = true;
        computer.userFolder = own + "\\AppData\\Roaming";
    }
    std::string Why(bool isWanted = true) { return WhyNotRegistering(computer, isWanted, own); }

    rekadoctor::CFakeComputer computer;
};

TEST_F(Registering, IsDoneWhereNothingStands) {
    EXPECT_EQ(Why(), "");
}

TEST_F(Registering, HasToBeWanted) {
    EXPECT_EQ(Why(false), "they register REKA, for which they want --register");
}

TEST_F(Registering, NeedsAnAdministrator) {
    computer.surroundings.isElevated = false;
    EXPECT_EQ(Why(), "they need the rights of an administrator: start run-tests.cmd in a prompt that has them");
}

TEST_F(Registering, LeavesARegistrationAlone) {
    const std::string words =
        "REKA is registered here or has settings: uninstall it, and delete HKEY_CURRENT_USER\\Software\\NAVO";
    for (const rekadoctor::RegistryPlace place :
         {rekadoctor::machine64, rekadoctor::machine32, rekadoctor::user64, rekadoctor::user32}) {
        rekadoctor::CFakeComputer registered = computer;
        registered.PutText(place, classKey, "", "REKA");
        EXPECT_TRUE(IsRegistered(registered));
        EXPECT_EQ(WhyNotRegistering(registered, true, own), words);
    }
    EXPECT_FALSE(IsRegistered(computer));
    computer.PutText(rekadoctor::user64, "Software\\NAVO", "CurrentUser", "0");
    EXPECT_EQ(Why(), words);
}

TEST_F(Registering, LeavesTemplatesAlone) {
    computer.files[own + "\\AppData\\Roaming" + templateFile] = {};
    EXPECT_EQ(Why(), "");  // of an earlier run
    computer.userFolder = "C:\\TESTS (1)\\Results\\User\\AppData\\Roaming";
    EXPECT_EQ(Why(), "");
    computer.userFolder = "C:\\Users\\somebody";
    EXPECT_EQ(Why(), "");  // who has none
    computer.files["C:\\Users\\somebody" + templateFile] = {};
    EXPECT_EQ(Why(), "this account has templates of its own, which stay untouched: use another account");
    computer.files.clear();
    computer.unreachable = {"C:\\Users\\somebody" + templateFile};
    EXPECT_EQ(Why(),
              "it can't be told whether this account has templates of its own (The network path was not found.): "
              "use another account");
    computer.unreachable.clear();
    EXPECT_EQ(Why(), "");
    computer.userFolder.clear();
    EXPECT_EQ(Why(), "this Windows doesn't tell the user's folder");
}

TEST(RegisteringVerdict, IsNotWellWhereWhatWasWantedIsRefused) {
    const auto expect = [](const Verdict& verdict, int status, const std::string& words) {
        EXPECT_EQ(verdict.exitStatus, status);
        EXPECT_EQ(verdict.words, words);
    };
    expect(VerdictOf(true, true, ""), 0, "All is well");
    expect(VerdictOf(true, false, "it isn't wanted"), 0, "All is well");
    expect(VerdictOf(false, true, ""), 1, "Something is wrong");
    expect(VerdictOf(false, false, "it isn't wanted"), 1, "Something is wrong");
    expect(VerdictOf(true, true, "REKA is there"), 2,
           "The tests that register REKA were not run: REKA is there.\nAll else is well");
    expect(VerdictOf(false, true, "REKA is there"), 2,
           "The tests that register REKA were not run: REKA is there.\nSomething is wrong");
}

}  // namespace
}  // namespace testreport
