// SPDX-License-Identifier: MIT
// What makes a definition ready to calculate, check by check, with the words and questions of each.

#include "manager/ValidateDefinition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "checking/DefinitionChecks.h"
#include "expression/parse/ParseExpression.h"
#include "manager/ValidationFixture.h"

namespace reka::test {
namespace {

TEST_F(Validation, MakesTheDefinitionReadyToCalculate) {
    reaction->DiscardExpressions();
    reaction->heatEquation = u"-1000";
    definition->ReleaseWorkArrays();
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(definition->name.View(), u"Package");
    EXPECT_EQ(definition->description.View(), u"About it");
    ASSERT_NE(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->rateExpression->dependencies, dependency::temperature);
    ASSERT_NE(reaction->heatExpression, nullptr);
    EXPECT_EQ(reaction->equilibriumConstantExpression, nullptr);
    EXPECT_EQ(definition->workArraySize, 2U);
    EXPECT_NE(definition->molarity, nullptr);
    EXPECT_EQ(ui.shown, Lines{});
}

TEST_F(Validation, TakesTheSelectedVersion) {
    const std::pair<std::int32_t, ThermoVersion> rows[] = {{0, ThermoVersion::Version10},
                                                           {1, ThermoVersion::Version11},
                                                           {2, ThermoVersion::Version10},
                                                           {-1, ThermoVersion::Version10}};
    for (const auto& [index, version] : rows) {
        EXPECT_EQ(Validate(u"Package", false, index), "");
        EXPECT_EQ(definition->thermoVersion, version) << index;
    }
}

TEST_F(Validation, WantsAName) {
    EXPECT_EQ(Validate(u""), "Reaction package name cannot be empty");
    EXPECT_TRUE(definition->name.View().empty());
}

TEST_F(Validation, WantsANameOfItsOwnForATemplate) {
    store.templates.push_back(MakePackage({}));
    store.templates[0]->name = CBstr::Make(u"PACKAGE");
    const std::string taken = "Reaction package name \"Package\"is already used, and must be unique";
    EXPECT_EQ(Validate(), taken);
    EXPECT_EQ(Validate(u"Package", true), "");
    store.templateUnderEdit = store.templates[0].get();
    EXPECT_EQ(Validate(), "");
    store.templates.push_back(MakePackage({}));
    store.templates[1]->name = CBstr::Make(u"package");
    EXPECT_EQ(Validate(), taken);
}

TEST_F(Validation, WantsTwoCompounds) {
    const std::string tooFew = "At least two compounds must be present";
    definition = MakePackage({u"A"});
    AddKinetic(*definition, u"R", u"");  // whose faults nobody looks at
    definition->reactions[0]->phase.Reset();
    EXPECT_EQ(Validate(), tooFew);
    definition = MakePackage({});
    EXPECT_EQ(Validate(), tooFew);
    definition = MakePackage({u"A", u"A"});
    EXPECT_EQ(Validate(), "");
}

TEST_F(Validation, LooksAtTheNameBeforeTheCompounds) {
    definition = MakePackage({u"A"});
    EXPECT_EQ(Validate(u""), "Reaction package name cannot be empty");
    store.templates.push_back(MakePackage({}));
    store.templates[0]->name = CBstr::Make(u"Package");
    EXPECT_EQ(Validate(), "Reaction package name \"Package\"is already used, and must be unique");
}

TEST_F(Validation, WantsAPhase) {
    reaction->phase.Reset();
    EXPECT_EQ(Validate(), "No phase defined for reaction R1");
    reaction->phase = CBstr::Make(u"");
    EXPECT_EQ(Validate(), "No phase defined for reaction R1");
}

TEST_F(Validation, NamesTheElementsThatDoNotBalance) {
    reaction->stoichiometry = {-1.0, 1.0};
    EXPECT_EQ(Validate(), "Element balance mismatch detected for C (1) and H (2) in reaction R1");
    SetCompound(0, u"CH2", 14.0);
    SetCompound(1, u"C2", 14.0);
    EXPECT_EQ(Validate(), "Element balance mismatch detected for C (1) and H (-2) in reaction R1");
    SetCompound(1, u"C1.5H2", 14.0);
    EXPECT_EQ(Validate(), "Element balance mismatch detected for C (0.5) in reaction R1");
}

TEST_F(Validation, AllowsElementsAThousandth) {
    reaction->stoichiometry = {-1.0, 1.0};
    SetCompound(0, u"H2", 2.0);
    SetCompound(1, u"H2N.001", 2.0);  // 0.001 itself, which isn't above it
    EXPECT_EQ(Validate(), "");
    SetCompound(1, u"H2N.00100001", 2.0);
    EXPECT_EQ(Validate(), "Element balance mismatch detected for N (0.00100001) in reaction R1");
    // The nearest numbers on both sides of each limit.
    SetCompound(0, u"", 0.0);
    SetCompound(1, u"N", 0.0);
    for (const double limit : {0.001, -0.001}) {
        reaction->stoichiometry = {1.0, limit};
        EXPECT_EQ(Validate(), "");
        reaction->stoichiometry = {1.0, std::nextafter(limit, 2 * limit)};
        EXPECT_EQ(Validate(), "Element balance mismatch detected for N (" + std::string(limit < 0 ? "-" : "") +
                                  "0.001) in reaction R1");
    }
}

TEST_F(Validation, TakesANumberThatIsNoneForBalanced) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    reaction->stoichiometry = {none, 0.0};  // which isn't 0, so the compound takes part
    EXPECT_EQ(Validate(), "");
    reaction->stoichiometry = {none, none};
    EXPECT_EQ(Validate(), "");
    reaction->stoichiometry = {-2.0, 1.0};
    SetCompound(1, u"C2H4", none);
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(ui.shown, Lines{});
}

TEST_F(Validation, ReportsElementsBeforeMass) {
    reaction->stoichiometry = {-1.0, 1.0};
    SetCompound(1, u"CH2N", 1000.0);
    EXPECT_EQ(Validate(), "Element balance mismatch detected for N (1) in reaction R1");
}

TEST_F(Validation, GoesWithoutElementsWhereAFormulaIsMissing) {
    definition = MakePackage({u"A", u"B", u"C"});
    SetCompound(0, u"CH2", 14.0);
    SetCompound(1, u"N2(", 28.0);
    AddKinetic(*definition, u"R", u"").stoichiometry = {-2.0, 1.0, 0.0};
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(ui.shown, Lines{});
    definition->compounds[1]->molecularWeight = 28.06;
    EXPECT_EQ(Validate(), "Mass balance error in reaction R");
}

TEST_F(Validation, TakesAnEmptyFormulaForNoAtoms) {
    SetCompound(0, u"", 14.0);
    EXPECT_EQ(Validate(), "Element balance mismatch detected for C (2) and H (4) in reaction R1");
}

TEST_F(Validation, WarnsOfAFormulaItCanNotReadForEachReaction) {
    SetCompound(1, u"C(H2)2C", 28.0);
    AddKinetic(*definition, u"R2", u"").stoichiometry = {-2.0, 1.0};
    EXPECT_EQ(Validate(), "");
    const std::string warning =
        "warning Warning: Parse error in structure formula C(H2)2C for compound Second; unable to perform element "
        "balance "
        "check.";
    EXPECT_EQ(ui.shown, (Lines{warning, warning}));
    ui.shown.clear();
    definition->reactions[1]->stoichiometry = {-2.0, 2.0};
    EXPECT_EQ(Validate(), "Mass balance error in reaction R2");
    ui.shown.clear();
    reaction->stoichiometry = {0.0, 0.0};  // a compound that takes no part is not read
    EXPECT_EQ(Validate(), "No reactants or products for reaction R1");
    EXPECT_EQ(ui.shown, Lines{});
}

TEST_F(Validation, AllowsMassATwentieth) {
    SetCompound(0, nullptr, 1.0);
    reaction->stoichiometry = {0.0, 1.0};
    for (const double limit : {0.05, -0.05}) {
        SetCompound(1, nullptr, limit);
        EXPECT_EQ(Validate(), "");
        SetCompound(1, nullptr, std::nextafter(limit, 2 * limit));
        EXPECT_EQ(Validate(), "Mass balance error in reaction R1");
    }
}

TEST_F(Validation, WantsSomethingToTakePart) {
    reaction->stoichiometry = {0.0, -0.0};
    EXPECT_EQ(Validate(), "No reactants or products for reaction R1");
}

TEST_F(Validation, GivesACompoundWithoutACoefficientNoPart) {
    reaction->stoichiometry = {-2.0};
    EXPECT_EQ(Validate(), "Element balance mismatch detected for C (-2) and H (-4) in reaction R1");
    SetCompound(0, nullptr, 14.0);
    EXPECT_EQ(Validate(), "Mass balance error in reaction R1");
    reaction->stoichiometry = {};
    EXPECT_EQ(Validate(), "No reactants or products for reaction R1");
    reaction->stoichiometry = {-2.0, 1.0, 5.0};  // and a coefficient without a compound none
    EXPECT_EQ(Validate(), "");
}

TEST_F(Validation, ParsesTheTextOfTheType) {
    reaction->rateEquation = u"2*";
    std::u16string parserText;
    EXPECT_EQ(ParseExpression(*definition, u"2*", parserText, nullptr), nullptr);
    EXPECT_EQ(Validate(), "error parsing rate expression for kinetic reaction R1:\r\n" + Utf8FromUtf16(parserText));
    reaction->type = ReactionType::Equilibrium;
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(reaction->rateEquation, u"2*");
    EXPECT_EQ(reaction->rateExpression, nullptr);
    reaction->equilibriumConstantEquation = u"2*";
    EXPECT_EQ(Validate(), "error parsing equilibrium constant expression for equilibrium reaction R1:\r\n" +
                              Utf8FromUtf16(parserText));
    reaction->equilibriumConstantEquation = u"EXP(T)";
    EXPECT_EQ(Validate(), "");
    EXPECT_NE(reaction->equilibriumConstantExpression, nullptr);
    reaction->type = static_cast<ReactionType>(7);  // whatever isn't kinetic
    reaction->equilibriumConstantEquation = u"EXP(";
    EXPECT_NE(Validate().find("error parsing equilibrium constant"), std::string::npos);
}

TEST_F(Validation, ParsesTheHeat) {
    reaction->heatEquation = u"Q(";
    std::u16string parserText;
    EXPECT_EQ(ParseExpression(*definition, u"Q(", parserText, nullptr), nullptr);
    EXPECT_EQ(Validate(), "error parsing heat of reaction expression for reaction R1:\r\n" + Utf8FromUtf16(parserText));
    EXPECT_NE(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->heatExpression, nullptr);
}

TEST_F(Validation, LetsEmptyTextsPass) {
    reaction->rateEquation.clear();
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(reaction->rateExpression, nullptr);
    reaction->equilibriumConstantEquation = u"2*";  // of no use to a kinetic reaction, with or without a rate
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->equilibriumConstantExpression, nullptr);
    reaction->type = ReactionType::Equilibrium;
    reaction->equilibriumConstantEquation.clear();
    reaction->rateEquation = u"2*";
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->equilibriumConstantExpression, nullptr);
}

