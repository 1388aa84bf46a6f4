// SPDX-License-Identifier: MIT
// Runs all tests on somebody's Windows and writes the report: what run-tests.cmd starts.
//
// Everything that the run makes lies in the folder "results" beside that of the programs: the report, the pictures, the
// temporary files, and a user's folder for programs that take it from the environment.

#include <windows.h>

#include <ctime>
#include <fstream>
#include <iostream>
#include <system_error>

#include "packagetext/win/Utf8Console.h"
#include "report/Registering.h"
#include "report/win/Surroundings.h"
#include "report/win/TestRun.h"
#include "report/win/Undone.h"
#include "text/Utf8.h"
#include "win/CWindowsComputer.h"

namespace testreport {

namespace fs = std::filesystem;

namespace {

constexpr char usage[] =
    "usage: run-tests [--register] [--only NAME]...\n"
    "  --register    also the tests that register REKA and remove it again, as administrator\n"
    "  --only NAME   only suites with NAME in theirs, such as \"x64 reka_tests/Utf8\"\n";

struct Options {
    bool isRegistering = false;
    std::vector<std::string> only;
    bool isUnderstood = true;
};

Options ReadOptions(int count, wchar_t** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::wstring argument = arguments[i];
        if (argument == L"--register") {
            options.isRegistering = true;
        } else if (argument == L"--only" && i + 1 < count) {
            options.only.push_back(reka::Utf8FromUtf16(reinterpret_cast<const char16_t*>(arguments[++i])));
        } else {
            options.isUnderstood = false;
        }
    }
    return options;
}

std::string Utf8Path(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

fs::path OwnFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return fs::path(path).parent_path();
}

/// Gives this program, and so all that it starts, folders of their own below `results`.
void TakeOwnFolders(const fs::path& results) {
    const fs::path user = results / L"user";
    const std::pair<const wchar_t*, fs::path> folders[] = {{L"TEMP", results / L"temp"},
                                                           {L"TMP", results / L"temp"},
                                                           {L"USERPROFILE", user},
                                                           {L"APPDATA", user / L"AppData" / L"Roaming"},
                                                           {L"LOCALAPPDATA", user / L"AppData" / L"Local"}};
    for (const auto& [name, folder] : folders) {
        fs::create_directories(folder);
        SetEnvironmentVariableW(name, folder.c_str());
    }
}

/// Removes what programs left in a user's folder that had no templates before.
void RemoveTemplates(const std::string& userFolder) {
    const fs::path file(reinterpret_cast<const char8_t*>((userFolder + templateFile).c_str()));
    DeleteFileW(file.c_str());
    RemoveDirectoryW(file.parent_path().c_str());
    RemoveDirectoryW(file.parent_path().parent_path().c_str());
}

/// Those whose programs are there. What they leave in the user's folder and in the registry is removed again.
void RunWidths(const TestRun& run, const std::string& userFolder) {
    const CUndone removed([&] {
        if (run.whyNotRegistering.empty()) RemoveTemplates(userFolder);
    });
    if (run.whyNotRegistering.empty()) SetEnvironmentVariableW(L"REKA_TESTS_MAY_REGISTER", L"1");
    for (const char* width : {"x64", "x86"}) {
        if (fs::exists(run.top / width)) RunWidth(run, width);
    }
}

void WriteHead(CReport& report, const std::string& userFolder, const std::string& whyNot) {
    char date[40] = {};
    const std::time_t now = std::time(nullptr);
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
    report.Fact("Tests of REKA", REKA_VERSION);
    report.Fact("Date", date);
    report.Fact("System", SystemVersion());
    report.Fact("Code page", CodePages());
    report.Fact("Screen", Screen());
    report.Fact("User's folder", userFolder);
    report.Fact("Registration", whyNot.empty() ? "by turns of each width, and removed again" : "none");
}

int RunAll(const Options& options, const fs::path& top) {
    const fs::path results = top / L"results";
    fs::remove_all(results);
    TakeOwnFolders(results);
    rekadoctor::CWindowsComputer computer;
    const std::string whyNot = WhyNotRegistering(computer, options.isRegistering, Utf8Path(results / L"user"));
    const std::string userFolder = computer.FindUserFolder();

    const fs::path path = results / L"report.txt";
    std::ofstream file(path);
    file << "\xEF\xBB\xBF";  // by which every editor knows UTF-8
    CReport report(file);
    WriteHead(report, userFolder, whyNot);
    const TestRun run = {top, results, options.only, whyNot, report, std::cout};
    RunWidths(run, userFolder);
    report.NoteWineAlone("the dialogs at 192 dots per inch, which Windows takes on at the next start of a session");
    report.NoteWineAlone("the expression editor in the code pages 932 and 65001: Windows has one for all programs");
    const bool isGood = report.End();
    file.close();
    if (file.fail()) {
        std::cerr << "The report could not be written: " << Utf8Path(path) << "\n";
        return 2;
    }
    const Verdict verdict = VerdictOf(isGood, options.isRegistering, whyNot);
    std::cout << verdict.words << ": see " << Utf8Path(path) << std::endl;
    return verdict.exitStatus;
}

}  // namespace
}  // namespace testreport

int wmain(int argc, wchar_t** argv) {
    const packagetext::CUtf8Console console;
    // What a test program crashes with stands in the report; no box or debugger of the system's may hold the others up.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetProcessDPIAware();  // otherwise every screen has 96 dots per inch
    const testreport::Options options = testreport::ReadOptions(argc, argv);
    if (!options.isUnderstood) {
        std::cerr << testreport::usage;
        return 2;
    }
    try {
        testreport::WatchForInterruption();
        return testreport::RunAll(options, testreport::OwnFolder().parent_path());
    } catch (const std::exception& failure) {
        std::cerr << "The tests can't be run here: " << failure.what()
                  << "\nUnpack them into a folder that you may write into.\n";
        return 2;
    }
}
