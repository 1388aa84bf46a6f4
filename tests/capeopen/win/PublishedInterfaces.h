// SPDX-License-Identifier: MIT
// The CAPE-OPEN interfaces as they are published, member by member: what the declarations in CapeOpenInterfaces.h and
// in REKA.idl are compared with.

#pragma once

#include <windows.h>

#include <oaidl.h>

namespace reka::test {

struct PublishedInterface {
    const char* name;
    const char* identifier;
};

constexpr PublishedInterface publishedInterfaces[] = {
    {"ICapeIdentification", "{678C0990-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeUtilities", "{678C0A9B-0100-11D2-A67D-00105A42887F}"},
    {"ECapeRoot", "{678C0B10-7D66-11D2-A67D-00105A42887F}"},
    {"ECapeUser", "{678C0B11-7D66-11D2-A67D-00105A42887F}"},
    {"ECapeUnknown", "{678C0B12-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeReactionsPackageManager", "{678C0AFC-0100-11D2-A67D-00105A42887F}"},
    {"ICapeThermoNewPropertyPackage", "{D743703A-F876-4EE6-B8CB-A2002083D7D1}"},
    {"ICapeReactionsRoutine", "{678C0AF9-0100-11D2-A67D-00105A42887F}"},
    {"ICapeReactionChemistry", "{678C0AFB-0100-11D2-A67D-00105A42887F}"},
    {"ICapeKineticReactionContext", "{678C0AFE-0100-11D2-A67D-00105A42887F}"},
    {"ICapeThermoMaterialContext", "{678C0A9C-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeThermoContext10", "{678C0B5F-0100-11D2-A67D-00105A42887F}"},
    {"ICapeReactionProperties", "{678C0AFA-0100-11D2-A67D-00105A42887F}"},
    {"ICapeThermoMaterialObject", "{678C0994-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeThermoMaterialTemplate", "{678C0993-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeThermoMaterial", "{678C0A9B-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeThermoPropertyRoutine", "{678C0A9F-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeThermoCompounds", "{678C0A9D-7D66-11D2-A67D-00105A42887F}"},
    {"ICapeMaterialTemplateSystem", "{678C0A9E-0100-11D2-A67D-00105A42887F}"},
};

struct PublishedMember {
    const char* interfaceName;
    const char* name;
    int slot;  // counted from 0, those of IUnknown and IDispatch included
    DISPID dispatchId;
    INVOKEKIND kind;
    const char* arguments;  // in order: direction, type, name; "out" is the result of a late-bound call
};

constexpr PublishedMember publishedMembers[] = {
    {"ICapeIdentification", "ComponentName", 7, 1, INVOKE_PROPERTYGET, "out BSTR* name"},
    {"ICapeIdentification", "ComponentName", 8, 1, INVOKE_PROPERTYPUT, "in BSTR name"},
    {"ICapeIdentification", "ComponentDescription", 9, 2, INVOKE_PROPERTYGET, "out BSTR* desc"},
    {"ICapeIdentification", "ComponentDescription", 10, 2, INVOKE_PROPERTYPUT, "in BSTR desc"},
    {"ICapeUtilities", "parameters", 7, 1, INVOKE_PROPERTYGET, "out IDispatch** parameters"},
    {"ICapeUtilities", "simulationContext", 8, 2, INVOKE_PROPERTYPUT, "in IDispatch* context"},
    {"ICapeUtilities", "Initialize", 9, 3, INVOKE_FUNC, ""},
    {"ICapeUtilities", "Terminate", 10, 4, INVOKE_FUNC, ""},
    {"ICapeUtilities", "Edit", 11, 5, INVOKE_FUNC, ""},
    {"ECapeRoot", "name", 7, 1, INVOKE_PROPERTYGET, "out BSTR* name"},
    {"ECapeUser", "code", 7, 1, INVOKE_PROPERTYGET, "out long* code"},
    {"ECapeUser", "description", 8, 2, INVOKE_PROPERTYGET, "out BSTR* description"},
    {"ECapeUser", "scope", 9, 3, INVOKE_PROPERTYGET, "out BSTR* scope"},
    {"ECapeUser", "interfaceName", 10, 4, INVOKE_PROPERTYGET, "out BSTR* interfaceName"},
    {"ECapeUser", "operation", 11, 5, INVOKE_PROPERTYGET, "out BSTR* operation"},
    {"ECapeUser", "moreInfo", 12, 6, INVOKE_PROPERTYGET, "out BSTR* moreInfo"},
    {"ICapeReactionsPackageManager", "GetListOfReactionsPackages", 7, 1, INVOKE_FUNC, "out VARIANT* names"},
    {"ICapeReactionsPackageManager", "ResolveReactionsPackage", 8, 2, INVOKE_FUNC,
     "in BSTR reactionsPkg; out IDispatch** package"},
    {"ICapeThermoNewPropertyPackage", "NewPropertyPackage", 7, 1, INVOKE_FUNC, "out IDispatch** package"},
    {"ICapeReactionsRoutine", "CalcReactionProp", 7, 1, INVOKE_FUNC,
     "in VARIANT props; in BSTR phase; in VARIANT reacIds; in BSTR basis"},
    {"ICapeReactionChemistry", "GetNumberOfReactions", 7, 1, INVOKE_FUNC, "out long* count"},
    {"ICapeReactionChemistry", "GetReactionsIds", 8, 2, INVOKE_FUNC, "out VARIANT* reacIds"},
    {"ICapeReactionChemistry", "GetReactionType", 9, 3, INVOKE_FUNC, "in BSTR reacID; out CapeReactionType* type"},
    {"ICapeReactionChemistry", "GetNumberOfReactionCompounds", 10, 4, INVOKE_FUNC, "in BSTR reacID; out long* count"},
    {"ICapeReactionChemistry", "GetReactionCompoundIds", 11, 5, INVOKE_FUNC,
     "in BSTR reacID; inout VARIANT* compIds; inout VARIANT* compCharge; inout VARIANT* compCASNumber"},
    {"ICapeReactionChemistry", "GetStoichiometricCoefficients", 12, 6, INVOKE_FUNC,
     "in BSTR reacID; out VARIANT* coefficients"},
    {"ICapeReactionChemistry", "GetReactionPhase", 13, 7, INVOKE_FUNC, "in BSTR reacID; out BSTR* phase"},
    {"ICapeReactionChemistry", "GetReactionRateBasis", 14, 8, INVOKE_FUNC,
     "in BSTR reacID; out CapeReactionRateBasis* basis"},
    {"ICapeReactionChemistry", "GetReactionConcBasis", 15, 9, INVOKE_FUNC, "in BSTR reacID; out BSTR* basis"},
    {"ICapeReactionChemistry", "GetBaseReactant", 16, 10, INVOKE_FUNC, "in BSTR reacID; out BSTR* baseReactant"},
    {"ICapeReactionChemistry", "GetPhaseCompounds", 17, 11, INVOKE_FUNC,
     "in BSTR reacID; inout long* compNo; inout VARIANT* compIds"},
    {"ICapeReactionChemistry", "GetReactionParameters", 18, 12, INVOKE_FUNC,
     "in BSTR reacID; out IDispatch** parameters"},
    {"ICapeKineticReactionContext", "SetReactionObject", 7, 1, INVOKE_FUNC, "in IDispatch** reactionsObject"},
    {"ICapeThermoMaterialContext", "SetMaterial", 7, 1, INVOKE_FUNC, "in IDispatch* material"},
    {"ICapeThermoMaterialContext", "UnsetMaterial", 8, 2, INVOKE_FUNC, ""},
    {"ICapeThermoContext10", "SetMaterial", 7, 1, INVOKE_FUNC, "in IDispatch** materialObject"},
    {"ICapeReactionProperties", "GetReactionProp", 7, 1, INVOKE_FUNC,
     "in BSTR property; in BSTR phase; in VARIANT reacIds; in BSTR basis; out VARIANT* propVals"},
    {"ICapeReactionProperties", "SetReactionProp", 8, 2, INVOKE_FUNC,
     "in BSTR property; in BSTR phase; in VARIANT reacIds; in BSTR basis; in VARIANT propVals"},
    {"ICapeThermoMaterialObject", "ComponentIds", 7, 1, INVOKE_PROPERTYGET, "out VARIANT* compIds"},
    {"ICapeThermoMaterialObject", "PhaseIds", 8, 2, INVOKE_PROPERTYGET, "out VARIANT* phaseIds"},
    {"ICapeThermoMaterialObject", "GetUniversalConstant", 9, 3, INVOKE_FUNC, "in VARIANT props; out VARIANT* propVals"},
    {"ICapeThermoMaterialObject", "GetComponentConstant", 10, 4, INVOKE_FUNC,
     "in VARIANT props; in VARIANT compIds; out VARIANT* propVals"},
    {"ICapeThermoMaterialObject", "CalcProp", 11, 5, INVOKE_FUNC,
     "in VARIANT props; in VARIANT phases; in BSTR calcType"},
    {"ICapeThermoMaterialObject", "GetProp", 12, 6, INVOKE_FUNC,
     "in BSTR property; in BSTR phase; in VARIANT compIds; in BSTR calcType; in BSTR basis; out VARIANT* results"},
    {"ICapeThermoMaterialObject", "SetProp", 13, 7, INVOKE_FUNC,
     "in BSTR property; in BSTR phase; in VARIANT compIds; in BSTR calcType; in BSTR basis; in VARIANT values"},
    {"ICapeThermoMaterialObject", "CalcEquilibrium", 14, 8, INVOKE_FUNC, "in BSTR flashType; in VARIANT props"},
    {"ICapeThermoMaterialObject", "SetIndependentVar", 15, 9, INVOKE_FUNC, "in VARIANT indVars; in VARIANT values"},
    {"ICapeThermoMaterialObject", "GetIndependentVar", 16, 10, INVOKE_FUNC, "in VARIANT indVars; out VARIANT* values"},
    {"ICapeThermoMaterialObject", "PropCheck", 17, 11, INVOKE_FUNC, "in VARIANT props; out VARIANT* valid"},
    {"ICapeThermoMaterialObject", "AvailableProps", 18, 12, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoMaterialObject", "RemoveResults", 19, 13, INVOKE_FUNC, "in VARIANT props"},
    {"ICapeThermoMaterialObject", "CreateMaterialObject", 20, 14, INVOKE_FUNC, "out IDispatch** materialObject"},
    {"ICapeThermoMaterialObject", "Duplicate", 21, 15, INVOKE_FUNC, "out IDispatch** clone"},
    {"ICapeThermoMaterialObject", "ValidityCheck", 22, 16, INVOKE_FUNC, "in VARIANT props; out VARIANT* reliability"},
    {"ICapeThermoMaterialObject", "GetPropList", 23, 17, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoMaterialObject", "GetNumComponents", 24, 18, INVOKE_FUNC, "out long* count"},
    {"ICapeThermoMaterialTemplate", "CreateMaterialObject", 7, 1, INVOKE_FUNC, "out IDispatch** materialObject"},
    {"ICapeThermoMaterialTemplate", "SetProp", 8, 2, INVOKE_FUNC, "in BSTR property; in VARIANT values"},
    {"ICapeThermoMaterial", "ClearAllProps", 7, 1, INVOKE_FUNC, ""},
    {"ICapeThermoMaterial", "CopyFromMaterial", 8, 2, INVOKE_FUNC, "in IDispatch** source"},
    {"ICapeThermoMaterial", "CreateMaterial", 9, 3, INVOKE_FUNC, "out IDispatch** materialObject"},
    {"ICapeThermoMaterial", "GetOverallProp", 10, 4, INVOKE_FUNC,
     "in BSTR property; in BSTR basis; inout VARIANT* results"},
    {"ICapeThermoMaterial", "GetOverallTPFraction", 11, 5, INVOKE_FUNC,
     "inout double* temperature; inout double* pressure; inout VARIANT* composition"},
    {"ICapeThermoMaterial", "GetPresentPhases", 12, 6, INVOKE_FUNC,
     "inout VARIANT* phaseLabels; inout VARIANT* phaseStatus"},
    {"ICapeThermoMaterial", "GetSinglePhaseProp", 13, 7, INVOKE_FUNC,
     "in BSTR property; in BSTR phaseLabel; in BSTR basis; inout VARIANT* results"},
    {"ICapeThermoMaterial", "GetTPFraction", 14, 8, INVOKE_FUNC,
     "in BSTR phaseLabel; inout double* temperature; inout double* pressure; inout VARIANT* composition"},
    {"ICapeThermoMaterial", "GetTwoPhaseProp", 15, 9, INVOKE_FUNC,
     "in BSTR property; in VARIANT phaseLabels; in BSTR basis; inout VARIANT* results"},
    {"ICapeThermoMaterial", "SetOverallProp", 16, 10, INVOKE_FUNC,
     "in BSTR property; in BSTR basis; in VARIANT values"},
    {"ICapeThermoMaterial", "SetPresentPhases", 17, 11, INVOKE_FUNC, "in VARIANT phaseLabels; in VARIANT phaseStatus"},
    {"ICapeThermoMaterial", "SetSinglePhaseProp", 18, 12, INVOKE_FUNC,
     "in BSTR property; in BSTR phaseLabel; in BSTR basis; in VARIANT values"},
    {"ICapeThermoMaterial", "SetTwoPhaseProp", 19, 13, INVOKE_FUNC,
     "in BSTR property; in VARIANT phaseLabels; in BSTR basis; in VARIANT values"},
    {"ICapeThermoPropertyRoutine", "CalcAndGetLnPhi", 7, 1, INVOKE_FUNC,
     "in BSTR phaseLabel; in double temperature; in double pressure; in VARIANT moleNumbers; in long fFlags; inout "
     "VARIANT* lnPhi; inout VARIANT* lnPhiDT; inout VARIANT* lnPhiDP; inout VARIANT* lnPhiDn"},
    {"ICapeThermoPropertyRoutine", "CalcSinglePhaseProp", 8, 2, INVOKE_FUNC, "in VARIANT props; in BSTR phaseLabel"},
    {"ICapeThermoPropertyRoutine", "CalcTwoPhaseProp", 9, 3, INVOKE_FUNC, "in VARIANT props; in VARIANT phaseLabels"},
    {"ICapeThermoPropertyRoutine", "CheckSinglePhasePropSpec", 10, 4, INVOKE_FUNC,
     "in BSTR property; in BSTR phaseLabel; out VARIANT_BOOL* valid"},
    {"ICapeThermoPropertyRoutine", "CheckTwoPhasePropSpec", 11, 5, INVOKE_FUNC,
     "in BSTR property; in VARIANT phaseLabels; out VARIANT_BOOL* valid"},
    {"ICapeThermoPropertyRoutine", "GetSinglePhasePropList", 12, 6, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoPropertyRoutine", "GetTwoPhasePropList", 13, 7, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoCompounds", "GetCompoundConstant", 7, 1, INVOKE_FUNC,
     "in VARIANT props; in VARIANT compIds; out VARIANT* propVals"},
    {"ICapeThermoCompounds", "GetCompoundList", 8, 2, INVOKE_FUNC,
     "inout VARIANT* compIds; inout VARIANT* formulae; inout VARIANT* names; inout VARIANT* boilTemps; inout VARIANT* "
     "molwts; inout VARIANT* casnos"},
    {"ICapeThermoCompounds", "GetConstPropList", 9, 3, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoCompounds", "GetNumCompounds", 10, 4, INVOKE_FUNC, "out long* count"},
    {"ICapeThermoCompounds", "GetPDependentProperty", 11, 5, INVOKE_FUNC,
     "in VARIANT props; in double pressure; in VARIANT compIds; inout VARIANT* propVals"},
    {"ICapeThermoCompounds", "GetPDependentPropList", 12, 6, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeThermoCompounds", "GetTDependentProperty", 13, 7, INVOKE_FUNC,
     "in VARIANT props; in double temperature; in VARIANT compIds; inout VARIANT* propVals"},
    {"ICapeThermoCompounds", "GetTDependentPropList", 14, 8, INVOKE_FUNC, "out VARIANT* props"},
    {"ICapeMaterialTemplateSystem", "MaterialTemplates", 7, 1, INVOKE_PROPERTYGET, "out VARIANT* templates"},
    {"ICapeMaterialTemplateSystem", "CreateMaterialTemplate", 8, 2, INVOKE_FUNC,
     "in BSTR materialTemplateName; out IDispatch** materialTemplate"},
};

}  // namespace reka::test
