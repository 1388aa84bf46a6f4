// SPDX-License-Identifier: MIT
// A material that answers at once, by both thermo versions.

#pragma once

#include "bench/call/IdleMaterial.h"

namespace reka::bench {

/// Answers whatever is asked with a new array of the right length, and calculates nothing. Compounds are those of
/// `AddCompound`.
class CReadyMaterial final : public CIdleMaterial,
                             public CIdleObject<ICapeThermoMaterial>,
                             public CIdleObject<ICapeThermoPropertyRoutine> {
public:
    IDispatch* Dispatch() { return static_cast<ICapeThermoMaterialObject*>(this); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT, VARIANT, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR, VARIANT, BSTR, BSTR, VARIANT* results) override {
        return Answer(property, results);
    }

    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR, BSTR, VARIANT* results) override {
        return Answer(property, results);
    }

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
    HRESULT Answer(BSTR property, VARIANT* results) const;
};

}  // namespace reka::bench
