// SPDX-License-Identifier: MIT
// Registry, files and modules of this Windows. A half of the registry is chosen by the access flags, so that a program
// of either width reads both.

#include "CWindowsComputer.h"

#include <shlobj.h>
#include <windows.h>

#include <array>

#include "LongPath.h"
#include "capeopen/ErrorTexts.h"
#include "packagetext/ReadWhole.h"
#include "platform/Files.h"
#include "text/Utf8.h"

namespace rekadoctor {

namespace {

constexpr Width ownWidth = sizeof(void*) == 8 ? Width::Bits64 : Width::Bits32;
constexpr std::size_t longestPath = 32768;  // characters, of any path in Windows

std::wstring Wide(const std::string& text) {
    const std::u16string wide = reka::Utf16FromUtf8(text);
    return {wide.begin(), wide.end()};
}

std::string Narrow(const std::wstring& text) {
    return reka::Utf8FromUtf16(std::u16string(text.begin(), text.end()));
}

std::string LastErrorText() {
    return reka::Utf8FromUtf16(reka::GetSystemErrorText(HRESULT_FROM_WIN32(GetLastError())));
}

class CRegistryKey {
public:
    CRegistryKey(RegistryPlace place, const std::string& name) {
        const REGSAM view = place.width == Width::Bits64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
        const HKEY root = place.owner == Owner::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        if (RegOpenKeyExW(root, Wide(name).c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) key = nullptr;
    }
    CRegistryKey(const CRegistryKey&) = delete;
    CRegistryKey& operator=(const CRegistryKey&) = delete;
    ~CRegistryKey() {
        if (key) RegCloseKey(key);
    }

    HKEY Get() const { return key; }

private:
    HKEY key = nullptr;
};

/// With the variables of the environment put in, as the component system does it.
std::wstring Expanded(const std::wstring& text) {
    std::wstring expanded(longestPath, L'\0');
    const DWORD length = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    if (length == 0 || length > expanded.size()) return text;
    expanded.resize(length - 1);
    return expanded;
}

bool IsElevated() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
    TOKEN_ELEVATION elevation = {};
    DWORD size = 0;
    const bool isKnown = GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size) != 0;
    CloseHandle(token);
    return isKnown && elevation.TokenIsElevated != 0;
}

bool IsWindows64Bit() {
    if (ownWidth == Width::Bits64) return true;
    BOOL isGuest = FALSE;
    return IsWow64Process(GetCurrentProcess(), &isGuest) && isGuest;
}

std::string ModulePath(HMODULE module) {
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return Narrow(path);
}

}  // namespace

std::string FileOfAddress(const void* address) {
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, static_cast<const wchar_t*>(address), &module)) return {};
    return ModulePath(module);
}

Surroundings CWindowsComputer::Describe() {
    Surroundings surroundings;
    surroundings.ownWidth = ownWidth;
    surroundings.isWindows64Bit = IsWindows64Bit();
    surroundings.isElevated = IsElevated();
    const HMODULE systemModule = GetModuleHandleW(L"ntdll.dll");
    surroundings.isWine = systemModule && GetProcAddress(systemModule, "wine_get_version") != nullptr;
    const std::string program = ModulePath(nullptr);
    surroundings.programFolder = program.substr(0, program.find_last_of('\\'));
    std::array<wchar_t, MAX_PATH> folder = {};
    const UINT length = GetSystemWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    surroundings.windowsFolder = length < folder.size() ? Narrow({folder.data(), length}) : "C:\\Windows";
    return surroundings;
}

bool CWindowsComputer::HasKey(RegistryPlace place, const std::string& key) {
    return CRegistryKey(place, key).Get() != nullptr;
}

std::optional<std::string> CWindowsComputer::ReadText(RegistryPlace place, const std::string& key,
                                                      const std::string& value) {
    const CRegistryKey opened(place, key);
    if (!opened.Get()) return std::nullopt;
    const std::wstring name = Wide(value);
    DWORD type = 0;
    DWORD size = 0;  // bytes
    LSTATUS status = RegQueryValueExW(opened.Get(), name.c_str(), nullptr, &type, nullptr, &size);
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return std::nullopt;
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');  // the end may be missing in the registry
    size = static_cast<DWORD>((text.size() - 1) * sizeof(wchar_t));
    status = RegQueryValueExW(opened.Get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
    if (status != ERROR_SUCCESS) return std::nullopt;
    text.resize(text.find(L'\0'));
    return Narrow(type == REG_EXPAND_SZ ? Expanded(text) : text);
}

bool CWindowsComputer::HasFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(LongPath(path)).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::optional<std::vector<std::uint8_t>> CWindowsComputer::ReadFileHead(const std::string& path, std::size_t size) {
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(Wide(LongPath(path)).c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    std::vector<std::uint8_t> head(size);
    DWORD got = 0;
    const bool isRead = ::ReadFile(file, head.data(), static_cast<DWORD>(size), &got, nullptr) != 0;
    CloseHandle(file);
    if (!isRead) return std::nullopt;
    head.resize(got);
    return head;
}

FileContent CWindowsComputer::ReadFile(const std::string& path) {
    const std::u16string name = reka::Utf16FromUtf8(path);
    FileContent content;
    content.isThere = !reka::Files().IsAbsent(name);
    if (!content.isThere) return content;
    content.lastWrite = reka::Files().LastWriteTime(name);
    const auto file = reka::Files().OpenForReading(name);
    if (!file) {
        content.reason = LastErrorText();
        return content;
    }
    content.bytes = packagetext::ReadWhole(*file);
    if (!file->HasFailed()) return content;
    content.bytes.reset();  // part of a file would pass for a damaged one
    content.reason = LastErrorText();
    return content;
}

std::string CWindowsComputer::FindUserFolder() {
    std::array<wchar_t, MAX_PATH> folder = {};
    // Without a look whether it is there, which would make it.
    const int which = CSIDL_APPDATA | CSIDL_FLAG_DONT_VERIFY;
    if (FAILED(SHGetFolderPathW(nullptr, which, nullptr, SHGFP_TYPE_CURRENT, folder.data()))) return {};
    std::string path = Narrow(folder.data());
    if (path.ends_with('\\')) path.pop_back();
    return path;
}

std::string CWindowsComputer::FindModule(const std::string& name) {
    std::wstring folders(longestPath, L'\0');
    folders.resize(GetSystemDirectoryW(folders.data(), MAX_PATH));
    std::wstring path(longestPath, L'\0');
    path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));
    folders += L";" + Wide(Describe().windowsFolder) + L";" + path;
    std::wstring found(longestPath, L'\0');
    const DWORD length = SearchPathW(folders.c_str(), Wide(name).c_str(), L".dll", static_cast<DWORD>(found.size()),
                                     found.data(), nullptr);
    if (length == 0 || length >= found.size()) return {};
    found.resize(length);
    return Narrow(found);
}

Loading CWindowsComputer::Load(const std::string& path) {
    Loading loading;
    // No box of the system's may stop a program that is to tell what is wrong.
    const UINT oldMode = SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // The path is taken as it is, since the component system does so too.
    const HMODULE module = LoadLibraryExW(Wide(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module) loading.reason = LastErrorText();
    SetErrorMode(oldMode);
    if (!module) return loading;
    loading.isLoaded = true;
    for (const char* name : {"DllGetClassObject", "DllCanUnloadNow", "DllRegisterServer", "DllUnregisterServer"}) {
        if (!GetProcAddress(module, name)) loading.missingExports.emplace_back(name);
    }
    FreeLibrary(module);
    return loading;
}

}  // namespace rekadoctor
