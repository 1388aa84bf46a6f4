// SPDX-License-Identifier: MIT
// The labels are made outside of any dialog of the component's, so what is measured is the system's alone.

#include "soak/win/Labels.h"

#include "editor/win/resource.h"
#include "soak/win/Counts.h"

namespace soak {

namespace {

constexpr int measured = 200;

void MakeLabels() {
    for (int i = 0; i < measured; ++i) {
        const HWND label =
            CreateWindowExW(0, L"STATIC", L"label", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        DestroyWindow(label);
    }
}

BOOL CALLBACK CountLabel(HWND window, LPARAM count) {
    wchar_t name[20] = {};
    GetClassNameW(window, name, 20);
    const bool isIcon = (GetWindowLongPtrW(window, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
    if (lstrcmpiW(name, L"Static") == 0 && !isIcon) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

}  // namespace

KeptOfLabel MeasureKeptOfLabel(const std::wstring& module) {
    ACTCTXW source = {};
    source.cbSize = sizeof source;
    source.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    source.lpSource = module.c_str();
    source.lpResourceName = MAKEINTRESOURCEW(IDM_CONTROLS);
    const HANDLE context = CreateActCtxW(&source);
    ULONG_PTR cookie = 0;
    if (context == INVALID_HANDLE_VALUE || !ActivateActCtx(context, &cookie)) return {};
    MakeLabels();  // what the system keeps once
    const HeapCounts before = CountHeap();
    MakeLabels();
    const HeapCounts after = CountHeap();
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    return {(after.blocks - before.blocks) / measured, (after.bytes - before.bytes) / measured};
}

int CountLabels(HWND window) {
    int count = 0;
    EnumChildWindows(window, CountLabel, reinterpret_cast<LPARAM>(&count));
    return count;
}

}  // namespace soak
