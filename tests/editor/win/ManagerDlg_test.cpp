// SPDX-License-Identifier: MIT
// The dialog of the templates as a person sees it.

#include <gtest/gtest.h>

#include <utility>

#include "ControlTable.h"
#include "EditorFixture.h"
#include "Icons.h"
#include "capeopen/CapeOpenInterfaces.h"
#include "manager/CreateReactionPackManager.h"

namespace reka::test {
namespace {

constexpr const char16_t* managerTitle = u"REKA Reaction Numerics:";

class ManagerDialog : public EditorFixture {
protected:
    /// `Edit` of a manager object, while `work` is done in its dialog, which is then closed.
    void Manage(const Work& work) {
        void* made = nullptr;
        ASSERT_EQ(CreateReactionPackManager(ICapeUtilities::iid, &made), S_OK);
        CComRef<ICapeUtilities> manager;
        manager.Reset(static_cast<ICapeUtilities*>(made));
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(managerTitle);
            work(u, dialog);
            if (!dialog.IsGone()) dialog.Click(IDOK);
        });
        EXPECT_EQ(manager->Edit(), S_OK);
        user.Finish();
    }
    void PutTemplates(const Names& names) {
        std::vector<std::unique_ptr<ReactionPackDefinition>> made;
        std::vector<const ReactionPackDefinition*> definitions;
        for (const std::u16string& name : names) {
            made.push_back(MakeValid(name.c_str()));
            definitions.push_back(made.back().get());
        }
        PutDefinitions(definitions);
    }
    static Names Listed(const CDrivenWindow& dialog) {
        Names names;
        for (int i = 0; i < dialog.ListCount(IDC_MANAGER_LIST); ++i) {
            names.push_back(dialog.ListText(IDC_MANAGER_LIST, i));
        }
        return names;
    }
    static ExpectedBox DeleteQuestion(const std::u16string& name) {
        return {u"Delete Reaction Package Definition:",
                u"Are you sure you want to permanently delete the reaction package definition " + name + u"?",
                deleteBox};
    }
    static ExpectedBox BackQuestion() {
        return {
            u"Deleted templates:",
            u"Deleted templates stand in the file until this window is closed, and come back now; do you want to go "
            u"on?",
            deleteBox};
    }
    static ExpectedBox NotInRow(const std::u16string& name) {
        return {u"Error:",
                u"The template \"" + name +
                    u"\" does not stand in its row any more: close this window first, and open it again.",
                errorBox};
    }
    /// Makes what a new template needs, in the open shell, but for its name.
    static void LoadTemplate(CUser& u, const CDrivenWindow& shell) {
        shell.Click(IDC_EDIT_LOAD);
        const CDrivenWindow names = u.WaitFor(u"Load from reaction package template:");
        names.Click(IDOK);
        names.WaitUntilGone();
    }
};

TEST_F(ManagerDialog, HasItsControls) {
    PutTemplates({u"B", u"A"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        CheckControls(u, dialog.Get(),
                      {{anyLabel, u"Static", u"Templates:", 0, WS_VISIBLE, true, false},
                       {IDC_MANAGER_LIST, u"ListBox", nullptr, LBS_NOTIFY | WS_TABSTOP, LBS_SORT},
                       {IDC_MANAGER_CREATE, u"Button", u"&Create template", WS_TABSTOP},
                       {IDC_MANAGER_EDIT, u"Button", u"&Edit template", WS_TABSTOP, 0, false},
                       {IDC_MANAGER_DELETE, u"Button", u"&Delete template", WS_TABSTOP, 0, false},
                       {IDOK, u"Button", u"&Close", BS_DEFPUSHBUTTON | WS_TABSTOP}});
        EXPECT_EQ(Listed(dialog), (Names{u"B", u"A"}));
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        ExpectIcon(u.Send(dialog.Get(), WM_GETICON, ICON_BIG), IDI_COMPONENT, SM_CXICON);
        ExpectIcon(u.Send(dialog.Get(), WM_GETICON, ICON_SMALL), IDI_COMPONENT, SM_CXSMICON);
        dialog.TakePicture("107");
    });
}

