// SPDX-License-Identifier: MIT
// Arguments are given in the order of a declaration and turned round here, since a call by identifier takes them from
// the last to the first. The texts of an exception are freed, as a late-bound caller has to.

#include "LateCalls.h"

#include <algorithm>

namespace host {

HRESULT FindMember(IDispatch* object, const wchar_t* name, DISPID& member) {
    std::wstring copy = name;
    LPOLESTR names[] = {copy.data()};
    member = DISPID_UNKNOWN;
    return object->GetIDsOfNames(IID_NULL, names, 1, 0, &member);
}

CallResult CallId(IDispatch* object, DISPID member, WORD flags, std::vector<VARIANT> arguments,
                  std::vector<DISPID> names) {
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                             static_cast<UINT>(names.size())};
    CallResult result;
    EXCEPINFO exception = {};
    result.code =
        object->Invoke(member, IID_NULL, 0, flags, &parameters, &result.value.Get(), &exception, &result.badArgument);
    result.failure = exception.scode;
    if (exception.bstrSource) result.source = exception.bstrSource;
    if (exception.bstrDescription) result.description = exception.bstrDescription;
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return result;
}

CallResult Call(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> arguments,
                std::vector<DISPID> names) {
    DISPID member = 0;
    const HRESULT found = FindMember(object, name, member);
    if (SUCCEEDED(found)) return CallId(object, member, flags, std::move(arguments), std::move(names));
    CallResult result;
    result.code = found;
    return result;
}

VARIANT Reference(CValue& variable) {
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &variable.Get();
    return reference;
}

std::wstring TextOf(const CallResult& result) {
    return result.value.Get().vt == VT_BSTR && result.value.Get().bstrVal ? result.value.Get().bstrVal : L"";
}

}  // namespace host
