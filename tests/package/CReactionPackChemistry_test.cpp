// SPDX-License-Identifier: MIT
// The queries about reactions: their answers, and the order in which each looks at its arguments.

#include <gtest/gtest.h>

#include <limits>

#include "support/Builders.h"
#include "support/CountedFake.h"

namespace reka::test {
namespace {

constexpr const char* chemistry = "ICapeReactionChemistry";

/// Reactions "Main" (A to C, kinetic), "Shift" (equilibrium), "None" (no participants) over compounds A, B, C.
class ReactionChemistry : public testing::Test {
protected:
    ReactionChemistry() : definition(MakePackage({u"A1", u"B1", u"C1"})) {
        ReactionDefinition& first = AddKinetic(*definition, u"Main", u"T");
        first.stoichiometry = {-1.0, 0.0, 1.0};
        ReactionDefinition& second = AddEquilibrium(*definition, u"Shift", u"T");
        second.equilibriumBasis = EquilibriumBasis::Fugacity;
        second.rateBasis = RateBasis::Heterogeneous;
        second.stoichiometry = {1.0, -2.0, 1.0};
        AddKinetic(*definition, u"None", u"T");
        definition->compounds[0]->casNumber = CBstr::Make(u"64-17-5");
        definition->compounds[2]->charge = 2.0;
        Assign();
    }

    void Assign() { package->AssignDefinition(definition.get()); }
    BSTR Id(const char16_t* text) {
        id = CBstr::Make(text);
        return id.Get();
    }
    ReportedError Error() const { return ErrorOf(package.Unknown()); }

    std::unique_ptr<ReactionPackDefinition> definition;
    CPackageHolder package;
    CBstr id;
};

TEST_F(ReactionChemistry, CountsAndListsTheReactions) {
    LONG count = -1;
    EXPECT_EQ(package->GetNumberOfReactions(&count), S_OK);
    EXPECT_EQ(count, 3);
    CVariant ids;
    EXPECT_EQ(package->GetReactionsIds(&ids.Get()), S_OK);
    EXPECT_EQ(Show(ids.Get()), "['Main', 'Shift', 'None']");
}

TEST_F(ReactionChemistry, ListsNoReactionsAsAnEmptyVariant) {
    definition->reactions.clear();
    Assign();
    VARIANT ids;
    ids.vt = VT_R8;  // an output is not looked at before it is written
    EXPECT_EQ(package->GetReactionsIds(&ids), S_OK);
    EXPECT_EQ(ids.vt, VT_EMPTY);
}

TEST_F(ReactionChemistry, TellsTypeBasisAndPhase) {
    CapeReactionType type = CAPE_EQUILIBRIUM;
    EXPECT_EQ(package->GetReactionType(Id(u"Main"), &type), S_OK);
    EXPECT_EQ(type, CAPE_KINETIC);
    EXPECT_EQ(package->GetReactionType(Id(u"Shift"), &type), S_OK);
    EXPECT_EQ(type, CAPE_EQUILIBRIUM);
    CapeReactionRateBasis basis = CAPE_HETEROGENEOUS;
    EXPECT_EQ(package->GetReactionRateBasis(Id(u"Main"), &basis), S_OK);
    EXPECT_EQ(basis, CAPE_HOMOGENEOUS);
    EXPECT_EQ(package->GetReactionRateBasis(Id(u"Shift"), &basis), S_OK);  // for an equilibrium reaction too
    EXPECT_EQ(basis, CAPE_HETEROGENEOUS);
    CBstr phase;
    EXPECT_EQ(package->GetReactionPhase(Id(u"Main"), phase.Receive()), S_OK);
    EXPECT_EQ(phase.View(), u"Liquid");
}

TEST_F(ReactionChemistry, FindsAReactionInAnyCase) {
    CapeReactionType type = CAPE_EQUILIBRIUM;
    EXPECT_EQ(package->GetReactionType(Id(u"mAIN"), &type), S_OK);
    EXPECT_EQ(type, CAPE_KINETIC);
}

TEST_F(ReactionChemistry, FindsTheFirstOfEqualNames) {
    AddEquilibrium(*definition, u"MAIN", u"T");
    Assign();
    CapeReactionType type = CAPE_EQUILIBRIUM;
    EXPECT_EQ(package->GetReactionType(Id(u"main"), &type), S_OK);
    EXPECT_EQ(type, CAPE_KINETIC);
}

TEST_F(ReactionChemistry, LeavesTheNumberOfCompoundsAtZero) {
    LONG count = -1;
    EXPECT_EQ(package->GetNumberOfReactionCompounds(Id(u"Shift"), &count), S_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(package->GetNumberOfReactionCompounds(Id(u"nowhere"), &count), ECapeUnknownHR);
    EXPECT_EQ(Error(),
              (ReportedError{"Invalid ID", "Invalid reaction ID: nowhere", "GetNumberOfReactionCompounds", chemistry}));
}

TEST_F(ReactionChemistry, ListsTheParticipantsAlike) {
    CVariant ids;
    CVariant charges;
    CVariant casNumbers;
    CVariant coefficients;
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &ids.Get(), &charges.Get(), &casNumbers.Get()), S_OK);
    EXPECT_EQ(package->GetStoichiometricCoefficients(Id(u"Main"), &coefficients.Get()), S_OK);
    EXPECT_EQ(Show(ids.Get()), "['A1', 'C1']");
    EXPECT_EQ(Show(charges.Get()), "[0, 2]");
    EXPECT_EQ(Show(casNumbers.Get()), "['64-17-5', null]");
    EXPECT_EQ(Show(coefficients.Get()), "[-1, 1]");
}

TEST_F(ReactionChemistry, CountsANaNAsAParticipant) {
    definition->reactions[0]->stoichiometry = {0.0, std::numeric_limits<double>::quiet_NaN(), -0.0};
    Assign();
    CVariant ids;
    CVariant charges;
    CVariant casNumbers;
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &ids.Get(), &charges.Get(), &casNumbers.Get()), S_OK);
    EXPECT_EQ(Show(ids.Get()), "['B1']");
    CVariant coefficients;
    EXPECT_EQ(package->GetStoichiometricCoefficients(Id(u"Main"), &coefficients.Get()), S_OK);
    ASSERT_EQ(NumbersIn(coefficients.Get()).size(), 1U);
    EXPECT_NE(NumbersIn(coefficients.Get())[0], NumbersIn(coefficients.Get())[0]);
}

