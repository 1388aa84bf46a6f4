// SPDX-License-Identifier: MIT
// One thing is wrong at a time, and the words that tell it.

#include "Diagnose.h"

#include <gtest/gtest.h>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

std::vector<std::string> TextsOf(const Diagnosis& diagnosis, Weight weight) {
    std::vector<std::string> texts;
    for (const Section& section : diagnosis.sections) {
        for (const Finding& finding : section.findings) {
            if (finding.weight == weight) texts.push_back(finding.text);
        }
    }
    return texts;
}

const std::string key = CFakeComputer::classKey;

/// A fault, and the sentences on all that is wrong then.
struct FaultCase {
    const char* name;
    std::function<void(CFakeComputer&)> spoil;
    std::vector<std::string> wrong;
};

std::function<void(CFakeComputer&)> WithoutCategory(const char* id) {
    return [id](CFakeComputer& computer) { computer.RemoveKey(machine64, key + "\\Implemented Categories\\" + id); };
}

const FaultCase faultCases[] = {
    {"NoComponentCategory",
     WithoutCategory("{678C09A1-7D66-11D2-A67D-00105A42887F}"),
     {"not offered as CAPE-OPEN component: a simulator that goes through all CAPE-OPEN components passes it over"}},
    {"NoManagerCategory",
     WithoutCategory("{678C09AA-0100-11D2-A67D-00105A42887F}"),
     {"not offered as reaction package manager: a simulator does not find it when it looks for reaction packages"}},
    {"NoThermoUserCategory",
     WithoutCategory("{4150C28A-EE06-403f-A871-87AFEC38A249}"),
     {"not offered as user of the simulator's thermodynamics: a simulator may keep its materials from it"}},
    {"NoThermo10Category",
     WithoutCategory("{0D562DC8-EA8E-4210-AB39-B66513C0CD09}"),
     {"not offered as thermo version 1.0: a simulator whose materials have thermo version 1.0 may leave it out"}},
    {"NoThermo11Category",
     WithoutCategory("{4667023A-5A8E-4CCA-AB6D-9D78C5112FED}"),
     {"not offered as thermo version 1.1: a simulator whose materials have thermo version 1.1 may leave it out"}},
    {"OtherThreadingModel",
     [](CFakeComputer& computer) { computer.PutText(machine64, key + "\\InprocServer32", "ThreadingModel", "Both"); },
     {"the threading model has to be \"Apartment\", but it is \"Both\""}},
    {"NoThreadingModel",
     [](CFakeComputer& computer) { computer.RemoveText(machine64, key + "\\InprocServer32", "ThreadingModel"); },
     {"the threading model has to be \"Apartment\", but there is none"}},
    {"OtherProgId",
     [](CFakeComputer& computer) { computer.PutText(machine64, key + "\\ProgID", "", "NAVO_REKA.Old.1"); },
     {"the ProgID has to be \"NAVO_REKA.ReactionPackManager.1\", but it is \"NAVO_REKA.Old.1\""}},
    {"NoVersionIndependentProgId",
     [](CFakeComputer& computer) { computer.RemoveText(machine64, key + "\\VersionIndependentProgID", ""); },
     {"the ProgID without version has to be \"NAVO_REKA.ReactionPackManager\", but there is none"}},
    {"OtherTypeLibrary",
     [](CFakeComputer& computer) { computer.PutText(machine64, key + "\\TypeLib", "", "{0}"); },
     {"the type library has to be {6F471C15-E012-496B-9563-5EFD98C25862}, but it is \"{0}\""}},
    {"NameWithoutClass",
     [](CFakeComputer& computer) {
         computer.RemoveText(machine64, "Software\\Classes\\NAVO_REKA.ReactionPackManager.1\\CLSID", "");
     },
     {"the name \"NAVO_REKA.ReactionPackManager.1\" has to lead to {95E42661-1916-4261-8FCC-6F598A19E544}, but there "
      "is "
      "none"}},
    {"NameOfOtherClass",
     [](CFakeComputer& computer) {
         computer.PutText(machine64, "Software\\Classes\\NAVO_REKA.ReactionPackManager\\CLSID", "", "{1}");
     },
     {"the name \"NAVO_REKA.ReactionPackManager\" has to lead to {95E42661-1916-4261-8FCC-6F598A19E544}, but it is "
      "\"{1}\""}},
    {"NoShownName",
     [](CFakeComputer& computer) { computer.RemoveText(machine64, key + "\\CapeDescription", "Name"); },
     {"it has no name (CapeDescription): simulators may leave it out"}},
    {"NoFileNamed",
     [](CFakeComputer& computer) { computer.RemoveText(machine64, key + "\\InprocServer32", ""); },
     {"no file is named (InprocServer32 is missing)"}},
    {"FileGone",
     [](CFakeComputer& computer) { computer.files.erase("C:\\REKA\\x64\\REKA.dll"); },
     {"its file C:\\REKA\\x64\\REKA.dll is not there"}},
    {"FileOfOtherWidth",
     [](CFakeComputer& computer) { computer.files["C:\\REKA\\x64\\REKA.dll"] = Module32(); },
     {"its file C:\\REKA\\x64\\REKA.dll is a 32-bit module, which 64-bit programs can't load"}},
    {"FileOfOtherProcessor",
     [](CFakeComputer& computer) { computer.files["C:\\REKA\\x64\\REKA.dll"] = ModuleBytes(0xAA64); },
     {"its file C:\\REKA\\x64\\REKA.dll is a module for another processor, which 64-bit programs can't load"}},
    {"FileIsNoModule",
     [](CFakeComputer& computer) {
         computer.files["C:\\REKA\\x64\\REKA.dll"] = {'t', 'e', 'x', 't'};
     },
     {"its file C:\\REKA\\x64\\REKA.dll is no module at all, which 64-bit programs can't load"}},
    {"FileDoesNotLoad",
     [](CFakeComputer& computer) {
         computer.loading = {false, "Access is denied.", {}};
     },
     {"the file does not load: Access is denied."}},
    {"ForeignFile",
     [](CFakeComputer& computer) {
         computer.loading.missingExports = {"DllGetClassObject", "DllCanUnloadNow"};
     },
     {"the file loads but lacks DllGetClassObject, DllCanUnloadNow, so it is not REKA's"}},
    {"NoTemplates",
     [](CFakeComputer& computer) { computer.files.erase("C:\\REKA\\x64\\data\\REKAConfig.dat"); },
     {"C:\\REKA\\x64\\data\\REKAConfig.dat is missing: a new user's list of packages starts empty without it"}},
    {"NoCompounds",
     [](CFakeComputer& computer) { computer.files.erase("C:\\REKA\\x64\\data\\Korvex1.pcd"); },
     {"C:\\REKA\\x64\\data\\Korvex1.pcd is missing: there is no list of compounds to choose from without it"}},
    {"NameUnknown",
     [](CFakeComputer& computer) {
         computer.trial = {TrialEnd::NameUnknown, "Invalid class string", ""};
     },
     {"the system does not know the name \"NAVO_REKA.ReactionPackManager\": Invalid class string"}},
    {"OtherClass",
     [](CFakeComputer& computer) {
         computer.trial = {TrialEnd::OtherClass, "{1}", ""};
     },
     {"the name \"NAVO_REKA.ReactionPackManager\" leads to the class {1}, which is not REKA's"}},
    {"NotCreated",
     [](CFakeComputer& computer) {
         computer.trial = {TrialEnd::NotCreated, "Class not registered", ""};
     },
     {"the manager can't be created: Class not registered"}},
    {"NotAManager",
     [](CFakeComputer& computer) {
         computer.trial = {TrialEnd::NotAManager, "No such interface supported", ""};
     },
     {"what is created is no reaction package manager: No such interface supported"}},
};

