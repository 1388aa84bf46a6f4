// SPDX-License-Identifier: MIT
// What is read out of a property bag, and what of it may be missing or wrong.

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <limits>

#include "persistence/SampleBag.h"

namespace reka::test {
namespace {

class BagLoad : public testing::Test {
protected:
    BagLoad() {
        const CPackageHolder source(*MakeSample());
        source->Save(&bag, 0, 0);
        bag.log.Clear();
    }
    HRESULT Load() { return package->Load(&bag, &errorLog); }
    const ReactionPackDefinition& Loaded() const { return *package->Definition(); }
    const ReactionDefinition& Reaction(std::size_t i) const { return *Loaded().reactions[i]; }

    CFakeBag bag;
    CFakeErrorLog errorLog;
    CPackageHolder package;
};

TEST_F(BagLoad, BringsBackWhatWasSaved) {
    EXPECT_EQ(Load(), S_OK);
    EXPECT_TRUE(errorLog.errors.empty());
    EXPECT_TRUE(package->Initialize() == S_OK);
    EXPECT_FALSE(package->IsDirty() == S_OK);
    EXPECT_EQ(Loaded().workArraySize, 2U);
    EXPECT_EQ(Loaded().pcdFile, u"C:\\data\\x.pcd");
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version11);
    ASSERT_NE(Reaction(0).rateExpression, nullptr);
    EXPECT_EQ(Reaction(0).rateExpression->dependencies, dependency::temperature);
    ASSERT_NE(Reaction(0).heatExpression, nullptr);
    EXPECT_EQ(Reaction(0).equilibriumConstantExpression, nullptr);
    ASSERT_NE(Reaction(1).equilibriumConstantExpression, nullptr);
    EXPECT_TRUE(Reaction(1).phase.IsAbsent());
    CFakeBag again;
    EXPECT_EQ(package->Save(&again, 1, 1), S_OK);
    ASSERT_EQ(again.entries.size(), bag.entries.size());
    for (const auto& [key, value] : again.entries) EXPECT_EQ(Show(value.Get()), bag.Entry(key)) << key;
    EXPECT_EQ(bag.references.Held() + errorLog.references.Held(), 0);
}

TEST_F(BagLoad, ReadsInTheOrderOfWriting) {
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(bag.log.calls,
              Calls("Read", endOfReactionKeys, {"stoichiometry[K]", "stoichiometry[E]", "thermoVersion"}));
}

TEST_F(BagLoad, ReadsAFamilyWholeBeforeItComparesLengths) {
    bag.entries["reactionPhase"] = Strings({u"a"});
    bag.entries.erase("reactionHeatEquation");
    EXPECT_EQ(Load(), E_FAIL);
    EXPECT_EQ(bag.log.calls, Calls("Read", endOfReactionKeys));
    bag.entries["compoundName"] = Strings({u"a"});
    bag.entries.erase("compoundCharge");
    bag.log.Clear();
    EXPECT_EQ(Load(), E_FAIL);
    EXPECT_EQ(bag.log.calls, Calls("Read", endOfCompoundKeys));
    EXPECT_TRUE(errorLog.errors.empty());  // a missing entry is told to nobody, and the lengths weren't looked at
}

TEST_F(BagLoad, LoadsAPackageOfNothing) {
    bag.entries.clear();
    ReactionPackDefinition empty(nullptr);
    const CPackageHolder source(empty);
    source->Save(&bag, 0, 0);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_TRUE(Loaded().compounds.empty());
    EXPECT_TRUE(Loaded().reactions.empty());
    EXPECT_EQ(Loaded().name.View(), u"");
    EXPECT_FALSE(Loaded().name.IsAbsent());
    EXPECT_TRUE(errorLog.errors.empty());
}

TEST_F(BagLoad, DoesWithoutTheOptionalEntries) {
    for (const char* key :
         {"Name", "Description", "PCDFile", "stoichiometry[K]", "stoichiometry[E]", "thermoVersion"}) {
        bag.entries.erase(key);
    }
    EXPECT_EQ(Load(), S_OK);
    EXPECT_TRUE(errorLog.errors.empty());
    EXPECT_TRUE(Loaded().name.IsAbsent());
    EXPECT_TRUE(Loaded().description.IsAbsent());
    EXPECT_EQ(Loaded().pcdFile, ReactionPackDefinition(nullptr).pcdFile);
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{0.0, 0.0}));
}

