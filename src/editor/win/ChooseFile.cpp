// SPDX-License-Identifier: MIT
// The library of the dialog is loaded when it is first asked for: it takes long, and few who load the module open a
// file. It stays then, since the system's own parts go on using it.

#include "editor/win/ChooseFile.h"

#include <algorithm>
#include <new>

#include <cderr.h>
#include <commdlg.h>

#include "editor/win/WindowText.h"
#include "platform/win/SystemModules.h"

namespace reka {

namespace {

struct DialogFunctions {
    BOOL(WINAPI* open)(OPENFILENAMEW* dialog) = nullptr;
    DWORD(WINAPI* extendedError)() = nullptr;
};

template <class Function>
void Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

bool LoadFunctions(DialogFunctions& functions) {
    const HMODULE library = LoadSystemLibrary(L"comdlg32.dll");
    if (!library) return false;
    Find(library, "GetOpenFileNameW", functions.open);
    Find(library, "CommDlgExtendedError", functions.extendedError);
    return functions.open && functions.extendedError;
}

/// The process is back in the folder that it works in when this ends: the dialog may take it along as the user looks
/// for a file.
class CKeptFolder {
public:
    CKeptFolder() : folder(GetCurrentDirectoryW(0, nullptr), u'\0') {
        const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), Characters());
        if (length >= folder.size()) folder.clear();  // another thread has changed it meanwhile
    }
    ~CKeptFolder() {
        if (!folder.empty()) SetCurrentDirectoryW(Characters());
    }
    CKeptFolder(const CKeptFolder&) = delete;
    CKeptFolder& operator=(const CKeptFolder&) = delete;

private:
    wchar_t* Characters() { return reinterpret_cast<wchar_t*>(folder.data()); }

    std::u16string folder;  // with a terminator; empty if unknown
};

/// Label and pattern in turn, each with its end; the end of the whole is that of the string.
std::u16string JoinFilters(const OpenFileRequest& request) {
    std::u16string joined;
    for (const FileFilter& filter : request.filters) {
        joined.append(filter.label).push_back(u'\0');
        joined.append(filter.pattern).push_back(u'\0');
    }
    return joined;
}

}  // namespace

OpenFileAnswer ChooseFile(HWND owner, const OpenFileRequest& request, std::u16string& path) try {
    const CKeptFolder folder;
    const std::u16string filters = JoinFilters(request);
    std::u16string buffer(request.longestPath + 1, u'\0');
    DialogFunctions functions;
    if (!LoadFunctions(functions)) return OpenFileAnswer::Cancelled;
    if (path.size() <= request.longestPath) std::copy(path.begin(), path.end(), buffer.begin());
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = SystemText(filters);
    dialog.lpstrFile = reinterpret_cast<wchar_t*>(buffer.data());
    dialog.nMaxFile = static_cast<DWORD>(buffer.size());
    dialog.lpstrTitle = SystemText(request.title);
    dialog.lpstrDefExt = SystemText(request.defaultExtension);
    dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    bool isChosen = functions.open(&dialog) != FALSE;
    if (!isChosen && functions.extendedError() == FNERR_INVALIDFILENAME) {  // the path to begin with is none
        buffer.front() = u'\0';
        isChosen = functions.open(&dialog) != FALSE;
    }
    if (!isChosen) return OpenFileAnswer::Cancelled;
    path = buffer.c_str();
    return OpenFileAnswer::Chosen;
} catch (const std::bad_alloc&) {
    return OpenFileAnswer::NoMemory;
}

}  // namespace reka
