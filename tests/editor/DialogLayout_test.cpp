// SPDX-License-Identifier: MIT
#include "editor/DialogLayout.h"

#include <gtest/gtest.h>

#include <map>
#include <span>
#include <vector>

#include "editor/win/DialogLayouts.h"

namespace reka::test {
namespace {

using Design = std::map<int, ControlPlace>;

constexpr ControlPlace OfSize(int width, int height) {
    return {0, 0, width, height};
}

/// A dialog whose controls lie in the template as `design` says, in a client area of that size.
class CLaidOut {
public:
    CLaidOut(std::span<const LayoutRow> rows, const Design& design, const ControlSize& client, int dpi = referenceDpi,
             const ControlSize& designedClient = {}, const std::map<int, int>& textWidths = {}) {
        std::vector<DesignedControl> controls(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (IsLayoutLine(rows[i].control)) continue;
            controls[i].place = design.at(rows[i].control);
            if (textWidths.contains(rows[i].control)) controls[i].textWidth = textWidths.at(rows[i].control);
        }
        std::vector<ControlPlace> result(rows.size());
        LayOut(rows, {designedClient, controls}, client, dpi, result);
        for (std::size_t i = 0; i < rows.size(); ++i) places[rows[i].control] = result[i];
    }

    const ControlPlace& operator[](int control) const { return places.at(control); }

