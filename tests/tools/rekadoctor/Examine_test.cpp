// SPDX-License-Identifier: MIT
// What is read of the computer, and where.

#include "Examine.h"

#include <gtest/gtest.h>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

TEST(Examination, ReadsARegistrationWhole) {
    CFakeComputer computer;
    computer.MakeAllWell();
    const Examination examination = Examine(computer);
    ASSERT_EQ(examination.registrations.size(), 4U);
    const Registration& found = examination.registrations[0];
    EXPECT_EQ(found.place, machine64);
    EXPECT_TRUE(found.isThere);
    EXPECT_EQ(found.file, "C:\\REKA\\x64\\REKA.dll");
    EXPECT_EQ(found.threadingModel, "Apartment");
    EXPECT_EQ(found.progId, progId);
    EXPECT_EQ(found.versionIndependentProgId, versionIndependentProgId);
    EXPECT_EQ(found.typeLibrary, typeLibraryId);
    EXPECT_EQ(found.shownName, "REKA Reaction Package Manager");
    EXPECT_EQ(found.version, "1.0.0.0");
    EXPECT_EQ(found.classOfProgId, classId);
    EXPECT_EQ(found.classOfVersionIndependentProgId, classId);
    EXPECT_EQ(found.hasCategory, (std::array<bool, categoryCount>{true, true, true, true, true}));
    EXPECT_TRUE(found.server.isThere);
    EXPECT_EQ(found.server.kind, ModuleKind::X64);
    EXPECT_TRUE(found.server.hasTemplates && found.server.hasCompounds && found.server.hasHelp);
}

TEST(Examination, LooksIntoEachHalfOfTheRegistry) {
    for (const RegistryPlace place : {machine64, machine32, user64, user32}) {
        CFakeComputer computer;
        computer.Register(place, "C:\\REKA.dll");
        for (const Registration& found : Examine(computer).registrations) {
            EXPECT_EQ(found.isThere, found.place == place);
        }
    }
}

TEST(Examination, BeginsWithTheOwnWidth) {
    CFakeComputer computer;
    computer.surroundings.ownWidth = Width::Bits32;
    const Examination examination = Examine(computer);
    ASSERT_EQ(examination.registrations.size(), 4U);
    EXPECT_EQ(examination.registrations[0].place, machine32);
    EXPECT_EQ(examination.registrations[1].place, user32);
    EXPECT_EQ(examination.registrations[2].place, machine64);
    EXPECT_EQ(examination.registrations[3].place, user64);
}

TEST(Examination, FindsOneHalfOnA32BitWindows) {
    CFakeComputer computer;
    computer.surroundings.ownWidth = Width::Bits32;
    computer.surroundings.isWindows64Bit = false;
    const Examination examination = Examine(computer);
    ASSERT_EQ(examination.registrations.size(), 2U);
    EXPECT_EQ(examination.registrations[0].place, machine32);
    EXPECT_EQ(examination.registrations[1].place, user32);
}

TEST(Examination, FindsOneHalfOfTheUserOnWine) {
    CFakeComputer computer;
    computer.surroundings.isWine = true;
    const Examination examination = Examine(computer);
    ASSERT_EQ(examination.registrations.size(), 3U);
    EXPECT_EQ(examination.registrations[0].place, machine64);
    EXPECT_EQ(examination.registrations[1].place, user64);
    EXPECT_EQ(examination.registrations[2].place, machine32);
}

TEST(Examination, LoadsOnlyWhatFitsThisProgram) {
    CFakeComputer computer;
    computer.MakeAllWell();
    Examination examination = Examine(computer);
    EXPECT_TRUE(computer.loaded.empty());
    for (Registration& found : examination.registrations) TryLoading(computer, Width::Bits64, found);
    EXPECT_EQ(computer.loaded, std::vector<std::string>{"C:\\REKA\\x64\\REKA.dll"});
    EXPECT_TRUE(examination.registrations[0].server.loading);
    EXPECT_FALSE(examination.registrations[2].server.loading);
    EXPECT_EQ(examination.registrations[2].server.kind, ModuleKind::X86);
}

TEST(Examination, TellsAFileThatCannotBeReadFromOneThatIsGone) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.unreadable.insert("C:\\REKA\\x64\\REKA.dll");
    computer.files.erase("C:\\REKA\\x86\\REKA.dll");
    Examination examination = Examine(computer);
    for (Registration& found : examination.registrations) TryLoading(computer, Width::Bits64, found);
    EXPECT_TRUE(examination.registrations[0].server.isThere);
    EXPECT_EQ(examination.registrations[0].server.kind, ModuleKind::NotAModule);
    EXPECT_FALSE(examination.registrations[2].server.isThere);
    EXPECT_TRUE(computer.loaded.empty());
}

