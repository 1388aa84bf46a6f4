// SPDX-License-Identifier: MIT
// The system makes a new copy of a member's description each time that it is asked for one, which takes longer than the
// call that it is wanted for. So all of an interface are read once.

#include "platform/win/MemberForms.h"

#include <algorithm>

namespace reka {

namespace {

/// A member's description, given back at the end; empty behind the last one.
class CDescription {
public:
    CDescription(ITypeInfo& type, UINT index) : typeInfo(type) {
        if (FAILED(typeInfo.GetFuncDesc(index, &description))) description = nullptr;
    }
    ~CDescription() {
        if (description) typeInfo.ReleaseFuncDesc(description);
    }
    CDescription(const CDescription&) = delete;
    CDescription& operator=(const CDescription&) = delete;
    explicit operator bool() const { return description != nullptr; }
    const FUNCDESC* operator->() const { return description; }

private:
    ITypeInfo& typeInfo;
    FUNCDESC* description = nullptr;
};

ParameterForm FormOf(const ELEMDESC& parameter) {
    const USHORT direction = parameter.paramdesc.wParamFlags;
    ParameterForm form;
    form.isOutput = direction & PARAMFLAG_FOUT;
    if (direction & PARAMFLAG_FRETVAL) return form;  // no argument of a late-bound call
    if (parameter.tdesc.vt == VT_VARIANT) form.kind = ParameterForm::Value;
    if (parameter.tdesc.vt != VT_PTR) return form;
    const VARTYPE type = parameter.tdesc.lptdesc->vt;
    if (type != VT_I4 && type != VT_R8 && type != VT_DISPATCH) return form;
    form.kind = ParameterForm::Reference;
    form.referred = type;
    return form;
}

}  // namespace

std::vector<MemberForm> ReadMemberForms(ITypeInfo& typeInfo) {
    std::vector<MemberForm> members;
    for (UINT i = 0;; ++i) {
        const CDescription description(typeInfo, i);
        if (!description) return members;
        MemberForm& form = members.emplace_back();
        form.member = description->memid;
        form.kinds = static_cast<WORD>(description->invkind);
        for (SHORT place = 0; place < description->cParams; ++place) {
            form.parameters.push_back(FormOf(description->lprgelemdescParam[place]));
        }
    }
}

const MemberForm* FindMember(const std::vector<MemberForm>& members, DISPID member, WORD flags) {
    const auto found = std::find_if(members.begin(), members.end(), [&](const MemberForm& form) {
        return form.member == member && (form.kinds & flags);
    });
    return found == members.end() ? nullptr : &*found;
}

}  // namespace reka
