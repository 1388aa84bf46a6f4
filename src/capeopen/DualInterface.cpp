// SPDX-License-Identifier: MIT
// The system's dispatcher trusts its caller: a null where it wants a pointer ends the process. A script can bring one
// about, so everything that it would follow is looked at here first, down to the variable that a variable refers to.
// What is left is the platform's part.

#include "capeopen/DualInterface.h"

namespace reka {

namespace {

/// Whether the argument, or the variable that it refers to, is a reference to nothing.
bool RefersToNothing(const VARIANT& argument) {
    if (!(argument.vt & VT_BYREF)) return false;
    if (!argument.byref) return true;
    if (argument.vt != (VT_BYREF | VT_VARIANT)) return false;
    return (argument.pvarVal->vt & VT_BYREF) && !argument.pvarVal->byref;
}

}  // namespace

HRESULT CountTypes(UINT* count) {
    if (!count) return E_POINTER;
    *count = CountTypesOfInterface();
    return S_OK;
}

HRESULT GiveType(REFIID iid, UINT index, ITypeInfo** typeInfo) noexcept {
    if (!typeInfo) return E_POINTER;
    *typeInfo = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return FindTypeOfInterface(iid, typeInfo);
}

HRESULT FindMembers(REFIID iid, REFIID reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept {
    if (!names || !members) return E_POINTER;
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    for (UINT i = 0; i < count; ++i) {
        if (!names[i]) return E_POINTER;
    }
    if (count == 0) return S_OK;
    return FindMembersOfInterface(iid, names, count, members);
}

HRESULT CallMember(void* object, REFIID iid, DISPID member, REFIID reserved, WORD flags, DISPPARAMS* parameters,
                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument, const CLastFailure* failure,
                   AdaptArgument adapt) noexcept {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!parameters) return E_POINTER;
    if (parameters->cArgs > 0 && !parameters->rgvarg) return E_POINTER;
    if (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs) return E_POINTER;
    if (parameters->cNamedArgs > parameters->cArgs) return DISP_E_PARAMNOTFOUND;
    for (UINT i = 0; i < parameters->cArgs; ++i) {
        if (RefersToNothing(parameters->rgvarg[i])) return E_POINTER;
    }
    if (!failure || !exception) {
        return CallMemberOfInterface(object, iid, member, flags, parameters, result, exception, badArgument, adapt);
    }
    // The words are read after the call, which the host may use to give the object back.
    const CComRef<IUnknown> self(static_cast<IUnknown*>(object));
    const CLastFailure::Moment before = failure->Now();
    EXCEPINFO told = {};  // what the caller's holds is anything
    const HRESULT called =
        CallMemberOfInterface(object, iid, member, flags, parameters, result, &told, badArgument, adapt);
    if (called != DISP_E_EXCEPTION) return called;
    failure->Tell(before, told);
    *exception = told;
    return called;
}

}  // namespace reka
