// SPDX-License-Identifier: MIT
// The compounds of the material and the three constants that a document tells of them. Version 1.0 asks for the same
// constants by its own method.

#include <limits>

#include "SameName.h"
#include "material/CMaterial.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

constexpr std::u16string_view interfaceName = u"ICapeThermoCompounds";
constexpr std::u16string_view casNumberName = u"casRegistryNumber";
constexpr std::u16string_view formulaName = u"chemicalFormula";
constexpr std::u16string_view molecularWeightName = u"molecularWeight";

reka::CVariant VariantFromNumber(double number) {
    reka::CVariant made;
    made.Get().vt = VT_R8;
    made.Get().dblVal = number;
    return made;
}

/// The constant of a compound; empty when it isn't known. False for a name that is no constant of rekasim's.
bool FindConstant(const MaterialCompound& compound, std::u16string_view name, reka::CVariant& value) {
    if (SameName(name, molecularWeightName)) {
        if (compound.molecularWeight) value = VariantFromNumber(*compound.molecularWeight);
        return true;
    }
    const bool isCasNumber = SameName(name, casNumberName);
    if (!isCasNumber && !SameName(name, formulaName)) return false;
    const std::u16string& text = isCasNumber ? compound.casNumber : compound.formula;
    if (!text.empty()) value = packagetext::VariantFromText(text);
    return true;
}

}  // namespace

HRESULT CMaterial::ReadConstants(const Caller& caller, const VARIANT& props, const VARIANT& compIds, bool mustKnow,
                                 VARIANT* propVals) {
    if (!propVals) return E_POINTER;
    VariantInit(propVals);
    std::vector<std::u16string> names;
    if (!packagetext::ReadTexts(props, names) || names.empty()) {
        return Refuse(caller, ECapeInvalidArgumentHR, u"the properties must be an array of strings");
    }
    std::vector<std::size_t> indices;
    const HRESULT result = FindCompounds(caller, compIds, indices);
    if (FAILED(result)) return result;
    std::vector<reka::CVariant> values;
    for (const std::u16string& name : names) {
        for (const std::size_t index : indices) {
            const MaterialCompound& compound = state.compounds[index];
            if (!FindConstant(compound, name, values.emplace_back())) {
                return Refuse(caller, ECapeInvalidArgumentHR, u"rekasim has no compound constant " + name);
            }
            if (mustKnow && values.back().Get().vt == VT_EMPTY) {
                return Refuse(caller, ECapeThrmPropertyNotAvailableHR, name + u" of " + compound.id + u" is not known");
            }
        }
    }
    return GiveVariant(packagetext::VariantFromVariants(values), propVals);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetCompoundConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) {
    return ReadConstants({u"GetCompoundConstant", interfaceName}, props, compIds, false, propVals);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetCompoundList(VARIANT* compIds, VARIANT* formulae, VARIANT* names,
                                                     VARIANT* boilTemps, VARIANT* molwts, VARIANT* casnos) {
    if (!compIds || !formulae || !names || !boilTemps || !molwts || !casnos) return E_POINTER;
    constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
    std::vector<std::u16string> ids;
    std::vector<std::u16string> formulas;
    std::vector<std::u16string> casNumbers;
    std::vector<double> molecularWeights;
    for (const MaterialCompound& compound : state.compounds) {
        ids.push_back(compound.id);
        formulas.push_back(compound.formula);
        casNumbers.push_back(compound.casNumber);
        molecularWeights.push_back(compound.molecularWeight.value_or(unknown));
    }
    ReplaceVariant(packagetext::VariantFromTexts(ids), compIds);
    ReplaceVariant(packagetext::VariantFromTexts(formulas), formulae);
    ReplaceVariant(packagetext::VariantFromTexts(ids), names);
    ReplaceVariant(packagetext::VariantFromNumbers(std::vector<double>(ids.size(), unknown)), boilTemps);
    ReplaceVariant(packagetext::VariantFromNumbers(molecularWeights), molwts);
    return ReplaceVariant(packagetext::VariantFromTexts(casNumbers), casnos);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetConstPropList(VARIANT* props) {
    const std::vector<std::u16string> names = {std::u16string(casNumberName), std::u16string(formulaName),
                                               std::u16string(molecularWeightName)};
    return GiveVariant(packagetext::VariantFromTexts(names), props);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetNumCompounds(LONG* count) {
    if (!count) return E_POINTER;
    *count = static_cast<LONG>(state.compounds.size());
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CMaterial::GetPDependentProperty(VARIANT, double, VARIANT, VARIANT*) {
    return FailNotOffered(u"GetPDependentProperty", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetPDependentPropList(VARIANT* props) {
    return GiveVariant({}, props);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetTDependentProperty(VARIANT, double, VARIANT, VARIANT*) {
    return FailNotOffered(u"GetTDependentProperty", interfaceName);
}

HRESULT STDMETHODCALLTYPE CMaterial::GetTDependentPropList(VARIANT* props) {
    return GiveVariant({}, props);
}

}  // namespace rekasim
