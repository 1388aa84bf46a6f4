// SPDX-License-Identifier: MIT
// What is lent to the simulator's objects: the same array each time, as it was meant, whatever they do to it.

#include "package/LentArray.h"

#include <gtest/gtest.h>

#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

/// The text as the only element.
const VARIANT* LendText(CLentArray& array, const CBstr& text) {
    return array.LendTexts(1, [&](std::size_t) { return text.Get(); });
}

TEST(LentArray, IsTheSameOneForEachNumber) {
    CLentArray array;
    const VARIANT* const lent = array.LendNumber(1.5);
    ASSERT_NE(lent, nullptr);
    EXPECT_EQ(Show(*lent), "[1.5]");
    SAFEARRAY* const first = lent->parray;
    EXPECT_EQ(Show(*array.LendNumber(-2.0)), "[-2]");
    EXPECT_EQ(array.Get().parray, first);
}

TEST(LentArray, IsTheSameOneForTheSameTextsAlone) {
    CLentArray array;
    const CBstr text = CBstr::Make(u"ethanol");
    SAFEARRAY* const first = LendText(array, text)->parray;
    EXPECT_EQ(Show(array.Get()), "['ethanol']");
    EXPECT_EQ(LendText(array, CBstr::Make(u"ethanol"))->parray, first);
    EXPECT_EQ(Show(*LendText(array, CBstr::Make(u"Ethanol"))), "['Ethanol']");
    EXPECT_EQ(Show(*LendText(array, CBstr())), "[null]");
    EXPECT_EQ(Show(*LendText(array, CBstr::Make(u""))), "['']");
    EXPECT_EQ(Show(*LendText(array, CBstr())), "[null]");
    EXPECT_EQ(Show(*array.LendNumber(3.0)), "[3]");
    EXPECT_EQ(Show(*LendText(array, text)), "['ethanol']");
    EXPECT_EQ(array.LendTexts(0, [](std::size_t) { return BSTR(); })->vt, VT_EMPTY);
    const CBstr many[] = {CBstr::Make(u"a"), CBstr(), CBstr::Make(u"b")};
    EXPECT_EQ(Show(*array.LendTexts(3, [&](std::size_t i) { return many[i].Get(); })), "['a', null, 'b']");
}

TEST(LentArray, HasCopiesOfItsTexts) {
    CLentArray array;
    const CBstr text = CBstr::Make(u"id");
    EXPECT_NE(static_cast<const BSTR*>(LendText(array, text)->parray->pvData)[0], text.Get());
}

TEST(LentArray, CannotBeDestroyedByWhoHasIt) {
    CLentArray array;
    VARIANT taken = *array.LendNumber(1.0);
    EXPECT_EQ(SafeArrayDestroy(taken.parray), DISP_E_ARRAYISLOCKED);
    VariantClear(&taken);
    EXPECT_EQ(Show(*array.LendNumber(2.0)), "[2]");
    EXPECT_EQ(array.Get().parray->cLocks, 1U);
}

TEST(LentArray, IsMadeAnewAfterSomebodyPutHisOwnIntoIt) {
    CLentArray array;
    const CBstr text = CBstr::Make(u"mine");
    LONG index = 0;
    ASSERT_EQ(SafeArrayPutElement(LendText(array, text)->parray, &index, CBstr::Make(u"your").Get()), S_OK);
    EXPECT_EQ(Show(array.Get()), "['your']");
    EXPECT_EQ(Show(*LendText(array, text)), "['mine']");
}

TEST(LentArray, IsLeftToWhoKeepsItLocked) {
    CLentArray array;
    SAFEARRAY* const kept = array.LendNumber(1.0)->parray;
    SafeArrayLock(kept);
    const VARIANT* const other = array.LendNumber(2.0);
    ASSERT_NE(other->parray, kept);
    EXPECT_EQ(Show(*other), "[2]");
    EXPECT_EQ(*static_cast<double*>(kept->pvData), 1.0);
    EXPECT_EQ(SafeArrayUnlock(kept), S_OK);
    EXPECT_EQ(SafeArrayDestroy(kept), S_OK);
}

TEST(LentArray, IsMadeAnewAfterSomebodyUnlockedIt) {
    CLentArray array;
    SafeArrayUnlock(array.LendNumber(1.0)->parray);
    EXPECT_EQ(Show(*array.LendNumber(2.0)), "[2]");
    EXPECT_EQ(array.Get().parray->cLocks, 1U);
}

