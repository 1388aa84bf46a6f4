// SPDX-License-Identifier: MIT
// The calculation as a simulator asks for it: its numbers, its guards in their order, and hosts that call in meanwhile.

#include <gtest/gtest.h>

#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

/// Two kinetic reactions and an equilibrium over A1 and B1 in a liquid of 300 K and 12000 mol/m3 with fractions 0.4,
/// 0.6.
class PropertyCalculation : public testing::Test {
protected:
    PropertyCalculation() : definition(MakePackage({u"A1", u"B1"})), material({u"A1", u"B1"}) {
        AddKinetic(*definition, u"First", u"2*T");
        SetHeat(*definition, AddKinetic(*definition, u"Second", u"C(A1)*C(B1)"), u"-1000");
        SetHeat(*definition, AddEquilibrium(*definition, u"Balance", u"EXP(-T/100)"), u"2500.5");
        material.answers["temperature"] = Numbers({300.0});
        material.answers["fraction"] = Numbers({0.4, 0.6});
        material.answers["density"] = Numbers({12000.0});
        Start();
    }
    ~PropertyCalculation() override { package->Terminate(); }

    void Start() {
        package->AssignDefinition(definition.get());
        IDispatch* pointer = results.Dispatch();
        ASSERT_EQ(package->SetReactionObject(&pointer), S_OK);
        ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
        material.log.Clear();
    }

    /// Calculates with the arguments as they stand in the members.
    HRESULT Calculate(std::initializer_list<const char16_t*> properties) {
        const CVariant props = Strings(properties);
        return package->CalcReactionProp(props.Get(), phase.Get(), ids.Get(), basis.Get());
    }

    void ExpectFailure(HRESULT result, const std::string& name, const std::string& description) {
        EXPECT_EQ(result, ECapeUnknownHR);
        EXPECT_EQ(ErrorOf(package.Unknown()),
                  (ReportedError{name, description, "CalcReactionProp", "ICapeReactionsRoutine"}));
    }
    void ExpectFailure(HRESULT result, const std::string& text) { ExpectFailure(result, text, text); }

    std::unique_ptr<ReactionPackDefinition> definition;
    CFakeMaterial material;
    CFakeReactionObject results;
    CPackageHolder package;
    CBstr phase = CBstr::Make(u"liquid");
    CVariant ids = Strings({u"First", u"Second"});
    CBstr basis;
};

TEST_F(PropertyCalculation, WritesEachRateToTheReactionObject) {
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    // 0.4 * 12000 * (0.6 * 12000) = 4800 * 7200
    EXPECT_EQ(results.log.calls,
              (std::vector<std::string>{"SetReactionProp('ReactionRate', 'liquid', ['First'], null, [600])",
                                        "SetReactionProp('ReactionRate', 'liquid', ['Second'], null, [34560000])"}));
    EXPECT_EQ(material.log.calls, (std::vector<std::string>{"GetProp('temperature', 'overall', empty, null, null)",
                                                            "GetProp('fraction', 'liquid', ['A1', 'B1'], null, 'mole')",
                                                            "CalcProp(['density'], ['liquid'], 'mixture')",
                                                            "GetProp('density', 'liquid', empty, 'mixture', 'mole')"}));
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "<null>");
}

TEST_F(PropertyCalculation, PassesNamesOnAsTheCallerSpelledThem) {
    ids = Strings({u"fIRST"});
    basis = CBstr::Make(u"mole");
    phase = CBstr::Make(u"LIQUID");
    EXPECT_EQ(Calculate({u"reactionRATE"}), S_OK);
    EXPECT_EQ(results.log.calls,
              (std::vector<std::string>{"SetReactionProp('reactionRATE', 'LIQUID', ['First'], 'mole', [600])"}));
}

TEST_F(PropertyCalculation, KeepsAnEmptyBasisApartFromAnAbsentOne) {
    ids = Strings({u"First"});
    basis = CBstr::Make(u"");
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_EQ(results.log.calls[0], "SetReactionProp('ReactionRate', 'liquid', ['First'], '', [600])");
}

