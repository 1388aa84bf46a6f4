// SPDX-License-Identifier: MIT
// The calculation of packages of 1 to 1,000 reactions, beside the least that it could cost: to make the two arrays that
// each result goes out in, to hand them to the reaction object, and to destroy them. The expressions are constants, so
// that the material isn't asked.

#include "bench/call/Call_bench.h"

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/call/IdleMaterial.h"
#include "capeopen/ComObject.h"
#include "expression/parse/ParseExpression.h"
#include "package/CReactionPack.h"

namespace reka::bench {

namespace {

constexpr int reactionCounts[] = {1, 10, 100, 1000};

/// The id of reaction `i`; lengths and first letters as users give them.
std::u16string ReactionId(int i) {
    std::u16string id = u"Reaction ";
    for (const char digit : std::to_string(i + 1)) id.push_back(static_cast<char16_t>(digit));
    return id;
}

CVariant Strings(const std::vector<std::u16string>& texts) {
    SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), 0};
    CVariant strings;
    strings.Get().vt = VT_ARRAY | VT_BSTR;
    strings.Get().parray = SafeArrayCreate(VT_BSTR, 1, &bound);
    for (LONG i = 0; i < static_cast<LONG>(texts.size()); ++i) {
        SafeArrayPutElement(strings.Get().parray, &i, CBstr::Make(texts[static_cast<std::size_t>(i)]).Get());
    }
    return strings;
}

/// A package with all that a calculation of it needs.
struct Call {
    explicit Call(int reactionCount) : package(new CComObject<CReactionPack>()) {
        static_cast<ICapeUtilities*>(package)->AddRef();
        ReactionPackDefinition definition(nullptr);
        std::vector<std::u16string> names;
        for (int i = 0; i < reactionCount; ++i) {
            auto reaction = std::make_unique<ReactionDefinition>(0);
            names.push_back(ReactionId(i));
            reaction->id = CBstr::Make(names.back());
            reaction->phase = CBstr::Make(u"Liquid");
            std::u16string errorText;
            reaction->rateExpression =
                std::make_unique<ExpressionRef>(ParseExpression(definition, u"2.5", errorText, nullptr));
            definition.reactions.push_back(std::move(reaction));
        }
        package->AssignDefinition(&definition);
        IDispatch* results = &reactionObject;
        package->SetReactionObject(&results);
        package->SetMaterial(&material);  // has no interface to be asked for its compounds, and is bound all the same
        inOrder = Strings(names);
        std::vector<std::u16string> shuffled;
        for (int i = 0; i < reactionCount; ++i) {
            shuffled.push_back(names[static_cast<std::size_t>(i) * 7919 % names.size()]);
        }
        anyOrder = Strings(shuffled);
        if (Calculate(all) != S_OK || Calculate(anyOrder) != S_OK) throw std::runtime_error("the calculation fails");
    }
    ~Call() {
        package->Terminate();
        static_cast<ICapeUtilities*>(package)->Release();
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    HRESULT Calculate(const CVariant& ids) {
        return package->CalcReactionProp(props.Get(), phase.Get(), ids.Get(), basis.Get());
    }

    /// The least: what the platform and the reaction object take.
    void RunFloor(const ReactionPackDefinition& definition) {
        ICapeReactionProperties* const object = pointer;
        for (const auto& reaction : definition.reactions) {
            SAFEARRAYBOUND bound = {1, 0};
            LONG index = 0;
            double value = 2.5;
            CVariant values;
            values.Get().vt = VT_ARRAY | VT_R8;
            values.Get().parray = SafeArrayCreate(VT_R8, 1, &bound);
            SafeArrayPutElement(values.Get().parray, &index, &value);
            CVariant ids;
            ids.Get().vt = VT_ARRAY | VT_BSTR;
            ids.Get().parray = SafeArrayCreate(VT_BSTR, 1, &bound);
            SafeArrayPutElement(ids.Get().parray, &index, reaction->id.Get());
            object->SetReactionProp(property.Get(), phase.Get(), ids.Get(), basis.Get(), values.Get());
        }
    }

    CReactionPack* package;
    CIdleObject<IDispatch> material;
    CIdleReactionObject reactionObject;
    ICapeReactionProperties* volatile pointer = &reactionObject;  // no shorter way than the package has
    CVariant props = Strings({u"ReactionRate"});
    CBstr property = CBstr::Make(u"ReactionRate");
    CBstr phase = CBstr::Make(u"Liquid");
    CBstr basis = CBstr::Make(u"Mole");
    CVariant all;
    CVariant inOrder;
    CVariant anyOrder;
};

void Register(int reactionCount) {
    const auto call = std::make_shared<Call>(reactionCount);
    const std::string group = "call/" + std::to_string(reactionCount);
    benchmark::RegisterBenchmark((group + "/floor").c_str(), [call](benchmark::State& state) {
        const ReactionPackDefinition& definition = *call->package->Definition();
        for (auto _ : state) call->RunFloor(definition);
    });
    benchmark::RegisterBenchmark((group + "/all").c_str(), [call](benchmark::State& state) {
        for (auto _ : state) call->Calculate(call->all);
    });
    benchmark::RegisterBenchmark((group + "/in order").c_str(), [call](benchmark::State& state) {
        for (auto _ : state) call->Calculate(call->inOrder);
    });
    benchmark::RegisterBenchmark((group + "/any order").c_str(), [call](benchmark::State& state) {
        for (auto _ : state) call->Calculate(call->anyOrder);
    });
}

/// The aim of a call for that many reactions, beside the floor.
const char* AimOf(int reactionCount) {
    if (reactionCount < 10) return "at most 0.9";
    return reactionCount < 100 ? "at most 0.45" : "at most 0.40";
}

}  // namespace

void RegisterCall() {
    for (const int count : reactionCounts) Register(count);
}

void PrintCall(const CTimes& times) {
    PrintHeading("CalcReactionProp, one property, per reaction");
    for (const int count : reactionCounts) {
        const std::string group = "call/" + std::to_string(count);
        const std::string reactions = count == 1 ? "1 reaction" : std::to_string(count) + " reactions";
        const double floor = times.Median(group + "/floor");
        PrintFigure(reactions + ": floor", floor / count, "ns");
        PrintFigure(reactions + ": all", times.Median(group + "/all") / count, "ns");
        PrintFigure(reactions + ": all to the floor", times.Median(group + "/all") / floor, "", AimOf(count));
        PrintFigure(reactions + ": by name, in their order", times.Median(group + "/in order") / count, "ns");
        PrintFigure(reactions + ": by name, in any order", times.Median(group + "/any order") / count, "ns");
    }
}

}  // namespace reka::bench
