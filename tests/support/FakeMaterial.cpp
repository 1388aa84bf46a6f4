// SPDX-License-Identifier: MIT
// Each question is written down as a line, with its arguments in a readable form, before it is answered, so that a test
// can compare the whole talk between package and material with what it must be. What fails is chosen by operation or by
// the number of the call.

#include "support/FakeMaterial.h"

#include "text/Utf8.h"

namespace reka::test {

CFakeMaterial::CFakeMaterial(std::initializer_list<const char16_t*> identifiers)
    : componentIds(Strings(identifiers)), casAnswers(identifiers.size()) {}

HRESULT CFakeMaterial::QueryInterface(REFIID iid, void** object) {
    *object = FindErrors(iid);
    if (iid == IID_IUnknown || iid == IID_IDispatch ||
        (iid == ICapeThermoMaterialObject::iid && offersMaterialObject)) {
        *object = static_cast<ICapeThermoMaterialObject*>(this);
    } else if (iid == ICapeThermoMaterial::iid && offersMaterial) {
        *object = static_cast<ICapeThermoMaterial*>(this);
    } else if (iid == ICapeThermoPropertyRoutine::iid && offersPropertyRoutine) {
        *object = static_cast<ICapeThermoPropertyRoutine*>(this);
    }
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT CFakeMaterial::Answer(const std::string& operation, const std::string& call, VARIANT* results,
                              const CVariant* answer) {
    if (log.Record(call)) return log.failCode;
    const auto failure = failures.find(operation);
    if (failure != failures.end()) return failure->second;
    return answer && results ? CopyVariant(results, answer->Get()) : S_OK;
}

HRESULT CFakeMaterial::get_ComponentIds(VARIANT* compIds) {
    VariantInit(compIds);
    return Answer("get_ComponentIds", "get_ComponentIds()", compIds, &componentIds);
}

HRESULT CFakeMaterial::GetComponentConstant(VARIANT props, VARIANT compIds, VARIANT* propVals) {
    VariantInit(propVals);
    // The questions come in the order of the compounds, so that of two equal identifiers each has its own answer.
    const CVariant* const answer = casAnswers.empty() ? nullptr : &casAnswers[constantsAsked % casAnswers.size()];
    ++constantsAsked;
    const HRESULT result = Answer("GetComponentConstant",
                                  "GetComponentConstant(" + Show(props) + ", " + Show(compIds) + ")", propVals, answer);
    if (FAILED(result)) return result;
    return !answer || answer->Get().vt == VT_EMPTY ? E_FAIL : S_OK;
}

HRESULT CFakeMaterial::CalcProp(VARIANT props, VARIANT phases, BSTR calcType) {
    return Answer("CalcProp " + (StringsIn(props).empty() ? "" : StringsIn(props)[0]),
                  "CalcProp(" + Show(props) + ", " + Show(phases) + ", " + Show(calcType) + ")", nullptr, nullptr);
}

HRESULT CFakeMaterial::GetProp(BSTR property, BSTR phase, VARIANT compIds, BSTR calcType, BSTR basis,
                               VARIANT* results) {
    const std::string propertyName = Utf8FromUtf16(TextOf(property));
    return Answer("GetProp " + propertyName,
                  "GetProp(" + Show(property) + ", " + Show(phase) + ", " + Show(compIds) + ", " + Show(calcType) +
                      ", " + Show(basis) + ")",
                  results, &answers[propertyName]);
}

HRESULT CFakeMaterial::GetSinglePhaseProp(BSTR property, BSTR phaseLabel, BSTR basis, VARIANT* results) {
    const std::string propertyName = Utf8FromUtf16(TextOf(property));
    return Answer("GetSinglePhaseProp " + propertyName,
                  "GetSinglePhaseProp(" + Show(property) + ", " + Show(phaseLabel) + ", " + Show(basis) + ")", results,
                  &answers[propertyName]);
}

HRESULT CFakeMaterial::CalcSinglePhaseProp(VARIANT props, BSTR phaseLabel) {
    return Answer("CalcSinglePhaseProp " + (StringsIn(props).empty() ? "" : StringsIn(props)[0]),
                  "CalcSinglePhaseProp(" + Show(props) + ", " + Show(phaseLabel) + ")", nullptr, nullptr);
}

void CFakeMaterial::SetCasNumber(std::size_t position, const char16_t* casNumber) {
    std::vector<CVariant> element;
    element.push_back(Text(casNumber));
    casAnswers[position] = Variants(std::move(element));
}

}  // namespace reka::test