class Faults : public testing::TestWithParam<FaultCase> {};

using Texts = std::vector<std::string>;

Texts NotesOf(const Diagnosis& diagnosis, const std::string& title) {
    Texts notes;
    for (const Section& section : diagnosis.sections) {
        if (section.title != title) continue;
        for (const Finding& finding : section.findings) {
            if (finding.weight == Weight::Note) notes.push_back(finding.text);
        }
    }
    return notes;
}

TEST_P(Faults, AreToldInTheirWordsAlone) {
    CFakeComputer computer;
    computer.MakeAllWell();
    GetParam().spoil(computer);
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(TextsOf(diagnosis, Weight::Wrong), GetParam().wrong);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 1);
    EXPECT_EQ(diagnosis.wrongForOtherWidth, 0);
}
INSTANTIATE_TEST_SUITE_P(Table, Faults, testing::ValuesIn(faultCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Diagnosis, FindsNothingWrongWhereAllIsWell) {
    CFakeComputer computer;
    computer.MakeAllWell();
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth + diagnosis.wrongForOtherWidth, 0);
    EXPECT_TRUE(TextsOf(diagnosis, Weight::Wrong).empty());
    for (const Section& section : diagnosis.sections) EXPECT_TRUE(section.advice.empty()) << section.title;
}

