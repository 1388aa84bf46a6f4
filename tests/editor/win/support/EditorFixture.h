// SPDX-License-Identifier: MIT
// The editor's windows over files in memory, with a definition that passes every check.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <commctrl.h>

#include "Driver.h"
#include "editor/EditShell.h"
#include "editor/EditorUi.h"
#include "editor/win/CEditorWindows.h"
#include "editor/win/resource.h"
#include "manager/ManagerTemplates.h"
#include "manager/StoreFixture.h"
#include "platform/SameText.h"

namespace reka::test {

constexpr std::uint32_t errorBox = messagestyle::ok | messagestyle::iconError;
constexpr std::uint32_t deleteBox =
    messagestyle::yesNo | messagestyle::iconQuestion | messagestyle::secondButtonIsDefault;

/// What a person does in a dialog that has just opened.
using Work = std::function<void(CUser&, const CDrivenWindow&)>;

/// Also true for a page of the shell, and for a message box.
inline bool IsDialogWindow(HWND window) {
    wchar_t name[20] = {};
    GetClassNameW(window, name, 20);
    return lstrcmpW(name, L"#32770") == 0;
}

class EditorFixture : public StoreFixture {
protected:
    /// Two of First make one of Second, by a reaction "R1".
    static std::unique_ptr<ReactionPackDefinition> MakeValid(const char16_t* name = u"Mine") {
        auto definition = MakePackage({u"First", u"Second"});
        definition->name = CBstr::Make(name);
        definition->description = CBstr::Make(u"About it");
        definition->compounds[0]->molecularWeight = 14.0;
        definition->compounds[1]->molecularWeight = 28.0;
        AddKinetic(*definition, u"R1", u"2*T").stoichiometry = {-2.0, 1.0};
        return definition;
    }

    /// The edit shell on a package, while `work` is done in it. True for OK.
    bool EditPackage(ReactionPackDefinition& edited, const Work& work) {
        CUser user([&](CUser& u) { work(u, u.WaitFor(u"Edit:")); });
        const bool isAccepted = CEditorWindows(nullptr).EditPackage(edited);
        user.Finish();
        return isAccepted;
    }
    /// The same on a template.
    bool EditTemplate(ReactionPackDefinition& edited, ITemplateSource& templates, const Work& work) {
        CUser user([&](CUser& u) { work(u, u.WaitFor(u"Edit:")); });
        CEditorWindows windows(nullptr);
        const bool isAccepted = windows.EditTemplate(edited, templates);
        user.Finish();
        return isAccepted;
    }
    /// The edit shell on `definition` with one of its pages shown, ended by Cancel.
    void OnPage(EditPage page, const Work& work) {
        EXPECT_FALSE(EditPackage(*definition, [&](CUser& u, const CDrivenWindow& shell) {
            work(u, OpenPage(u, shell, page));
            shell.Click(IDCANCEL);
        }));
    }

    /// Clicks on the tab of the page.
    static CDrivenWindow OpenPage(CUser& u, const CDrivenWindow& shell, EditPage page) {
        const HWND tabs = shell.Item(IDC_EDIT_TABS);
        RECT place = {};
        u.Send(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(page), reinterpret_cast<LPARAM>(&place));
        MapWindowPoints(tabs, nullptr, reinterpret_cast<POINT*>(&place), 2);
        u.ClickAt(MiddleOf(place));
        EXPECT_TRUE(shell.HasFocus(IDC_EDIT_TABS));
        return VisiblePage(u, shell);
    }
    /// On the test's thread, inside a call that lets messages in: what a user would do with that dialog meanwhile,
    /// pressing these buttons and then the one of its frame.
    static void PressMeanwhile(HWND dialog, std::initializer_list<int> buttons) {
        for (const int button : buttons) {
            PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button),
                         reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
        }
        PostMessageW(dialog, WM_CLOSE, 0, 0);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    static CDrivenWindow VisiblePage(CUser& u, const CDrivenWindow& shell) {
        for (HWND child = GetWindow(shell.Get(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (IsDialogWindow(child) && IsWindowVisible(child)) return {u, child};
        }
        u.GiveUp("no page is shown");
    }
    /// Makes the user's file hold these definitions.
    void PutDefinitions(const std::vector<const ReactionPackDefinition*>& definitions) {
        TemplateStore stored;
        for (const ReactionPackDefinition* source : definitions) {
            stored.templates.push_back(std::make_unique<ReactionPackDefinition>(nullptr));
            stored.templates.back()->CopyFrom(*source);
        }
        stored.StoreTemplates();
        files.operations.clear();
    }
    std::unique_ptr<ReactionPackDefinition> FromFile(std::u16string_view name) {
        TemplateStore stored;
        stored.LoadTemplates();
        for (auto& candidate : stored.templates) {
            if (SameText(candidate->name.View(), name)) return std::move(candidate);
        }
        return nullptr;
    }
    Names NamesInFile() {
        TemplateStore stored;
        stored.LoadTemplates();
        Names names;
        for (const auto& found : stored.templates) names.emplace_back(found->name.View());
        return names;
    }
    bool IsFileWritten() const {
        const std::string line = Line("rename", temporaryFile, userFile);
        for (const std::string& operation : files.operations) {
            if (operation == line) return true;
        }
        return false;
    }

    std::unique_ptr<ReactionPackDefinition> definition = MakeValid();
};

}  // namespace reka::test