TEST_F(PropertyCalculation, CalculatesAReactionAsOftenAsItIsNamed) {
    ids = Strings({u"First", u"First"});
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_EQ(results.log.calls.size(), 2U);
    EXPECT_EQ(results.log.calls[0], results.log.calls[1]);
}

TEST_F(PropertyCalculation, CalculatesTheEquilibriumConstant) {
    ids = Strings({u"Balance"});
    EXPECT_EQ(Calculate({u"ChemicalEquilibriumConstant"}), S_OK);
    EXPECT_DOUBLE_EQ(results.lastValue, 0.049787068367863944);  // exp(-3)
}

TEST_F(PropertyCalculation, CalculatesTheHeatOfEitherKind) {
    ids = Strings({u"Balance", u"Second"});
    EXPECT_EQ(Calculate({u"EnthalpyOfReaction"}), S_OK);
    EXPECT_EQ(results.log.calls,
              (std::vector<std::string>{"SetReactionProp('EnthalpyOfReaction', 'liquid', ['Balance'], null, [2500.5])",
                                        "SetReactionProp('EnthalpyOfReaction', 'liquid', ['Second'], null, [-1000])"}));
    EXPECT_TRUE(material.log.calls.empty());  // constants read nothing
}

TEST_F(PropertyCalculation, ReadsTheMaterialAgainForEachProperty) {
    ids = Strings({u"First"});
    EXPECT_EQ(Calculate({u"ReactionRate", u"ReactionRate"}), S_OK);
    EXPECT_EQ(material.log.calls.size(), 2U);
}

TEST_F(PropertyCalculation, DoesNotChooseReactionsByTheirType) {
    ids = CVariant();
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "Reaction \"Balance\" is not a kinetic reaction, cannot calculate property ReactionRate");
    EXPECT_TRUE(results.log.calls.empty());
    EXPECT_TRUE(material.log.calls.empty());
    ExpectFailure(Calculate({u"ChemicalEquilibriumConstant"}),
                  "Reaction \"First\" is not an equilibrium reaction, cannot calculate property "
                  "ChemicalEquilibriumConstant");
}

TEST_F(PropertyCalculation, SucceedsWithoutReactions) {
    definition->reactions.clear();
    Start();
    ids = CVariant();
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_TRUE(results.log.calls.empty());
}

TEST_F(PropertyCalculation, KeepsWhatWasWrittenBeforeAFailure) {
    ExpectFailure(Calculate({u"ReactionRate", u"Foo"}), "Unknown or unsupported reaction property \"Foo\"");
    EXPECT_EQ(results.log.calls.size(), 2U);
}

TEST_F(PropertyCalculation, NeedsADefinition) {
    const CPackageHolder empty;
    EXPECT_EQ(empty->CalcReactionProp({}, nullptr, {}, nullptr), E_UNEXPECTED);
    EXPECT_EQ(ErrorOf(empty.Unknown()).name, "<null>");
}

TEST_F(PropertyCalculation, NeedsAReactionObject) {
    IDispatch* none = nullptr;
    package->SetReactionObject(&none);
    ExpectFailure(Calculate({}), "No reaction object", "The reaction object was not set before CalcReactionProp");
}

TEST_F(PropertyCalculation, RefusesMalformedReactionIdentifiers) {
    ids = Numbers({1.0});
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "invalid format for reaction IDs: invalid type; array of type BSTR expected");
    ids = Strings({});
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "invalid format for reaction IDs: unexpected array dimensions; negative upper bound");
    ids = Text(u"First");
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "invalid format for reaction IDs: invalid type; array of type BSTR expected");
}

TEST_F(PropertyCalculation, RefusesAnUnknownReaction) {
    ids = Strings({u"First", u"third"});
    ExpectFailure(Calculate({u"ReactionRate"}), "Unknown reaction ID: third");
    EXPECT_TRUE(results.log.calls.empty());
}

