// SPDX-License-Identifier: MIT
// The report as a user reads it, and the exit status.

#include "RunRekadoctor.h"

#include <gtest/gtest.h>

#include <sstream>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

class Rekadoctor : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments = {}) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        const int status = RunRekadoctor(arguments, computer, outStream, errStream);
        out = outStream.str();
        err = errStream.str();
        return status;
    }

    CFakeComputer computer;
    std::string out;
    std::string err;
};

TEST_F(Rekadoctor, ReportsThatAllIsWell) {
    computer.MakeAllWell();
    EXPECT_EQ(Run(), 0);
    const std::string offered =
        "  ok     yes: \"REKA Reaction Package Manager\", version 1.0.0.0\n"
        "  ok     offered as CAPE-OPEN component, reaction package manager, user of the simulator's thermodynamics, "
        "thermo version 1.0, thermo version 1.1\n"
        "  ok     threading model, ProgID and type library are right\n";
    EXPECT_EQ(out,
              "rekadoctor " REKA_VERSION
              ", a 64-bit program on 64-bit Windows\n"
              "\n"
              "Registered for all users, for 64-bit programs\n" +
                  offered +
                  "  ok     its file is C:\\REKA\\x64\\REKA.dll, a 64-bit module\n"
                  "  ok     the file loads\n"
                  "  ok     its data are beside it\n"
                  "\n"
                  "Registered for this user alone, for 64-bit programs\n"
                  "  note   no\n"
                  "\n"
                  "Registered for all users, for 32-bit programs\n" +
                  offered +
                  "  ok     its file is C:\\REKA\\x86\\REKA.dll, a 32-bit module\n"
                  "  ok     its data are beside it\n"
                  "\n"
                  "Registered for this user alone, for 32-bit programs\n"
                  "  note   no\n"
                  "\n"
                  "A 64-bit program that asks for the manager\n"
                  "  ok     it gets the manager, out of C:\\REKA\\x64\\REKA.dll\n"
                  "\n"
                  "The templates of this user\n"
                  "  ok     this user's file C:\\Users\\I\\NAVO\\data\\REKAConfig.dat holds 2 templates\n"
                  "           Ammonia synthesis\n"
                  "           Water-gas shift\n"
                  "\n"
                  "All is well for 64-bit programs.\n"
                  "Loading and creating were tried for 64-bit programs. For 32-bit ones, run the rekadoctor of the "
                  "folder x86.\n");
    EXPECT_EQ(err, "");
}

TEST_F(Rekadoctor, ReportsWhatToDoOnA32BitWindows) {
    computer.surroundings.ownWidth = Width::Bits32;
    computer.surroundings.isWindows64Bit = false;
    computer.surroundings.programFolder = "C:\\REKA\\x86";
    computer.Lay("C:\\REKA\\x86", Module32());
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(out,
              "rekadoctor " REKA_VERSION
              ", a 32-bit program on 32-bit Windows\n"
              "\n"
              "Registered for all users, for 32-bit programs\n"
              "  note   no\n"
              "\n"
              "Registered for this user alone, for 32-bit programs\n"
              "  note   no\n"
              "\n"
              "A 32-bit program that asks for the manager\n"
              "  WRONG  not registered for 32-bit programs, neither for all users nor for this one\n"
              "  WRONG  the system does not know the name \"NAVO_REKA.ReactionPackManager\": Invalid class string\n"
              "  What to do:\n"
              "    Register for all users, in a command prompt that runs as administrator:\n"
              "      C:\\Windows\\System32\\regsvr32.exe \"C:\\REKA\\x86\\REKA.dll\"\n"
              "    Or, without the rights of an administrator:\n"
              "    Register for this user alone, in a command prompt:\n"
              "      reg add HKCU\\Software\\NAVO /v CurrentUser /d \"1\" /f\n"
              "      C:\\Windows\\System32\\regsvr32.exe \"C:\\REKA\\x86\\REKA.dll\"\n"
              "      reg delete HKCU\\Software\\NAVO /v CurrentUser /f\n"
              "\n"
              "The templates of this user\n"
              "  note   this user has no file of templates yet: a program makes it, as a copy of the shipped one\n"
              "\n"
              "2 things are wrong for 32-bit programs.\n");
}

