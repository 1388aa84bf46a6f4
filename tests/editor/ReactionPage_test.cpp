// SPDX-License-Identifier: MIT
// The reactions page: what it shows, and what its controls write into the definition.

#include "editor/ReactionPage.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "support/Values.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Strings = std::vector<std::string>;

struct UnitCase {
    const char* name;
    EquilibriumBasis basis;
    std::vector<double> stoichiometry;
    const char* unit;
};

const UnitCase unitCases[] = {
    {"MolarityOfOne", EquilibriumBasis::Molarity, {1.0}, "mol/m³"},
    {"MolarityOfTwo", EquilibriumBasis::Molarity, {1.0, 1.0}, "mol²/m^6"},
    {"MolarityOfThree", EquilibriumBasis::Molarity, {-1.0, 4.0}, "mol³/m^9"},
    {"MolarityOfFour", EquilibriumBasis::Molarity, {4.0}, "mol^4/m^12"},
    {"MolarityOfMinusOne", EquilibriumBasis::Molarity, {-1.0, -1.0, 1.0}, "m³/mol"},
    {"MolarityOfMinusTwo", EquilibriumBasis::Molarity, {-3.0, 1.0}, "m^6/mol²"},
    {"MolarityOfAHalf", EquilibriumBasis::Molarity, {0.5}, "mol^0.5/m^1.5"},
    {"MolarityOfAThird", EquilibriumBasis::Molarity, {1.0 / 3.0}, "mol^0.333333/m"},
    {"MolarityOfMinusTwoThirds", EquilibriumBasis::Molarity, {-2.0 / 3.0}, "m²/mol^0.666667"},
    {"MolarityNearOne", EquilibriumBasis::Molarity, {1.0 + 1e-11}, "mol/m³"},
    {"MolarityNotSoNearOne", EquilibriumBasis::Molarity, {1.0 + 1e-9}, "mol^1/m^3"},
    {"MolarityOfAlmostNothing", EquilibriumBasis::Molarity, {0.1, 0.2, -0.3}, "mol^5.55112e-17/m^1.66533e-16"},
    {"MolarityOfNothing", EquilibriumBasis::Molarity, {-1.0, 1.0}, ""},
    {"ConcentrationOfMinusOne", EquilibriumBasis::Concentration, {-2.0, 1.0}, "m³/kg"},
    {"ConcentrationOfTwo", EquilibriumBasis::Concentration, {2.0}, "kg²/m^6"},
    {"FugacityOfOne", EquilibriumBasis::Fugacity, {1.0}, "Pa"},
    {"FugacityOfTwo", EquilibriumBasis::Fugacity, {2.0}, "Pa²"},
    {"FugacityOfMinusOne", EquilibriumBasis::Fugacity, {-1.0, -1.0, 1.0}, "1/Pa"},
    {"FugacityOfMinusThree", EquilibriumBasis::Fugacity, {-3.0}, "1/Pa³"},
    {"FugacityOfMinusTwoAndAHalf", EquilibriumBasis::Fugacity, {-2.5}, "1/Pa^2.5"},
    {"FugacityOfNothing", EquilibriumBasis::Fugacity, {-2.0, 1.0, 1.0}, ""},
    {"NoCompounds", EquilibriumBasis::Fugacity, {}, ""},
    {"NotANumber", EquilibriumBasis::Fugacity, {std::numeric_limits<double>::quiet_NaN()}, ""},
    {"MoleFraction", EquilibriumBasis::MoleFraction, {1.0}, ""},
    {"MassFraction", EquilibriumBasis::MassFraction, {-1.0}, ""},
    {"Activity", EquilibriumBasis::Activity, {1.0}, ""},
    {"BasisBelowAll", static_cast<EquilibriumBasis>(-1), {1.0}, ""},
    {"BasisAboveAll", static_cast<EquilibriumBasis>(6), {1.0}, ""},
};

class EquilibriumUnits : public testing::TestWithParam<UnitCase> {};

