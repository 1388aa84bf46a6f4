// SPDX-License-Identifier: MIT
// What is found in packages: each fault and each warning, one at a time, and nothing in a good one.

#include "CheckPackages.h"

#include <gtest/gtest.h>

#include <random>

#include "SampleBlocks.h"
#include "expression/parse/ParseExpression.h"
#include "persistence/WriteStoredDefinition.h"
#include "support/Builders.h"

namespace rekatool {

namespace {

using reka::test::AddEquilibrium;
using reka::test::AddKinetic;
using Lines = std::vector<std::string>;

/// Two isomers and the reaction between them; nothing is wrong with it.
std::unique_ptr<reka::ReactionPackDefinition> MakeGood(const char16_t* rate = u"2*C(First)") {
    auto definition = reka::test::MakePackage({u"First", u"Second"});
    definition->name = reka::CBstr::Make(u"P");
    for (const auto& compound : definition->compounds) {
        compound->formula = reka::CBstr::Make(u"C2H6O");
        compound->molecularWeight = 46.07;
    }
    AddKinetic(*definition, u"R", rate).stoichiometry = {-1.0, 1.0};
    return definition;
}

Bytes BlockOf(const reka::ReactionPackDefinition& definition) {
    Bytes block;
    std::u16string errorText;
    EXPECT_TRUE(reka::WriteStoredDefinition(definition, block, errorText));
    return block;
}

Lines Check(const std::vector<Bytes>& blocks) {
    PackageFile file;
    file.blocks = blocks;
    Lines lines;
    for (const Finding& finding : CheckPackages(file)) lines.push_back(TextOf(finding));
    return lines;
}
Lines Check(const reka::ReactionPackDefinition& definition) {
    return Check(std::vector<Bytes>{BlockOf(definition)});
}

TEST(CheckPackages, FindsNothingWhereNothingIs) {
    EXPECT_EQ(Check(*MakeGood()), Lines{});
    EXPECT_EQ(Check(*MakeGood(u"2*C(First)-3*C(Second)")), Lines{});
    EXPECT_EQ(Check(std::vector<Bytes>{}), Lines{});
}

TEST(CheckPackages, FindsAllFaultsAtOnce) {
    auto definition = MakeGood();
    definition->name.Reset();
    definition->compounds[1]->formula = reka::CBstr::Make(u"C2H4O");
    definition->compounds[1]->molecularWeight = 44.05;
    reka::ReactionDefinition& reaction = *definition->reactions[0];
    reaction.phase.Reset();
    reaction.rateEquation = u"2*";
    reaction.rateExpression.reset();
    reaction.heatEquation = u"3*";  // and no trees, which nobody misses in texts with faults
    std::u16string parserText;
    EXPECT_EQ(reka::ParseExpression(*definition, u"2*", parserText, nullptr), nullptr);
    EXPECT_EQ(Check(*definition),
              (Lines{"package 1: fault: Reaction package name cannot be empty",
                     "package 1: reaction R: fault: No phase defined for reaction R",
                     "package 1: reaction R: fault: Element balance mismatch detected for H (-2) in reaction R",
                     "package 1: reaction R: fault: Mass balance error in reaction R",
                     "package 1: reaction R: fault: error parsing rate expression for kinetic reaction R: syntax "
                     "error, unexpected $end",
                     "package 1: reaction R: fault: error parsing heat of reaction expression for reaction R: syntax "
                     "error, unexpected $end"}));
}

TEST(CheckPackages, FindsNamesThatAreThereTwice) {
    auto other = MakeGood();
    other->name = reka::CBstr::Make(u"p");
    EXPECT_EQ(Check({BlockOf(*MakeGood()), BlockOf(*other)}),
              Lines{"p: fault: Reaction package name \"p\"is already used, and must be unique"});
}

TEST(CheckPackages, FindsTooFewCompounds) {
    EXPECT_EQ(Check(*reka::test::MakePackage({})),
              Lines{"Test package: fault: At least two compounds must be present"});
}

TEST(CheckPackages, TellsOfBlocksThatCanNotBeRead) {
    const Bytes good = BlockOf(*MakeGood());
    EXPECT_EQ(Check({EmptyBlock(u"Old").U8(0).bytes, {1, 2}, good}),
              (Lines{"Old: fault: unexpected data at the end of the stored reaction package data: reaction pack data "
                     "may have been saved with newer version",
                     "package 2: fault: data corrupted"}));
}

TEST(CheckPackages, TellsWhatTheEditorWouldAskOrWarnOf) {
    auto definition = MakeGood();
    reka::test::SetHeat(*definition, *definition->reactions[0], u"5*T");
    definition->compounds[1]->formula = reka::CBstr::Make(u"C2H6(O)");
    EXPECT_EQ(Check(*definition),
              (Lines{"P: reaction R: warning: Parse error in structure formula C2H6(O) for compound Second; unable to "
                     "perform element balance check.",
                     "P: reaction R: warning: Heat of reaction for reaction \"R\" depends on temperature. Heat of "
                     "reactions depending on material properties may cause trouble during reactor evaluations. "
                     "Ignore?"}));
}

TEST(CheckPackages, TellsOfAnOldForm) {
    CStoredBytes block =
        CStoredBytes().Wide(u"Old").Wide(u"").Narrow("").U32(0).U32(1).Add(Reaction(0, CStoredBytes().U8(0)));
    const Lines lines = Check({block.bytes});
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0],
              "Old: warning: Old reaction package file format. Rate expressions have been corrected from kmol/h to "
              "mol/s by factor 1/3.6");
}

