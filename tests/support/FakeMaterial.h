// SPDX-License-Identifier: MIT
// A simulator's material by both thermo versions, which records every call and answers as it was told.

#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/CountedFake.h"

namespace reka::test {

class CFakeMaterial : public CDualInterface<ICapeThermoMaterialObject>,
                      public CDualInterface<ICapeThermoMaterial>,
                      public CDualInterface<ICapeThermoPropertyRoutine>,
                      public CFakeErrors {
public:
    /// A material with these identifiers and no CAS numbers.
    explicit CFakeMaterial(std::initializer_list<const char16_t*> identifiers);
    virtual ~CFakeMaterial() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references.Remove(); }

    // Version 1.0
    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* compIds) override;
    HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT props, VARIANT phases, BSTR calcType) override;
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                      VARIANT* results) override;
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

    // Version 1.1
    HRESULT STDMETHODCALLTYPE ClearAllProps() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyFromMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOverallProp(BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOverallTPFraction(double*, double*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPresentPhases(VARIANT*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) override;
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
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) override;
    HRESULT STDMETHODCALLTYPE CalcTwoPhaseProp(VARIANT, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CheckSinglePhasePropSpec(BSTR, BSTR, VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CheckTwoPhasePropSpec(BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSinglePhasePropList(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTwoPhasePropList(VARIANT*) override { return E_NOTIMPL; }

    /// As the package takes it.
    IDispatch* Dispatch() { return static_cast<ICapeThermoMaterialObject*>(this); }
    /// The CAS number of the compound at that position, as a material answers it.
    void SetCasNumber(std::size_t position, const char16_t* casNumber);

    CReferences references;
    CallLog log;
    CVariant componentIds;
    std::vector<CVariant> casAnswers;         // per compound; empty: the call fails
    std::map<std::string, CVariant> answers;  // by property
    std::map<std::string, HRESULT> failures;  // by operation, such as "CalcProp density" or "get_ComponentIds"
    bool offersMaterialObject = true;
    bool offersMaterial = true;
    bool offersPropertyRoutine = true;

private:
    std::size_t constantsAsked = 0;

    HRESULT Answer(const std::string& operation, const std::string& call, VARIANT* results, const CVariant* answer);
};

}  // namespace reka::test