TEST_P(EquilibriumUnits, FollowFromTheSumOfTheCoefficients) {
    ReactionDefinition reaction(0);
    reaction.equilibriumBasis = GetParam().basis;
    reaction.stoichiometry = GetParam().stoichiometry;
    EXPECT_EQ(Utf8FromUtf16(EquilibriumUnit(reaction)), GetParam().unit);
}
INSTANTIATE_TEST_SUITE_P(Table, EquilibriumUnits, testing::ValuesIn(unitCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct PowerCase {
    double power;
    const char* text;
};

TEST(FormatUnitPower, WritesSmallPowersAsSigns) {
    const PowerCase cases[] = {
        {1.0, "m"},         {2.0, "m²"},         {3.0, "m³"},           {4.0, "m^4"},         {0.5, "m^0.5"},
        {1.0 + 9e-11, "m"}, {2.0 - 9e-11, "m²"}, {3.0 + 9e-11, "m³"},   {2.0 + 2e-10, "m^2"}, {3.0 - 2e-10, "m^3"},
        {0.0, "m^0"},       {-1.0, "m^-1"},      {1.5e10, "m^1.5e+10"},
    };
    for (const auto& [power, text] : cases) EXPECT_EQ(Utf8FromUtf16(FormatUnitPower(u"m", power)), text) << power;
}

/// A package of two compounds with the kinetic reaction "r1" and the equilibrium reaction "r2", its page and its user.
class ReactionPage : public testing::Test {
protected:
    ReactionPage() : definition(MakePackage({u"A1", u"B1"})) {
        AddKinetic(*definition, u"r1", u"C(A1)").stoichiometry = {-1.0, 1.0};
        AddEquilibrium(*definition, u"r2", u"EXP(T)").stoichiometry = {-2.0, 1.0};
        SetHeat(*definition, Reaction(0), u"-5000");
        page.emplace(*definition, ui);
    }

    ReactionDefinition& Reaction(std::size_t index) { return *definition->reactions[index]; }
    Strings Ids() const {
        Strings ids;
        for (const std::u16string& id : page->ReactionIds()) ids.push_back(Utf8FromUtf16(id));
        return ids;
    }
    void SelectNone() { page->Select(-1); }

    std::unique_ptr<ReactionPackDefinition> definition;
    CFakeEditorUi ui;
    std::optional<CReactionPage> page;
};

TEST_F(ReactionPage, OpensOnTheFirstReaction) {
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->Selection(), 0);
    EXPECT_EQ(page->SelectedReaction(), &Reaction(0));
}

TEST_F(ReactionPage, ShowsAKineticReaction) {
    Reaction(0).equilibriumConstantEquation = u"kept";
    Reaction(0).stoichiometry = {-1.23456789, 1e-7};
    definition->compounds[1]->id = CBstr::Make(u"identifier of B1");
    const ReactionPageContent content = page->Content();
    EXPECT_EQ(content.heading, u"r1");
    EXPECT_EQ(content.stoichiometry,
              (std::vector<StoichiometryRow>{{u"-1.23457", u"A1"}, {u"1e-07", u"identifier of B1"}}));
    EXPECT_FALSE(content.isEquilibrium);
    EXPECT_FALSE(content.isHeterogeneous);
    EXPECT_EQ(content.expressions[0], u"C(A1)");
    EXPECT_EQ(content.expressions[1], u"kept");
    EXPECT_EQ(content.expressions[2], u"-5000");
    EXPECT_EQ(content.phase, u"Liquid");
    EXPECT_EQ(content.enabled, (ReactionPageEnabled{true, true, false}));
}

TEST_F(ReactionPage, ShowsNoPartForACompoundWithoutACoefficient) {
    Reaction(0).stoichiometry = {-1.0};
    EXPECT_EQ(page->Content().stoichiometry, (std::vector<StoichiometryRow>{{u"-1", u"A1"}, {u"0", u"B1"}}));
    EXPECT_EQ(page->EditCoefficient(1, u"2"), PageChange::Nothing);
    Reaction(0).stoichiometry = {-1.0, 1.0, 5.0};
    EXPECT_EQ(page->Content().stoichiometry, (std::vector<StoichiometryRow>{{u"-1", u"A1"}, {u"1", u"B1"}}));
}

TEST_F(ReactionPage, ShowsAnEquilibriumReaction) {
    page->Select(1);
    Reaction(1).rateBasis = RateBasis::Heterogeneous;
    Reaction(1).phase.Reset();
    Reaction(1).id.Reset();
    definition->compounds[0]->id.Reset();
    const ReactionPageContent content = page->Content();
    EXPECT_EQ(content.heading, u"");
    EXPECT_EQ(content.stoichiometry, (std::vector<StoichiometryRow>{{u"-2", u""}, {u"1", u"B1"}}));
    EXPECT_TRUE(content.isEquilibrium);
    EXPECT_TRUE(content.isHeterogeneous);
    EXPECT_EQ(content.expressions[0], u"");
    EXPECT_EQ(content.expressions[1], u"EXP(T)");
    EXPECT_EQ(content.expressions[2], u"");
    EXPECT_EQ(content.phase, u"");
    EXPECT_EQ(content.enabled, (ReactionPageEnabled{true, false, true}));
    EXPECT_EQ(Ids(), (Strings{"r1", ""}));
}

TEST_F(ReactionPage, TakesStoredWordsThatMeanNothingForTheOtherCase) {
    Reaction(0).type = static_cast<ReactionType>(7);
    Reaction(0).rateBasis = static_cast<RateBasis>(7);
    const ReactionPageContent content = page->Content();
    EXPECT_FALSE(content.isEquilibrium);
    EXPECT_FALSE(content.isHeterogeneous);
    EXPECT_EQ(RateUnit(Reaction(0)), u"mol/s/m³");
    EXPECT_EQ(page->Enabled(), (ReactionPageEnabled{true, true, false}));
}

void ExpectNoReaction(const CReactionPage& page) {
    EXPECT_EQ(page.Selection(), -1);
    EXPECT_EQ(page.SelectedReaction(), nullptr);
    const ReactionPageContent content = page.Content();
    EXPECT_EQ(content.heading, u"<no reaction selected>");
    EXPECT_TRUE(content.stoichiometry.empty());
    EXPECT_FALSE(content.isEquilibrium);
    EXPECT_FALSE(content.isHeterogeneous);
    EXPECT_EQ(content.expressions[0] + content.expressions[1] + content.expressions[2] + content.phase, u"");
    EXPECT_EQ(content.enabled, ReactionPageEnabled{});
    EXPECT_EQ(page.Enabled(), ReactionPageEnabled{});
    EXPECT_FALSE(page.CanEditCoefficient());
}

TEST_F(ReactionPage, ShowsThatNoReactionIsSelected) {
    for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::min()}) {
        page->Select(index);
        ExpectNoReaction(*page);
    }
    definition->reactions.clear();
    page.emplace(*definition, ui);
    ExpectNoReaction(*page);
    EXPECT_EQ(Ids(), Strings{});
}

