// SPDX-License-Identifier: MIT
// One row for each class, and its factory stands in the row: to make one takes no memory and so can't fail, and its
// address is good as long as the module is. What a client holds of a factory keeps the module loaded, what the table
// holds of it doesn't, or the module could never go. The class of packages has a row too, though nothing of it is
// registered: the manager makes packages without it, but who knows the identifier gets the factory.

#include "server/ClassTable.h"

#include <atomic>
#include <cstdint>
#include <optional>

#include "capeopen/ClassIds.h"
#include "capeopen/ComObject.h"
#include "capeopen/ModuleLocks.h"
#include "manager/CReactionPackManager.h"
#include "package/CReactionPack.h"
#include "server/Module.h"
#include "server/Registration.h"

namespace reka {

namespace {

using CreateFunction = HRESULT (*)(IUnknown* outer, REFIID iid, void** object) noexcept;
using RegisterFunction = HRESULT (*)(bool isRegistering) noexcept;

/// Makes objects of one class. While a client holds it the module stays loaded; the table's own count doesn't keep it.
class CClassFactory final : public IClassFactory {
public:
    explicit CClassFactory(CreateFunction createObject) : create(createObject) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        ++moduleLockCount;
        return static_cast<ULONG>(InterlockedIncrement(&count));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const auto left = static_cast<ULONG>(InterlockedDecrement(&count));
        --moduleLockCount;
        return left;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        return create(outer, iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL isLocking) override {
        if (isLocking) {
            ++lockCount;
            ++moduleLockCount;
        } else if (TakeLock()) {
            --moduleLockCount;
        }
        return S_OK;
    }

private:
    /// False if no client has locked the server through this factory: an unlock too many would let the module go under
    /// somebody's object.
    bool TakeLock() {
        std::int32_t locks = lockCount;
        while (locks > 0 && !lockCount.compare_exchange_weak(locks, locks - 1)) {
        }
        return locks > 0;
    }

    CreateFunction create;
    LONG count = 1;  // the table's
    std::atomic<std::int32_t> lockCount = 0;
};

struct ClassRow {
    const CLSID& classId;
    CreateFunction create;
    RegisterFunction registerClass;
    std::optional<CClassFactory> factory;
};

/// A package is made by the manager, and no client looks it up.
HRESULT RegisterNothing(bool) noexcept {
    return S_OK;
}

ClassRow classTable[] = {
    {reactionPackManagerClassId, CreateObject<CReactionPackManager>, RunRegistryScript, std::nullopt},
    {reactionPackClassId, CreateObject<CReactionPack>, RegisterNothing, std::nullopt},
};

}  // namespace

HRESULT GetClassFactory(REFCLSID classId, REFIID iid, void** factory) noexcept {
    if (!factory) return E_POINTER;
    *factory = nullptr;
    if (!TheModule().hasStarted) return E_UNEXPECTED;
    for (ClassRow& row : classTable) {
        if (row.classId != classId) continue;
        const CModuleListsLock locked;
        if (!row.factory) row.factory.emplace(row.create);
        return row.factory->QueryInterface(iid, factory);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT RegisterClasses(bool isRegistering) noexcept {
    for (const ClassRow& row : classTable) {
        const HRESULT result = row.registerClass(isRegistering);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

void EndClassTable() noexcept {
    for (ClassRow& row : classTable) row.factory.reset();
}

}  // namespace reka
