// SPDX-License-Identifier: MIT
// What comes from the simulator is checked before it is used: arrays by their type, bounds and length, elements by
// their type. Each call out runs under the simulator's floating point settings, and what it gave is held by something
// that is given back under them too. The versions differ in more than names: 1.1 tells of all compounds at once, and
// one bad list spoils the answer; 1.0 is asked for one constant after the other, and any of them may be missing.

#include "compounds/MaterialCompounds.h"

#include <cmath>
#include <limits>
#include <new>
#include <string_view>

#include "capeopen/ArrayHelpers.h"
#include "capeopen/CapeOpenInterfaces.h"

namespace reka {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
constexpr const char16_t* noCompoundList = u"Failed to get list of compound IDs from material object";

/// The interface of `object`, which may be null; null if it hasn't got it.
template <class Interface>
CAskedInterface<Interface> AskFor(IUnknown* object, const COwnArithmetic& arithmetic) {
    void* found = nullptr;
    if (object &&
        FAILED(arithmetic.Outside([&] { return object->QueryInterface(InterfaceId<Interface>(), &found); }))) {
        found = nullptr;
    }
    return {static_cast<Interface*>(found), arithmetic};
}

/// A list of one string, for the lists that the simulator takes: one compound, or one property.
class COneString {
public:
    COneString() {
        if (!CreateArrayVariant(array.Get(), 1, VT_BSTR)) throw std::bad_alloc();
    }
    void Set(std::u16string_view text) {
        if (FAILED(PutString(*array.Get().parray, 0, text))) throw std::bad_alloc();
    }
    const VARIANT& Get() const { return array.Get(); }

private:
    CVariant array;
};

/// A text of a list that has been checked.
std::u16string TextAt(const VARIANT& strings, LONG index) {
    CBstr text;
    if (!TakeString(strings, index, text)) throw std::bad_alloc();
    return std::u16string(text.View());
}

/// The constant that an answer holds, which is a list of one variant of type `type`. False for any other answer.
bool TakeConstant(const VARIANT& answer, VARTYPE type, CAnswer& constant) {
    std::u16string reason;  // shown nowhere
    LONG index = 0;
    return CheckArrayVariant(answer, VT_VARIANT, reason) == 1 &&
           SUCCEEDED(SafeArrayGetElement(answer.parray, &index, &constant.Get())) && constant.Get().vt == type;
}

// Version 1.1

/// What a material of version 1.1 tells of its compounds at once.
struct CompoundListAnswer {
    explicit CompoundListAnswer(const COwnArithmetic& arithmetic)
        : ids(arithmetic),
          formulas(arithmetic),
          names(arithmetic),
          molecularWeights(arithmetic),
          casNumbers(arithmetic) {}

