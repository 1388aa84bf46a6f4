// SPDX-License-Identifier: MIT
// The page of the help for each dialog.

#pragma once

#include <windows.h>

namespace reka {

/// The page about the dialog of that template, as a topic of the help file; null if there is none.
const char16_t* HelpPageOf(int dialogTemplate);

/// Shows that page above `owner`, or tells the user that it can't be shown.
void ShowHelpPage(HWND owner, int dialogTemplate);

}  // namespace reka
