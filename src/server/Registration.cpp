// SPDX-License-Identifier: MIT
// The registrar is the system's, a class of atl.dll that is asked for there directly: so it works in a process that
// hasn't started COM, and on a system whose own registration of it is damaged. The keys stand in a script among the
// module's resources, which the same registrar runs backwards to remove them, so neither way can forget what the other
// does. For a single user the classes root of this process is led elsewhere while the script runs: the script needn't
// know of it.

#include "server/Registration.h"

#include <array>
#include <string>
#include <string_view>

#include <unknwn.h>

#include "platform/Holders.h"
#include "platform/ModuleFile.h"
#include "platform/SameText.h"
#include "platform/win/SystemModules.h"
#include "server/Module.h"
#include "server/resource.h"

namespace reka {

/// The system's interpreter of registry scripts, by its slots. Not local to this file: the compiler would take a local
/// class that nothing implements here for one without objects.
class IRegistrar : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE AddReplacement(LPCOLESTR key, LPCOLESTR item) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearReplacements() = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegisterSz(LPCOLESTR module, LPCOLESTR name, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregisterSz(LPCOLESTR module, LPCOLESTR name, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileRegister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE FileUnregister(LPCOLESTR file) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringRegister(LPCOLESTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE StringUnregister(LPCOLESTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceRegister(LPCOLESTR module, UINT id, LPCOLESTR type) = 0;
    virtual HRESULT STDMETHODCALLTYPE ResourceUnregister(LPCOLESTR module, UINT id, LPCOLESTR type) = 0;
};

namespace {

constexpr CLSID registrarClassId = {0x44EC053A, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};
constexpr IID registrarId = {0x44EC053B, 0x400F, 0x11D0, {0x9D, 0xCD, 0x00, 0xA0, 0xC9, 0x03, 0x91, 0xD3}};

HRESULT LastError() {
    return HRESULT_FROM_WIN32(GetLastError());
}

/// The library that holds the registrar, loaded as long as this lives.
class CRegistrarLibrary {
public:
    CRegistrarLibrary() : library(LoadSystemLibrary(L"atl.dll")) {}
    ~CRegistrarLibrary() {
        if (library) FreeLibrary(library);
    }
    CRegistrarLibrary(const CRegistrarLibrary&) = delete;
    CRegistrarLibrary& operator=(const CRegistrarLibrary&) = delete;

    HRESULT MakeRegistrar(CComRef<IRegistrar>& registrar) const {
        if (!library) return LastError();
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto getClassObject =
            reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
        if (!getClassObject) return LastError();
        void* found = nullptr;
        HRESULT result = getClassObject(registrarClassId, IID_IClassFactory, &found);
        if (FAILED(result)) return result;
        CComRef<IClassFactory> factory;
        factory.Reset(static_cast<IClassFactory*>(found));
        result = factory->CreateInstance(nullptr, registrarId, &found);
        if (SUCCEEDED(result)) registrar.Reset(static_cast<IRegistrar*>(found));
        return result;
    }

private:
    HMODULE library;
};

/// While it lives, what goes to the classes root of this process goes to the classes of the current user.
class CUserClassesRoot {
public:
    CUserClassesRoot() = default;
    ~CUserClassesRoot() {
        if (key) RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        if (key) RegCloseKey(key);
    }
    CUserClassesRoot(const CUserClassesRoot&) = delete;
    CUserClassesRoot& operator=(const CUserClassesRoot&) = delete;

    /// Makes the user's classes if there are none and `isMaking`; without them the result is the code of
    /// `ERROR_FILE_NOT_FOUND`.
    HRESULT Override(bool isMaking) {
        HKEY opened = nullptr;
        constexpr const wchar_t* name = L"Software\\Classes";
        LSTATUS status = isMaking ? RegCreateKeyExW(HKEY_CURRENT_USER, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                                    &opened, nullptr)
                                  : RegOpenKeyExW(HKEY_CURRENT_USER, name, 0, KEY_ALL_ACCESS, &opened);
        if (status != ERROR_SUCCESS) return HRESULT_FROM_WIN32(status);
        status = RegOverridePredefKey(HKEY_CLASSES_ROOT, opened);
        if (status == ERROR_SUCCESS) {
            key = opened;
        } else {
            RegCloseKey(opened);
        }
        return HRESULT_FROM_WIN32(status);
    }

private:
    HKEY key = nullptr;
};

LPCOLESTR TextOf(const std::u16string& text) {
    return reinterpret_cast<LPCOLESTR>(text.c_str());
}

/// The text as it stands between the quotes of a registry script, where a quote that is part of it is doubled.
std::u16string ScriptText(std::u16string_view text) {
    std::u16string written;
    for (const char16_t character : text) written.append(character == u'\'' ? 2 : 1, character);
    return written;
}

}  // namespace

bool IsRegistrationForUser() noexcept {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\NAVO", 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    std::array<char16_t, 11> value = {};  // one more than is read, so that it always ends
    DWORD size = 20;                      // bytes
    const LSTATUS status =
        RegQueryValueExW(key, L"CurrentUser", nullptr, nullptr, reinterpret_cast<BYTE*>(value.data()), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS && SameText(value.data(), u"1");
}

HRESULT RunRegistryScript(bool isRegistering) noexcept {
    try {
        const std::u16string path = ModuleFilePath();
        if (path.empty()) return E_UNEXPECTED;
        const CRegistrarLibrary library;
        CComRef<IRegistrar> registrar;
        HRESULT result = library.MakeRegistrar(registrar);
        if (SUCCEEDED(result)) result = registrar->AddReplacement(L"MODULE", TextOf(ScriptText(path)));
        if (SUCCEEDED(result))
            result = registrar->AddReplacement(L"DLLVERSION", TextOf(ScriptText(TheModule().version)));
        if (FAILED(result)) return result;
        CUserClassesRoot userClasses;
        if (TheModule().isPerUser) result = userClasses.Override(isRegistering);
        if (!isRegistering && result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)) return S_OK;  // there are no classes
        if (FAILED(result)) return result;
        return isRegistering ? registrar->ResourceRegister(TextOf(path), REGISTRY_SCRIPT, L"REGISTRY")
                             : registrar->ResourceUnregister(TextOf(path), REGISTRY_SCRIPT, L"REGISTRY");
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace reka
