// SPDX-License-Identifier: MIT
// The dialog that asks for one line of text.

#include "editor/win/CInputDlg.h"

#include <gtest/gtest.h>

#include "Driver.h"
#include "editor/win/resource.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

constexpr char16_t title[] = u"Enter reaction ID:";

/// Opens the dialog on `text`, and does the work.
bool Ask(CBstr& text, std::function<void(CUser&, const CDrivenWindow&)> work) {
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(title);
        work(u, dialog);
        dialog.WaitUntilGone();
    });
    return CInputDlg(title, text).Run(nullptr);
}

TEST(InputDialog, GivesWhatIsTyped) {
    CBstr text;
    EXPECT_TRUE(Ask(text, [](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(IDC_INPUT_TEXT));
        u.Type(u"R 1 \u00E9\u4E2D &x");
        EXPECT_EQ(dialog.Text(IDC_INPUT_TEXT), u"R 1 \u00E9\u4E2D &x");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(text.View(), u"R 1 \u00E9\u4E2D &x");
}

TEST(InputDialog, OffersThePresentTextSelected) {
    CBstr text = CBstr::Make(u"present");
    EXPECT_TRUE(Ask(text, [](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_INPUT_TEXT), u"present");
        u.Type(u"new");
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(text.View(), u"new");
}

TEST(InputDialog, GivesAnEmptyTextAsAbsent) {
    CBstr text = CBstr::Make(u"present");
    EXPECT_TRUE(Ask(text, [](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_DELETE);
        dialog.Click(IDOK);
    }));
    EXPECT_TRUE(text.IsAbsent());
}

TEST(InputDialog, LeavesTheTextOnCancel) {
    for (const int way : {1, 2, 3}) {
        CBstr text = CBstr::Make(u"present");
        EXPECT_FALSE(Ask(text, [way](CUser& u, const CDrivenWindow& dialog) {
            u.Type(u"typed");
            if (way == 1) dialog.Click(IDCANCEL);
            if (way == 2) u.Press(VK_ESCAPE);
            if (way == 3) u.Press(VK_F4, {VK_MENU});
        }));
        EXPECT_EQ(text.View(), u"present");
    }
}

TEST(InputDialog, TakesATextOfAnyLength) {
    const std::u16string longText(100000, u'x');
    CBstr text = CBstr::Make(longText);
    EXPECT_TRUE(Ask(text, [](CUser& u, const CDrivenWindow&) {
        u.Press(VK_END);
        u.Type(u"yz");
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(text.View(), longText + u"yz");
}

TEST(InputDialog, OpensOnItsTextWithoutMemory) {
    const std::u16string present = u"a text that is longer than a string holds by itself";
    CBstr text = CBstr::Make(present);
    CInputDlg dialog(title, text);
    CUser user([&](CUser& u) {
        const CDrivenWindow open = u.WaitFor(title);
        u.OnTestThread([] { FailAllocation(0); });
        EXPECT_EQ(open.Text(IDC_INPUT_TEXT), present);
        u.Press(VK_RETURN);
        open.WaitUntilGone();
    });
    FailAllocation(1);
    EXPECT_TRUE(dialog.Run(nullptr));
    FailAllocation(0);
    EXPECT_EQ(text.View(), present);
}

TEST(InputDialog, StaysOpenWithoutMemory) {
    CBstr text = CBstr::Make(u"present");
    const std::u16string typed = u"a text that is longer than a string holds by itself";
    EXPECT_TRUE(Ask(text, [&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(typed);
        u.OnTestThread([] { FailAllocation(1); });
        u.Press(VK_RETURN);
        u.Answer({u"Error:", u"out of memory", MB_OK | MB_ICONERROR}, IDOK);
        EXPECT_FALSE(dialog.IsGone());
        EXPECT_EQ(text.View(), u"present");
        u.Press(VK_RETURN);
    }));
    EXPECT_EQ(text.View(), typed);
}

}  // namespace
}  // namespace reka::test
