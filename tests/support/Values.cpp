// SPDX-License-Identifier: MIT
// Arrays are made by the platform's own operations, as a test also needs shapes that the component never makes: another
// lower bound, two dimensions, null elements. Numbers are shown with as many digits as tell them apart, so that
// recorded calls compare exactly.

#include "support/Values.h"

#include <charconv>
#include <ostream>

#include "capeopen/ArrayHelpers.h"
#include "text/Utf8.h"

namespace reka::test {

namespace {

CVariant ArrayOf(VARTYPE elementType, std::size_t count, LONG lowerBound) {
    CVariant made;
    SAFEARRAYBOUND bound = {static_cast<ULONG>(count), lowerBound};
    made.Get().parray = SafeArrayCreate(elementType, 1, &bound);
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    return made;
}

std::string Shortest(double number) {
    char digits[40];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

LONG CountOf(const VARIANT& variant) {
    LONG lower = 0;
    LONG upper = -1;
    SafeArrayGetLBound(variant.parray, 1, &lower);
    SafeArrayGetUBound(variant.parray, 1, &upper);
    return upper - lower + 1;
}

template <class Interface>
std::string AskText(IUnknown* object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(BSTR*)) {
    const CComRef<Interface> asked = Ask<Interface>(object);
    if (!asked) return "<not offered>";
    CBstr text;
    if (FAILED((asked.Get()->*getter)(text.Receive()))) return "<failed>";
    return text.IsAbsent() ? "<null>" : Utf8FromUtf16(text.View());
}

}  // namespace

CVariant Strings(std::initializer_list<const char16_t*> texts) {
    CVariant made = ArrayOf(VT_BSTR, texts.size(), 0);
    LONG index = 0;
    for (const char16_t* text : texts) {
        const CBstr string = text ? CBstr::Make(text) : CBstr();
        PutString(*made.Get().parray, index++, string.Get());
    }
    return made;
}

CVariant StringArray(const std::vector<std::u16string>& texts, LONG lowerBound) {
    CVariant made = ArrayOf(VT_BSTR, texts.size(), lowerBound);
    for (const std::u16string& text : texts) PutString(*made.Get().parray, lowerBound++, CBstr::Make(text).Get());
    return made;
}

CVariant Numbers(std::initializer_list<double> numbers, LONG lowerBound) {
    CVariant made = ArrayOf(VT_R8, numbers.size(), lowerBound);
    for (const double number : numbers) PutNumber(*made.Get().parray, lowerBound++, number);
    return made;
}

CVariant Text(const char16_t* text) {
    CVariant made;
    made.Get().vt = VT_BSTR;
    made.Get().bstrVal = text ? CBstr::Make(text).Detach() : nullptr;
    return made;
}

CVariant Variants(std::vector<CVariant> elements) {
    CVariant made = ArrayOf(VT_VARIANT, elements.size(), 0);
    LONG index = 0;
    for (CVariant& element : elements) SafeArrayPutElement(made.Get().parray, &index, &element.Get()), ++index;
    return made;
}

CVariant TwoDimensions(VARTYPE elementType) {
    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    CVariant made;
    made.Get().parray = SafeArrayCreate(elementType, 2, bounds);
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    return made;
}

HRESULT CopyVariant(VARIANT* destination, const VARIANT& source) {
    if (source.vt != VT_BSTR || source.bstrVal) return VariantCopy(destination, const_cast<VARIANT*>(&source));
    VariantClear(destination);
    *destination = source;
    return S_OK;
}

std::vector<double> NumbersIn(const VARIANT& variant) {
    std::vector<double> numbers;
    if (variant.vt != (VT_ARRAY | VT_R8)) return numbers;
    LONG lower = 0;
    SafeArrayGetLBound(variant.parray, 1, &lower);
    for (LONG i = 0; i < CountOf(variant); ++i) {
        LONG index = lower + i;
        double number = 0.0;
        SafeArrayGetElement(variant.parray, &index, &number);
        numbers.push_back(number);
    }
    return numbers;
}

std::vector<std::string> StringsIn(const VARIANT& variant) {
    std::vector<std::string> strings;
    if (variant.vt != (VT_ARRAY | VT_BSTR)) return strings;
    LONG lower = 0;
    SafeArrayGetLBound(variant.parray, 1, &lower);
    for (LONG i = 0; i < CountOf(variant); ++i) {
        CBstr text;
        TakeString(variant, lower + i, text);
        strings.push_back(text.IsAbsent() ? "<null>" : Utf8FromUtf16(text.View()));
    }
    return strings;
}

std::string Show(const OLECHAR* text) {
    return text ? "'" + Utf8FromUtf16(TextOf(text)) + "'" : "null";
}

std::string Show(const VARIANT& variant) {
    if (variant.vt == VT_EMPTY) return "empty";
    if (variant.vt == VT_BSTR) return Show(variant.bstrVal);
    std::string shown;
    if (variant.vt == (VT_ARRAY | VT_BSTR)) {
        for (const std::string& text : StringsIn(variant)) {
            shown += (shown.empty() ? "" : ", ") + (text == "<null>" ? "null" : "'" + text + "'");
        }
        return "[" + shown + "]";
    }
    if (variant.vt == (VT_ARRAY | VT_R8)) {
        for (const double number : NumbersIn(variant)) shown += (shown.empty() ? "" : ", ") + Shortest(number);
        return "[" + shown + "]";
    }
    return "type " + std::to_string(variant.vt);
}

void PrintTo(const ReportedError& error, std::ostream* stream) {
    *stream << "{name: " << error.name << "; description: " << error.description << "; scope: " << error.scope
            << "; interface: " << error.interfaceName << "}";
}

ReportedError ErrorOf(IUnknown* object) {
    return {AskText<ECapeRoot>(object, &ECapeRoot::get_name), AskText<ECapeUser>(object, &ECapeUser::get_description),
            AskText<ECapeUser>(object, &ECapeUser::get_scope),
            AskText<ECapeUser>(object, &ECapeUser::get_interfaceName)};
}

}  // namespace reka::test
