// SPDX-License-Identifier: MIT
// The system's own dispatcher makes the calls, out of the types in the module's library; this only sees to it that it
// has the right arguments. Types are kept once they were asked for, since finding one takes longer than the call that
// it serves. All apartments share them: they are read only, and bound to none. They lie in a table of fixed size, so
// keeping one can't fail.

#include "platform/TypeLibrary.h"

#include <array>

#include "platform/Holders.h"
#include "platform/ModuleFile.h"
#include "platform/win/ReferenceArguments.h"
#include "platform/win/SystemModules.h"
#include "platform/win/TypesByFile.h"

namespace reka {

namespace {

struct KnownType {
    IID iid;
    ITypeInfo* typeInfo;  // counted
};

SRWLOCK lock = SRWLOCK_INIT;
std::array<KnownType, 32> knownTypes;  // more than the library has interfaces
std::size_t knownCount = 0;

class CLocked {
public:
    CLocked() { AcquireSRWLockExclusive(&lock); }
    ~CLocked() { ReleaseSRWLockExclusive(&lock); }
    CLocked(const CLocked&) = delete;
    CLocked& operator=(const CLocked&) = delete;
};

HRESULT LoadTypes(CComRef<ITypeLib>& library) {
    const std::u16string path = ModuleFilePath();
    if (path.size() >= MAX_PATH) return LoadTypesByFile(OwnModule(), library);
    return LoadTypeLibEx(reinterpret_cast<LPCOLESTR>(path.c_str()), REGKIND_NONE, library.Receive());
}

HRESULT LoadTypeOfInterface(REFIID iid, CComRef<ITypeInfo>& typeInfo) {
    CComRef<ITypeLib> library;
    const HRESULT result = LoadTypes(library);
    if (FAILED(result)) return result;
    return library->GetTypeInfoOfGuid(iid, typeInfo.Receive());
}

HRESULT FindType(REFIID iid, CComRef<ITypeInfo>& typeInfo) {
    const CLocked locked;
    for (std::size_t i = 0; i < knownCount; ++i) {
        if (knownTypes[i].iid == iid) {
            typeInfo = CComRef<ITypeInfo>(knownTypes[i].typeInfo);
            return S_OK;
        }
    }
    const HRESULT result = LoadTypeOfInterface(iid, typeInfo);
    if (SUCCEEDED(result) && knownCount < knownTypes.size()) {
        typeInfo->AddRef();
        knownTypes[knownCount++] = {iid, typeInfo.Get()};
    }
    return result;
}

template <class Body>
HRESULT WithType(REFIID iid, Body&& body) noexcept {
    try {
        CComRef<ITypeInfo> typeInfo;
        const HRESULT result = FindType(iid, typeInfo);
        return FAILED(result) ? result : body(typeInfo);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace

UINT CountTypesOfInterface() {
    return 1;
}

HRESULT FindTypeOfInterface(REFIID iid, ITypeInfo** typeInfo) noexcept {
    *typeInfo = nullptr;
    return WithType(iid, [&](CComRef<ITypeInfo>& found) {
        *typeInfo = found.Detach();
        return S_OK;
    });
}

HRESULT FindMembersOfInterface(REFIID iid, LPOLESTR* names, UINT count, DISPID* members) noexcept {
    return WithType(iid,
                    [&](CComRef<ITypeInfo>& found) { return DispGetIDsOfNames(found.Get(), names, count, members); });
}

HRESULT CallMemberOfInterface(void* object, REFIID iid, DISPID member, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* badArgument, AdaptArgument adapt) noexcept {
    return WithType(iid, [&](CComRef<ITypeInfo>& found) -> HRESULT {
        CReferenceArguments arguments(*parameters);
        HRESULT called = arguments.Prepare(*found, member, flags, adapt, badArgument);
        if (FAILED(called)) return called;
        called = DispInvoke(object, found.Get(), member, flags, arguments.Get(), result, exception, badArgument);
        if (called == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF) {
            // Set in a script; there is one way of putting a property.
            called = DispInvoke(object, found.Get(), member, DISPATCH_PROPERTYPUT, arguments.Get(), result, exception,
                                badArgument);
        }
        return SUCCEEDED(called) ? arguments.WriteBack(called) : called;
    });
}

void ForgetTypeLibrary() noexcept {
    const CLocked locked;
    while (knownCount > 0) knownTypes[--knownCount].typeInfo->Release();
}

}  // namespace reka
