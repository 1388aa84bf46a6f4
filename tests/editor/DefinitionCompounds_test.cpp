// SPDX-License-Identifier: MIT
// Compounds that come and go, and the coefficients of the reactions that must follow them.

#include "editor/DefinitionCompounds.h"

#include <gtest/gtest.h>

#include "support/AllocationCounter.h"
#include "support/Builders.h"

namespace reka::test {
namespace {

using Numbers = std::vector<double>;

std::unique_ptr<CompoundDefinition> Compound(const char16_t* name) {
    auto compound = std::make_unique<CompoundDefinition>();
    compound->name = CBstr::Make(name);
    return compound;
}

TEST(AddCompoundToDefinition, GivesItNoPartInAnyReaction) {
    const auto definition = MakePackage({u"A", u"B"});
    AddKinetic(*definition, u"r1", u"").stoichiometry = {-1.0, 2.0};
    AddEquilibrium(*definition, u"r2", u"").stoichiometry = {3.0, -4.0};
    AddCompoundToDefinition(*definition, Compound(u"C"));
    ASSERT_EQ(definition->compounds.size(), 3U);
    EXPECT_EQ(definition->compounds[2]->name.View(), u"C");
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (Numbers{-1.0, 2.0, 0.0}));
    EXPECT_EQ(definition->reactions[1]->stoichiometry, (Numbers{3.0, -4.0, 0.0}));
}

TEST(AddCompoundToDefinition, TakesOneThatIsThereAlready) {
    const auto definition = MakePackage({u"A"});
    AddCompoundToDefinition(*definition, Compound(u"A"));
    EXPECT_EQ(definition->compounds.size(), 2U);
}

TEST(AddCompoundToDefinition, ChangesNothingWithoutMemory) {
    for (std::size_t n = 1; n < 50; ++n) {
        const auto definition = MakePackage({u"A"});
        AddKinetic(*definition, u"r1", u"").stoichiometry = {-1.0};
        AddKinetic(*definition, u"r2", u"").stoichiometry = {1.0};
        auto compound = Compound(u"B");
        FailAllocation(n);
        try {
            AddCompoundToDefinition(*definition, std::move(compound));
            EXPECT_TRUE(IsAllocationToFail());
            FailAllocation(0);
            EXPECT_GT(n, 1U);
            return;
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(definition->compounds.size(), 1U);
        for (const auto& reaction : definition->reactions) EXPECT_EQ(reaction->stoichiometry.size(), 1U);
    }
    FAIL() << "never succeeds";
}

TEST(RemoveCompoundFromDefinition, KeepsTheCoefficientsOfTheOthers) {
    const auto definition = MakePackage({u"A", u"B", u"Cc", u"D", u"E"});
    AddKinetic(*definition, u"r1", u"C(Cc)").stoichiometry = {1.0, 2.0, 3.0, 4.0, 5.0};
    AddKinetic(*definition, u"r2", u"").stoichiometry = {-1.0, -2.0, -3.0, -4.0, -5.0};
    RemoveCompoundFromDefinition(*definition, 2);
    ASSERT_EQ(definition->compounds.size(), 4U);
    EXPECT_EQ(definition->compounds[2]->name.View(), u"D");
    EXPECT_EQ(definition->compounds[3]->name.View(), u"E");
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (Numbers{1.0, 2.0, 4.0, 5.0}));
    EXPECT_EQ(definition->reactions[1]->stoichiometry, (Numbers{-1.0, -2.0, -4.0, -5.0}));
    EXPECT_EQ(definition->reactions[0]->rateEquation, u"C(Cc)");
}

TEST(RemoveCompoundFromDefinition, TakesACoefficientOnlyWhereThereIsOne) {
    const auto definition = MakePackage({u"A", u"B"});
    AddKinetic(*definition, u"r1", u"").stoichiometry = {1.0};
    AddKinetic(*definition, u"r2", u"").stoichiometry = {};
    RemoveCompoundFromDefinition(*definition, 1);
    EXPECT_EQ(definition->compounds.size(), 1U);
    EXPECT_EQ(definition->reactions[0]->stoichiometry, Numbers{1.0});
    EXPECT_TRUE(definition->reactions[1]->stoichiometry.empty());
}

TEST(RemoveCompoundFromDefinition, LeavesNothingOfTheOnlyCompound) {
    const auto definition = MakePackage({u"A"});
    AddKinetic(*definition, u"r1", u"").stoichiometry = {1.0};
    RemoveCompoundFromDefinition(*definition, 0);
    EXPECT_TRUE(definition->compounds.empty());
    EXPECT_TRUE(definition->reactions[0]->stoichiometry.empty());
}

TEST(RemoveCompoundFromDefinition, IgnoresAnIndexBehindTheList) {
    const auto definition = MakePackage({u"A"});
    AddKinetic(*definition, u"r1", u"").stoichiometry = {1.0};
    RemoveCompoundFromDefinition(*definition, 1);
    RemoveCompoundFromDefinition(*definition, static_cast<std::size_t>(-1));
    EXPECT_EQ(definition->compounds.size(), 1U);
    EXPECT_EQ(definition->reactions[0]->stoichiometry, Numbers{1.0});
}

TEST(SetDefaultPcdFile, NamesTheFileBesideTheComponent) {
    ReactionPackDefinition definition(nullptr);
    definition.pcdFile = u"D:/gone.pcd";
    SetDefaultPcdFile(definition);
    EXPECT_TRUE(definition.pcdFile.starts_with(ComponentFolder() + u"data"));
    EXPECT_TRUE(definition.pcdFile.ends_with(u"Korvex1.pcd"));
    EXPECT_EQ(definition.pcdFile.size(), ComponentFolder().size() + std::u16string(u"data/Korvex1.pcd").size());
}

}  // namespace
}  // namespace reka::test
