// SPDX-License-Identifier: MIT
// Each program runs in a folder of its own below the results, where the dialogs' pictures stay. What its tests read
// lies beside it: a relative path leads there, which is plain letters whatever the folders above are called.

#include "report/win/TestRun.h"

#include <algorithm>
#include <utility>

#include "report/win/RunProgram.h"
#include "report/win/Undone.h"

namespace testreport {

namespace fs = std::filesystem;

namespace {

enum class Kind { Suites, Command, SuitesOfRegistered, CommandOfRegistered };

struct TestProgram {
    const char* name;
    Kind kind = Kind::Suites;
    const char* arguments = "";  // of a command; %FILES% is where its files lie
};

// The registration's own tests come last: they take it away in between.
constexpr TestProgram programs[] = {
    {"reka_tests"},
    {"packagetext_tests"},
    {"rekatool_tests"},
    {"rekadoctor_tests"},
    {"rekasim_tests"},
    {"reka_win_tests"},
    {"reka_figures", Kind::Command, "--compare %FILES%/figures.txt"},
    {"rekasim_tank_campaign", Kind::Command, "50 1 %DOCUMENTS%"},
    {"reka_editor_tests"},
    {"reka_editor_tests_with_manifest"},
    {"reka_com_tests", Kind::SuitesOfRegistered},
    {"rekasim", Kind::CommandOfRegistered, "list"},
    {"rekadoctor", Kind::CommandOfRegistered},
    {"reka_registration_tests", Kind::SuitesOfRegistered},
};

constexpr wchar_t settingsKey[] = L"Software\\NAVO";  // of the user, absent before

bool IsOfRegistered(Kind kind) {
    return kind == Kind::SuitesOfRegistered || kind == Kind::CommandOfRegistered;
}

/// The folder of the system's programs of a width; empty if this Windows has none of that width.
fs::path SystemFolder(const std::string& width) {
    wchar_t folder[MAX_PATH] = {};
    const bool isOther = sizeof(void*) == 8 && width == "x86";
    if (isOther ? !GetSystemWow64DirectoryW(folder, MAX_PATH) : !GetSystemDirectoryW(folder, MAX_PATH)) return {};
    return fs::exists(fs::path(folder) / L"ntdll.dll") ? fs::path(folder) : fs::path();
}

std::wstring Wide(const std::string& plain) {
    return {plain.begin(), plain.end()};
}

class CWidthRun {
public:
    CWidthRun(const TestRun& whole, std::string of) : run(whole), width(std::move(of)) {}

    void RunAll() {
        if (SystemFolder(width).empty()) return LeaveOutWidth();
        SetEnvironmentVariableW(L"REKA_TEST_FILES", Wide(Files()).c_str());
        for (const TestProgram& program : programs) {
            if (IsOfRegistered(program.kind) && !run.whyNotRegistering.empty()) {
                run.report.LeaveOut(NameOf(program), run.whyNotRegistering);
            } else if (!IsOfRegistered(program.kind) && !Run(program)) {
                return;
            }
        }
        if (run.whyNotRegistering.empty()) RunRegistered();
    }

private:
    std::string NameOf(const TestProgram& program) const { return width + " " + program.name; }
    /// The folder of the programs, from that of a running one.
    std::string Files() const { return "../../../" + width; }
    fs::path FileOf(const std::string& name) const { return run.top / Wide(width) / Wide(name); }
    fs::path FolderOf(const TestProgram& program) const { return run.results / Wide(width) / Wide(program.name); }

    bool IsWanted(const std::string& name) const {
        return run.only.empty() || std::any_of(run.only.begin(), run.only.end(), [&](const std::string& part) {
                   return name.find(part) != std::string::npos;
               });
    }

    void LeaveOutWidth() { run.report.LeaveOut(width, "this Windows runs no programs of that width"); }

    /// False if this Windows runs no programs of the width.
    bool Run(const TestProgram& program) {
        const bool isCommand = program.kind == Kind::Command || program.kind == Kind::CommandOfRegistered;
        if (isCommand && !IsWanted(NameOf(program))) return true;
        const std::wstring arguments = isCommand ? ArgumentsOf(program) : L"--gtest_list_tests";
        const Ended ended = RunProgram(FileOf(std::string(program.name) + ".exe"), arguments, FolderOf(program));
        if (IsOfOtherWidth(ended.startError)) {
            LeaveOutWidth();
            return false;
        }
        if (isCommand) {
            run.report.BeginProgram(NameOf(program));
            AddCommand(program.name, ended);
        } else {
            RunSuites(program, ended);
        }
        return true;
    }