TEST_F(PropertyCalculation, RefusesMalformedProperties) {
    const CVariant number = Numbers({1.0});
    ExpectFailure(package->CalcReactionProp(number.Get(), phase.Get(), ids.Get(), nullptr),
                  "invalid format for properties: invalid type; array of type BSTR expected");
    const CVariant empty;
    ExpectFailure(package->CalcReactionProp(empty.Get(), phase.Get(), ids.Get(), nullptr), "Missing properties",
                  "No properties have been specified for CalcReactionProp");
    ExpectFailure(Calculate({}), "invalid format for properties: unexpected array dimensions; negative upper bound");
}

TEST_F(PropertyCalculation, ChecksTheArgumentsBeforeTheMaterial) {
    package->UnsetMaterial();
    ids = Strings({u"third"});
    ExpectFailure(Calculate({u"Foo"}), "Unknown reaction ID: third");
    ids = CVariant();
    ExpectFailure(Calculate({u"Foo"}), "Missing material",
                  "A material reference has not been set on the reaction package before CalcReactionProp");
}

TEST_F(PropertyCalculation, ChecksIdentifiersThenPropertiesThenTheMaterial) {
    package->UnsetMaterial();
    const CVariant number = Numbers({1.0});
    const CVariant empty;
    const auto calculate = [&](const VARIANT& props, const VARIANT& reacIds) {
        return package->CalcReactionProp(props, phase.Get(), reacIds, basis.Get());
    };
    // Malformed, none and unknown reactions come before malformed properties and none.
    for (const CVariant* const props : {&number, &empty}) {
        ExpectFailure(calculate(props->Get(), number.Get()),
                      "invalid format for reaction IDs: invalid type; array of type BSTR expected");
        ExpectFailure(calculate(props->Get(), Strings({u"third"}).Get()), "Unknown reaction ID: third");
    }
    ExpectFailure(calculate(number.Get(), ids.Get()),
                  "invalid format for properties: invalid type; array of type BSTR expected");
    ExpectFailure(calculate(empty.Get(), ids.Get()), "Missing properties",
                  "No properties have been specified for CalcReactionProp");
    // The reaction object comes before all of them.
    IDispatch* none = nullptr;
    package->SetReactionObject(&none);
    ExpectFailure(calculate(number.Get(), number.Get()), "No reaction object",
                  "The reaction object was not set before CalcReactionProp");
}

TEST_F(PropertyCalculation, ChecksThePropertysNameBeforeTheBasis) {
    basis = CBstr::Make(u"Mass");
    ExpectFailure(Calculate({u"Foo"}), "Unknown or unsupported reaction property \"Foo\"");
}

TEST_F(PropertyCalculation, ChecksTheTypeThenThePhaseThenTheExpression) {
    AddKinetic(*definition, u"BareRate", u"");
    AddEquilibrium(*definition, u"BareConstant", u"");
    Start();
    phase = CBstr::Make(u"Vapor");
    const auto mismatchOf = [](const std::string& reaction) {
        return "Reaction \"" + reaction +
               "\" is defined for phase Liquid; cannot perform calculation for requested phase Vapor";
    };
    ids = Strings({u"BareConstant"});
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "Reaction \"BareConstant\" is not a kinetic reaction, cannot calculate property ReactionRate");
    ExpectFailure(Calculate({u"ChemicalEquilibriumConstant"}), "phase mismatch", mismatchOf("BareConstant"));
    ExpectFailure(Calculate({u"EnthalpyOfReaction"}), "phase mismatch", mismatchOf("BareConstant"));
    ids = Strings({u"BareRate"});
    ExpectFailure(Calculate({u"ReactionRate"}), "phase mismatch", mismatchOf("BareRate"));
    ExpectFailure(Calculate({u"ChemicalEquilibriumConstant"}),
                  "Reaction \"BareRate\" is not an equilibrium reaction, cannot calculate property "
                  "ChemicalEquilibriumConstant");
    ExpectFailure(Calculate({u"EnthalpyOfReaction"}), "phase mismatch", mismatchOf("BareRate"));
    // In the right phase the type still comes before the expression.
    phase = CBstr::Make(u"Liquid");
    ExpectFailure(Calculate({u"ChemicalEquilibriumConstant"}),
                  "Reaction \"BareRate\" is not an equilibrium reaction, cannot calculate property "
                  "ChemicalEquilibriumConstant");
}