TEST(CheckPackages, FindsCompoundsWithoutUse) {
    auto definition = MakeGood();
    definition->compounds.push_back(std::make_unique<reka::CompoundDefinition>());
    definition->compounds[2]->name = reka::CBstr::Make(u"Third");
    definition->compounds[2]->formula = reka::CBstr::Make(u"Ar");
    definition->reactions[0]->stoichiometry.push_back(0);
    EXPECT_EQ(Check(*definition), Lines{"P: warning: compound Third takes part in no reaction"});
}

TEST(CheckPackages, FindsNamesThatNoExpressionCanUse) {
    auto definition = MakeGood();
    definition->compounds[1]->name = reka::CBstr::Make(u"FIRST");
    EXPECT_EQ(Check(*definition), Lines{"P: warning: compound FIRST can't be named in an expression"});
    definition->compounds[1]->name = reka::CBstr::Make(u"with \"quotes\"");
    EXPECT_EQ(Check(*definition), Lines{"P: warning: compound with \"quotes\" can't be named in an expression"});
    definition->compounds[1]->name = reka::CBstr::Make(u"C");  // a word of the language
    EXPECT_EQ(Check(*definition), Lines{"P: warning: compound C can't be named in an expression"});
    definition->compounds[1]->name = reka::CBstr::Make(u"with a blank, and a comma");
    EXPECT_EQ(Check(*definition), Lines{});
}

TEST(CheckPackages, FindsTreesThatAreNotTheTexts) {
    auto definition = MakeGood();
    reka::ReactionDefinition& reaction = *definition->reactions[0];
    const Lines differs = {"P: reaction R: warning: the stored tree of the rate isn't what its text gives"};
    reaction.rateEquation = u"3*C(First)";
    EXPECT_EQ(Check(*definition), differs);
    reaction.rateEquation = u"2*C(First)";
    EXPECT_EQ(Check(*definition), Lines{});
    reaction.rateExpression->dependencies = 3;
    EXPECT_EQ(Check(*definition), differs);
    reaction.rateEquation.clear();
    EXPECT_EQ(Check(*definition), (Lines{differs[0], "P: reaction R: warning: there is no rate"}));
}

TEST(CheckPackages, MissesTreesThatAreNotThere) {
    auto definition = MakeGood();
    definition->reactions[0]->rateExpression.reset();
    definition->reactions[0]->heatEquation = u"-5000";
    definition->reactions[0]->equilibriumConstantEquation = u"T";  // has none in a kinetic reaction
    EXPECT_EQ(Check(*definition), (Lines{"P: reaction R: warning: no tree is stored for the rate, which can't be "
                                         "calculated until the package is edited",
                                         "P: reaction R: warning: no tree is stored for the heat of reaction, which "
                                         "can't be calculated until the package is edited"}));
}

TEST(CheckPackages, KeepsEachFindingOnOneLine) {
    auto definition = MakeGood(u"");
    definition->name = reka::CBstr::Make(u" a\r\n\x1B[2Jb\tc ");
    definition->reactions[0]->id = reka::CBstr::Make(u"\u00E9\x7F\vf");
    EXPECT_EQ(Check(*definition), Lines{"a [2Jb c: reaction \u00E9 f: warning: there is no rate"});
}

TEST(CheckPackages, TellsOfBytesBehindTheTemplates) {
    PackageFile file;
    file.blocks = {BlockOf(*MakeGood())};
    file.count = 1;
    file.rest = {1, 2, 3};
    const std::vector<Finding> findings = CheckPackages(file);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(TextOf(findings[0]), "file: warning: bytes behind the last template, which nothing reads: 3");
}

