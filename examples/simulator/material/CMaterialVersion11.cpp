// SPDX-License-Identifier: MIT
// The material by version 1.1 of the thermo interfaces: values of a phase come for all its compounds at once, and what
// isn't part of the state is calculated through the property routine first.

#include "SameName.h"
#include "material/CMaterial.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

constexpr std::u16string_view materialName = u"ICapeThermoMaterial";
constexpr std::u16string_view routineName = u"ICapeThermoPropertyRoutine";
constexpr LONG phaseIsAtEquilibrium = 1;  // CAPE_ATEQUILIBRIUM

}  // namespace

// ICapeThermoMaterial

/// Temperature, pressure and composition are the document's and stay.
HRESULT STDMETHODCALLTYPE CMaterial::ClearAllProps() {
    calculated.clear();
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CMaterial::GetOverallProp(BSTR property, BSTR basis, VARIANT* results) {
    if (!results) return E_POINTER;
    std::vector<double> values;
    const HRESULT result =
        ReadProperty({u"GetOverallProp", materialName}, reka::TextOf(property), reka::TextOf(basis), true, values);
    return FAILED(result) ? result : ReplaceVariant(packagetext::VariantFromNumbers(values), results);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetOverallTPFraction(double* temperature, double* pressure, VARIANT* composition) {
    if (!temperature || !pressure || !composition) return E_POINTER;
    *temperature = state.temperature;
    *pressure = state.pressure;
    std::vector<double> fractions;
    for (const MaterialCompound& compound : state.compounds) fractions.push_back(compound.moleFraction);
    return ReplaceVariant(packagetext::VariantFromNumbers(fractions), composition);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetPresentPhases(VARIANT* phaseLabels, VARIANT* phaseStatus) {
    if (!phaseLabels || !phaseStatus) return E_POINTER;
    SAFEARRAYBOUND bound = {1, 0};
    reka::CVariant status;
    status.Get().parray = SafeArrayCreate(VT_I4, 1, &bound);
    if (!status.Get().parray) return E_OUTOFMEMORY;
    status.Get().vt = VT_ARRAY | VT_I4;
    LONG index = 0;
    LONG value = phaseIsAtEquilibrium;
    SafeArrayPutElement(status.Get().parray, &index, &value);
    ReplaceVariant(packagetext::VariantFromTexts(std::vector<std::u16string>{state.phase}), phaseLabels);
    return ReplaceVariant(std::move(status), phaseStatus);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) {
    const Caller caller = {u"GetSinglePhaseProp", materialName};
    if (!results) return E_POINTER;
    HRESULT result = CheckPhase(caller, reka::TextOf(phaseLabel));
    if (FAILED(result)) return result;
    std::vector<double> values;
    result = ReadProperty(caller, reka::TextOf(property), reka::TextOf(basis), false, values);
    return FAILED(result) ? result : ReplaceVariant(packagetext::VariantFromNumbers(values), results);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetTPFraction(BSTR phaseLabel, double* temperature, double* pressure,
                                                   VARIANT* composition) {
    const HRESULT result = CheckPhase({u"GetTPFraction", materialName}, reka::TextOf(phaseLabel));
    return FAILED(result) ? result : GetOverallTPFraction(temperature, pressure, composition);
}

// ICapeThermoPropertyRoutine

HRESULT STDMETHODCALLTYPE CMaterial::CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) {
    const Caller caller = {u"CalcSinglePhaseProp", routineName};
    const HRESULT result = CheckPhase(caller, reka::TextOf(phaseLabel));
    return FAILED(result) ? result : Calculate(caller, props);
}

HRESULT STDMETHODCALLTYPE CMaterial::CheckSinglePhasePropSpec(BSTR property, BSTR phaseLabel, VARIANT_BOOL* valid) {
    if (!valid) return E_POINTER;
    const MaterialProperty* found = FindMaterialProperty(reka::TextOf(property));
    *valid = found && !found->isHeld && SameName(reka::TextOf(phaseLabel), state.phase) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CMaterial::CheckTwoPhasePropSpec(BSTR, VARIANT, VARIANT_BOOL* valid) {
    if (!valid) return E_POINTER;
    *valid = VARIANT_FALSE;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CMaterial::GetSinglePhasePropList(VARIANT* props) {
    return GiveVariant(packagetext::VariantFromTexts(MaterialPropertyNames(true)), props);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetTwoPhasePropList(VARIANT* props) {
    return GiveVariant({}, props);
}

// What a material of one fixed state and one phase has no use for

HRESULT STDMETHODCALLTYPE CMaterial::CopyFromMaterial(IDispatch**) {
    return FailNotOffered(u"CopyFromMaterial", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::CreateMaterial(IDispatch** materialObject) {
    if (!materialObject) return E_POINTER;
    *materialObject = nullptr;
    return FailNotOffered(u"CreateMaterial", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT*) {
    return FailNotOffered(u"GetTwoPhaseProp", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetOverallProp(BSTR, BSTR, VARIANT) {
    return FailNotOffered(u"SetOverallProp", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetPresentPhases(VARIANT, VARIANT) {
    return FailNotOffered(u"SetPresentPhases", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT) {
    return FailNotOffered(u"SetSinglePhaseProp", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) {
    return FailNotOffered(u"SetTwoPhaseProp", materialName);
}

HRESULT STDMETHODCALLTYPE CMaterial::CalcAndGetLnPhi(BSTR, double, double, VARIANT, LONG, VARIANT*, VARIANT*, VARIANT*,
                                                     VARIANT*) {
    return FailNotOffered(u"CalcAndGetLnPhi", routineName);
}

HRESULT STDMETHODCALLTYPE CMaterial::CalcTwoPhaseProp(VARIANT, VARIANT) {
    return FailNotOffered(u"CalcTwoPhaseProp", routineName);
}

}  // namespace rekasim
