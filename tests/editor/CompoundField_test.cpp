// SPDX-License-Identifier: MIT
#include "editor/CompoundField.h"

#include <gtest/gtest.h>

#include <limits>

namespace reka::test {
namespace {

CompoundDefinition Water() {
    CompoundDefinition compound;
    compound.name = CBstr::Make(u"Water");
    compound.id = CBstr::Make(u"H-O-H");
    compound.formula = CBstr::Make(u"H2O");
    compound.molecularWeight = 18.0152812;
    compound.casNumber = CBstr::Make(u"7732-18-5");
    compound.charge = -1.0;
    return compound;
}

TEST(CompoundField, IsShownAsItsTextOrWithSixDigits) {
    const CompoundDefinition water = Water();
    EXPECT_EQ(FieldText(water, compoundfield::name), u"Water");
    EXPECT_EQ(FieldText(water, compoundfield::id), u"H-O-H");
    EXPECT_EQ(FieldText(water, compoundfield::formula), u"H2O");
    EXPECT_EQ(FieldText(water, compoundfield::molecularWeight), u"18.0153");
    EXPECT_EQ(FieldText(water, compoundfield::casNumber), u"7732-18-5");
    EXPECT_EQ(FieldText(water, compoundfield::charge), u"-1");
    EXPECT_EQ(FieldText(CompoundDefinition(), compoundfield::name), u"");
}

TEST(CompoundField, IsComparedByWhatTheRecordHolds) {
    const CompoundDefinition water = Water();
    CompoundDefinition other = Water();
    for (const CompoundField& field :
         {compoundfield::name, compoundfield::id, compoundfield::formula, compoundfield::molecularWeight,
          compoundfield::casNumber, compoundfield::charge}) {
        EXPECT_EQ(CompareByField(water, other, field), 0);
    }
    other.name = CBstr::Make(u"wATER2");
    EXPECT_LT(CompareByField(water, other, compoundfield::name), 0);
    EXPECT_GT(CompareByField(other, water, compoundfield::name), 0);
    EXPECT_EQ(CompareByField(water, other, compoundfield::id), 0);
    other.molecularWeight = 18.0152813;  // the same six digits
    EXPECT_LT(CompareByField(water, other, compoundfield::molecularWeight), 0);
    other.molecularWeight = std::numeric_limits<double>::quiet_NaN();
    EXPECT_LT(CompareByField(water, other, compoundfield::molecularWeight), 0);
    EXPECT_GT(CompareByField(other, water, compoundfield::molecularWeight), 0);
}

}  // namespace
}  // namespace reka::test
