// See MaterialCompounds.h. What comes from the simulator is checked before it is used: arrays by their type, bounds and
// length, elements by their type.

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
CComRef<Interface> AskFor(IUnknown* object) {
    CComRef<Interface> asked;
    void* found = nullptr;
    if (object && SUCCEEDED(object->QueryInterface(InterfaceId<Interface>(), &found))) {
        asked.Reset(static_cast<Interface*>(found));
    }
    return asked;
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
bool TakeConstant(const VARIANT& answer, VARTYPE type, CVariant& constant) {
    std::u16string reason;  // shown nowhere
    LONG index = 0;
    return CheckArrayVariant(answer, VT_VARIANT, reason) == 1 &&
           SUCCEEDED(SafeArrayGetElement(answer.parray, &index, constant.Receive())) && constant.Get().vt == type;
}

// Version 1.1

/// What a material of version 1.1 tells of its compounds at once.
struct CompoundListAnswer {
    CVariant ids;
    CVariant formulas;
    CVariant names;
    CVariant molecularWeights;
    CVariant casNumbers;
};

bool RequestCompoundList(ICapeThermoCompounds& material, CompoundListAnswer& answer) {
    CVariant boilingTemperatures;  // of no use here
    return SUCCEEDED(material.GetCompoundList(&answer.ids.Get(), &answer.formulas.Get(), &answer.names.Get(),
                                              &boilingTemperatures.Get(), &answer.molecularWeights.Get(),
                                              &answer.casNumbers.Get()));
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

double RequestCharge(ICapeThermoCompounds& material, const COneString& property, const COneString& compound) {
    CVariant answer;
    CVariant charge;
    if (FAILED(material.GetCompoundConstant(property.Get(), compound.Get(), &answer.Get()))) return missing;
    return TakeConstant(answer.Get(), VT_R8, charge) ? charge.Get().dblVal : missing;
}

bool ReadByVersion11(IDispatch& material, MaterialCompounds& compounds, std::u16string& errorText) {
    const auto object = AskFor<ICapeThermoCompounds>(&material);
    if (!object) {
        errorText = u"Failed to get ICapeThermoCompounds interface from material object";
        return false;
    }
    CompoundListAnswer answer;
    if (!RequestCompoundList(*object, answer)) {
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
        compounds.charges.push_back(RequestCharge(*object, property, compound));
    }
    return true;
}

// Version 1.0

/// Asks for single constants of one compound after the other.
class CConstantReader {
public:
    explicit CConstantReader(ICapeThermoMaterialObject& asked) : material(asked) {}

    void SetCompound(std::u16string_view id) { compound.Set(id); }

    std::u16string ReadText(std::u16string_view name, std::u16string_view otherwise) {
        CVariant constant;
        const bool isRead = Read(name, VT_BSTR, constant);
        return isRead ? StringFromBstr(constant.Get().bstrVal) : std::u16string(otherwise);
    }
    double ReadNumber(std::u16string_view name) {
        CVariant constant;
        return Read(name, VT_R8, constant) ? constant.Get().dblVal : missing;
    }

private:
    bool Read(std::u16string_view name, VARTYPE type, CVariant& constant) {
        CVariant answer;
        property.Set(name);
        return SUCCEEDED(material.GetComponentConstant(property.Get(), compound.Get(), &answer.Get())) &&
               TakeConstant(answer.Get(), type, constant);
    }

    ICapeThermoMaterialObject& material;
    COneString property;
    COneString compound;
};

bool ReadByVersion10(IDispatch& material, MaterialCompounds& compounds, std::u16string& errorText) {
    const auto object = AskFor<ICapeThermoMaterialObject>(&material);
    if (!object) {
        errorText = u"Failed to get ICapeThermoMaterialObject interface from material object";
        return false;
    }
    CVariant ids;
    if (FAILED(object->get_ComponentIds(&ids.Get()))) {
        errorText = noCompoundList;
        return false;
    }
    const CBstr reason = ReadStringArray(compounds.ids, ids.Get());
    if (!reason.IsAbsent()) {
        errorText = u"Invalid list of compound IDs from material object: " + std::u16string(reason.View());
        return false;
    }
    CConstantReader constants(*object);
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

}  // namespace

bool IsMissingNumber(double number) {
    return std::isnan(number) || number == std::numeric_limits<double>::lowest();
}

std::vector<std::u16string> ListMaterialTemplates(IDispatch* context) {
    std::vector<std::u16string> names;
    CVariant answer;
    const auto templates = AskFor<ICapeMaterialTemplateSystem>(context);
    if (!templates || FAILED(templates->get_MaterialTemplates(&answer.Get()))) return names;
    if (!ReadStringArray(names, answer.Get()).IsAbsent()) names.clear();
    return names;
}

CComRef<IDispatch> MakeTemplateMaterial(IDispatch* context, const std::u16string& templateName,
                                        MaterialFailure& failure) {
    failure = {};
    CComRef<IDispatch> made;
    const auto templates = AskFor<ICapeMaterialTemplateSystem>(context);
    if (!templates) return {};
    const CBstr name = CBstr::Make(templateName);
    if (FAILED(templates->CreateMaterialTemplate(name.Get(), made.Receive())) || !made) {
        failure.text = u"Failed to create selected material template";
        return {};
    }
    const auto materialTemplate = AskFor<ICapeThermoMaterialTemplate>(made.Get());
    made.Reset();
    if (!materialTemplate) {
        failure.text = u"Failed to obtain ICapeThermoMaterialTemplate interface from selected material template";
        return {};
    }
    CComRef<IDispatch> material;
    if (FAILED(materialTemplate->CreateMaterialObject(material.Receive())) || !material) {
        failure = {u"Failed to create material object from selected material template", false};
        return {};
    }
    return material;
}

bool ReadMaterialCompounds(IDispatch& material, ThermoVersion version, MaterialCompounds& compounds,
                           std::u16string& errorText) {
    compounds = {};
    return version == ThermoVersion::Version10 ? ReadByVersion10(material, compounds, errorText)
                                               : ReadByVersion11(material, compounds, errorText);
}

}  // namespace reka
