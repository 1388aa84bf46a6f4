// SPDX-License-Identifier: MIT
// The type of an entry follows from its member: a list of numbers is one of doubles, any other of strings. An empty
// list could be either, and the bag has an empty value for it, which packages take for both. Nothing here knows the
// names of the entries, so whatever entries a package has go in and out alike.

#include "packagetext/BagMembers.h"

#include <algorithm>

#include "packagetext/VariantArrays.h"
#include "text/Utf8.h"

namespace packagetext {

namespace {

NullableText TextOfJson(const Json& value) {
    if (value.is_null()) return {};
    return reka::Utf16FromUtf8(value.get_ref<const std::string&>());
}

bool IsTextOrNull(const Json& value) {
    return value.is_string() || value.is_null();
}

bool IsNumber(const Json& value) {
    return value.is_number();
}

/// False for a value that has no place in a bag.
bool VariantFromJson(const Json& value, reka::CVariant& variant) {
    if (value.is_string()) {
        variant = VariantFromText(TextOfJson(value));
        return true;
    }
    if (!value.is_array()) return false;
    if (std::all_of(value.begin(), value.end(), IsTextOrNull)) {
        std::vector<NullableText> texts;
        for (const Json& item : value) texts.push_back(TextOfJson(item));
        variant = VariantFromTexts(texts);
        return true;
    }
    if (!std::all_of(value.begin(), value.end(), IsNumber)) return false;
    variant = VariantFromNumbers(value.get<std::vector<double>>());
    return true;
}

Json JsonFromText(const NullableText& text) {
    return text ? Json(reka::Utf8FromUtf16(*text)) : Json();
}

Json JsonFromVariant(const VARIANT& variant) {
    if (variant.vt == VT_EMPTY) return Json::array();
    if (variant.vt == VT_BSTR) {
        return variant.bstrVal ? JsonFromText(std::u16string(reka::TextOf(variant.bstrVal))) : Json();
    }
    std::vector<NullableText> texts;
    std::vector<double> numbers;
    if (ReadNumbers(variant, numbers)) return Json(numbers);
    Json list = Json::array();
    if (!ReadNullableTexts(variant, texts)) return Json();
    for (const NullableText& text : texts) list.push_back(JsonFromText(text));
    return list;
}

}  // namespace

bool FillBag(const Json& package, CPropertyBag& bag, std::string& errorText) {
    for (const auto& member : package.items()) {
        if (member.key() == commentMember) continue;
        reka::CVariant variant;
        if (!VariantFromJson(member.value(), variant)) {
            errorText =
                "package." + member.key() + ": a text, a list of texts or null, or a list of numbers is expected";
            return false;
        }
        bag.Put(reka::Utf16FromUtf8(member.key()), std::move(variant));
    }
    return true;
}

Json MembersFromBag(const CPropertyBag& bag) {
    Json members = Json::object();
    for (const CPropertyBag::Entry& entry : bag.Entries()) {
        members[reka::Utf8FromUtf16(entry.key)] = JsonFromVariant(entry.value.Get());
    }
    return members;
}

}  // namespace packagetext
