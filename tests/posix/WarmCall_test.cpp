// SPDX-License-Identifier: MIT
// A solver's calls, from the second one on: the package takes no memory for them, whatever their number of reactions.
// The material and the reaction object answer out of what was made beforehand, so all that is counted is the package's.

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

int automationAllocations = 0;

void* CountAutomation(std::size_t size) {
    ++automationAllocations;
    return std::malloc(size);
}

class CQuietResults : public CFakeReactionObject {
public:
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT values) override {
        sum += *static_cast<const double*>(values.parray->pvData);
        ++written;
        return S_OK;
    }
    double sum = 0.0;
    int written = 0;
};

/// Answers with arrays that were made beforehand.
class CQuietMaterial : public CFakeMaterial {
public:
    using CFakeMaterial::CFakeMaterial;
    HRESULT STDMETHODCALLTYPE GetProp(BSTR, BSTR, VARIANT, BSTR, BSTR, VARIANT* values) override {
        return Answer(values);
    }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT* values) override { return Answer(values); }
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT, VARIANT, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT, BSTR) override { return S_OK; }

    /// For one call that reads T, P, the fractions, the density, activities and fugacities.
    void Prepare() {
        next.clear();
        for (int i = 0; i < 2; ++i) next.push_back(Numbers({0.25, 0.75}));  // fugacities and activities
        next.push_back(Numbers({1000.0}));                                  // density
        next.push_back(Numbers({0.25, 0.75}));
        next.push_back(Numbers({1e5}));
        next.push_back(Numbers({300.0}));
    }
    std::vector<CVariant> next;  // the last one first

private:
    HRESULT Answer(VARIANT* values) {
        *values = next.back().Detach();
        next.pop_back();
        return S_OK;
    }
};

class WarmCall : public testing::TestWithParam<ThermoVersion> {
protected:
    ~WarmCall() override { automationAllocate = nullptr; }
};

TEST_P(WarmCall, TakesNoMemory) {
    auto definition = MakePackage({u"A1", u"B1"});
    definition->thermoVersion = GetParam();
    constexpr int reactionCount = 40;
    std::vector<std::u16string> names;
    for (int i = 0; i < reactionCount; ++i) {
        names.push_back(u"reaction " + std::u16string(static_cast<std::size_t>(i), u'x'));
        AddKinetic(*definition, names.back().c_str(), u"T+P+C(A1)+X(B1)+A(A1)+F(B1)");
    }
    CQuietMaterial material({u"A1", u"B1"});
    CQuietResults results;
    const CPackageHolder package(*definition);
    IDispatch* pointer = results.Dispatch();
    package->SetReactionObject(&pointer);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    const CVariant props = Strings({u"ReactionRate"});
    const CVariant ids = StringArray(names, 0);
    const CBstr phase = CBstr::Make(u"Liquid");
    const double rate = 300.0 + 1e5 + 250.0 + 0.75 + 0.25 + 0.75;
    for (const VARIANT& asked : {ids.Get(), VARIANT()}) {
        for (const bool isWarm : {false, true}) {
            material.Prepare();
            results.sum = 0.0;
            automationAllocations = 0;
            automationAllocate = CountAutomation;
            const CAllocationCounter allocations;
            EXPECT_EQ(package->CalcReactionProp(props.Get(), phase.Get(), asked, nullptr), S_OK);
            if (isWarm) {
                EXPECT_EQ(allocations.Count(), 0U);
                EXPECT_EQ(automationAllocations, 0);
            }
            automationAllocate = nullptr;
            EXPECT_DOUBLE_EQ(results.sum, reactionCount * rate);
        }
    }
    EXPECT_EQ(results.written, 4 * reactionCount);
    package->Terminate();
}

INSTANTIATE_TEST_SUITE_P(Versions, WarmCall, testing::Values(ThermoVersion::Version10, ThermoVersion::Version11));

}  // namespace
}  // namespace reka::test
