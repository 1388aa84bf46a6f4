// SPDX-License-Identifier: MIT
// What the controls follow as a dialog is sized, a table for each dialog that can be. Numbers alone, for the window of
// the dialog and for a test on any platform. What `kept` and `AsDesigned` mean in pixels the template tells.

#pragma once

#include "editor/DialogLayout.h"
#include "editor/win/resource.h"

namespace reka {

// As the platform numbers them.
constexpr int okButton = 1;
constexpr int cancelButton = 2;

/// Help, Load and Store at the left bottom, OK and Cancel at the right bottom, the tabs with their pages in the rest.
constexpr LayoutRow editLayout[] = {
    {IDC_EDIT_HELP, LeftOf(clientArea, 5), loose, loose, BottomOf(clientArea, -5)},
    {IDC_EDIT_LOAD, RightOf(IDC_EDIT_HELP, 2), loose, loose, BottomOf(clientArea, -5)},
    {IDC_EDIT_STORE, RightOf(IDC_EDIT_LOAD, 2), loose, loose, BottomOf(clientArea, -5)},
    {cancelButton, loose, loose, RightOf(clientArea, -5), BottomOf(clientArea, -5)},
    {okButton, loose, loose, LeftOf(cancelButton, -5), BottomOf(clientArea, -5)},
    {IDC_EDIT_TABS, LeftOf(clientArea, 5), TopOf(clientArea, 5), RightOf(clientArea, -5), TopOf(okButton, -5)},
};

/// All that widens with the page ends as far from its right edge as the first group begins from its left one.
constexpr LayoutRow generalLayout[] = {
    {IDC_GENERAL_GENERAL_GROUP, kept, kept, Mirrored(clientArea), loose},
    {IDC_GENERAL_STANDARD_GROUP, kept, kept, RightOf(IDC_GENERAL_GENERAL_GROUP), loose},
    {IDC_GENERAL_NAME, kept, kept, RightOf(IDC_GENERAL_GENERAL_GROUP), loose},
    {IDC_GENERAL_DESCRIPTION, kept, kept, RightOf(IDC_GENERAL_GENERAL_GROUP), loose},
    {IDC_GENERAL_THERMO_VERSION, kept, kept, RightOf(IDC_GENERAL_GENERAL_GROUP), loose},
};

/// The buttons in a column at the right edge, and the list in the rest.
constexpr LayoutRow compoundsLayout[] = {
    {IDC_COMPOUNDS_ADD, loose, TopOf(clientArea, 5), RightOf(clientArea, -5), loose},
    {IDC_COMPOUNDS_DELETE, loose, BottomOf(IDC_COMPOUNDS_ADD, 2), RightOf(clientArea, -5), loose},
    {IDC_COMPOUNDS_RENAME, loose, BottomOf(IDC_COMPOUNDS_DELETE, 2), RightOf(clientArea, -5), loose},
    {IDC_COMPOUNDS_LIST, LeftOf(clientArea, 5), TopOf(clientArea, 5), LeftOf(IDC_COMPOUNDS_ADD, -5),
     BottomOf(clientArea, -5)},
};

// The lines of the reactions page, from the bottom upwards.
constexpr int phaseLine = LayoutLine(1);
constexpr int heatLine = LayoutLine(2);
constexpr int basisLine = LayoutLine(3);
constexpr int equilibriumConstantLine = LayoutLine(4);
constexpr int rateLine = LayoutLine(5);
constexpr int typeLine = LayoutLine(6);

/// At the left the list of reactions over its buttons, which stay at the bottom. The group box has the rest: in it the
/// lines of the fields stay at the bottom, and the list of coefficients has the height above them.
constexpr LayoutRow reactionsLayout[] = {
    {IDC_REACTIONS_DELETE, LeftOf(clientArea, 5), loose, loose, BottomOf(clientArea, -5)},
    {IDC_REACTIONS_RENAME, LeftOf(clientArea, 5), loose, loose, TopOf(IDC_REACTIONS_DELETE, -2)},
    {IDC_REACTIONS_CREATE, LeftOf(clientArea, 5), loose, loose, TopOf(IDC_REACTIONS_RENAME, -2)},
    {IDC_REACTIONS_LIST_LABEL, LeftOf(clientArea, 5), TopOf(clientArea, 5), loose, loose},
    {IDC_REACTIONS_LIST, LeftOf(clientArea, 5), BottomOf(IDC_REACTIONS_LIST_LABEL, 2), RightOf(IDC_REACTIONS_CREATE),
     TopOf(IDC_REACTIONS_CREATE, -5)},
    {IDC_REACTIONS_PROPERTIES_GROUP, RightOf(IDC_REACTIONS_LIST, 5), TopOf(clientArea, 5), RightOf(clientArea, -5),
     BottomOf(clientArea, -5)},
    {IDC_REACTIONS_HEADING, AsDesigned(IDC_REACTIONS_PROPERTIES_GROUP), AsDesigned(IDC_REACTIONS_PROPERTIES_GROUP),
     Mirrored(IDC_REACTIONS_PROPERTIES_GROUP), loose},

    {phaseLine, loose, loose, loose, BottomOf(IDC_REACTIONS_PROPERTIES_GROUP, -5)},
    {heatLine, loose, loose, loose, TopOf(phaseLine, -2)},
    {basisLine, loose, loose, loose, TopOf(heatLine, -2)},
    {equilibriumConstantLine, loose, loose, loose, TopOf(basisLine, -2)},
    {rateLine, loose, loose, loose, TopOf(equilibriumConstantLine, -2)},
    {typeLine, loose, loose, loose, TopOf(rateLine, -2)},

    // The columns are those of the rate: its unit is as wide as the widest one needs.
    {IDC_REACTIONS_RATE_UNIT, GrownToQuarterOf(IDC_REACTIONS_HEADING), CentredIn(rateLine),
     RightOf(IDC_REACTIONS_HEADING), loose},
    {IDC_REACTIONS_EDIT_RATE, loose, CentredIn(rateLine), LeftOf(IDC_REACTIONS_RATE_UNIT, -5), loose},
    {IDC_REACTIONS_RATE_WIZARD, loose, CentredIn(rateLine), LeftOf(IDC_REACTIONS_EDIT_RATE, -2), loose},
    {IDC_REACTIONS_RATE_LABEL, LeftOf(IDC_REACTIONS_HEADING), CentredIn(rateLine), loose, loose},
    {IDC_REACTIONS_RATE, RightOf(IDC_REACTIONS_RATE_LABEL, 2), CentredIn(rateLine),
     LeftOf(IDC_REACTIONS_RATE_WIZARD, -2), loose},

    {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT, LeftOf(IDC_REACTIONS_RATE_UNIT), CentredIn(equilibriumConstantLine),
     RightOf(IDC_REACTIONS_HEADING), loose},
    {IDC_REACTIONS_EDIT_EQUILIBRIUM_CONSTANT, LeftOf(IDC_REACTIONS_EDIT_RATE), CentredIn(equilibriumConstantLine),
     loose, loose},
    {IDC_REACTIONS_EQUILIBRIUM_CONSTANT_LABEL, LeftOf(IDC_REACTIONS_HEADING), CentredIn(equilibriumConstantLine), loose,
     loose},
    {IDC_REACTIONS_EQUILIBRIUM_CONSTANT, LeftOf(IDC_REACTIONS_RATE), CentredIn(equilibriumConstantLine),
     LeftOf(IDC_REACTIONS_EDIT_RATE, -2), loose},

    {IDC_REACTIONS_HEAT_UNIT, LeftOf(IDC_REACTIONS_RATE_UNIT), CentredIn(heatLine), RightOf(IDC_REACTIONS_HEADING),
     loose},
    {IDC_REACTIONS_EDIT_HEAT, LeftOf(IDC_REACTIONS_EDIT_RATE), CentredIn(heatLine), loose, loose},
    {IDC_REACTIONS_HEAT_LABEL, LeftOf(IDC_REACTIONS_HEADING), CentredIn(heatLine), loose, loose},
    {IDC_REACTIONS_HEAT, LeftOf(IDC_REACTIONS_RATE), CentredIn(heatLine), LeftOf(IDC_REACTIONS_EDIT_RATE, -2), loose},

    {IDC_REACTIONS_BASIS_LABEL, LeftOf(IDC_REACTIONS_HEADING), CentredIn(basisLine), loose, loose},
    {IDC_REACTIONS_BASIS, LeftOf(IDC_REACTIONS_RATE), CentredIn(basisLine), RightOf(IDC_REACTIONS_EDIT_RATE), loose},
    {IDC_REACTIONS_PHASE_LABEL, LeftOf(IDC_REACTIONS_HEADING), CentredIn(phaseLine), loose, loose},
    {IDC_REACTIONS_PHASE, LeftOf(IDC_REACTIONS_RATE), CentredIn(phaseLine), RightOf(IDC_REACTIONS_EDIT_RATE), loose},

    {IDC_REACTIONS_EQUILIBRIUM, LeftOf(IDC_REACTIONS_HEADING), CentredIn(typeLine), loose, loose},
    {IDC_REACTIONS_HETEROGENEOUS, RightOf(IDC_REACTIONS_EQUILIBRIUM, 5), CentredIn(typeLine), loose, loose},
    {IDC_REACTIONS_STOICHIOMETRY, LeftOf(IDC_REACTIONS_HEADING), BottomOf(IDC_REACTIONS_HEADING, 2),
     RightOf(IDC_REACTIONS_HEADING), TopOf(typeLine, -2)},
};

/// The buttons in a column at the right edge, Close at its bottom, and the list in the rest.
constexpr LayoutRow managerLayout[] = {
    {IDC_MANAGER_CREATE, loose, TopOf(clientArea, 5), RightOf(clientArea, -5), loose},
    {IDC_MANAGER_EDIT, loose, BottomOf(IDC_MANAGER_CREATE, 5), RightOf(clientArea, -5), loose},
    {IDC_MANAGER_DELETE, loose, BottomOf(IDC_MANAGER_EDIT, 5), RightOf(clientArea, -5), loose},
    {okButton, loose, loose, RightOf(clientArea, -5), BottomOf(clientArea, -5)},
    {IDC_MANAGER_LIST, LeftOf(clientArea, 5), TopOf(clientArea, 5), LeftOf(IDC_MANAGER_CREATE, -5),
     BottomOf(clientArea, -5)},
};

/// The groups widen, the filter and the buttons stay at the bottom, and the list has the rest.
constexpr LayoutRow addCompoundsLayout[] = {
    {IDC_ADD_COMPOUNDS_FILE_GROUP, kept, kept, kept, loose},
    {IDC_ADD_COMPOUNDS_FILE, kept, kept, kept, loose},
    {IDC_ADD_COMPOUNDS_BROWSE, loose, kept, kept, loose},
    {IDC_ADD_COMPOUNDS_SELECTION_GROUP, kept, kept, kept, kept},
    {IDC_ADD_COMPOUNDS_LIST, kept, kept, kept, kept},
    {IDC_ADD_COMPOUNDS_FILTER_LABEL, kept, loose, loose, kept},
    {IDC_ADD_COMPOUNDS_FILTER, kept, loose, kept, kept},
    {okButton, loose, loose, kept, kept},
    {cancelButton, loose, loose, kept, kept},
};

/// The buttons stay at the bottom, and the list has the rest.
constexpr LayoutRow materialCompoundsLayout[] = {
    {IDC_MATERIAL_COMPOUNDS_LIST, kept, kept, kept, kept},
    {okButton, loose, loose, kept, kept},
    {cancelButton, loose, loose, kept, kept},
};

/// What the expression is for widens, the expression has all height that there is, and the rest stays at the bottom.
constexpr LayoutRow expressionLayout[] = {
    {IDC_EXPRESSION_ITEM, kept, kept, kept, loose},     {IDC_EXPRESSION_UNIT, kept, kept, kept, loose},
    {IDC_EXPRESSION_TEXT, kept, kept, kept, kept},      {IDC_EXPRESSION_STATUS, kept, loose, kept, kept},
    {IDC_EXPRESSION_POSITION, kept, loose, kept, kept}, {okButton, loose, loose, kept, kept},
    {cancelButton, loose, loose, kept, kept},
};

static_assert(IsSoundLayout(editLayout) && IsSoundLayout(generalLayout) && IsSoundLayout(compoundsLayout) &&
              IsSoundLayout(reactionsLayout) && IsSoundLayout(managerLayout) && IsSoundLayout(addCompoundsLayout) &&
              IsSoundLayout(materialCompoundsLayout) && IsSoundLayout(expressionLayout));

}  // namespace reka