TEST_F(ManagerDialog, IsLaidOutAtEverySize) {
    PutTemplates({u"B", u"A"});
    Manage([](CUser&, const CDrivenWindow& dialog) {
        const auto offset = [&](int control) {  // of the right lower corner from that of the dialog
            const RECT place = PlaceOf(dialog.Item(control));
            const RECT frame = PlaceOf(dialog.Get());
            return std::pair(frame.right - place.right, frame.bottom - place.bottom);
        };
        const auto close = offset(IDOK);
        const auto list = offset(IDC_MANAGER_LIST);
        const RECT create = PlaceOf(dialog.Item(IDC_MANAGER_CREATE));
        const RECT before = PlaceOf(dialog.Get());
        dialog.DragCorner(-50, -50);
        const RECT after = PlaceOf(dialog.Get());
        EXPECT_TRUE(EqualRect(&before, &after));
        dialog.DragCorner(90, 70);
        EXPECT_EQ(offset(IDOK), close);
        EXPECT_EQ(offset(IDC_MANAGER_LIST), list);
        const RECT moved = PlaceOf(dialog.Item(IDC_MANAGER_CREATE));
        EXPECT_EQ(moved.right, create.right + 90);
        EXPECT_EQ(moved.top, create.top);
        dialog.TakePicture("107-large");
    });
}

TEST_F(ManagerDialog, OffersCreateAndCloseAloneWithoutTemplates) {
    Manage([](CUser&, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.ListCount(IDC_MANAGER_LIST), 0);
        EXPECT_TRUE(dialog.IsEnabled(IDC_MANAGER_CREATE));
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_EDIT));
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_DELETE));
        EXPECT_TRUE(dialog.IsEnabled(IDOK));
        dialog.TakePicture("107-empty");
    });
    EXPECT_TRUE(IsFileWritten());
}

TEST_F(ManagerDialog, ShowsNoTemplateOfADamagedFile) {
    Put(systemFile, FileOf({u"System"}), 50);
    Put(userFile, {1, 2, 3}, 100);
    Manage([](CUser&, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.ListCount(IDC_MANAGER_LIST), 0);
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_EDIT));
    });
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(NamesInFile(), Names{});
}

TEST_F(ManagerDialog, ScrollsToTheEndOfLongNames) {
    const std::u16string longName(300, u'n');
    PutTemplates({u"A", longName});
    Manage([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.ListText(IDC_MANAGER_LIST, 1), longName);
        const HWND list = dialog.Item(IDC_MANAGER_LIST);
        RECT client = {};
        GetClientRect(list, &client);
        EXPECT_GT(u.Send(list, LB_GETHORIZONTALEXTENT), client.right);
        EXPECT_NE(GetWindowLongW(list, GWL_STYLE) & WS_HSCROLL, 0);
        dialog.TakePicture("107-long");
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(longName), IDYES);
        EXPECT_LT(u.Send(list, LB_GETHORIZONTALEXTENT), client.right);
    });
}

TEST_F(ManagerDialog, ClosesByEscapeEnterAndTheFrame) {
    for (const int way : {0, 1, 2, 3}) {
        Manage([way](CUser& u, const CDrivenWindow& dialog) {
            if (way == 0) u.Press(VK_ESCAPE);
            if (way == 1) u.Press(VK_RETURN);
            if (way == 2) u.Press(VK_F4, {VK_MENU});
            if (way == 3) dialog.Click(IDOK);
            dialog.WaitUntilGone();
        });
    }
}

TEST_F(ManagerDialog, EnablesItsButtonsForASelectedTemplate) {
    PutTemplates({u"A", u"B"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        EXPECT_TRUE(dialog.IsEnabled(IDC_MANAGER_EDIT));
        EXPECT_TRUE(dialog.IsEnabled(IDC_MANAGER_DELETE));
        u.Press(VK_UP);
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), 0);
        EXPECT_TRUE(dialog.IsEnabled(IDC_MANAGER_EDIT));
    });
}

