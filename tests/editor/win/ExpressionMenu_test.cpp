// SPDX-License-Identifier: MIT
// The expression editor as a place for long laws: it grows, and offers what can be put into the text.

#include "FakeDpi.h"
#include "FormulaFixture.h"

namespace reka::test {
namespace {

class FormulaMenu : public FormulaDialog {
protected:
    FormulaMenu() { definition = MakePackage({u"Carbon monoxide", u"Hydrogen", u"Methanol"}); }

    static HWND OpenMenu(CUser& u) { return u.ShownWindow(u"#32768"); }
    static void WaitForMenu(CUser& u) {
        u.WaitUntil("a menu", [&] { return OpenMenu(u) != nullptr; });
    }
    /// The last of the commands of a text field, in the menu that is open.
    static std::u16string LastCommandOf(CUser& u) {
        constexpr UINT menuOfWindow = 0x01E1;
        const auto menu = reinterpret_cast<HMENU>(u.Send(OpenMenu(u), menuOfWindow));
        wchar_t label[100] = {};
        GetMenuStringW(menu, static_cast<UINT>(TextCommand::SelectAll), label, 100, MF_BYCOMMAND);
        return reinterpret_cast<const char16_t*>(label);
    }
    /// Chooses in the menu that the key has opened: these keys in turn, and Enter.
    static void Choose(CUser& u, std::initializer_list<WORD> keys) {
        WaitForMenu(u);
        for (const WORD key : keys) u.Press(key);
        u.Press(VK_RETURN);
        u.WaitUntil("its end", [&] { return OpenMenu(u) == nullptr; });
        u.Settle();
    }
    static void GiveUpMenu(CUser& u) {
        WaitForMenu(u);
        u.Press(VK_ESCAPE);
        u.WaitUntil("its end", [&] { return OpenMenu(u) == nullptr; });
    }
    static SIZE ClientSizeOf(const CDrivenWindow& dialog) {
        RECT client = {};
        GetClientRect(dialog.Get(), &client);
        return {client.right, client.bottom};
    }
    static SIZE SizeOf(const CDrivenWindow& dialog) {
        const RECT place = PlaceOf(dialog.Get());
        return {place.right - place.left, place.bottom - place.top};
    }
};

TEST_F(FormulaMenu, OffersWhatCanBePutInAtAKey) {
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Type(u"2*");
        u.Press(VK_SPACE, {VK_CONTROL});
        Choose(u, {'Q', VK_DOWN, VK_DOWN});
        EXPECT_EQ(Text(u, dialog), u"2*C()");
        EXPECT_EQ(Selection(u, dialog), (TextRange{4, 4}));
        u.Press(VK_SPACE, {VK_CONTROL});
        Choose(u, {'D'});
        EXPECT_EQ(Text(u, dialog), u"2*C(\"Carbon monoxide\")");
        EXPECT_EQ(Selection(u, dialog), (TextRange{22, 22}));  // behind the bracket, to go on there
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_STATUS), u"");
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_POSITION), u"");
        u.Press('A', {VK_CONTROL});
        u.Press(VK_SPACE, {VK_CONTROL});
        Choose(u, {'F'});
        EXPECT_EQ(Text(u, dialog), u"ABS(2*C(\"Carbon monoxide\"))");
        u.Press('Z', {VK_CONTROL});
        EXPECT_EQ(Text(u, dialog), u"2*C(\"Carbon monoxide\")");
        // Given up.
        u.Press(VK_END);
        u.Press(VK_SPACE, {VK_CONTROL});
        WaitForMenu(u);
        u.Press('D');
        SavePicture("ExpressionOffers", PlaceOf(dialog.Get()));
        u.Press(VK_ESCAPE);
        u.Press(VK_ESCAPE);
        EXPECT_FALSE(dialog.IsGone());
        u.Type(u"*T");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*C(\"Carbon monoxide\")*T");
}