TEST(LentArray, IsLeftWhereSomebodyHasBentIt) {
    CLentArray array;
    SAFEARRAY* const bent = array.LendNumber(1.0)->parray;
    double own[2] = {};
    void* const made = std::exchange(bent->pvData, static_cast<void*>(own));
    bent->rgsabound[0].cElements = 2;
    EXPECT_EQ(Show(*array.LendNumber(2.0)), "[2]");
    EXPECT_NE(array.Get().parray, bent);
    bent->pvData = made;
    bent->rgsabound[0].cElements = 1;
    EXPECT_EQ(bent->cLocks, 0U);
    EXPECT_EQ(SafeArrayDestroy(bent), S_OK);
}

TEST(CallArrays, KeepSomePropertiesAndPhases) {
    CCallArrays arrays;
    const CBstr density = CBstr::Make(u"density");
    SAFEARRAY* const first = arrays.LendProperty(density.Get())->parray;
    EXPECT_EQ(Show(*arrays.LendProperty(CBstr::Make(u"fugacity").Get())), "['fugacity']");
    EXPECT_EQ(arrays.LendProperty(density.Get())->parray, first);
    EXPECT_EQ(Show(*arrays.LendPhase(density.Get())), "['density']");
    EXPECT_NE(arrays.LendPhase(density.Get())->parray, first);
    for (int i = 0; i < 20; ++i) {  // more than are kept
        const std::string name(static_cast<std::size_t>(i), 'x');
        const CBstr text = CBstr::Make(std::u16string(name.begin(), name.end()));
        EXPECT_EQ(Show(*arrays.LendPhase(text.Get())), "['" + name + "']");
    }
}

TEST(CallArrays, BelongToTheReactionsOfOneDefinition) {
    CCallArrays arrays;
    const CBstr id = CBstr::Make(u"r");
    arrays.UseFor(7, 2);
    SAFEARRAY* const first = arrays.LendId(1, id.Get())->parray;
    EXPECT_NE(arrays.LendId(0, id.Get())->parray, first);
    arrays.UseFor(7, 2);
    EXPECT_EQ(arrays.LendId(1, id.Get())->parray, first);
    arrays.UseFor(8, 3);
    EXPECT_EQ(Show(*arrays.LendId(2, id.Get())), "['r']");
}

/// A package of two reactions that read the temperature, and one that reads a molarity.
class LentInCalls : public testing::Test {
protected:
    /// Notes the arrays that it is lent.
    class CNotingResults : public CFakeReactionObject {
    public:
        HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR inPhase, VARIANT reacIds, BSTR basis,
                                                  VARIANT values) override {
            lent.push_back(reacIds.parray);
            lent.push_back(values.parray);
            const HRESULT result = CFakeReactionObject::SetReactionProp(property, inPhase, reacIds, basis, values);
            if (afterwards) afterwards(reacIds, values);
            return result;
        }
        std::vector<const void*> lent;
        std::function<void(VARIANT& reacIds, VARIANT& values)> afterwards;
    };

    LentInCalls() : material({u"A1", u"B1"}) {
        auto definition = MakePackage({u"A1", u"B1"});
        AddKinetic(*definition, u"First", u"2*T");
        AddKinetic(*definition, u"Second", u"3*T");
        AddKinetic(*definition, u"Third", u"C(B1)");
        material.answers["temperature"] = Numbers({300.0});
        material.answers["fraction"] = Numbers({0.25, 0.75});
        material.answers["density"] = Numbers({1000.0});
        package->AssignDefinition(definition.get());
        IDispatch* pointer = results.Dispatch();
        package->SetReactionObject(&pointer);
        package->SetMaterial(material.Dispatch());
        material.log.Clear();
    }
    ~LentInCalls() override { package->Terminate(); }

    HRESULT Calculate() {
        const CVariant props = Strings({u"ReactionRate"});
        return package->CalcReactionProp(props.Get(), phase.Get(), {}, nullptr);
    }
    void ExpectRates() {
        ASSERT_GE(results.log.calls.size(), 3U);
        const auto last = results.log.calls.end();
        EXPECT_EQ(last[-3], "SetReactionProp('ReactionRate', 'liquid', ['First'], null, [600])");
        EXPECT_EQ(last[-2], "SetReactionProp('ReactionRate', 'liquid', ['Second'], null, [900])");
        EXPECT_EQ(last[-1], "SetReactionProp('ReactionRate', 'liquid', ['Third'], null, [750])");
    }

    CFakeMaterial material;
    CNotingResults results;
    CPackageHolder package;
    CBstr phase = CBstr::Make(u"liquid");
};

