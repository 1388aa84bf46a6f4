// SPDX-License-Identifier: MIT
// What both versions of the material share: its state, what has been calculated, and the checks on arguments. It is as
// strict as the standard allows: a value that isn't part of the state is told only after it was calculated, and a new
// state forgets what was. So a package that asks in the wrong order fails here, and not first at a customer's
// simulator.

#include "material/CMaterial.h"

#include <algorithm>

#include "SameName.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

void CMaterial::SetState(MaterialState newState) {
    state = std::move(newState);
    calculated.clear();
}

void CMaterial::SetTemperature(double temperature) {
    state.temperature = temperature;
    calculated.clear();
}

void* CMaterial::FindInterface(REFIID iid) {
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == reka::ICapeThermoMaterialObject::iid) {
        return static_cast<reka::ICapeThermoMaterialObject*>(this);
    }
    if (iid == reka::ICapeThermoMaterial::iid) return static_cast<reka::ICapeThermoMaterial*>(this);
    if (iid == reka::ICapeThermoPropertyRoutine::iid) return static_cast<reka::ICapeThermoPropertyRoutine*>(this);
    if (iid == reka::ICapeThermoCompounds::iid) return static_cast<reka::ICapeThermoCompounds*>(this);
    if (iid == reka::ECapeRoot::iid) return static_cast<reka::ECapeRoot*>(this);
    if (iid == reka::ECapeUser::iid) return static_cast<reka::ECapeUser*>(this);
    return nullptr;
}

HRESULT CMaterial::Refuse(const Caller& caller, HRESULT code, const std::u16string& text) {
    return Fail(code, text, caller.scope, caller.interfaceName);
}

bool CMaterial::IsCalculated(std::u16string_view property) const {
    return std::find(calculated.begin(), calculated.end(), property) != calculated.end();
}

HRESULT CMaterial::Calculate(const Caller& caller, const VARIANT& props) {
    std::vector<std::u16string> names;
    if (!packagetext::ReadTexts(props, names) || names.empty()) {
        return Refuse(caller, ECapeInvalidArgumentHR, u"the properties must be an array of strings");
    }
    std::vector<std::u16string_view> found;
    for (const std::u16string& name : names) {
        const MaterialProperty* property = FindMaterialProperty(name);
        if (!property || property->isHeld) {
            return Refuse(caller, ECapeInvalidArgumentHR, u"rekasim can't calculate the property " + name);
        }
        std::vector<double> values;
        std::u16string errorText;
        if (!ComputeMaterialProperty(state, *property, false, values, errorText)) {
            return Refuse(caller, ECapeComputationHR, errorText);
        }
        found.push_back(property->name);
    }
    for (const std::u16string_view name : found) {
        if (!IsCalculated(name)) calculated.push_back(name);
    }
    return S_OK;
}

HRESULT CMaterial::ReadProperty(const Caller& caller, std::u16string_view name, std::u16string_view basis, bool overall,
                                std::vector<double>& values) {
    const MaterialProperty* property = FindMaterialProperty(name);
    if (!property || (overall && !property->isOverall)) {
        return Refuse(caller, ECapeInvalidArgumentHR,
                      u"rekasim's material has no " + std::u16string(overall ? u"overall " : u"") + u"property " +
                          std::u16string(name));
    }
    const bool massBasis = SameName(basis, u"mass");
    const bool basisFits = property->hasBasis ? massBasis || SameName(basis, u"mole") : basis.empty();
    if (!basisFits) {
        return Refuse(caller, ECapeInvalidArgumentHR,
                      std::u16string(property->name) +
                          (property->hasBasis ? u" needs the basis mole or mass" : u" takes no basis"));
    }
    if (!property->isHeld && !IsCalculated(property->name)) {
        return Refuse(caller, ECapeThrmPropertyNotAvailableHR,
                      std::u16string(property->name) + u" has not been calculated for the present state");
    }
    std::u16string errorText;
    if (!ComputeMaterialProperty(state, *property, massBasis, values, errorText)) {
        return Refuse(caller, ECapeComputationHR, errorText);
    }
    return S_OK;
}

HRESULT CMaterial::CheckPhase(const Caller& caller, std::u16string_view phase) {
    if (SameName(phase, state.phase)) return S_OK;
    return Refuse(caller, ECapeInvalidArgumentHR,
                  u"the material has no phase " + std::u16string(phase) + u", it is " + state.phase);
}

HRESULT CMaterial::FindCompounds(const Caller& caller, const VARIANT& compIds, std::vector<std::size_t>& indices) {
    std::vector<std::u16string> ids;
    if (!packagetext::ReadTexts(compIds, ids)) {
        return Refuse(caller, ECapeInvalidArgumentHR, u"the compounds must be an array of strings");
    }
    indices.clear();
    if (ids.empty()) {
        for (std::size_t i = 0; i < state.compounds.size(); ++i) indices.push_back(i);
        return S_OK;
    }
    for (const std::u16string& id : ids) {
        const auto found = std::find_if(state.compounds.begin(), state.compounds.end(),
                                        [&id](const MaterialCompound& compound) { return SameName(compound.id, id); });
        if (found == state.compounds.end()) {
            return Refuse(caller, ECapeInvalidArgumentHR, u"the material has no compound " + id);
        }
        indices.push_back(static_cast<std::size_t>(found - state.compounds.begin()));
    }
    return S_OK;
}

}  // namespace rekasim