TEST_F(ReactionPage, DoesNothingWithoutASelection) {
    SelectNone();
    ui.text = u"new";
    ui.messageAnswer = MessageAnswer::Yes;
    page->SetExpression(ReactionExpression::Rate, u"1");
    page->SetExpression(ReactionExpression::EquilibriumConstant, u"1");
    page->SetExpression(ReactionExpression::Heat, u"1");
    page->SetPhase(u"Solid");
    EXPECT_EQ(page->SetIsEquilibrium(true), PageChange::Nothing);
    EXPECT_EQ(page->SetIsHeterogeneous(true), PageChange::Nothing);
    EXPECT_EQ(page->SetEquilibriumBasis(EquilibriumBasis::Activity), PageChange::Nothing);
    EXPECT_EQ(page->EditCoefficient(0, u"1"), PageChange::Nothing);
    EXPECT_EQ(page->RenameByButton(), PageChange::Nothing);
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::Nothing);
    EXPECT_EQ(page->Delete(), PageChange::Nothing);
    EXPECT_FALSE(page->EditExpression(ReactionExpression::Rate));
    EXPECT_FALSE(page->EditExpression(ReactionExpression::EquilibriumConstant));
    EXPECT_FALSE(page->EditExpression(ReactionExpression::Heat));
    EXPECT_FALSE(page->RunRateWizard());
    EXPECT_EQ(ui.asked, Strings{});
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(Reaction(0).rateEquation, u"C(A1)");
}

