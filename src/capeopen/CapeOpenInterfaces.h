// SPDX-License-Identifier: MIT
// The CAPE-OPEN interfaces that the component offers or calls, with their identifiers, slots and result codes. All
// derive from `IDispatch`; the order of declaration is the order of the slots, which are counted on from those of
// `IDispatch`.
//
// Ownership follows the platform: what is passed in belongs to the caller; an output is initialised by the callee and
// belongs to the caller; a VARIANT* that is written into another direction (`GetSinglePhaseProp`, `GetCompoundList`,
// ...) is initialised by the caller, cleared by the callee before it writes, and cleared by the caller after.

#pragma once

#include "platform/Automation.h"

namespace reka {

enum CapeReactionType : LONG { CAPE_EQUILIBRIUM = 0, CAPE_KINETIC = 1 };
enum CapeReactionRateBasis : LONG { CAPE_HOMOGENEOUS = 0, CAPE_HETEROGENEOUS = 1 };

constexpr HRESULT ECapeUnknownHR = static_cast<HRESULT>(0x80040501U);
constexpr HRESULT ECapeNoImplHR = static_cast<HRESULT>(0x80040509U);

/// Name and description of a component.
class ICapeIdentification : public IDispatch {
public:
    static constexpr IID iid = {0x678C0990, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_ComponentName(BSTR* name) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ComponentName(BSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ComponentDescription(BSTR* desc) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ComponentDescription(BSTR desc) = 0;
};

/// The common service of a component: context, start, end, dialog.
class ICapeUtilities : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9B, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_parameters(IDispatch** parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_simulationContext(IDispatch* context) = 0;
    virtual HRESULT STDMETHODCALLTYPE Initialize() = 0;
    virtual HRESULT STDMETHODCALLTYPE Terminate() = 0;
    virtual HRESULT STDMETHODCALLTYPE Edit() = 0;
};

/// The short name of the last failure.
class ECapeRoot : public IDispatch {
public:
    static constexpr IID iid = {0x678C0B10, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_name(BSTR* name) = 0;
};

/// The full story of the last failure.
class ECapeUser : public IDispatch {
public:
    static constexpr IID iid = {0x678C0B11, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_code(LONG* code) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_description(BSTR* description) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_scope(BSTR* scope) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_interfaceName(BSTR* interfaceName) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_operation(BSTR* operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_moreInfo(BSTR* moreInfo) = 0;
};

/// Marks an object whose failures are of no particular kind. No operations of its own.
class ECapeUnknown : public IDispatch {
public:
    static constexpr IID iid = {0x678C0B12, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
};

/// Lists reaction packages and makes them.
class ICapeReactionsPackageManager : public IDispatch {
public:
    static constexpr IID iid = {0x678C0AFC, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE GetListOfReactionsPackages(VARIANT* names) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResolveReactionsPackage(BSTR reactionsPkg, IDispatch** package) = 0;
};

/// Makes a new, empty package.
class ICapeThermoNewPropertyPackage : public IDispatch {
public:
    static constexpr IID iid = {0xD743703A, 0xF876, 0x4EE6, {0xB8, 0xCB, 0xA2, 0x00, 0x20, 0x83, 0xD7, 0xD1}};
    virtual HRESULT STDMETHODCALLTYPE NewPropertyPackage(IDispatch** package) = 0;
};

/// Calculates reaction properties.
class ICapeReactionsRoutine : public IDispatch {
public:
    static constexpr IID iid = {0x678C0AF9, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE CalcReactionProp(VARIANT props, BSTR phase, VARIANT reacIds, BSTR basis) = 0;
};

/// Tells what reactions a package holds.
class ICapeReactionChemistry : public IDispatch {
public:
    static constexpr IID iid = {0x678C0AFB, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE GetNumberOfReactions(LONG* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionsIds(VARIANT* reacIds) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionType(BSTR reacID, CapeReactionType* type) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNumberOfReactionCompounds(BSTR reacID, LONG* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionCompoundIds(BSTR reacID, VARIANT* compIds, VARIANT* compCharge,
                                                             VARIANT* compCASNumber) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStoichiometricCoefficients(BSTR reacID, VARIANT* coefficients) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionPhase(BSTR reacID, BSTR* phase) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionRateBasis(BSTR reacID, CapeReactionRateBasis* basis) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionConcBasis(BSTR reacID, BSTR* basis) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBaseReactant(BSTR reacID, BSTR* baseReactant) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPhaseCompounds(BSTR reacID, LONG* compNo, VARIANT* compIds) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReactionParameters(BSTR reacID, IDispatch** parameters) = 0;
};

/// Takes the object that receives calculated reaction properties.
class ICapeKineticReactionContext : public IDispatch {
public:
    static constexpr IID iid = {0x678C0AFE, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE SetReactionObject(IDispatch** reactionsObject) = 0;
};

/// Takes the material of thermo version 1.1.
class ICapeThermoMaterialContext : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9C, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE SetMaterial(IDispatch* material) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnsetMaterial() = 0;
};

/// Takes the material of thermo version 1.0.
class ICapeThermoContext10 : public IDispatch {
public:
    static constexpr IID iid = {0x678C0B5F, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE SetMaterial(IDispatch** materialObject) = 0;
};

/// The simulator's reaction object: receives calculated reaction properties.
class ICapeReactionProperties : public IDispatch {
public:
    static constexpr IID iid = {0x678C0AFA, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                                      VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                                      VARIANT propVals) = 0;
};

/// The simulator's material, thermo version 1.0.
class ICapeThermoMaterialObject : public IDispatch {
public:
    static constexpr IID iid = {0x678C0994, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* compIds) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PhaseIds(VARIANT* phaseIds) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUniversalConstant(VARIANT props, VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE CalcProp(VARIANT props, VARIANT phases, BSTR calcType) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                              VARIANT* results) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                                              VARIANT values) = 0;
    virtual HRESULT STDMETHODCALLTYPE CalcEquilibrium(BSTR flashType, VARIANT props) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIndependentVar(VARIANT indVars, VARIANT values) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIndependentVar(VARIANT indVars, VARIANT* values) = 0;
    virtual HRESULT STDMETHODCALLTYPE PropCheck(VARIANT props, VARIANT* valid) = 0;
    virtual HRESULT STDMETHODCALLTYPE AvailableProps(VARIANT* props) = 0;
    virtual HRESULT STDMETHODCALLTYPE RemoveResults(VARIANT props) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMaterialObject(IDispatch** materialObject) = 0;
    virtual HRESULT STDMETHODCALLTYPE Duplicate(IDispatch** clone) = 0;
    virtual HRESULT STDMETHODCALLTYPE ValidityCheck(VARIANT props, VARIANT* reliability) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropList(VARIANT* props) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNumComponents(LONG* count) = 0;
};

/// The simulator's material template, thermo version 1.0.
class ICapeThermoMaterialTemplate : public IDispatch {
public:
    static constexpr IID iid = {0x678C0993, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE CreateMaterialObject(IDispatch** materialObject) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetProp(BSTR property, VARIANT values) = 0;
};

/// The simulator's material, thermo version 1.1.
class ICapeThermoMaterial : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9B, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE ClearAllProps() = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyFromMaterial(IDispatch** source) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMaterial(IDispatch** materialObject) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOverallProp(BSTR property, BSTR basis, VARIANT* results) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOverallTPFraction(double* temperature, double* pressure,
                                                           VARIANT* composition) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPresentPhases(VARIANT* phaseLabels, VARIANT* phaseStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis,
                                                         VARIANT* results) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTPFraction(BSTR phaseLabel, double* temperature, double* pressure,
                                                    VARIANT* composition) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis,
                                                      VARIANT* results) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOverallProp(BSTR property, BSTR basis, VARIANT values) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPresentPhases(VARIANT phaseLabels, VARIANT phaseStatus) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis,
                                                         VARIANT values) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTwoPhaseProp(BSTR property, VARIANT phaseLabels, BSTR basis,
                                                      VARIANT values) = 0;
};

/// Calculates properties of the simulator's material, thermo version 1.1.
class ICapeThermoPropertyRoutine : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9F, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE CalcAndGetLnPhi(BSTR phaseLabel, double temperature, double pressure,
                                                      VARIANT moleNumbers, LONG fFlags, VARIANT* lnPhi,
                                                      VARIANT* lnPhiDT, VARIANT* lnPhiDP, VARIANT* lnPhiDn) = 0;
    virtual HRESULT STDMETHODCALLTYPE CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) = 0;
    virtual HRESULT STDMETHODCALLTYPE CalcTwoPhaseProp(VARIANT props, VARIANT phaseLabels) = 0;
    virtual HRESULT STDMETHODCALLTYPE CheckSinglePhasePropSpec(BSTR property, BSTR phaseLabel, VARIANT_BOOL* valid) = 0;
    virtual HRESULT STDMETHODCALLTYPE CheckTwoPhasePropSpec(BSTR property, VARIANT phaseLabels,
                                                            VARIANT_BOOL* valid) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSinglePhasePropList(VARIANT* props) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTwoPhasePropList(VARIANT* props) = 0;
};

/// The compounds of the simulator's material, thermo version 1.1.
class ICapeThermoCompounds : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9D, 0x7D66, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE GetCompoundConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCompoundList(VARIANT* compIds, VARIANT* formulae, VARIANT* names,
                                                      VARIANT* boilTemps, VARIANT* molwts, VARIANT* casnos) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetConstPropList(VARIANT* props) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNumCompounds(LONG* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPDependentProperty(VARIANT props, double pressure, VARIANT compIds,
                                                            VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPDependentPropList(VARIANT* props) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTDependentProperty(VARIANT props, double temperature, VARIANT compIds,
                                                            VARIANT* propVals) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTDependentPropList(VARIANT* props) = 0;
};

/// The simulator's material templates.
class ICapeMaterialTemplateSystem : public IDispatch {
public:
    static constexpr IID iid = {0x678C0A9E, 0x0100, 0x11D2, {0xA6, 0x7D, 0x00, 0x10, 0x5A, 0x42, 0x88, 0x7F}};
    virtual HRESULT STDMETHODCALLTYPE get_MaterialTemplates(VARIANT* templates) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateMaterialTemplate(BSTR materialTemplateName,
                                                             IDispatch** materialTemplate) = 0;
};

/// The identifier of an interface: its own of a CAPE-OPEN interface, the system's of a platform interface.
template <class Interface>
constexpr const IID& InterfaceId() {
    return Interface::iid;
}
template <>
inline const IID& InterfaceId<IUnknown>() {
    return IID_IUnknown;
}
template <>
inline const IID& InterfaceId<IDispatch>() {
    return IID_IDispatch;
}
template <>
inline const IID& InterfaceId<IPropertyBag>() {
    return IID_IPropertyBag;
}
template <>
inline const IID& InterfaceId<IErrorLog>() {
    return IID_IErrorLog;
}
template <>
inline const IID& InterfaceId<IPersist>() {
    return IID_IPersist;
}
template <>
inline const IID& InterfaceId<IPersistPropertyBag>() {
    return IID_IPersistPropertyBag;
}
template <>
inline const IID& InterfaceId<IPersistStream>() {
    return IID_IPersistStream;
}

}  // namespace reka