TEST(Examination, TakesAPathInQuotes) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.PutText(machine64, CFakeComputer::classKey + "\\InprocServer32", "", "\"C:\\REKA\\x64\\REKA.dll\"");
    Registration found = Examine(computer).registrations[0];
    EXPECT_EQ(found.server.path, "C:\\REKA\\x64\\REKA.dll");
    EXPECT_TRUE(found.server.isThere && found.server.hasTemplates);
    TryLoading(computer, Width::Bits64, found);
    EXPECT_EQ(computer.loaded, std::vector<std::string>{"C:\\REKA\\x64\\REKA.dll"});
    const std::pair<const char*, const char*> rows[] = {
        {"\"\"", ""}, {"\"", "\""}, {"\"a", "\"a"}, {"a\"", "a\""}, {"\"a\"", "a"}};
    for (const auto& [registered, path] : rows) {
        computer.PutText(machine64, CFakeComputer::classKey + "\\InprocServer32", "", registered);
        EXPECT_EQ(Examine(computer).registrations[0].server.path, path);
    }
}

TEST(Examination, FindsABareNameWhereEveryProgramDoes) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.PutText(machine64, CFakeComputer::classKey + "\\InprocServer32", "", "REKA.dll");
    computer.files["REKA.dll"] = Module32();  // beside this program, which says nothing of others
    EXPECT_FALSE(Examine(computer).registrations[0].server.isThere);
    EXPECT_EQ(computer.sought, std::vector<std::string>{"REKA.dll"});
    computer.onSearchPath = "C:\\REKA\\x64\\REKA.dll";
    const Registration found = Examine(computer).registrations[0];
    EXPECT_EQ(found.server.path, "C:\\REKA\\x64\\REKA.dll");
    EXPECT_TRUE(found.server.isThere && found.server.hasTemplates);
    EXPECT_EQ(found.server.kind, ModuleKind::X64);
}

TEST(WholePaths, BeginWithADriveOrAServer) {
    for (const char* const path : {"C:\\REKA.dll", "c:/REKA.dll", "\\\\server\\share\\REKA.dll"}) {
        EXPECT_TRUE(IsWholePath(path)) << path;
    }
    for (const char* const path : {"", "C:", "C:REKA.dll", "REKA.dll", "x64\\REKA.dll", "\\REKA.dll"}) {
        EXPECT_FALSE(IsWholePath(path)) << path;
    }
}

TEST(Examination, ReadsTheSettingOfTheUser) {
    CFakeComputer computer;
    EXPECT_EQ(Examine(computer).currentUser, std::nullopt);
    computer.PutText(user64, "Software\\NAVO", "CurrentUser", "1");
    EXPECT_EQ(Examine(computer).currentUser, "1");
}

TEST(Examination, FindsTheModulesNearThisProgram) {
    CFakeComputer computer;
    EXPECT_EQ(Examine(computer).module64, std::nullopt);
    computer.files["C:\\REKA\\x64\\REKA.dll"] = Module64();
    computer.files["C:\\REKA\\x86\\REKA.dll"] = Module32();
    EXPECT_EQ(Examine(computer).module64, "C:\\REKA\\x64\\REKA.dll");
    EXPECT_EQ(Examine(computer).module32, "C:\\REKA\\x86\\REKA.dll");
    computer.surroundings.programFolder = "C:\\REKA\\x86";
    computer.surroundings.ownWidth = Width::Bits32;
    EXPECT_EQ(Examine(computer).module64, "C:\\REKA\\x64\\REKA.dll");
    EXPECT_EQ(Examine(computer).module32, "C:\\REKA\\x86\\REKA.dll");
}

TEST(Examination, PassesOverAModuleOfTheOtherWidth) {
    CFakeComputer computer;
    computer.files["C:\\REKA\\x64\\REKA.dll"] = Module32();
    EXPECT_EQ(Examine(computer).module64, std::nullopt);
    EXPECT_EQ(Examine(computer).module32, "C:\\REKA\\x64\\REKA.dll");
}

TEST(FolderOfAPath, EndsBeforeTheLastSeparator) {
    EXPECT_EQ(FolderOf("C:\\REKA\\x64\\REKA.dll"), "C:\\REKA\\x64");
    EXPECT_EQ(FolderOf("C:/REKA/REKA.dll"), "C:/REKA");
    EXPECT_EQ(FolderOf("REKA.dll"), "");
    EXPECT_EQ(FolderOf(""), "");
}

TEST(Names, AreTheSameInCapitals) {
    EXPECT_TRUE(IsSameName("C:\\reka\\REKA.DLL", "c:\\REKA\\reka.dll"));
    EXPECT_TRUE(IsSameName("", ""));
    EXPECT_FALSE(IsSameName("Apartment", "Apartments"));
    EXPECT_FALSE(IsSameName("[", "{"));  // as far apart as capital and small letters
}

}  // namespace

}  // namespace rekadoctor