TEST_F(BagLoad, TakesNullOptionalEntriesForMissingOnes) {
    for (const char* key : {"Name", "Description", "PCDFile"}) bag.entries[key] = Text(nullptr);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_TRUE(Loaded().name.IsAbsent());
    EXPECT_EQ(Loaded().pcdFile, ReactionPackDefinition(nullptr).pcdFile);
}

TEST_F(BagLoad, ReportsOptionalEntriesOfAnotherTypeAndGoesOn) {
    bag.entries["Name"] = Numbers({1.0});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(errorLog.errors, Lines{"Name: unexpected data type"});
    EXPECT_TRUE(Loaded().name.IsAbsent());
}

class RequiredEntry : public BagLoad, public testing::WithParamInterface<const char*> {
protected:
    void ExpectOldDefinitionKept() {
        const auto old = MakePackage({u"old"});
        package->AssignDefinition(old.get());
        EXPECT_EQ(Load(), E_FAIL);
        ASSERT_EQ(Loaded().compounds.size(), 1U);
        EXPECT_EQ(Loaded().compounds[0]->name.View(), u"old");
        EXPECT_TRUE(package->IsDirty() == S_OK);
        const CPackageHolder fresh;
        EXPECT_EQ(fresh->Load(&bag, nullptr), E_FAIL);
        EXPECT_EQ(fresh->Definition(), nullptr);
        EXPECT_FALSE(fresh->Initialize() == S_OK);
    }
};

TEST_P(RequiredEntry, EndsTheLoadWhenItIsMissing) {
    bag.entries.erase(GetParam());
    ExpectOldDefinitionKept();
    EXPECT_TRUE(errorLog.errors.empty());
}
TEST_P(RequiredEntry, EndsTheLoadWhenItHasAnotherType) {
    bag.entries[GetParam()] = Text(u"text");
    ExpectOldDefinitionKept();
    ASSERT_EQ(errorLog.errors.size(), 1U);
    EXPECT_EQ(errorLog.errors[0].rfind(std::string(GetParam()) + ": Expected an array of type ", 0), 0U);
}
TEST_P(RequiredEntry, EndsTheLoadWhenItsLengthDiffers) {
    const std::string key = GetParam();
    const bool isFirst = key == "compoundId" || key == "reactionID";
    const bool isNumber = key == "compoundMolecularWeight" || key == "compoundCharge";
    bag.entries[key] = isNumber ? Numbers({1.0}) : Strings({u"a"});
    ExpectOldDefinitionKept();
    // A first array of another length is told of the second, the first one that differs from it.
    const std::string told = !isFirst ? key : key == "compoundId" ? "compoundName" : "reactionPhase";
    EXPECT_EQ(errorLog.errors, Lines{told + ": array size mismatch"});
}
INSTANTIATE_TEST_SUITE_P(Table, RequiredEntry, testing::ValuesIn(std::begin(fixedKeys) + 3, std::end(fixedKeys)),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(BagLoad, AcceptsAnyLowerBound) {
    bag.entries["compoundId"] = StringArray({u"x", u"y"}, 7);
    bag.entries["compoundMolecularWeight"] = Numbers({1.5, 2.5}, -4);
    bag.entries["stoichiometry[K]"] = Numbers({-3.0, 3.0}, 1);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().compounds[1]->id.View(), u"y");
    EXPECT_EQ(Loaded().compounds[1]->molecularWeight, 2.5);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{-3.0, 3.0}));
}

TEST_F(BagLoad, TakesTheIdentifierForAMissingName) {
    bag.entries["compoundId"] = Strings({u"id0", u"id1"});
    bag.entries["compoundName"] = Strings({nullptr, u"Argon"});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().compounds[0]->name.View(), u"id0");
    EXPECT_EQ(Loaded().compounds[1]->name.View(), u"Argon");
    EXPECT_TRUE(Loaded().compounds[1]->casNumber.IsAbsent());
}

TEST_F(BagLoad, KeepsAnEmptyName) {
    bag.entries["compoundName"] = Strings({u"", u"Argon"});
    bag.entries["compoundCAS"] = Strings({u"", nullptr});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_FALSE(Loaded().compounds[0]->name.IsAbsent());
    EXPECT_EQ(Loaded().compounds[0]->name.View(), u"");
    EXPECT_FALSE(Loaded().compounds[0]->casNumber.IsAbsent());
    EXPECT_TRUE(errorLog.errors.empty());
}

