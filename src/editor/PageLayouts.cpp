// See PageLayouts.h.

#include "editor/PageLayouts.h"

#include <algorithm>

namespace reka {

namespace {

constexpr int margin = 5;  // of a page, and between its parts; all in pixels of a screen of 96 dpi
constexpr int gap = 2;     // between buttons of a column, between rows, and between a field and its buttons

/// Stacks the rows of a column from its bottom upwards.
class CRowsFromBottom {
public:
    CRowsFromBottom(int columnBottom, int rowHeight, int rowGap)
        : bottom(columnBottom), height(rowHeight), space(rowGap) {}

    void Next() { bottom -= height + space; }
    int Top() const { return bottom - height; }

    /// The place of a control of that height in the middle of the row.
    ControlPlace Centre(int left, int right, int controlHeight) const {
        const int top = Top() + (height - controlHeight) / 2;
        return {left, top, right, top + controlHeight};
    }

private:
    int bottom;
    int height;
    int space;
};

/// The columns of the group box's rows.
struct RowColumns {
    int labelLeft;
    int fieldLeft;
    int buttonLeft;
    int unitLeft;
    int unitRight;
};

ExpressionRowPlaces PlaceExpression(const CRowsFromBottom& rows, const RowColumns& columns,
                                    const ReactionPageSizes& sizes, int fieldRight) {
    ExpressionRowPlaces row;
    row.label = rows.Centre(columns.labelLeft, columns.labelLeft + sizes.label.width, sizes.label.height);
    row.field = rows.Centre(columns.fieldLeft, fieldRight, sizes.field.height);
    row.edit = rows.Centre(columns.buttonLeft, columns.buttonLeft + sizes.button.width, sizes.button.height);
    row.unit = rows.Centre(columns.unitLeft, columns.unitRight, sizes.unit.height);
    return row;
}

ChoiceRowPlaces PlaceChoice(const CRowsFromBottom& rows, const RowColumns& columns, const ReactionPageSizes& sizes) {
    ChoiceRowPlaces row;
    row.label = rows.Centre(columns.labelLeft, columns.labelLeft + sizes.label.width, sizes.label.height);
    row.choice = rows.Centre(columns.fieldLeft, columns.buttonLeft + sizes.button.width, sizes.choice.height);
    return row;
}

void LayOutReactionList(ReactionPageLayout& layout, const ControlSize& page, const ReactionPageSizes& sizes, int dpi) {
    const int edge = ScalePixels(margin, dpi);
    int bottom = page.height - edge;
    const auto stack = [&](ControlPlace& place, const ControlSize& size) {
        place = PlaceAt(edge, bottom - size.height, size);
        bottom = place.top - ScalePixels(gap, dpi);
    };
    stack(layout.erase, sizes.erase);
    stack(layout.rename, sizes.rename);
    stack(layout.create, sizes.create);
    layout.listLabel = PlaceAt(edge, edge, sizes.listLabel);
    layout.list = {edge, layout.listLabel.bottom + ScalePixels(gap, dpi), layout.create.right,
                   layout.create.top - edge};
}

}  // namespace

CompoundPageLayout LayOutCompoundPage(const ControlSize& page, const CompoundPageSizes& buttons, int dpi) {
    const int edge = ScalePixels(margin, dpi);
    CompoundPageLayout layout;
    int top = edge;
    const auto stack = [&](ControlPlace& place, const ControlSize& size) {
        place = PlaceAt(page.width - edge - size.width, top, size);
        top = place.bottom + ScalePixels(gap, dpi);
    };
    stack(layout.add, buttons.add);
    stack(layout.erase, buttons.erase);
    stack(layout.rename, buttons.rename);
    layout.list = {edge, edge, layout.add.left - edge, page.height - edge};
    return layout;
}

ReactionPageLayout LayOutReactionPage(const ControlSize& page, const ReactionPageSizes& sizes, int dpi) {
    const int edge = ScalePixels(margin, dpi);
    const int space = ScalePixels(gap, dpi);
    ReactionPageLayout layout;
    LayOutReactionList(layout, page, sizes, dpi);

    layout.properties = {layout.list.right + edge, edge, page.width - edge, page.height - edge};
    const int left = layout.properties.left + sizes.inset.width;
    const int right = layout.properties.right - sizes.inset.width;
    RowColumns columns = {};
    columns.labelLeft = left;
    columns.fieldLeft = left + sizes.label.width + space;
    columns.unitRight = right;
    columns.unitLeft = right - std::max(sizes.unit.width, std::min(sizes.unitText, (right - left) / 4));
    columns.buttonLeft = columns.unitLeft - edge - sizes.button.width;
    const int fieldRight = columns.buttonLeft - space;

    const int rowHeight = std::max({sizes.field.height, sizes.choice.height, sizes.button.height});
    CRowsFromBottom rows(layout.properties.bottom - edge, rowHeight, space);
    layout.phase = PlaceChoice(rows, columns, sizes);
    rows.Next();
    layout.heat = PlaceExpression(rows, columns, sizes, fieldRight);
    rows.Next();
    layout.basis = PlaceChoice(rows, columns, sizes);
    rows.Next();
    layout.equilibriumConstant = PlaceExpression(rows, columns, sizes, fieldRight);
    rows.Next();
    const int wizardLeft = columns.buttonLeft - space - sizes.button.width;
    layout.rate = PlaceExpression(rows, columns, sizes, wizardLeft - space);
    layout.rateWizard = rows.Centre(wizardLeft, wizardLeft + sizes.button.width, sizes.button.height);
    rows.Next();
    layout.equilibrium = rows.Centre(left, left + sizes.equilibrium.width, sizes.equilibrium.height);
    const int secondLeft = layout.equilibrium.right + edge;
    layout.heterogeneous = rows.Centre(secondLeft, secondLeft + sizes.heterogeneous.width, sizes.heterogeneous.height);

    const int headingTop = layout.properties.top + sizes.inset.height;
    layout.heading = {left, headingTop, right, headingTop + sizes.heading.height};
    layout.stoichiometry = {left, layout.heading.bottom + space, right, rows.Top() - space};
    return layout;
}

}  // namespace reka
