// SPDX-License-Identifier: MIT
// What a simulator does with the component, from the registry to the numbers and into its documents.

#include <gtest/gtest.h>

#include <cmath>

#include "HostObjects.h"

namespace host {
namespace {

constexpr wchar_t rate[] = L"2*T+3*X(First)+P/C(Second)";
// 2 * 300 + 3 * 0.25 + 2e5 / (0.75 * 40)
constexpr double rateAtMaterial = 2 * 300.0 + 3 * 0.25 + 2e5 / (0.75 * 40.0);

TEST(MainRoad, ListsThePackages) {
    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    ASSERT_TRUE(manager);
    CValue names;
    ASSERT_EQ(manager->GetListOfReactionsPackages(&names.Get()), S_OK);
    EXPECT_EQ(names.Get().vt, VT_ARRAY | VT_BSTR);
    const std::vector<std::wstring> list = StringsOf(names.Get());
    EXPECT_EQ(list.size(), 9U);
    EXPECT_NE(std::find(list.begin(), list.end(), L"Water-gas shift"), list.end());
}

TEST(MainRoad, ResolvesAndTellsReactions) {
    const auto package = ResolvePackage(L"methanol SYNTHESIS");
    ASSERT_TRUE(package);
    const auto chemistry = package.As<reka::ICapeReactionChemistry>();
    CValue ids;
    ASSERT_EQ(chemistry->GetReactionsIds(&ids.Get()), S_OK);
    EXPECT_EQ(StringsOf(ids.Get()), (std::vector<std::wstring>{L"methanol", L"reverse shift"}));
    CValue coefficients;
    ASSERT_EQ(chemistry->GetStoichiometricCoefficients(CText(L"methanol").Get(), &coefficients.Get()), S_OK);
    EXPECT_EQ(NumbersOf(coefficients.Get()), (std::vector<double>{-1, -3, 1, 1}));
}

TEST(MainRoad, CalculatesInBothThermoVersions) {
    for (const wchar_t* version : {L"1.0", L"1.1"}) {
        CMaterial material;
        CReactionObject results;
        {
            const auto package = MakePackage(rate, L"-1000*R", version);
            ASSERT_TRUE(package);
            ASSERT_EQ(Bind(package, material, results), S_OK);
            ASSERT_EQ(Calculate(package), S_OK);
            EXPECT_DOUBLE_EQ(results.values[L"ReactionRate R"], rateAtMaterial);
            EXPECT_EQ(results.values[L"EnthalpyOfReaction R"], -1000 * 8.314);
            EXPECT_GT(material.calls.held, 0);
        }
        EXPECT_EQ(material.calls.held, 0);
        EXPECT_EQ(results.calls.held, 0);
    }
}

TEST(MainRoad, GivesEverythingBackAtTheEnd) {
    CMaterial material;
    CReactionObject results;
    CMaterial context;
    const auto package = MakePackage(rate);
    ASSERT_EQ(package->put_simulationContext(context.Dispatch()), S_OK);
    ASSERT_EQ(Bind(package, material, results), S_OK);
    ASSERT_EQ(package->Terminate(), S_OK);
    EXPECT_EQ(material.calls.held, 0);
    EXPECT_EQ(results.calls.held, 0);
    EXPECT_EQ(context.calls.held, 0);
}

TEST(MainRoad, KeepsAPackageInAStream) {
    const auto package = MakePackage(rate);
    CRef<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()), S_OK);
    const auto saved = package.As<IPersistStream>();
    EXPECT_EQ(saved->IsDirty(), S_FALSE);  // loaded just now
    ASSERT_EQ(saved->Save(stream.Get(), TRUE), S_OK);
    ULARGE_INTEGER most = {};
    ASSERT_EQ(saved->GetSizeMax(&most), S_OK);
    LARGE_INTEGER start = {};
    ULARGE_INTEGER written = {};
    stream->Seek(start, STREAM_SEEK_CUR, &written);
    EXPECT_EQ(most.QuadPart + 4, written.QuadPart);  // the word of the size goes before
    stream->Seek(start, STREAM_SEEK_SET, nullptr);

    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    CRef<IDispatch> made;
    ASSERT_EQ(manager->ResolveReactionsPackage(CText(L"no such package").Get(), made.Receive()), S_OK);
    const auto loaded = made.As<reka::ICapeUtilities>();
    EXPECT_NE(loaded->Initialize(), S_OK);
    ASSERT_EQ(made.As<IPersistStream>()->Load(stream.Get()), S_OK);
    ASSERT_EQ(loaded->Initialize(), S_OK);
    CMaterial material;
    CReactionObject results;
    ASSERT_EQ(Bind(loaded, material, results), S_OK);
    ASSERT_EQ(Calculate(loaded), S_OK);
    EXPECT_DOUBLE_EQ(results.values[L"ReactionRate R"], rateAtMaterial);
    ASSERT_EQ(loaded->Terminate(), S_OK);
}

TEST(MainRoad, KeepsAPackageInABag) {
    CBag bag;
    const auto package = MakePackage(rate);
    ASSERT_EQ(package.As<IPersistPropertyBag>()->Save(&bag, TRUE, TRUE), S_OK);
    EXPECT_EQ(StringsOf(bag.members[L"reactionRateEquation"].Get()), (std::vector<std::wstring>{rate}));
    EXPECT_EQ(bag.calls.held, 0);
    const auto manager = MakeManager<reka::ICapeThermoNewPropertyPackage>();
    CRef<IDispatch> made;
    ASSERT_EQ(manager->NewPropertyPackage(made.Receive()), S_OK);
    ASSERT_EQ(made.As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
    CText name;
    ASSERT_EQ(made.As<reka::ICapeIdentification>()->get_ComponentName(name.Receive()), S_OK);
    EXPECT_EQ(name.Read(), L"Made by a host");
}

TEST(MainRoad, TellsWhyACallFailed) {
    const auto package = MakePackage(rate);
    ASSERT_EQ(Calculate(package), reka::ECapeUnknownHR);
    const auto errors = package.As<reka::ECapeUser>();
    CText description;
    CText scope;
    CText interfaceName;
    ASSERT_EQ(errors->get_description(description.Receive()), S_OK);
    ASSERT_EQ(errors->get_scope(scope.Receive()), S_OK);
    ASSERT_EQ(errors->get_interfaceName(interfaceName.Receive()), S_OK);
    EXPECT_FALSE(description.Read().empty());
    EXPECT_EQ(scope.Read(), L"CalcReactionProp");
    EXPECT_EQ(interfaceName.Read(), L"ICapeReactionsRoutine");
}

}  // namespace
}  // namespace host