void Mark(CFakeComputer& computer, const std::string& path, std::string_view mark) {
    computer.files[path + ":Zone.Identifier"] = {mark.begin(), mark.end()};
}

TEST(Diagnosis, TellsHowToUnblockWhatWasDownloaded) {
    CFakeComputer computer;
    computer.MakeAllWell();
    Mark(computer, "C:\\REKA\\x64\\REKA.dll", "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=about:internet\r\n");
    Mark(computer, "C:\\REKA\\x64\\NAVO.chm", "[ZoneTransfer]\r\nZoneId=4\r\n");
    Section section = DiagnoseAll(computer).sections[0];
    EXPECT_EQ(
        NotesOf(DiagnoseAll(computer), section.title),
        (Texts{"C:\\REKA\\x64\\REKA.dll is marked as downloaded from the internet: Windows may keep programs from "
               "loading it",
               "C:\\REKA\\x64\\NAVO.chm is marked as downloaded from the internet: its pages stay empty"}));
    EXPECT_EQ(
        section.advice,
        (std::vector<Step>{
            {"Unblock C:\\REKA\\x64\\REKA.dll: right-click it, choose Properties, tick Unblock and press OK.", {}},
            {"Unblock C:\\REKA\\x64\\NAVO.chm: right-click it, choose Properties, tick Unblock and press OK.", {}},
            {"Or unblock the zip in the same way, and unpack it anew.", {}}}));
    EXPECT_EQ(DiagnoseAll(computer).wrongForOwnWidth, 0);
}

TEST(Diagnosis, TakesNoOtherMarkForOneOfTheInternet) {
    for (const char* const mark : {"[ZoneTransfer]\r\nZoneId=1\r\n", "[ZoneTransfer]\r\nZoneId=0\r\n", ""}) {
        CFakeComputer computer;
        computer.MakeAllWell();
        Mark(computer, "C:\\REKA\\x64\\REKA.dll", mark);
        const Section section = DiagnoseAll(computer).sections[0];
        EXPECT_EQ(NotesOf(DiagnoseAll(computer), section.title), Texts());
        EXPECT_TRUE(section.advice.empty());
    }
}

TEST(Diagnosis, TakesTheNamesForThoseOfTheOtherWidth) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.RemoveKey(machine32, CFakeComputer::classKey);
    EXPECT_EQ(NotesOf(DiagnoseAll(computer), "Registered for all users, for 32-bit programs"), Texts{"no"});
}

