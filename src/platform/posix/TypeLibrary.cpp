// See platform/TypeLibrary.h: there are none here.

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
