// SPDX-License-Identifier: MIT
// A script as the client: VBScript, run by the system's own host.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "HostObjects.h"
#include "ScriptEngine.h"

namespace host {
namespace {

/// Runs the lines, which write by `out.WriteLine`, and gives what they have written. Scripts are read in the system's
/// code page, so this one finds its output in the current folder, whatever that is called.
std::vector<std::string> RunScript(const std::string& lines) {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::string name = "reka-script-" + std::to_string(GetCurrentProcessId());
    const std::filesystem::path script = std::filesystem::path(folder) / (name + ".vbs");
    const std::filesystem::path output = std::filesystem::path(folder) / (name + ".txt");
    {
        std::ofstream file(script);
        file << "Set files = CreateObject(\"Scripting.FileSystemObject\")\n"
             << "Set out = files.CreateTextFile(\"" << name << ".txt\", True)\n"
             << lines << "out.WriteLine \"end\"\nout.Close\n";
    }
    std::wstring command = L"cscript.exe //nologo \"" + script.wstring() + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder, &start, &process)) {
        return {"cscript doesn't start"};
    }
    const DWORD waited = WaitForSingleObject(process.hProcess, 60000);
    if (waited != WAIT_OBJECT_0) TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    std::vector<std::string> written;
    {
        std::ifstream file(output);
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            written.push_back(line);
        }
    }
    DeleteFileW(script.c_str());
    DeleteFileW(output.c_str());
    return written;
}

TEST(Script, ListsThePackages) {
    EXPECT_EQ(RunScript("Set manager = CreateObject(\"NAVO_REKA.ReactionPackManager\")\n"
                        "out.WriteLine manager.ComponentName\n"
                        "names = manager.GetListOfReactionsPackages()\n"
                        "out.WriteLine UBound(names)\n"
                        "out.WriteLine names(0)\n"
                        "For Each name In names\n"
                        "  If name = \"Water-gas shift\" Then out.WriteLine \"found\"\n"
                        "Next\n"),
              (std::vector<std::string>{"REKA", "8", "Ammonia synthesis", "found", "end"}));
}

TEST(Script, ReadsTheReactionsOfAPackage) {
    EXPECT_EQ(RunScript("Set manager = CreateObject(\"NAVO_REKA.ReactionPackManager.1\")\n"
                        "Set package = manager.ResolveReactionsPackage(\"Methanol synthesis\")\n"
                        "package.Initialize\n"
                        "For Each reaction In package.GetReactionsIds()\n"
                        "  out.WriteLine reaction & \", \" & package.GetReactionPhase(reaction) & \", \" & "
                        "package.GetReactionType(reaction)\n"
                        "  package.GetReactionCompoundIds reaction, ids, charges, casNumbers\n"
                        "  coefficients = package.GetStoichiometricCoefficients(reaction)\n"
                        "  For i = 0 To UBound(ids)\n"
                        "    out.WriteLine coefficients(i) & \" \" & ids(i) & \" \" & casNumbers(i)\n"
                        "  Next\n"
                        "Next\n"),
              (std::vector<std::string>{"methanol, Vapor, 1", "-1 carbon dioxide 124-38-9", "-3 hydrogen 1333-74-0",
                                        "1 methanol 67-56-1", "1 water 7732-18-5", "reverse shift, Vapor, 1",
                                        "-1 carbon dioxide 124-38-9", "-1 hydrogen 1333-74-0", "1 water 7732-18-5",
                                        "1 carbon monoxide 630-08-0", "end"}));
}

/// The help's page on scripts shows this one.
TEST(Script, ReadsWhyAQuestionFailed) {
    EXPECT_EQ(RunScript("Set manager = CreateObject(\"NAVO_REKA.ReactionPackManager\")\n"
                        "Set package = manager.ResolveReactionsPackage(\"Methanol synthesis\")\n"
                        "On Error Resume Next\n"
                        "kind = package.GetReactionType(\"nobody\")\n"
                        "out.WriteLine Hex(Err.Number) & \": \" & Err.Description\n"
                        "out.WriteLine package.scope & \", \" & package.interfaceName\n"),
              (std::vector<std::string>{"80040501: Invalid reaction ID: nobody",
                                        "GetReactionType, ICapeReactionChemistry", "end"}));
}

TEST(Script, ReadsTheErrorTextsAfterAFailingCall) {
    EXPECT_EQ(RunScript("Set manager = CreateObject(\"NAVO_REKA.ReactionPackManager\")\n"
                        "Set package = manager.ResolveReactionsPackage(\"no such package\")\n"
                        "On Error Resume Next\n"
                        "package.Initialize\n"
                        "out.WriteLine Hex(Err.Number)\n"
                        "out.WriteLine package.description\n"
                        "Err.Clear\n"
                        "Set package = manager.ResolveReactionsPackage(\"Methanol synthesis\")\n"
                        "kind = package.GetReactionType(\"nobody\")\n"
                        "out.WriteLine Hex(Err.Number)\n"
                        "out.WriteLine package.name & \"; \" & package.description\n"
                        "out.WriteLine package.scope & \"; \" & package.interfaceName & \"; \" & package.code\n"),
              (std::vector<std::string>{"80040501", "Reaction package was not resolved or loaded", "80040501",
                                        "Invalid ID; Invalid reaction ID: nobody",
                                        "GetReactionType; ICapeReactionChemistry; 0", "end"}));
}

