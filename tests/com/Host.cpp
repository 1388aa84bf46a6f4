// SPDX-License-Identifier: MIT
// The host's side of a call, by the system's functions alone: nothing of the component's source is linked in here, so a
// fault of its helpers can't hide itself. The component is found by its name in the registry, as a simulator finds it.

#include "Host.h"

namespace host {

namespace {

template <class Read>
void ReadElements(const VARIANT& array, Read&& read) {
    LONG low = 0;
    LONG high = -1;
    if (!(array.vt & VT_ARRAY) || !array.parray) return;
    SafeArrayGetLBound(array.parray, 1, &low);
    SafeArrayGetUBound(array.parray, 1, &high);
    for (LONG i = low; i <= high; ++i) read(i);
}

}  // namespace

CValue StringArray(const std::vector<std::wstring>& texts, LONG lowerBound) {
    SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), lowerBound};
    CValue made;
    made.Get().vt = VT_ARRAY | VT_BSTR;
    made.Get().parray = SafeArrayCreate(VT_BSTR, 1, &bound);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        LONG index = lowerBound + static_cast<LONG>(i);
        const CText text(texts[i]);
        SafeArrayPutElement(made.Get().parray, &index, text.Get());
    }
    return made;
}

CValue NumberArray(const std::vector<double>& numbers) {
    SAFEARRAYBOUND bound = {static_cast<ULONG>(numbers.size()), 0};
    CValue made;
    made.Get().vt = VT_ARRAY | VT_R8;
    made.Get().parray = SafeArrayCreate(VT_R8, 1, &bound);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        LONG index = static_cast<LONG>(i);
        double number = numbers[i];
        SafeArrayPutElement(made.Get().parray, &index, &number);
    }
    return made;
}

std::vector<std::wstring> StringsOf(const VARIANT& array) {
    std::vector<std::wstring> texts;
    ReadElements(array, [&](LONG index) {
        CValue element;
        if (array.vt == (VT_ARRAY | VT_VARIANT)) {
            SafeArrayGetElement(array.parray, &index, &element.Get());
        } else if (SUCCEEDED(SafeArrayGetElement(array.parray, &index, &element.Get().bstrVal))) {
            element.Get().vt = VT_BSTR;
        }
        const bool isText = element.Get().vt == VT_BSTR && element.Get().bstrVal;
        texts.emplace_back(isText ? element.Get().bstrVal : L"");
    });
    return texts;
}

std::vector<double> NumbersOf(const VARIANT& array) {
    std::vector<double> numbers;
    ReadElements(array, [&](LONG index) {
        CValue element;
        if (array.vt == (VT_ARRAY | VT_VARIANT)) {
            SafeArrayGetElement(array.parray, &index, &element.Get());
        } else {
            SafeArrayGetElement(array.parray, &index, &element.Get().dblVal);
        }
        numbers.push_back(element.Get().dblVal);
    });
    return numbers;
}

HRESULT CreateManager(REFIID iid, void** manager, IUnknown* outer) {
    CLSID classId = {};
    const HRESULT result = CLSIDFromProgID(L"NAVO_REKA.ReactionPackManager", &classId);
    if (FAILED(result)) return result;
    return CoCreateInstance(classId, outer, CLSCTX_INPROC_SERVER, iid, manager);
}

CRef<reka::ICapeUtilities> ResolvePackage(std::wstring_view name) {
    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    CRef<IDispatch> package;
    if (!manager || FAILED(manager->ResolveReactionsPackage(CText(name).Get(), package.Receive()))) return {};
    auto utilities = package.As<reka::ICapeUtilities>();
    if (!utilities || FAILED(utilities->Initialize())) return {};
    return utilities;
}

std::wstring ModulePath() {
    wchar_t path[1024] = {};
    LONG size = sizeof path;
    RegQueryValueW(HKEY_CLASSES_ROOT, L"CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}\\InprocServer32", path, &size);
    return path;
}

}  // namespace host
