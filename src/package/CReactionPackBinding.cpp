// SPDX-License-Identifier: MIT
// Binding a material: which compound of the material is each compound of the package? CAS numbers decide first and
// names second; a material in which that can't be told is refused.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "capeopen/ArrayHelpers.h"
#include "capeopen/ErrorTexts.h"
#include "package/CReactionPack.h"
#include "platform/TextIndex.h"

namespace reka {

namespace {

constexpr std::size_t none = CTextIndex::none;

/// What the material says of its compounds, by position. An entry can be absent.
struct MaterialIdentifiers {
    std::vector<CBstr> identifiers;
    std::vector<CBstr> casNumbers;
};

/// The CAS number of the compound whose identifier `compound` holds, absent if the material doesn't know it. False with
/// the reason in `errorText` for an answer that can't be understood.
bool ReadCasNumber(ICapeThermoMaterialObject& object, const VARIANT& property, const VARIANT& compound, BSTR identifier,
                   CBstr& casNumber, std::u16string& errorText) {
    CVariant answer;
    if (FAILED(object.GetComponentConstant(property, compound, answer.Receive()))) return true;
    std::u16string ignored;
    const std::int32_t count = CheckArrayVariant(answer.Get(), VT_VARIANT, ignored);
    if (count < 0) {
        errorText = u"invalid response for CAS number for compound " + std::u16string(TextOf(identifier)) +
                    u" from material; VARIANT array expected";
        return false;
    }
    if (count != 1) {
        errorText = u"unexpected number of CAS numbers for single compound; 1 value expected";
        return false;
    }
    // Looked at in place: the platform's copy of an element makes an empty string of a null one.
    void* elements = nullptr;
    if (FAILED(SafeArrayAccessData(answer.Get().parray, &elements))) {
        errorText = u"out of memory";
        return false;
    }
    const VARIANT element = *static_cast<const VARIANT*>(elements);
    SafeArrayUnaccessData(answer.Get().parray);
    if (element.vt != VT_BSTR) {
        errorText = u"unexpected data type for CAS number; expected VARIANT of type  BSTR";
        return false;
    }
    casNumber = CBstr::CopyOf(element.bstrVal);
    return true;
}

/// Asks the material for its compounds. False with the reason in `errorText`.
bool ReadMaterialIdentifiers(ICapeThermoMaterialObject& object, MaterialIdentifiers& compounds,
                             std::u16string& errorText) {
    CVariant list;
    const HRESULT result = object.get_ComponentIds(list.Receive());
    if (FAILED(result)) {
        errorText = u"failed to obtain list of compound IDs from material: " + GetCapeErrorText(&object, result);
        return false;
    }
    std::u16string ignored;
    const std::int32_t count = CheckArrayVariant(list.Get(), VT_BSTR, ignored);
    if (count < 1) {
        errorText = u"no compounds";  // a malformed list is told no differently from an empty one
        return false;
    }
    CVariant property;
    CVariant compound;
    const CBstr propertyName = CBstr::Make(u"CASRegistryNumber");
    if (!CreateArrayVariant(property.Get(), 1, VT_BSTR) || !CreateArrayVariant(compound.Get(), 1, VT_BSTR) ||
        FAILED(PutString(*property.Get().parray, 0, propertyName.Get()))) {
        errorText = u"out of memory";
        return false;
    }
    for (LONG i = 0; i < count; ++i) {
        CBstr& text = compounds.identifiers.emplace_back();
        if (!TakeString(list.Get(), i, text) || FAILED(PutString(*compound.Get().parray, 0, text.Get()))) {
            errorText = u"out of memory";
            return false;
        }
        const BSTR identifier = text.Get();
        CBstr casNumber;
        if (!ReadCasNumber(object, property.Get(), compound.Get(), identifier, casNumber, errorText)) return false;
        compounds.casNumbers.push_back(std::move(casNumber));
    }
    return true;
}

/// Works out the map from the package's compounds to the material's.
class CCompoundResolution {
public:
    CCompoundResolution(const ReactionPackDefinition& packageDefinition, MaterialIdentifiers& compounds,
                        std::vector<std::int32_t>& map)
        : definition(packageDefinition),
          materialCompounds(compounds),
          compoundMap(map),
          materialCompoundFree(compounds.identifiers.size(), 1),
          resolved(packageDefinition.compounds.size()) {
        casIndex.Make(compounds.casNumbers.size(), [&](std::size_t j) { return compounds.casNumbers[j].Get(); });
        nameIndex.Make(compounds.identifiers.size(), [&](std::size_t j) { return compounds.identifiers[j].Get(); });
    }

    /// By CAS number, then by name. False with the reason in `errorText` for an ambiguous material.
    bool Resolve(std::u16string& errorText) {
        for (std::size_t i = 0; i < resolved.size(); ++i) {
            if (!ResolveByCasNumber(i, errorText)) return false;
        }
        for (std::size_t i = 0; i < resolved.size(); ++i) {
            if (resolved[i].IsAbsent() && !ResolveByName(i, errorText)) return false;
        }
        return true;
    }

    /// The first compound without a counterpart, or `none`.
    std::size_t FirstUnresolved() const {
        for (std::size_t i = 0; i < resolved.size(); ++i) {
            if (resolved[i].IsAbsent()) return i;
        }
        return none;
    }

