// SPDX-License-Identifier: MIT
// The size of what is in a dialog, for one that moves to a monitor of another scale. All places and fonts come from
// those that the dialog was made with, so that no rounding adds up as it moves to and fro.

#pragma once

#include <vector>

#include <windows.h>

#include "editor/DialogLayout.h"

namespace reka {

/// So many pixels at one number of dots per inch, at another one; rounded.
inline int ScaleBetween(int pixels, int fromDpi, int toDpi) {
    return MulDiv(pixels, toDpi, fromDpi);
}
/// The size is rounded up: a text just fits into a label, and a font grows in whole pixels too.
ControlPlace ScaleBetween(const ControlPlace& place, int fromDpi, int toDpi);

/// The height that the system wants to be told for a control that is to look that high: that of a box with a list
/// includes the list when it is open.
int HeightToSet(HWND control, int height);

class CDialogScale {
public:
    CDialogScale() = default;
    ~CDialogScale();
    CDialogScale(const CDialogScale&) = delete;
    CDialogScale& operator=(const CDialogScale&) = delete;

    /// The dialog has just been made, with all of its controls but pages. Without memory for them it keeps its scale.
    void Begin(HWND madeDialog);
    /// The window is gone.
    void End();

    /// Dots per inch that the controls and their fonts have, those they were made with, and those of the window.
    int Dpi() const { return dpi; }
    int MadeDpi() const { return madeDpi; }

    /// Gives the controls that the dialog was made with the places and the font for that many dots per inch, and lists
    /// their columns. False if they have them already.
    bool ScaleTo(int newDpi);

private:
    struct MadeControl {
        HWND control;
        ControlPlace place;  // with the height to set
    };
    void NoteControls();
    void ScaleFont();
    void ScaleLists(int oldDpi) const;

    HWND dialog = nullptr;
    int madeDpi = referenceDpi;
    int dpi = referenceDpi;
    std::vector<MadeControl> made;
    LOGFONTW madeFont = {};
    bool hasMadeFont = false;
    HFONT font = nullptr;  // once it isn't the one that the dialog was made with
};

}  // namespace reka
