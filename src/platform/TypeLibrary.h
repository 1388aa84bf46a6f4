// SPDX-License-Identifier: MIT
// Late-bound calls by the type library in the module that holds this code, registered or not. Where the platform has no
// type libraries there are no late-bound calls: everything is reached through the interfaces' own slots.

#pragma once

#include "platform/Automation.h"

namespace reka {

/// 1 if late-bound calls can be answered at all, otherwise 0.
UINT CountTypesOfInterface();

/// The type of the interface `iid`, which the caller releases. On failure `*typeInfo` is null; `TYPE_E_ELEMENTNOTFOUND`
/// for an interface that the library hasn't got.
HRESULT FindTypeOfInterface(REFIID iid, ITypeInfo** typeInfo) noexcept;

/// What `IDispatch::GetIDsOfNames` says of the interface `iid`.
HRESULT FindMembersOfInterface(REFIID iid, LPOLESTR* names, UINT count, DISPID* members) noexcept;

/// Changes an argument, of which the call has a copy of its own, into what the members take.
using AdaptArgument = void (*)(VARIANT& argument) noexcept;

/// What `IDispatch::Invoke` does on `object`, which is a pointer to the interface `iid`. A variable that stands for a
/// plain value is read, and one that stands for a reference to a number gets what the member writes. `adapt`, which may
/// be null, is called for each list that is passed as a plain value.
HRESULT CallMemberOfInterface(void* object, REFIID iid, DISPID member, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* badArgument, AdaptArgument adapt) noexcept;

/// Gives back what the calls above keep between them. For the module's end.
void ForgetTypeLibrary() noexcept;

}  // namespace reka
