// SPDX-License-Identifier: MIT
// Floating point settings: the component's own while it computes, the host's while it calls, and the same numbers for
// all.

#include "platform/HostArithmetic.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

#include "editor/CompoundsOfMaterial.h"
#include "support/Builders.h"
#include "support/FakeBag.h"
#include "support/FakeEditorUi.h"
#include "support/FakeMaterial.h"
#include "support/FakeMaterialTemplates.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

constexpr std::uint32_t sseFlags = 0x3F;

/// A host that traps on every floating point exception, rounds up, flushes denormal numbers and computes x87 results in
/// single precision.
constexpr ArithmeticSettings strangeHost = {0x4000 | 0x8040, 0x0840};
constexpr ArithmeticSettings usualHost = {0x1F80, 0x037F};

/// Puts the host's settings in force for a block of a test. The tests' own code runs under the usual ones.
class CHostSettings {
public:
    explicit CHostSettings(const ArithmeticSettings& settings) { SetArithmetic(settings); }
    ~CHostSettings() { SetArithmetic(usualHost); }
    CHostSettings(const CHostSettings&) = delete;
    CHostSettings& operator=(const CHostSettings&) = delete;
};

bool IsSame(const ArithmeticSettings& left, const ArithmeticSettings& right) {
    return (left.sse & ~sseFlags) == (right.sse & ~sseFlags) && left.x87 == right.x87;
}

TEST(OwnArithmetic, ComesAndGoesWithItsScope) {
    ArithmeticSettings inside;
    ArithmeticSettings outside;
    ArithmeticSettings again;
    ArithmeticSettings after;
    {
        const CHostSettings host(strangeHost);
        {
            const COwnArithmetic own;
            inside = CurrentArithmetic();
            own.Outside([&] { outside = CurrentArithmetic(); });
            again = CurrentArithmetic();
        }
        after = CurrentArithmetic();
    }
    EXPECT_TRUE(IsSame(inside, usualHost));
    EXPECT_TRUE(IsSame(outside, strangeHost));
    EXPECT_TRUE(IsSame(again, usualHost));
    EXPECT_TRUE(IsSame(after, strangeHost));
}

TEST(OwnArithmetic, SurvivesACallThatLeavesOtherSettingsBehind) {
    ArithmeticSettings inside;
    ArithmeticSettings after;
    {
        const CHostSettings host(strangeHost);
        {
            const COwnArithmetic own;
            own.Outside([] { SetArithmetic({0x0000, 0x0040}); });
            inside = CurrentArithmetic();
        }
        after = CurrentArithmetic();
    }
    EXPECT_TRUE(IsSame(inside, usualHost));
    EXPECT_TRUE(IsSame(after, strangeHost));
}

TEST(OwnArithmetic, RaisesNothingLate) {
    volatile double zero = 0.0;
    volatile double quotient = 0.0;
    volatile long double extended = 0.0L;
    ArithmeticSettings after;
    {
        const CHostSettings host(strangeHost);
        {
            const COwnArithmetic own;
            quotient = 1.0 / zero;
            extended = 1.0L / static_cast<long double>(zero);  // leaves the exception pending in the x87 unit
        }
        after = CurrentArithmetic();
        __asm__ __volatile__("fwait");  // a pending exception would be raised here
    }
    EXPECT_EQ(quotient, std::numeric_limits<double>::infinity());
    EXPECT_EQ(extended, std::numeric_limits<long double>::infinity());
    EXPECT_EQ(after.sse, strangeHost.sse);  // flags as the host left them
}

TEST(OwnArithmetic, LeavesNoX87ExceptionBehindForAHostWithTheSameSettings) {
    volatile double zero = 0.0;
    volatile long double extended = 0.0L;
    std::uint16_t status = 0;
    {
        const COwnArithmetic own;
        extended = 1.0L / static_cast<long double>(zero);
    }
    __asm__ __volatile__("fnstsw %0" : "=a"(status));
    EXPECT_EQ(status & 0x3F, 0);
    EXPECT_EQ(extended, std::numeric_limits<long double>::infinity());
}

