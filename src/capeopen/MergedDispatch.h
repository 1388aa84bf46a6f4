// SPDX-License-Identifier: MIT
// The one `IDispatch` of an object with several interfaces.

#pragma once

#include <span>

#include "capeopen/CapeOpenInterfaces.h"
#include "capeopen/LastFailure.h"

namespace reka {

/// Offers the members of all of an object's interfaces to a client that can't ask for a second interface, such as a
/// script. Each member has an identifier of its own: the place of its interface, counted from 1, times 65536, plus the
/// interface's own identifier. Of two interfaces with a member of the same name the first one has it. There is no type
/// information, since no one type describes this. Lists come as lists of variants, which scripts can read, and the
/// lists of variants that scripts make are taken as lists of strings or numbers.
///
/// It is a part of the object that derives from it: identity, count and life are that object's.
class CMergedDispatch : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* members) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

protected:
    CMergedDispatch() = default;
    ~CMergedDispatch() = default;

    /// The interfaces whose members are offered, in order.
    virtual std::span<const IID> LateBoundInterfaces() const = 0;
    /// The object's interface of that identifier, without a count.
    virtual void* FindInterface(REFIID iid) = 0;
    /// Where it keeps the words of its failures.
    virtual const CLastFailure* Failures() const = 0;
};

}  // namespace reka
