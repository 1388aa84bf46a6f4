// SPDX-License-Identifier: MIT
// The name of the template to store under: that of one that there is, or a new one.

#pragma once

#include <string>

#include "editor/TemplateNames.h"
#include "editor/win/CDialog.h"

namespace reka {

/// All parameters outlive it.
class CStoreDlg final : public CDialog {
public:
    CStoreDlg(ITemplateSource& templateSource, std::u16string& templateName, IUserMessages& ui);

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
