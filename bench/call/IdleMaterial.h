// SPDX-License-Identifier: MIT
// A simulator's objects that do next to nothing.

#pragma once

#include <string>
#include <vector>

#include "capeopen/DualInterface.h"
#include "platform/Holders.h"

namespace reka::bench {

/// An object of one interface, which counts nobody.
template <class Interface>
class CIdleObject : public CDualInterface<Interface> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** object) override {
        const bool isKnown = asked == IID_IUnknown || asked == IID_IDispatch || asked == InterfaceId<Interface>();
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

/// Takes results, and keeps the first number of the last one.
class CIdleReactionObject : public CIdleObject<ICapeReactionProperties> {
public:
    double lastValue = 0;

    HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT values) override {
        lastValue = *static_cast<const double*>(values.parray->pvData);
        return S_OK;
    }
};

/// A material that knows its compounds, asked for their CAS numbers in their order.
class CIdleMaterial : public CIdleObject<ICapeThermoMaterialObject> {
public:
    void AddCompound(const std::u16string& identifier, const std::u16string& casNumber);
    std::size_t CompoundCount() const { return identifiers.size(); }

    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* compIds) override;
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT, VARIANT, BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetProp(BSTR, BSTR, VARIANT, BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetProp(BSTR, BSTR, VARIANT, BSTR, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CalcEquilibrium(BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetIndependentVar(VARIANT, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIndependentVar(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE PropCheck(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AvailableProps(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveResults(VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateMaterialObject(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Duplicate(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ValidityCheck(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropList(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNumComponents(LONG*) override { return E_NOTIMPL; }

private:
    std::vector<CBstr> identifiers;
    std::vector<CBstr> casNumbers;
    std::size_t asked = 0;
};

}  // namespace reka::bench
