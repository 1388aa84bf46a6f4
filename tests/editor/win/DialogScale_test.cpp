// SPDX-License-Identifier: MIT
// Dialogs on monitors of different scale: as they open, and as they move from one to another. The system's part, to
// tell the dialog of the move, is done by the test.

#include "editor/win/DialogScale.h"

#include <commctrl.h>

#include <map>

#include "ControlTable.h"
#include "FakeDpi.h"
#include "FormulaFixture.h"
#include "ReactionsPage.h"
#include "editor/win/CInputDlg.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

/// Places of a window's controls in it, by their handles.
using Places = std::map<HWND, ControlPlace>;

ControlPlace AsPlace(const RECT& place) {
    return {place.left, place.top, place.right, place.bottom};
}

class DialogScale : public ReactionsPage {
protected:
    static int Width(HWND control) { return PlaceOf(control).right - PlaceOf(control).left; }
    static int Height(HWND control) { return PlaceOf(control).bottom - PlaceOf(control).top; }
    static int FontHeight(CUser& u, HWND control) {
        LOGFONTW font = {};
        GetObjectW(reinterpret_cast<HFONT>(u.Send(control, WM_GETFONT)), sizeof font, &font);
        return std::abs(static_cast<int>(font.lfHeight));
    }
    static int IconWidth(LRESULT icon) {
        ICONINFO info = {};
        EXPECT_TRUE(GetIconInfo(reinterpret_cast<HICON>(icon), &info));
        BITMAP bitmap = {};
        GetObjectW(info.hbmMask, sizeof bitmap, &bitmap);
        DeleteObject(info.hbmMask);
        DeleteObject(info.hbmColor);
        return bitmap.bmWidth;
    }
    static BOOL CALLBACK Note(HWND control, LPARAM places) {
        RECT place = PlaceOf(control);
        MapWindowPoints(nullptr, GetAncestor(control, GA_ROOT), reinterpret_cast<POINT*>(&place), 2);
        (*reinterpret_cast<Places*>(places))[control] = AsPlace(place);
        return TRUE;
    }
    static Places PlacesIn(HWND dialog) {
        Places places;
        EnumChildWindows(dialog, Note, reinterpret_cast<LPARAM>(&places));
        return places;
    }
};

TEST_F(DialogScale, FollowsToAMonitorOfAnotherScaleAndBack) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    const int dpi = ScreenDpi();
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow shell = ShellOf(u, page);
        const Places before = PlacesIn(shell.Get());
        const ControlPlace frame = AsPlace(PlaceOf(shell.Get()));
        const int fontHeight = FontHeight(u, page.Item(IDC_REACTIONS_RATE));
        MoveTo(u, shell.Get(), dpi, 2 * dpi);
        EXPECT_EQ(FontHeight(u, page.Item(IDC_REACTIONS_RATE)), 2 * fontHeight);
        EXPECT_EQ(FontHeight(u, shell.Item(IDOK)), 2 * fontHeight);
        EXPECT_EQ(page.ColumnWidth(IDC_REACTIONS_STOICHIOMETRY, 0), 2 * ScalePixels(80, dpi));
        for (const int button : {IDOK, IDCANCEL, IDC_EDIT_HELP}) {
            const ControlPlace small = before.at(shell.Item(button));
            EXPECT_EQ(Width(shell.Item(button)), 2 * (small.right - small.left)) << button;
            EXPECT_EQ(Height(shell.Item(button)), 2 * (small.bottom - small.top)) << button;
        }
        RECT client = {};
        GetClientRect(shell.Get(), &client);
        EXPECT_EQ(client.right - PlacesIn(shell.Get()).at(shell.Item(IDCANCEL)).right, 2 * ScalePixels(5, dpi));
        EXPECT_EQ(IconWidth(u.Send(page.Item(IDC_REACTIONS_RATE_WIZARD), BM_GETIMAGE, IMAGE_ICON)),
                  2 * GetSystemMetrics(SM_CXSMICON));
        EXPECT_EQ(IconWidth(u.Send(shell.Get(), WM_GETICON, ICON_BIG)), 2 * GetSystemMetrics(SM_CXICON));
        CheckLayout(u, shell.Get());
        MoveTo(u, shell.Get(), 2 * dpi, dpi * 3 / 2);
        CheckLayout(u, shell.Get());
        shell.TakePicture("103-moved-to-a-larger-scale");
        MoveTo(u, shell.Get(), dpi * 3 / 2, dpi, {frame.left, frame.top});
        EXPECT_EQ(AsPlace(PlaceOf(shell.Get())), frame);
        for (const auto& [control, place] : PlacesIn(shell.Get())) {
            EXPECT_EQ(place, before.at(control)) << GetDlgCtrlID(control);
        }
        EXPECT_EQ(FontHeight(u, page.Item(IDC_REACTIONS_RATE)), fontHeight);
    });
}

