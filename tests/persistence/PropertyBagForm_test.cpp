#include "persistence/PropertyBagForm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Builders.h"
#include "support/FakeBag.h"

namespace reka::test {
namespace {

using Lines = std::vector<std::string>;

/// Ethanol and argon with one reaction of each kind.
std::unique_ptr<ReactionPackDefinition> MakeSample() {
    auto definition = MakePackage({u"Ethanol", u"Argon"});
    definition->description = CBstr::Make(u"A sample");
    definition->pcdFile = u"C:\\data\\x.pcd";
    definition->thermoVersion = ThermoVersion::Version11;
    definition->compounds[0]->casNumber = CBstr::Make(u"64-17-5");
    definition->compounds[0]->formula = CBstr::Make(u"C2H6O");
    definition->compounds[0]->molecularWeight = 46.069;
    definition->compounds[1]->charge = -1.0;
    ReactionDefinition& kinetic = AddKinetic(*definition, u"K", u"2*T");
    kinetic.stoichiometry = {-1.0, 0.5};
    kinetic.rateBasis = RateBasis::Heterogeneous;
    SetHeat(*definition, kinetic, u"-1e3");
    ReactionDefinition& equilibrium = AddEquilibrium(*definition, u"E", u"EXP(X(Argon))");
    equilibrium.equilibriumBasis = EquilibriumBasis::MoleFraction;
    equilibrium.phase.Reset();
    return definition;
}

class BagSave : public testing::Test {
protected:
    HRESULT Save(const ReactionPackDefinition& definition, BOOL clearDirty = 1) {
        package->AssignDefinition(&definition);
        return package->Save(&bag, clearDirty, 0);
    }
    CFakeBag bag;
    CPackageHolder package;
};

TEST_F(BagSave, WritesTheEntriesInTheirOrder) {
    EXPECT_EQ(Save(*MakeSample()), S_OK);
    EXPECT_EQ(bag.log.calls, (Lines{"Write Name",
                                    "Write Description",
                                    "Write PCDFile",
                                    "Write compoundId",
                                    "Write compoundName",
                                    "Write compoundCAS",
                                    "Write compoundFormula",
                                    "Write compoundMolecularWeight",
                                    "Write compoundCharge",
                                    "Write reactionID",
                                    "Write reactionPhase",
                                    "Write reactionType",
                                    "Write reactionRateBasis",
                                    "Write reactionRateEquation",
                                    "Write reactionEquilibriumBasis",
                                    "Write reactionEquilibriumConstantEquation",
                                    "Write reactionHeatEquation",
                                    "Write stoichiometry[K]",
                                    "Write stoichiometry[E]",
                                    "Write thermoVersion"}));
    EXPECT_EQ(bag.Entry("Name"), "'Test package'");
    EXPECT_EQ(bag.Entry("Description"), "'A sample'");
    EXPECT_EQ(bag.Entry("PCDFile"), "'C:\\data\\x.pcd'");
    EXPECT_EQ(bag.Entry("compoundId"), "['Ethanol', 'Argon']");
    EXPECT_EQ(bag.Entry("compoundName"), "['Ethanol', 'Argon']");
    EXPECT_EQ(bag.Entry("compoundCAS"), "['64-17-5', null]");
    EXPECT_EQ(bag.Entry("compoundFormula"), "['C2H6O', null]");
    EXPECT_EQ(bag.Entry("compoundMolecularWeight"), "[46.069, 0]");
    EXPECT_EQ(bag.Entry("compoundCharge"), "[0, -1]");
    EXPECT_EQ(bag.Entry("reactionID"), "['K', 'E']");
    EXPECT_EQ(bag.Entry("reactionPhase"), "['Liquid', null]");
    EXPECT_EQ(bag.Entry("reactionType"), "['Kinetic', 'Equilibrium']");
    EXPECT_EQ(bag.Entry("reactionRateBasis"), "['Heterogeneous', 'Homogeneous']");
    EXPECT_EQ(bag.Entry("reactionRateEquation"), "['2*T', null]");
    EXPECT_EQ(bag.Entry("reactionEquilibriumBasis"), "['Molarity', 'MoleFraction']");
    EXPECT_EQ(bag.Entry("reactionEquilibriumConstantEquation"), "[null, 'EXP(X(Argon))']");
    EXPECT_EQ(bag.Entry("reactionHeatEquation"), "['-1e3', null]");
    EXPECT_EQ(bag.Entry("stoichiometry[K]"), "[-1, 0.5]");
    EXPECT_EQ(bag.Entry("stoichiometry[E]"), "[0, 0]");
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.1'");
    EXPECT_FALSE(package->HasUnsavedChanges());
}

TEST_F(BagSave, WritesEmptyListsAsEmptyValues) {
    ReactionPackDefinition definition(nullptr);
    definition.pcdFile.clear();
    EXPECT_EQ(Save(definition), S_OK);
    EXPECT_EQ(bag.Entry("Name") + bag.Entry("Description"), "''''");
    EXPECT_EQ(bag.Entry("PCDFile"), "null");
    for (const char* key :
         {"compoundId", "compoundName", "compoundCAS", "compoundFormula", "compoundMolecularWeight", "compoundCharge",
          "reactionID", "reactionPhase", "reactionType", "reactionRateBasis", "reactionRateEquation",
          "reactionEquilibriumBasis", "reactionEquilibriumConstantEquation", "reactionHeatEquation"}) {
        EXPECT_EQ(bag.Entry(key), "empty") << key;
    }
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.0'");
    AddKinetic(definition, u"r", u"1");
    EXPECT_EQ(Save(definition), S_OK);
    EXPECT_EQ(bag.Entry("stoichiometry[r]"), "empty");
}

TEST_F(BagSave, EndsBehindTheCompoundsForAnUnknownBasis) {
    for (const std::int32_t basis : {6, -1}) {
        const auto definition = MakeSample();
        definition->reactions[1]->equilibriumBasis = static_cast<EquilibriumBasis>(basis);
        bag.log.Clear();
        EXPECT_EQ(Save(*definition), E_FAIL);
        EXPECT_EQ(bag.log.calls.back(), "Write compoundCharge");
        EXPECT_TRUE(package->HasUnsavedChanges());
    }
}

TEST_F(BagSave, TakesOtherValuesOfTypeAndBasesForTheFirst) {
    const auto definition = MakeSample();
    definition->reactions[0]->type = static_cast<ReactionType>(7);
    definition->reactions[0]->rateBasis = static_cast<RateBasis>(7);
    definition->thermoVersion = static_cast<ThermoVersion>(7);
    EXPECT_EQ(Save(*definition), S_OK);
    EXPECT_EQ(bag.Entry("reactionType"), "['Equilibrium', 'Equilibrium']");
    EXPECT_EQ(bag.Entry("reactionRateBasis"), "['Homogeneous', 'Homogeneous']");
    EXPECT_EQ(bag.Entry("thermoVersion"), "'1.0'");
}

TEST_F(BagSave, EndsAtTheFirstEntryThatCannotBeWritten) {
    for (int n = 1; n <= 20; ++n) {
        bag.log.Clear();
        bag.log.failAt = n;
        EXPECT_EQ(Save(*MakeSample()), E_FAIL);
        EXPECT_EQ(static_cast<int>(bag.log.calls.size()), n);
        EXPECT_TRUE(package->HasUnsavedChanges());
    }
    EXPECT_EQ(bag.references.Held(), 0);
}

TEST_F(BagSave, KeepsTheDirtyFlagUnlessToldToClearIt) {
    EXPECT_EQ(Save(*MakeSample(), 0), S_OK);
    EXPECT_TRUE(package->HasUnsavedChanges());
}

TEST_F(BagSave, NeedsADefinitionAndABag) {
    EXPECT_EQ(package->Save(&bag, 1, 1), E_UNEXPECTED);
    package->AssignDefinition(MakeSample().get());
    EXPECT_EQ(package->Save(nullptr, 1, 1), E_POINTER);
}

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
    EXPECT_TRUE(package->IsResolvedOrLoaded());
    EXPECT_FALSE(package->HasUnsavedChanges());
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
    ASSERT_EQ(bag.log.calls.size(), 20U);
    EXPECT_EQ(bag.log.calls[0], "Read Name");
    EXPECT_EQ(bag.log.calls[3], "Read compoundId");
    EXPECT_EQ(bag.log.calls[9], "Read reactionID");
    EXPECT_EQ(bag.log.calls[17], "Read stoichiometry[K]");
    EXPECT_EQ(bag.log.calls[19], "Read thermoVersion");
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
        EXPECT_TRUE(package->HasUnsavedChanges());
        const CPackageHolder fresh;
        EXPECT_EQ(fresh->Load(&bag, nullptr), E_FAIL);
        EXPECT_EQ(fresh->Definition(), nullptr);
        EXPECT_FALSE(fresh->IsResolvedOrLoaded());
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
INSTANTIATE_TEST_SUITE_P(Table, RequiredEntry,
                         testing::Values("compoundId", "compoundName", "compoundCAS", "compoundFormula",
                                         "compoundMolecularWeight", "compoundCharge", "reactionID", "reactionPhase",
                                         "reactionType", "reactionRateBasis", "reactionRateEquation",
                                         "reactionEquilibriumBasis", "reactionEquilibriumConstantEquation",
                                         "reactionHeatEquation"),
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
