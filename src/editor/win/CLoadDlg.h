// SPDX-License-Identifier: MIT
// The choice of a template to load.

#pragma once

#include <string>

#include "editor/TemplateNames.h"
#include "editor/win/CDialog.h"

namespace reka {

/// All parameters outlive it.
class CLoadDlg final : public CDialog {
public:
    CLoadDlg(ITemplateSource& templateSource, std::u16string& templateName, IUserMessages& ui);

    /// True for OK, with the answer in `templateName`.
    bool Run(HWND owner);

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;

private:
    ITemplateSource& templates;
    std::u16string& answer;
    CTemplateNames names;
};

}  // namespace reka