TEST(Diagnosis, TellsWhichHalfHasTheClassAndWhichTheNames) {
    CFakeComputer computer;
    computer.MakeAllWell();
    const std::string name = "Software\\Classes\\NAVO_REKA.ReactionPackManager";
    computer.RemoveText(machine64, name + "\\CLSID", "");
    computer.RemoveText(machine64, name + ".1\\CLSID", "");
    EXPECT_EQ(NotesOf(DiagnoseAll(computer), "Registered for all users, for 64-bit programs"), Texts());
    computer.PutText(user64, name + "\\CLSID", "", std::string(classId));
    computer.PutText(user64, name + ".1\\CLSID", "", std::string(classId));
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(NotesOf(diagnosis, "Registered for all users, for 64-bit programs"),
              (Texts{"the name \"NAVO_REKA.ReactionPackManager.1\" is in HKCU\\Software\\Classes, and the class in "
                     "HKLM\\Software\\Classes",
                     "the name \"NAVO_REKA.ReactionPackManager\" is in HKCU\\Software\\Classes, and the class in "
                     "HKLM\\Software\\Classes"}));
    EXPECT_EQ(NotesOf(diagnosis, "Registered for this user alone, for 64-bit programs"),
              (Texts{"no", "HKCU\\Software\\Classes has the name \"NAVO_REKA.ReactionPackManager.1\" without its class",
                     "HKCU\\Software\\Classes has the name \"NAVO_REKA.ReactionPackManager\" without its class"}));
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 2);  // for all others the names are missing
}

TEST(Diagnosis, CountsAFaultForTheWidthThatItHurts) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.files.erase("C:\\REKA\\x86\\REKA.dll");
    Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 0);
    EXPECT_EQ(diagnosis.wrongForOtherWidth, 1);
    computer.surroundings.ownWidth = Width::Bits32;
    diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 1);
    EXPECT_EQ(diagnosis.wrongForOtherWidth, 0);
}

TEST(Diagnosis, AdvisesToRegisterAnewOrToRemoveWhereTheFileIsGone) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.PutText(machine64, key + "\\InprocServer32", "", "D:\\old\\REKA.dll");
    const Section section = DiagnoseAll(computer).sections[0];
    EXPECT_EQ(section.advice,
              (std::vector<Step>{
                  {"Register for all users, in a command prompt that runs as administrator:",
                   {"C:\\Windows\\System32\\regsvr32.exe \"C:\\REKA\\x64\\REKA.dll\""}},
                  {"Or remove the dead entry, as administrator:", {"reg delete HKLM\\" + key + " /f /reg:64"}}}));
}

TEST(Diagnosis, AdvisesToCopyTheData) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.files.erase("C:\\REKA\\x64\\data\\REKAConfig.dat");
    computer.files.erase("C:\\REKA\\x64\\data\\Korvex1.pcd");
    const Section section = DiagnoseAll(computer).sections[0];
    EXPECT_EQ(section.advice,
              std::vector<Step>{Step({"Copy the folder data of the package to C:\\REKA\\x64\\data", {}})});
}

TEST(Diagnosis, OnlyNotesAMissingHelpFile) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.files.erase("C:\\REKA\\x64\\NAVO.chm");
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 0);
    EXPECT_EQ(diagnosis.sections[0].findings.back().text,
              "C:\\REKA\\x64\\NAVO.chm is not there: the Help buttons show nothing");
}

TEST(Diagnosis, FindsTheOwnWidthUnregistered) {
    CFakeComputer computer;
    computer.Lay("C:\\REKA\\x64", Module64());
    computer.Lay("C:\\REKA\\x86", Module32());
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(TextsOf(diagnosis, Weight::Wrong),
              (std::vector<std::string>{
                  "not registered for 64-bit programs, neither for all users nor for this one",
                  "the system does not know the name \"NAVO_REKA.ReactionPackManager\": Invalid class string"}));
    EXPECT_EQ(diagnosis.wrongForOtherWidth, 0);
    ASSERT_EQ(diagnosis.sections.size(), 7U);
    EXPECT_EQ(diagnosis.sections[4].advice.size(), 3U);  // for all users, or for this one
    EXPECT_EQ(diagnosis.sections[6].advice.size(), 3U);
}