    CAnswer ids;
    CAnswer formulas;
    CAnswer names;
    CAnswer molecularWeights;
    CAnswer casNumbers;
};

bool RequestCompoundList(ICapeThermoCompounds& material, CompoundListAnswer& answer, const COwnArithmetic& arithmetic) {
    CAnswer boilingTemperatures(arithmetic);  // of no use here
    return SUCCEEDED(arithmetic.Outside([&] {
        return material.GetCompoundList(&answer.ids.Get(), &answer.formulas.Get(), &answer.names.Get(),
                                        &boilingTemperatures.Get(), &answer.molecularWeights.Get(),
                                        &answer.casNumbers.Get());
    }));
}

/// The number of elements of a list, or -1 with the reason.
std::int32_t CountElements(const VARIANT& list, VARTYPE elementType, std::u16string_view what,
                           std::u16string& errorText) {
    std::u16string reason;
    const std::int32_t count = CheckArrayVariant(list, elementType, reason);
    if (count < 0) {
        errorText = u"Invalid format for " + std::u16string(what) + u" from material object: " + reason;
    }
    return count;
}

bool CheckList(const VARIANT& list, VARTYPE elementType, std::u16string_view what, std::int32_t expectedCount,
               std::u16string& errorText) {
    const std::int32_t count = CountElements(list, elementType, what, errorText);
    if (count < 0 || count == expectedCount) return count == expectedCount;
    errorText = u"Number of " + std::u16string(what) +
                u" does not match number of compounds in GetCompoundList from material object";
    return false;
}

/// The number of compounds, or -1 with the reason. A complaint about the identifiers speaks of names.
std::int32_t CheckCompoundList(const CompoundListAnswer& answer, std::u16string& errorText) {
    const std::int32_t count = CountElements(answer.ids.Get(), VT_BSTR, u"compound names", errorText);
    if (count < 0 || !CheckList(answer.formulas.Get(), VT_BSTR, u"compound formulas", count, errorText) ||
        !CheckList(answer.names.Get(), VT_BSTR, u"compound names", count, errorText) ||
        !CheckList(answer.molecularWeights.Get(), VT_R8, u"molecular weights", count, errorText) ||
        !CheckList(answer.casNumbers.Get(), VT_BSTR, u"CAS numbers", count, errorText)) {
        return -1;
    }
    return count;
}

double RequestCharge(ICapeThermoCompounds& material, const COneString& property, const COneString& compound,
                     const COwnArithmetic& arithmetic) {
    CAnswer answer(arithmetic);
    CAnswer charge(arithmetic);
    if (FAILED(arithmetic.Outside(
            [&] { return material.GetCompoundConstant(property.Get(), compound.Get(), &answer.Get()); }))) {
        return missing;
    }
    return TakeConstant(answer.Get(), VT_R8, charge) ? charge.Get().dblVal : missing;
}

bool ReadByVersion11(IDispatch& material, MaterialCompounds& compounds, std::u16string& errorText,
                     const COwnArithmetic& arithmetic) {
    const auto object = AskFor<ICapeThermoCompounds>(&material, arithmetic);
    if (!object) {
        errorText = u"Failed to get ICapeThermoCompounds interface from material object";
        return false;
    }
    CompoundListAnswer answer(arithmetic);
    if (!RequestCompoundList(*object, answer, arithmetic)) {
        errorText = noCompoundList;
        return false;
    }
    const std::int32_t count = CheckCompoundList(answer, errorText);
    if (count < 0) return false;
    COneString property;
    COneString compound;
    property.Set(u"charge");
    for (LONG i = 0; i < count; ++i) {
        const std::u16string id = TextAt(answer.ids.Get(), i);
        const std::u16string name = TextAt(answer.names.Get(), i);
        compound.Set(id);
        compounds.ids.push_back(id);
        compounds.names.push_back(name.empty() ? id : name);
        compounds.formulas.push_back(TextAt(answer.formulas.Get(), i));
        compounds.casNumbers.push_back(TextAt(answer.casNumbers.Get(), i));
        double weight = missing;
        LONG index = i;
        if (FAILED(SafeArrayGetElement(answer.molecularWeights.Get().parray, &index, &weight))) weight = missing;
        compounds.molecularWeights.push_back(weight);
        compounds.charges.push_back(RequestCharge(*object, property, compound, arithmetic));
    }
    return true;
}

// Version 1.0

/// Asks for single constants of one compound after the other.
class CConstantReader {
public:
    CConstantReader(ICapeThermoMaterialObject& asked, const COwnArithmetic& ownArithmetic)
        : material(asked), arithmetic(ownArithmetic) {}

    void SetCompound(std::u16string_view id) { compound.Set(id); }

    std::u16string ReadText(std::u16string_view name, std::u16string_view otherwise) {
        CAnswer constant(arithmetic);
        const bool isRead = Read(name, VT_BSTR, constant);
        return isRead ? StringFromBstr(constant.Get().bstrVal) : std::u16string(otherwise);
    }
    double ReadNumber(std::u16string_view name) {
        CAnswer constant(arithmetic);
        return Read(name, VT_R8, constant) ? constant.Get().dblVal : missing;
    }

private:
    bool Read(std::u16string_view name, VARTYPE type, CAnswer& constant) {
        CAnswer answer(arithmetic);
        property.Set(name);
        const HRESULT result = arithmetic.Outside(
            [&] { return material.GetComponentConstant(property.Get(), compound.Get(), &answer.Get()); });
        return SUCCEEDED(result) && TakeConstant(answer.Get(), type, constant);
    }