TEST_F(FormulaMenu, HasTheUsualMenu) {
    expression = u"2*T";
    EXPECT_TRUE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        u.Press(VK_APPS);
        WaitForMenu(u);
        u.Press('A');  // a letter alone chooses
        EXPECT_EQ(Selection(u, dialog), (TextRange{0, 3}));
        u.Press(VK_APPS);
        WaitForMenu(u);
        EXPECT_EQ(LastCommandOf(u), u"Select &all\tCtrl+A");
        SavePicture("ExpressionMenu", PlaceOf(dialog.Get()));
        u.Press('L');
        EXPECT_EQ(Text(u, dialog), u"");
        u.RightClickAt(MiddleOf(PlaceOf(dialog.Item(IDC_EXPRESSION_TEXT))));
        WaitForMenu(u);
        u.Press('U');
        EXPECT_EQ(Text(u, dialog), u"2*T");
        dialog.Click(IDOK);
    }));
    EXPECT_EQ(expression, u"2*T");
}

/// Also as the second click of two quick ones, and where something asks for the menu at a place without any click.
TEST_F(FormulaMenu, OpensAtEachRequest) {
    for (int line = 0; line < 50; ++line) expression += u"T*\r\n";
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        const HWND field = dialog.Item(IDC_EXPRESSION_TEXT);
        const RECT place = PlaceOf(field);
        const POINT middle = MiddleOf(place);
        const auto request = [&](LONG x, LONG y) {
            PostMessageW(field, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(field), MAKELPARAM(x, y));
            u.Settle();
        };
        for (int click = 0; click < 2; ++click) {
            u.RightClickAt(middle);
            GiveUpMenu(u);
        }
        for (int time = 0; time < 2; ++time) {
            request(middle.x, middle.y);
            GiveUpMenu(u);
        }
        request(place.right - 5, middle.y);  // the bar that scrolls
        EXPECT_EQ(OpenMenu(u), nullptr);
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(FormulaMenu, OpensInTheSameSizeOnAMonitorOfAnyScale) {
    const CFakeDpi system(144, DialogSizing::ByMonitor);
    SIZE kept = {};
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        // To sizes that aren't a whole number of pixels at 96 dots per inch, and round upwards there.
        const SIZE first = ClientSizeOf(dialog);
        dialog.DragCorner(61 + (3 - first.cx % 3), 61 + (3 - first.cy % 3));
        kept = ClientSizeOf(dialog);
        EXPECT_EQ(kept.cx % 3, 1);
        EXPECT_EQ(kept.cy % 3, 1);
        u.Press(VK_ESCAPE);
    }));
    for (const int times : {1, 1, 2, 1}) {
        CFakeDpi::monitorDpi = 144U * static_cast<UINT>(times);
        EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
            EXPECT_EQ(ClientSizeOf(dialog).cx, times * kept.cx);
            EXPECT_EQ(ClientSizeOf(dialog).cy, times * kept.cy);
            u.Press(VK_ESCAPE);
        }));
    }
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        dialog.DragCorner(-300, -300);  // for whoever opens it next
        u.Press(VK_ESCAPE);
    }));
}

TEST_F(FormulaMenu, GrowsAndKeepsItsSizeForTheSession) {
    expression = u"EXP(T";
    SIZE first = {};
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        first = SizeOf(dialog);
        const RECT before = PlaceOf(dialog.Item(IDC_EXPRESSION_TEXT));
        dialog.DragCorner(150, 90);
        const RECT after = PlaceOf(dialog.Item(IDC_EXPRESSION_TEXT));
        EXPECT_EQ(after.right - before.right, 150);
        EXPECT_EQ(after.bottom - before.bottom, 90);
        EXPECT_EQ(dialog.Text(IDC_EXPRESSION_POSITION), u"Reading stopped at the end, column 5, \"T\"");
        dialog.TakePicture("ExpressionLarge");
        u.Press(VK_ESCAPE);
    }));
    EXPECT_FALSE(Edit([&](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(SizeOf(dialog).cx, first.cx + 150);
        EXPECT_EQ(SizeOf(dialog).cy, first.cy + 90);
        dialog.DragCorner(-300, -200);
        EXPECT_EQ(SizeOf(dialog).cx, first.cx);
        EXPECT_EQ(SizeOf(dialog).cy, first.cy);
        u.Press(VK_ESCAPE);
    }));
}

}  // namespace
}  // namespace reka::test
