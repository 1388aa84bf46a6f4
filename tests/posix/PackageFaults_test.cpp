// SPDX-License-Identifier: MIT
// Each allocation of each method of a package fails in turn, alone and with all behind it. Whichever it is, the method
// has done all that it does, or the package and the outputs are as they were and the failure is the one that belongs to
// the method. A row for a method, or for a road through it.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "package/CreateReactionPack.h"
#include "posix/AllocationFailures.h"
#include "posix/PackageBench.h"
#include "support/posix/LateMembers.h"

namespace reka::test {
namespace {

using Results = std::vector<HRESULT>;
const Results unknown = {ECapeUnknownHR};
const Results noMemory = {E_OUTOFMEMORY};
const Results failed = {E_FAIL};
const Results untouched;

struct PackageMethod {
    const char* name;
    Begin begin;
    HRESULT done;  // what it answers where nothing fails
    HRESULT (*call)(PackageBench& bench);
    Results without;                                      // what it answers without memory; empty: it takes none
    void (*prepare)(PackageBench& bench) = [](auto&) {};  // what goes before
};

using B = PackageBench;

void FailOnce(B& b) {
    CComRef<IDispatch> parameters;
    EXPECT_EQ(b.Package().GetReactionParameters(b.kinetic.Get(), parameters.Receive()), ECapeNoImplHR);
}

const PackageMethod packageMethods[] = {
    {"Create", Begin::Fresh, S_OK,
     [](B& b) {
         void* made = nullptr;
         const HRESULT result = CreateReactionPack(IID_IDispatch, &made);
         b.object.Reset(static_cast<IDispatch*>(made));
         return result;
     },
     noMemory},
    {"GetName", Begin::Defined, S_OK, [](B& b) { return b.Package().get_ComponentName(b.text.Receive()); }, noMemory},
    {"PutName", Begin::Defined, S_OK, [](B& b) { return b.Package().put_ComponentName(b.none.Get()); }, unknown},
    {"GetDescription", Begin::Defined, S_OK,
     [](B& b) { return b.Package().get_ComponentDescription(b.text.Receive()); }, noMemory},
    {"PutDescription", Begin::Defined, S_OK, [](B& b) { return b.Package().put_ComponentDescription(b.none.Get()); },
     unknown},
    {"GetParameters", Begin::Defined, S_OK, [](B& b) { return b.Package().get_parameters(b.object.Receive()); },
     untouched},
    {"PutContext", Begin::Defined, S_OK, [](B& b) { return b.Package().put_simulationContext(b.results.Dispatch()); },
     untouched},
    {"Initialize", Begin::Defined, S_OK, [](B& b) { return b.Package().Initialize(); }, untouched},
    {"InitializeWithoutDefinition", Begin::Fresh, ECapeUnknownHR, [](B& b) { return b.Package().Initialize(); },
     unknown},
    {"Terminate", Begin::Bound, S_OK, [](B& b) { return b.Package().Terminate(); }, untouched},
    {"Edit", Begin::Defined, S_OK, [](B& b) { return b.Package().Edit(); }, unknown},
    {"EditWithoutDefinition", Begin::Fresh, S_OK, [](B& b) { return b.Package().Edit(); }, unknown},
    {"SetReactionObject", Begin::Bound, S_OK,
     [](B& b) {
         IDispatch* pointer = b.results.Dispatch();
         return b.Package().SetReactionObject(&pointer);
     },
     untouched},
    {"SetReactionObjectThatIsNone", Begin::Defined, ECapeUnknownHR,
     [](B& b) {
         IDispatch* pointer = b.material.Dispatch();
         return b.Package().SetReactionObject(&pointer);
     },
     unknown},
    {"SetMaterial", Begin::Defined, S_OK, [](B& b) { return b.Package().SetMaterial(b.material.Dispatch()); }, unknown},
    {"SetMaterialAgain", Begin::Bound, S_OK, [](B& b) { return b.Package().SetMaterial(b.material.Dispatch()); },
     unknown},
    {"SetMaterial10", Begin::Defined, S_OK,
     [](B& b) {
         IDispatch* pointer = b.material.Dispatch();
         return b.Package().SetMaterial(&pointer);
     },
     unknown},
    {"SetMaterialOfOtherCompounds", Begin::Defined, ECapeUnknownHR,
     [](B& b) { return b.Package().SetMaterial(b.material.Dispatch()); }, unknown,
     [](B& b) {
         b.material.componentIds = Strings({u"x", u"y"});
     }},
    {"SetMaterialThatFails", Begin::Defined, ECapeUnknownHR,
     [](B& b) { return b.Package().SetMaterial(b.material.Dispatch()); }, unknown,
     [](B& b) { b.material.failures["get_ComponentIds"] = E_FAIL; }},
    {"UnsetMaterial", Begin::Bound, S_OK, [](B& b) { return b.Package().UnsetMaterial(); }, untouched},
    {"Calculate", Begin::Bound, S_OK,
     [](B& b) { return b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.kinetics.Get(), nullptr); },
     unknown},
    {"Calculate11", Begin::Bound11, S_OK,
     [](B& b) { return b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.kinetics.Get(), nullptr); },
     unknown},
    {"CalculateConstants", Begin::Bound, S_OK,
     [](B& b) { return b.Package().CalcReactionProp(b.constants.Get(), b.phase.Get(), b.equilibria.Get(), nullptr); },
     unknown},
    {"CalculateOnceMore", Begin::Bound, S_OK,
     [](B& b) { return b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.kinetics.Get(), nullptr); },
     untouched,
     [](B& b) {
         b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.kinetics.Get(), nullptr);
         b.results.log.Clear();
     }},
    {"CalculateOfAMaterialThatFails", Begin::Bound, ECapeUnknownHR,
     [](B& b) { return b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.kinetics.Get(), nullptr); },
     unknown, [](B& b) { b.material.failures["GetProp density"] = E_FAIL; }},
    {"CalculateNoRateOfAnEquilibrium", Begin::Bound, ECapeUnknownHR,
     [](B& b) { return b.Package().CalcReactionProp(b.properties.Get(), b.phase.Get(), b.equilibria.Get(), nullptr); },
     unknown},
    {"CalculateByName",
     Begin::Bound,
     S_OK,
     [](B& b) {
         VARIANT arguments[] = {b.noBasis.Get(), b.kinetics.Get(), b.liquid.Get(), b.properties.Get()};
         DISPPARAMS parameters = {arguments, nullptr, 4, 0};
         constexpr DISPID member = 2 * 0x10000 + 1;
         return Ask<IDispatch>(b.package->Unknown())
             ->Invoke(member, IID_NULL, 0, callMethod, &parameters, nullptr, nullptr, nullptr);
     },
     {DISP_E_EXCEPTION, E_OUTOFMEMORY}},
    {"GetNumberOfReactions", Begin::Defined, S_OK, [](B& b) { return b.Package().GetNumberOfReactions(&b.number); },
     untouched},
    {"GetReactionsIds", Begin::Defined, S_OK, [](B& b) { return b.Package().GetReactionsIds(&b.lists[0].Get()); },
     unknown},
    {"GetReactionType", Begin::Defined, S_OK,
     [](B& b) {
         CapeReactionType type = CAPE_EQUILIBRIUM;
         const HRESULT result = b.Package().GetReactionType(b.kinetic.Get(), &type);
         b.number = type;
         return result;
     },
     untouched},
    {"GetReactionTypeOfNone", Begin::Defined, ECapeUnknownHR,
     [](B& b) {
         CapeReactionType type = CAPE_EQUILIBRIUM;
         return b.Package().GetReactionType(b.none.Get(), &type);
     },
     unknown},
    {"GetNumberOfReactionCompounds", Begin::Defined, S_OK,
     [](B& b) { return b.Package().GetNumberOfReactionCompounds(b.kinetic.Get(), &b.number); }, untouched},
    {"GetReactionCompoundIds", Begin::Defined, S_OK,
     [](B& b) {
         return b.Package().GetReactionCompoundIds(b.kinetic.Get(), &b.lists[0].Get(), &b.lists[1].Get(),
                                                   &b.lists[2].Get());
     },
     unknown},
    {"GetStoichiometricCoefficients", Begin::Defined, S_OK,
     [](B& b) { return b.Package().GetStoichiometricCoefficients(b.kinetic.Get(), &b.lists[0].Get()); }, unknown},
    {"GetReactionPhase", Begin::Defined, S_OK,
     [](B& b) { return b.Package().GetReactionPhase(b.kinetic.Get(), b.text.Receive()); }, unknown},
    {"GetReactionRateBasis", Begin::Defined, S_OK,
     [](B& b) {
         CapeReactionRateBasis basis = CAPE_HETEROGENEOUS;
         const HRESULT result = b.Package().GetReactionRateBasis(b.kinetic.Get(), &basis);
         if (SUCCEEDED(result)) b.number = basis + 10;
         return result;
     },
     untouched},
    {"GetReactionConcBasis", Begin::Defined, S_OK,
     [](B& b) { return b.Package().GetReactionConcBasis(b.equilibrium.Get(), b.text.Receive()); }, unknown},
    {"GetBaseReactant", Begin::Defined, E_NOTIMPL,
     [](B& b) { return b.Package().GetBaseReactant(b.kinetic.Get(), b.text.Receive()); }, untouched},
    {"GetPhaseCompounds", Begin::Defined, E_NOTIMPL,
     [](B& b) { return b.Package().GetPhaseCompounds(b.kinetic.Get(), &b.number, &b.lists[0].Get()); }, untouched},
    {"GetReactionParameters",
     Begin::Defined,
     ECapeNoImplHR,
     [](B& b) { return b.Package().GetReactionParameters(b.kinetic.Get(), b.object.Receive()); },
     {ECapeNoImplHR}},
    {"GetErrorName", Begin::Defined, S_OK, [](B& b) { return b.Package().get_name(b.text.Receive()); }, noMemory,
     FailOnce},
    {"GetErrorDescription", Begin::Defined, S_OK, [](B& b) { return b.Package().get_description(b.text.Receive()); },
     noMemory, FailOnce},
    {"GetErrorScope", Begin::Defined, S_OK, [](B& b) { return b.Package().get_scope(b.text.Receive()); }, noMemory,
     FailOnce},
    {"GetErrorInterface", Begin::Defined, S_OK, [](B& b) { return b.Package().get_interfaceName(b.text.Receive()); },
     noMemory, FailOnce},
    {"GetErrorOperation", Begin::Defined, S_OK, [](B& b) { return b.Package().get_operation(b.text.Receive()); },
     noMemory},
    {"GetErrorMoreInfo", Begin::Defined, S_OK, [](B& b) { return b.Package().get_moreInfo(b.text.Receive()); },
     untouched},
    {"LoadBag", Begin::Defined, S_OK, [](B& b) { return b.Package().Load(&b.bag, nullptr); }, failed,
     [](B& b) { CPackageHolder(*MakeSample(ThermoVersion::Version11))->Save(&b.bag, 1, 1); }},
    {"LoadBagThatLacksAll", Begin::Defined, E_FAIL, [](B& b) { return b.Package().Load(&b.bag, nullptr); }, failed},
    {"SaveBag", Begin::Defined, S_OK, [](B& b) { return b.Package().Save(&b.bag, 1, 1); }, failed},
    {"LoadStream",
     Begin::Defined,
     S_OK,
     [](B& b) { return b.Package().Load(&b.stream); },
     {E_OUTOFMEMORY, E_FAIL},
     [](B& b) { CPackageHolder(*MakeSample(ThermoVersion::Version11))->Save(&b.stream, 1); }},
    {"LoadStreamThatIsCut",
     Begin::Defined,
     E_FAIL,
     [](B& b) { return b.Package().Load(&b.stream); },
     {E_OUTOFMEMORY, E_FAIL},
     [](B& b) {
         CPackageHolder(*MakeSample(ThermoVersion::Version11))->Save(&b.stream, 1);
         b.stream.bytes.resize(b.stream.bytes.size() / 2);
         b.stream.shortResult = S_OK;
     }},
    {"SaveStream", Begin::Defined, S_OK, [](B& b) { return b.Package().Save(&b.stream, 1); }, failed},
    {"GetSizeMax", Begin::Defined, S_OK, [](B& b) { return b.Package().GetSizeMax(&b.size); }, failed},
};

