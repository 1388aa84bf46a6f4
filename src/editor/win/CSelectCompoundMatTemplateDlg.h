// SPDX-License-Identifier: MIT
// Asks where compounds come from: the compound file, or a material template of the simulator.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "editor/CompoundsOfMaterial.h"
#include "editor/win/CDialog.h"

namespace reka {

class CSelectCompoundMatTemplateDlg : public CDialog {
public:
    /// Both outlive the dialog.
    CSelectCompoundMatTemplateDlg(const std::vector<std::u16string>& names, std::int32_t& selected);

    /// True for OK, with the index of the template, -1 for the file. Otherwise that number is as it was.
    bool Run(HWND owner) { return RunModal(owner) == IDOK; }

private:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    void TakeSource(bool isFromDatabase);
    void TakeSelection();
    void Accept();

    const std::vector<std::u16string>& templateNames;
    std::int32_t& selectedTemplate;
    CCompoundSourceChoice choice;
};

}  // namespace reka
