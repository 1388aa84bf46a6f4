// SPDX-License-Identifier: MIT
// The system reads type libraries out of files alone, and may keep one from being deleted as long as it is in use. So
// each file has a name of its own, made of the process and the module, and what earlier processes had to leave behind
// goes when the next one is made.

#include "platform/win/TypesByFile.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

namespace reka {

namespace {

HRESULT LastError() {
    return HRESULT_FROM_WIN32(GetLastError());
}

/// Files that are in use refuse.
void DeleteLeftovers(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    const HANDLE first = FindFirstFileW((folder + L"REKA-types-*.tlb").c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) return;
    const std::unique_ptr<void, decltype(&FindClose)> search(first, &FindClose);
    do {
        DeleteFileW((folder + found.cFileName).c_str());
    } while (FindNextFileW(first, &found));
}

HRESULT WriteNew(const std::wstring& path, const void* bytes, DWORD size) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastError();
    DWORD written = 0;
    const HRESULT result = WriteFile(file, bytes, size, &written, nullptr) ? S_OK : LastError();
    CloseHandle(file);
    return SUCCEEDED(result) && written != size ? E_FAIL : result;
}

}  // namespace

HRESULT LoadTypesByFile(HMODULE module, CComRef<ITypeLib>& library) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(1), L"TYPELIB");
    const HGLOBAL block = resource ? LoadResource(module, resource) : nullptr;
    const void* const bytes = block ? LockResource(block) : nullptr;
    if (!bytes) return LastError();
    wchar_t folder[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH) return E_FAIL;
    DeleteLeftovers(folder);
    const std::wstring path = std::wstring(folder) + L"REKA-types-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                              std::to_wstring(reinterpret_cast<std::uintptr_t>(module)) + L".tlb";
    HRESULT result = WriteNew(path, bytes, SizeofResource(module, resource));
    if (SUCCEEDED(result)) result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Receive());
    DeleteFileW(path.c_str());
    return result;
}

}  // namespace reka
