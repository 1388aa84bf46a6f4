// SPDX-License-Identifier: MIT
// What stands in a dialog: each control with its number, class, label and state, and what holds for every dialog.

#pragma once

#include <string>
#include <vector>

#include "Driver.h"

namespace reka::test {

/// The number of a label that nothing refers to.
constexpr int anyLabel = -1;

struct ExpectedControl {
    int control;
    const char16_t* windowClass;
    const char16_t* label;  // null where the text isn't looked at
    DWORD style = 0;        // bits that are set
    DWORD absentStyle = 0;  // bits that aren't
    bool isEnabled = true;
    bool isVisible = true;
};

/// The controls in the order of the tab key, labels in front of what they name. None may be missing, and none more.
using ExpectedControls = std::vector<ExpectedControl>;

/// Checks the direct children of `parent`: a dialog, or a page inside one.
void CheckControls(CUser& user, HWND parent, const ExpectedControls& expected);

/// Checks what a person sees of all dialogs: visible controls don't overlap and lie inside, no label is cut off, no
/// letter stands for two controls, and the tab key reaches each control that it should. Pages inside count as a part.
void CheckLayout(CUser& user, HWND dialog);

}  // namespace reka::test