TEST_F(PropertyCalculation, ChecksOneReactionWholeBeforeTheNext) {
    AddKinetic(*definition, u"BareRate", u"");
    Start();
    ids = Strings({u"BareRate", u"Balance"});
    ExpectFailure(Calculate({u"ReactionRate"}), "no expression", "rate expression not defined for requested reaction");
}

struct BasisAcceptance {
    const char* name;
    const char16_t* property;
    const char16_t* reaction;
    const char16_t* basis;  // null for an absent one
};
const BasisAcceptance basisAcceptances[] = {
    {"RateByMole", u"ReactionRate", u"Second", u"Mole"},
    {"RateByMoleInAnyCase", u"ReactionRate", u"Second", u"mOLE"},
    {"RateByEmpty", u"ReactionRate", u"Second", u""},
    {"RateByAbsent", u"ReactionRate", u"Second", nullptr},
    {"ConstantByEmpty", u"ChemicalEquilibriumConstant", u"Balance", u""},
    {"ConstantByAbsent", u"ChemicalEquilibriumConstant", u"Balance", nullptr},
    {"HeatByMole", u"EnthalpyOfReaction", u"Balance", u"Mole"},
    {"HeatByMoleInAnyCase", u"EnthalpyOfReaction", u"Second", u"mOLE"},
    {"HeatByEmpty", u"EnthalpyOfReaction", u"Second", u""},
    {"HeatByAbsent", u"EnthalpyOfReaction", u"Second", nullptr},
};
class AcceptedBasis : public PropertyCalculation, public testing::WithParamInterface<BasisAcceptance> {};

TEST_P(AcceptedBasis, ReachesTheReactionObjectUnchanged) {
    if (GetParam().basis) basis = CBstr::Make(GetParam().basis);
    ids = Strings({GetParam().reaction});
    ASSERT_EQ(Calculate({GetParam().property}), S_OK);
    const CBstr property = CBstr::Make(GetParam().property);
    const CBstr reaction = CBstr::Make(GetParam().reaction);
    const std::string start = "SetReactionProp(" + Show(property.Get()) + ", 'liquid', [" + Show(reaction.Get()) +
                              "], " + Show(basis.Get()) + ", [";
    ASSERT_EQ(results.log.calls.size(), 1U);
    EXPECT_EQ(results.log.calls[0].substr(0, start.size()), start);
}
INSTANTIATE_TEST_SUITE_P(Table, AcceptedBasis, testing::ValuesIn(basisAcceptances),
                         [](const auto& row) { return std::string(row.param.name); });

struct BasisRefusal {
    const char* name;
    const char16_t* property;
    const char16_t* basis;
    const char* description;
};
const BasisRefusal basisRefusals[] = {
    {"RateByMass", u"ReactionRate", u"Mass",
     "Unsupported basis for property ReactionRate; currently only mole basis is supported"},
    {"ConstantByMole", u"ChemicalEquilibriumConstant", u"Mole",
     "Unsupported basis for property ChemicalEquilibriumConstant; basis should be NULL, and value is defined in terms "
     "of GetReactionConcBasis"},
    {"HeatByMass", u"EnthalpyOfReaction", u"mass",
     "Unsupported basis for property EnthalpyOfReaction; currently only mole basis is supported"},
};
class PropertyBasis : public PropertyCalculation, public testing::WithParamInterface<BasisRefusal> {};

