// SPDX-License-Identifier: MIT
// The registrar is the system's, a class of atl.dll that is asked for there directly: so it works in a process that
// hasn't started COM, and on a system whose own registration of it is damaged. The keys stand in a script among the
// module's resources, which the same registrar runs backwards to remove them, so neither way can forget what the other
// does. The classes root of this process is led to the user's classes, or to the machine's, while the script runs: the
// script needn't know of it. The system's own classes root would do for neither: it shows both, and what the user has
// already is written there, so that a registration for all users could leave the machine without it. What is removed
// goes by what is there and not by the user's setting, which may have changed since: wherever the class names this
// module.

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

constexpr std::size_t longestPath = 32768;  // characters, of any path in Windows

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

/// Where classes are registered: of the machine or of the current user.
const HKEY hives[] = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};
constexpr const wchar_t* classesName = L"Software\\Classes";
constexpr const wchar_t* classKeyName = L"Software\\Classes\\CLSID\\{95E42661-1916-4261-8FCC-6F598A19E544}";

/// The half of the registry that programs of the other width see. A system without one shows them the same.
constexpr REGSAM otherWidth = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

/// While it lives, what goes to the classes root of this process goes to the classes of `hive`.
class CClassesRoot {
public:
    CClassesRoot() = default;
    ~CClassesRoot() {
        if (key) RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        if (key) RegCloseKey(key);
    }
    CClassesRoot(const CClassesRoot&) = delete;
    CClassesRoot& operator=(const CClassesRoot&) = delete;

    /// Makes the classes if there are none.
    HRESULT Override(HKEY hive) {
        HKEY opened = nullptr;
        LSTATUS status = RegCreateKeyExW(hive, classesName, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &opened, nullptr);
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

/// A file as the disk knows it, whatever it is called.
class CFileIdentity {
public:
    explicit CFileIdentity(const wchar_t* path) {
        constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const HANDLE file = CreateFileW(path, FILE_READ_ATTRIBUTES, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return;
        isKnown = GetFileInformationByHandle(file, &information) != 0;
        CloseHandle(file);
    }

    bool IsSame(const CFileIdentity& other) const {
        return isKnown && other.isKnown && information.dwVolumeSerialNumber == other.information.dwVolumeSerialNumber &&
               information.nFileIndexHigh == other.information.nFileIndexHigh &&
               information.nFileIndexLow == other.information.nFileIndexLow;
    }

private:
    bool isKnown = false;
    BY_HANDLE_FILE_INFORMATION information = {};
};

/// Whether the text of a registration names the file of this module. A name without a folder is somebody else's: this
/// module writes its whole path.
bool NamesModule(std::wstring text, const std::wstring& module) {
    if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"') text = text.substr(1, text.size() - 2);
    if (CompareStringOrdinal(text.c_str(), -1, module.c_str(), -1, TRUE) == CSTR_EQUAL) return true;
    const bool isWholePath = text.size() > 2 && (text[1] == L':' || text[1] == L'\\' || text[1] == L'/');
    return isWholePath && CFileIdentity(text.c_str()).IsSame(CFileIdentity(module.c_str()));
}

enum class ClassOwner { Nobody, ThisModule, AnotherModule };

/// Which module the class in `hive` names. `view` is 0 or `otherWidth`.
ClassOwner FindOwner(HKEY hive, REGSAM view, const std::wstring& module) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive, classKeyName, 0, KEY_READ | view, &key) != ERROR_SUCCESS) return ClassOwner::Nobody;
    std::wstring file(longestPath, L'\0');
    auto size = static_cast<DWORD>((file.size() - 1) * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(key, L"InprocServer32", nullptr, RRF_RT_REG_SZ, nullptr, file.data(), &size);
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) return ClassOwner::AnotherModule;
    file.resize(file.find(L'\0'));
    return NamesModule(file, module) ? ClassOwner::ThisModule : ClassOwner::AnotherModule;
}

LPCOLESTR TextOf(const std::u16string& text) {
    return reinterpret_cast<LPCOLESTR>(text.c_str());
}

/// The text as it stands between the quotes of a registry script, where a quote that is part of it is doubled.
std::u16string ScriptText(std::u16string_view text) {
    std::u16string written;
    for (const char16_t character : text) written.append(character == u'\'' ? 2 : 1, character);
    return written;
}

/// Writes what the script says, or removes it, in the classes of `hive` alone.
HRESULT RunScript(bool isRegistering, HKEY hive, const std::u16string& path) {
    const CRegistrarLibrary library;
    CComRef<IRegistrar> registrar;
    HRESULT result = library.MakeRegistrar(registrar);
    if (SUCCEEDED(result)) result = registrar->AddReplacement(L"MODULE", TextOf(ScriptText(path)));
    if (SUCCEEDED(result)) result = registrar->AddReplacement(L"DLLVERSION", TextOf(ScriptText(TheModule().version)));
    CClassesRoot classes;
    if (SUCCEEDED(result)) result = classes.Override(hive);
    if (FAILED(result)) return result;
    return isRegistering ? registrar->ResourceRegister(TextOf(path), REGISTRY_SCRIPT, L"REGISTRY")
                         : registrar->ResourceUnregister(TextOf(path), REGISTRY_SCRIPT, L"REGISTRY");
}

/// Removes this module's registration from `hive`, if it is there. Both widths have the names in common: they stay with
/// the class of the other one.
HRESULT RemoveFrom(HKEY hive, const std::u16string& path) {
    const std::wstring module(path.begin(), path.end());
    if (FindOwner(hive, 0, module) != ClassOwner::ThisModule) return S_OK;
    const bool areNamesInUse = FindOwner(hive, otherWidth, module) == ClassOwner::AnotherModule;
    const HRESULT result =
        areNamesInUse ? HRESULT_FROM_WIN32(RegDeleteTreeW(hive, classKeyName)) : RunScript(false, hive, path);
    if (FAILED(result)) return result;
    return FindOwner(hive, 0, module) == ClassOwner::ThisModule ? E_ACCESSDENIED : S_OK;
}

/// Goes on behind a failure, which is the result then.
HRESULT RemoveEverywhere(const std::u16string& path) {
    HRESULT result = S_OK;
    for (const HKEY hive : hives) {
        const HRESULT removed = RemoveFrom(hive, path);
        if (SUCCEEDED(result)) result = removed;
    }
    return result;
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
        if (!isRegistering) return RemoveEverywhere(path);
        return RunScript(true, TheModule().isPerUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, path);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace reka
