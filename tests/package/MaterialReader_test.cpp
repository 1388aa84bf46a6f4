// SPDX-License-Identifier: MIT
// What is asked of a material by either version, in which order, and what is made of each answer.

#include <gtest/gtest.h>

#include <tuple>

#include "capeopen/ErrorTexts.h"
#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// A package of three compounds over a material of five in another order: B1 at 4, A1 at 0, C1 at 2.
class MaterialReading : public testing::Test {
protected:
    MaterialReading() : definition(MakePackage({u"B1", u"A1", u"C1"})), material({u"A1", u"x", u"C1", u"y", u"B1"}) {
        material.answers["temperature"] = Numbers({350.0});
        material.answers["pressure"] = Numbers({2e5});
        material.answers["density"] = Numbers({100.0});
        for (const char* property : {"fraction", "activity", "fugacity"})
            material.answers[property] = Numbers({3, 1, 2});
    }
    ~MaterialReading() override { package->Terminate(); }

    void UseVersion11() {
        definition->thermoVersion = ThermoVersion::Version11;
        for (const char* property : {"fraction", "activity", "fugacity"}) {
            material.answers[property] = Numbers({1, 10, 2, 20, 3});
        }
    }

    /// Calculates the rate `rate` against the material. The calls to it are in its log.
    HRESULT Calculate(const char16_t* rate, std::int32_t mask = -1) {
        ReactionDefinition& reaction = AddKinetic(*definition, u"r", rate);
        if (mask >= 0) reaction.rateExpression->dependencies = static_cast<std::uint32_t>(mask);
        package->AssignDefinition(definition.get());
        IDispatch* pointer = results.Dispatch();
        package->SetReactionObject(&pointer);
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
        return CalculateAgain();
    }
    HRESULT CalculateAgain() {
        material.log.Clear();
        const CVariant props = Strings({u"ReactionRate"});
        const CBstr phase = CBstr::Make(u"Liquid");
        const CVariant all;
        return package->CalcReactionProp(props.Get(), phase.Get(), all.Get(), nullptr);
    }

    void ExpectFailure(HRESULT result, const std::string& text) {
        EXPECT_EQ(result, ECapeUnknownHR);
        EXPECT_EQ(ErrorOf(package.Unknown()), (ReportedError{text, text, "CalcReactionProp", "ICapeReactionsRoutine"}));
        EXPECT_EQ(material.references.Held(), 1);
    }
    /// As before, for a text that goes on with the system's own words for a code.
    void ExpectSystemFailure(HRESULT result, const std::string& begin, HRESULT code = E_NOINTERFACE) {
        ExpectFailure(result, begin + Utf8FromUtf16(GetSystemErrorText(code)));
    }

    std::unique_ptr<ReactionPackDefinition> definition;
    CFakeMaterial material;
    CFakeReactionObject results;
    CPackageHolder package;
};

using Calls = std::vector<std::string>;

TEST_F(MaterialReading, AsksForNothingThatIsNotNeeded) {
    EXPECT_EQ(Calculate(u"1+1"), S_OK);
    EXPECT_TRUE(material.log.calls.empty());
}

TEST_F(MaterialReading, AsksVersion10ForTheOverallTemperatureAndPressure) {
    EXPECT_EQ(Calculate(u"P+T"), S_OK);
    EXPECT_EQ(material.log.calls, (Calls{"GetProp('temperature', 'overall', empty, null, null)",
                                         "GetProp('pressure', 'overall', empty, null, null)"}));
    EXPECT_EQ(results.lastValue, 200350.0);
}

TEST_F(MaterialReading, AsksVersion11ForTheTemperatureOfThePhase) {
    UseVersion11();
    EXPECT_EQ(Calculate(u"P+T"), S_OK);
    EXPECT_EQ(material.log.calls, (Calls{"GetSinglePhaseProp('temperature', 'Liquid', null)",
                                         "GetSinglePhaseProp('pressure', 'Liquid', null)"}));
    EXPECT_EQ(results.lastValue, 200350.0);
}

