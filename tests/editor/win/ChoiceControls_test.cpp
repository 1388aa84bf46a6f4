// SPDX-License-Identifier: MIT
// What stands in the dialogs in which something is chosen or written, how it is laid out, and what happens where the
// system refuses a window.

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "BoxUi.h"
#include "ControlTable.h"
#include "editor/win/CAddCompDlg.h"
#include "editor/win/CCompoundsFromMaterialDlg.h"
#include "editor/win/CEditFormulaDlg.h"
#include "editor/win/CInputDlg.h"
#include "editor/win/CPowerLawDlg.h"
#include "editor/win/CSelectCompoundMatTemplateDlg.h"
#include "editor/win/resource.h"
#include "platform/win/SystemModules.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "support/FakeFiles.h"
#include "support/PcdBytes.h"

namespace reka::test {
namespace {

/// What the dialogs work on.
struct Subject {
    Subject() {
        reaction.stoichiometry = {-1.0, 1.0, 0.0};
        definition->pcdFile = u"C:\\data\\pure.pcd";
        PcdBytes bytes;
        AddPcdRecord(bytes, "WATER", "H2O", 18.015F, "7732185");
        AddPcdRecord(bytes, "METHANE", "CH4", 16.043F, "74828");
        AddPcdRecord(bytes, "ETHANOL", "C2H6O", 46.069F, "64175");
        files.entries[definition->pcdFile].bytes = bytes;
        for (const char16_t* name : {u"Water", u"Ethanol"}) {
            compounds.names.push_back(name);
            compounds.ids.push_back(name);
            compounds.formulas.push_back(u"H2O");
            compounds.casNumbers.push_back(u"7732-18-5");
            compounds.molecularWeights.push_back(18.015);
            compounds.charges.push_back(0.0);
        }
    }

