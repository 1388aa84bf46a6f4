// SPDX-License-Identifier: MIT
// What a simulator is asked on the way from its material templates to the compounds of one, and what is made of its
// answers.

#include "compounds/MaterialCompounds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/FakeMaterialTemplates.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Lines = std::vector<std::string>;
using Texts = std::vector<std::u16string>;
constexpr auto version10 = ThermoVersion::Version10;
constexpr auto version11 = ThermoVersion::Version11;
const COwnArithmetic arithmetic;

TEST(MissingNumber, IsNoNumberOrTheMostNegativeOne) {
    EXPECT_TRUE(IsMissingNumber(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(IsMissingNumber(-1.7976931348623157e308));
    EXPECT_FALSE(IsMissingNumber(-1.7976931348623155e308));
    EXPECT_FALSE(IsMissingNumber(0.0));
    EXPECT_FALSE(IsMissingNumber(std::numeric_limits<double>::max()));
    EXPECT_FALSE(IsMissingNumber(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(IsMissingNumber(-std::numeric_limits<double>::infinity()));
}

class MaterialTemplates : public testing::Test {
protected:
    ~MaterialTemplates() override { EXPECT_EQ(simulator.Held(), 0); }

    /// The text of the failure, "(no icon)" in front if the box has none; "made" for success.
    std::string Make(const char16_t* name) {
        MaterialFailure failure = {u"left", false};
        const auto material = MakeTemplateMaterial(simulator.Context(), name, failure, arithmetic);
        EXPECT_EQ(material.Get(), material ? simulator.material.Dispatch() : nullptr);
        EXPECT_EQ(simulator.context.references.Held() + simulator.materialTemplate.references.Held(), 0);
        EXPECT_TRUE(!material || failure.text.empty());
        return material ? "made" : (failure.hasIcon ? "" : "(no icon)") + Utf8FromUtf16(failure.text);
    }

    FakeTemplateSimulator simulator;
};

TEST_F(MaterialTemplates, AreListedInTheOrderOfTheSimulator) {
    simulator.context.templateNames = StringArray({u"Salts", u"", u"Amines"}, 5);
    EXPECT_EQ(ListMaterialTemplates(simulator.Context(), arithmetic), (Texts{u"Salts", u"", u"Amines"}));
    EXPECT_EQ(simulator.log.calls, Lines{"get_MaterialTemplates()"});
}

TEST_F(MaterialTemplates, AreNoneForWhateverReason) {
    EXPECT_EQ(ListMaterialTemplates(nullptr, arithmetic), Texts{});
    simulator.context.offersSystem = false;
    EXPECT_EQ(ListMaterialTemplates(simulator.Context(), arithmetic), Texts{});
    EXPECT_EQ(simulator.log.calls, Lines{});
    simulator.context.offersSystem = true;
    simulator.log.failAt = 1;
    EXPECT_EQ(ListMaterialTemplates(simulator.Context(), arithmetic), Texts{});
    simulator.log.failAt = 0;
    for (int answer = 0; answer < 4; ++answer) {
        simulator.context.templateNames = answer == 0   ? Strings({})
                                          : answer == 1 ? Numbers({1.0})
                                          : answer == 2 ? TwoDimensions(VT_BSTR)
                                                        : CVariant();
        EXPECT_EQ(ListMaterialTemplates(simulator.Context(), arithmetic), Texts{}) << answer;
    }
}

TEST_F(MaterialTemplates, MakeAMaterial) {
    EXPECT_EQ(Make(u"Salts"), "made");
    EXPECT_EQ(simulator.log.calls, (Lines{"CreateMaterialTemplate('Salts')", "CreateMaterialObject()"}));
}

TEST_F(MaterialTemplates, MakeNothingWithoutAContextThatOffersThem) {
    MaterialFailure failure = {u"left", false};
    EXPECT_FALSE(MakeTemplateMaterial(nullptr, u"Salts", failure, arithmetic));
    EXPECT_EQ(failure.text, u"");
    simulator.context.offersSystem = false;
    EXPECT_EQ(Make(u"Salts"), "");  // the user isn't told
    EXPECT_EQ(simulator.log.calls, Lines{});
}

TEST_F(MaterialTemplates, TellWhichStepFailed) {
    const std::string noTemplate = "Failed to create selected material template";
    const std::string noMaterial = "(no icon)Failed to create material object from selected material template";
    simulator.log.failAt = 1;
    EXPECT_EQ(Make(u"Salts"), noTemplate);
    EXPECT_EQ(simulator.log.calls.size(), 1U);
    simulator.log.Clear();
    simulator.log.failAt = 2;
    EXPECT_EQ(Make(u"Salts"), noMaterial);
    simulator.log.failAt = 0;
    simulator.materialTemplate.material = nullptr;
    EXPECT_EQ(Make(u"Salts"), noMaterial);
    simulator.materialTemplate.offersTemplate = false;
    EXPECT_EQ(Make(u"Salts"), "Failed to obtain ICapeThermoMaterialTemplate interface from selected material template");
    simulator.context.made = nullptr;
    EXPECT_EQ(Make(u"Salts"), noTemplate);
}

/// Reads the compounds of the simulator's material.
class MaterialCompoundsOf : public testing::Test {
protected:
    ~MaterialCompoundsOf() override { EXPECT_EQ(simulator.Held(), 0); }

    /// The text of the failure; empty for success.
    std::string Read(ThermoVersion version) {
        simulator.log.Clear();
        compounds.names = {u"left"};
        compounds.charges = {1.0, 2.0};
        std::u16string errorText;
        const bool isRead =
            ReadMaterialCompounds(*simulator.material.Dispatch(), version, compounds, errorText, arithmetic);
        EXPECT_EQ(isRead, errorText.empty());
        if (isRead) {
            for (const std::size_t size : {compounds.ids.size(), compounds.formulas.size(), compounds.casNumbers.size(),
                                           compounds.molecularWeights.size(), compounds.charges.size()}) {
                EXPECT_EQ(size, compounds.names.size());
            }
        }
        return Utf8FromUtf16(errorText);
    }

    FakeTemplateSimulator simulator;
    MaterialCompounds compounds;
};

// Version 1.1

class CompoundListOfAMaterial : public MaterialCompoundsOf {};

TEST_F(CompoundListOfAMaterial, GivesAllButTheCharges) {
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.ids, (Texts{u"H2O", u"Na+", u"Fe"}));
    EXPECT_EQ(compounds.names, (Texts{u"Water", u"Sodium ion", u"Fe"}));  // without a name: its identifier
    EXPECT_EQ(compounds.formulas, (Texts{u"H2O", u"Na", u""}));
    EXPECT_EQ(compounds.casNumbers, (Texts{u"7732-18-5", u"17341-25-2", u""}));
    EXPECT_EQ(compounds.molecularWeights, (std::vector<double>{18.015, 22.99, -1.7976931348623157e308}));
    ASSERT_EQ(compounds.charges.size(), 3U);
    EXPECT_EQ(compounds.charges[0], 0.0);
    EXPECT_EQ(compounds.charges[1], 1.0);
    EXPECT_TRUE(std::isnan(compounds.charges[2]));
    EXPECT_EQ(simulator.log.calls,
              (Lines{"GetCompoundList()", "GetCompoundConstant(['charge'], ['H2O'])",
                     "GetCompoundConstant(['charge'], ['Na+'])", "GetCompoundConstant(['charge'], ['Fe'])"}));
}

TEST_F(CompoundListOfAMaterial, TakesAnEmptyNameForNone) {
    simulator.material.names = StringArray({u"", u"b", u""}, 0);
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.names, (Texts{u"H2O", u"b", u"Fe"}));
}

TEST_F(CompoundListOfAMaterial, MayHoldACompoundWithoutAnIdentifier) {
    simulator.material.ids = Strings({u"H2O", nullptr, u"Fe"});
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.ids, (Texts{u"H2O", u"", u"Fe"}));
    EXPECT_EQ(compounds.names[1], u"Sodium ion");
    EXPECT_EQ(simulator.log.calls[2], "GetCompoundConstant(['charge'], [null])");
}

TEST_F(CompoundListOfAMaterial, CountsWithAResultThatSaysMoreThanSuccess) {
    simulator.material.listResult = S_FALSE;
    simulator.material.constantResult = S_FALSE;
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.charges[1], 1.0);
}

