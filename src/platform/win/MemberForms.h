// SPDX-License-Identifier: MIT
// What the members of an interface take, as far as late-bound calls have to know it.

#pragma once

#include <vector>

#include <windows.h>

#include <oaidl.h>

namespace reka {

struct ParameterForm {
    enum Kind { Value, Reference, Other } kind = Other;  // a variant, a number or an object by reference, anything else
    VARTYPE referred = VT_EMPTY;                         // what a reference refers to
    bool isOutput = false;
};

struct MemberForm {
    DISPID member = DISPID_UNKNOWN;
    WORD kinds = 0;  // as in the flags of a call: method, reading, putting
    std::vector<ParameterForm> parameters;
};

/// The members that the type describes, in its order. May throw std::bad_alloc.
std::vector<MemberForm> ReadMemberForms(ITypeInfo& typeInfo);

/// The member that such a call is for; null if there is none.
const MemberForm* FindMember(const std::vector<MemberForm>& members, DISPID member, WORD flags);

}  // namespace reka