TEST_F(MaterialReading, ReadsFractionsWithoutTheDensity) {
    EXPECT_EQ(Calculate(u"X(B1)"), S_OK);
    EXPECT_EQ(material.log.calls, (Calls{"GetProp('fraction', 'Liquid', ['B1', 'A1', 'C1'], null, 'mole')"}));
    EXPECT_EQ(results.lastValue, 3.0);
}

TEST_F(MaterialReading, ComputesMolaritiesFromFractionsAndDensity) {
    EXPECT_EQ(Calculate(u"C(C1)"), S_OK);
    EXPECT_EQ(material.log.calls, (Calls{"GetProp('fraction', 'Liquid', ['B1', 'A1', 'C1'], null, 'mole')",
                                         "CalcProp(['density'], ['Liquid'], 'mixture')",
                                         "GetProp('density', 'Liquid', empty, 'mixture', 'mole')"}));
    EXPECT_EQ(results.lastValue, 200.0);  // 2 * 100 mol/m3
    const ReactionPackDefinition& used = *package->Definition();
    EXPECT_EQ(used.moleFraction[0], 3.0);
    EXPECT_EQ(used.molarity[0], 300.0);
    EXPECT_EQ(used.molarity[1], 100.0);
}

TEST_F(MaterialReading, KeepsOldMolaritiesWhenOnlyFractionsAreRead) {
    ASSERT_EQ(Calculate(u"C(B1)"), S_OK);
    auto& used = const_cast<ReactionPackDefinition&>(*package->Definition());
    used.reactions[0]->rateExpression = Parse(used, u"X(B1)");
    material.answers["fraction"] = Numbers({0.5, 0.5, 0.0});
    ASSERT_EQ(CalculateAgain(), S_OK);
    EXPECT_EQ(used.moleFraction[0], 0.5);
    EXPECT_EQ(used.molarity[0], 300.0);
}

TEST_F(MaterialReading, GivesNoMolarityToAFractionOfZero) {
    material.answers["fraction"] = Numbers({0.0, 0.5, 0.5});
    material.answers["density"] = Numbers({1e300});
    EXPECT_EQ(Calculate(u"C(B1)"), S_OK);
    EXPECT_EQ(results.lastValue, 0.0);
}

TEST_F(MaterialReading, CalculatesActivitiesAndFugacitiesAtEveryFetch) {
    const Calls expected = {"CalcProp(['activity'], ['Liquid'], 'mixture')",
                            "GetProp('activity', 'Liquid', ['B1', 'A1', 'C1'], 'mixture', null)",
                            "CalcProp(['fugacity'], ['Liquid'], 'mixture')",
                            "GetProp('fugacity', 'Liquid', ['B1', 'A1', 'C1'], 'mixture', null)"};
    EXPECT_EQ(Calculate(u"F(B1)-A(A1)"), S_OK);
    EXPECT_EQ(material.log.calls, expected);
    EXPECT_EQ(results.lastValue, 2.0);
    EXPECT_EQ(CalculateAgain(), S_OK);
    EXPECT_EQ(material.log.calls, expected);
}

TEST_F(MaterialReading, PicksThePackagesCompoundsUnderVersion11) {
    UseVersion11();
    EXPECT_EQ(Calculate(u"C(B1)+A(A1)+F(C1)"), S_OK);
    EXPECT_EQ(material.log.calls,
              (Calls{"GetSinglePhaseProp('fraction', 'Liquid', 'mole')", "CalcSinglePhaseProp(['density'], 'Liquid')",
                     "GetSinglePhaseProp('density', 'Liquid', 'mole')", "CalcSinglePhaseProp(['activity'], 'Liquid')",
                     "GetSinglePhaseProp('activity', 'Liquid', null)", "CalcSinglePhaseProp(['fugacity'], 'Liquid')",
                     "GetSinglePhaseProp('fugacity', 'Liquid', null)"}));
    EXPECT_EQ(results.lastValue, 303.0);  // 3 * 100 + 1 + 2
    EXPECT_EQ(package->Definition()->moleFraction[0], 3.0);
    EXPECT_EQ(package->Definition()->moleFraction[1], 1.0);
    EXPECT_EQ(package->Definition()->moleFraction[2], 2.0);
}