    /// Of what one can see but for `around`, which lies around others.
    std::vector<ControlPlace> ControlsBut(int around) const {
        std::vector<ControlPlace> controls;
        for (const auto& [control, place] : places) {
            if (!IsLayoutLine(control) && control != around) controls.push_back(place);
        }
        return controls;
    }

private:
    std::map<int, ControlPlace> places;
};

const Design editDesign = {{IDC_EDIT_HELP, OfSize(50, 20)},  {IDC_EDIT_LOAD, OfSize(60, 20)},
                           {IDC_EDIT_STORE, OfSize(70, 20)}, {okButton, OfSize(80, 20)},
                           {cancelButton, OfSize(90, 20)},   {IDC_EDIT_TABS, OfSize(0, 0)}};

TEST(EditShellLayout, KeepsTheButtonsAtTheBottom) {
    const CLaidOut layout(editLayout, editDesign, {600, 400});
    EXPECT_EQ(layout[IDC_EDIT_HELP], (ControlPlace{5, 375, 55, 395}));
    EXPECT_EQ(layout[IDC_EDIT_LOAD], (ControlPlace{57, 375, 117, 395}));
    EXPECT_EQ(layout[IDC_EDIT_STORE], (ControlPlace{119, 375, 189, 395}));
    EXPECT_EQ(layout[cancelButton], (ControlPlace{505, 375, 595, 395}));
    EXPECT_EQ(layout[okButton], (ControlPlace{420, 375, 500, 395}));
    EXPECT_EQ(layout[IDC_EDIT_TABS], (ControlPlace{5, 5, 595, 370}));
}

TEST(GeneralPageLayout, WidensToTheMarginOfItsLeftEdge) {
    const Design design = {{IDC_GENERAL_GENERAL_GROUP, {7, 6, 370, 80}},
                           {IDC_GENERAL_STANDARD_GROUP, {7, 90, 370, 140}},
                           {IDC_GENERAL_NAME, {113, 20, 360, 41}},
                           {IDC_GENERAL_DESCRIPTION, {113, 45, 360, 66}},
                           {IDC_GENERAL_THERMO_VERSION, {113, 105, 360, 126}}};
    const CLaidOut layout(generalLayout, design, {500, 300}, referenceDpi, {380, 220});
    EXPECT_EQ(layout[IDC_GENERAL_GENERAL_GROUP], (ControlPlace{7, 6, 493, 80}));
    EXPECT_EQ(layout[IDC_GENERAL_STANDARD_GROUP], (ControlPlace{7, 90, 493, 140}));
    EXPECT_EQ(layout[IDC_GENERAL_NAME], (ControlPlace{113, 20, 493, 41}));
    EXPECT_EQ(layout[IDC_GENERAL_DESCRIPTION], (ControlPlace{113, 45, 493, 66}));
    EXPECT_EQ(layout[IDC_GENERAL_THERMO_VERSION], (ControlPlace{113, 105, 493, 126}));
}

TEST(CompoundPageLayout, KeepsTheButtonsAtTheRightEdge) {
    const Design design = {{IDC_COMPOUNDS_ADD, OfSize(50, 20)},
                           {IDC_COMPOUNDS_DELETE, OfSize(50, 21)},
                           {IDC_COMPOUNDS_RENAME, OfSize(50, 22)},
                           {IDC_COMPOUNDS_LIST, OfSize(0, 0)}};
    const CLaidOut layout(compoundsLayout, design, {400, 300});
    EXPECT_EQ(layout[IDC_COMPOUNDS_ADD], (ControlPlace{345, 5, 395, 25}));
    EXPECT_EQ(layout[IDC_COMPOUNDS_DELETE], (ControlPlace{345, 27, 395, 48}));
    EXPECT_EQ(layout[IDC_COMPOUNDS_RENAME], (ControlPlace{345, 50, 395, 72}));
    EXPECT_EQ(layout[IDC_COMPOUNDS_LIST], (ControlPlace{5, 5, 340, 295}));
}

TEST(TemplateManagerLayout, KeepsTheButtonsAtTheRightEdge) {
    const Design design = {{IDC_MANAGER_CREATE, OfSize(100, 20)},
                           {IDC_MANAGER_EDIT, OfSize(100, 20)},
                           {IDC_MANAGER_DELETE, OfSize(100, 20)},
                           {okButton, OfSize(90, 25)},
                           {IDC_MANAGER_LIST, OfSize(0, 0)}};
    const CLaidOut layout(managerLayout, design, {400, 300});
    EXPECT_EQ(layout[IDC_MANAGER_CREATE], (ControlPlace{295, 5, 395, 25}));
    EXPECT_EQ(layout[IDC_MANAGER_EDIT], (ControlPlace{295, 30, 395, 50}));
    EXPECT_EQ(layout[IDC_MANAGER_DELETE], (ControlPlace{295, 55, 395, 75}));
    EXPECT_EQ(layout[okButton], (ControlPlace{305, 270, 395, 295}));
    EXPECT_EQ(layout[IDC_MANAGER_LIST], (ControlPlace{5, 5, 290, 295}));
}

TEST(AddCompoundsLayout, KeepsTheDistancesOfTheTemplate) {
    const Design design = {{IDC_ADD_COMPOUNDS_FILE_GROUP, {7, 5, 353, 39}},
                           {IDC_ADD_COMPOUNDS_FILE, {14, 18, 288, 31}},
                           {IDC_ADD_COMPOUNDS_BROWSE, {294, 17, 346, 31}},
                           {IDC_ADD_COMPOUNDS_SELECTION_GROUP, {7, 44, 353, 216}},
                           {IDC_ADD_COMPOUNDS_LIST, {14, 57, 346, 191}},
                           {IDC_ADD_COMPOUNDS_FILTER_LABEL, {14, 199, 54, 207}},
                           {IDC_ADD_COMPOUNDS_FILTER, {56, 197, 346, 210}},
                           {okButton, {249, 222, 299, 236}},
                           {cancelButton, {303, 222, 353, 236}}};
    const ControlSize designed = {360, 243};
    const CLaidOut small(addCompoundsLayout, design, designed, 192, designed);
    for (const auto& [control, place] : design) EXPECT_EQ(small[control], place) << control;
    const CLaidOut large(addCompoundsLayout, design, {460, 293}, 192, designed);
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_FILE_GROUP], (ControlPlace{7, 5, 453, 39}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_FILE], (ControlPlace{14, 18, 388, 31}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_BROWSE], (ControlPlace{394, 17, 446, 31}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_SELECTION_GROUP], (ControlPlace{7, 44, 453, 266}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_LIST], (ControlPlace{14, 57, 446, 241}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_FILTER_LABEL], (ControlPlace{14, 249, 54, 257}));
    EXPECT_EQ(large[IDC_ADD_COMPOUNDS_FILTER], (ControlPlace{56, 247, 446, 260}));
    EXPECT_EQ(large[okButton], (ControlPlace{349, 272, 399, 286}));
    EXPECT_EQ(large[cancelButton], (ControlPlace{403, 272, 453, 286}));
}

