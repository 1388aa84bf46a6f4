// SPDX-License-Identifier: MIT
// The arguments are copied, fitted, and after the call written back: the client's own variables are never lent to a
// member, since the call may run code of the client's that changes them. What a member wants is told by the type
// library, so a new member needs nothing here. References are made to numbers and objects
// alone; those to lists and texts pass the dispatcher as they come. A variable that couldn't take the result is refused
// before the call, not after it has had its effect.

#include "platform/win/ReferenceArguments.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace reka {

namespace {

/// The variable that an argument refers to, which may be a reference itself.
const VARIANT& Target(const VARIANT& argument) {
    const bool isNested = argument.vt == (VT_BYREF | VT_VARIANT) && (argument.pvarVal->vt & VT_BYREF);
    return isNested ? *argument.pvarVal : argument;
}

/// Bytes of a number that a client's reference refers to; 0 for anything else.
std::size_t NumberSize(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
            return 8;
        default:
            return 0;
    }
}

/// Whether nothing has been put there yet.
bool IsEmpty(const VARIANT& target) {
    return target.vt == VT_EMPTY || (target.vt == (VT_BYREF | VT_VARIANT) && target.pvarVal->vt == VT_EMPTY);
}

}  // namespace

CReferenceArguments::~CReferenceArguments() {
    for (UINT i = 0; made.any() && i < most; ++i) {
        if (made[i]) VariantClear(&values[i]);
    }
}

VARIANT& CReferenceArguments::MakeAt(UINT place) {
    VariantInit(&values[place]);
    made.set(place);
    return values[place];
}

HRESULT CReferenceArguments::Prepare(const MemberForm* member, AdaptArgument adapt, UINT* badArgument) {
    if (given.cArgs == 0 || given.cArgs > most || !member) return S_OK;
    changed.rgvarg = arguments.data();
    std::copy_n(given.rgvarg, given.cArgs, arguments.begin());
    for (UINT i = 0; i < given.cArgs; ++i) {
        // Named arguments come first, the others after them from the last to the first.
        const DISPID place =
            i < given.cNamedArgs ? given.rgdispidNamedArgs[i] : static_cast<DISPID>(given.cArgs - 1 - i);
        if (place < 0 || static_cast<std::size_t>(place) >= member->parameters.size()) continue;
        const HRESULT result = Fit(i, member->parameters[static_cast<std::size_t>(place)], adapt);
        if (SUCCEEDED(result)) continue;
        if (badArgument) *badArgument = i;
        return result;
    }
    return S_OK;
}

HRESULT CReferenceArguments::Fit(UINT place, const ParameterForm& parameter, AdaptArgument adapt) {
    if (parameter.kind == ParameterForm::Value) return MakeValue(place, adapt);
    if (parameter.kind == ParameterForm::Other || arguments[place].vt == (VT_BYREF | parameter.referred)) return S_OK;
    return MakeReference(place, parameter.referred, parameter.isOutput);
}

HRESULT CReferenceArguments::MakeValue(UINT place, AdaptArgument adapt) {
    VARIANT& argument = arguments[place];
    constexpr VARTYPE variants = VT_ARRAY | VT_VARIANT;
    if (!(argument.vt & VT_BYREF) && !(adapt && argument.vt == variants)) return S_OK;
    // A copy, since the call may run code of the client's that changes the variable.
    VARIANT& value = MakeAt(place);
    const HRESULT result = VariantCopyInd(&value, &argument);
    if (FAILED(result)) return result;
    if (adapt && value.vt == variants) adapt(value);
    argument = value;
    return S_OK;
}

HRESULT CReferenceArguments::MakeReference(UINT place, VARTYPE type, bool isOutput) {
    VARIANT& argument = arguments[place];
    const VARIANT& target = Target(argument);
    const auto targetType = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
    isWrittenBack[place] = isOutput && (target.vt & VT_BYREF);
    // What couldn't be written back later is refused before anything is called.
    if (isWrittenBack[place] && targetType != VT_VARIANT && NumberSize(targetType) == 0) return DISP_E_TYPEMISMATCH;
    VARIANT& value = MakeAt(place);
    if (IsEmpty(target)) {
        value.vt = type;  // a missing number counts as 0, and a missing object as none
        value.dblVal = 0;
        if (type == VT_DISPATCH) value.pdispVal = nullptr;
    } else {
        const HRESULT result = VariantChangeType(&value, &argument, 0, type);
        if (FAILED(result)) return result;
    }
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = &value.lVal;
    return S_OK;
}

HRESULT CReferenceArguments::WriteBack(HRESULT called) {
    HRESULT result = called;
    for (UINT i = 0; isWrittenBack.any() && i < most; ++i) {
        const HRESULT written = isWrittenBack[i] ? WriteBack(i) : S_OK;
        if (FAILED(written) && SUCCEEDED(result)) result = written;
    }
    return result;
}

HRESULT CReferenceArguments::WriteBack(UINT place) {
    const VARIANT& target = Target(given.rgvarg[place]);
    const auto type = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
    if (type == VT_VARIANT) return VariantCopy(target.pvarVal, &values[place]);
    CVariant converted;
    const HRESULT result = VariantChangeType(&converted.Get(), &values[place], 0, type);
    if (SUCCEEDED(result)) std::memcpy(target.byref, &converted.Get().lVal, NumberSize(type));
    return result;
}

}  // namespace reka
