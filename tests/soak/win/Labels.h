// SPDX-License-Identifier: MIT
// What the system itself keeps of the labels of dialogs. Wine's version 6 of the common controls frees nothing of a
// label that has gone, and a dialog has many: without that taken off, nothing about a dialog could be said.

#pragma once

#include <windows.h>

#include <string>

namespace soak {

struct KeptOfLabel {
    double blocks = 0;
    double bytes = 0;
};

/// What stays on the heap of each label that has come and gone, with the controls that the manifest of `module` asks
/// for. Measured, and 0 where the system frees them.
KeptOfLabel MeasureKeptOfLabel(const std::wstring& module);

/// The labels inside a window, at any depth. An icon of a message box isn't one.
int CountLabels(HWND window);

}  // namespace soak
