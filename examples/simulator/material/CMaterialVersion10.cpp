// SPDX-License-Identifier: MIT
// The material by version 1.0 of the thermo interfaces. Its reads name the compounds, a calculation type ("mixture" for
// what is calculated) and a basis, and know temperature, pressure and composition of the phase "overall" as well.

#include "SameName.h"
#include "material/CMaterial.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

constexpr std::u16string_view interfaceName = u"ICapeThermoMaterialObject";

}  // namespace

HRESULT STDMETHODCALLTYPE CMaterial::get_ComponentIds(VARIANT* compIds) {
    std::vector<std::u16string> ids;
    for (const MaterialCompound& compound : state.compounds) ids.push_back(compound.id);
    return GiveVariant(packagetext::VariantFromTexts(ids), compIds);
}

HRESULT STDMETHODCALLTYPE CMaterial::get_PhaseIds(VARIANT* phaseIds) {
    return GiveVariant(packagetext::VariantFromTexts(std::vector<std::u16string>{state.phase, u"Overall"}), phaseIds);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) {
    return ReadConstants({u"GetComponentConstant", interfaceName}, props, compIds, true, propVals);
}

HRESULT STDMETHODCALLTYPE CMaterial::CalcProp(VARIANT props, VARIANT phases, BSTR calcType) {
    const Caller caller = {u"CalcProp", interfaceName};
    std::vector<std::u16string> labels;
    if (!packagetext::ReadTexts(phases, labels) || labels.empty()) {
        return Refuse(caller, ECapeInvalidArgumentHR, u"the phases must be an array of strings");
    }
    for (const std::u16string& label : labels) {
        const HRESULT result = CheckPhase(caller, label);
        if (FAILED(result)) return result;
    }
    if (!SameName(reka::TextOf(calcType), u"mixture")) {
        return Refuse(caller, ECapeInvalidArgumentHR, u"rekasim calculates with the calculation type mixture only");
    }
    return Calculate(caller, props);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                             VARIANT* results) {
    const Caller caller = {u"GetProp", interfaceName};
    if (!results) return E_POINTER;
    VariantInit(results);
    const bool overall = SameName(reka::TextOf(phase), u"overall");
    HRESULT result = overall ? S_OK : CheckPhase(caller, reka::TextOf(phase));
    if (FAILED(result)) return result;
    std::vector<double> all;
    result = ReadProperty(caller, reka::TextOf(property), reka::TextOf(basis), overall, all);
    if (FAILED(result)) return result;

    const MaterialProperty& found = *FindMaterialProperty(reka::TextOf(property));
    const std::u16string_view expectedType = found.isHeld ? u"" : u"mixture";
    if (!SameName(reka::TextOf(calcType), expectedType)) {
        return Refuse(caller, ECapeInvalidArgumentHR,
                      std::u16string(found.name) +
                          (found.isHeld ? u" takes no calculation type" : u" needs the calculation type mixture"));
    }
    if (!found.isPerCompound) {
        if (compIds.vt == VT_EMPTY) return GiveVariant(packagetext::VariantFromNumbers(all), results);
        return Refuse(caller, ECapeInvalidArgumentHR, std::u16string(found.name) + u" doesn't belong to a compound");
    }
    std::vector<std::size_t> indices;
    result = FindCompounds(caller, compIds, indices);
    if (FAILED(result)) return result;
    std::vector<double> values;
    values.reserve(indices.size());
    for (const std::size_t index : indices) values.push_back(all[index]);
    return GiveVariant(packagetext::VariantFromNumbers(values), results);
}

HRESULT STDMETHODCALLTYPE CMaterial::AvailableProps(VARIANT* props) {
    return GiveVariant(packagetext::VariantFromTexts(MaterialPropertyNames(false)), props);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetPropList(VARIANT* props) {
    return GiveVariant(packagetext::VariantFromTexts(MaterialPropertyNames(true)), props);
}

HRESULT STDMETHODCALLTYPE CMaterial::RemoveResults(VARIANT props) {
    std::vector<std::u16string> names;
    if (!packagetext::ReadTexts(props, names)) {
        return Fail(ECapeInvalidArgumentHR, u"the properties must be an array of strings", u"RemoveResults",
                    interfaceName);
    }
    if (names.empty()) calculated.clear();
    for (const std::u16string& name : names) {
        std::erase_if(calculated, [&name](std::u16string_view property) { return SameName(property, name); });
    }
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CMaterial::GetNumComponents(LONG* count) {
    return GetNumCompounds(count);
}

// What a material of one fixed state has no use for

HRESULT STDMETHODCALLTYPE CMaterial::GetUniversalConstant(VARIANT, VARIANT* propVals) {
    if (!propVals) return E_POINTER;
    VariantInit(propVals);
    return FailNotOffered(u"GetUniversalConstant", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetProp(BSTR, BSTR, VARIANT, BSTR, BSTR, VARIANT) {
    return FailNotOffered(u"SetProp", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::CalcEquilibrium(BSTR, VARIANT) {
    return FailNotOffered(u"CalcEquilibrium", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::SetIndependentVar(VARIANT, VARIANT) {
    return FailNotOffered(u"SetIndependentVar", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetIndependentVar(VARIANT, VARIANT* values) {
    if (!values) return E_POINTER;
    VariantInit(values);
    return FailNotOffered(u"GetIndependentVar", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::PropCheck(VARIANT, VARIANT* valid) {
    if (!valid) return E_POINTER;
    VariantInit(valid);
    return FailNotOffered(u"PropCheck", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::CreateMaterialObject(IDispatch** materialObject) {
    if (!materialObject) return E_POINTER;
    *materialObject = nullptr;
    return FailNotOffered(u"CreateMaterialObject", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::Duplicate(IDispatch** clone) {
    if (!clone) return E_POINTER;
    *clone = nullptr;
    return FailNotOffered(u"Duplicate", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::ValidityCheck(VARIANT, VARIANT* reliability) {
    if (!reliability) return E_POINTER;
    VariantInit(reliability);
    return FailNotOffered(u"ValidityCheck", interfaceName);
}

}  // namespace rekasim
