// SPDX-License-Identifier: MIT
// As the system's dispatcher, this makes real calls: it puts the arguments in order, follows references, copies what a
// member takes by value, and tells a failing member by an exception. It has members of every kind that the objects
// have, and not each of them. Nothing is converted from one type into another, which is the system's part.

#include "support/posix/LateMembers.h"

#include <array>
#include <span>
#include <string_view>
#include <utility>

#include "capeopen/CapeOpenInterfaces.h"
#include "platform/Holders.h"
#include "platform/SameText.h"
#include "platform/TypeLibrary.h"

namespace reka {

namespace {

using test::callMethod;
using test::getProperty;
using test::putProperty;

constexpr std::size_t mostArguments = 4;
using Arguments = std::array<VARIANT, mostArguments>;

enum class Kind { None, Text, Value, Variable, Object };  // of an argument; a value is any, a variable is written to

struct Argument {
    const char16_t* name = nullptr;
    Kind kind = Kind::None;
};

struct Member {
    IID iid;
    DISPID id;
    WORD flags;
    const char16_t* name;
    std::array<Argument, mostArguments> arguments;
    HRESULT (*call)(void* object, Arguments& arguments, VARIANT& result);

    UINT ArgumentCount() const {
        UINT count = 0;
        while (count < mostArguments && arguments[count].kind != Kind::None) ++count;
        return count;
    }
};

template <class Interface>
using TextGetter = HRESULT (Interface::*)(BSTR*);

template <class Interface, TextGetter<Interface> getter>
HRESULT GetText(void* object, Arguments&, VARIANT& result) {
    result.bstrVal = nullptr;
    const HRESULT called = (static_cast<Interface*>(object)->*getter)(&result.bstrVal);
    result.vt = FAILED(called) ? VT_EMPTY : VT_BSTR;
    return called;
}

HRESULT GiveObject(HRESULT called, IDispatch* object, VARIANT& result) {
    result.vt = VT_DISPATCH;
    result.pdispVal = object;
    return called;
}

const Member members[] = {
    {ICapeIdentification::iid,
     1,
     getProperty,
     u"ComponentName",
     {},
     GetText<ICapeIdentification, &ICapeIdentification::get_ComponentName>},
    {ICapeIdentification::iid,
     1,
     putProperty,
     u"ComponentName",
     {{{u"name", Kind::Text}}},
     [](void* o, Arguments& a, VARIANT&) {
         return static_cast<ICapeIdentification*>(o)->put_ComponentName(a[0].bstrVal);
     }},
    {ECapeUser::iid, 2, getProperty, u"description", {}, GetText<ECapeUser, &ECapeUser::get_description>},
    {ICapeUtilities::iid,
     3,
     callMethod,
     u"Initialize",
     {},
     [](void* o, Arguments&, VARIANT&) { return static_cast<ICapeUtilities*>(o)->Initialize(); }},
    {ICapeUtilities::iid,
     4,
     callMethod,
     u"Terminate",
     {},
     [](void* o, Arguments&, VARIANT&) { return static_cast<ICapeUtilities*>(o)->Terminate(); }},
    {ICapeReactionChemistry::iid,
     2,
     callMethod,
     u"GetReactionsIds",
     {},
     [](void* o, Arguments&, VARIANT& r) { return static_cast<ICapeReactionChemistry*>(o)->GetReactionsIds(&r); }},
    {ICapeReactionChemistry::iid,
     5,
     callMethod,
     u"GetReactionCompoundIds",
     {{{u"reacID", Kind::Text},
       {u"compIds", Kind::Variable},
       {u"compCharge", Kind::Variable},
       {u"compCASNumber", Kind::Variable}}},
     [](void* o, Arguments& a, VARIANT&) {
         return static_cast<ICapeReactionChemistry*>(o)->GetReactionCompoundIds(a[0].bstrVal, a[1].pvarVal,
                                                                                a[2].pvarVal, a[3].pvarVal);
     }},
    {ICapeReactionChemistry::iid,
     6,
     callMethod,
     u"GetStoichiometricCoefficients",
     {{{u"reacID", Kind::Text}}},
     [](void* o, Arguments& a, VARIANT& r) {
         return static_cast<ICapeReactionChemistry*>(o)->GetStoichiometricCoefficients(a[0].bstrVal, &r);
     }},
    {ICapeReactionChemistry::iid,
     12,
     callMethod,
     u"GetReactionParameters",
     {{{u"reacID", Kind::Text}}},
     [](void* o, Arguments& a, VARIANT& r) {
         IDispatch* found = nullptr;
         return GiveObject(static_cast<ICapeReactionChemistry*>(o)->GetReactionParameters(a[0].bstrVal, &found), found,
                           r);
     }},
    {ICapeReactionsRoutine::iid,
     1,
     callMethod,
     u"CalcReactionProp",
     {{{u"props", Kind::Value}, {u"phase", Kind::Text}, {u"reacIds", Kind::Value}, {u"basis", Kind::Text}}},
     [](void* o, Arguments& a, VARIANT&) {
         return static_cast<ICapeReactionsRoutine*>(o)->CalcReactionProp(a[0], a[1].bstrVal, a[2], a[3].bstrVal);
     }},
    {ICapeThermoMaterialContext::iid,
     1,
     callMethod,
     u"SetMaterial",
     {{{u"material", Kind::Object}}},
     [](void* o, Arguments& a, VARIANT&) {
         return static_cast<ICapeThermoMaterialContext*>(o)->SetMaterial(a[0].pdispVal);
     }},
    {ICapeThermoContext10::iid,
     1,
     callMethod,
     u"SetMaterial",
     {{{u"materialObject", Kind::Object}}},
     [](void* o, Arguments& a, VARIANT&) {
         return static_cast<ICapeThermoContext10*>(o)->SetMaterial(&a[0].pdispVal);
     }},
    {ICapeReactionsPackageManager::iid,
     1,
     callMethod,
     u"GetListOfReactionsPackages",
     {},
     [](void* o, Arguments&, VARIANT& r) {
         return static_cast<ICapeReactionsPackageManager*>(o)->GetListOfReactionsPackages(&r);
     }},
    {ICapeReactionsPackageManager::iid,
     2,
     callMethod,
     u"ResolveReactionsPackage",
     {{{u"reactionsPkg", Kind::Text}}},
     [](void* o, Arguments& a, VARIANT& r) {
         IDispatch* found = nullptr;
         return GiveObject(static_cast<ICapeReactionsPackageManager*>(o)->ResolveReactionsPackage(a[0].bstrVal, &found),
                           found, r);
     }},
};

/// What an argument stands for, through the variable that it may be in.
const VARIANT& TargetOf(const VARIANT& argument) {
    return argument.vt == (VT_BYREF | VT_VARIANT) ? *argument.pvarVal : argument;
}

/// Puts the argument into `fitted`, which lends it or has a copy in `copy`.
HRESULT Fit(const VARIANT& given, Kind kind, AdaptArgument adapt, VARIANT& fitted, CVariant& copy) {
    constexpr VARTYPE variants = VT_ARRAY | VT_VARIANT;
    const VARIANT& target = TargetOf(given);
    switch (kind) {
        case Kind::Text:
            fitted = target;
            return target.vt == VT_BSTR ? S_OK : test::typeMismatch;
        case Kind::Object:
            fitted = target;
            return target.vt == VT_DISPATCH ? S_OK : test::typeMismatch;
        case Kind::Variable:
            fitted = given;
            return given.vt == (VT_BYREF | VT_VARIANT) ? S_OK : test::typeMismatch;
        default: {
            const HRESULT result = VariantCopy(&copy.Get(), &target);
            if (FAILED(result)) return result;
            if (adapt && copy.Get().vt == variants) adapt(copy.Get());
            fitted = copy.Get();
            return S_OK;
        }
    }
}

HRESULT Call(const Member& member, void* object, const DISPPARAMS& given, VARIANT* result, EXCEPINFO* exception,
             UINT* badArgument, AdaptArgument adapt) {
    if (given.cArgs != member.ArgumentCount()) return test::badParameterCount;
    Arguments fitted = {};
    std::array<CVariant, mostArguments> copies;
    for (UINT i = 0; i < given.cArgs; ++i) {
        // Named arguments come first, the others after them from the last to the first.
        const bool isNamed = i < given.cNamedArgs && given.rgdispidNamedArgs[i] != test::propertyPut;
        const UINT place = isNamed ? static_cast<UINT>(given.rgdispidNamedArgs[i]) : given.cArgs - 1 - i;
        if (place >= given.cArgs) return DISP_E_PARAMNOTFOUND;
        const HRESULT fits = Fit(given.rgvarg[i], member.arguments[place].kind, adapt, fitted[place], copies[place]);
        if (SUCCEEDED(fits)) continue;
        if (badArgument) *badArgument = i;
        return fits;
    }
    CVariant value;
    const HRESULT called = member.call(object, fitted, value.Get());
    if (FAILED(called)) {
        if (exception) *exception = {};
        if (exception) exception->scode = called;
        return DISP_E_EXCEPTION;
    }
    if (result) *result = value.Detach();
    return called;
}

}  // namespace

UINT CountTypesOfInterface() {
    return 1;
}

HRESULT FindTypeOfInterface(REFIID, ITypeInfo** typeInfo) noexcept {
    *typeInfo = nullptr;
    return E_NOTIMPL;
}

HRESULT FindMembersOfInterface(REFIID iid, LPOLESTR* names, UINT count, DISPID* found) noexcept {
    for (UINT i = 0; i < count; ++i) found[i] = DISPID_UNKNOWN;
    for (const Member& member : members) {
        if (member.iid != iid || !SameText(names[0], std::u16string_view(member.name))) continue;
        found[0] = member.id;
        bool isComplete = true;
        for (UINT i = 1; i < count; ++i) {
            for (UINT place = 0; place < member.ArgumentCount(); ++place) {
                if (!SameText(names[i], std::u16string_view(member.arguments[place].name))) continue;
                found[i] = static_cast<DISPID>(place);
            }
            isComplete = isComplete && found[i] != DISPID_UNKNOWN;
        }
        return isComplete ? S_OK : DISP_E_UNKNOWNNAME;
    }
    return DISP_E_UNKNOWNNAME;
}

HRESULT CallMemberOfInterface(void* object, REFIID iid, DISPID id, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                              EXCEPINFO* exception, UINT* badArgument, AdaptArgument adapt) noexcept {
    for (const Member& member : members) {
        if (member.iid != iid || member.id != id || (member.flags & flags) == 0) continue;
        return Call(member, object, *parameters, result, exception, badArgument, adapt);
    }
    return DISP_E_MEMBERNOTFOUND;
}

void ForgetTypeLibrary() noexcept {}

}  // namespace reka