TEST_F(MaterialReading, ExpectsOneValueOfAPackageOfOneCompoundUnderVersion11) {
    definition = MakePackage({u"C1"});
    UseVersion11();
    material.answers["fraction"] = Numbers({0.25});
    EXPECT_EQ(Calculate(u"X(C1)"), S_OK);
    EXPECT_EQ(results.lastValue, 0.25);
    material.answers["fraction"] = Numbers({1, 10, 2, 20, 3});
    ExpectFailure(CalculateAgain(),
                  "Invalid values for fraction for phase Liquid: expected a double array with 1 elements");
}

TEST_F(MaterialReading, FetchesWhatAStoredMaskSays) {
    EXPECT_EQ(Calculate(u"1", 63), S_OK);
    EXPECT_EQ(material.log.calls.size(), 9U);
}

TEST_F(MaterialReading, ReadsInAFixedOrderAndEndsAtTheFirstFailure) {
    material.failures["GetProp pressure"] = E_FAIL;
    ExpectSystemFailure(Calculate(u"A(B1)+P+T+X(B1)"), "Failed to obtain pressure for phase overall: ", E_FAIL);
    EXPECT_EQ(material.log.calls.size(), 2U);
    EXPECT_EQ(package->Definition()->temperature, 350.0);  // what was filled stays
}