TEST_F(ManagerDialog, CreatesATemplate) {
    PutTemplates({u"A"});
    Manage([this](CUser& u, const CDrivenWindow& dialog) {
        u.Press('T', {VK_MENU});  // no letter of any button
        EXPECT_EQ(u.CountDialogs(), 1);
        dialog.Click(IDC_MANAGER_CREATE);
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        EXPECT_EQ(GetWindow(shell.Get(), GW_OWNER), dialog.Get());
        EXPECT_FALSE(IsWindowEnabled(dialog.Get()));
        EXPECT_FALSE(shell.IsVisible(IDC_EDIT_STORE));
        EXPECT_EQ(VisiblePage(u, shell).Text(IDC_GENERAL_NAME), u"");
        LoadTemplate(u, shell);
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"a");
        shell.Click(IDOK);
        u.Answer({u"Error:", u"Reaction package name \"a\"is already used, and must be unique", errorBox}, IDOK);
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"New one");
        shell.Click(IDOK);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"New one"}));
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        EXPECT_EQ(NamesInFile(), (Names{u"A", u"New one"}));  // before the dialog is closed
    });
    EXPECT_EQ(FromFile(u"New one")->reactions.size(), 1U);
}

TEST_F(ManagerDialog, CreatesNothingAfterCancel) {
    PutTemplates({u"A"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDC_MANAGER_CREATE);
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"New one");
        shell.Click(IDCANCEL);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), Names{u"A"});
    });
    EXPECT_EQ(NamesInFile(), Names{u"A"});
}

TEST_F(ManagerDialog, EditsATemplate) {
    PutTemplates({u"A", u"B", u"C"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        u.Press('E', {VK_MENU});
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        EXPECT_EQ(VisiblePage(u, shell).Text(IDC_GENERAL_NAME), u"B");
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"b");  // its own name in another letter
        OpenPage(u, shell, EditPage::Reactions).Fill(IDC_REACTIONS_RATE, u"7*T");
        shell.Click(IDOK);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"b", u"C"}));
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_EDIT));
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_DELETE));
        EXPECT_NE(u.Focus(), nullptr);  // the button that had the keyboard can't keep it
        EXPECT_TRUE(IsWindowEnabled(u.Focus()));
    });
    EXPECT_EQ(FromFile(u"b")->reactions[0]->rateEquation, u"7*T");
}

TEST_F(ManagerDialog, EditsATemplateByADoubleClickOnItsRow) {
    PutTemplates({u"A", u"B"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 1, 2);
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        EXPECT_EQ(VisiblePage(u, shell).Text(IDC_GENERAL_NAME), u"B");
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Bb");
        shell.Click(IDOK);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"Bb"}));
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        const RECT list = PlaceOf(dialog.Item(IDC_MANAGER_LIST));
        u.ClickAt({list.left + 20, list.bottom - 20}, 2);  // below the rows
        u.Settle();
        EXPECT_EQ(u.CountDialogs(), 1);
    });
}

TEST_F(ManagerDialog, TakesNoButtonWhileTheTemplatesAreReadAfresh) {
    PutTemplates({u"A"});
    int boxes = 0;
    Manage([&](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        for (const int button : {IDC_MANAGER_EDIT, IDC_MANAGER_CREATE}) {
            u.OnTestThread([&] {
                Put(userFile, {1, 2, 3}, 1);  // of which a box tells that belongs to no window
                messages.onNextShow = [&] {
                    ++boxes;
                    PressMeanwhile(dialog.Get(), {IDC_MANAGER_CREATE, IDOK});
                };
            });
            dialog.Click(button);
            if (button == IDC_MANAGER_EDIT) {  // the file was set aside, and no template is left
                u.Answer(NotInRow(u"A"), IDOK);
                EXPECT_EQ(Listed(dialog), Names{});
                continue;
            }
            const CDrivenWindow shell = u.WaitFor(u"Edit:");
            EXPECT_EQ(GetWindow(shell.Get(), GW_OWNER), dialog.Get());
            EXPECT_EQ(u.CountDialogs(), 2);
            shell.Click(IDCANCEL);
            shell.WaitUntilGone();
            u.Settle();
            EXPECT_EQ(u.CountDialogs(), 1);
        }
        EXPECT_FALSE(dialog.IsGone());
    });
    EXPECT_EQ(boxes, 2);
}