TEST(Diagnosis, NotesTheOtherWidthUnregistered) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.RemoveKey(machine32, key);
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth + diagnosis.wrongForOtherWidth, 0);
    ASSERT_EQ(diagnosis.sections.size(), 7U);
    EXPECT_EQ(
        diagnosis.sections[6].findings[0].text,
        "not registered for 32-bit programs, neither for all users nor for this one; that is well if no simulator "
        "here is a 32-bit program");
}

TEST(Diagnosis, SaysNothingOfAnotherWidthOnA32BitWindows) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.surroundings.isWindows64Bit = false;
    computer.surroundings.ownWidth = Width::Bits32;
    const Diagnosis diagnosis = DiagnoseAll(computer);
    ASSERT_EQ(diagnosis.sections.size(), 4U);
    for (const Section& section : diagnosis.sections) EXPECT_EQ(section.width, Width::Bits32);
}

TEST(Diagnosis, NotesARegistrationForBothOwners) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.Register(user64, "c:\\reka\\x64\\reka.dll");
    computer.files["c:\\reka\\x64\\reka.dll"] = Module64();
    computer.files["c:\\reka\\x64\\data\\REKAConfig.dat"] = {};
    computer.files["c:\\reka\\x64\\data\\Korvex1.pcd"] = {};
    Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 0);
    EXPECT_EQ(diagnosis.sections[4].findings[0].text,
              "registered for all users and for this user too, with the same file");
    computer.Lay("D:\\mine", Module64());
    computer.Register(user64, "D:\\mine\\REKA.dll");
    computer.trial.file = "D:\\mine\\REKA.dll";
    diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 0);
    EXPECT_EQ(diagnosis.sections[4].findings[0].text,
              "this user's registration hides that for all users, which names another file; programs that run as "
              "administrator use the latter");
    EXPECT_EQ(diagnosis.sections[4].findings[1].text, "it gets the manager, out of D:\\mine\\REKA.dll");
    EXPECT_EQ(diagnosis.sections[4].findings[1].weight, Weight::Good);
    EXPECT_EQ(diagnosis.sections[4].findings.size(), 2U);  // it is the one registered for the user
}

TEST(Diagnosis, NotesAManagerOutOfAnotherFile) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.trial.file = "D:\\other\\REKA.dll";
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.sections[4].findings[0].text, "it gets the manager, out of D:\\other\\REKA.dll");
    EXPECT_EQ(diagnosis.sections[4].findings[1].text, "the registration names C:\\REKA\\x64\\REKA.dll");
}

TEST(Diagnosis, ExplainsWhyAnAdministratorGetsNothingFromAUsersRegistration) {
    CFakeComputer computer;
    computer.Lay("C:\\REKA\\x64", Module64());
    computer.Register(user64, "C:\\REKA\\x64\\REKA.dll");
    computer.loading.isLoaded = true;
    computer.surroundings.isElevated = true;
    Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 1);
    EXPECT_EQ(diagnosis.sections[4].findings.back().text,
              "this program runs as administrator, and such programs pass over what is registered for one user");
    EXPECT_EQ(diagnosis.sections[4].advice.size(), 3U);
    computer.surroundings.isWine = true;
    diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(diagnosis.wrongForOwnWidth, 1);
    EXPECT_EQ(diagnosis.sections[3].findings.back().text,
              "this is Wine, whose look-up passes over what is registered for one user");
}

TEST(Diagnosis, NotesASettingThatSendsRegistrationToTheUser) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.PutText(user64, "Software\\NAVO", "CurrentUser", "1");
    EXPECT_EQ(DiagnoseAll(computer).sections[4].findings.back().text,
              "the value CurrentUser of HKCU\\Software\\NAVO is \"1\": regsvr32 registers for this user alone");
}