Design ReactionsDesign() {
    Design design;
    for (const LayoutRow& row : reactionsLayout) design[row.control] = OfSize(0, 0);
    const auto give = [&](std::initializer_list<int> controls, const ControlPlace& place) {
        for (const int control : controls) design[control] = place;
    };
    give({IDC_REACTIONS_LIST_LABEL}, OfSize(100, 13));
    give({IDC_REACTIONS_CREATE, IDC_REACTIONS_RENAME, IDC_REACTIONS_DELETE}, OfSize(100, 23));
    give({IDC_REACTIONS_HEADING}, {9, 16, 209, 29});  // in a group at 0, 0
    give({IDC_REACTIONS_EQUILIBRIUM}, OfSize(120, 16));
    give({IDC_REACTIONS_HETEROGENEOUS}, OfSize(100, 16));
    give({IDC_REACTIONS_RATE_LABEL, IDC_REACTIONS_EQUILIBRIUM_CONSTANT_LABEL, IDC_REACTIONS_BASIS_LABEL,
          IDC_REACTIONS_HEAT_LABEL, IDC_REACTIONS_PHASE_LABEL},
         OfSize(110, 13));
    give({IDC_REACTIONS_RATE, IDC_REACTIONS_EQUILIBRIUM_CONSTANT, IDC_REACTIONS_HEAT}, OfSize(50, 22));
    give({IDC_REACTIONS_BASIS, IDC_REACTIONS_PHASE}, OfSize(50, 21));
    give({IDC_REACTIONS_RATE_WIZARD, IDC_REACTIONS_EDIT_RATE, IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT,
          IDC_REACTIONS_EDIT_HEAT},
         OfSize(24, 23));
    give({IDC_REACTIONS_RATE_UNIT, IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, IDC_REACTIONS_HEAT_UNIT}, OfSize(100, 13));
    return design;
}

TEST(ReactionPageLayout, GivesLongUnitsUpToAQuarterOfTheRows) {
    const auto widthOfUnits = [](int pageWidth, int text) {
        const CLaidOut layout(reactionsLayout, ReactionsDesign(), {pageWidth, 400}, referenceDpi, {},
                              {{IDC_REACTIONS_RATE_UNIT, text}});
        const ControlPlace& unit = layout[IDC_REACTIONS_RATE_UNIT];
        EXPECT_EQ(unit.right, layout[IDC_REACTIONS_HEADING].right);
        EXPECT_EQ(layout[IDC_REACTIONS_EDIT_RATE].right + 5, unit.left);
        EXPECT_EQ(layout[IDC_REACTIONS_BASIS].right, layout[IDC_REACTIONS_EDIT_RATE].right);
        for (const int other : {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, IDC_REACTIONS_HEAT_UNIT}) {
            EXPECT_EQ(layout[other].left, unit.left);
            EXPECT_EQ(layout[other].right, unit.right);
        }
        return unit.right - unit.left;
    };
    EXPECT_EQ(widthOfUnits(1000, 40), 100);
    EXPECT_EQ(widthOfUnits(1000, 150), 150);
    EXPECT_EQ(widthOfUnits(1000, 5000), (1000 - 115 - 2 * 9) / 4);
    EXPECT_EQ(widthOfUnits(500, 5000), 100);
}

TEST(ReactionPageLayout, KeepsTheButtonsUnderTheListAtTheBottom) {
    const CLaidOut layout(reactionsLayout, ReactionsDesign(), {600, 400});
    EXPECT_EQ(layout[IDC_REACTIONS_DELETE], (ControlPlace{5, 372, 105, 395}));
    EXPECT_EQ(layout[IDC_REACTIONS_RENAME], (ControlPlace{5, 347, 105, 370}));
    EXPECT_EQ(layout[IDC_REACTIONS_CREATE], (ControlPlace{5, 322, 105, 345}));
    EXPECT_EQ(layout[IDC_REACTIONS_LIST_LABEL], (ControlPlace{5, 5, 105, 18}));
    EXPECT_EQ(layout[IDC_REACTIONS_LIST], (ControlPlace{5, 20, 105, 317}));
    EXPECT_EQ(layout[IDC_REACTIONS_PROPERTIES_GROUP], (ControlPlace{110, 5, 595, 395}));
}

