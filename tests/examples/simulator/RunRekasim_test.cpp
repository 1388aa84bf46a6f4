// SPDX-License-Identifier: MIT
// The commands of rekasim as a user sees them.

#include "RunRekasim.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

TEST(TableCommand, PrintsReactionsMaterialAndValues) {
    const RunResult result = RunProgram({"table", "--document", ExamplePath("ammonia-synthesis.json")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "Ammonia synthesis\n"
              "Equilibrium of nitrogen, hydrogen and ammonia (Gillespie and Beattie 1930)\n"
              "\n"
              "Reactions\n"
              "  synthesis: 0.5 N2 + 1.5 H2 = NH3\n"
              "    equilibrium, phase Vapor, constant on basis Fugacity\n"
              "    Nitrogen -0.5, Hydrogen -1.5, Ammonia 1\n"
              "\n"
              "Material: phase Vapor, modelled as an ideal gas, 723.15 K, 1013250 Pa\n"
              "  Compound  Formula  Mole fraction\n"
              "  --------  -------  -------------\n"
              "  Nitrogen  N2               0.245\n"
              "  Hydrogen  H2               0.735\n"
              "  Ammonia   NH3               0.02\n"
              "\n"
              "            synthesis  synthesis\n"
              "       T     constant       heat\n"
              "       K        Pa^-1      J/mol\n"
              "  ------  -----------  ---------\n"
              "  723.15  6.52100e-08   -52373.3\n");
}

TEST(TableCommand, SweepsTheTemperatureWithItsEnd) {
    const RunResult result = RunProgram(
        {"table", "--document", ExamplePath("water-gas-shift.json"), "--from", "600", "--to", "700", "--step", "50"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("  600   27.1036  -38059.8\n"
                              "  650   15.0710  -38059.8\n"
                              "  700   9.11311  -38059.8\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("Material: phase Vapor, modelled as an ideal gas, 600 to 700 K, 3000000 Pa\n"),
              std::string::npos);
}

TEST(TableCommand, PrintsADashWhereThereIsNoHeat) {
    const std::string path = ExamplePath("dinitrogen-pentoxide-decomposition.json");
    const RunResult result = RunProgram({"table", "--document", path});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("              -\n"), std::string::npos) << result.out;
    EXPECT_EQ(RunProgram({"--verbose", "table", "--document", path}).err,
              "rekasim: no heat of reaction: heat of reaction is not defined for reaction \"decomposition\". Cannot "
              "calculation property EnthalpyOfReaction\n");
}

TEST(TableCommand, HasAColumnPairForEachReactionAndTheirUnits) {
    const RunResult result = RunProgram({"table", "--document", ExamplePath("methanol-synthesis.json")});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("methanol  methanol  reverse shift  reverse shift\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("K  mol/(kg s)     J/mol     mol/(kg s)          J/mol\n"), std::string::npos);
    EXPECT_NE(result.out.find("  methanol: CO2 + 3 H2 = CH3OH + H2O\n"
                              "    kinetic, phase Vapor, rate per mass of catalyst\n"),
              std::string::npos);
}

TEST(ShowCommand, PrintsWhatTheInterfacesTell) {
    const RunResult result = RunProgram({"show", "--document", ExamplePath("nitrogen-tetroxide-dissociation.json")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "Nitrogen tetroxide dissociation\n"
              "Equilibrium of nitrogen tetroxide and nitrogen dioxide (Verhoek and Daniels 1931)\n"
              "\n"
              "  Compound            CAS number  Charge\n"
              "  ------------------  ----------  ------\n"
              "  nitrogen tetroxide  10544-72-6       0\n"
              "  nitrogen dioxide    10102-44-0       0\n"
              "\n"
              "Reactions\n"
              "  dissociation: nitrogen tetroxide = 2 nitrogen dioxide\n"
              "    equilibrium, phase Vapor, constant on basis Fugacity\n"
              "    nitrogen tetroxide -1, nitrogen dioxide 2\n");
}

TEST(SaveCommand, KeepsMaterialAndNotes) {
    CTemporaryFile copy("saved.json", "");
    const RunResult result =
        RunProgram({"save", "--document", ExamplePath("methanol-synthesis.json"), "--to", copy.Path()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const packagetext::Json original = ReadExample("methanol-synthesis.json");
    const packagetext::Json saved = packagetext::Json::parse(copy.Content());
    EXPECT_EQ(saved["material"], original["material"]);
    EXPECT_EQ(saved["source"], original["source"]);
    EXPECT_EQ(saved["title"], original["title"]);
    for (const auto& member : original["package"].items()) EXPECT_EQ(saved["package"][member.key()], member.value());
}

TEST(SaveCommand, KeepsACommentOfThePackage) {
    packagetext::Json document = ReadExample("water-gas-shift.json");
    document["package"]["comment"] = {"after", "Moe"};
    const CTemporaryFile file("commented.json", document.dump());
    const CTemporaryFile copy("saved.json", "");
    const RunResult result = RunProgram({"save", "--document", file.Path(), "--to", copy.Path()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(packagetext::Json::parse(copy.Content())["package"]["comment"], document["package"]["comment"]);
}

TEST(Help, NamesTheCommandsAndShowsExamples) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"table", "--help"}, {"show", "--help"}, {"save", "--help"}}) {
        const RunResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_NE(result.out.find("Example"), std::string::npos);
        EXPECT_NE(result.out.find("--document"), std::string::npos);
    }
}

/// The decimal comma and the point between thousands of many a locale.
class CCommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Locale, HasNoEffect) {
    const std::vector<std::string> sweep = {"table",  "--document", ExamplePath("toluene-hydrodealkylation.json"),
                                            "--from", "899.5",      "--to",
                                            "1000.5", "--step",     "50.5"};
    const RunResult expected = RunProgram(sweep);
    CTemporaryFile copy("locale.json", "");
    CTemporaryFile otherCopy("locale-comma.json", "");
    const std::string document = ExamplePath("methyl-acetate-adsorption.json");
    RunProgram({"save", "--document", document, "--to", copy.Path()});

    const std::string before = std::setlocale(LC_ALL, nullptr);
    const std::locale previous =
        std::locale::global(std::locale(std::locale::classic(), new CCommaPunctuation));  // the locale owns it
    for (const char* name : {"de_DE.UTF-8", "de_DE", "German", "German_Germany.1252"}) std::setlocale(LC_ALL, name);
    const RunResult actual = RunProgram(sweep);
    RunProgram({"save", "--document", document, "--to", otherCopy.Path()});
    std::locale::global(previous);
    std::setlocale(LC_ALL, before.c_str());

    EXPECT_EQ(actual.status, 0);
    EXPECT_EQ(actual.out, expected.out);
    EXPECT_EQ(actual.err, expected.err);
    EXPECT_EQ(otherCopy.Content(), copy.Content());
}

}  // namespace

}  // namespace rekasim
