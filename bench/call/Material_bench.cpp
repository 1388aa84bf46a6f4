// SPDX-License-Identifier: MIT
// A law that reads all quantities but activities, against a material that answers at once: the whole calculation beside
// the least that asking costs, which is an interface pointer for each question, the calls, and the material's own
// arrays, read in place and destroyed. What goes in is made once on both sides.

#include "bench/call/Material_bench.h"

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/call/ReadyMaterial.h"
#include "capeopen/ArrayHelpers.h"
#include "capeopen/ComObject.h"
#include "expression/parse/ParseExpression.h"
#include "package/CReactionPack.h"
#include "platform/HostArithmetic.h"
#include "text/Utf8.h"

namespace reka::bench {

namespace {

const char16_t* const law = u"1E3*EXP(-6000/T)*C(CO)*C(H2O)/(1+0.01*X(H2)*P)-0.5*F(CO2)*F(H2)";
constexpr std::size_t compoundCount = 4;
const char16_t* const names[compoundCount] = {u"CO", u"H2O", u"CO2", u"H2"};

double Law(double t, double p, const double* x, const double* c, const double* f) {
    return 1e3 * std::exp(-6000 / t) * c[0] * c[1] / (1 + 0.01 * x[3] * p) - 0.5 * f[2] * f[3];
}

std::unique_ptr<ReactionPackDefinition> MakeDefinition(ThermoVersion version) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    definition->thermoVersion = version;
    for (const char16_t* const name : names) {
        definition->compounds.push_back(std::make_unique<CompoundDefinition>());
        definition->compounds.back()->name = CBstr::Make(name);
        definition->compounds.back()->id = CBstr::Make(name);
    }
    auto reaction = std::make_unique<ReactionDefinition>(compoundCount);
    reaction->id = CBstr::Make(u"Reaction 1");
    reaction->phase = CBstr::Make(u"Vapor");
    std::u16string errorText;
    auto tree = ParseExpression(*definition, law, errorText, nullptr);
    if (!tree) throw std::runtime_error(Utf8FromUtf16(errorText));
    reaction->rateExpression = std::make_unique<ExpressionRef>(std::move(tree));
    definition->reactions.push_back(std::move(reaction));
    return definition;
}

/// An array of one text.
CVariant OneText(const CBstr& text) {
    CVariant list;
    CreateListVariant(list.Get(), 1, VT_BSTR,
                      [&](SAFEARRAY& array, LONG index) { return PutString(array, index, text.Get()); });
    return list;
}

/// A package bound to the material, and the same questions without one.
class CAsking {
public:
    explicit CAsking(ThermoVersion thermoVersion) : version(thermoVersion), package(new CComObject<CReactionPack>()) {
        static_cast<ICapeUtilities*>(package)->AddRef();
        for (const char16_t* const name : names) material.AddCompound(name, u"");
        package->AssignDefinition(MakeDefinition(version).get());
        IDispatch* taker = &reactionObject;
        package->SetReactionObject(&taker);
        if (package->SetMaterial(material.Dispatch()) != S_OK || Calculate() != S_OK) {
            throw std::runtime_error("the calculation fails");
        }
        if (AskForLeast() != reactionObject.lastValue) throw std::runtime_error("the results differ");
    }
    ~CAsking() {
        package->Terminate();
        static_cast<ICapeUtilities*>(package)->Release();
    }
    CAsking(const CAsking&) = delete;
    CAsking& operator=(const CAsking&) = delete;

    HRESULT Calculate() { return package->CalcReactionProp(rate.list.Get(), phase.text.Get(), all.Get(), basis.Get()); }

    /// The floor; the value.
    double AskForLeast() {
        double t = 0;
        double p = 0;
        double density = 0;
        double x[compoundCount];
        double c[compoundCount];
        double f[compoundCount];
        Ask(temperature, false, &t, 1);
        Ask(pressure, false, &p, 1);
        Ask(fraction, false, x, compoundCount);
        Ask(molarDensity, true, &density, 1);
        for (std::size_t i = 0; i < compoundCount; ++i) c[i] = x[i] * density;
        Ask(fugacity, true, f, compoundCount);
        const double value = Law(t, p, x, c, f);
        *static_cast<double*>(number.Get().parray->pvData) = value;
        ICapeReactionProperties* const object = results;
        object->SetReactionProp(rate.text.Get(), phase.text.Get(), id.list.Get(), basis.Get(), number.Get());
        return value;
    }

private:
    struct Word {
        explicit Word(const char16_t* word) : text(CBstr::Make(word)), list(OneText(text)) {}
        CBstr text;
        CVariant list;
    };