    void AddCommand(const std::string& name, const Ended& ended) {
        SuiteResult result;
        if (ended.ending.empty()) {
            result.passed = 1;
        } else {
            result.failed.push_back({name, ended.output + "\n" + ended.ending + "\n"});
        }
        Tell(name, result);
        run.report.Add(name, result);
    }

    void RunSuites(const TestProgram& program, const Ended& listing) {
        std::vector<std::string> suites = SuitesOf(listing.output);
        if (!listing.ending.empty() || suites.empty()) {
            run.report.BeginProgram(NameOf(program));
            run.report.Add("its list of tests",
                           ReadTestOutput("its list of tests", {}, listing.output, listing.ending));
            return;
        }
        std::erase_if(suites, [&](const std::string& suite) { return !IsWanted(NameOf(program) + "/" + suite); });
        if (suites.empty()) return;
        run.report.BeginProgram(NameOf(program));
        for (const std::string& suite : suites) RunSuite(program, suite, TestsOf(listing.output, suite));
    }

    void RunSuite(const TestProgram& program, const std::string& suite, const std::vector<std::string>& tests) {
        const Ended ended = RunProgram(FileOf(std::string(program.name) + ".exe"),
                                       L"--gtest_color=no --gtest_filter=" + Wide(suite) + L".*", FolderOf(program));
        const SuiteResult result = ReadTestOutput(suite, tests, ended.output, ended.ending);
        Tell(program.name + ("/" + suite), result);
        run.report.Add(suite, result, TakePictures(program));
    }

    void Tell(const std::string& name, const SuiteResult& result) {
        run.progress << width << " " << name << ": " << (result.failed.empty() ? "passed" : "FAILED") << std::endl;
    }

    /// Moves the pictures of failures to where the report names them.
    std::vector<std::string> TakePictures(const TestProgram& program) {
        std::vector<std::string> names;
        std::error_code ignored;
        for (const auto& file : fs::directory_iterator(FolderOf(program) / L"pictures", ignored)) {
            const std::string picture = file.path().filename().string();
            if (!picture.starts_with("failure-")) continue;
            const std::string name = width + "-" + program.name + "-" + picture;
            fs::create_directories(run.results / L"pictures");
            fs::rename(file.path(), run.results / L"pictures" / name, ignored);
            names.push_back("pictures\\" + name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::wstring ArgumentsOf(const TestProgram& program) {
        std::string documents;
        std::error_code ignored;
        for (const auto& file : fs::directory_iterator(FileOf("documents"), ignored)) {
            documents += Files() + "/documents/" + file.path().filename().string() + " ";
        }
        std::string arguments = program.arguments;
        for (const auto& [name, text] : {std::pair<std::string, std::string>{"%FILES%", Files()},
                                         std::pair<std::string, std::string>{"%DOCUMENTS%", documents}}) {
            const std::size_t place = arguments.find(name);
            if (place != std::string::npos) arguments.replace(place, name.size(), text);
        }
        return Wide(arguments);
    }

    void RunRegistered() {
        // A registration that fails may have written a part.
        const CUndone removed([this] { Remove(); });
        if (!Register(L"/s ", "registration")) return;
        for (const TestProgram& program : programs) {
            if (IsOfRegistered(program.kind)) Run(program);
        }
    }

    /// As often as there are hives: an interrupted test may have left the setting by which one or the other is meant.
    void Remove() {
        const bool isRemoved = Register(L"/s /u ", "its removal");
        const bool hasSettings = RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey) == ERROR_SUCCESS;
        if (isRemoved && hasSettings) Register(L"/s /u ", "its removal");
    }

    /// By the system's program of this width. False if it failed, which is reported.
    bool Register(const std::wstring& options, const std::string& name) {
        const Ended ended = RunProgram(SystemFolder(width) / L"regsvr32.exe",
                                       options + L"\"" + FileOf("REKA.dll").wstring() + L"\"", run.results);
        if (ended.ending.empty()) return true;
        run.report.BeginProgram(width + " regsvr32");
        AddCommand(name, ended);
        return false;
    }

    const TestRun& run;
    const std::string width;
};

}  // namespace

void RunWidth(const TestRun& run, const std::string& width) {
    CWidthRun(run, width).RunAll();
}

}  // namespace testreport
