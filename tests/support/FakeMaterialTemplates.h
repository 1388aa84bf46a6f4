// SPDX-License-Identifier: MIT
// A simulator that offers material templates, down to the compounds of the material that it makes of one. All its
// objects record their calls in one log, and all stand on the test's stack.

#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/FakeMaterial.h"

namespace reka::test {

/// A material that can be asked for its compounds by both thermo versions.
class CFakeCompoundMaterial : public CFakeMaterial, public CDualInterface<ICapeThermoCompounds> {
public:
    explicit CFakeCompoundMaterial(CallLog& shared)
        : CFakeMaterial(std::initializer_list<const char16_t*>{}), calls(shared) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
        if (wanted != ICapeThermoCompounds::iid) return CFakeMaterial::QueryInterface(wanted, object);
        *object = offersCompounds ? static_cast<ICapeThermoCompounds*>(this) : nullptr;
        if (!offersCompounds) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return calls.Counting(references).Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return calls.Counting(references).Remove(); }

    // Version 1.0
    HRESULT STDMETHODCALLTYPE get_ComponentIds(VARIANT* identifiers) override {
        VariantInit(identifiers);
        const bool fails = calls.Record("get_ComponentIds()");
        CopyVariant(identifiers, componentIds.Get());
        return fails ? calls.failCode : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetComponentConstant(VARIANT props, VARIANT identifiers, VARIANT* values) override {
        return GiveConstant("GetComponentConstant", props, identifiers, values);
    }

    // Version 1.1
    HRESULT STDMETHODCALLTYPE GetCompoundList(VARIANT* identifiers, VARIANT* formulae, VARIANT* labels,
                                              VARIANT* temperatures, VARIANT* weights, VARIANT* numbers) override {
        const bool fails = calls.Record("GetCompoundList()");
        CopyVariant(identifiers, ids.Get());
        CopyVariant(formulae, formulas.Get());
        CopyVariant(labels, names.Get());
        CopyVariant(temperatures, boilingTemperatures.Get());
        CopyVariant(weights, molecularWeights.Get());
        CopyVariant(numbers, casNumbers.Get());
        return fails ? calls.failCode : listResult;
    }
    HRESULT STDMETHODCALLTYPE GetCompoundConstant(VARIANT props, VARIANT identifiers, VARIANT* values) override {
        return GiveConstant("GetCompoundConstant", props, identifiers, values);
    }
    HRESULT STDMETHODCALLTYPE GetConstPropList(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNumCompounds(LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPDependentProperty(VARIANT, double, VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPDependentPropList(VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTDependentProperty(VARIANT, double, VARIANT, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTDependentPropList(VARIANT*) override { return E_NOTIMPL; }

    CallLog& calls;
    // The answer of `GetCompoundList`.
    CVariant ids;
    CVariant formulas;
    CVariant names;
    CVariant boilingTemperatures;
    CVariant molecularWeights;
    CVariant casNumbers;
    HRESULT listResult = S_OK;
    // What is answered to a question for a constant, by "charge of Na+". Without an answer the call fails.
    std::map<std::string, CVariant> constants;
    HRESULT constantResult = S_OK;
    bool offersCompounds = true;

private:
    /// A call that fails gives its value all the same: nobody may look at it.
    HRESULT GiveConstant(const char* operation, const VARIANT& props, const VARIANT& identifiers, VARIANT* values) {
        VariantInit(values);
        const bool fails = calls.Record(std::string(operation) + "(" + Show(props) + ", " + Show(identifiers) + ")");
        const std::string property = StringsIn(props).empty() ? "" : StringsIn(props)[0];
        const std::string compound = StringsIn(identifiers).empty() ? "" : StringsIn(identifiers)[0];
        const auto constant = constants.find(property + " of " + compound);
        if (constant == constants.end()) return E_FAIL;
        CopyVariant(values, constant->second.Get());
        return fails ? calls.failCode : constantResult;
    }
};

/// A template that makes `material` its material object; null: it succeeds without one.
class CFakeMaterialTemplate : public CDualInterface<ICapeThermoMaterialTemplate> {
public:
    explicit CFakeMaterialTemplate(CallLog& shared) : calls(shared) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
        const bool isOffered = wanted == IID_IUnknown || wanted == IID_IDispatch ||
                               (wanted == ICapeThermoMaterialTemplate::iid && offersTemplate);
        *object = isOffered ? this : nullptr;
        if (!isOffered) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return calls.Counting(references).Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return calls.Counting(references).Remove(); }
    HRESULT STDMETHODCALLTYPE CreateMaterialObject(IDispatch** object) override {
        *object = nullptr;
        if (calls.Record("CreateMaterialObject()")) return calls.failCode;
        *object = CComRef<IDispatch>(material).Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetProp(BSTR, VARIANT) override { return E_NOTIMPL; }

    CReferences references;
    CallLog& calls;
    IDispatch* material = nullptr;
    bool offersTemplate = true;
};

/// The simulation context that lists the templates, and makes `made` of any; null: it succeeds without one.
class CFakeTemplateSystem : public CDualInterface<ICapeMaterialTemplateSystem> {
public:
    explicit CFakeTemplateSystem(CallLog& shared) : calls(shared) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
        const bool isOffered = wanted == IID_IUnknown || wanted == IID_IDispatch ||
                               (wanted == ICapeMaterialTemplateSystem::iid && offersSystem);
        *object = isOffered ? this : nullptr;
        if (!isOffered) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return calls.Counting(references).Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return calls.Counting(references).Remove(); }
    HRESULT STDMETHODCALLTYPE get_MaterialTemplates(VARIANT* list) override {
        VariantInit(list);
        const bool fails = calls.Record("get_MaterialTemplates()");
        CopyVariant(list, templateNames.Get());
        return fails ? calls.failCode : S_OK;
    }
    HRESULT STDMETHODCALLTYPE CreateMaterialTemplate(BSTR name, IDispatch** object) override {
        *object = nullptr;
        if (calls.Record("CreateMaterialTemplate(" + Show(name) + ")")) return calls.failCode;
        *object = CComRef<IDispatch>(made).Detach();
        return S_OK;
    }

    CReferences references;
    CallLog& calls;
    CVariant templateNames;
    IDispatch* made = nullptr;
    bool offersSystem = true;
};

/// The whole simulator: templates "Amines" and "Salts", of which each makes the one material. It has water, a sodium
/// ion, and an iron of which nothing else is known, and tells the same by both thermo versions, but by version 1.1 the
/// names are of its own choice.
struct FakeTemplateSimulator {
    FakeTemplateSimulator() {
        context.templateNames = Strings({u"Amines", u"Salts"});
        context.made = &materialTemplate;
        materialTemplate.material = material.Dispatch();
        material.ids = Strings({u"H2O", u"Na+", u"Fe"});
        material.formulas = Strings({u"H2O", u"Na", nullptr});
        material.names = Strings({u"Water", u"Sodium ion", nullptr});
        material.boilingTemperatures = Numbers({373.15, 0.0, 3134.0});
        material.molecularWeights = Numbers({18.015, 22.99, unknownNumber});
        material.casNumbers = Strings({u"7732-18-5", u"17341-25-2", nullptr});
        material.componentIds = Strings({u"H2O", u"Na+", u"Fe"});
        SetConstant("iupacName of H2O", Text(u"oxidane"));
        SetConstant("chemicalFormula of H2O", Text(u"H2O"));
        SetConstant("casRegistryNumber of H2O", Text(u"7732-18-5"));
        SetConstant("molecularWeight of H2O", Number(18.015));
        SetConstant("charge of H2O", Number(0.0));
        SetConstant("chemicalFormula of Na+", Text(u"Na"));
        SetConstant("molecularWeight of Na+", Number(22.99));
        SetConstant("charge of Na+", Number(1.0));
    }

    static constexpr double unknownNumber = -1.7976931348623157e308;  // as a simulator may say that there is none

    static CVariant Number(double number) {
        CVariant value;
        value.Get().vt = VT_R8;
        value.Get().dblVal = number;
        return value;
    }
    /// As a list of one.
    void SetConstant(const std::string& what, CVariant value) {
        std::vector<CVariant> elements;
        elements.push_back(std::move(value));
        material.constants[what] = Variants(std::move(elements));
    }
    IDispatch* Context() { return &context; }
    int Held() const {
        return context.references.Held() + materialTemplate.references.Held() + material.references.Held();
    }

    CallLog log;
    CFakeTemplateSystem context{log};
    CFakeMaterialTemplate materialTemplate{log};
    CFakeCompoundMaterial material{log};
};

}  // namespace reka::test