    /// The material's identifiers of the package's compounds.
    std::vector<CBstr>& Identifiers() { return resolved; }

private:
    bool ResolveByCasNumber(std::size_t compound, std::u16string& errorText) {
        const CBstr& casNumber = definition.compounds[compound]->casNumber;
        if (casNumber.IsAbsent()) return true;
        const std::size_t position = FirstFree(
            casIndex, casNumber.View(), [&](std::size_t j) { return !materialCompounds.casNumbers[j].IsAbsent(); });
        if (position == none) return true;
        const std::size_t other = casIndex.FindNext(position);  // an absent number is the same as an empty one
        if (other != none) {
            errorText = u"CAS number " + StringFromBstr(materialCompounds.casNumbers[other].Get()) + u" for compound " +
                        StringFromBstr(materialCompounds.identifiers[position].Get()) +
                        u" is present more than once; unable to determine which compound is which";
            return false;
        }
        Take(compound, position);
        return true;
    }

    bool ResolveByName(std::size_t compound, std::u16string& errorText) {
        const std::u16string_view name = definition.compounds[compound]->name.View();
        const std::size_t position = FirstFree(nameIndex, name, [](std::size_t) { return true; });
        if (position == none) return true;
        const std::size_t other = NextNameAfter(position);
        if (other != none) {
            errorText = u"compound ID " + StringFromBstr(materialCompounds.identifiers[other].Get()) +
                        u" is present more than once; unable to determine which compound is which";
            return false;
        }
        Take(compound, position);
        return true;
    }

    /// The first position of `text` that is free and `matches`.
    template <class Matches>
    std::size_t FirstFree(const CTextIndex& index, std::u16string_view text, Matches&& matches) const {
        std::size_t j = index.Find(text);
        while (j != none && !(materialCompoundFree[j] && matches(j))) j = index.FindNext(j);
        return j;
    }

    /// The next position of the same identifier, free or not. Those that are taken are absent from the list: to an
    /// empty one they are the same.
    std::size_t NextNameAfter(std::size_t position) const {
        std::size_t j = position;
        if (!materialCompounds.identifiers[position].View().empty()) {
            do {
                j = nameIndex.FindNext(j);
            } while (j != none && materialCompounds.identifiers[j].IsAbsent());
            return j;
        }
        ++j;
        while (j < materialCompoundFree.size() && !materialCompounds.identifiers[j].View().empty()) ++j;
        return j < materialCompoundFree.size() ? j : none;
    }

    void Take(std::size_t compound, std::size_t position) {
        resolved[compound] = std::move(materialCompounds.identifiers[position]);  // absent in the list from now on
        compoundMap[compound] = static_cast<std::int32_t>(position);
        materialCompoundFree[position] = 0;
    }

    const ReactionPackDefinition& definition;
    MaterialIdentifiers& materialCompounds;
    CTextIndex casIndex;   // as the lists are before any identifier is taken
    CTextIndex nameIndex;  // and whose texts stay, with their new owner
    std::vector<std::int32_t>& compoundMap;
    std::vector<std::int32_t> materialCompoundFree;
    std::vector<CBstr> resolved;  // a counterpart without an identifier is none
};

}  // namespace

HRESULT CReactionPack::SetMaterial(IDispatch* newMaterial) {
    constexpr const char16_t* scope = u"SetMaterial";
    constexpr const char16_t* interfaceName = u"ICapeThermoContext";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        const CComRef<IDispatch> bound(newMaterial);
        const std::uint32_t binding = ++bindings;
        materialCompoundCount = 0;
        material = bound;
        if (!bound) return S_OK;

        void* found = nullptr;
        if (FAILED(bound->QueryInterface(ICapeThermoMaterialObject::iid, &found)) || !found) return ECapeUnknownHR;
        CComRef<ICapeThermoMaterialObject> object;
        object.Reset(static_cast<ICapeThermoMaterialObject*>(found));

        MaterialIdentifiers compounds;
        std::u16string errorText;
        const auto report = [&] { return Fail(errorText, scope, interfaceName); };
        const bool read = ReadMaterialIdentifiers(*object, compounds, errorText);
        object.Reset();
        if (!read) return report();
        if (binding != bindings) return S_OK;  // the material called back and bound another one, which stays

        materialCompoundCount = static_cast<std::int32_t>(compounds.identifiers.size());
        auto map = compoundMap ? boost::make_local_shared<std::vector<std::int32_t>>(*compoundMap)
                               : boost::make_local_shared<std::vector<std::int32_t>>();
        map->resize(definition->compounds.size(), 0);
        compoundMap = map;
        CCompoundResolution resolution(*definition, compounds, *map);
        if (!resolution.Resolve(errorText)) return report();
        const std::size_t unresolved = resolution.FirstUnresolved();
        if (unresolved != none) {
            errorText =
                u"unable to resolve reaction compound " + StringFromBstr(definition->compounds[unresolved]->name.Get());
            ++bindings;
            material.Reset();
            return report();
        }
        // A calculation under way, from within which this was called, goes on with the identifiers that it knows.
        if (IsDefinitionInUse()) definition = CopyDefinition(*definition);
        for (std::size_t i = 0; i < definition->compounds.size(); ++i) {
            definition->compounds[i]->id = std::move(resolution.Identifiers()[i]);
        }
        return S_OK;
    });
}

HRESULT CReactionPack::UnsetMaterial() {
    const CComRef<ECapeRoot> self(this);
    ++bindings;
    material.Reset();
    return S_OK;
}

HRESULT CReactionPack::SetMaterial(IDispatch** materialRef) {
    if (!materialRef) return E_POINTER;
    if (*materialRef) return SetMaterial(*materialRef);
    return UnsetMaterial();
}

}  // namespace reka