TEST_F(BagLoad, EndsWithSuccessAtACompoundWithoutIdentifier) {
    bag.entries.erase("reactionID");  // not looked at any more
    bag.entries["compoundId"] = Strings({u"a", u"b", nullptr, u"d"});
    for (const char* key : {"compoundName", "compoundCAS", "compoundFormula"}) {
        bag.entries[key] = Strings({u"1", u"2", u"3", u"4"});
    }
    for (const char* key : {"compoundMolecularWeight", "compoundCharge"}) bag.entries[key] = Numbers({1, 2, 3, 4});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().compounds.size(), 2U);
    EXPECT_TRUE(Loaded().reactions.empty());
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(errorLog.errors, Lines{"compoundId: empty compound IDs"});
}

TEST_F(BagLoad, DropsAReactionWithoutIdentifier) {
    bag.entries["reactionID"] = Strings({nullptr, u"E"});
    EXPECT_EQ(Load(), S_OK);
    ASSERT_EQ(Loaded().reactions.size(), 1U);
    EXPECT_EQ(Reaction(0).id.View(), u"E");
    EXPECT_EQ(errorLog.errors, Lines{"reactionID: empty reaction identifier"});
}

TEST_F(BagLoad, ReadsTypeAndRateBasisInAnyCase) {
    bag.entries["reactionType"] = Strings({u"KINETIC", u"equilibrium"});
    bag.entries["reactionRateBasis"] = Strings({u"HETEROGENEOUS", u"homogeneous"});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).type, ReactionType::Kinetic);
    EXPECT_EQ(Reaction(0).rateBasis, RateBasis::Heterogeneous);
    EXPECT_EQ(Reaction(1).type, ReactionType::Equilibrium);
    EXPECT_TRUE(errorLog.errors.empty());
}

TEST_F(BagLoad, DropsAReactionOfAnUnknownTypeWithItsStoichiometry) {
    bag.entries["reactionType"] = Strings({u"Magic", u"Equilibrium"});
    EXPECT_EQ(Load(), S_OK);
    ASSERT_EQ(Loaded().reactions.size(), 1U);
    EXPECT_EQ(errorLog.errors, Lines{"reactionType: invalid value 'Magic'"});
    for (const std::string& call : bag.log.calls) EXPECT_NE(call, "Read stoichiometry[K]");
}

TEST_F(BagLoad, DropsAReactionOfAnUnknownRateBasis) {
    bag.entries["reactionRateBasis"] = Strings({nullptr, u"Homogeneous"});
    EXPECT_EQ(Load(), S_OK);
    ASSERT_EQ(Loaded().reactions.size(), 1U);
    EXPECT_EQ(errorLog.errors, Lines{"reactionRateBasis: invalid value ''"});
}

TEST_F(BagLoad, ComparesTheEquilibriumBasisWithCase) {
    bag.entries["reactionEquilibriumBasis"] = Strings({u"activity", u"Activity"});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).equilibriumBasis, EquilibriumBasis::Molarity);
    EXPECT_EQ(Reaction(1).equilibriumBasis, EquilibriumBasis::Activity);
    EXPECT_EQ(errorLog.errors, Lines{"reactionEquilibriumBasis: invalid value 'activity'"});
    bag.entries["reactionEquilibriumBasis"] = Strings({nullptr, u"Activity"});
    errorLog.errors.clear();
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(errorLog.errors, Lines{"reactionEquilibriumBasis: invalid value ''"});
}

TEST_F(BagLoad, KeepsAnExpressionThatDoesNotParse) {
    bag.entries["reactionRateEquation"] = Strings({u"2*", nullptr});
    bag.entries["reactionEquilibriumConstantEquation"] = Strings({nullptr, u"T T"});
    bag.entries["reactionHeatEquation"] = Strings({u"#", u"5"});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).rateEquation, u"2*");
    EXPECT_EQ(Reaction(0).rateExpression, nullptr);
    EXPECT_EQ(Reaction(1).equilibriumConstantExpression, nullptr);
    ASSERT_NE(Reaction(1).heatExpression, nullptr);
    EXPECT_EQ(
        errorLog.errors,
        (Lines{"reactionRateEquation: error parsing expression for reaction K:\r\nsyntax error, unexpected $end\r\n",
               "reactionHeatEquation: error parsing expression for reaction K:\r\ninvalid character: '#'\r\nsyntax "
               "error, unexpected $end\r\n",
               "reactionEquilibriumConstantEquation: error parsing expression for reaction E:\r\nsyntax error, "
               "unexpected T\r\n"}));
    for (const std::string& source : errorLog.sources) EXPECT_EQ(source, "REKA");
}