TEST(ReactionPageLayout, StacksTheRowsFromTheBottomOfTheGroup) {
    const CLaidOut layout(reactionsLayout, ReactionsDesign(), {600, 400});
    // Rows of 23 pixels, 2 apart, up from 5 above the group's bottom: 367 to 390, 342 to 365, and so on.
    EXPECT_EQ(layout[IDC_REACTIONS_PHASE_LABEL], (ControlPlace{119, 372, 229, 385}));
    EXPECT_EQ(layout[IDC_REACTIONS_PHASE], (ControlPlace{231, 368, 481, 389}));
    EXPECT_EQ(layout[IDC_REACTIONS_HEAT], (ControlPlace{231, 342, 455, 364}));
    EXPECT_EQ(layout[IDC_REACTIONS_EDIT_HEAT], (ControlPlace{457, 342, 481, 365}));
    EXPECT_EQ(layout[IDC_REACTIONS_HEAT_UNIT], (ControlPlace{486, 347, 586, 360}));
    EXPECT_EQ(layout[IDC_REACTIONS_BASIS], (ControlPlace{231, 318, 481, 339}));
    EXPECT_EQ(layout[IDC_REACTIONS_EQUILIBRIUM_CONSTANT], (ControlPlace{231, 292, 455, 314}));
    EXPECT_EQ(layout[IDC_REACTIONS_RATE], (ControlPlace{231, 267, 429, 289}));
    EXPECT_EQ(layout[IDC_REACTIONS_RATE_WIZARD], (ControlPlace{431, 267, 455, 290}));
    EXPECT_EQ(layout[IDC_REACTIONS_EDIT_RATE], (ControlPlace{457, 267, 481, 290}));
    EXPECT_EQ(layout[IDC_REACTIONS_EQUILIBRIUM], (ControlPlace{119, 245, 239, 261}));
    EXPECT_EQ(layout[IDC_REACTIONS_HETEROGENEOUS], (ControlPlace{244, 245, 344, 261}));
    EXPECT_EQ(layout[IDC_REACTIONS_HEADING], (ControlPlace{119, 21, 586, 34}));
    EXPECT_EQ(layout[IDC_REACTIONS_STOICHIOMETRY], (ControlPlace{119, 36, 586, 240}));
}

TEST(ReactionPageLayout, GivesAllThatAPageGrowsToTheListsAndFields) {
    const CLaidOut small(reactionsLayout, ReactionsDesign(), {600, 400});
    const CLaidOut large(reactionsLayout, ReactionsDesign(), {700, 450});
    EXPECT_EQ(large[IDC_REACTIONS_LIST].bottom, small[IDC_REACTIONS_LIST].bottom + 50);
    EXPECT_EQ(large[IDC_REACTIONS_LIST].right, small[IDC_REACTIONS_LIST].right);
    EXPECT_EQ(large[IDC_REACTIONS_STOICHIOMETRY].right, small[IDC_REACTIONS_STOICHIOMETRY].right + 100);
    EXPECT_EQ(large[IDC_REACTIONS_STOICHIOMETRY].bottom, small[IDC_REACTIONS_STOICHIOMETRY].bottom + 50);
    EXPECT_EQ(large[IDC_REACTIONS_RATE].right, small[IDC_REACTIONS_RATE].right + 100);
    EXPECT_EQ(large[IDC_REACTIONS_RATE].left, small[IDC_REACTIONS_RATE].left);
    EXPECT_EQ(large[IDC_REACTIONS_PHASE].top, small[IDC_REACTIONS_PHASE].top + 50);
}

bool Overlap(const ControlPlace& first, const ControlPlace& second) {
    return first.left < second.right && second.left < first.right && first.top < second.bottom &&
           second.top < first.bottom;
}