TEST_F(ReactionChemistry, GivesEmptyListsWithoutParticipants) {
    CVariant ids = Strings({u"left"});
    CVariant charges = Numbers({1.0});
    CVariant casNumbers = Strings({u"left"});
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"None"), &ids.Get(), &charges.Get(), &casNumbers.Get()), S_OK);
    EXPECT_EQ(Show(ids.Get()) + Show(charges.Get()) + Show(casNumbers.Get()), "emptyemptyempty");
    CVariant coefficients;
    EXPECT_EQ(package->GetStoichiometricCoefficients(Id(u"None"), &coefficients.Get()), S_OK);
    EXPECT_EQ(Show(coefficients.Get()), "empty");
}

TEST_F(ReactionChemistry, TellsANullIdentifierFromAnEmptyOne) {
    CVariant ids = Strings({u"left"});
    CVariant charges = Numbers({1.0});
    CVariant casNumbers = Strings({u"left"});
    EXPECT_EQ(package->GetReactionCompoundIds(nullptr, &ids.Get(), &charges.Get(), &casNumbers.Get()), ECapeUnknownHR);
    EXPECT_EQ(Error(),
              (ReportedError{"No reaction ID", "No reaction ID specified", "GetReactionCompoundIds", chemistry}));
    EXPECT_EQ(Show(ids.Get()), "['left']");
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u""), &ids.Get(), &charges.Get(), &casNumbers.Get()), ECapeUnknownHR);
    EXPECT_EQ(Error(),
              (ReportedError{"Invalid ID", "Empty string passed as reaction ID", "GetReactionCompoundIds", chemistry}));
    EXPECT_EQ(Show(ids.Get()) + Show(charges.Get()) + Show(casNumbers.Get()), "emptyemptyempty");
}

struct BasisCase {
    const char* name;
    std::int32_t stored;
    const char* text;
};
const BasisCase basisCases[] = {
    {"Molarity", 0, "Molarity"},         {"Concentration", 1, "Concentration"},
    {"MoleFraction", 2, "MoleFraction"}, {"MassFraction", 3, "MassFraction"},
    {"Fugacity", 4, "Fugacity"},         {"Activity", 5, "Activity"},
    {"Below", -3, "Molarity"},           {"Above", 6, "Activity"},
};
class ConcentrationBasis : public ReactionChemistry, public testing::WithParamInterface<BasisCase> {};