TEST_F(Rekadoctor, TellsHowToRegisterTheOtherWidthIfItIsNeeded) {
    computer.MakeAllWell();
    computer.RemoveKey(machine32, CFakeComputer::classKey);
    EXPECT_EQ(Run(), 0);
    EXPECT_NE(
        out.find("\n"
                 "32-bit programs\n"
                 "  note   not registered for 32-bit programs, neither for all users nor for this one; that is well "
                 "if no simulator here is a 32-bit program\n"
                 "  If you need it:\n"
                 "    Register for all users, in a command prompt that runs as administrator:\n"
                 "      C:\\Windows\\SysWOW64\\regsvr32.exe \"C:\\REKA\\x86\\REKA.dll\"\n"),
        std::string::npos)
        << out;
}

TEST_F(Rekadoctor, EndsWellWithAFaultOfTheOtherWidth) {
    computer.MakeAllWell();
    computer.files.erase("C:\\REKA\\x86\\REKA.dll");
    EXPECT_EQ(Run(), 0);
    EXPECT_NE(out.find("\nAll is well for 64-bit programs.\n1 thing is wrong for 32-bit programs.\n"),
              std::string::npos)
        << out;
}

TEST_F(Rekadoctor, SaysThatItRunsOnWine) {
    computer.surroundings.isWine = true;
    Run();
    EXPECT_EQ(out.substr(0, out.find('\n')), "rekadoctor " REKA_VERSION ", a 64-bit program on Wine as 64-bit Windows");
}

TEST_F(Rekadoctor, HelpsWithoutLooking) {
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_NE(out.find("Exit status: 0 all is well"), std::string::npos) << out;
    EXPECT_EQ(Run({"--version"}), 0);
    EXPECT_EQ(out, "rekadoctor " REKA_VERSION "\n");
    EXPECT_TRUE(computer.asked.empty());
}

TEST_F(Rekadoctor, RefusesWhatItDoesNotKnow) {
    for (const char* argument : {"--repair", "REKA.dll"}) {
        EXPECT_EQ(Run({argument}), 2);
        EXPECT_EQ(out, "");
        EXPECT_EQ(err.substr(0, 12), "rekadoctor: ") << err;
        EXPECT_NE(err.find(argument), std::string::npos) << err;
        EXPECT_TRUE(computer.asked.empty());
    }
}

TEST_F(Rekadoctor, TellsThatTheReportWentNowhere) {
    computer.MakeAllWell();
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{}, {"--help"}, {"--version"}}) {
        std::ostream nowhere(nullptr);
        std::ostringstream errStream;
        EXPECT_EQ(RunRekadoctor(arguments, computer, nowhere, errStream), 2);
        EXPECT_EQ(errStream.str(), "rekadoctor: the output can't be written\n");
    }
}

/// What has reached the screen, which keeps what it isn't made to show.
class CScreen : public std::stringbuf {
public:
    std::string shown;

protected:
    int sync() override {
        shown = str();
        return 0;
    }
};

TEST_F(Rekadoctor, ShowsEachSectionBeforeItTriesTheNext) {
    computer.MakeAllWell();
    CScreen screen;
    std::ostream outStream(&screen);
    std::ostringstream errStream;
    std::vector<std::string> seen;
    computer.onTry = [&] { seen.push_back(screen.shown); };
    EXPECT_EQ(RunRekadoctor({}, computer, outStream, errStream), 0);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0], "rekadoctor " REKA_VERSION
                       ", a 64-bit program on 64-bit Windows\n"
                       "\n"
                       "Registered for all users, for 64-bit programs\n");
    const std::string before =
        "Registered for this user alone, for 32-bit programs\n"
        "  note   no\n"
        "\n"
        "A 64-bit program that asks for the manager\n";
    EXPECT_TRUE(seen[1].ends_with(before)) << seen[1];
}

}  // namespace

}  // namespace rekadoctor