const char* const askAgain =
    " Heat of reactions depending on material properties may cause trouble during reactor evaluations. Ignore?";

TEST_F(Validation, AsksOnceForEachDependencyOfAHeat) {
    reaction->heatEquation = u"C(First)*X(First)*A(First)*F(First)*T*P";
    EXPECT_EQ(Validate(), "");
    const std::string start = "question Warning: Heat of reaction for reaction \"R1\" depends on ";
    EXPECT_EQ(ui.shown, (Lines{start + "molarity." + askAgain, start + "mole fraction." + askAgain,
                               start + "activity." + askAgain, start + "temperature." + askAgain,
                               start + "pressure." + askAgain}));
    EXPECT_NE(reaction->heatExpression, nullptr);
}

TEST_F(Validation, FailsAtTheQuestionThatIsCancelled) {
    const char* const failures[] = {"Heat of reaction for reaction \"R1\" depends on molarity.",
                                    "Heat of reaction for reaction \"R1\" depends on mole fraction.",
                                    "Heat of reaction for reaction \"R1\" depends on activity.",
                                    "Heat of reaction for reaction \"R1\" depends on temperature.",
                                    "Heat of reaction for reaction \"R1\" depends on pressure."};
    reaction->heatEquation = u"C(First)*X(First)*A(First)*F(First)*T*P";
    for (int confirmed = 0; confirmed < 5; ++confirmed) {
        ui.answersLeft = confirmed;
        EXPECT_EQ(Validate(), failures[confirmed]);
    }
}