TEST_F(ReactionPage, WritesTheTextsAtOnce) {
    page->SetExpression(ReactionExpression::Rate, u"2*");  // faulty ones too
    page->SetExpression(ReactionExpression::EquilibriumConstant, u"(");
    page->SetExpression(ReactionExpression::Heat, u"");
    EXPECT_EQ(Reaction(0).rateEquation, u"2*");
    EXPECT_EQ(Reaction(0).equilibriumConstantEquation, u"(");
    EXPECT_EQ(Reaction(0).heatEquation, u"");
    EXPECT_EQ(Reaction(1).equilibriumConstantEquation, u"EXP(T)");
}

TEST_F(ReactionPage, KeepsAnyPhaseAsTyped) {
    page->SetPhase(u"  my Phase ");
    EXPECT_EQ(Reaction(0).phase.View(), u"  my Phase ");
    page->SetPhase(phaseTexts[1]);
    EXPECT_EQ(Reaction(0).phase.View(), u"Vapor");
    page->SetPhase(u"");
    EXPECT_TRUE(Reaction(0).phase.IsAbsent());
}

TEST_F(ReactionPage, SwitchesTheTypeAndKeepsTheTexts) {
    EXPECT_EQ(page->SetIsEquilibrium(true), PageChange::EnabledAndUnits);
    EXPECT_EQ(Reaction(0).type, ReactionType::Equilibrium);
    EXPECT_EQ(Reaction(0).rateEquation, u"C(A1)");
    EXPECT_EQ(page->Enabled(), (ReactionPageEnabled{true, false, true}));
    EXPECT_EQ(page->SetIsEquilibrium(false), PageChange::EnabledAndUnits);
    EXPECT_EQ(Reaction(0).type, ReactionType::Kinetic);
    EXPECT_EQ(page->Enabled(), (ReactionPageEnabled{true, true, false}));
}

TEST_F(ReactionPage, SwitchesTheUnits) {
    EXPECT_EQ(RateUnit(Reaction(0)), u"mol/s/m³");
    EXPECT_EQ(page->SetIsHeterogeneous(true), PageChange::Units);
    EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Heterogeneous);
    EXPECT_EQ(RateUnit(Reaction(0)), u"mol/s/kg cat");
    EXPECT_EQ(page->SetIsHeterogeneous(false), PageChange::Units);
    EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Homogeneous);
    page->Select(1);
    EXPECT_EQ(EquilibriumUnit(Reaction(1)), u"m³/mol");
    EXPECT_EQ(page->SetEquilibriumBasis(EquilibriumBasis::Fugacity), PageChange::Units);
    EXPECT_EQ(Reaction(1).equilibriumBasis, EquilibriumBasis::Fugacity);
    EXPECT_EQ(EquilibriumUnit(Reaction(1)), u"1/Pa");
}

TEST_F(ReactionPage, TakesArithmeticForACoefficient) {
    EXPECT_TRUE(page->CanEditCoefficient());
    EXPECT_EQ(page->EditCoefficient(0, u"-3/2"), PageChange::Page);
    EXPECT_EQ(page->EditCoefficient(1, u"R"), PageChange::Page);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-1.5, 8.314}));
    EXPECT_EQ(page->Content().stoichiometry[0].coefficient, u"-1.5");
    EXPECT_EQ(Reaction(1).stoichiometry, (std::vector<double>{-2.0, 1.0}));
}

TEST_F(ReactionPage, KeepsACoefficientWhenATextIsNoNumber) {
    for (const char16_t* text : {u"", u" ", u"(", u"T", u"C(A1)", u"0,5", u"1/0", u"1e999"}) {
        EXPECT_EQ(page->EditCoefficient(0, text), PageChange::Nothing) << Utf8FromUtf16(text);
    }
    EXPECT_EQ(page->EditCoefficient(2, u"1"), PageChange::Nothing);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-1.0, 1.0}));
    EXPECT_EQ(ui.asked, Strings{});
}

