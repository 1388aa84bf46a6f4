// SPDX-License-Identifier: MIT
// Objects of a host that are no more than the tests need. They live on the stack of a test: a count that isn't back
// where it was tells of a reference that the component has kept, and is no leak. The first compound is known to the
// material by another identifier, so that it is found by its CAS number alone.

#include "HostObjects.h"

namespace host {

namespace {

constexpr wchar_t firstCas[] = L"71-43-2";

std::wstring TextOf(BSTR text) {
    return text ? text : L"";
}

CValue Copy(const VARIANT& value) {
    CValue copy;
    VariantCopyInd(&copy.Get(), const_cast<VARIANT*>(&value));
    return copy;
}

CValue TextArray(std::wstring_view text) {
    return StringArray({std::wstring(text)});
}

}  // namespace

CMaterial::CMaterial()
    : properties{{L"temperature", {300.0}},           {L"pressure", {2e5}},
                 {L"fraction", {0.25, 0.75}},         {L"density", {40.0}},
                 {L"activity", {0.5, 1.5}},           {L"fugacity", {5e4, 1.5e5}},
                 {L"fugacityCoefficient", {1.0, 1.0}}} {}

HRESULT CMaterial::QueryInterface(REFIID iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == reka::ICapeThermoMaterialObject::iid) {
        *object = static_cast<reka::ICapeThermoMaterialObject*>(this);
    } else if (iid == reka::ICapeThermoMaterial::iid) {
        *object = static_cast<reka::ICapeThermoMaterial*>(this);
    } else if (iid == reka::ICapeThermoPropertyRoutine::iid) {
        *object = static_cast<reka::ICapeThermoPropertyRoutine*>(this);
    }
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT CMaterial::get_ComponentIds(VARIANT* compIds) {
    VariantInit(compIds);
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    return VariantCopy(compIds, &StringArray({L"m1", L"Second"}).Get());
}

HRESULT CMaterial::GetComponentConstant(VARIANT, VARIANT compIds, VARIANT* propVals) {
    VariantInit(propVals);
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    const std::vector<std::wstring> asked = StringsOf(compIds);
    if (asked.size() != 1 || asked[0] != L"m1") return E_FAIL;
    SAFEARRAYBOUND bound = {1, 0};
    propVals->parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
    propVals->vt = VT_ARRAY | VT_VARIANT;
    LONG index = 0;
    return SafeArrayPutElement(propVals->parray, &index, &CValue(firstCas).Get());
}

HRESULT CMaterial::CalcProp(VARIANT, VARIANT, BSTR) {
    return calls.Next();
}

HRESULT CMaterial::CalcSinglePhaseProp(VARIANT, BSTR) {
    return calls.Next();
}

HRESULT CMaterial::GetProp(BSTR property, BSTR, VARIANT, BSTR, BSTR, VARIANT* results) {
    VariantInit(results);
    return Answer(property, results);
}

HRESULT CMaterial::GetSinglePhaseProp(BSTR property, BSTR, BSTR, VARIANT* results) {
    VariantClear(results);
    return Answer(property, results);
}

HRESULT CMaterial::Answer(BSTR property, VARIANT* results) {
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    const auto found = properties.find(TextOf(property));
    if (found == properties.end()) return E_FAIL;
    return VariantCopy(results, &NumberArray(found->second).Get());
}

HRESULT CReactionObject::QueryInterface(REFIID wanted, void** object) {
    const bool isKnown =
        wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == reka::ICapeReactionProperties::iid;
    *object = isKnown ? this : nullptr;
    if (!isKnown) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT CReactionObject::SetReactionProp(BSTR property, BSTR, VARIANT reacIds, BSTR, VARIANT propVals) {
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    const std::vector<std::wstring> reactions = StringsOf(reacIds);
    const std::vector<double> numbers = NumbersOf(propVals);
    if (reactions.size() != 1 || numbers.size() != 1) return E_INVALIDARG;
    values[TextOf(property) + L" " + reactions[0]] = numbers[0];
    return S_OK;
}

HRESULT CBag::QueryInterface(REFIID iid, void** object) {
    *object = iid == IID_IUnknown || iid == IID_IPropertyBag ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT CBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    const auto found = members.find(name);
    if (found == members.end()) return E_INVALIDARG;
    return VariantCopy(value, &found->second.Get());
}

HRESULT CBag::Write(LPCOLESTR name, VARIANT* value) {
    const HRESULT result = calls.Next();
    if (FAILED(result)) return result;
    members.insert_or_assign(name, Copy(*value));
    return S_OK;
}

void FillBag(CBag& bag, std::wstring_view rate, std::wstring_view heat, std::wstring_view thermoVersion) {
    auto& members = bag.members;
    members.clear();
    const auto put = [&](const wchar_t* key, CValue value) { members.emplace(key, std::move(value)); };
    put(L"Name", CValue(L"Made by a host"));
    put(L"Description", CValue(L""));
    put(L"compoundId", StringArray({L"First", L"Second"}));
    put(L"compoundName", StringArray({L"First", L"Second"}));
    put(L"compoundCAS", StringArray({firstCas, L""}));
    put(L"compoundFormula", StringArray({L"", L""}));
    put(L"compoundMolecularWeight", NumberArray({0, 0}));
    put(L"compoundCharge", NumberArray({0, 0}));
    put(L"reactionID", TextArray(L"R"));
    put(L"reactionPhase", TextArray(L"Vapor"));
    put(L"reactionType", TextArray(L"Kinetic"));
    put(L"reactionRateBasis", TextArray(L"Homogeneous"));
    put(L"reactionRateEquation", TextArray(rate));
    put(L"reactionEquilibriumBasis", TextArray(L"Activity"));
    put(L"reactionEquilibriumConstantEquation", TextArray(L"1"));
    put(L"reactionHeatEquation", TextArray(heat));
    put(L"stoichiometry[R]", NumberArray({-1, 1}));
    put(L"thermoVersion", CValue(thermoVersion));
}

CRef<reka::ICapeUtilities> MakePackage(std::wstring_view rate, std::wstring_view heat,
                                       std::wstring_view thermoVersion) {
    const auto manager = MakeManager<reka::ICapeThermoNewPropertyPackage>();
    CRef<IDispatch> made;
    if (!manager || FAILED(manager->NewPropertyPackage(made.Receive()))) return {};
    const auto persistence = made.As<IPersistPropertyBag>();
    CBag bag;
    FillBag(bag, rate, heat, thermoVersion);
    if (!persistence || FAILED(persistence->Load(&bag, nullptr))) return {};
    auto package = made.As<reka::ICapeUtilities>();
    if (!package || FAILED(package->Initialize())) return {};
    return package;
}

HRESULT Calculate(const CRef<reka::ICapeUtilities>& package) {
    const auto routine = package.As<reka::ICapeReactionsRoutine>();
    const CValue properties = StringArray({L"ReactionRate", L"EnthalpyOfReaction"});
    return routine->CalcReactionProp(properties.Get(), CText(L"Vapor").Get(), CValue().Get(), nullptr);
}

HRESULT Bind(const CRef<reka::ICapeUtilities>& package, CMaterial& material, CReactionObject& results) {
    IDispatch* resultsDispatch = results.Dispatch();
    const HRESULT result = package.As<reka::ICapeKineticReactionContext>()->SetReactionObject(&resultsDispatch);
    if (FAILED(result)) return result;
    return package.As<reka::ICapeThermoMaterialContext>()->SetMaterial(material.Dispatch());
}

}  // namespace host
