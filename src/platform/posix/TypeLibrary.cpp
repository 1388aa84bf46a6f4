// SPDX-License-Identifier: MIT
// There are no type libraries here, so there is no late binding either: each call answers that it isn't implemented,
// and an object tells that it has no types. Everything is reached through the slots of the interfaces.

#include "platform/TypeLibrary.h"

namespace reka {

UINT CountTypesOfInterface() {
    return 0;
}

HRESULT FindTypeOfInterface(REFIID, ITypeInfo** typeInfo) noexcept {
    *typeInfo = nullptr;
    return E_NOTIMPL;
}

HRESULT FindMembersOfInterface(REFIID, LPOLESTR*, UINT, DISPID*) noexcept {
    return E_NOTIMPL;
}

HRESULT CallMemberOfInterface(void*, REFIID, DISPID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*,
                              AdaptArgument) noexcept {
    return E_NOTIMPL;
}

void ForgetTypeLibrary() noexcept {}

}  // namespace reka