TEST_F(ReactionPage, CreatesAReactionAtTheEnd) {
    ui.text = u"r3";
    EXPECT_EQ(page->Create(), PageChange::ListAndPage);
    EXPECT_EQ(ui.asked, Strings{"text|Enter reaction ID:||absent"});
    EXPECT_EQ(Ids(), (Strings{"r1", "r2", "r3"}));
    EXPECT_EQ(page->Selection(), 2);
    EXPECT_EQ(Reaction(2).type, ReactionType::Kinetic);
    EXPECT_EQ(Reaction(2).rateBasis, RateBasis::Homogeneous);
    EXPECT_EQ(Reaction(2).equilibriumBasis, EquilibriumBasis::Molarity);
    EXPECT_TRUE(Reaction(2).phase.IsAbsent());
    EXPECT_EQ(Reaction(2).stoichiometry, (std::vector<double>{0.0, 0.0}));
}

TEST_F(ReactionPage, CreatesTheFirstReaction) {
    definition->reactions.clear();
    SelectNone();
    ui.text = u"only";
    EXPECT_EQ(page->Create(), PageChange::ListAndPage);
    EXPECT_EQ(page->Selection(), 0);
    EXPECT_EQ(page->Content().heading, u"only");
}

TEST_F(ReactionPage, CreatesNothingWithoutAName) {
    EXPECT_EQ(page->Create(), PageChange::Nothing);
    ui.text = u"";
    EXPECT_EQ(page->Create(), PageChange::Nothing);
    EXPECT_EQ(ui.asked, (Strings{"text|Enter reaction ID:||absent", "text|Enter reaction ID:||absent"}));
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->Selection(), 0);
}

const std::string idTaken = "message|Error:|The reaction ID must be unique|16";

TEST_F(ReactionPage, RefusesAnIdentifierThatIsTaken) {
    ui.text = u"R2";
    EXPECT_EQ(page->Create(), PageChange::Nothing);
    EXPECT_EQ(page->RenameByButton(), PageChange::Nothing);
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::Nothing);
    EXPECT_EQ(ui.asked, (Strings{"text|Enter reaction ID:||absent", idTaken, "text|Enter reaction ID:|r1", idTaken,
                                 "text|Enter reaction ID:|r1", idTaken}));
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->Selection(), 0);
}

TEST_F(ReactionPage, RenamesTheSelectedReaction) {
    page->Select(1);
    ui.text = u"by button";
    EXPECT_EQ(page->RenameByButton(), PageChange::ListAndPage);
    EXPECT_EQ(Ids(), (Strings{"r1", "by button"}));
    ui.text = u"by double click";
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::ListAndPage);
    EXPECT_EQ(Ids(), (Strings{"r1", "by double click"}));
    EXPECT_EQ(page->Selection(), 1);
    EXPECT_EQ(ui.asked, (Strings{"text|Enter reaction ID:|r2", "text|Enter reaction ID:|by button"}));
    EXPECT_EQ(Reaction(1).equilibriumConstantEquation, u"EXP(T)");
}

TEST_F(ReactionPage, KeepsTheIdentifierOnCancel) {
    EXPECT_EQ(page->RenameByButton(), PageChange::Nothing);
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::Nothing);
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
}

// The two ways of renaming differ on purpose.
TEST_F(ReactionPage, RenamesToNothingByDoubleClickAlone) {
    ui.text = u"";
    EXPECT_EQ(page->RenameByButton(), PageChange::Nothing);
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::ListAndPage);
    EXPECT_TRUE(Reaction(0).id.IsAbsent());
    page->Select(1);
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::Nothing);  // one of that name is there
    EXPECT_EQ(ui.asked.back(), idTaken);
}

TEST_F(ReactionPage, RenamesToOtherLettersByDoubleClickAlone) {
    ui.text = u"R1";
    EXPECT_EQ(page->RenameByButton(), PageChange::Nothing);
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->RenameByDoubleClick(), PageChange::ListAndPage);
    EXPECT_EQ(Ids(), (Strings{"R1", "r2"}));
}