TEST_F(BagLoad, TakesAnEmptyTextForAnExpressionThatDoesNotParse) {
    bag.entries["reactionRateEquation"] = Strings({u"", nullptr});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).rateEquation, u"");
    EXPECT_EQ(Reaction(0).rateExpression, nullptr);
    EXPECT_EQ(errorLog.errors, Lines{"reactionRateEquation: error parsing expression for reaction K:\r\nsyntax error, "
                                     "unexpected $end\r\n"});
}

TEST_F(BagLoad, ReportsAStoichiometryOfAnotherLength) {
    bag.entries["stoichiometry[K]"] = Numbers({1.0, 2.0, 3.0});
    bag.entries["stoichiometry[E]"] = Strings({u"1", u"2"});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{0.0, 0.0}));
    EXPECT_EQ(errorLog.errors, (Lines{"stoichiometry[K]: array size mismatch",
                                      "stoichiometry[E]: Expected an array of type double precision"}));
}

TEST_F(BagLoad, TakesAnEmptyValueForAStoichiometryOfNoLength) {
    bag.entries["stoichiometry[K]"] = CVariant();
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Reaction(0).stoichiometry, (std::vector<double>{0.0, 0.0}));
    EXPECT_EQ(errorLog.errors, Lines{"stoichiometry[K]: array size mismatch"});
}

TEST_F(BagLoad, ReportsAThermoVersionThatIsNullOrNoText) {
    bag.entries["thermoVersion"] = Text(nullptr);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(errorLog.errors, Lines{"thermoVersion: invalid value ''"});
    errorLog.errors.clear();
    bag.entries["thermoVersion"] = Numbers({1.1});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(errorLog.errors, Lines{"thermoVersion: unexpected data type"});
}

TEST_F(BagLoad, ReportsAnUnknownThermoVersion) {
    bag.entries["thermoVersion"] = Text(u"1.2");
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().thermoVersion, ThermoVersion::Version10);
    EXPECT_EQ(errorLog.errors, Lines{"thermoVersion: invalid value '1.2'"});
}

TEST_F(BagLoad, KeepsNumbersBitForBit) {
    const double infinity = std::numeric_limits<double>::infinity();
    bag.entries["compoundMolecularWeight"] = Numbers({-0.0, std::numeric_limits<double>::denorm_min()});
    bag.entries["compoundCharge"] = Numbers({infinity, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(Load(), S_OK);
    EXPECT_TRUE(std::signbit(Loaded().compounds[0]->molecularWeight));
    EXPECT_EQ(Loaded().compounds[1]->molecularWeight, std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(Loaded().compounds[0]->charge, infinity);
    EXPECT_TRUE(std::isnan(Loaded().compounds[1]->charge));
}

TEST_F(BagLoad, FailsOrForgivesWhateverReadFails) {
    // Optional are name, description and file (1 to 3), the stoichiometries and the version (18 to 20).
    for (int n = 1; n <= 20; ++n) {
        bag.log.Clear();
        bag.log.failAt = n;
        const CPackageHolder fresh;
        EXPECT_EQ(fresh->Load(&bag, &errorLog), n <= 3 || n >= 18 ? S_OK : E_FAIL) << n;
    }
    EXPECT_TRUE(errorLog.errors.empty());
    EXPECT_EQ(bag.references.Held() + errorLog.references.Held(), 0);
}

TEST_F(BagLoad, GivesTheNewDefinitionTheContext) {
    CFakeObject context;
    package->put_simulationContext(&context);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().simulationContext.Get(), &context);
    EXPECT_EQ(context.references.Held(), 2);
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(context.references.Held(), 2);
    package->Terminate();
    EXPECT_EQ(context.references.Held(), 0);
}

TEST_F(BagLoad, SurvivesABagThatLoadsThePackageMeanwhile) {
    bool isNested = false;
    bag.log.onCall = [&](const std::string& call) {
        if (call == "Read reactionID" && !std::exchange(isNested, true)) package->Load(&bag, nullptr);
    };
    EXPECT_EQ(Load(), S_OK);
    EXPECT_EQ(Loaded().reactions.size(), 2U);
}

TEST(PersistPropertyBag, TellsItsClassAndNeedsABag) {
    const CPackageHolder package;
    CLSID classId = {};
    EXPECT_EQ(package->GetClassID(&classId), S_OK);
    EXPECT_NE(classId, CLSID{});
    EXPECT_EQ(package->GetClassID(nullptr), E_POINTER);
    EXPECT_EQ(package->InitNew(), S_OK);
    EXPECT_EQ(package->Definition(), nullptr);
    EXPECT_EQ(package->Load(nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace reka::test