TEST_F(CompoundListOfAMaterial, MayBeEmpty) {
    simulator.material.ids.Reset();
    simulator.material.formulas.Reset();
    simulator.material.names.Reset();
    simulator.material.molecularWeights.Reset();
    simulator.material.casNumbers.Reset();
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.names, Texts{});
    EXPECT_EQ(simulator.log.calls, Lines{"GetCompoundList()"});
}

TEST_F(CompoundListOfAMaterial, NeedsItsOwnInterface) {
    simulator.material.offersCompounds = false;  // the one of version 1.0 is there
    EXPECT_EQ(Read(version11), "Failed to get ICapeThermoCompounds interface from material object");
    EXPECT_EQ(simulator.log.calls, Lines{});
}

// By the rules of the platform a failed question has no answer; not every host knows them.
TEST_F(CompoundListOfAMaterial, IsNotReadThroughWhatAFailedQuestionLeaves) {
    CallLog log;
    CRefusing<CFakeCompoundMaterial> material(log);
    material.refused = ICapeThermoCompounds::iid;
    std::u16string errorText;
    EXPECT_FALSE(ReadMaterialCompounds(*material.Dispatch(), version11, compounds, errorText, arithmetic));
    EXPECT_EQ(errorText, u"Failed to get ICapeThermoCompounds interface from material object");
    EXPECT_EQ(log.calls, Lines{});
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(CompoundListOfAMaterial, IsNotReadFromAFailedCall) {
    simulator.log.failAt = 1;
    EXPECT_EQ(Read(version11), "Failed to get list of compound IDs from material object");
    EXPECT_EQ(simulator.log.calls, Lines{"GetCompoundList()"});
}

TEST_F(CompoundListOfAMaterial, DoesNotNeedBoilingTemperatures) {
    simulator.material.boilingTemperatures = Strings({u"hot"});
    EXPECT_EQ(Read(version11), "");
    simulator.material.boilingTemperatures.Reset();
    EXPECT_EQ(Read(version11), "");
}

struct BadListCase {
    const char* name;
    CVariant CFakeCompoundMaterial::*list;
    CVariant (*answer)();
    std::string errorText;
};
const std::string notStrings = "invalid type; array of type BSTR expected";
const std::string notCounted = " does not match number of compounds in GetCompoundList from material object";
CVariant ThreeNumbers() {
    return Numbers({1.0, 2.0, 3.0});
}
CVariant ThreeStrings() {
    return Strings({u"a", u"b", u"c"});
}
CVariant TwoStrings() {
    return Strings({u"a", u"b"});
}
CVariant NoStrings() {
    return Strings({});
}
CVariant ShiftedStrings() {
    return StringArray({u"a", u"b", u"c"}, 1);
}
CVariant TableOfStrings() {
    return TwoDimensions(VT_BSTR);
}
CVariant OneString() {
    return Text(u"a");
}
const BadListCase badListCases[] = {
    {"IdsThatAreNumbers", &CFakeCompoundMaterial::ids, ThreeNumbers,
     "Invalid format for compound names from material object: " + notStrings},
    {"IdsOfNoElements", &CFakeCompoundMaterial::ids, NoStrings,
     "Invalid format for compound names from material object: unexpected array dimensions; negative upper bound"},
    {"IdsWithAnotherLowerBound", &CFakeCompoundMaterial::ids, ShiftedStrings,
     "Invalid format for compound names from material object: unexpected array dimensions; expected 0 for lower "
     "bound"},
    {"IdsInATable", &CFakeCompoundMaterial::ids, TableOfStrings,
     "Invalid format for compound names from material object: unexpected dimension; 1-dimensional array expected"},
    {"TooFewIds", &CFakeCompoundMaterial::ids, TwoStrings, "Number of compound formulas" + notCounted},
    {"FormulasThatAreNumbers", &CFakeCompoundMaterial::formulas, ThreeNumbers,
     "Invalid format for compound formulas from material object: " + notStrings},
    {"TooFewFormulas", &CFakeCompoundMaterial::formulas, TwoStrings, "Number of compound formulas" + notCounted},
    {"NoFormulas", &CFakeCompoundMaterial::formulas, [] { return CVariant(); },
     "Number of compound formulas" + notCounted},
    {"NamesThatAreOneText", &CFakeCompoundMaterial::names, OneString,
     "Invalid format for compound names from material object: " + notStrings},
    {"TooFewNames", &CFakeCompoundMaterial::names, TwoStrings, "Number of compound names" + notCounted},
    {"WeightsThatAreTexts", &CFakeCompoundMaterial::molecularWeights, ThreeStrings,
     "Invalid format for molecular weights from material object: invalid type; array of type REAL expected"},
    {"TooManyWeights", &CFakeCompoundMaterial::molecularWeights,
     [] {
         return Numbers({1.0, 2.0, 3.0, 4.0});
     },
     "Number of molecular weights" + notCounted},
    {"CasNumbersThatAreNumbers", &CFakeCompoundMaterial::casNumbers, ThreeNumbers,
     "Invalid format for CAS numbers from material object: " + notStrings},
    {"TooFewCasNumbers", &CFakeCompoundMaterial::casNumbers, TwoStrings, "Number of CAS numbers" + notCounted},
};
class BadCompoundLists : public MaterialCompoundsOf, public testing::WithParamInterface<BadListCase> {};
TEST_P(BadCompoundLists, AreToldAndEndTheReading) {
    simulator.material.*GetParam().list = GetParam().answer();
    EXPECT_EQ(Read(version11), GetParam().errorText);
    EXPECT_EQ(simulator.log.calls, Lines{"GetCompoundList()"});
}
INSTANTIATE_TEST_SUITE_P(Table, BadCompoundLists, testing::ValuesIn(badListCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(CompoundListOfAMaterial, IsCheckedInTheOrderOfItsComplaints) {
    const auto spoil = [this](CVariant CFakeCompoundMaterial::*list) { simulator.material.*list = OneString(); };
    spoil(&CFakeCompoundMaterial::casNumbers);
    EXPECT_EQ(Read(version11).substr(0, 30), "Invalid format for CAS numbers");
    spoil(&CFakeCompoundMaterial::molecularWeights);
    EXPECT_EQ(Read(version11).substr(0, 36), "Invalid format for molecular weights");
    simulator.material.names = TwoStrings();
    EXPECT_EQ(Read(version11).substr(0, 24), "Number of compound names");
    spoil(&CFakeCompoundMaterial::formulas);
    EXPECT_EQ(Read(version11).substr(0, 36), "Invalid format for compound formulas");
    spoil(&CFakeCompoundMaterial::ids);
    EXPECT_EQ(Read(version11).substr(0, 33), "Invalid format for compound names");
}

// What an answer to the question for one constant may look like, besides a list of one variant.
struct ConstantAnswerCase {
    const char* name;
    CVariant (*answer)();
};
CVariant ListOf(CVariant first, CVariant second = CVariant(), bool hasSecond = false) {
    std::vector<CVariant> elements;
    elements.push_back(std::move(first));
    if (hasSecond) elements.push_back(std::move(second));
    return Variants(std::move(elements));
}
CVariant WholeNumber() {
    CVariant value;
    value.Get().vt = VT_I4;
    value.Get().lVal = 1;
    return value;
}
const ConstantAnswerCase uselessAnswers[] = {
    {"Nothing", [] { return CVariant(); }},
    {"APlainNumber", [] { return FakeTemplateSimulator::Number(1.0); }},
    {"APlainText", OneString},
    {"AListOfNumbers", [] { return Numbers({1.0}); }},
    {"AListOfTexts", [] { return Strings({u"x"}); }},
    {"AListOfNone", [] { return Variants({}); }},
    {"AListOfTwo", [] { return ListOf(FakeTemplateSimulator::Number(1.0), FakeTemplateSimulator::Number(1.0), true); }},
    {"AListOfTwoTexts", [] { return ListOf(OneString(), OneString(), true); }},
    {"AListOfAWholeNumber", [] { return ListOf(WholeNumber()); }},
    {"AListOfNothing", [] { return ListOf(CVariant()); }},
    {"ATable", [] { return TwoDimensions(VT_VARIANT); }},
};
class UselessConstants : public MaterialCompoundsOf, public testing::WithParamInterface<ConstantAnswerCase> {};
TEST_P(UselessConstants, AreNoFailureByVersion11) {
    simulator.material.constants["charge of Na+"] = GetParam().answer();
    EXPECT_EQ(Read(version11), "");
    EXPECT_EQ(compounds.names[1], u"Sodium ion");
    EXPECT_TRUE(std::isnan(compounds.charges[1]));
    EXPECT_EQ(compounds.charges[0], 0.0);
}
TEST_P(UselessConstants, AreNoFailureByVersion10) {
    for (const char* what : {"iupacName", "chemicalFormula", "casRegistryNumber", "molecularWeight", "charge"}) {
        simulator.material.constants[what + std::string(" of H2O")] = GetParam().answer();
    }
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.names[0], u"H2O");
    EXPECT_EQ(compounds.formulas[0], u"");
    EXPECT_EQ(compounds.casNumbers[0], u"");
    EXPECT_TRUE(std::isnan(compounds.molecularWeights[0]));
    EXPECT_TRUE(std::isnan(compounds.charges[0]));
    EXPECT_EQ(compounds.charges[1], 1.0);
}
INSTANTIATE_TEST_SUITE_P(Table, UselessConstants, testing::ValuesIn(uselessAnswers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(CompoundListOfAMaterial, TakesNoChargeFromATextOrAFailedCall) {
    simulator.SetConstant("charge of Na+", Text(u"1"));
    EXPECT_EQ(Read(version11), "");
    EXPECT_TRUE(std::isnan(compounds.charges[1]));
    simulator.log.failAt = 2;  // the charge of water, given along with a failure
    EXPECT_EQ(Read(version11), "");
    EXPECT_TRUE(std::isnan(compounds.charges[0]));
    EXPECT_EQ(simulator.log.calls.size(), 4U);
}

// Version 1.0

class ConstantsOfAMaterial : public MaterialCompoundsOf {};

TEST_F(ConstantsOfAMaterial, AreAskedOneByOne) {
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.ids, (Texts{u"H2O", u"Na+", u"Fe"}));
    EXPECT_EQ(compounds.names, (Texts{u"oxidane", u"Na+", u"Fe"}));
    EXPECT_EQ(compounds.formulas, (Texts{u"H2O", u"Na", u""}));
    EXPECT_EQ(compounds.casNumbers, (Texts{u"7732-18-5", u"", u""}));
    EXPECT_EQ(compounds.molecularWeights[0], 18.015);
    EXPECT_EQ(compounds.molecularWeights[1], 22.99);
    EXPECT_TRUE(std::isnan(compounds.molecularWeights[2]));
    EXPECT_EQ(compounds.charges[0], 0.0);
    EXPECT_EQ(compounds.charges[1], 1.0);
    EXPECT_TRUE(std::isnan(compounds.charges[2]));
    Lines calls = {"get_ComponentIds()"};
    for (const std::string id : {"H2O", "Na+", "Fe"}) {
        for (const std::string what :
             {"iupacName", "chemicalFormula", "casRegistryNumber", "molecularWeight", "charge"}) {
            calls.push_back("GetComponentConstant(['" + what + "'], ['" + id + "'])");
        }
    }
    EXPECT_EQ(simulator.log.calls, calls);
}

TEST_F(ConstantsOfAMaterial, KeepTheirKind) {
    simulator.SetConstant("iupacName of H2O", FakeTemplateSimulator::Number(1.0));
    simulator.SetConstant("chemicalFormula of H2O", FakeTemplateSimulator::Number(1.0));
    simulator.SetConstant("casRegistryNumber of H2O", FakeTemplateSimulator::Number(1.0));
    simulator.SetConstant("molecularWeight of H2O", Text(u"18"));
    simulator.SetConstant("charge of H2O", Text(u"0"));
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.names[0], u"H2O");
    EXPECT_EQ(compounds.formulas[0], u"");
    EXPECT_EQ(compounds.casNumbers[0], u"");
    EXPECT_TRUE(std::isnan(compounds.molecularWeights[0]));
    EXPECT_TRUE(std::isnan(compounds.charges[0]));
}

TEST_F(ConstantsOfAMaterial, MayBeAnEmptyText) {
    simulator.SetConstant("iupacName of H2O", Text(u""));
    simulator.SetConstant("iupacName of Na+", Text(nullptr));
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.names, (Texts{u"", u"", u"Fe"}));  // a text is a text
}

TEST_F(ConstantsOfAMaterial, NeedTheirOwnInterface) {
    simulator.material.offersMaterialObject = false;  // the one of version 1.1 is there
    EXPECT_EQ(Read(version10), "Failed to get ICapeThermoMaterialObject interface from material object");
    EXPECT_EQ(simulator.log.calls, Lines{});
}

TEST_F(ConstantsOfAMaterial, NeedAListOfIdentifiers) {
    simulator.log.failAt = 1;
    EXPECT_EQ(Read(version10), "Failed to get list of compound IDs from material object");
    simulator.log.failAt = 0;
    simulator.material.componentIds.Reset();
    EXPECT_EQ(Read(version10), "Invalid list of compound IDs from material object: expected a string array");
    simulator.material.componentIds = TwoDimensions(VT_BSTR);
    EXPECT_EQ(Read(version10),
              "Invalid list of compound IDs from material object: expected a string array with dimension of 1");
    EXPECT_EQ(simulator.log.calls, Lines{"get_ComponentIds()"});
}

TEST_F(ConstantsOfAMaterial, AreThoseOfAnyListOfIdentifiers) {
    simulator.material.componentIds = StringArray({u"Na+"}, -3);
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.names, Texts{u"Na+"});
    simulator.material.componentIds = Strings({});
    EXPECT_EQ(Read(version10), "");
    EXPECT_EQ(compounds.names, Texts{});
}