TEST_F(ReactionPage, DeletesWhenTheUserIsSure) {
    page->Select(1);
    ui.messageAnswer = MessageAnswer::No;
    EXPECT_EQ(page->Delete(), PageChange::Nothing);
    EXPECT_EQ(Ids(), (Strings{"r1", "r2"}));
    EXPECT_EQ(page->Selection(), 1);
    ui.messageAnswer = MessageAnswer::Yes;
    EXPECT_EQ(page->Delete(), PageChange::ListAndPage);
    EXPECT_EQ(Ids(), Strings{"r1"});
    EXPECT_EQ(page->Selection(), 0);
    EXPECT_EQ(page->Delete(), PageChange::ListAndPage);
    ExpectNoReaction(*page);
    // 292: Yes and No, the question icon, No as the default
    EXPECT_EQ(ui.asked,
              (Strings{"message|Delete reaction:|Are you sure you want to permanently delete reaction r2?|292",
                       "message|Delete reaction:|Are you sure you want to permanently delete reaction r2?|292",
                       "message|Delete reaction:|Are you sure you want to permanently delete reaction r1?|292"}));
}

TEST_F(ReactionPage, DeletesFromTheMiddle) {
    AddKinetic(*definition, u"r3", u"");
    page->Select(1);
    ui.messageAnswer = MessageAnswer::Yes;
    EXPECT_EQ(page->Delete(), PageChange::ListAndPage);
    EXPECT_EQ(Ids(), (Strings{"r1", "r3"}));
}

TEST_F(ReactionPage, OpensTheExpressionEditor) {
    Reaction(0).rateBasis = RateBasis::Heterogeneous;
    Reaction(0).stoichiometry = {1.0, 1.0};
    EXPECT_FALSE(page->EditExpression(ReactionExpression::Rate));
    EXPECT_FALSE(page->EditExpression(ReactionExpression::EquilibriumConstant));
    EXPECT_FALSE(page->EditExpression(ReactionExpression::Heat));
    EXPECT_EQ(ui.asked, (Strings{"expression|Test package|Rate of reaction \"r1\"|mol/s/kg cat|C(A1)",
                                 "expression|Test package|Equilibrium constant reaction \"r1\"|mol²/m^6|",
                                 "expression|Test package|Heat of reaction \"r1\"|J/mol|-5000"}));
    EXPECT_EQ(Reaction(0).rateEquation, u"C(A1)");
    ui.text = u"rate(";
    EXPECT_TRUE(page->EditExpression(ReactionExpression::Rate));
    ui.text = u"constant(";
    EXPECT_TRUE(page->EditExpression(ReactionExpression::EquilibriumConstant));
    ui.text = u"";
    EXPECT_TRUE(page->EditExpression(ReactionExpression::Heat));
    EXPECT_EQ(Reaction(0).rateEquation, u"rate(");
    EXPECT_EQ(Reaction(0).equilibriumConstantEquation, u"constant(");
    EXPECT_EQ(Reaction(0).heatEquation, u"");
}

TEST_F(ReactionPage, TakesTheTextOfTheWizard) {
    EXPECT_FALSE(page->RunRateWizard());
    EXPECT_EQ(Reaction(0).rateEquation, u"C(A1)");
    ui.text = u"2*A(A1)";
    EXPECT_TRUE(page->RunRateWizard());
    EXPECT_EQ(Reaction(0).rateEquation, u"2*A(A1)");
    EXPECT_EQ(ui.asked, (Strings{"rate|Test package|r1", "rate|Test package|r1"}));
}

TEST_F(ReactionPage, HasItsTexts) {
    EXPECT_EQ(std::size(phaseTexts), 3U);
    EXPECT_EQ(std::u16string_view(phaseTexts[0]), u"Liquid");
    EXPECT_EQ(std::u16string_view(phaseTexts[2]), u"Solid");
    EXPECT_EQ(std::u16string_view(stoichiometryColumns[0].label), u"Stoichiometry");
    EXPECT_EQ(stoichiometryColumns[0].width, 80);
    EXPECT_EQ(std::u16string_view(stoichiometryColumns[1].label), u"Compound");
    EXPECT_EQ(stoichiometryColumns[1].width, 180);
}

}  // namespace
}  // namespace reka::test