struct WrongAnswer {
    const char* name;
    const char16_t* rate;
    const char* property;
    CVariant (*answer)();
    const char* version10;
    const char* version11;
};
const WrongAnswer wrongAnswers[] = {
    {"TwoDensities", u"C(B1)", "density",
     [] {
         return Numbers({1.0, 2.0});
     },
     "Invalid values for density for phase Liquid (calcType mixture): expected a double array with 1 elements",
     "Invalid values for density for phase Liquid: expected a double array with 1 elements"},
    {"DensityOfAnotherType", u"C(B1)", "density", [] { return Strings({u"1"}); },
     "Invalid values for density for phase Liquid (calcType mixture): expected a double array with 1 elements",
     "Invalid values for density for phase Liquid: expected a double array with 1 elements"},
    {"FourFractions", u"X(B1)", "fraction",
     [] {
         return Numbers({1, 2, 3, 4});
     },
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements",
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements"},
    {"FractionsOfAnotherType", u"X(B1)", "fraction", [] { return Strings({u"1"}); },
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements",
     "Invalid values for fraction for phase Liquid: expected a double array with 5 elements"},
    {"NoFractions", u"X(B1)", "fraction", [] { return CVariant(); },
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements",
     "Invalid values for fraction for phase Liquid: expected a double array with 5 elements"},
    {"FractionsFromOne", u"X(B1)", "fraction",
     [] {
         return Numbers({1, 2, 3, 4, 5}, 1);
     },
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements",
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements"},
    {"FractionsOfTwoDimensions", u"X(B1)", "fraction", [] { return TwoDimensions(VT_R8); },
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements",
     "Invalid values for fraction for phase Liquid: expected a double array with 3 elements"},
    {"NoTemperature", u"T", "temperature", [] { return CVariant(); },
     "Invalid values for temperature: expected a double array with 1 elements",
     "Invalid values for temperature: expected a double array with 1 elements"},
    {"TwoPressures", u"P", "pressure",
     [] {
         return Numbers({1.0, 2.0});
     },
     "Invalid values for pressure: expected a double array with 1 elements",
     "Invalid values for pressure: expected a double array with 1 elements"},
    {"OneActivity", u"A(B1)", "activity", [] { return Numbers({1.0}); },
     "Invalid values for activity for phase Liquid (calcType mixture): expected a double array with 3 elements",
     "Invalid values for activity for phase Liquid: expected a double array with 3 elements"},
};
class WrongAnswers : public MaterialReading, public testing::WithParamInterface<WrongAnswer> {};

TEST_P(WrongAnswers, AreRefusedUnderVersion10) {
    material.answers[GetParam().property] = GetParam().answer();
    ExpectFailure(Calculate(GetParam().rate), GetParam().version10);
}
TEST_P(WrongAnswers, AreRefusedUnderVersion11) {
    UseVersion11();
    material.answers[GetParam().property] = GetParam().answer();
    ExpectFailure(Calculate(GetParam().rate), GetParam().version11);
}
INSTANTIATE_TEST_SUITE_P(Table, WrongAnswers, testing::ValuesIn(wrongAnswers),
                         [](const auto& row) { return std::string(row.param.name); });

struct FailingCall {
    const char* name;
    ThermoVersion version;
    const char16_t* rate;
    const char* operation;
    const char* text;
};
const FailingCall failingCalls[] = {
    {"CalcProp", ThermoVersion::Version10, u"A(B1)", "CalcProp activity",
     "Failed to calculate activity for phase Liquid (calcType mixture): no flash"},
    {"GetPropAfterCalculation", ThermoVersion::Version10, u"C(B1)", "GetProp density",
     "Failed to obtain density for phase Liquid (calcType mixture): no flash"},
    {"GetPropOfTheState", ThermoVersion::Version10, u"X(B1)", "GetProp fraction",
     "Failed to obtain fraction for phase Liquid: no flash"},
    {"GetPropOverall", ThermoVersion::Version10, u"T", "GetProp temperature",
     "Failed to obtain temperature for phase overall: no flash"},
    {"CalcSinglePhaseProp", ThermoVersion::Version11, u"F(B1)", "CalcSinglePhaseProp fugacity",
     "CalcSinglePhaseProp failed for property fugacity, phase Liquid: no flash"},
    {"GetSinglePhaseProp", ThermoVersion::Version11, u"F(B1)", "GetSinglePhaseProp fugacity",
     "Failed to obtain fugacity for phase Liquid: no flash"},
    {"GetSinglePhasePropOfTheState", ThermoVersion::Version11, u"T", "GetSinglePhaseProp temperature",
     "Failed to obtain temperature for phase Liquid: no flash"},
};
class FailingCalls : public MaterialReading, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingCalls, AreToldInTheMaterialsWords) {
    if (GetParam().version == ThermoVersion::Version11) UseVersion11();
    material.failures[GetParam().operation] = static_cast<HRESULT>(0x8004050BU);
    material.description = u"no flash";
    ExpectFailure(Calculate(GetParam().rate), GetParam().text);
}
TEST_P(FailingCalls, AreToldByTheirCodeIfTheMaterialSaysNothing) {
    if (GetParam().version == ThermoVersion::Version11) UseVersion11();
    material.failures[GetParam().operation] = static_cast<HRESULT>(0x8004050BU);
    material.offersUser = false;
    material.offersRoot = false;
    const std::string text = GetParam().text;
    ExpectFailure(Calculate(GetParam().rate), text.substr(0, text.size() - 8) + "computation error");
}
INSTANTIATE_TEST_SUITE_P(Table, FailingCalls, testing::ValuesIn(failingCalls),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MaterialReading, NamesTheInterfaceThatTheMaterialLacks) {
    ASSERT_EQ(Calculate(u"A(B1)"), S_OK);
    material.offersMaterialObject = false;
    ExpectSystemFailure(CalculateAgain(), "Failed to obtain ICapeThermoMaterialObject from material object: ");
}

TEST_F(MaterialReading, NamesTheVersion11InterfaceThatTheMaterialLacks) {
    UseVersion11();
    ASSERT_EQ(Calculate(u"A(B1)"), S_OK);
    material.offersMaterial = false;
    ExpectSystemFailure(CalculateAgain(), "Failed to obtain ICapeThermoMaterial from material object: ");
    material.offersPropertyRoutine = false;
    ExpectSystemFailure(CalculateAgain(), "Failed to obtain ICapeThermoPropertyRoutine from material object: ");
}

// By the rules of the platform a failed question has no answer; not every host knows them.
TEST_F(MaterialReading, UsesNothingThatAFailedQuestionLeaves) {
    ASSERT_EQ(Calculate(u"A(B1)"), S_OK);
    CRefusing<CFakeMaterial> refusing({u"A1", u"B1", u"C1"});
    ASSERT_EQ(package->SetMaterial(refusing.Dispatch()), S_OK);
    refusing.log.Clear();
    const struct {
        ThermoVersion version;
        IID refused;
        const char* text;
    } cases[] = {
        {ThermoVersion::Version10, ICapeThermoMaterialObject::iid, "ICapeThermoMaterialObject"},
        {ThermoVersion::Version11, ICapeThermoPropertyRoutine::iid, "ICapeThermoPropertyRoutine"},
    };
    for (const auto& [version, refused, text] : cases) {
        const_cast<ReactionPackDefinition&>(*package->Definition()).thermoVersion = version;
        refusing.refused = refused;
        EXPECT_EQ(CalculateAgain(), ECapeUnknownHR);
        EXPECT_EQ(ErrorOf(package.Unknown()).name, std::string("Failed to obtain ") + text + " from material object: " +
                                                       Utf8FromUtf16(GetSystemErrorText(E_NOINTERFACE)));
        EXPECT_EQ(refusing.log.calls, Calls{});
        EXPECT_EQ(refusing.references.Held(), 1);
    }
    package->UnsetMaterial();
    EXPECT_EQ(refusing.references.Held(), 0);
}

TEST_F(MaterialReading, ExpectsNothingOfAMaterialWhoseCompoundsAreUnknown) {
    // The list of the second material is of no use, so its compounds count as none; the map stays the one of the first.
    UseVersion11();
    ASSERT_EQ(Calculate(u"X(B1)"), S_OK);
    CFakeMaterial unusable({});
    ASSERT_EQ(package->SetMaterial(unusable.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(CalculateAgain(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name,
              "Invalid values for fraction for phase Liquid: expected a double array with 0 elements");
    unusable.answers["fraction"] = Numbers({});  // just the number of elements that is expected, and none at the map's
    EXPECT_EQ(CalculateAgain(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name,
              "Invalid values for fraction for phase Liquid: expected a double array with 3 elements");
    package->UnsetMaterial();
}

TEST_F(MaterialReading, RefusesToReadByAMapOfAnotherDefinition) {
    // The document was loaded again after the material was bound, with one compound more than the map knows.
    UseVersion11();
    ASSERT_EQ(Calculate(u"X(B1)"), S_OK);
    const auto larger = MakePackage({u"B1", u"A1", u"C1", u"D1"});
    larger->thermoVersion = ThermoVersion::Version11;
    AddKinetic(*larger, u"r", u"X(B1)");
    package->AssignDefinition(larger.get());
    ExpectFailure(CalculateAgain(),
                  "Invalid values for fraction for phase Liquid: expected a double array with 4 elements");
}

TEST_F(MaterialReading, RefusesToReadBehindTheMaterialsList) {
    UseVersion11();
    ASSERT_EQ(Calculate(u"X(B1)"), S_OK);
    CFakeMaterial smaller({u"dup", u"dup"});  // ambiguous: stays bound, with a count of 2 and the old map
    const_cast<ReactionPackDefinition&>(*package->Definition()).compounds[0]->name = CBstr::Make(u"dup");
    ASSERT_EQ(package->SetMaterial(smaller.Dispatch()), ECapeUnknownHR);
    smaller.answers["fraction"] = Numbers({1, 2});
    EXPECT_EQ(CalculateAgain(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name,
              "Invalid values for fraction for phase Liquid: expected a double array with 3 elements");
    package->UnsetMaterial();
}

TEST_F(MaterialReading, TellsOfAMissingMaterialWhateverIsAskedFor) {
    const MaterialWords words;
    const std::vector<std::int32_t> noMap;
    const COwnArithmetic arithmetic;
    CCallArrays arrays;
    CMaterialReader reader(*definition, nullptr, words, noMap, 0, arrays, arithmetic);
    for (const std::uint32_t dependencies : {0U, dependency::temperature, dependency::molarity}) {
        std::u16string errorText;
        EXPECT_FALSE(reader.FetchExpressionInputs(dependencies, nullptr, errorText));
        EXPECT_EQ(errorText, u"Material not set");
    }
}

}  // namespace
}  // namespace reka::test
