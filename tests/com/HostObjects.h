// SPDX-License-Identifier: MIT
// The objects of a simulator that a package calls: material, reaction object, property bag. Each counts the references
// on it, and can fail or call back at a given call.

#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Host.h"

namespace host {

/// Reference count and calls of a host object that stands on a test's stack.
struct Calls {
    int held = 0;                  // references
    int count = 0;                 // calls so far
    int failAt = 0;                // number of the call that fails; 0: none
    std::function<void()> onCall;  // runs inside each call

    HRESULT Next() {
        ++count;
        if (onCall) onCall();
        return count == failAt ? E_FAIL : S_OK;
    }
};

/// The operations of `IDispatch`, which the component doesn't call.
template <class Interface>
class CVtableOnly : public Interface {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

/// A material of both thermo versions with compounds "First" and "Second".
class CMaterial : public CVtableOnly<reka::ICapeThermoMaterialObject>,
                  public CVtableOnly<reka::ICapeThermoMaterial>,
                  public CVtableOnly<reka::ICapeThermoPropertyRoutine> {
public:
    CMaterial();
    IDispatch* Dispatch() { return static_cast<reka::ICapeThermoMaterialObject*>(this); }

    Calls calls;
    std::map<std::wstring, std::vector<double>> properties;  // by the names that the package asks for

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++calls.held); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--calls.held); }

    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* compIds) override;
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT props, VARIANT phases, BSTR calcType) override;
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                      VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) override;

    // What a reaction package never asks.
    HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT, VARIANT*) override { return E_NOTIMPL; }
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
    HRESULT STDMETHODCALLTYPE ClearAllProps() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyFromMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOverallProp(BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOverallTPFraction(double*, double*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPresentPhases(VARIANT*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTPFraction(BSTR, double*, double*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOverallProp(BSTR, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPresentPhases(VARIANT, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CalcAndGetLnPhi(BSTR, double, double, VARIANT, LONG, VARIANT*, VARIANT*, VARIANT*,
                                              VARIANT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CalcTwoPhaseProp(VARIANT, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CheckSinglePhasePropSpec(BSTR, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CheckTwoPhasePropSpec(BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSinglePhasePropList(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTwoPhasePropList(VARIANT*) override { return E_NOTIMPL; }

private:
    HRESULT Answer(BSTR property, VARIANT* results);
};

/// Keeps what a package calculates.
class CReactionObject : public CVtableOnly<reka::ICapeReactionProperties> {
public:
    IDispatch* Dispatch() { return this; }

    Calls calls;
    std::map<std::wstring, double> values;  // by property, a blank and the reaction

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++calls.held); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--calls.held); }
    HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                              VARIANT propVals) override;
};

/// A document's property bag.
class CBag : public IPropertyBag {
public:
    Calls calls;
    std::map<std::wstring, CValue> members;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++calls.held); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--calls.held); }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* errorLog) override;
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;
};

/// A bag with a package of compounds "First" and "Second" and one reaction "R" between them in the vapour, with that
/// rate and heat, for a thermo version such as "1.1".
void FillBag(CBag& bag, std::wstring_view rate, std::wstring_view heat, std::wstring_view thermoVersion);

/// A new package, loaded from such a bag and initialised.
CRef<reka::ICapeUtilities> MakePackage(std::wstring_view rate, std::wstring_view heat = L"-1000",
                                       std::wstring_view thermoVersion = L"1.1");

/// Has the package calculate rate and heat of all reactions in the vapour.
HRESULT Calculate(const CRef<reka::ICapeUtilities>& package);

/// Binds both objects to the package.
HRESULT Bind(const CRef<reka::ICapeUtilities>& package, CMaterial& material, CReactionObject& results);

}  // namespace host
