// Where the controls of the compounds page and of the reactions page stand, in a page of any size.

#pragma once

#include "editor/DialogLayout.h"

namespace reka {

struct CompoundPageSizes {
    ControlSize add;
    ControlSize erase;
    ControlSize rename;
};
struct CompoundPageLayout {
    ControlPlace list;
    ControlPlace add;
    ControlPlace erase;
    ControlPlace rename;
    bool operator==(const CompoundPageLayout&) const = default;
};
/// The buttons in a column at the right edge, and the list in the rest.
CompoundPageLayout LayOutCompoundPage(const ControlSize& page, const CompoundPageSizes& buttons,
                                      int dpi = referenceDpi);

/// The sizes that don't change with the page.
struct ReactionPageSizes {
    ControlSize listLabel;
    ControlSize create;  // as wide as the list of reactions
    ControlSize rename;
    ControlSize erase;
    ControlSize inset;  // of the group box: from its left top corner to its first control
    ControlSize heading;
    ControlSize equilibrium;
    ControlSize heterogeneous;
    ControlSize label;   // the widest one in front of a field
    ControlSize field;   // what is typed in; only the height counts
    ControlSize choice;  // a list to choose from, closed; only the height counts
    ControlSize button;  // a small one behind a field
    ControlSize unit;
    int unitText = 0;  // what the widest unit takes; the column of the units grows with it, to a quarter of the rows
};

/// An expression with what stands beside it in its row, from left to right.
struct ExpressionRowPlaces {
    ControlPlace label;
    ControlPlace field;
    ControlPlace edit;
    ControlPlace unit;
    bool operator==(const ExpressionRowPlaces&) const = default;
};
struct ChoiceRowPlaces {
    ControlPlace label;
    ControlPlace choice;
    bool operator==(const ChoiceRowPlaces&) const = default;
};
struct ReactionPageLayout {
    ControlPlace listLabel;
    ControlPlace list;
    ControlPlace create;
    ControlPlace rename;
    ControlPlace erase;
    ControlPlace properties;  // the group box
    ControlPlace heading;
    ControlPlace stoichiometry;
    ControlPlace equilibrium;
    ControlPlace heterogeneous;
    ExpressionRowPlaces rate;
    ControlPlace rateWizard;  // between the field of the rate and its editor
    ExpressionRowPlaces equilibriumConstant;
    ChoiceRowPlaces basis;
    ExpressionRowPlaces heat;
    ChoiceRowPlaces phase;
    bool operator==(const ReactionPageLayout&) const = default;
};
/// At the left the list of reactions over its buttons, which stay at the bottom. The group box has the rest: in it the
/// rows of the fields stay at the bottom, and the list of coefficients has the height above them.
ReactionPageLayout LayOutReactionPage(const ControlSize& page, const ReactionPageSizes& sizes, int dpi = referenceDpi);

}  // namespace reka