/// A script that calculates with the test's material and reaction object.
class CalculatingScript : public testing::Test {
protected:
    CalculatingScript() : package(MakePackage(L"2*T", L"-1000")) {
        EXPECT_EQ(Bind(package, material, results), S_OK);
        engine.Add(L"package", package.As<IDispatch>().Get());
    }
    ~CalculatingScript() override { package->Terminate(); }

    CMaterial material;
    CReactionObject results;
    CRef<reka::ICapeUtilities> package;
    CScriptEngine engine;
};

TEST_F(CalculatingScript, PassesItsOwnLists) {
    EXPECT_EQ(engine.Run(L"package.CalcReactionProp Array(\"ReactionRate\"), \"Vapor\", Empty, \"\"\n"), L"");
    EXPECT_EQ(results.values, (std::map<std::wstring, double>{{L"ReactionRate R", 600}}));  // 2 * 300 K
}

TEST_F(CalculatingScript, PassesListsInVariables) {
    EXPECT_EQ(engine.Run(L"Dim properties(1)\n"
                         L"properties(0) = \"ReactionRate\"\n"
                         L"properties(1) = \"EnthalpyOfReaction\"\n"
                         L"reactions = Array(\"R\")\n"
                         L"phase = \"Vapor\"\n"
                         L"basis = \"Mole\"\n"
                         L"package.CalcReactionProp properties, phase, reactions, basis\n"),
              L"");
    EXPECT_EQ(results.values,
              (std::map<std::wstring, double>{{L"ReactionRate R", 600}, {L"EnthalpyOfReaction R", -1000}}));
}

TEST_F(CalculatingScript, PassesThePackagesOwnListBack) {
    EXPECT_EQ(engine.Run(L"reactions = package.GetReactionsIds()\n"
                         L"properties = Array(\"EnthalpyOfReaction\")\n"
                         L"all = Empty\n"
                         L"package.CalcReactionProp properties, \"Vapor\", reactions, \"\"\n"
                         L"properties(0) = \"ReactionRate\"\n"
                         L"package.CalcReactionProp properties, \"Vapor\", all, \"\"\n"),
              L"");
    EXPECT_EQ(results.values,
              (std::map<std::wstring, double>{{L"ReactionRate R", 600}, {L"EnthalpyOfReaction R", -1000}}));
}

struct LeftOutCase {
    const char* name;
    const wchar_t* arguments;  // behind the phase
    bool isTaken;
};
void PrintTo(const LeftOutCase& row, std::ostream* stream) {
    *stream << row.name;
}

const LeftOutCase leftOutCases[] = {
    {"BothAsTheyAreDeclared", L"Empty, \"\"", true}, {"EmptyForBoth", L"Empty, Empty", true},
    {"NullForTheReactions", L"Null, \"\"", false},   {"NullForTheBasis", L"Empty, Null", false},
    {"NothingForTheReactions", L", \"\"", false},    {"NothingForTheBasis", L"Empty", false},
};

class ArgumentLeftOut : public CalculatingScript, public testing::WithParamInterface<LeftOutCase> {};

TEST_P(ArgumentLeftOut, IsTakenOrRefused) {
    const LeftOutCase& row = GetParam();
    const std::wstring told = engine.Run(L"package.CalcReactionProp Array(\"ReactionRate\"), \"Vapor\", " +
                                         std::wstring(row.arguments) + L"\n");
    EXPECT_EQ(told.empty(), row.isTaken);
    EXPECT_EQ(results.values.size(), row.isTaken ? 1U : 0U);
}
INSTANTIATE_TEST_SUITE_P(Table, ArgumentLeftOut, testing::ValuesIn(leftOutCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(CalculatingScript, IsToldWhatIsWrongWithItsList) {
    EXPECT_EQ(engine.Run(L"On Error Resume Next\n"
                         L"package.CalcReactionProp Array(1, 2), \"Vapor\", Empty, \"\"\n"
                         L"package.ComponentDescription = Hex(Err.Number) & \" \" & package.description\n"),
              L"");
    CText told;
    EXPECT_EQ(package.As<reka::ICapeIdentification>()->get_ComponentDescription(told.Receive()), S_OK);
    EXPECT_EQ(told.Read(), L"80040501 invalid format for properties: invalid type; array of type BSTR expected");
}

}  // namespace
}  // namespace host
