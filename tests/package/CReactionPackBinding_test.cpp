// SPDX-License-Identifier: MIT
// What binding a material does and leaves, and which materials are refused.

#include "capeopen/ArrayHelpers.h"
#include "package/BindingFixture.h"
#include "support/FakeBag.h"
#include "support/FakeReactionObject.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

TEST_F(MaterialBinding, MatchesByCasNumberAndThenByName) {
    // In another order, with more compounds than the package has, and with names in another case.
    CFakeMaterial& material = NewMaterial({u"N2", u"ARGON", u"m-water", u"m-ethanol"});
    material.SetCasNumber(2, u"7732-18-5");
    material.SetCasNumber(3, u"64-17-5");
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(Ids(), "'m-ethanol''m-water''ARGON'");
    EXPECT_EQ(material.references.Held(), 1);
    EXPECT_EQ(material.log.calls,
              (std::vector<std::string>{"get_ComponentIds()", "GetComponentConstant(['CASRegistryNumber'], ['N2'])",
                                        "GetComponentConstant(['CASRegistryNumber'], ['ARGON'])",
                                        "GetComponentConstant(['CASRegistryNumber'], ['m-water'])",
                                        "GetComponentConstant(['CASRegistryNumber'], ['m-ethanol'])"}));
}

TEST_F(MaterialBinding, DoesNotTouchTheDirtyFlag) {
    CFakeBag bag;
    package->Save(&bag, 1, 1);
    ASSERT_FALSE(package->IsDirty() == S_OK);
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_FALSE(package->IsDirty() == S_OK);
}

TEST_F(MaterialBinding, ShowsTheMaterialsIdentifiersAfterwards) {
    AddKinetic(*definition, u"r", u"1").stoichiometry = {-1.0, 1.0, 0.0};
    Assign();
    CFakeMaterial& material = NewMaterial({u"x", u"y", u"Argon"});
    material.SetCasNumber(0, u"64-17-5");
    material.SetCasNumber(1, u"7732-18-5");
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    CVariant ids;
    CVariant charges;
    CVariant casNumbers;
    package->GetReactionCompoundIds(CBstr::Make(u"r").Get(), &ids.Get(), &charges.Get(), &casNumbers.Get());
    EXPECT_EQ(Show(ids.Get()), "['x', 'y']");
}

TEST_F(MaterialBinding, FallsBackOnTheNameNotTheIdentifier) {
    CFakeMaterial& material = NewMaterial({u"ETHANOL", u"water", u"Argon", u"e"});
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);  // no CAS number is known
    EXPECT_EQ(Ids(), "'ETHANOL''water''Argon'");
}

TEST_F(MaterialBinding, BindsAgainByNameWhateverTheIdentifiersBecame) {
    CFakeMaterial& first = NewMaterial({u"ETHANOL", u"WATER", u"ARGON"});
    CFakeMaterial& second = NewMaterial({u"argon", u"water", u"ethanol"});
    ASSERT_EQ(package->SetMaterial(first.Dispatch()), S_OK);
    ASSERT_EQ(package->SetMaterial(second.Dispatch()), S_OK);
    EXPECT_EQ(Ids(), "'ethanol''water''argon'");
    EXPECT_EQ(first.references.Held(), 0);
    EXPECT_EQ(second.references.Held(), 1);
}

TEST_F(MaterialBinding, GivesASharedCasNumberToTheFirstCompound) {
    definition->compounds[1]->casNumber = CBstr::Make(u"64-17-5");
    Assign();
    CFakeMaterial& material = NewMaterial({u"m1", u"Water", u"Argon"});
    material.SetCasNumber(0, u"64-17-5");
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(Ids(), "'m1''Water''Argon'");
}

TEST_F(MaterialBinding, FailsForTheSecondOfASharedCasNumberWithoutItsName) {
    definition->compounds[1]->casNumber = CBstr::Make(u"64-17-5");
    Assign();
    CFakeMaterial& material = NewMaterial({u"m1", u"H2O", u"Argon"});
    material.SetCasNumber(0, u"64-17-5");
    ExpectFailure(material, "unable to resolve reaction compound Water");
}

