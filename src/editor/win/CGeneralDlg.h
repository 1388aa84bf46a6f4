// The general page of the edit shell.

#pragma once

#include "editor/GeneralPage.h"
#include "editor/win/CDialog.h"

namespace reka {

/// Shows `filling` as it opens. Nothing is written back while the user types: the shell reads the fields.
class CGeneralDlg final : public CDialog {
public:
    explicit CGeneralDlg(const GeneralPageFields& filling);

    /// What the page shows now.
    GeneralPageFields Fields() const;

protected:
    void OnInit() override;
    void OnCommand(int control, int notification) override;
    void OnSize(int width, int height) override;

private:
    const GeneralPageFields& initial;
};

}  // namespace reka
