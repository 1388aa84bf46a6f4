// SPDX-License-Identifier: MIT
// The part of a dual interface that comes from `IDispatch`.

#pragma once

#include "capeopen/CapeOpenInterfaces.h"
#include "capeopen/LastFailure.h"
#include "platform/TypeLibrary.h"

namespace reka {

/// The operations of `IDispatch` for the interface `iid`, of which `object` is a pointer. A locale is not asked for:
/// the names are the same in every language. Null where a pointer is needed gives `E_POINTER`, and so does an argument
/// by reference that refers to nothing; an identifier in the reserved place gives `DISP_E_UNKNOWNINTERFACE`. `adapt` is
/// told by platform/TypeLibrary.h. A method that fails gives `DISP_E_EXCEPTION`, with its code and the words that it
/// has recorded in `failure` in `exception`; an object that keeps no words has a null `failure`, and a caller that
/// wants none a null `exception`.
HRESULT CountTypes(UINT* count);
HRESULT GiveType(REFIID iid, UINT index, ITypeInfo** typeInfo) noexcept;
HRESULT FindMembers(REFIID iid, REFIID reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept;
HRESULT CallMember(void* object, REFIID iid, DISPID member, REFIID reserved, WORD flags, DISPPARAMS* parameters,
                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument, const CLastFailure* failure,
                   AdaptArgument adapt = nullptr) noexcept;

/// Base for an object's implementation of one dual interface: answers late-bound calls with that interface's own
/// identifiers.
template <class Interface>
class CDualInterface : public Interface {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return CountTypes(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** typeInfo) override {
        return GiveType(InterfaceId<Interface>(), index, typeInfo);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                            DISPID* members) override {
        return FindMembers(InterfaceId<Interface>(), reserved, names, count, members);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        return CallMember(static_cast<Interface*>(this), InterfaceId<Interface>(), member, reserved, flags, parameters,
                          result, exception, badArgument, Failures());
    }

protected:
    /// Where the object keeps the words of its failures; null if it keeps none. An object that does overrides this for
    /// all of its interfaces.
    virtual const CLastFailure* Failures() const { return nullptr; }
};

}  // namespace reka
