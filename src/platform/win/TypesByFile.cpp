// SPDX-License-Identifier: MIT
// The system reads type libraries out of files alone, and may keep one from being deleted as long as it is in use. So
// each file has a name of its own, and what earlier processes had to leave behind goes when the next one is made.
// Nobody deletes one before it is loaded: it is held open from the moment that it is made.

#include "platform/win/TypesByFile.h"

#include <windows.h>

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

using Handle = std::unique_ptr<void, decltype(&CloseHandle)>;

Handle Open(const std::wstring& path, DWORD access, DWORD shared, DWORD disposition) {
    const HANDLE file =
        CreateFileW(path.c_str(), access, shared, nullptr, disposition, FILE_ATTRIBUTE_TEMPORARY, nullptr);
    return {file == INVALID_HANDLE_VALUE ? nullptr : file, &CloseHandle};
}

/// Makes a file of the bytes under a name that is free, which gets into `path`, and holds it against its deletion as
/// long as the result lives; null with the reason in `result`, and without a
/// path where no file was made.
Handle MakeFile(const std::wstring& start, const void* bytes, DWORD size, std::wstring& path, HRESULT& result) {
    constexpr int triedNames = 100;
    Handle written(nullptr, &CloseHandle);
    for (int number = 0; !written && number < triedNames; ++number) {
        path = start + std::to_wstring(number) + L".tlb";
        written = Open(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW);
        result = written ? S_OK : LastError();
        if (result != HRESULT_FROM_WIN32(ERROR_FILE_EXISTS)) break;
    }
    if (!written) {
        path.clear();  // the last one tried is somebody else's
        return written;
    }
    DWORD count = 0;
    result = WriteFile(written.get(), bytes, size, &count, nullptr) ? S_OK : LastError();
    if (SUCCEEDED(result) && count != size) result = E_FAIL;
    if (FAILED(result)) return {nullptr, &CloseHandle};
    Handle held = Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    result = held ? S_OK : LastError();
    return held;
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
    const std::wstring start = std::wstring(folder) + L"REKA-types-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    std::wstring path;
    HRESULT result = S_OK;
    {
        const Handle held = MakeFile(start, bytes, SizeofResource(module, resource), path, result);
        if (held) result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Receive());
    }
    if (!path.empty()) DeleteFileW(path.c_str());
    return result;
}

}  // namespace reka