    CFakeFiles files;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Water", u"n-butane", u"Argon"});
    ReactionDefinition& reaction = AddKinetic(*definition, u"R1", u"");
    MaterialCompounds compounds;
    std::vector<std::u16string> names = {u"Refinery \u00E9", u"Feed"};
    CBoxUi ui;
    CBstr text = CBstr::Make(u"R1");
    std::u16string expression = u"2*C(Water)*(T+foo)";
    std::int32_t selected = 7;
};

struct ChoiceCase {
    const char* name;
    const char16_t* title;
    bool isSizable;
    std::function<bool(Subject& subject, HWND owner)> run;
    ExpectedControls controls;
};
void PrintTo(const ChoiceCase& row, std::ostream* stream) {
    *stream << row.name;
}

constexpr DWORD tab = WS_TABSTOP;
constexpr ExpectedControl okButton = {IDOK, u"Button", u"OK", BS_DEFPUSHBUTTON | tab};
constexpr ExpectedControl cancelButton = {IDCANCEL, u"Button", u"Cancel", tab};

/// A label for those who hear a dialog rather than see it.
constexpr ExpectedControl Unseen(const char16_t* label) {
    return {anyLabel, u"Static", label, 0, WS_VISIBLE, true, false};
}

const ChoiceCase choiceCases[] = {
    {"Input",
     u"Enter reaction ID:",
     false,
     [](Subject& s, HWND owner) { return CInputDlg(u"Enter reaction ID:", s.text).Run(owner); },
     {{225, u"Static", u"Enter reaction ID:", 0, WS_VISIBLE, true, false},
      {224, u"Edit", u"R1", ES_AUTOHSCROLL | tab, ES_MULTILINE | ES_READONLY},
      okButton,
      cancelButton}},
    {"CompoundSource",
     u"Compound source:",
     false,
     [](Subject& s, HWND owner) { return CSelectCompoundMatTemplateDlg(s.names, s.selected).Run(owner); },
     {{253, u"Button", u"From database", BS_AUTORADIOBUTTON | WS_GROUP},
      {254, u"Button", u"From material template:", BS_AUTORADIOBUTTON, WS_GROUP},
      Unseen(u"Material templates:"),
      {255, u"ListBox", nullptr, tab, LBS_SORT | LBS_MULTIPLESEL, false},
      okButton,
      cancelButton}},
    {"MaterialCompounds",
     u"Compounds from material template:",
     true,
     [](Subject& s, HWND owner) { return CCompoundsFromMaterialDlg(s.compounds, *s.definition, s.ui).Run(owner); },
     {Unseen(u"Compounds of the material:"),
      {209, u"SysListView32", nullptr, LVS_REPORT | LVS_SHOWSELALWAYS | tab, LVS_EDITLABELS | LVS_SORTASCENDING},
      okButton,
      cancelButton}},
    {"AddCompounds",
     u"Add compounds:",
     true,
     [](Subject& s, HWND owner) { return CAddCompDlg(*s.definition, s.ui).Run(owner); },
     {{208, u"Button", u"PCD File:", BS_GROUPBOX},
      {213, u"Edit", u"C:\\data\\pure.pcd", ES_READONLY | tab},
      {214, u"Button", u"&Browse", tab},
      {235, u"Button", u"Compound selection:", BS_GROUPBOX},
      {209, u"SysListView32", nullptr, LVS_REPORT | LVS_SHOWSELALWAYS | tab,
       LVS_SINGLESEL | LVS_NOSORTHEADER | LVS_EDITLABELS},
      {217, u"Static", u"Filter by:"},
      {216, u"Edit", u"", tab, ES_READONLY},
      okButton,
      cancelButton}},
    {"Expression",
     u"Edit formula:",
     true,
     [](Subject& s, HWND owner) {
         return CEditFormulaDlg(*s.definition, u"Rate of reaction \"R1\"", u"mol/s/m\u00B3", s.expression).Run(owner);
     },
     {{anyLabel, u"Static", u"Item:"},
      {260, u"Edit", u"Rate of reaction \"R1\"", ES_READONLY | tab},
      {anyLabel, u"Static", u"Unit of measure:"},
      {261, u"Edit", u"mol/s/m\u00B3", ES_READONLY | tab},
      {anyLabel, u"Static", u"Expression:"},
      {262, u"RichEdit20W", nullptr, ES_MULTILINE | ES_NOHIDESEL | tab, ES_READONLY},
      {263, u"Static", nullptr, SS_NOPREFIX},
      {264, u"Static", u"Reading stopped at column 15, \"foo\"", SS_NOPREFIX},
      okButton,
      cancelButton}},
    {"RateWizard",
     u"Reaction rate wizard:",
     false,
     [](Subject& s, HWND owner) { return CPowerLawDlg(s.reaction, *s.definition, s.expression, s.ui).Run(owner); },
     {{241, u"Button", u"Activity", BS_AUTORADIOBUTTON | WS_GROUP},
      {242, u"Button", u"Molarity", BS_AUTORADIOBUTTON, WS_GROUP},
      {243, u"Button", u"Mole fraction", BS_AUTORADIOBUTTON, WS_GROUP},
      {anyLabel, u"Button", u"Forward reaction rate:", BS_GROUPBOX},
      {227, u"Button", u"Forward reaction:", BS_AUTOCHECKBOX | tab},
      {235, u"Static", u"Rate constant:", 0, 0, false},
      {230, u"Edit", u"", tab, 0, false},
      {228, u"Button", u"Arrhenius energy:", BS_AUTOCHECKBOX | tab, 0, false},
      Unseen(u"Forward Arrhenius energy:"),
      {231, u"Edit", u"", tab, 0, false},
      {anyLabel, u"Button", u"Backward reaction rate:", BS_GROUPBOX},
      {229, u"Button", u"Backward reaction:", BS_AUTOCHECKBOX | tab},
      {236, u"Static", u"Rate constant:", 0, 0, false},
      {233, u"Edit", u"", tab, 0, false},
      {232, u"Button", u"Arrhenius energy:", BS_AUTOCHECKBOX | tab, 0, false},
      Unseen(u"Backward Arrhenius energy:"),
      {234, u"Edit", u"", tab, 0, false},
      {anyLabel, u"Static", u"Arrhenius reference temperature [K]:"},
      {244, u"Edit", u"", tab},
      {anyLabel, u"Button", u"Inhibition:", BS_GROUPBOX},
      {245, u"SysListView32", nullptr, LVS_REPORT | LVS_EDITLABELS | LVS_SHOWSELALWAYS | tab},
      {anyLabel, u"Static", u"power:"},
      {248, u"Edit", u"1.0", tab},
      Unseen(u"Rate:"),
      {246, u"Edit", u"", ES_MULTILINE | ES_READONLY | tab},
      {249, u"Static", u"Unit: mol/s/m3"},
      okButton,
      cancelButton}},
};

class ChoiceDialogs : public testing::TestWithParam<ChoiceCase> {};

TEST_P(ChoiceDialogs, HaveTheirControlsInPlace) {
    const ChoiceCase& row = GetParam();
    Subject subject;
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(row.title);
        CheckControls(u, dialog.Get(), row.controls);
        CheckLayout(u, dialog.Get());
        dialog.TakePicture(row.name);
        const RECT before = PlaceOf(dialog.Get());
        dialog.DragCorner(40, 30);
        const RECT larger = PlaceOf(dialog.Get());
        EXPECT_EQ(larger.right - before.right, row.isSizable ? 40 : 0);
        EXPECT_EQ(larger.bottom - before.bottom, row.isSizable ? 30 : 0);
        if (row.isSizable) {
            CheckLayout(u, dialog.Get());
            dialog.TakePicture(row.name + std::string("Larger"));
            dialog.DragCorner(-400, -300);
            const RECT smallest = PlaceOf(dialog.Get());
            EXPECT_EQ(smallest.right, before.right);
            EXPECT_EQ(smallest.bottom, before.bottom);
            CheckLayout(u, dialog.Get());
        }
        u.Press(VK_ESCAPE);
        dialog.WaitUntilGone();
    });
    EXPECT_FALSE(row.run(subject, nullptr));
    EXPECT_EQ(subject.text.View(), u"R1");
    EXPECT_EQ(subject.expression, u"2*C(Water)*(T+foo)");
    EXPECT_EQ(subject.selected, 7);
    EXPECT_EQ(subject.definition->compounds.size(), 3U);
}