TEST_F(ConstantsOfAMaterial, MayFailOneByOne) {
    const std::size_t count = 1 + 3 * 5;
    for (int failAt = 2; failAt <= static_cast<int>(count); ++failAt) {
        simulator.log.failAt = failAt;
        EXPECT_EQ(Read(version10), "") << failAt;
        EXPECT_EQ(simulator.log.calls.size(), count) << failAt;
        EXPECT_EQ(compounds.names[0], failAt == 2 ? u"H2O" : u"oxidane") << failAt;
        EXPECT_EQ(compounds.formulas[0], failAt == 3 ? u"" : u"H2O") << failAt;
        EXPECT_EQ(compounds.casNumbers[0], failAt == 4 ? u"" : u"7732-18-5") << failAt;
        EXPECT_EQ(std::isnan(compounds.molecularWeights[0]), failAt == 5) << failAt;
        EXPECT_EQ(std::isnan(compounds.charges[0]), failAt == 6) << failAt;
    }
}

TEST(MaterialCompoundsVersion, IsTheLaterOneForAnyValueButTheFirst) {
    FakeTemplateSimulator simulator;
    MaterialCompounds compounds;
    std::u16string errorText;
    EXPECT_TRUE(ReadMaterialCompounds(*simulator.material.Dispatch(), static_cast<ThermoVersion>(7), compounds,
                                      errorText, arithmetic));
    EXPECT_EQ(simulator.log.calls[0], "GetCompoundList()");
}

}  // namespace
}  // namespace reka::test