TEST(Diagnosis, TakesAQuotedPathAndABareNameThatWork) {
    for (const char* const text : {"\"C:\\REKA\\x64\\REKA.dll\"", "REKA.dll", "\"REKA.dll\""}) {
        CFakeComputer computer;
        computer.MakeAllWell();
        computer.onSearchPath = "C:\\REKA\\x64\\REKA.dll";
        computer.PutText(machine64, key + "\\InprocServer32", "", text);
        const Diagnosis diagnosis = DiagnoseAll(computer);
        EXPECT_TRUE(TextsOf(diagnosis, Weight::Wrong).empty());
        EXPECT_EQ(diagnosis.sections[0].findings[3].text, "its file is C:\\REKA\\x64\\REKA.dll, a 64-bit module");
        EXPECT_TRUE(diagnosis.sections[0].advice.empty());
        EXPECT_EQ(diagnosis.sections[4].findings.size(), 1U);  // the manager comes from just there
    }
}

TEST(Diagnosis, FindsABareNameThatDoesNotWork) {
    CFakeComputer computer;
    computer.MakeAllWell();
    computer.PutText(machine64, key + "\\InprocServer32", "", "REKA.dll");
    computer.PutText(machine32, key + "\\InprocServer32", "", "REKA.dll");
    const Diagnosis diagnosis = DiagnoseAll(computer);
    EXPECT_EQ(
        TextsOf(diagnosis, Weight::Wrong),
        std::vector<std::string>{"its file REKA.dll is named without a folder and isn't where every program looks"});
    EXPECT_EQ(diagnosis.sections[0].advice.size(), 1U);  // to register anew
    EXPECT_EQ(
        diagnosis.sections[2].findings.back().text,
        "its file REKA.dll is named without a folder: the rekadoctor of the folder x86 tells whether it is found");
    EXPECT_EQ(diagnosis.wrongForOtherWidth, 0);
}

/// One interface without a proxy is enough: each belongs to another call of a simulator.
TEST(Diagnosis, NotesInterfacesThatOtherApartmentsCannotCall) {
    for (const std::string_view id : calledInterfaces) {
        CFakeComputer computer;
        computer.MakeAllWell();
        const std::string proxy = "Software\\Classes\\Interface\\" + std::string(id) + "\\ProxyStubClsid32";
        computer.RemoveText(machine64, proxy, "");
        const std::vector<std::string> others = {"no", "no"};  // of the registrations for this user
        const std::vector<std::string> expected = {
            "no", "no",
            "the interfaces of the CAPE-OPEN standard are not registered for 64-bit programs: a simulator that calls "
            "from threads of another apartment needs them, so install the standard's type libraries if yours can't use "
            "REKA"};
        const Diagnosis diagnosis = DiagnoseAll(computer);
        EXPECT_EQ(TextsOf(diagnosis, Weight::Note), expected) << id;
        EXPECT_EQ(diagnosis.wrongForOwnWidth, 0);
        computer.trial.end = TrialEnd::NotCreated;  // what is worse comes first
        EXPECT_EQ(TextsOf(DiagnoseAll(computer), Weight::Note), others) << id;
        computer.trial.end = TrialEnd::Done;
        computer.PutText(user64, proxy, "", "{00020424-0000-0000-C000-000000000046}");
        EXPECT_EQ(TextsOf(DiagnoseAll(computer), Weight::Note), others) << id;
    }
}

TEST(Diagnosis, AsksForTheManagerByItsNameWithoutVersion) {
    CFakeComputer computer;
    computer.MakeAllWell();
    DiagnoseAll(computer);
    EXPECT_EQ(computer.asked, std::vector<std::string>{"NAVO_REKA.ReactionPackManager"});
}

}  // namespace

}  // namespace rekadoctor
