// SPDX-License-Identifier: MIT
// What makes a host short: interfaces that are given back by themselves, and the objects that it has to bring, with all
// of it refused: it overrides what its reactions ask for.

#pragma once

#include <memory>

#include "reka/reka.h"

namespace reka {

struct GiveBack {
    void operator()(IUnknown* object) const { object->Release(); }
};

/// An interface with a count of its own, given back at the end; null for none.
template <class Interface>
using Held = std::unique_ptr<Interface, GiveBack>;

/// The interface of `object`; null if it hasn't got it.
template <class Interface>
Held<Interface> Ask(IUnknown* object) {
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(Interface::iid, &found))) return nullptr;
    return Held<Interface>(static_cast<Interface*>(found));
}

/// A new manager; null without memory.
inline Held<ICapeReactionsPackageManager> MakeManager() {
    void* made = nullptr;
    if (FAILED(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made))) return nullptr;
    return Held<ICapeReactionsPackageManager>(static_cast<ICapeReactionsPackageManager*>(made));
}

/// An object of one interface, without counts: it lives longer than whoever uses it, on the host's stack say. It can't
/// be called by name.
template <class Interface>
class HostObject : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool isOurs = iid == IID_IUnknown || iid == IID_IDispatch || iid == Interface::iid;
        *object = isOurs ? this : nullptr;
        return isOurs ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

/// A material of thermo version 1.0. A package asks for `get_ComponentIds` when it is bound, in any order; then, by
/// `GetProp`, for "temperature" (K) and "pressure" (Pa) with phase "overall", and in the phase of the reaction for
/// "fraction", "density" (mol/m3), "activity" and "fugacity" (Pa), the last three after `CalcProp`. Each answer is an
/// array of doubles, of one element or of one for each compound in the order of `compIds`; the package frees it.
class HostMaterial : public HostObject<ICapeThermoMaterialObject> {
public:
    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT, VARIANT, VARIANT*) override { return E_NOTIMPL; }
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
};

/// What takes the values: `SetReactionProp` is called once for each reaction, with arrays of its id and of one double.
class HostResults : public HostObject<ICapeReactionProperties> {
public:
    HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT) override { return E_NOTIMPL; }
};

}  // namespace reka
