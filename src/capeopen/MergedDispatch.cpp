// SPDX-License-Identifier: MIT
// A name is looked for in one interface after the other, and what is found gets the place of its interface added to its
// identifier; a call takes the two apart again. So there is no table of all members to keep in step with the
// interfaces. Which of the client's variables a call has written is seen by comparing them with what they held before,
// so no description of the member is needed for that.

#include "capeopen/MergedDispatch.h"

#include <array>
#include <cstdint>

#include "capeopen/DualInterface.h"
#include "capeopen/ScriptArrays.h"

namespace reka {

namespace {

constexpr DISPID idsOfInterface = 0x10000;  // more than an interface has members

/// Finds the lists that a call has written into the client's variables.
class CWrittenLists {
public:
    explicit CWrittenLists(const DISPPARAMS* parameters) : arguments(parameters) {
        if (!arguments || !arguments->rgvarg || arguments->cArgs > before.size()) arguments = nullptr;
        for (UINT i = 0; arguments && i < arguments->cArgs; ++i) {
            if (const VARIANT* variable = VariableAt(i)) before[i] = {variable->vt, variable->parray};
        }
    }

    void MakeReadable() {
        for (UINT i = 0; arguments && i < arguments->cArgs; ++i) {
            VARIANT* const variable = VariableAt(i);
            if (!variable || (variable->vt == before[i].type && variable->parray == before[i].array)) continue;
            MakeReadableForScripts(*variable);
        }
    }

private:
    struct Content {
        VARTYPE type = VT_EMPTY;
        const SAFEARRAY* array = nullptr;
    };

    VARIANT* VariableAt(UINT index) const {
        const VARIANT& argument = arguments->rgvarg[index];
        return argument.vt == (VT_BYREF | VT_VARIANT) ? argument.pvarVal : nullptr;
    }

    const DISPPARAMS* arguments;
    std::array<Content, 16> before;  // more than a member has arguments
};

}  // namespace

HRESULT CMergedDispatch::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT CMergedDispatch::GetTypeInfo(UINT, LCID, ITypeInfo** typeInfo) {
    if (!typeInfo) return E_POINTER;
    *typeInfo = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT CMergedDispatch::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* members) {
    HRESULT result = FindMembers(IID_NULL, reserved, names, 0, members);
    if (FAILED(result) || count == 0) return result;
    DISPID place = 0;
    for (const IID& iid : LateBoundInterfaces()) {
        ++place;
        members[0] = DISPID_UNKNOWN;
        // The names after the first are those of its arguments, which are numbered alike everywhere.
        result = FindMembers(iid, reserved, names, count, members);
        const bool isMember = members[0] >= 0 && members[0] < idsOfInterface;
        if (result == DISP_E_UNKNOWNNAME && !(count > 1 && isMember)) continue;
        if (SUCCEEDED(result) && !isMember) continue;  // one of the operations of `IDispatch` itself
        if (isMember) members[0] += place * idsOfInterface;
        return result;
    }
    for (UINT i = 0; i < count; ++i) members[i] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

HRESULT CMergedDispatch::Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const std::span<const IID> interfaces = LateBoundInterfaces();
    if (member < idsOfInterface) return DISP_E_MEMBERNOTFOUND;
    const auto place = static_cast<std::size_t>(member / idsOfInterface);
    if (place > interfaces.size()) return DISP_E_MEMBERNOTFOUND;
    const IID& iid = interfaces[place - 1];
    CWrittenLists lists(parameters);
    const HRESULT called = CallMember(FindInterface(iid), iid, member % idsOfInterface, reserved, flags, parameters,
                                      result, exception, badArgument, Failures(), MakeReadableForMembers);
    if (FAILED(called)) return called;
    lists.MakeReadable();
    if (result) MakeReadableForScripts(*result);
    return called;
}

}  // namespace reka
