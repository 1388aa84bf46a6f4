// SPDX-License-Identifier: MIT
// The system's own dispatcher makes the calls, out of the types in the module's library; this only sees to it that it
// has the right arguments. Types are kept once they were asked for, and what their members take with them, since
// finding either takes longer than the call that it serves. All apartments share them: they are read only, and bound to
// none.

#include "platform/TypeLibrary.h"

#include <utility>
#include <vector>

#include "platform/Holders.h"
#include "platform/ModuleFile.h"
#include "platform/win/MemberForms.h"
#include "platform/win/ReferenceArguments.h"
#include "platform/win/SystemModules.h"
#include "platform/win/TypesByFile.h"

namespace reka {

namespace {

struct KnownType {
    IID iid;
    CComRef<ITypeInfo> typeInfo;
    std::vector<MemberForm> members;
    KnownType* next;
};

SRWLOCK lock = SRWLOCK_INIT;
// Ours till they are forgotten, and the system's where the process ends before that.
ITypeLib* knownLibrary = nullptr;
KnownType* lastKnown = nullptr;

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
    if (!knownLibrary) {
        CComRef<ITypeLib> library;
        const HRESULT result = LoadTypes(library);
        if (FAILED(result)) return result;
        knownLibrary = library.Detach();
    }
    return knownLibrary->GetTypeInfoOfGuid(iid, typeInfo.Receive());
}

/// The type, which is kept from here on. Null with the reason in `result`.
const KnownType* FindType(REFIID iid, HRESULT& result) {
    const CLocked locked;
    for (const KnownType* known = lastKnown; known; known = known->next) {
        if (known->iid == iid) return known;
    }
    CComRef<ITypeInfo> typeInfo;
    result = LoadTypeOfInterface(iid, typeInfo);
    if (FAILED(result)) return nullptr;
    std::vector<MemberForm> members = ReadMemberForms(*typeInfo);
    lastKnown = new KnownType{iid, std::move(typeInfo), std::move(members), lastKnown};
    return lastKnown;
}

template <class Body>
HRESULT WithType(REFIID iid, Body&& body) noexcept {
    try {
        HRESULT result = S_OK;
        const KnownType* const known = FindType(iid, result);
        return known ? body(*known) : result;
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
    return WithType(iid, [&](const KnownType& known) {
        *typeInfo = CComRef<ITypeInfo>(known.typeInfo).Detach();
        return S_OK;
    });
}

HRESULT FindMembersOfInterface(REFIID iid, LPOLESTR* names, UINT count, DISPID* members) noexcept {
    return WithType(
        iid, [&](const KnownType& known) { return DispGetIDsOfNames(known.typeInfo.Get(), names, count, members); });
}

HRESULT CallMemberOfInterface(void* object, REFIID iid, DISPID member, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* badArgument, AdaptArgument adapt) noexcept {
    return WithType(iid, [&](const KnownType& known) -> HRESULT {
        CReferenceArguments arguments(*parameters);
        HRESULT called = arguments.Prepare(FindMember(known.members, member, flags), adapt, badArgument);
        if (FAILED(called)) return called;
        const auto call = [&](WORD kind) {
            return DispInvoke(object, known.typeInfo.Get(), member, kind, arguments.Get(), result, exception,
                              badArgument);
        };
        called = call(flags);
        // Set in a script; there is one way of putting a property.
        if (called == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF) called = call(DISPATCH_PROPERTYPUT);
        return SUCCEEDED(called) ? arguments.WriteBack(called) : called;
    });
}

void ForgetTypeLibrary() noexcept {
    const CLocked locked;
    while (lastKnown) delete std::exchange(lastKnown, lastKnown->next);
    if (ITypeLib* const library = std::exchange(knownLibrary, nullptr)) library->Release();
}

}  // namespace reka
