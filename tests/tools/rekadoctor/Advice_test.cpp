// SPDX-License-Identifier: MIT
// The commands that are advised, which a user pastes as they are.

#include "Advice.h"

#include <gtest/gtest.h>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

class Advice : public testing::Test {
protected:
    Advice() { computer.MakeAllWell(); }
    Examination Found() { return Examine(computer); }

    CFakeComputer computer;
    Section section{"", Width::Bits64, {}, {}};
};

const std::string command64 = "C:\\Windows\\System32\\regsvr32.exe \"C:\\REKA\\x64\\REKA.dll\"";
const std::string command32 = "C:\\Windows\\SysWOW64\\regsvr32.exe \"C:\\REKA\\x86\\REKA.dll\"";
const std::string forMachine = "Register for all users, in a command prompt that runs as administrator:";
const std::string forUser = "Register for this user alone, in a command prompt:";
const std::string setUser = "reg add HKCU\\Software\\NAVO /v CurrentUser /d \"1\" /f";
const std::string forgetUser = "reg delete HKCU\\Software\\NAVO /v CurrentUser /f";

TEST_F(Advice, NamesTheRegistrarOfTheWidth) {
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits64, section), command64);
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits32, section), command32);
    EXPECT_TRUE(section.advice.empty());
}

TEST_F(Advice, NamesTheOneRegistrarOfA32BitWindows) {
    computer.surroundings.isWindows64Bit = false;
    computer.surroundings.ownWidth = Width::Bits32;
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits32, section),
              "C:\\Windows\\System32\\regsvr32.exe \"C:\\REKA\\x86\\REKA.dll\"");
}

TEST_F(Advice, NamesARegisteredModuleIfNoneIsNear) {
    computer.surroundings.programFolder = "D:\\elsewhere";
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits64, section), command64);
    EXPECT_TRUE(section.advice.empty());
}

TEST_F(Advice, TellsWhatToPutForAModuleThatIsNowhere) {
    computer.files.clear();
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits64, section),
              "C:\\Windows\\System32\\regsvr32.exe \"FOLDER\\REKA.dll\"");
    const std::string words = " of the package, wherever it was unpacked.";
    EXPECT_EQ(section.advice, std::vector<Step>{Step({"FOLDER below is the folder x64" + words, {}})});
    EXPECT_EQ(RegisterCommand(Found(), Width::Bits32, section),
              "C:\\Windows\\SysWOW64\\regsvr32.exe \"FOLDER\\REKA.dll\"");
    EXPECT_EQ(section.advice.back(), Step({"FOLDER below is the folder x86" + words, {}}));
}

TEST_F(Advice, RegistersForTheMachine) {
    AdviseToRegister(Found(), machine64, section);
    EXPECT_EQ(section.advice, std::vector<Step>{Step({forMachine, {command64}})});
}

TEST_F(Advice, ForgetsTheSettingBeforeItRegistersForTheMachine) {
    computer.PutText(user64, "Software\\NAVO", "CurrentUser", "1");
    AdviseToRegister(Found(), machine32, section);
    EXPECT_EQ(section.advice, std::vector<Step>{Step({forMachine, {forgetUser, command32}})});
}

TEST_F(Advice, SetsAndForgetsTheSettingToRegisterForTheUser) {
    AdviseToRegister(Found(), user64, section);
    EXPECT_EQ(section.advice, std::vector<Step>{Step({forUser, {setUser, command64, forgetUser}})});
}

TEST_F(Advice, PutsTheOldSettingBack) {
    computer.PutText(user64, "Software\\NAVO", "CurrentUser", "0");
    AdviseToRegister(Found(), user64, section);
    const std::string putBack = "reg add HKCU\\Software\\NAVO /v CurrentUser /d \"0\" /f";
    EXPECT_EQ(section.advice, std::vector<Step>{Step({forUser, {setUser, command64, putBack}})});
}

TEST_F(Advice, LeavesASettingThatIsRight) {
    computer.PutText(user64, "Software\\NAVO", "CurrentUser", "1");
    AdviseToRegister(Found(), user32, section);
    EXPECT_EQ(section.advice, std::vector<Step>{Step({forUser, {command32}})});
}

TEST_F(Advice, OffersBothOwners) {
    AdviseToRegisterForAnyone(Found(), Width::Bits64, section);
    EXPECT_EQ(section.advice, (std::vector<Step>{{forMachine, {command64}},
                                                 {"Or, without the rights of an administrator:", {}},
                                                 {forUser, {setUser, command64, forgetUser}}}));
}

TEST_F(Advice, RemovesADeadEntry) {
    const std::string key = "\\Software\\Classes\\CLSID\\" + std::string(classId) + " /f /reg:";
    AdviseToRemove(machine32, section);
    AdviseToRemove(user64, section);
    EXPECT_EQ(section.advice,
              (std::vector<Step>{{"Or remove the dead entry, as administrator:", {"reg delete HKLM" + key + "32"}},
                                 {"Or remove the dead entry:", {"reg delete HKCU" + key + "64"}}}));
}

TEST_F(Advice, IsGivenOnce) {
    AdviseToRegister(Found(), machine64, section);
    AdviseToRegister(Found(), machine64, section);
    EXPECT_EQ(section.advice.size(), 1U);
}

}  // namespace

}  // namespace rekadoctor
