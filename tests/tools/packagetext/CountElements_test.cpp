// SPDX-License-Identifier: MIT
// The elements of a document's compounds.

#include "packagetext/CountElements.h"

#include <gtest/gtest.h>

namespace packagetext {

namespace {

using Atoms = std::map<std::u16string, double>;

TEST(CountElements, AddsUpWhatAFormulaNamesTwice) {
    Atoms atoms = {{u"He", 1.0}};
    ASSERT_TRUE(CountElements(u"CH3COOCH3", atoms));
    EXPECT_EQ(atoms, (Atoms{{u"C", 3.0}, {u"H", 6.0}, {u"O", 2.0}}));
}

TEST(CountElements, RefusesWhatIsNoFormula) {
    Atoms atoms = {{u"He", 1.0}};
    EXPECT_FALSE(CountElements(u"", atoms));
    EXPECT_TRUE(atoms.empty());
    EXPECT_FALSE(CountElements(u"?", atoms));
    EXPECT_TRUE(atoms.empty());
}

}  // namespace

}  // namespace packagetext