TEST_F(MaterialBinding, RefusesACasNumberThatOccursTwice) {
    CFakeMaterial& material = NewMaterial({u"m1", u"m2", u"m3"});
    material.SetCasNumber(0, u"64-17-5");
    material.SetCasNumber(2, u"64-17-5");
    ExpectFailure(material,
                  "CAS number 64-17-5 for compound m1 is present more than once; unable to determine which compound is "
                  "which");
    EXPECT_EQ(material.references.Held(), 1);  // stays bound
}

TEST_F(MaterialBinding, RefusesADuplicateEvenIfTheOtherOneIsTaken) {
    definition->compounds[0]->casNumber.Reset();
    definition->compounds[0]->name = CBstr::Make(u"m3");
    definition->compounds[1]->casNumber = CBstr::Make(u"1-1-1");
    definition->compounds[2]->casNumber = CBstr::Make(u"1-1-1");
    Assign();
    CFakeMaterial& material = NewMaterial({u"m1", u"m2", u"m3"});
    material.SetCasNumber(0, u"1-1-1");
    material.SetCasNumber(1, u"1-1-1");
    ExpectFailure(material,
                  "CAS number 1-1-1 for compound m1 is present more than once; unable to determine which compound is "
                  "which");
}

TEST_F(MaterialBinding, RefusesAnIdentifierThatOccursTwice) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"argon", u"Argon", u"Water"});
    ExpectFailure(material, "compound ID Argon is present more than once; unable to determine which compound is which");
    EXPECT_EQ(material.references.Held(), 1);
}

TEST_F(MaterialBinding, PassesOverAnIdentifierThatWasTaken) {
    definition->compounds[2]->name = CBstr::Make(u"same");
    Assign();
    CFakeMaterial& material = NewMaterial({u"same", u"m-water", u"same"});
    material.SetCasNumber(0, u"64-17-5");
    material.SetCasNumber(1, u"7732-18-5");
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(Ids(), "'same''m-water''same'");
}

TEST_F(MaterialBinding, ReleasesAMaterialThatLacksACompound) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water"});
    ExpectFailure(material, "unable to resolve reaction compound Argon");
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(MaterialBinding, TakesAnAbsentCasNumberForNone) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    material.SetCasNumber(0, nullptr);
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(Ids(), "'Ethanol''Water''Argon'");
}

struct CasAnswerCase {
    const char* name;
    CVariant (*answer)();
    const char* text;
};
CVariant OneOf(CVariant element) {
    std::vector<CVariant> elements;
    elements.push_back(std::move(element));
    return Variants(std::move(elements));
}
const CasAnswerCase casAnswerCases[] = {
    {"StringArray", [] { return Strings({u"64-17-5"}); },
     "invalid response for CAS number for compound Ethanol from material; VARIANT array expected"},
    {"SingleString", [] { return Text(u"64-17-5"); },
     "invalid response for CAS number for compound Ethanol from material; VARIANT array expected"},
    {"NoElements", [] { return Variants({}); },
     "invalid response for CAS number for compound Ethanol from material; VARIANT array expected"},
    {"TwoElements",
     [] {
         std::vector<CVariant> elements;
         elements.push_back(Text(u"1"));
         elements.push_back(Text(u"2"));
         return Variants(std::move(elements));
     },
     "unexpected number of CAS numbers for single compound; 1 value expected"},
    {"EmptyElement", [] { return OneOf(CVariant()); },
     "unexpected data type for CAS number; expected VARIANT of type  BSTR"},
    {"ArrayElement", [] { return OneOf(Strings({u"64-17-5"})); },
     "unexpected data type for CAS number; expected VARIANT of type  BSTR"},
};
class CasAnswer : public MaterialBinding, public testing::WithParamInterface<CasAnswerCase> {};

