// SPDX-License-Identifier: MIT
// A host that calls a package and a manager in any order with any values, and whose material answers anything. The
// answers are known: no result but those of the methods, no change of the definition but by a binding and a name, a
// rate that is what its two numbers make, outputs that can be freed, and nothing of the host's that is kept.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <span>

#include "ByteVariants.h"
#include "QuietMessages.h"
#include "capeopen/ComObject.h"
#include "expression/parse/ParseExpression.h"
#include "manager/CreateReactionPackManager.h"
#include "package/CReactionPack.h"
#include "persistence/WriteStoredDefinition.h"
#include "support/FakeFiles.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"

namespace {

using reka::CBstr;
using reka::CReactionPack;
using reka::CVariant;
using reka::ReactionPackDefinition;

void Require(bool holds) {
    if (!holds) std::abort();
}

/// Answers each question with the next value of the bytes, and remembers temperature and pressure.
class CAnyMaterial final : public reka::test::CFakeMaterial {
public:
    explicit CAnyMaterial(reka::fuzz::CByteVariants& bytes) : CFakeMaterial({}), values(bytes) {}

    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* ids) override {
        // Every other time the right ones, without which nothing else would be reached.
        return Answer(ids, values.Byte() % 2 ? values.Any() : reka::test::Strings({u"B1", u"A1"}));
    }
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT, VARIANT, VARIANT* results) override {
        return Answer(results, values.Any());
    }
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT, VARIANT, BSTR) override { return values.Byte() % 8 ? S_OK : E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR, VARIANT, BSTR, BSTR, VARIANT* results) override {
        return Give(property, results);
    }
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT, BSTR) override { return values.Byte() % 8 ? S_OK : E_FAIL; }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR, BSTR, VARIANT* results) override {
        VariantClear(results);
        return Give(property, results);
    }

    CVariant temperature;
    CVariant pressure;

private:
    HRESULT Answer(VARIANT* output, CVariant answer) {
        *output = answer.Detach();
        return values.Byte() % 8 ? S_OK : E_FAIL;
    }
    HRESULT Give(BSTR property, VARIANT* results) {
        CVariant answer = values.Byte() % 2 ? values.Any() : reka::test::Numbers({300.0 + values.Byte()});
        const bool isTemperature = reka::TextOf(property) == u"temperature";
        if (isTemperature || reka::TextOf(property) == u"pressure") {
            reka::test::CopyVariant((isTemperature ? temperature : pressure).Receive(), answer.Get());
        }
        return Answer(results, std::move(answer));
    }

    reka::fuzz::CByteVariants& values;
};

class CResults final : public reka::test::CFakeReactionObject {
public:
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT values) override {
        const std::vector<double> numbers = reka::test::NumbersIn(values);
        Require(numbers.size() == 1);
        lastValue = numbers[0];
        ++told;
        return S_OK;
    }
    int told = 0;
};

void AddRate(ReactionPackDefinition& definition, const char16_t* id, const char16_t* rate) {
    auto reaction = std::make_unique<reka::ReactionDefinition>(definition.compounds.size());
    std::u16string errorText;
    reaction->id = CBstr::Make(id);
    reaction->phase = CBstr::Make(u"Liquid");
    reaction->rateEquation = rate;
    reaction->rateExpression =
        std::make_unique<reka::ExpressionRef>(reka::ParseExpression(definition, rate, errorText, nullptr));
    definition.reactions.push_back(std::move(reaction));
}

/// Two compounds, a rate of temperature and pressure, and one of all that a material has.
std::unique_ptr<ReactionPackDefinition> MakeDefinition(bool isVersion11) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    definition->name = CBstr::Make(u"a package");
    if (isVersion11) definition->thermoVersion = reka::ThermoVersion::Version11;
    for (const char16_t* const name : {u"A1", u"B1"}) {
        definition->compounds.push_back(std::make_unique<reka::CompoundDefinition>());
        definition->compounds.back()->name = CBstr::Make(name);
        definition->compounds.back()->id = CBstr::Make(name);
    }
    definition->compounds[0]->casNumber = CBstr::Make(u"1");
    AddRate(*definition, u"r", u"T*2+P");
    AddRate(*definition, u"s", u"C(A1)+X(B1)*A(A1)+F(B1)+T");
    return definition;
}

std::vector<std::uint8_t> BlockOf(const CReactionPack& package) {
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    Require(reka::WriteStoredDefinition(*package.Definition(), block, errorText));
    return block;
}

class CHost {
public:
    explicit CHost(reka::CByteReader& bytes) : reader(bytes), values(bytes), material(values) {
        package = new reka::CComObject<CReactionPack>();
        hold = reka::CComRef<reka::ICapeUtilities>(package);
        package->AssignDefinition(MakeDefinition(values.Byte() % 2).get());
        void* made = nullptr;
        Require(reka::CreateReactionPackManager(reka::ICapeReactionsPackageManager::iid, &made) == S_OK);
        manager.Reset(static_cast<reka::ICapeReactionsPackageManager*>(made));
        IDispatch* pointer = results.Dispatch();
        Require(package->SetReactionObject(&pointer) == S_OK);
        Require(package->SetMaterial(material.Dispatch()) != E_UNEXPECTED);
    }
    ~CHost() {
        package->Terminate();
        hold.Reset();
        Require(material.references.Held() == 0 && results.references.Held() == 0);
    }