TEST_P(PropertyBasis, IsRefusedBeforeTheReactionsAreLookedAt) {
    basis = CBstr::Make(GetParam().basis);
    phase = CBstr::Make(u"Vapor");
    ExpectFailure(Calculate({GetParam().property}), "Unsupported basis", GetParam().description);
}
INSTANTIATE_TEST_SUITE_P(Table, PropertyBasis, testing::ValuesIn(basisRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PropertyCalculation, RefusesAnotherPhase) {
    phase = CBstr::Make(u"Vapor");
    const std::string text =
        "Reaction \"First\" is defined for phase Liquid; cannot perform calculation for requested phase Vapor";
    ExpectFailure(Calculate({u"ReactionRate"}), "phase mismatch", text);
    ExpectFailure(Calculate({u"EnthalpyOfReaction"}), "phase mismatch", text);
    ids = Strings({u"Balance"});
    ExpectFailure(
        Calculate({u"ChemicalEquilibriumConstant"}), "phase mismatch",
        "Reaction \"Balance\" is defined for phase Liquid; cannot perform calculation for requested phase Vapor");
}

TEST_F(PropertyCalculation, RefusesReactionsWithoutAnExpression) {
    AddKinetic(*definition, u"NoRate", u"");
    AddEquilibrium(*definition, u"NoConstant", u"");
    Start();
    ids = Strings({u"NoRate"});
    ExpectFailure(Calculate({u"ReactionRate"}), "no expression", "rate expression not defined for requested reaction");
    ids = Strings({u"NoConstant"});
    ExpectFailure(Calculate({u"ChemicalEquilibriumConstant"}), "no expression",
                  "equilibrium constant expression not defined for requested reaction");
    ExpectFailure(Calculate({u"EnthalpyOfReaction"}), "undefined",
                  "heat of reaction is not defined for reaction \"NoConstant\". Cannot calculation property "
                  "EnthalpyOfReaction");
}

TEST_F(PropertyCalculation, TellsWhyAnEvaluationFailed) {
    AddKinetic(*definition, u"Bad", u"1/(T-300)");
    Start();
    ids = Strings({u"First", u"bad"});
    ExpectFailure(Calculate({u"reactionrate"}), "Failed to calculate reactionrate for reaction Bad: division by zero");
    EXPECT_EQ(results.log.calls.size(), 1U);  // the first one is out already
}

TEST_F(PropertyCalculation, PassesOnWhyTheReactionObjectFailed) {
    results.log.failAt = 2;
    results.log.failCode = static_cast<HRESULT>(0x8004050BU);
    results.description = u"full";
    ExpectFailure(Calculate({u"ReactionRate"}), "full");
    EXPECT_EQ(results.log.calls.size(), 2U);
}

TEST_F(PropertyCalculation, PassesOnWhyTheMaterialFailed) {
    material.failures["CalcProp density"] = static_cast<HRESULT>(0x8004050BU);
    ExpectFailure(Calculate({u"ReactionRate"}),
                  "Failed to calculate density for phase liquid (calcType mixture): computation error");
    EXPECT_TRUE(results.log.calls.empty());
}

TEST_F(PropertyCalculation, FailsCleanlyWhateverCallOfTheMaterialFails) {
    for (int n = 1; n <= 4; ++n) {
        material.log.Clear();
        material.log.failAt = n;
        EXPECT_EQ(Calculate({u"ReactionRate"}), ECapeUnknownHR);
        EXPECT_EQ(static_cast<int>(material.log.calls.size()), n);
        EXPECT_EQ(material.references.Held(), 1);
        EXPECT_TRUE(results.log.calls.empty());
    }
}

TEST_F(PropertyCalculation, KeepsWhatItBeganWithWhenTheMaterialTakesItAway) {
    bool isCalledBack = false;
    material.log.onCall = [&](const std::string&) {
        if (std::exchange(isCalledBack, true)) return;
        package->Terminate();
        package->AssignDefinition(MakePackage({u"Z1"}).get());
        EXPECT_EQ(material.references.Held(), 2);  // the call's own counts: the material and the interface asked
    };
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_EQ(results.log.calls.size(), 2U);
    EXPECT_EQ(results.log.calls[1], "SetReactionProp('ReactionRate', 'liquid', ['Second'], null, [34560000])");
    EXPECT_EQ(material.references.Held(), 0);
    EXPECT_EQ(results.references.Held(), 0);
    EXPECT_EQ(Calculate({u"ReactionRate"}), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "No reaction object");
}

TEST_F(PropertyCalculation, UsesAMaterialBoundMeanwhileFromTheNextCallOn) {
    CFakeMaterial other({u"b1", u"a1"});
    for (auto& [property, answer] : material.answers) VariantCopy(&other.answers[property].Get(), &answer.Get());
    other.answers["temperature"] = Numbers({500.0});
    material.log.onCall = [&](const std::string&) { package->SetMaterial(other.Dispatch()); };
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_EQ(results.log.calls[0], "SetReactionProp('ReactionRate', 'liquid', ['First'], null, [600])");
    EXPECT_EQ(material.log.calls[1], "GetProp('fraction', 'liquid', ['A1', 'B1'], null, 'mole')");
    EXPECT_EQ(material.references.Held(), 0);
    results.log.Clear();
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    EXPECT_EQ(results.log.calls[0], "SetReactionProp('ReactionRate', 'liquid', ['First'], null, [1000])");
    package->UnsetMaterial();
    EXPECT_EQ(other.references.Held(), 0);
}

TEST_F(PropertyCalculation, AsksTheOldMaterialByItsIdentifiersForLaterPropertiesToo) {
    CFakeMaterial other({u"b1", u"a1"});
    ids = Strings({u"Second"});  // its heat reads nothing, so the material is first asked for the rate
    results.log.onCall = [&](const std::string&) { package->SetMaterial(other.Dispatch()); };
    EXPECT_EQ(Calculate({u"EnthalpyOfReaction", u"ReactionRate"}), S_OK);
    EXPECT_EQ(material.log.calls[0], "GetProp('fraction', 'liquid', ['A1', 'B1'], null, 'mole')");
    EXPECT_EQ(Show(package->Definition()->compounds[0]->id.Get()), "'a1'");
    package->UnsetMaterial();
}

TEST_F(PropertyCalculation, KeepsItsValuesApartFromACalculationWithin) {
    // The reaction object asks for the rates at another temperature before it takes the first one.
    AddKinetic(*definition, u"Third", u"T");
    Start();
    ids = Strings({u"First", u"Third"});
    bool isNested = false;
    results.log.onCall = [&](const std::string&) {
        if (std::exchange(isNested, true)) return;
        material.answers["temperature"] = Numbers({500.0});
        EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    };
    EXPECT_EQ(Calculate({u"ReactionRate"}), S_OK);
    ASSERT_EQ(results.log.calls.size(), 4U);
    EXPECT_EQ(results.log.calls[2], "SetReactionProp('ReactionRate', 'liquid', ['Third'], null, [500])");
    EXPECT_EQ(results.log.calls[3], "SetReactionProp('ReactionRate', 'liquid', ['Third'], null, [300])");
}

TEST_F(PropertyCalculation, OutlivesItsOwnPackageUntilItReturns) {
    // The host drops its last reference from within the call.
    IUnknown* unknown = nullptr;
    {
        const CPackageHolder local(*definition);
        IDispatch* pointer = results.Dispatch();
        local->SetReactionObject(&pointer);
        local->SetMaterial(material.Dispatch());
        unknown = local.Unknown();
        unknown->AddRef();
    }
    auto routine = Ask<ICapeReactionsRoutine>(unknown);
    ICapeReactionsRoutine* const bare = routine.Get();
    unknown->Release();
    material.log.onCall = [&](const std::string&) { routine.Reset(); };
    const CVariant props = Strings({u"ReactionRate"});
    EXPECT_EQ(bare->CalcReactionProp(props.Get(), phase.Get(), ids.Get(), nullptr), S_OK);
    EXPECT_EQ(material.references.Held(), 1);  // the fixture's package still has it
}

}  // namespace
}  // namespace reka::test