TEST(ReactionPageLayout, LetsNothingOverlapAtAnyResolution) {
    for (const int dpi : {96, 120, 144, 192, 288}) {
        Design design = ReactionsDesign();
        for (auto& [control, place] : design) {
            for (int* const edge : {&place.left, &place.top, &place.right, &place.bottom}) {
                *edge = ScalePixels(*edge, dpi);
            }
        }
        const ControlSize page = {ScalePixels(560, dpi), ScalePixels(360, dpi)};
        const CLaidOut layout(reactionsLayout, design, page, dpi);
        const std::vector<ControlPlace> places = layout.ControlsBut(IDC_REACTIONS_PROPERTIES_GROUP);
        EXPECT_EQ(places.size(), 26U);
        for (std::size_t i = 0; i < places.size(); ++i) {
            EXPECT_LT(places[i].left, places[i].right) << i << " at " << dpi;
            EXPECT_LT(places[i].top, places[i].bottom) << i << " at " << dpi;
            EXPECT_GE(places[i].left, 0) << i << " at " << dpi;
            EXPECT_LE(places[i].right, page.width) << i << " at " << dpi;
            EXPECT_LE(places[i].bottom, page.height) << i << " at " << dpi;
            for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(places[i], places[j])) << i << ", " << j;
        }
    }
}

TEST(DialogLayouts, ScaleTheirDistances) {
    EXPECT_EQ(ScalePixels(5, 96), 5);
    EXPECT_EQ(ScalePixels(5, 120), 6);
    EXPECT_EQ(ScalePixels(5, 144), 8);
    EXPECT_EQ(ScalePixels(5, 192), 10);
    EXPECT_EQ(ScalePixels(-5, 96), -5);
    EXPECT_EQ(ScalePixels(-5, 144), -8);
    const CLaidOut shell(editLayout, editDesign, {600, 400}, 192);
    EXPECT_EQ(shell[IDC_EDIT_HELP], (ControlPlace{10, 370, 60, 390}));
    EXPECT_EQ(shell[IDC_EDIT_LOAD], (ControlPlace{64, 370, 124, 390}));
    EXPECT_EQ(shell[cancelButton], (ControlPlace{500, 370, 590, 390}));
    EXPECT_EQ(shell[IDC_EDIT_TABS], (ControlPlace{10, 10, 590, 360}));
    Design design;
    for (const LayoutRow& row : managerLayout) design[row.control] = OfSize(50, 20);
    const CLaidOut manager(managerLayout, design, {400, 300}, 192);
    EXPECT_EQ(manager[IDC_MANAGER_CREATE], (ControlPlace{340, 10, 390, 30}));
    EXPECT_EQ(manager[IDC_MANAGER_EDIT], (ControlPlace{340, 40, 390, 60}));
    EXPECT_EQ(manager[IDC_MANAGER_LIST], (ControlPlace{10, 10, 330, 290}));
    for (const LayoutRow& row : compoundsLayout) design[row.control] = OfSize(50, 20);
    const CLaidOut compounds(compoundsLayout, design, {400, 300}, 192);
    EXPECT_EQ(compounds[IDC_COMPOUNDS_DELETE], (ControlPlace{340, 34, 390, 54}));
    EXPECT_EQ(compounds[IDC_COMPOUNDS_LIST], (ControlPlace{10, 10, 330, 290}));
}

TEST(DialogLayouts, AreRefusedWhereARowLeansOnOneBelowOrOnNothing) {
    constexpr LayoutRow rows[] = {{1, kept, kept, loose, loose},
                                  {2, RightOf(1), CentredIn(LayoutLine(1)), loose, loose}};
    EXPECT_TRUE(IsSoundLayout(std::span(rows).first(1)));
    EXPECT_FALSE(IsSoundLayout(rows));  // the line is missing
    constexpr LayoutRow onItself[] = {{1, LeftOf(1), kept, loose, loose}};
    EXPECT_FALSE(IsSoundLayout(onItself));
    constexpr LayoutRow floating[] = {{1, kept, loose, kept, loose}};
    EXPECT_FALSE(IsSoundLayout(floating));
}

}  // namespace
}  // namespace reka::test
