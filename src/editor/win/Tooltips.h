// SPDX-License-Identifier: MIT
// The texts that appear where the pointer rests on a control. A button with an icon shows its own text nowhere else.

#pragma once

#include <windows.h>

namespace reka {

/// Belongs to one opening of a dialog, which ends the system's window of the texts with its own.
class CTooltips {
public:
    /// While the pointer rests on `control` of `dialog`, the text that the control has now is shown beside it. Where
    /// the system refuses, nothing is.
    void Add(HWND dialog, HWND control);

private:
    HWND owner = nullptr;
    HWND window = nullptr;
};

}  // namespace reka