TEST_F(Validation, FailsWhenAQuestionIsCancelled) {
    reaction->heatEquation = u"1000*T";
    ui.answersLeft = 0;
    EXPECT_EQ(Validate(), "Heat of reaction for reaction \"R1\" depends on temperature.");
    ASSERT_NE(reaction->heatExpression, nullptr);  // the fresh tree stays
    EXPECT_EQ(reaction->heatExpression->dependencies, dependency::temperature);
    EXPECT_NE(reaction->rateExpression, nullptr);
    reaction->heatEquation = u"C(First)*T";
    ui.shown.clear();
    ui.answersLeft = 1;
    EXPECT_EQ(Validate(), "Heat of reaction for reaction \"R1\" depends on temperature.");
    EXPECT_EQ(ui.shown.size(), 2U);
}

TEST_F(Validation, AsksNothingAboutAFugacity) {
    reaction->heatEquation = u"F(First)";
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(ui.shown, Lines{});
}

TEST_F(Validation, LeavesThisBehindAFailure) {
    for (const char16_t* const id : {u"R2", u"R3"}) {
        AddKinetic(*definition, id, u"T").stoichiometry = {-2.0, 1.0};
    }
    ReactionDefinition& second = *definition->reactions[1];
    ReactionDefinition& third = *definition->reactions[2];
    SetHeat(*definition, second, u"5");
    second.heatEquation = u"5*";
    second.rateEquation = u"P";
    third.rateEquation = u"P";
    reaction->rateEquation = u"P";
    definition->ReleaseWorkArrays();
    EXPECT_NE(Validate(u"New name").find("reaction R2"), std::string::npos);
    EXPECT_EQ(definition->name.View(), u"New name");
    EXPECT_EQ(reaction->rateExpression->dependencies, dependency::pressure);
    EXPECT_EQ(second.rateExpression->dependencies, dependency::pressure);
    EXPECT_EQ(second.heatExpression, nullptr);
    EXPECT_EQ(third.rateExpression->dependencies, dependency::temperature);  // stale
    EXPECT_EQ(definition->molarity, nullptr);
}

