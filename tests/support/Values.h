// SPDX-License-Identifier: MIT
// Variants and strings for tests, and a readable form of what a fake received.

#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "capeopen/CapeOpenInterfaces.h"
#include "platform/Holders.h"

namespace reka::test {

CVariant Strings(std::initializer_list<const char16_t*> texts);  // null gives a null element
CVariant Numbers(std::initializer_list<double> numbers, LONG lowerBound = 0);
CVariant Text(const char16_t* text);  // a single VT_BSTR
CVariant Variants(std::vector<CVariant> elements);
CVariant StringArray(const std::vector<std::u16string>& texts, LONG lowerBound);
/// A two-dimensional array of one element.
CVariant TwoDimensions(VARTYPE elementType);

/// Clears `destination` and makes it a deep copy of `source`. A null string stays null, which not every platform's copy
/// sees to.
HRESULT CopyVariant(VARIANT* destination, const VARIANT& source);

std::vector<double> NumbersIn(const VARIANT& variant);
/// A null element is shown as "<null>".
std::vector<std::string> StringsIn(const VARIANT& variant);

/// 'text', or null for an absent one.
std::string Show(const OLECHAR* text);
/// empty, ['a', 'b'], [1, 2.5] or the type number of anything else.
std::string Show(const VARIANT& variant);

/// What the error interfaces of an object say.
struct ReportedError {
    std::string name;
    std::string description;
    std::string scope;
    std::string interfaceName;
    bool operator==(const ReportedError&) const = default;
};
void PrintTo(const ReportedError& error, std::ostream* stream);
/// Absent texts come as "<null>".
ReportedError ErrorOf(IUnknown* object);

/// The interface of `object`, or null.
template <class Interface>
CComRef<Interface> Ask(IUnknown* object) {
    CComRef<Interface> asked;
    void* found = nullptr;
    if (object && SUCCEEDED(object->QueryInterface(InterfaceId<Interface>(), &found))) {
        asked.Reset(static_cast<Interface*>(found));
    }
    return asked;
}

}  // namespace reka::test