class PackageFaults : public testing::TestWithParam<PackageMethod> {};

TEST_P(PackageFaults, LeaveTheMethodDoneOrThePackageAsItWas) {
    const PackageMethod& row = GetParam();
    PackageBench reference(row.begin);
    row.prepare(reference);
    const std::string stateBefore = reference.State();
    const std::string outputsBefore = reference.Outputs();
    EXPECT_EQ(row.call(reference), row.done);
    const std::string stateAfter = reference.State();
    const std::string outputsAfter = reference.Outputs();

    std::unique_ptr<PackageBench> bench;
    const int faults = ForEachFault(
        [&] {
            bench.reset();  // of two editors at a time the older one would be put in again
            bench = std::make_unique<PackageBench>(row.begin);
            row.prepare(*bench);
        },
        [&] { return row.call(*bench); },
        [&](HRESULT result, bool isReached, bool isAlone) {
            const std::vector<std::string>& told = bench->results.log.calls;
            const std::vector<std::string>& all = reference.results.log.calls;
            ASSERT_LE(told.size(), all.size());
            EXPECT_TRUE(std::equal(told.begin(), told.end(), all.begin()));
            const ReportedError error = ErrorOf(bench->package->Unknown());
            const std::string state = bench->State();
            const std::string outputs = bench->Outputs();
            if (result == row.done && state == stateAfter && outputs == outputsAfter && told.size() == all.size()) {
                return;  // it got by
            }
            ASSERT_TRUE(isReached);
            EXPECT_EQ(std::count(row.without.begin(), row.without.end(), result), 1) << result;
            EXPECT_EQ(state, stateBefore);
            EXPECT_EQ(outputs, outputsBefore);
            if (result != ECapeUnknownHR) return;
            const bool isTold = error.description.find("ut of memory") != std::string::npos;
            EXPECT_TRUE(isTold || (!isAlone && error.description == "<null>")) << error.description;
        });
    EXPECT_EQ(faults > 0, !row.without.empty());
    RecordProperty("faults", faults);
}

INSTANTIATE_TEST_SUITE_P(Methods, PackageFaults, testing::ValuesIn(packageMethods),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