TEST_F(Validation, DiscardsTheTreesOfAReactionThatFailsAtOnce) {
    SetHeat(*definition, *reaction, u"5");
    reaction->equilibriumConstantEquation = u"P";
    reaction->equilibriumConstantExpression = Parse(*definition, u"P");
    reaction->phase.Reset();
    EXPECT_EQ(Validate(), "No phase defined for reaction R1");
    EXPECT_EQ(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->equilibriumConstantExpression, nullptr);
    EXPECT_EQ(reaction->heatExpression, nullptr);
}

TEST_F(Validation, DiscardsTheTreeOfTheTypeThatAReactionHadBefore) {
    definition->reactions.clear();
    ReactionDefinition& changed = AddEquilibrium(*definition, u"R1", u"EXP(T)");
    changed.stoichiometry = {-2.0, 1.0};
    changed.type = ReactionType::Kinetic;
    changed.rateEquation = u"P";
    EXPECT_EQ(Validate(), "");
    EXPECT_NE(changed.rateExpression, nullptr);
    EXPECT_EQ(changed.equilibriumConstantExpression, nullptr);
    EXPECT_EQ(changed.equilibriumConstantEquation, u"EXP(T)");
    changed.type = ReactionType::Equilibrium;
    EXPECT_EQ(Validate(), "");
    EXPECT_EQ(changed.rateExpression, nullptr);
    EXPECT_NE(changed.equilibriumConstantExpression, nullptr);
    EXPECT_EQ(changed.rateEquation, u"P");
}

TEST_F(Validation, LeavesARateBehindAHeatThatFails) {
    SetHeat(*definition, *reaction, u"5");
    reaction->rateEquation = u"P";
    reaction->heatEquation = u"5*";
    EXPECT_NE(Validate().find("error parsing heat of reaction"), std::string::npos);
    ASSERT_NE(reaction->rateExpression, nullptr);
    EXPECT_EQ(reaction->rateExpression->dependencies, dependency::pressure);
    EXPECT_EQ(reaction->heatExpression, nullptr);
}

}  // namespace
}  // namespace reka::test
