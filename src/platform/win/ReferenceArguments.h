// SPDX-License-Identifier: MIT
// Arguments of late-bound calls, in the form that the members take them.

#pragma once

#include <array>
#include <bitset>

#include "platform/Holders.h"
#include "platform/TypeLibrary.h"
#include "platform/win/MemberForms.h"

namespace reka {

/// A copy of a call's arguments that fits the member. Scripts pass variables of their own kind, by reference, and the
/// system's dispatcher hands these through to a member that takes a plain value, and refuses them where the member
/// takes a reference to a number or an object. Here the former become values, and the latter references of the right
/// type. `given` outlives this.
class CReferenceArguments {
public:
    explicit CReferenceArguments(const DISPPARAMS& givenArguments) : given(givenArguments), changed(givenArguments) {}

    ~CReferenceArguments();
    CReferenceArguments(const CReferenceArguments&) = delete;
    CReferenceArguments& operator=(const CReferenceArguments&) = delete;

    /// Makes the arguments fit `member`; null, for one that isn't there, changes nothing. `adapt` may be null. On
    /// failure, with `DISP_E_TYPEMISMATCH` for an argument of the wrong type, its place is in `*badArgument`, and the
    /// call can't be made. Called once.
    HRESULT Prepare(const MemberForm* member, AdaptArgument adapt, UINT* badArgument);

    DISPPARAMS* Get() { return &changed; }

    /// Puts the numbers that the call left into the client's variables, whatever their type. `called`, or the first
    /// failure: a number may be too large for its variable.
    HRESULT WriteBack(HRESULT called);

private:
    static constexpr UINT most = 16;  // more arguments than a member has

    VARIANT& MakeAt(UINT place);
    HRESULT Fit(UINT place, const ParameterForm& parameter, AdaptArgument adapt);
    HRESULT MakeValue(UINT place, AdaptArgument adapt);
    HRESULT MakeReference(UINT place, VARTYPE type, bool isOutput);
    HRESULT WriteBack(UINT place);

    const DISPPARAMS& given;
    DISPPARAMS changed;
    std::array<VARIANT, most> arguments;
    std::array<VARIANT, most> values;  // at the places that are made
    std::bitset<most> made;
    std::bitset<most> isWrittenBack;
};

}  // namespace reka
