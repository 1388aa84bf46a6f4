// SPDX-License-Identifier: MIT
// Lists of compounds in a dialog that the user makes larger: which column gets the room.

#include <gtest/gtest.h>

#include <commctrl.h>

#include <functional>
#include <numeric>

#include "BoxUi.h"
#include "FakeDpi.h"
#include "editor/win/CAddCompDlg.h"
#include "editor/win/CCompoundsFromMaterialDlg.h"
#include "editor/win/resource.h"
#include "support/Builders.h"
#include "support/FakeFiles.h"
#include "support/PcdBytes.h"

namespace reka::test {
namespace {

/// Both dialogs have their list under this number.
constexpr int list = IDC_ADD_COMPOUNDS_LIST;
static_assert(list == IDC_MATERIAL_COMPOUNDS_LIST);

std::vector<int> Widths(const CDrivenWindow& dialog) {
    std::vector<int> widths;
    for (int column = 0; column < 4; ++column) widths.push_back(dialog.ColumnWidth(list, column));
    return widths;
}

int TextWidth(CUser& u, const CDrivenWindow& dialog, const std::u16string& text) {
    return static_cast<int>(u.Send(dialog.Item(list), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
}

int DotsPerInch() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

int ListWidth(const CDrivenWindow& dialog) {
    RECT client = {};
    GetClientRect(dialog.Item(list), &client);
    return client.right;
}

int Sum(const std::vector<int>& widths) {
    return std::accumulate(widths.begin(), widths.end(), 0);
}

class SizedLists : public testing::Test {
protected:
    using Work = std::function<void(CUser&, const CDrivenWindow&)>;

    static void Drive(const char16_t* title, const std::function<bool()>& run, const Work& work) {
        CUser user([&](CUser& u) {
            const CDrivenWindow dialog = u.WaitFor(title);
            work(u, dialog);
            u.Press(VK_ESCAPE);
            dialog.WaitUntilGone();
        });
        EXPECT_FALSE(run());
    }

    void DriveAddCompounds(const Work& work) {
        definition->pcdFile = u"C:\\data\\pure.pcd";
        PcdBytes bytes;
        AddPcdRecord(bytes, "METHANOL", "CH4O", 32.042F, "67561");
        AddPcdRecord(bytes, std::string(longName.begin(), longName.end()), "C12H24O3", 216.32F, "25265774");
        files.entries[definition->pcdFile].bytes = bytes;
        Drive(
            u"Add compounds:", [this] { return CAddCompDlg(*definition, ui).Run(nullptr); }, work);
    }
    /// The last name has no room.
    void DriveCompoundsOfMaterial(const Work& work) {
        MaterialCompounds compounds;
        const auto offer = [&](const std::u16string& name, const char16_t* formula, double weight,
                               const char16_t* cas) {
            compounds.names.push_back(name);
            compounds.ids.push_back(name);
            compounds.formulas.push_back(formula);
            compounds.molecularWeights.push_back(weight);
            compounds.casNumbers.push_back(cas);
            compounds.charges.push_back(0.0);
        };
        offer(u"Carbon monoxide", u"CO", 28.01, u"630-08-0");
        offer(u"Hydrogen", u"H2", 2.016, u"1333-74-0");
        offer(u"Methanol", u"CH4O", 32.042, u"67-56-1");
        offer(twoLongNames, u"C12H24O3", 216.32, u"25265-77-4");
        Drive(
            u"Compounds from material template:",
            [&] { return CCompoundsFromMaterialDlg(compounds, *definition, ui).Run(nullptr); }, work);
    }

    const std::u16string longName = u"2,2,4-trimethyl-1,3-pentanediol monoisobutyrate";
    const std::u16string twoLongNames = longName + u", " + longName;
    CFakeFiles files;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"Water"});
    CBoxUi ui;
};

TEST_F(SizedLists, GiveTheRoomToTheColumnWhoseTextsAreCut) {
    DriveAddCompounds([this](CUser& u, const CDrivenWindow& dialog) {
        const std::vector<int> before = Widths(dialog);
        EXPECT_EQ(before[0], 2 * ListWidth(dialog) / 7);
        EXPECT_LT(before[0], TextWidth(u, dialog, longName));
        dialog.DragCorner(60, 40);
        EXPECT_EQ(Widths(dialog)[0], before[0] + 60);
        dialog.DragCorner(440, 0);
        const std::vector<int> after = Widths(dialog);
        EXPECT_GT(after[0], TextWidth(u, dialog, longName));
        EXPECT_LT(after[0], TextWidth(u, dialog, longName) + MulDiv(30, DotsPerInch(), 96));
        for (const std::size_t column : {1U, 2U, 3U}) EXPECT_EQ(after[column], before[column]);
        dialog.TakePicture("AddCompoundsWide");
        dialog.DragCorner(-500, -40);
        EXPECT_EQ(Widths(dialog), before);
    });
}

/// The widths that the list opens with are the least ones in the other scale too, whatever the columns have grown to.
TEST_F(SizedLists, GiveWayAgainOnAMonitorOfAnotherScale) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    const int dpi = ScreenDpi();
    DriveAddCompounds([&](CUser& u, const CDrivenWindow& dialog) {
        const std::vector<int> before = Widths(dialog);
        dialog.DragCorner(200, 40);
        MoveTo(u, dialog.Get(), dpi, 2 * dpi);
        EXPECT_GT(Widths(dialog)[0], 2 * before[0] + 200);
        dialog.DragCorner(-400, -80);
        const std::vector<int> after = Widths(dialog);
        EXPECT_LE(Sum(after), ListWidth(dialog));
        EXPECT_LT(after[0], 2 * before[0] + 50);  // a frame is as thick in any scale, which leaves some room
        for (const std::size_t column : {1U, 2U, 3U}) EXPECT_EQ(after[column], 2 * before[column]) << column;
        // What the user has sized stays so.
        u.Send(dialog.Item(list), LVM_SETCOLUMNWIDTH, 1, 80);
        MoveTo(u, dialog.Get(), 2 * dpi, dpi);
        dialog.DragCorner(30, 0);
        EXPECT_EQ(Widths(dialog)[1], 40);
    });
}

TEST_F(SizedLists, KeepAllColumnsOfAMaterialInSight) {
    DriveCompoundsOfMaterial([&](CUser& u, const CDrivenWindow& dialog) {
        const std::vector<int> before = Widths(dialog);
        EXPECT_LE(Sum(Widths(dialog)), ListWidth(dialog));
        EXPECT_GE(Sum(Widths(dialog)), ListWidth(dialog) - 4);
        EXPECT_LT(before[0], TextWidth(u, dialog, twoLongNames));
        const char16_t* const whole[] = {nullptr, u"C12H24O3", u"Mol Weight", u"25265-77-4"};
        for (const std::size_t column : {1U, 2U, 3U}) {
            EXPECT_GT(before[column], TextWidth(u, dialog, whole[column]) + 4) << column;
        }
        dialog.TakePicture("MaterialCompoundsLongName");
        const int height = PlaceOf(dialog.Item(list)).bottom - PlaceOf(dialog.Item(list)).top;
        dialog.DragCorner(100, 60);
        EXPECT_EQ(PlaceOf(dialog.Item(list)).bottom - PlaceOf(dialog.Item(list)).top, height + 60);
        EXPECT_EQ(Widths(dialog), (std::vector<int>{before[0] + 100, before[1], before[2], before[3]}));
        // What the user has sized stays so.
        u.Send(dialog.Item(list), LVM_SETCOLUMNWIDTH, 0, 150);
        dialog.DragCorner(-100, -60);
        EXPECT_EQ(Widths(dialog), (std::vector<int>{150, before[1], before[2], before[3]}));
    });
}

TEST_F(SizedLists, KeepTheUsersWidthOnAMonitorOfAnotherScale) {
    const CFakeDpi system(static_cast<UINT>(ScreenDpi()), DialogSizing::ByMonitor);
    const int dpi = ScreenDpi();
    DriveCompoundsOfMaterial([&](CUser& u, const CDrivenWindow& dialog) {
        dialog.DragCorner(100, 60);
        u.Send(dialog.Item(list), LVM_SETCOLUMNWIDTH, 0, 150);
        MoveTo(u, dialog.Get(), dpi, 2 * dpi);
        EXPECT_EQ(Widths(dialog)[0], 300);
        dialog.DragCorner(80, 0);
        EXPECT_EQ(Widths(dialog)[0], 300);
        EXPECT_LE(Sum(Widths(dialog)), ListWidth(dialog));
        // The others have the room that their texts need in the larger font.
        const char16_t* const whole[] = {nullptr, u"C12H24O3", u"Mol Weight", u"25265-77-4"};
        for (const std::size_t column : {1U, 2U, 3U}) {
            EXPECT_GT(Widths(dialog)[column], TextWidth(u, dialog, whole[column]) + 4) << column;
        }
    });
}

}  // namespace
}  // namespace reka::test