/// As it goes to and fro, a dialog has the sizes that it was made with.
TEST_F(DialogScale, AddsUpNoRounding) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    const int dpi = ScreenDpi();
    std::u16string rate;
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(u"Reaction rate wizard:");
        const Places before = PlacesIn(dialog.Get());
        for (int i = 0; i < 5; ++i) {
            MoveTo(u, dialog.Get(), dpi, dpi + 20);
            MoveTo(u, dialog.Get(), dpi + 20, dpi + 7);
        }
        MoveTo(u, dialog.Get(), dpi + 7, dpi);
        for (const auto& [control, place] : PlacesIn(dialog.Get())) {
            EXPECT_EQ(place, before.at(control)) << GetDlgCtrlID(control);
        }
        dialog.Click(IDCANCEL);
    });
    EXPECT_FALSE(CEditorWindows(nullptr).AskForRate(*definition->reactions[0], *definition, rate));
}

/// A program of the older kind of awareness: the system makes the dialog for the screen, whatever the monitor.
TEST_F(DialogScale, IsThatOfTheMonitorFromTheBeginning) {
    const int dpi = ScreenDpi();
    int fontHeight = 0;
    OnReactions(
        [&](CUser& u, const CDrivenWindow& page) { fontHeight = FontHeight(u, page.Item(IDC_REACTIONS_RATE)); });
    const CFakeDpi system(static_cast<UINT>(dpi * 3 / 2), DialogSizing::ByScreen);
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow shell = ShellOf(u, page);
        EXPECT_EQ(FontHeight(u, page.Item(IDC_REACTIONS_RATE)), MulDiv(fontHeight, 3, 2));
        EXPECT_EQ(page.ColumnWidth(IDC_REACTIONS_STOICHIOMETRY, 0), MulDiv(ScalePixels(80, dpi), 3, 2));
        EXPECT_EQ(IconWidth(u.Send(shell.Get(), WM_GETICON, ICON_SMALL)), GetSystemMetrics(SM_CXSMICON) * 3 / 2);
        CheckLayout(u, shell.Get());
    });
}

/// A program of the newer kind: the system has made the dialog for its monitor, and what the dialog adds goes by that.
TEST_F(DialogScale, IsThatOfTheMonitorForWhatADialogAdds) {
    const int dpi = ScreenDpi();
    const CFakeDpi system(static_cast<UINT>(2 * dpi), DialogSizing::ByMonitor);
    OnReactions([&](CUser& u, const CDrivenWindow& page) {
        const CDrivenWindow shell = ShellOf(u, page);
        EXPECT_EQ(page.ColumnWidth(IDC_REACTIONS_STOICHIOMETRY, 0), 2 * ScalePixels(80, dpi));
        RECT client = {};
        GetClientRect(shell.Get(), &client);
        EXPECT_EQ(client.right - PlacesIn(shell.Get()).at(shell.Item(IDCANCEL)).right, 2 * ScalePixels(5, dpi));
        EXPECT_TRUE(CFakeDpi::leftAlone);
    });
}

TEST_F(DialogScale, StaysWithoutMemoryToChangeIt) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    CBstr text = CBstr::Make(u"typed");
    CInputDlg dialog(u"A question:", text);
    CUser user([](CUser& u) {
        const CDrivenWindow open = u.WaitFor(u"A question:");
        u.OnTestThread([] { FailAllocation(0); });
        const Places before = PlacesIn(open.Get());
        MoveTo(u, open.Get(), ScreenDpi(), 2 * ScreenDpi());
        EXPECT_EQ(PlacesIn(open.Get()), before);
        u.Press(VK_RETURN);
    });
    FailAllocation(1);
    EXPECT_TRUE(dialog.Run(nullptr));
    EXPECT_EQ(text.View(), u"typed");
}

/// The look of the expression is there again in the other font.
TEST_F(DialogScale, KeepsWhatIsColoured) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    const int dpi = ScreenDpi();
    std::u16string expression = u"(T)";
    CUser user([&](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(u"Edit formula:");
        const HWND field = dialog.Item(IDC_EXPRESSION_TEXT);
        MoveTo(u, dialog.Get(), dpi, 2 * dpi);
        EXPECT_EQ(PaintedIn(u, field, 0, 3), "B.B");
        MoveTo(u, dialog.Get(), 2 * dpi, dpi);
        EXPECT_EQ(PaintedIn(u, field, 0, 3), "B.B");
        dialog.Click(IDCANCEL);
    });
    EXPECT_FALSE(CEditorWindows(nullptr).EditExpression(*definition, u"Rate", u"mol/s", expression));
}

}  // namespace
}  // namespace reka::test
