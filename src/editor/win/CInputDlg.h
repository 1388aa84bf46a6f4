// SPDX-License-Identifier: MIT
// Asks for one line of text.

#pragma once

#include <string>

#include "editor/win/CDialog.h"
#include "platform/Holders.h"

namespace reka {

/// Checks nothing: whether the text will do is for its caller to say.
class CInputDlg : public CDialog {
public:
    /// `text` outlives the dialog.
    CInputDlg(std::u16string windowTitle, CBstr& text);

    /// True for OK: the text is that of the field, absent if it is empty. Otherwise it is as it was.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;

    std::u16string title;
    CBstr& inputText;
};

}  // namespace reka