TEST(OwnArithmetic, PassesResultsOfOutsideCallsOn) {
    const COwnArithmetic own;
    EXPECT_EQ(own.Outside([] { return 17; }), 17);
}

/// A package whose rates overflow, divide, lose precision and read denormal numbers.
class StrangeHost : public testing::Test {
protected:
    StrangeHost() : definition(MakePackage({u"A1", u"B1"})), material({u"A1", u"B1"}) {
        AddKinetic(*definition, u"Overflow", u"EXP(T*10)");
        AddKinetic(*definition, u"NotANumber", u"MOD(1,X(B1))");
        AddKinetic(*definition, u"Logarithm", u"LOG(X(B1))");
        AddKinetic(*definition, u"Inexact", u"SQRT(T)/3+SIN(T)*T^0.3-LOG10(T)");
        AddKinetic(*definition, u"Denormal", u"C(A1)*0.5");
        for (const auto& reaction : definition->reactions) {
            reaction->stoichiometry = {std::numeric_limits<double>::signaling_NaN(), 0.1};
        }
        material.answers["temperature"] = Numbers({300.0});
        material.answers["fraction"] = Numbers({1.0, 0.0});
        material.answers["density"] = Numbers({1e-310});
    }

    /// Keeps the bits of what it receives: a number can't even be printed under settings that take it for zero.
    class CBitKeeper : public CFakeReactionObject {
    public:
        HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT values) override {
            std::uint64_t bits = 0;
            LONG index = 0;
            SafeArrayGetElement(values.parray, &index, &bits);
            received.push_back(bits);
            log.Record("SetReactionProp");
            return S_OK;
        }
        std::vector<std::uint64_t> received;
    };

    /// What the reaction object received from a calculation under the settings `host`. They must be in force at each
    /// call that goes out, and at the end.
    std::vector<std::uint64_t> CalculateUnder(const ArithmeticSettings& host) {
        const CPackageHolder package(*definition);
        CBitKeeper results;
        IDispatch* pointer = results.Dispatch();
        package->SetReactionObject(&pointer);
        package->SetMaterial(material.Dispatch());
        std::vector<ArithmeticSettings> seen;
        const auto note = [&](const std::string&) { seen.push_back(CurrentArithmetic()); };
        material.log.onCall = note;
        results.log.onCall = note;
        const CVariant props = Strings({u"ReactionRate"});
        const CBstr phase = CBstr::Make(u"Liquid");
        const CBstr id = CBstr::Make(u"Inexact");
        const CVariant all;
        CVariant coefficients;
        HRESULT result = E_FAIL;
        HRESULT query = E_FAIL;
        ArithmeticSettings after;
        {
            const CHostSettings settings(host);
            result = package->CalcReactionProp(props.Get(), phase.Get(), all.Get(), nullptr);
            query = package->GetStoichiometricCoefficients(id.Get(), &coefficients.Get());
            after = CurrentArithmetic();
        }
        material.log.onCall = nullptr;
        EXPECT_EQ(result, S_OK);
        EXPECT_EQ(query, S_OK);
        EXPECT_TRUE(IsSame(after, host));
        EXPECT_EQ(seen.size(), 9U);  // temperature, fraction, two for the density, five results
        for (const ArithmeticSettings& settings : seen) EXPECT_TRUE(IsSame(settings, host));
        package->Terminate();
        return results.received;
    }

    std::unique_ptr<ReactionPackDefinition> definition;
    CFakeMaterial material;
};