    ICapeThermoMaterialObject& material;
    const COwnArithmetic& arithmetic;
    COneString property;
    COneString compound;
};

bool ReadByVersion10(IDispatch& material, MaterialCompounds& compounds, std::u16string& errorText,
                     const COwnArithmetic& arithmetic) {
    const auto object = AskFor<ICapeThermoMaterialObject>(&material, arithmetic);
    if (!object) {
        errorText = u"Failed to get ICapeThermoMaterialObject interface from material object";
        return false;
    }
    CAnswer ids(arithmetic);
    if (FAILED(arithmetic.Outside([&] { return object->get_ComponentIds(&ids.Get()); }))) {
        errorText = noCompoundList;
        return false;
    }
    const CBstr reason = ReadStringArray(compounds.ids, ids.Get());
    if (!reason.IsAbsent()) {
        errorText = u"Invalid list of compound IDs from material object: " + std::u16string(reason.View());
        return false;
    }
    CConstantReader constants(*object, arithmetic);
    for (const std::u16string& id : compounds.ids) {
        constants.SetCompound(id);
        compounds.names.push_back(constants.ReadText(u"iupacName", id));
        compounds.formulas.push_back(constants.ReadText(u"chemicalFormula", u""));
        compounds.casNumbers.push_back(constants.ReadText(u"casRegistryNumber", u""));
        compounds.molecularWeights.push_back(constants.ReadNumber(u"molecularWeight"));
        compounds.charges.push_back(constants.ReadNumber(u"charge"));
    }
    return true;
}

/// The template of that name. Null: `failure` tells why.
CAskedInterface<ICapeThermoMaterialTemplate> MakeTemplate(IDispatch* context, const std::u16string& templateName,
                                                          MaterialFailure& failure, const COwnArithmetic& arithmetic) {
    const auto templates = AskFor<ICapeMaterialTemplateSystem>(context, arithmetic);
    if (!templates) return {nullptr, arithmetic};
    const CBstr name = CBstr::Make(templateName);
    IDispatch* object = nullptr;
    if (FAILED(arithmetic.Outside([&] { return templates->CreateMaterialTemplate(name.Get(), &object); }))) {
        object = nullptr;
    }
    const CAskedInterface<IDispatch> made(object, arithmetic);
    if (!made) {
        failure.text = u"Failed to create selected material template";
        return {nullptr, arithmetic};
    }
    auto materialTemplate = AskFor<ICapeThermoMaterialTemplate>(made.Get(), arithmetic);
    if (!materialTemplate) {
        failure.text = u"Failed to obtain ICapeThermoMaterialTemplate interface from selected material template";
    }
    return materialTemplate;
}

}  // namespace

bool IsMissingNumber(double number) {
    return std::isnan(number) || number == std::numeric_limits<double>::lowest();
}

std::vector<std::u16string> ListMaterialTemplates(IDispatch* context, const COwnArithmetic& arithmetic) {
    std::vector<std::u16string> names;
    CAnswer answer(arithmetic);
    const auto templates = AskFor<ICapeMaterialTemplateSystem>(context, arithmetic);
    if (!templates || FAILED(arithmetic.Outside([&] { return templates->get_MaterialTemplates(&answer.Get()); }))) {
        return names;
    }
    if (!ReadStringArray(names, answer.Get()).IsAbsent()) names.clear();
    return names;
}

CAskedInterface<IDispatch> MakeTemplateMaterial(IDispatch* context, const std::u16string& templateName,
                                                MaterialFailure& failure, const COwnArithmetic& arithmetic) {
    failure = {};
    const auto made = MakeTemplate(context, templateName, failure, arithmetic);
    if (!made) return {nullptr, arithmetic};
    IDispatch* material = nullptr;
    if (FAILED(arithmetic.Outside([&] { return made->CreateMaterialObject(&material); }))) material = nullptr;
    if (!material) failure = {u"Failed to create material object from selected material template", false};
    return {material, arithmetic};
}

bool ReadMaterialCompounds(IDispatch& material, ThermoVersion version, MaterialCompounds& compounds,
                           std::u16string& errorText, const COwnArithmetic& arithmetic) {
    compounds = {};
    return version == ThermoVersion::Version10 ? ReadByVersion10(material, compounds, errorText, arithmetic)
                                               : ReadByVersion11(material, compounds, errorText, arithmetic);
}

}  // namespace reka
