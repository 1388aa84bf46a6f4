// SPDX-License-Identifier: MIT
// The least that a program has to bring to calculate with REKA: a material that is asked for its compounds and its
// temperature, and an object that takes the values. Everything else that the standard asks of the two may be refused.

#include <reka/host.h>

#include <cstdio>
#include <initializer_list>
#include <string>

namespace {

/// A variant with an array, which whoever gets it frees.
VARIANT Array(VARTYPE type, std::initializer_list<const char16_t*> texts, double number = 0) {
    SAFEARRAYBOUND bound = {type == VT_BSTR ? static_cast<ULONG>(texts.size()) : 1, 0};
    VARIANT array = {};
    array.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    array.parray = SafeArrayCreate(type, 1, &bound);
    LONG index = 0;
    if (type == VT_R8) SafeArrayPutElement(array.parray, &index, &number);
    for (const char16_t* const text : texts) {
        const BSTR copy = SysAllocString(text);
        SafeArrayPutElement(array.parray, &index, copy);
        SysFreeString(copy);
        ++index;
    }
    return array;
}

class CMaterial : public reka::HostMaterial {
public:
    double temperature = 298.15;  // K

    HRESULT get_ComponentIds(VARIANT* ids) override {
        *ids = Array(VT_BSTR, {u"nitrogen dioxide", u"nitrogen tetroxide"});
        return S_OK;
    }
    HRESULT GetProp(BSTR property, BSTR, VARIANT, BSTR, BSTR, VARIANT* values) override {
        if (std::u16string(property) != u"temperature") return E_NOTIMPL;
        *values = Array(VT_R8, {}, temperature);
        return S_OK;
    }
};

class CResults : public reka::HostResults {
public:
    double value = 0;  // of the reaction that was calculated last

    HRESULT SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT values) override {
        LONG index = 0;
        return SafeArrayGetElement(values.parray, &index, &value);
    }
};

}  // namespace

int main() {
    const auto manager = reka::MakeManager();
    const BSTR name = SysAllocString(u"Nitrogen tetroxide dissociation");
    IDispatch* resolved = nullptr;
    manager->ResolveReactionsPackage(name, &resolved);
    const reka::Held<IDispatch> package(resolved);
    const auto utilities = reka::Ask<reka::ICapeUtilities>(resolved);
    const auto routine = reka::Ask<reka::ICapeReactionsRoutine>(resolved);
    CMaterial material;
    CResults results;
    IDispatch* taker = &results;
    HRESULT code = utilities->Initialize();
    if (SUCCEEDED(code)) code = reka::Ask<reka::ICapeKineticReactionContext>(resolved)->SetReactionObject(&taker);
    if (SUCCEEDED(code)) code = reka::Ask<reka::ICapeThermoMaterialContext>(resolved)->SetMaterial(&material);
    VARIANT property = Array(VT_BSTR, {u"ChemicalEquilibriumConstant"});
    const BSTR phase = SysAllocString(u"Vapor");
    for (const double celsius : {25.0, 35.0, 45.0}) {
        material.temperature = celsius + 273.15;
        if (SUCCEEDED(code)) code = routine->CalcReactionProp(property, phase, VARIANT(), nullptr);
        if (SUCCEEDED(code)) std::printf("%.0f C: K = %.0f Pa\n", celsius, results.value);
    }
    if (FAILED(code)) std::fprintf(stderr, "no constant: is the shipped REKAConfig.dat in the user's folder?\n");
    utilities->Terminate();
    VariantClear(&property);
    SysFreeString(phase);
    SysFreeString(name);
    return FAILED(code) ? 1 : 0;
}