/// Blocks with changed bytes are judged, whatever is left of them.
TEST(CheckPackages, SurvivesWhateverIsChanged) {
    const Bytes good = BlockOf(*MakeGood());
    std::mt19937 random(11);
    int read = 0;
    for (int turn = 0; turn < 500; ++turn) {
        Bytes changed = good;
        for (auto change = random() % 3 + 1; change > 0; --change) {
            changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
        }
        if (turn % 5 == 0) changed.resize(random() % changed.size());
        StoredPackage package;
        const bool isBlock = ReadStoredPackage(changed, package);
        const Lines lines = Check(std::vector<Bytes>{changed});
        if (isBlock) {
            ++read;
        } else {
            EXPECT_FALSE(lines.empty());
        }
    }
    EXPECT_GT(read, 100);
}

struct RateCase {
    const char* name;
    const char16_t* rate;
    const char* warning;  // null for none
};
const RateCase rateCases[] = {
    {"Backwards", u"-C(First)",
     "the rate is -10000 at 250 K without products, as if the reaction ran backwards"},  // 10 kmol/m3 of a liquid
    {"OutOfNothing", u"1", "the rate is 1 at 250 K without reactants, as if the reaction ran forwards"},
    {"DividesByZero", u"C(First)/ABS(T-400)",
     "the rate fails at 400 K with equal parts of all compounds: division by zero"},
    {"Infinite", u"C(First)*EXP(T)", "the rate is inf at 800 K with equal parts of all compounds"},
    {"OnlyWithATrace", u"C(First)/C(Second)", nullptr},  // fails without products, where nothing is asked of it
    {"Reversible", u"C(First)-1E-9*C(Second)", nullptr},
};
void PrintTo(const RateCase& row, std::ostream* stream) {
    *stream << row.name;
}

class OddRates : public testing::TestWithParam<RateCase> {};

TEST_P(OddRates, AreFoundOnAGrid) {
    Lines expected;
    if (GetParam().warning) expected.push_back(std::string("P: reaction R: warning: ") + GetParam().warning);
    EXPECT_EQ(Check(*MakeGood(GetParam().rate)), expected);
}
INSTANTIATE_TEST_SUITE_P(Table, OddRates, testing::ValuesIn(rateCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CheckPackages, FindsEquilibriumConstantsThatAreNone) {
    auto definition = MakeGood();
    definition->reactions.clear();
    AddEquilibrium(*definition, u"E", u"T-600").stoichiometry = {-1.0, 1.0};
    EXPECT_EQ(Check(*definition), Lines{"P: reaction E: warning: the equilibrium constant is -350 at 250 K with equal "
                                        "parts of all compounds, where it can only be above 0"});
}

/// A constant below 0 is told with its value, first with equal parts at 250 K and 1 bar.
TEST(CheckPackages, TriesConstantsAtKnownConditions) {
    struct Row {
        const char16_t* phase;
        const char16_t* constant;
        const char* value;
    };
    const Row rows[] = {
        {u"Liquid", u"-T", "-250"},
        {u"Liquid", u"-P", "-100000"},
        {u"Liquid", u"-X(First)", "-0.5"},
        {u"Liquid", u"-A(First)", "-0.5"},
        {u"Liquid", u"-F(First)", "-50000"},
        {u"Liquid", u"-C(First)", "-5000"},     // half of 10 kmol/m3
        {u"myLIQUID2", u"-C(First)", "-5000"},  // "liq" in any case of letters
        {u"Vapor", u"-C(First)", "-24.0545"},   // half of 1e5 Pa / (8.314462618 J/(mol K) * 250 K)
    };
    for (const Row& row : rows) {
        auto definition = MakeGood();
        definition->reactions.clear();
        reka::ReactionDefinition& reaction = AddEquilibrium(*definition, u"E", row.constant);
        reaction.stoichiometry = {-1.0, 1.0};
        reaction.phase = reka::CBstr::Make(row.phase);
        EXPECT_EQ(Check(*definition),
                  Lines{"P: reaction E: warning: the equilibrium constant is " + std::string(row.value) +
                        " at 250 K with equal parts of all compounds, where it can only be above 0"});
    }
}

TEST(CheckPackages, MissesARateThatIsNotThere) {
    auto definition = MakeGood(u"");
    EXPECT_EQ(Check(*definition), Lines{"P: reaction R: warning: there is no rate"});
}

}  // namespace

}  // namespace rekatool