    template <class Interface>
    CComRef<Interface> Question() {
        IDispatch* const object = asked;
        CComRef<Interface> found;
        void* pointer = nullptr;
        object->QueryInterface(InterfaceId<Interface>(), &pointer);
        found.Reset(static_cast<Interface*>(pointer));
        return found;
    }

    void Ask(const Word& property, bool isCalculated, double* values, std::size_t count) {
        CVariant answer;
        if (version == ThermoVersion::Version10) {
            const auto object = Question<ICapeThermoMaterialObject>();
            if (isCalculated) object->CalcProp(property.list.Get(), phase.list.Get(), nullptr);
            object->GetProp(property.text.Get(), phase.text.Get(), all.Get(), nullptr, basis.Get(), &answer.Get());
        } else {
            if (isCalculated) {
                Question<ICapeThermoPropertyRoutine>()->CalcSinglePhaseProp(property.list.Get(), phase.text.Get());
            }
            Question<ICapeThermoMaterial>()->GetSinglePhaseProp(property.text.Get(), phase.text.Get(), basis.Get(),
                                                                &answer.Get());
        }
        const auto* const given = static_cast<const double*>(answer.Get().parray->pvData);
        for (std::size_t i = 0; i < count; ++i) values[i] = given[i];
    }

    ThermoVersion version;
    CReactionPack* package;
    CReadyMaterial material;
    CIdleReactionObject reactionObject;
    IDispatch* volatile asked = material.Dispatch();  // no shorter way than the package has
    ICapeReactionProperties* volatile results = &reactionObject;
    Word rate{u"ReactionRate"};
    Word phase{u"Vapor"};
    Word id{u"Reaction 1"};
    Word temperature{u"temperature"};
    Word pressure{u"pressure"};
    Word fraction{u"fraction"};
    Word molarDensity{u"density"};
    Word fugacity{u"fugacity"};
    CVariant number = [] {
        CVariant array;
        CreateArrayVariant(array.Get(), 1, VT_R8);
        return array;
    }();
    CVariant all;
    CBstr basis = CBstr::Make(u"Mole");
};

/// Settings that a host may run under, while this lives.
class CHostArithmetic {
public:
    explicit CHostArithmetic(const ArithmeticSettings& settings) : before(CurrentArithmetic()) {
        SetArithmetic(settings);
    }
    ~CHostArithmetic() { SetArithmetic(before); }
    CHostArithmetic(const CHostArithmetic&) = delete;
    CHostArithmetic& operator=(const CHostArithmetic&) = delete;

private:
    ArithmeticSettings before;
};

struct HostSettings {
    const char* name;
    ArithmeticSettings settings;
};

const HostSettings hostSettings[] = {
    {"usual settings", ownArithmeticSettings},
    {"x87 at 53 bits", {ownArithmeticSettings.sse, 0x027F}},
    {"SSE rounding up", {ownArithmeticSettings.sse | 0x4000, ownArithmeticSettings.x87}},
};

void Register(const std::string& group, ThermoVersion version) {
    const auto asking = std::make_shared<CAsking>(version);
    benchmark::RegisterBenchmark((group + "/floor").c_str(), [asking](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(asking->AskForLeast());
    });
    for (const HostSettings& host : hostSettings) {
        benchmark::RegisterBenchmark((group + "/" + host.name).c_str(), [asking, &host](benchmark::State& state) {
            const CHostArithmetic arithmetic(host.settings);
            for (auto _ : state) asking->Calculate();
        });
    }
}

}  // namespace

void RegisterMaterial() {
    Register("material/1.0", ThermoVersion::Version10);
    Register("material/1.1", ThermoVersion::Version11);
}

void PrintMaterial(const CTimes& times) {
    PrintHeading("CalcReactionProp of a law that asks the material for T, P, X, C and F");
    for (const std::string version : {"1.0", "1.1"}) {
        const double floor = times.Median("material/" + version + "/floor");
        PrintFigure("thermo " + version + ": floor", floor, "ns");
        for (const HostSettings& host : hostSettings) {
            const double package = times.Median("material/" + version + "/" + host.name);
            PrintFigure("thermo " + version + ": " + host.name, package, "ns");
            if (&host == hostSettings) PrintFigure("thermo " + version + ": to the floor", package / floor, "", "1.3");
        }
    }
}

}  // namespace reka::bench