TEST_F(StrangeHost, GetsTheNumbersOfAUsualOne) {
    const std::vector<std::uint64_t> usual = CalculateUnder(usualHost);
    ASSERT_EQ(usual.size(), 5U);
    EXPECT_EQ(std::bit_cast<double>(usual[0]), std::numeric_limits<double>::infinity());
    EXPECT_EQ(std::bit_cast<double>(usual[2]), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(std::bit_cast<double>(usual[4]), 5e-311);
    EXPECT_EQ(CalculateUnder(strangeHost), usual);
}

TEST_F(StrangeHost, LoadsAndSavesTheNumbersOfAUsualOne) {
    const CPackageHolder package(*definition);
    CFakeBag bag;
    CFakeErrorLog errorLog;
    std::vector<ArithmeticSettings> seen;
    bag.log.onCall = [&](const std::string&) { seen.push_back(CurrentArithmetic()); };
    ArithmeticSettings afterSave;
    ArithmeticSettings afterLoad;
    {
        const CHostSettings settings(strangeHost);
        package->Save(&bag, 0, 0);
        afterSave = CurrentArithmetic();
    }
    bag.entries["reactionRateEquation"] = Strings({u"0.3", u"1e308*10", u"1.1e-5", u"SQRT(2)", u"0.7e-7/3"});
    HRESULT result = E_FAIL;
    {
        const CHostSettings settings(strangeHost);
        result = package->Load(&bag, &errorLog);
        afterLoad = CurrentArithmetic();
    }
    EXPECT_EQ(result, S_OK);
    EXPECT_TRUE(IsSame(afterSave, strangeHost));
    EXPECT_TRUE(IsSame(afterLoad, strangeHost));
    EXPECT_GT(seen.size(), 40U);
    for (const ArithmeticSettings& settings : seen) EXPECT_TRUE(IsSame(settings, strangeHost));
    const double expected[] = {3 * 0.1, std::numeric_limits<double>::infinity(), (1 + 1 * 0.1) * 1e-5,
                               0x1.6a09e667f3bcdp+0, 7 * 0.1 * 1e-7 / 3};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(package->Definition()->reactions[i]->rateExpression->root->value, expected[i]) << i;
    }
}

/// A simulator that leaves other settings behind after each of its calls, as its material templates are asked.
class StrangeSimulator : public testing::TestWithParam<ThermoVersion> {};

TEST_P(StrangeSimulator, KeepsItsSettingsAndWeOursInAnImport) {
    FakeTemplateSimulator simulator;
    const auto definition = MakePackage({});
    definition->simulationContext = CComRef<IDispatch>(simulator.Context());
    definition->thermoVersion = GetParam();
    std::vector<ArithmeticSettings> seen;
    std::vector<ArithmeticSettings> counting;
    std::vector<ArithmeticSettings> inDialog;
    simulator.log.onCall = [&](const std::string&) {
        seen.push_back(CurrentArithmetic());
        SetArithmetic({0x1F80 | 0x6000, 0x0E7F});  // towards zero
    };
    // Some counts are changed inside calls, under what those have left behind.
    simulator.log.onCount = [&] { counting.push_back(CurrentArithmetic()); };
    MaterialImport import = MaterialImport::Cancelled;
    ArithmeticSettings after;
    {
        const CHostSettings host(strangeHost);
        {
            CFakeEditorUi ui;
            ui.compoundSource = 1;
            ui.inCompoundsOfMaterial = [&](const MaterialCompounds&, ReactionPackDefinition&) {
                inDialog.push_back(CurrentArithmetic());
                return true;
            };
            import = ImportFromMaterialTemplate(*definition, ui);
            inDialog.push_back(CurrentArithmetic());
        }
        after = CurrentArithmetic();
    }
    simulator.log.onCount = nullptr;
    simulator.log.onCall = nullptr;
    EXPECT_EQ(import, MaterialImport::Added);
    EXPECT_GT(seen.size(), 6U);
    EXPECT_GT(counting.size(), 8U);
    for (const ArithmeticSettings& settings : counting) EXPECT_FALSE(IsSame(settings, usualHost));
    for (const ArithmeticSettings& settings : seen) EXPECT_TRUE(IsSame(settings, strangeHost));
    EXPECT_EQ(inDialog.size(), 2U);
    for (const ArithmeticSettings& settings : inDialog) EXPECT_TRUE(IsSame(settings, usualHost));
    EXPECT_TRUE(IsSame(after, strangeHost));
    definition->simulationContext.Reset();
}

INSTANTIATE_TEST_SUITE_P(Versions, StrangeSimulator,
                         testing::Values(ThermoVersion::Version10, ThermoVersion::Version11));

}  // namespace
}  // namespace reka::test