/// The owner can't be worked meanwhile, and is the active window again.
TEST_P(ChoiceDialogs, BelongToTheirOwner) {
    const ChoiceCase& row = GetParam();
    Subject subject;
    const HWND owner = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 1000, 800,
                                       nullptr, nullptr, nullptr, nullptr);
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(row.title);
        EXPECT_EQ(GetWindow(dialog.Get(), GW_OWNER), owner);
        const POINT middle = MiddleOf(PlaceOf(dialog.Get()));
        EXPECT_LE(std::abs(middle.x - MiddleOf(PlaceOf(owner)).x), 1);
        EXPECT_LE(std::abs(middle.y - MiddleOf(PlaceOf(owner)).y), 1);
        EXPECT_FALSE(IsWindowEnabled(owner));
        dialog.Click(IDCANCEL);
        dialog.WaitUntilGone();
    });
    EXPECT_FALSE(row.run(subject, owner));
    user.Finish();
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
    DestroyWindow(owner);
}

TEST_P(ChoiceDialogs, AreCancelledWhereTheSystemRefusesThem) {
    Subject subject;
    const HINSTANCE module = SetModuleHandle(GetModuleHandleW(L"kernel32.dll"));  // which has no such template
    EXPECT_FALSE(GetParam().run(subject, nullptr));
    SetModuleHandle(module);
    EXPECT_EQ(subject.text.View(), u"R1");
    EXPECT_EQ(subject.expression, u"2*C(Water)*(T+foo)");
    EXPECT_EQ(subject.selected, 7);
    EXPECT_EQ(subject.definition->compounds.size(), 3U);
}

/// Closes whatever opens until the test is done. True if that was once more than a message.
bool CloseAll(CUser& u, const std::atomic<bool>& isDone) {
    bool hasOpened = false;
    while (!isDone) {
        const HWND window = u.TopDialog();
        if (!window) {
            Sleep(2);
            continue;
        }
        const bool isBox = u.TextOf(window) == u"Error:";
        hasOpened = hasOpened || !isBox;
        PostMessageW(window, isBox ? WM_COMMAND : WM_CLOSE, isBox ? IDOK : 0, 0);
        u.WaitUntil("its end", [&] { return !IsWindow(window) || !IsWindowVisible(window); });
    }
    return hasOpened;
}

/// Each allocation of the opening fails in turn.
TEST_P(ChoiceDialogs, OpenWithoutMemoryOrLeaveAllAsItWas) {
    bool isReached = true;
    int openings = 0;
    for (std::size_t n = 1; isReached; ++n) {
        Subject subject;
        std::atomic<bool> isDone = false;
        bool hasOpened = false;
        CUser user([&](CUser& u) { hasOpened = CloseAll(u, isDone); });
        FailAllocation(n);
        try {
            EXPECT_FALSE(GetParam().run(subject, nullptr)) << n;
        } catch (const std::bad_alloc&) {  // before there was a window
        }
        isReached = !IsAllocationToFail();
        FailAllocation(0);
        isDone = true;
        user.Finish();
        if (hasOpened) ++openings;
        EXPECT_EQ(subject.text.View(), u"R1");
        EXPECT_EQ(subject.expression, u"2*C(Water)*(T+foo)");
        EXPECT_EQ(subject.selected, 7);
        EXPECT_EQ(subject.definition->compounds.size(), 3U);
    }
    EXPECT_GE(openings, 1);
}

TEST_P(ChoiceDialogs, FreeAllThatTheyTook) {
    for (int i = 0; i < 3; ++i) {
        Subject subject;
        CUser user([](CUser& u) {
            u.WaitFor(GetParam().title);
            u.Press(VK_ESCAPE);
        });
        const CAllocationCounter counter;
        EXPECT_FALSE(GetParam().run(subject, nullptr));
        std::vector<std::string>().swap(subject.files.operations);  // which the test itself took
        const std::ptrdiff_t left = counter.Left();
        user.Finish();
        if (i > 0) {  // the parser keeps the words that it has once made
            EXPECT_EQ(left, 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Table, ChoiceDialogs, testing::ValuesIn(choiceCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