TEST_P(ConcentrationBasis, IsNamed) {
    definition->reactions[1]->equilibriumBasis = static_cast<EquilibriumBasis>(GetParam().stored);
    Assign();
    CBstr basis;
    EXPECT_EQ(package->GetReactionConcBasis(Id(u"Shift"), basis.Receive()), S_OK);
    EXPECT_EQ(Show(basis.Get()), "'" + std::string(GetParam().text) + "'");
}
INSTANTIATE_TEST_SUITE_P(Table, ConcentrationBasis, testing::ValuesIn(basisCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ReactionChemistry, HasNoConcentrationBasisForAKineticReaction) {
    BSTR basis = Id(u"not looked at");
    EXPECT_EQ(package->GetReactionConcBasis(CBstr::Make(u"Main").Get(), &basis), S_OK);
    EXPECT_EQ(basis, nullptr);
}

TEST_F(ReactionChemistry, ClearsATextOutputBeforeItFails) {
    BSTR text = Id(u"not looked at");
    EXPECT_EQ(package->GetReactionPhase(nullptr, &text), ECapeUnknownHR);
    EXPECT_EQ(text, nullptr);
    text = id.Get();
    EXPECT_EQ(package->GetReactionConcBasis(nullptr, &text), ECapeUnknownHR);
    EXPECT_EQ(text, nullptr);
}

TEST_F(ReactionChemistry, EmptiesTheCoefficientsBeforeItFails) {
    VARIANT coefficients;
    coefficients.vt = VT_R8;  // an output is not looked at before it is written
    EXPECT_EQ(package->GetStoichiometricCoefficients(Id(u"nowhere"), &coefficients), ECapeUnknownHR);
    EXPECT_EQ(coefficients.vt, VT_EMPTY);
}

TEST_F(ReactionChemistry, LeavesANumberAloneWhenItFails) {
    LONG count = 17;
    EXPECT_EQ(package->GetNumberOfReactionCompounds(Id(u"nowhere"), &count), ECapeUnknownHR);
    EXPECT_EQ(count, 17);
    CapeReactionType type = CAPE_KINETIC;
    EXPECT_EQ(package->GetReactionType(Id(u"nowhere"), &type), ECapeUnknownHR);
    EXPECT_EQ(type, CAPE_KINETIC);
    CapeReactionRateBasis basis = CAPE_HETEROGENEOUS;
    EXPECT_EQ(package->GetReactionRateBasis(Id(u"nowhere"), &basis), ECapeUnknownHR);
    EXPECT_EQ(basis, CAPE_HETEROGENEOUS);
}

TEST_F(ReactionChemistry, EmptiesTheListsOfAnUnknownReaction) {
    CVariant ids = Strings({u"left"});
    CVariant charges = Numbers({1.0});
    CVariant casNumbers = Strings({u"left"});
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"nowhere"), &ids.Get(), &charges.Get(), &casNumbers.Get()),
              ECapeUnknownHR);
    EXPECT_EQ(Show(ids.Get()) + Show(charges.Get()) + Show(casNumbers.Get()), "emptyemptyempty");
}

// A script may keep all answers in one variable: the last one written stays, and those before it are freed.
TEST_F(ReactionChemistry, TakesOneVariantForSeveralOutputs) {
    CVariant first = Strings({u"left"});
    CVariant second = Strings({u"left"});
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &first.Get(), &first.Get(), &first.Get()), S_OK);
    EXPECT_EQ(Show(first.Get()), "['64-17-5', null]");
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &first.Get(), &first.Get(), &second.Get()), S_OK);
    EXPECT_EQ(Show(first.Get()) + Show(second.Get()), "[0, 2]['64-17-5', null]");
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &first.Get(), &second.Get(), &first.Get()), S_OK);
    EXPECT_EQ(Show(first.Get()) + Show(second.Get()), "['64-17-5', null][0, 2]");
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"nowhere"), &first.Get(), &first.Get(), &first.Get()),
              ECapeUnknownHR);
    EXPECT_EQ(Show(first.Get()), "empty");
}

