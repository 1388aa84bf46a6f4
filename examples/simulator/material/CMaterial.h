// SPDX-License-Identifier: MIT
// The material that rekasim hands a package. One object answers both versions of the thermo interfaces, as a simulator
// that serves old and new components does. It has one phase, in the state that the document gives.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ErrorInfo.h"
#include "capeopen/ComObject.h"
#include "material/MaterialProperties.h"

namespace rekasim {

/// Held properties can be read at once; the others only after they were calculated for the present state, by whichever
/// version. Names of properties, phases and compounds are compared with the case of letters ignored.
///
/// Failures carry a code of the standard and a text for `ECapeUser`: an argument that the material can't take is an
/// invalid argument, a property that wasn't calculated isn't available, and what rekasim doesn't offer (writing,
/// flashes, copies, two phases) isn't implemented.
class CMaterial : public reka::CDualInterface<reka::ICapeThermoMaterialObject>,
                  public reka::CDualInterface<reka::ICapeThermoMaterial>,
                  public reka::CDualInterface<reka::ICapeThermoPropertyRoutine>,
                  public reka::CDualInterface<reka::ICapeThermoCompounds>,
                  public CErrorInfo {
public:
    /// Takes a new state; nothing is calculated for it yet.
    void SetState(MaterialState newState);
    /// Changes the temperature (K) alone; nothing is calculated for the new state yet.
    void SetTemperature(double temperature);

    void* FindInterface(REFIID iid);

    // ICapeThermoMaterialObject, in CMaterialVersion10.cpp
    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* compIds) override;
    HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT* phaseIds) override;
    HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT props, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE CalcProp(VARIANT props, VARIANT phases, BSTR calcType) override;
    HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                      VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE SetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                      VARIANT values) override;
    HRESULT STDMETHODCALLTYPE CalcEquilibrium(BSTR flashType, VARIANT props) override;
    HRESULT STDMETHODCALLTYPE SetIndependentVar(VARIANT indVars, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE GetIndependentVar(VARIANT indVars, VARIANT* values) override;
    HRESULT STDMETHODCALLTYPE PropCheck(VARIANT props, VARIANT* valid) override;
    HRESULT STDMETHODCALLTYPE AvailableProps(VARIANT* props) override;
    HRESULT STDMETHODCALLTYPE RemoveResults(VARIANT props) override;
    HRESULT STDMETHODCALLTYPE CreateMaterialObject(IDispatch** materialObject) override;
    HRESULT STDMETHODCALLTYPE Duplicate(IDispatch** clone) override;
    HRESULT STDMETHODCALLTYPE ValidityCheck(VARIANT props, VARIANT* reliability) override;
    HRESULT STDMETHODCALLTYPE GetPropList(VARIANT* props) override;
    HRESULT STDMETHODCALLTYPE GetNumComponents(LONG* count) override;

    // ICapeThermoMaterial, in CMaterialVersion11.cpp
    HRESULT STDMETHODCALLTYPE ClearAllProps() override;
    HRESULT STDMETHODCALLTYPE CopyFromMaterial(IDispatch** source) override;
    HRESULT STDMETHODCALLTYPE CreateMaterial(IDispatch** materialObject) override;
    HRESULT STDMETHODCALLTYPE GetOverallProp(BSTR property, BSTR basis, VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE GetOverallTPFraction(double* temperature, double* pressure,
                                                   VARIANT* composition) override;
    HRESULT STDMETHODCALLTYPE GetPresentPhases(VARIANT* phaseLabels, VARIANT* phaseStatus) override;
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE GetTPFraction(BSTR phaseLabel, double* temperature, double* pressure,
                                            VARIANT* composition) override;
    HRESULT STDMETHODCALLTYPE GetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis,
                                              VARIANT* results) override;
    HRESULT STDMETHODCALLTYPE SetOverallProp(BSTR property, BSTR basis, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE SetPresentPhases(VARIANT phaseLabels, VARIANT phaseStatus) override;
    HRESULT STDMETHODCALLTYPE SetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT values) override;
    HRESULT STDMETHODCALLTYPE SetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis, VARIANT values) override;

    // ICapeThermoPropertyRoutine, in CMaterialVersion11.cpp
    HRESULT STDMETHODCALLTYPE CalcAndGetLnPhi(BSTR phaseLabel, double temperature, double pressure, VARIANT moleNumbers,
                                              LONG fFlags, VARIANT* lnPhi, VARIANT* lnPhiDT, VARIANT* lnPhiDP,
                                              VARIANT* lnPhiDn) override;
    HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) override;
    HRESULT STDMETHODCALLTYPE CalcTwoPhaseProp(VARIANT props, VARIANT phaseLabels) override;
    HRESULT STDMETHODCALLTYPE CheckSinglePhasePropSpec(BSTR property, BSTR phaseLabel, VARIANT_BOOL* valid) override;
    HRESULT STDMETHODCALLTYPE CheckTwoPhasePropSpec(BSTR property, VARIANT phaseLabels, VARIANT_BOOL* valid) override;
    HRESULT STDMETHODCALLTYPE GetSinglePhasePropList(VARIANT* props) override;
    HRESULT STDMETHODCALLTYPE GetTwoPhasePropList(VARIANT* props) override;

    // ICapeThermoCompounds, in CMaterialCompounds.cpp
    HRESULT STDMETHODCALLTYPE GetCompoundConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE GetCompoundList(VARIANT* compIds, VARIANT* formulae, VARIANT* names, VARIANT* boilTemps,
                                              VARIANT* molwts, VARIANT* casnos) override;
    HRESULT STDMETHODCALLTYPE GetConstPropList(VARIANT* props) override;
    HRESULT STDMETHODCALLTYPE GetNumCompounds(LONG* count) override;
    HRESULT STDMETHODCALLTYPE GetPDependentProperty(VARIANT props, double pressure, VARIANT compIds,
                                                    VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE GetPDependentPropList(VARIANT* props) override;
    HRESULT STDMETHODCALLTYPE GetTDependentProperty(VARIANT props, double temperature, VARIANT compIds,
                                                    VARIANT* propVals) override;
    HRESULT STDMETHODCALLTYPE GetTDependentPropList(VARIANT* props) override;

private:
    /// The method that is being answered, for the text of its failure.
    struct Caller {
        std::u16string_view scope;
        std::u16string_view interfaceName;
    };
    HRESULT Refuse(const Caller& caller, HRESULT code, const std::u16string& text);

    /// Marks the named properties as calculated, after each has shown that it can be. All or none.
    HRESULT Calculate(const Caller& caller, const VARIANT& props);
    /// The values of a property that can be read, in material order; the basis is checked here.
    HRESULT ReadProperty(const Caller& caller, std::u16string_view name, std::u16string_view basis, bool overall,
                         std::vector<double>& values);
    HRESULT CheckPhase(const Caller& caller, std::u16string_view phase);
    /// Indices of the named compounds; all of the material for an empty list.
    HRESULT FindCompounds(const Caller& caller, const VARIANT& compIds, std::vector<std::size_t>& indices);
    /// One value per property and compound, the properties outermost. A constant that isn't known is empty, or a
    /// failure if `mustKnow`.
    HRESULT ReadConstants(const Caller& caller, const VARIANT& props, const VARIANT& compIds, bool mustKnow,
                          VARIANT* propVals);

    bool IsCalculated(std::u16string_view property) const;

    MaterialState state;
    std::vector<std::u16string_view> calculated;  // names of the property table
};

}  // namespace rekasim
