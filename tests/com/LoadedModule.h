// SPDX-License-Identifier: MIT
// The module as the system uses it: loaded from its file, called by its exports.

#pragma once

#include <string>

#include "Host.h"

namespace host {

constexpr CLSID managerClass = {0x95E42661, 0x1916, 0x4261, {0x8F, 0xCC, 0x6F, 0x59, 0x8A, 0x19, 0xE5, 0x44}};
constexpr CLSID packageClass = {0xDB0E17E9, 0x7D36, 0x48C4, {0xAB, 0xA9, 0x8E, 0x74, 0xD0, 0xB5, 0xFE, 0x07}};

/// Holds the module in memory while it lives, and outlives what was made by it.
class CLoadedModule {
public:
    explicit CLoadedModule(const std::wstring& path = ModulePath()) : module(LoadLibraryW(path.c_str())) {}
    ~CLoadedModule() {
        if (module) FreeLibrary(module);
    }
    CLoadedModule(const CLoadedModule&) = delete;
    CLoadedModule& operator=(const CLoadedModule&) = delete;
    explicit operator bool() const { return module != nullptr; }

    // The four exports; E_UNEXPECTED without the module.

    HRESULT GetClassObject(REFCLSID classId, REFIID iid, void** object) const;
    HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }
    HRESULT RegisterServer() const { return Call("DllRegisterServer"); }
    HRESULT UnregisterServer() const { return Call("DllUnregisterServer"); }

    /// The factory of a class; null if there is none.
    CRef<IClassFactory> FactoryOf(REFCLSID classId) const;
    /// A new manager by its late-bound interface; null if that fails.
    CRef<IDispatch> MakeManager() const;

private:
    HRESULT Call(const char* name) const;

    HMODULE module;
};

}  // namespace host