TEST_P(CasAnswer, OfAnotherShapeEndsTheBinding) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    for (std::size_t i = 0; i < 3; ++i) material.SetCasNumber(i, u"9-9-9");
    material.casAnswers[0] = GetParam().answer();
    ExpectFailure(material, GetParam().text);
    EXPECT_EQ(material.references.Held(), 1);
    EXPECT_EQ(material.log.calls.size(), 2U);
}
INSTANTIATE_TEST_SUITE_P(Table, CasAnswer, testing::ValuesIn(casAnswerCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MaterialBinding, CountsAnEmptyCasAnswerAsNoNumber) {
    // An empty variant is an array of no elements: not the one that is expected.
    class CEmptyAnswer : public CFakeMaterial {
    public:
        using CFakeMaterial::CFakeMaterial;
        HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT, VARIANT, VARIANT* values) override {
            VariantInit(values);
            return S_OK;
        }
    };
    CEmptyAnswer material({u"Ethanol", u"Water", u"Argon"});
    ExpectFailure(material, "unexpected number of CAS numbers for single compound; 1 value expected");
    package->UnsetMaterial();
}

struct CompoundListCase {
    const char* name;
    CVariant (*list)();
};
const CompoundListCase compoundListCases[] = {
    {"Empty", [] { return CVariant(); }},
    {"NoElements", [] { return Strings({}); }},
    {"Numbers", [] { return Numbers({1.0}); }},
    {"LowerBoundOne",
     [] {
         return StringArray({u"Ethanol", u"Water", u"Argon"}, 1);
     }},
    {"TwoDimensions", [] { return TwoDimensions(VT_BSTR); }},
    {"SingleString", [] { return Text(u"Ethanol"); }},
};
class CompoundList : public MaterialBinding, public testing::WithParamInterface<CompoundListCase> {};

TEST_P(CompoundList, OfNoUseIsNoCompounds) {
    CFakeMaterial& material = NewMaterial({});
    material.componentIds = GetParam().list();
    ExpectFailure(material, "no compounds");
    EXPECT_EQ(material.references.Held(), 1);
}
INSTANTIATE_TEST_SUITE_P(Table, CompoundList, testing::ValuesIn(compoundListCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MaterialBinding, PassesOnWhyTheListCannotBeRead) {
    CFakeMaterial& material = NewMaterial({u"Ethanol"});
    material.failures["get_ComponentIds"] = static_cast<HRESULT>(0x80040502U);
    material.description = u"gone fishing";
    ExpectFailure(material, "failed to obtain list of compound IDs from material: gone fishing");
    EXPECT_EQ(material.references.Held(), 1);
}

TEST_F(MaterialBinding, NeedsTheVersion10InterfaceUnderBothVersions) {
    CFakeMaterial& first = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    ASSERT_EQ(package->SetMaterial(first.Dispatch()), S_OK);
    CFakeMaterial& second = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    second.offersMaterialObject = false;
    EXPECT_EQ(package->SetMaterial(second.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()), (ReportedError{"<null>", "<null>", "<null>", "<null>"}));
    EXPECT_EQ(first.references.Held(), 0);
    EXPECT_EQ(second.references.Held(), 1);
}

TEST_F(MaterialBinding, LeavesTheOldMaterialWithoutADefinition) {
    const CPackageHolder empty;
    CFakeMaterial& material = NewMaterial({u"Ethanol"});
    EXPECT_EQ(empty->SetMaterial(material.Dispatch()), E_UNEXPECTED);
    EXPECT_EQ(material.references.Held(), 0);
    IDispatch* pointer = material.Dispatch();
    EXPECT_EQ(empty->SetMaterial(&pointer), E_UNEXPECTED);
    pointer = nullptr;
    EXPECT_EQ(empty->SetMaterial(&pointer), S_OK);
    EXPECT_EQ(empty->UnsetMaterial(), S_OK);
    EXPECT_EQ(empty->SetMaterial(static_cast<IDispatch**>(nullptr)), E_POINTER);
}

TEST_F(MaterialBinding, KeepsTheBoundMaterialWhenTheDefinitionIsGone) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    package->AssignDefinition(nullptr);
    CFakeMaterial& other = NewMaterial({u"Ethanol"});
    EXPECT_EQ(package->SetMaterial(other.Dispatch()), E_UNEXPECTED);
    EXPECT_EQ(material.references.Held(), 1);
    EXPECT_EQ(other.references.Held(), 0);
}