TEST_F(LentInCalls, AreTheSameCallAfterCall) {
    EXPECT_EQ(Calculate(), S_OK);
    const std::vector<const void*> first = std::exchange(results.lent, {});
    EXPECT_EQ(first[1], first[3]);  // one for all numbers
    EXPECT_NE(first[0], first[2]);  // one for each id
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(results.lent, first);
    ExpectRates();
}

TEST_F(LentInCalls, AreRightWhateverTheHostDidToThem) {
    results.afterwards = [](VARIANT& reacIds, VARIANT& values) {
        LONG index = 0;
        double other = -1.0;
        SafeArrayPutElement(reacIds.parray, &index, CBstr::Make(u"Foist").Get());
        SafeArrayPutElement(values.parray, &index, &other);
        EXPECT_EQ(SafeArrayDestroy(reacIds.parray), DISP_E_ARRAYISLOCKED);
        EXPECT_EQ(SafeArrayDestroy(values.parray), DISP_E_ARRAYISLOCKED);
    };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Calculate(), S_OK);
        ExpectRates();
    }
}

TEST_F(LentInCalls, AreOthersInACalculationWithin) {
    EXPECT_EQ(Calculate(), S_OK);
    const std::vector<const void*> first = std::exchange(results.lent, {});
    int depth = 0;
    std::vector<const void*> within;
    results.log.onCall = [&](const std::string& call) {
        if (depth > 0 || call.find("Second") == std::string::npos) return;
        ++depth;
        const std::vector<const void*> outer = std::exchange(results.lent, {});
        EXPECT_EQ(Calculate(), S_OK);
        within = std::exchange(results.lent, outer);
        --depth;
    };
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(results.lent, first);
    ASSERT_EQ(within.size(), first.size());
    for (const void* const array : within) {
        EXPECT_EQ(std::find(first.begin(), first.end(), array), first.end());
    }
}

TEST_F(LentInCalls, HaveTheIdsOfTheDefinitionInUse) {
    EXPECT_EQ(Calculate(), S_OK);
    auto other = MakePackage({u"A1", u"B1"});
    AddKinetic(*other, u"Only", u"T");
    package->AssignDefinition(other.get());
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(results.log.calls.back(), "SetReactionProp('ReactionRate', 'liquid', ['Only'], null, [300])");
}

TEST_F(LentInCalls, HaveTheIdsOfTheMaterialThatWasBoundLast) {
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(material.log.calls.at(1), "GetProp('fraction', 'liquid', ['A1', 'B1'], null, 'mole')");
    material.componentIds = Strings({u"a1", u"b1"});
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    material.log.Clear();
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(material.log.calls.at(1), "GetProp('fraction', 'liquid', ['a1', 'b1'], null, 'mole')");
}

TEST_F(LentInCalls, StayWithACallWhoseHostBindsAndLoadsMeanwhile) {
    EXPECT_EQ(Calculate(), S_OK);
    auto other = MakePackage({u"A1", u"B1"});
    AddKinetic(*other, u"Only", u"T");
    material.componentIds = Strings({u"a1", u"b1"});
    results.afterwards = [&](VARIANT& reacIds, VARIANT& values) {
        results.afterwards = nullptr;
        package->SetMaterial(material.Dispatch());
        package->AssignDefinition(other.get());
        package->SetMaterial(material.Dispatch());
        EXPECT_EQ(Show(reacIds), "['First']");
        EXPECT_EQ(Show(values), "[600]");
    };
    EXPECT_EQ(Calculate(), S_OK);
    ExpectRates();
    EXPECT_EQ(Calculate(), S_OK);
    EXPECT_EQ(results.log.calls.back(), "SetReactionProp('ReactionRate', 'liquid', ['Only'], null, [300])");
}

}  // namespace
}  // namespace reka::test