TEST_F(ReactionChemistry, GivesACompoundWithoutACoefficientNoPart) {
    definition->reactions[0]->stoichiometry = {-1.0, 2.0};
    definition->reactions[1]->stoichiometry = {0.0, 0.0, 3.0, 4.0, 5.0};  // and a coefficient without a compound none
    Assign();
    const char* const expectedIds[] = {"['A1', 'B1']", "['C1']"};
    const char* const expectedCoefficients[] = {"[-1, 2]", "[3]"};
    const char16_t* const reactions[] = {u"Main", u"Shift"};
    for (int i = 0; i < 2; ++i) {
        CVariant ids;
        CVariant charges;
        CVariant casNumbers;
        CVariant coefficients;
        EXPECT_EQ(package->GetReactionCompoundIds(Id(reactions[i]), &ids.Get(), &charges.Get(), &casNumbers.Get()),
                  S_OK);
        EXPECT_EQ(package->GetStoichiometricCoefficients(Id(reactions[i]), &coefficients.Get()), S_OK);
        EXPECT_EQ(Show(ids.Get()), expectedIds[i]);
        EXPECT_EQ(NumbersIn(charges.Get()).size(), NumbersIn(coefficients.Get()).size());
        EXPECT_EQ(Show(coefficients.Get()), expectedCoefficients[i]);
    }
}

TEST_F(ReactionChemistry, DoesNotOfferTheLastThree) {
    BSTR text = Id(u"not looked at");
    EXPECT_EQ(package->GetBaseReactant(nullptr, &text), E_NOTIMPL);
    EXPECT_EQ(text, nullptr);
    LONG count = 17;
    CVariant ids = Strings({u"left"});
    EXPECT_EQ(package->GetPhaseCompounds(nullptr, &count, &ids.Get()), E_NOTIMPL);
    EXPECT_EQ(count, 17);
    EXPECT_EQ(Show(ids.Get()), "empty");
    IDispatch* parameters = nullptr;
    EXPECT_EQ(package->GetReactionParameters(nullptr, &parameters), ECapeNoImplHR);
    EXPECT_EQ(Error(), (ReportedError{"GetReactionParameters not supported", "GetReactionParameters not supported",
                                      "GetReactionParameters", chemistry}));
}

/// The seven queries that look a reaction up, each with its name.
struct QueryCase {
    const char* scope;
    HRESULT (*ask)(CReactionPack& package, BSTR id);
};
const QueryCase queryCases[] = {
    {"GetReactionType",
     [](CReactionPack& package, BSTR id) {
         CapeReactionType type;
         return package.GetReactionType(id, &type);
     }},
    {"GetNumberOfReactionCompounds",
     [](CReactionPack& package, BSTR id) {
         LONG count;
         return package.GetNumberOfReactionCompounds(id, &count);
     }},
    {"GetReactionCompoundIds",
     [](CReactionPack& package, BSTR id) {
         CVariant ids;
         CVariant charges;
         CVariant casNumbers;
         return package.GetReactionCompoundIds(id, &ids.Get(), &charges.Get(), &casNumbers.Get());
     }},
    {"GetStoichiometricCoefficients",
     [](CReactionPack& package, BSTR id) {
         CVariant coefficients;
         return package.GetStoichiometricCoefficients(id, &coefficients.Get());
     }},
    {"GetReactionPhase",
     [](CReactionPack& package, BSTR id) {
         CBstr phase;
         return package.GetReactionPhase(id, phase.Receive());
     }},
    {"GetReactionRateBasis",
     [](CReactionPack& package, BSTR id) {
         CapeReactionRateBasis basis;
         return package.GetReactionRateBasis(id, &basis);
     }},
    {"GetReactionConcBasis",
     [](CReactionPack& package, BSTR id) {
         CBstr basis;
         return package.GetReactionConcBasis(id, basis.Receive());
     }},
};
class ReactionQuery : public ReactionChemistry, public testing::WithParamInterface<QueryCase> {};

TEST_P(ReactionQuery, RefusesAnEmptyIdentifier) {
    EXPECT_EQ(GetParam().ask(*package, Id(u"")), ECapeUnknownHR);
    EXPECT_EQ(Error(),
              (ReportedError{"Invalid ID", "Empty string passed as reaction ID", GetParam().scope, chemistry}));
}

TEST_P(ReactionQuery, RefusesAnUnknownIdentifierAsTheCallerSpelledIt) {
    EXPECT_EQ(GetParam().ask(*package, Id(u"mAin2")), ECapeUnknownHR);
    EXPECT_EQ(Error(), (ReportedError{"Invalid ID", "Invalid reaction ID: mAin2", GetParam().scope, chemistry}));
}