    void Run() {
        for (int calls = 0; calls < 40 && reader.Remaining() > 0; ++calls) {
            const std::vector<std::uint8_t> before = BlockOf(*package);
            const std::uint8_t method = values.Byte() % 18;
            const HRESULT result = method < 16 ? Call(method) : CallLate();
            if (method >= 16) continue;  // a member of any kind
            Require(result == S_OK || result == E_POINTER || result == reka::ECapeUnknownHR ||
                    result == reka::ECapeNoImplHR || result == E_NOTIMPL);
            const bool changes = SUCCEEDED(result) && (method < 2 || method == 15);
            Require(changes || BlockOf(*package) == before);
        }
    }

private:
    CBstr Id() { return values.Byte() % 2 ? values.Text() : CBstr::Make(values.Byte() % 2 ? u"r" : u"s"); }

    HRESULT Call(std::uint8_t method) {
        CVariant lists[3];
        CBstr text;
        LONG number = 0;
        reka::CapeReactionType type = reka::CAPE_KINETIC;
        reka::CComRef<IDispatch> object;
        switch (method) {
            case 0:
                return package->SetMaterial(values.Byte() % 8 ? material.Dispatch() : results.Dispatch());
            case 1: {
                IDispatch* pointer = values.Byte() % 8 ? material.Dispatch() : nullptr;
                return package->SetMaterial(&pointer);
            }
            case 2:
                return package->CalcReactionProp(values.Any().Get(), values.Text().Get(), values.Any().Get(),
                                                 values.Text().Get());
            case 3:
                return CalculateAll(values.Any());
            case 4:
            case 5:
                return CalculateRate();
            case 6:
                for (CVariant& list : lists) list = values.Any();
                return package->GetReactionCompoundIds(Id().Get(), &lists[0].Get(), &lists[1].Get(), &lists[2].Get());
            case 7:
                lists[0] = values.Any();
                return package->GetPhaseCompounds(Id().Get(), &number, &lists[0].Get());
            case 8:
                return package->GetStoichiometricCoefficients(Id().Get(), &lists[0].Get());
            case 9:
                return package->GetReactionType(Id().Get(), &type);
            case 10:
                return package->GetReactionPhase(Id().Get(), text.Receive());
            case 11:
                return package->GetReactionsIds(&lists[0].Get());
            case 12: {
                IDispatch* pointer = values.Byte() % 4 ? results.Dispatch() : material.Dispatch();
                return package->SetReactionObject(&pointer);
            }
            case 13:
                return manager->GetListOfReactionsPackages(&lists[0].Get());
            case 14:
                return manager->ResolveReactionsPackage(values.Text().Get(), object.Receive());
            default:
                return package->put_ComponentName(values.Text().Get());
        }
    }

    /// A call by identifier, as no script would make it: any member with any values, in variables and out of them.
    HRESULT CallLate() {
        const DISPID member = values.Byte() % 10 * 0x10000 + values.Byte() % 14;
        const WORD flags = values.Byte() % 8;
        std::vector<CVariant> variables(values.Byte() % 19);
        std::vector<VARIANT> arguments;
        std::vector<DISPID> names(std::min<std::size_t>(values.Byte() % 4, variables.size()));
        for (DISPID& name : names) name = values.Byte() % 6 - 3;
        for (CVariant& variable : variables) {
            variable = values.Any();
            VARIANT argument = {};
            argument.vt = VT_BYREF | VT_VARIANT;
            argument.pvarVal = &variable.Get();
            arguments.push_back(values.Byte() % 2 ? variable.Get() : argument);
        }
        DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                                 static_cast<UINT>(names.size())};
        CVariant result;
        EXCEPINFO exception = {};
        UINT badArgument = 0;
        void* found = nullptr;
        Require(hold->QueryInterface(IID_IDispatch, &found) == S_OK);
        reka::CComRef<IDispatch> late;
        late.Reset(static_cast<IDispatch*>(found));
        const HRESULT called =
            late->Invoke(member, IID_NULL, 0, flags, &parameters, &result.Get(), &exception, &badArgument);
        Require(called == DISP_E_EXCEPTION || (!exception.bstrSource && !exception.bstrDescription));
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        return called;
    }

    HRESULT CalculateAll(const CVariant& ids) {
        const CVariant properties = reka::test::Strings({u"ReactionRate"});
        const CBstr phase = CBstr::Make(u"Liquid");
        return package->CalcReactionProp(properties.Get(), phase.Get(), ids.Get(), nullptr);
    }

    /// The rate of which the answer is known.
    HRESULT CalculateRate() {
        material.temperature.Reset();
        material.pressure.Reset();
        results.told = 0;
        const HRESULT result = CalculateAll(reka::test::Strings({u"r"}));
        if (result != S_OK) return result;
        const std::vector<double> temperature = reka::test::NumbersIn(material.temperature.Get());
        const std::vector<double> pressure = reka::test::NumbersIn(material.pressure.Get());
        Require(results.told == 1 && !temperature.empty() && !pressure.empty());
        const double expected = temperature[0] * 2 + pressure[0];
        Require(std::bit_cast<std::uint64_t>(expected) == std::bit_cast<std::uint64_t>(results.lastValue) ||
                (std::isnan(expected) && std::isnan(results.lastValue)));
        return result;
    }

    reka::CByteReader& reader;
    reka::fuzz::CByteVariants values;
    reka::test::CFakeFiles files;
    CAnyMaterial material;
    CResults results;
    CReactionPack* package = nullptr;
    reka::CComRef<reka::ICapeUtilities> hold;
    reka::CComRef<reka::ICapeReactionsPackageManager> manager;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::fuzz::SilenceMessages();
    reka::CByteReader reader(std::span(data, size));
    CHost(reader).Run();
    return 0;
}