TEST_F(ManagerDialog, AsksBeforeADeletedTemplateComesBack) {
    PutTemplates({u"A", u"B"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"A"), IDYES);
        EXPECT_EQ(Listed(dialog), Names{u"B"});
        dialog.Click(IDC_MANAGER_CREATE);
        u.Answer(BackQuestion(), IDNO);
        EXPECT_EQ(Listed(dialog), Names{u"B"});
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        dialog.Click(IDC_MANAGER_EDIT);
        u.Answer(BackQuestion(), IDYES);
        u.Answer(NotInRow(u"B"), IDOK);  // in whose row A is again
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"B"}));
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"A"), IDYES);
        dialog.Click(IDC_MANAGER_CREATE);
        u.Answer(BackQuestion(), IDYES);
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        shell.Click(IDCANCEL);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"B"}));
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"A"), IDYES);
    });
    EXPECT_EQ(NamesInFile(), Names{u"B"});
}

TEST_F(ManagerDialog, DeletesATemplateFromTheFileWhenItCloses) {
    PutTemplates({u"A", u"B", u"C"});
    Manage([this](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"B"), IDNO);
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"B", u"C"}));
        u.Press('D', {VK_MENU});
        u.Answer(DeleteQuestion(u"B"), IDYES);
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"C"}));
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_EDIT));
        EXPECT_FALSE(dialog.IsEnabled(IDC_MANAGER_DELETE));
        EXPECT_EQ(NamesInFile(), (Names{u"A", u"B", u"C"}));
    });
    EXPECT_EQ(NamesInFile(), (Names{u"A", u"C"}));
}

TEST_F(ManagerDialog, GoesOnFromTheNeighbourOfADeletedTemplate) {
    PutTemplates({u"A", u"B", u"C"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        const HWND list = dialog.Item(IDC_MANAGER_LIST);
        const auto expectCaretAt = [&](int row) {
            EXPECT_TRUE(dialog.HasFocus(IDC_MANAGER_LIST));
            EXPECT_EQ(u.Send(list, LB_GETCARETINDEX), row);
            EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        };
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"B"), IDYES);
        expectCaretAt(1);
        dialog.TakePicture("107-deleted");
        u.Press(VK_DOWN);  // at the last row
        EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), 1);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"C"), IDYES);
        expectCaretAt(0);
        u.Press(VK_SPACE);  // not on Close
        u.Settle();
        EXPECT_FALSE(dialog.IsGone());
    });
}

TEST_F(ManagerDialog, GoesOnFromTheRowOfWhatWasEditedOrMade) {
    PutTemplates({u"A", u"B", u"C"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 1);
        for (const int button : {IDC_MANAGER_EDIT, IDC_MANAGER_CREATE}) {
            dialog.Click(button);
            const CDrivenWindow shell = u.WaitFor(u"Edit:");
            if (button == IDC_MANAGER_CREATE) {
                LoadTemplate(u, shell);
                VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"D");
            }
            shell.Click(IDOK);
            shell.WaitUntilGone();
            EXPECT_TRUE(dialog.HasFocus(IDC_MANAGER_LIST));
            const int row = button == IDC_MANAGER_CREATE ? 3 : 1;
            EXPECT_EQ(u.Send(dialog.Item(IDC_MANAGER_LIST), LB_GETCARETINDEX), row);
            EXPECT_EQ(dialog.ListSelection(IDC_MANAGER_LIST), -1);
        }
    });
}

TEST_F(ManagerDialog, BringsADeletedTemplateBackWhenOneIsCreated) {
    PutTemplates({u"A", u"B"});
    Manage([](CUser& u, const CDrivenWindow& dialog) {
        dialog.ClickListItem(IDC_MANAGER_LIST, 0);
        dialog.Click(IDC_MANAGER_DELETE);
        u.Answer(DeleteQuestion(u"A"), IDYES);
        dialog.Click(IDC_MANAGER_CREATE);
        u.Answer(BackQuestion(), IDYES);
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        LoadTemplate(u, shell);
        VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"C");
        shell.Click(IDOK);
        shell.WaitUntilGone();
        EXPECT_EQ(Listed(dialog), (Names{u"A", u"B", u"C"}));
    });
}

}  // namespace
}  // namespace reka::test