TEST_P(ReactionQuery, NeedsADefinition) {
    const CPackageHolder empty;
    EXPECT_EQ(GetParam().ask(*empty, Id(u"Main")), E_UNEXPECTED);
    EXPECT_EQ(ErrorOf(empty.Unknown()), (ReportedError{"<null>", "<null>", "<null>", "<null>"}));
}
INSTANTIATE_TEST_SUITE_P(Table, ReactionQuery, testing::ValuesIn(queryCases),
                         [](const auto& row) { return std::string(row.param.scope); });

TEST_F(ReactionChemistry, RefusesNullOutputs) {
    VARIANT list;
    VariantInit(&list);
    LONG count = 0;
    EXPECT_EQ(package->GetNumberOfReactions(nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionsIds(nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionType(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetNumberOfReactionCompounds(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), nullptr, &list, &list), E_POINTER);
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &list, nullptr, &list), E_POINTER);
    EXPECT_EQ(package->GetReactionCompoundIds(Id(u"Main"), &list, &list, nullptr), E_POINTER);
    EXPECT_EQ(package->GetStoichiometricCoefficients(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionPhase(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionRateBasis(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionConcBasis(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetBaseReactant(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(package->GetPhaseCompounds(Id(u"Main"), nullptr, &list), E_POINTER);
    EXPECT_EQ(package->GetPhaseCompounds(Id(u"Main"), &count, nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionParameters(Id(u"Main"), nullptr), E_POINTER);
    EXPECT_EQ(Error().name, "<null>");
}

TEST(ReactionChemistryWithoutDefinition, TestsTheDefinitionFirstInTheFirstNine) {
    const CPackageHolder package;
    EXPECT_EQ(package->GetNumberOfReactions(nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionsIds(nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionType(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetNumberOfReactionCompounds(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionCompoundIds(nullptr, nullptr, nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetStoichiometricCoefficients(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionPhase(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionRateBasis(nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionConcBasis(nullptr, nullptr), E_UNEXPECTED);
}

TEST(ReactionChemistryWithoutDefinition, LeavesTheOutputsOfTheFirstNineAlone) {
    const CPackageHolder package;
    LONG count = 17;
    CapeReactionType type = CAPE_KINETIC;
    CapeReactionRateBasis basis = CAPE_HETEROGENEOUS;
    CVariant lists[] = {Strings({u"left"}), Strings({u"left"}), Strings({u"left"})};
    VARIANT& first = lists[0].Get();
    const CBstr kept = CBstr::Make(u"left");
    BSTR text = kept.Get();
    EXPECT_EQ(package->GetNumberOfReactions(&count), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionsIds(&first), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionType(text, &type), E_UNEXPECTED);
    EXPECT_EQ(package->GetNumberOfReactionCompounds(text, &count), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionCompoundIds(text, &first, &lists[1].Get(), &lists[2].Get()), E_UNEXPECTED);
    EXPECT_EQ(package->GetStoichiometricCoefficients(text, &first), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionPhase(text, &text), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionRateBasis(text, &basis), E_UNEXPECTED);
    EXPECT_EQ(package->GetReactionConcBasis(text, &text), E_UNEXPECTED);
    EXPECT_EQ(count, 17);
    EXPECT_EQ(type, CAPE_KINETIC);
    EXPECT_EQ(basis, CAPE_HETEROGENEOUS);
    for (const CVariant& list : lists) EXPECT_EQ(Show(list.Get()), "['left']");
    EXPECT_EQ(text, kept.Get());
}

TEST(ReactionChemistryWithoutDefinition, TestsTheOutputFirstInTheLastThree) {
    const CPackageHolder package;
    EXPECT_EQ(package->GetBaseReactant(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(package->GetPhaseCompounds(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(package->GetReactionParameters(nullptr, nullptr), E_POINTER);
    CBstr text;
    EXPECT_EQ(package->GetBaseReactant(nullptr, text.Receive()), E_UNEXPECTED);
    LONG count = 0;
    CVariant ids = Strings({u"left"});
    EXPECT_EQ(package->GetPhaseCompounds(nullptr, &count, &ids.Get()), E_UNEXPECTED);
    EXPECT_EQ(Show(ids.Get()), "['left']");
    IDispatch* parameters = nullptr;
    EXPECT_EQ(package->GetReactionParameters(nullptr, &parameters), E_UNEXPECTED);
}

}  // namespace
}  // namespace reka::test
