// SPDX-License-Identifier: MIT
// Who presses F1 asks about what he has before him: a page of the shell has its own, and the shell is asked about where
// the keyboard is in its tabs or buttons.

#include "editor/win/HelpPages.h"

#include "editor/HelpFile.h"
#include "editor/win/HtmlHelp.h"
#include "editor/win/resource.h"

namespace reka {

namespace {

struct HelpPage {
    int dialogTemplate;
    const char16_t* topic;
};

constexpr HelpPage helpPages[] = {
    {IDD_EDIT, u"REKA/editor.htm"},
    {IDD_GENERAL, u"REKA/general-page.htm"},
    {IDD_COMPOUNDS, u"REKA/compounds-page.htm"},
    {IDD_REACTIONS, u"REKA/reactions-page.htm"},
    {IDD_MANAGER, u"REKA/template-manager.htm"},
    {IDD_ADD_COMPOUNDS, u"REKA/pcd-file.htm"},
    {IDD_RATE_WIZARD, u"REKA/rate-wizard.htm"},
    {IDD_COMPOUND_SOURCE, u"REKA/material-template.htm"},
    {IDD_MATERIAL_COMPOUNDS, u"REKA/material-template.htm"},
    {IDD_EXPRESSION, u"REKA/expression-editor.htm"},
    {IDD_INPUT, u"REKA/reactions-page.htm"},  // a reaction's id
    {IDD_LOAD_TEMPLATE, u"REKA/load-store.htm"},
    {IDD_STORE_TEMPLATE, u"REKA/load-store.htm"},
};

}  // namespace

const char16_t* HelpPageOf(int dialogTemplate) {
    for (const HelpPage& page : helpPages) {
        if (page.dialogTemplate == dialogTemplate) return page.topic;
    }
    return nullptr;
}

void ShowHelpPage(HWND owner, int dialogTemplate) {
    const char16_t* const topic = HelpPageOf(dialogTemplate);
    if (topic && !HtmlHelp().Show(owner, HelpFilePath(), topic)) TellHelpIsMissing(UserMessages());
}

}  // namespace reka
