// SPDX-License-Identifier: MIT
// Null in each place where a host can pass it, with and without a definition in the package.

#include <gtest/gtest.h>

#include "HostObjects.h"

namespace host {
namespace {

/// A package that was neither resolved nor loaded.
CRef<reka::ICapeUtilities> MakeUndefinedPackage() {
    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    CRef<IDispatch> made;
    if (FAILED(manager->ResolveReactionsPackage(CText(L"none").Get(), made.Receive()))) return {};
    return made.As<reka::ICapeUtilities>();
}

TEST(NullArguments, OfTheManager) {
    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    EXPECT_EQ(manager->GetListOfReactionsPackages(nullptr), E_POINTER);
    EXPECT_EQ(manager->ResolveReactionsPackage(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(manager->ResolveReactionsPackage(CText(L"Water-gas shift").Get(), nullptr), E_POINTER);
    CRef<IDispatch> unnamed;
    EXPECT_EQ(manager->ResolveReactionsPackage(nullptr, unnamed.Receive()), S_OK);
    EXPECT_EQ(manager.As<reka::ICapeThermoNewPropertyPackage>()->NewPropertyPackage(nullptr), E_POINTER);
}

TEST(NullArguments, OfWhatBothObjectsHave) {
    const auto manager = MakeManager<reka::ICapeUtilities>();
    const auto package = MakePackage(L"T");
    const auto undefined = MakeUndefinedPackage();
    for (const auto* utilities : {&manager, &package, &undefined}) {
        const bool isDefined = utilities != &undefined;
        EXPECT_EQ((*utilities)->get_parameters(nullptr), isDefined ? E_POINTER : E_UNEXPECTED);
        EXPECT_EQ((*utilities)->put_simulationContext(nullptr), S_OK);
        EXPECT_EQ(utilities->As<reka::ECapeRoot>()->get_name(nullptr), E_POINTER);
        const auto user = utilities->As<reka::ECapeUser>();
        EXPECT_EQ(user->get_code(nullptr), E_POINTER);
        EXPECT_EQ(user->get_description(nullptr), E_POINTER);
        EXPECT_EQ(user->get_scope(nullptr), E_POINTER);
        EXPECT_EQ(user->get_interfaceName(nullptr), E_POINTER);
        EXPECT_EQ(user->get_operation(nullptr), E_POINTER);
        EXPECT_EQ(user->get_moreInfo(nullptr), E_POINTER);
        const auto identification = utilities->As<reka::ICapeIdentification>();
        EXPECT_EQ(identification->get_ComponentName(nullptr), E_POINTER);
        EXPECT_EQ(identification->get_ComponentDescription(nullptr), E_POINTER);
        EXPECT_EQ(identification->put_ComponentName(nullptr), isDefined ? S_OK : E_UNEXPECTED);
        EXPECT_EQ(identification->put_ComponentDescription(nullptr), isDefined ? S_OK : E_UNEXPECTED);
    }
}

/// The queries whose output is null, with that reaction.
std::vector<HRESULT> QueriesWithoutOutputs(const CRef<reka::ICapeUtilities>& package, BSTR reaction) {
    const auto chemistry = package.As<reka::ICapeReactionChemistry>();
    return {chemistry->GetNumberOfReactions(nullptr),
            chemistry->GetReactionsIds(nullptr),
            chemistry->GetReactionType(reaction, nullptr),
            chemistry->GetNumberOfReactionCompounds(reaction, nullptr),
            chemistry->GetReactionCompoundIds(reaction, nullptr, nullptr, nullptr),
            chemistry->GetStoichiometricCoefficients(reaction, nullptr),
            chemistry->GetReactionPhase(reaction, nullptr),
            chemistry->GetReactionRateBasis(reaction, nullptr),
            chemistry->GetReactionConcBasis(reaction, nullptr)};
}

TEST(NullArguments, OfQueries) {
    const auto package = MakePackage(L"T");
    const auto undefined = MakeUndefinedPackage();
    const CText known(L"R");
    for (const BSTR reaction : {static_cast<BSTR>(nullptr), known.Get()}) {
        EXPECT_EQ(QueriesWithoutOutputs(package, reaction), std::vector<HRESULT>(9, E_POINTER));
        EXPECT_EQ(QueriesWithoutOutputs(undefined, reaction), std::vector<HRESULT>(9, E_UNEXPECTED));
        for (const auto* object : {&package, &undefined}) {  // these look at the output first
            const auto chemistry = object->As<reka::ICapeReactionChemistry>();
            EXPECT_EQ(chemistry->GetBaseReactant(reaction, nullptr), E_POINTER);
            EXPECT_EQ(chemistry->GetPhaseCompounds(reaction, nullptr, nullptr), E_POINTER);
            EXPECT_EQ(chemistry->GetReactionParameters(reaction, nullptr), E_POINTER);
        }
    }
    const auto chemistry = package.As<reka::ICapeReactionChemistry>();
    CValue lists[3];
    for (int missing = 0; missing < 3; ++missing) {
        VARIANT* outputs[3] = {&lists[0].Get(), &lists[1].Get(), &lists[2].Get()};
        outputs[missing] = nullptr;
        EXPECT_EQ(chemistry->GetReactionCompoundIds(known.Get(), outputs[0], outputs[1], outputs[2]), E_POINTER);
    }
    LONG count = 0;
    EXPECT_EQ(chemistry->GetPhaseCompounds(known.Get(), &count, nullptr), E_POINTER);
    EXPECT_EQ(chemistry->GetPhaseCompounds(known.Get(), nullptr, &lists[0].Get()), E_POINTER);
}

TEST(NullArguments, OfQueriesAboutNoReaction) {
    const auto package = MakePackage(L"T");
    const auto undefined = MakeUndefinedPackage();
    for (const auto* object : {&package, &undefined}) {
        const HRESULT failure = object == &package ? reka::ECapeUnknownHR : E_UNEXPECTED;
        const auto chemistry = object->As<reka::ICapeReactionChemistry>();
        reka::CapeReactionType type = {};
        reka::CapeReactionRateBasis basis = {};
        LONG count = 0;
        CValue lists[4];
        CText text;
        CRef<IDispatch> parameters;
        EXPECT_EQ(chemistry->GetReactionType(nullptr, &type), failure);
        EXPECT_EQ(chemistry->GetNumberOfReactionCompounds(nullptr, &count), failure);
        EXPECT_EQ(chemistry->GetReactionCompoundIds(nullptr, &lists[0].Get(), &lists[1].Get(), &lists[2].Get()),
                  failure);
        EXPECT_EQ(chemistry->GetStoichiometricCoefficients(nullptr, &lists[3].Get()), failure);
        EXPECT_EQ(chemistry->GetReactionPhase(nullptr, text.Receive()), failure);
        EXPECT_EQ(chemistry->GetReactionRateBasis(nullptr, &basis), failure);
        EXPECT_EQ(chemistry->GetReactionConcBasis(nullptr, text.Receive()), failure);
        const bool isDefined = object == &package;
        EXPECT_EQ(chemistry->GetBaseReactant(nullptr, text.Receive()), isDefined ? E_NOTIMPL : E_UNEXPECTED);
        EXPECT_EQ(chemistry->GetPhaseCompounds(nullptr, &count, &lists[0].Get()), isDefined ? E_NOTIMPL : E_UNEXPECTED);
        EXPECT_EQ(chemistry->GetReactionParameters(nullptr, parameters.Receive()),
                  isDefined ? reka::ECapeNoImplHR : E_UNEXPECTED);
    }
}

TEST(NullArguments, OfWhatACalculationNeeds) {
    const auto package = MakePackage(L"T");
    const auto undefined = MakeUndefinedPackage();
    const CValue nothing;
    IDispatch* none = nullptr;
    for (const auto* object : {&package, &undefined}) {
        const bool isDefined = object == &package;
        const auto material = object->As<reka::ICapeThermoMaterialContext>();
        EXPECT_EQ(material->SetMaterial(nullptr), isDefined ? S_OK : E_UNEXPECTED);
        const auto material10 = object->As<reka::ICapeThermoContext10>();
        EXPECT_EQ(material10->SetMaterial(nullptr), E_POINTER);
        EXPECT_EQ(material10->SetMaterial(&none), S_OK);
        const auto kinetic = object->As<reka::ICapeKineticReactionContext>();
        EXPECT_EQ(kinetic->SetReactionObject(nullptr), isDefined ? E_POINTER : E_UNEXPECTED);
        EXPECT_EQ(kinetic->SetReactionObject(&none), isDefined ? S_OK : E_UNEXPECTED);
        EXPECT_EQ(
            object->As<reka::ICapeReactionsRoutine>()->CalcReactionProp(nothing.Get(), nullptr, nothing.Get(), nullptr),
            isDefined ? reka::ECapeUnknownHR : E_UNEXPECTED);
    }
    CMaterial material;
    CReactionObject results;
    ASSERT_EQ(Bind(package, material, results), S_OK);
    const CValue properties = StringArray({L"ReactionRate"});
    EXPECT_EQ(
        package.As<reka::ICapeReactionsRoutine>()->CalcReactionProp(properties.Get(), nullptr, nothing.Get(), nullptr),
        reka::ECapeUnknownHR);  // no phase, which isn't the reaction's
    EXPECT_EQ(package->Terminate(), S_OK);
}

TEST(NullArguments, OfPersistence) {
    const auto package = MakePackage(L"T");
    const auto undefined = MakeUndefinedPackage();
    for (const auto* object : {&package, &undefined}) {
        const HRESULT saved = object == &package ? E_POINTER : E_UNEXPECTED;
        EXPECT_EQ(object->As<IPersistStream>()->GetClassID(nullptr), E_POINTER);
        EXPECT_EQ(object->As<IPersistStream>()->Load(nullptr), E_POINTER);
        EXPECT_EQ(object->As<IPersistStream>()->Save(nullptr, TRUE), saved);
        EXPECT_EQ(object->As<IPersistStream>()->GetSizeMax(nullptr), E_POINTER);
        EXPECT_EQ(object->As<IPersistPropertyBag>()->Load(nullptr, nullptr), E_POINTER);
        EXPECT_EQ(object->As<IPersistPropertyBag>()->Save(nullptr, TRUE, TRUE), saved);
    }
}

}  // namespace
}  // namespace host
