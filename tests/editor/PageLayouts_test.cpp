// Where the controls of a page go when the shell is made larger, at any resolution.

#include "editor/PageLayouts.h"

#include <gtest/gtest.h>

#include <vector>

#include "editor/EditShell.h"
#include "editor/TemplateManager.h"

namespace reka::test {
namespace {

TEST(CompoundPageLayout, KeepsTheButtonsAtTheRightEdge) {
    const CompoundPageSizes buttons = {{50, 20}, {50, 21}, {50, 22}};
    const CompoundPageLayout layout = LayOutCompoundPage({400, 300}, buttons);
    EXPECT_EQ(layout.add, (ControlPlace{345, 5, 395, 25}));
    EXPECT_EQ(layout.erase, (ControlPlace{345, 27, 395, 48}));
    EXPECT_EQ(layout.rename, (ControlPlace{345, 50, 395, 72}));
    EXPECT_EQ(layout.list, (ControlPlace{5, 5, 340, 295}));
}

ReactionPageSizes Sizes() {
    ReactionPageSizes sizes;
    sizes.listLabel = {100, 13};
    sizes.create = sizes.rename = sizes.erase = {100, 23};
    sizes.inset = {9, 16};
    sizes.heading = {200, 13};
    sizes.equilibrium = {120, 16};
    sizes.heterogeneous = {100, 16};
    sizes.label = {110, 13};
    sizes.field = {50, 22};
    sizes.choice = {50, 21};
    sizes.button = {24, 23};
    sizes.unit = {100, 13};
    return sizes;
}

TEST(ReactionPageLayout, GivesLongUnitsUpToAQuarterOfTheRows) {
    const auto widthOfUnits = [](int pageWidth, int text) {
        ReactionPageSizes sizes = Sizes();
        sizes.unitText = text;
        const ReactionPageLayout layout = LayOutReactionPage({pageWidth, 400}, sizes);
        EXPECT_EQ(layout.rate.unit.right, layout.heading.right);
        EXPECT_EQ(layout.rate.edit.right + 5, layout.rate.unit.left);
        EXPECT_EQ(layout.basis.choice.right, layout.rate.edit.right);
        return layout.rate.unit.right - layout.rate.unit.left;
    };
    EXPECT_EQ(widthOfUnits(1000, 40), 100);
    EXPECT_EQ(widthOfUnits(1000, 150), 150);
    EXPECT_EQ(widthOfUnits(1000, 5000), (1000 - 115 - 2 * 9) / 4);
    EXPECT_EQ(widthOfUnits(500, 5000), 100);
}

TEST(ReactionPageLayout, KeepsTheButtonsUnderTheListAtTheBottom) {
    const ReactionPageLayout layout = LayOutReactionPage({600, 400}, Sizes());
    EXPECT_EQ(layout.erase, (ControlPlace{5, 372, 105, 395}));
    EXPECT_EQ(layout.rename, (ControlPlace{5, 347, 105, 370}));
    EXPECT_EQ(layout.create, (ControlPlace{5, 322, 105, 345}));
    EXPECT_EQ(layout.listLabel, (ControlPlace{5, 5, 105, 18}));
    EXPECT_EQ(layout.list, (ControlPlace{5, 20, 105, 317}));
    EXPECT_EQ(layout.properties, (ControlPlace{110, 5, 595, 395}));
}

TEST(ReactionPageLayout, StacksTheRowsFromTheBottomOfTheGroup) {
    const ReactionPageLayout layout = LayOutReactionPage({600, 400}, Sizes());
    // Rows of 23 pixels, 2 apart, up from 5 above the group's bottom: 367 to 390, 342 to 365, and so on.
    EXPECT_EQ(layout.phase.label, (ControlPlace{119, 372, 229, 385}));
    EXPECT_EQ(layout.phase.choice, (ControlPlace{231, 368, 481, 389}));
    EXPECT_EQ(layout.heat.field, (ControlPlace{231, 342, 455, 364}));
    EXPECT_EQ(layout.heat.edit, (ControlPlace{457, 342, 481, 365}));
    EXPECT_EQ(layout.heat.unit, (ControlPlace{486, 347, 586, 360}));
    EXPECT_EQ(layout.basis.choice, (ControlPlace{231, 318, 481, 339}));
    EXPECT_EQ(layout.equilibriumConstant.field, (ControlPlace{231, 292, 455, 314}));
    EXPECT_EQ(layout.rate.field, (ControlPlace{231, 267, 429, 289}));
    EXPECT_EQ(layout.rateWizard, (ControlPlace{431, 267, 455, 290}));
    EXPECT_EQ(layout.rate.edit, (ControlPlace{457, 267, 481, 290}));
    EXPECT_EQ(layout.equilibrium, (ControlPlace{119, 245, 239, 261}));
    EXPECT_EQ(layout.heterogeneous, (ControlPlace{244, 245, 344, 261}));
    EXPECT_EQ(layout.heading, (ControlPlace{119, 21, 586, 34}));
    EXPECT_EQ(layout.stoichiometry, (ControlPlace{119, 36, 586, 240}));
}

TEST(ReactionPageLayout, GivesAllThatAPageGrowsToTheListsAndFields) {
    const ReactionPageLayout small = LayOutReactionPage({600, 400}, Sizes());
    const ReactionPageLayout large = LayOutReactionPage({700, 450}, Sizes());
    EXPECT_EQ(large.list.bottom, small.list.bottom + 50);
    EXPECT_EQ(large.list.right, small.list.right);
    EXPECT_EQ(large.stoichiometry.right, small.stoichiometry.right + 100);
    EXPECT_EQ(large.stoichiometry.bottom, small.stoichiometry.bottom + 50);
    EXPECT_EQ(large.rate.field.right, small.rate.field.right + 100);
    EXPECT_EQ(large.rate.field.left, small.rate.field.left);
    EXPECT_EQ(large.phase.choice.top, small.phase.choice.top + 50);
}

bool Overlap(const ControlPlace& first, const ControlPlace& second) {
    return first.left < second.right && second.left < first.right && first.top < second.bottom &&
           second.top < first.bottom;
}

TEST(ReactionPageLayout, LetsNothingOverlapAtAnyResolution) {
    for (const int dpi : {96, 120, 144, 192, 288}) {
        const auto scale = [dpi](const ControlSize& size) {
            return ControlSize{ScalePixels(size.width, dpi), ScalePixels(size.height, dpi)};
        };
        ReactionPageSizes sizes = Sizes();
        for (ControlSize* const size : {&sizes.listLabel, &sizes.create, &sizes.rename, &sizes.erase, &sizes.inset,
                                        &sizes.heading, &sizes.equilibrium, &sizes.heterogeneous, &sizes.label,
                                        &sizes.field, &sizes.choice, &sizes.button, &sizes.unit}) {
            *size = scale(*size);
        }
        const ControlSize page = scale({560, 360});
        const ReactionPageLayout layout = LayOutReactionPage(page, sizes, dpi);
        std::vector<ControlPlace> places = {
            layout.listLabel,   layout.list,          layout.create,      layout.rename,        layout.erase,
            layout.heading,     layout.stoichiometry, layout.equilibrium, layout.heterogeneous, layout.rateWizard,
            layout.basis.label, layout.basis.choice,  layout.phase.label, layout.phase.choice};
        for (const ExpressionRowPlaces& row : {layout.rate, layout.equilibriumConstant, layout.heat}) {
            places.insert(places.end(), {row.label, row.field, row.edit, row.unit});
        }
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
    const EditShellSizes shellButtons = {{50, 20}, {60, 20}, {70, 20}, {80, 20}, {90, 20}};
    const EditShellLayout shell = LayOutEditShell({600, 400}, shellButtons, 192);
    EXPECT_EQ(shell.help, (ControlPlace{10, 370, 60, 390}));
    EXPECT_EQ(shell.load, (ControlPlace{64, 370, 124, 390}));
    EXPECT_EQ(shell.cancel, (ControlPlace{500, 370, 590, 390}));
    EXPECT_EQ(shell.tabs, (ControlPlace{10, 10, 590, 360}));
    const TemplateManagerLayout manager =
        LayOutTemplateManager({400, 300}, {{50, 20}, {50, 20}, {50, 20}, {50, 20}}, 192);
    EXPECT_EQ(manager.create, (ControlPlace{340, 10, 390, 30}));
    EXPECT_EQ(manager.edit, (ControlPlace{340, 40, 390, 60}));
    EXPECT_EQ(manager.list, (ControlPlace{10, 10, 330, 290}));
    const CompoundPageLayout compounds = LayOutCompoundPage({400, 300}, {{50, 20}, {50, 20}, {50, 20}}, 192);
    EXPECT_EQ(compounds.erase, (ControlPlace{340, 34, 390, 54}));
    EXPECT_EQ(compounds.list, (ControlPlace{10, 10, 330, 290}));
}

}  // namespace
}  // namespace reka::test
