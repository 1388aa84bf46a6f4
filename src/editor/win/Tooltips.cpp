// SPDX-License-Identifier: MIT
// One window of the system's serves all controls of a dialog. It looks at their mouse messages itself, so a dialog has
// nothing to pass on; a disabled control gets none, and shows no text.

#include "editor/win/Tooltips.h"

#include <commctrl.h>

#include "editor/win/WindowText.h"
#include "platform/win/SystemModules.h"

namespace reka {

void CTooltips::Add(HWND dialog, HWND control) {
    if (owner != dialog) {
        owner = dialog;
        window = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0,
                                 0, 0, dialog, nullptr, ModuleHandle(), nullptr);
    }
    std::u16string text = WindowText(control);
    TTTOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;  // which the controls of every version take
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = dialog;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = reinterpret_cast<wchar_t*>(text.data());
    SendMessageW(window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace reka