TEST_F(MaterialBinding, IsUndoneByUnsetMaterialAndByNull) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(package->UnsetMaterial(), S_OK);
    EXPECT_EQ(material.references.Held(), 0);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(package->SetMaterial(static_cast<IDispatch*>(nullptr)), S_OK);
    EXPECT_EQ(material.references.Held(), 0);
    IDispatch* pointer = material.Dispatch();
    ASSERT_EQ(package->SetMaterial(&pointer), S_OK);  // by the version 1.0 context
    EXPECT_EQ(material.references.Held(), 1);
    EXPECT_EQ(pointer, material.Dispatch());
    pointer = nullptr;
    EXPECT_EQ(package->SetMaterial(&pointer), S_OK);
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(MaterialBinding, WithNullLeavesNoMaterialToCalculateWith) {
    CFakeReactionObject results;
    IDispatch* pointer = results.Dispatch();
    package->SetReactionObject(&pointer);
    package->SetMaterial(static_cast<IDispatch*>(nullptr));
    const CVariant props = Strings({u"ReactionRate"});
    EXPECT_EQ(package->CalcReactionProp(props.Get(), nullptr, {}, nullptr), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "Missing material");
    package->Terminate();
}

TEST_F(MaterialBinding, LosesTheEarlierMaterialToAnUnusableOne) {
    CFakeMaterial& first = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    CFakeMaterial& second = NewMaterial({});
    ASSERT_EQ(package->SetMaterial(first.Dispatch()), S_OK);
    EXPECT_EQ(package->SetMaterial(second.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(first.references.Held(), 0);
    EXPECT_EQ(second.references.Held(), 1);
}

// By the rules of the platform a failed question has no answer; not every host knows them.
TEST_F(MaterialBinding, UsesNothingThatAFailedQuestionLeaves) {
    CRefusing<CFakeMaterial> material({u"Ethanol", u"Water", u"Argon"});
    material.refused = ICapeThermoMaterialObject::iid;
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(material.log.calls, std::vector<std::string>{});
    EXPECT_EQ(material.references.Held(), 1);
    package->UnsetMaterial();
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(MaterialBinding, SurvivesAMaterialThatBindsAnotherOneMeanwhile) {
    CFakeMaterial& inner = NewMaterial({u"Argon", u"Water", u"Ethanol"});
    CFakeMaterial& outer = NewMaterial({u"ETHANOL", u"WATER", u"ARGON"});
    outer.log.onCall = [&](const std::string& call) {
        if (call == "get_ComponentIds()") package->SetMaterial(inner.Dispatch());
    };
    EXPECT_EQ(package->SetMaterial(outer.Dispatch()), S_OK);
    EXPECT_EQ(outer.references.Held(), 0);
    EXPECT_EQ(inner.references.Held(), 1);  // the later one stays
    EXPECT_EQ(Ids(), "'Ethanol''Water''Argon'");
}

TEST_F(MaterialBinding, SurvivesAMaterialThatEndsThePackageMeanwhile) {
    CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
    material.log.onCall = [&](const std::string&) { package->Terminate(); };
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    EXPECT_EQ(material.references.Held(), 0);
}

TEST_F(MaterialBinding, FailsCleanlyWhateverCallOfTheMaterialFails) {
    // A failing constant is no failure: that compound is then resolved by its name.
    for (int n = 1; n <= 4; ++n) {
        CFakeMaterial& material = NewMaterial({u"Ethanol", u"Water", u"Argon"});
        material.log.failAt = n;
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), n == 1 ? ECapeUnknownHR : S_OK);
        EXPECT_EQ(package->UnsetMaterial(), S_OK);
        EXPECT_EQ(material.references.Held(), 0);
    }
}

}  // namespace
}  // namespace reka::test
