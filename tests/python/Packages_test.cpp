// SPDX-License-Identifier: MIT
// What goes out leads back, and where the user's packages lie.

#include "python/native/Packages.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "DocumentFixture.h"
#include "support/Builders.h"

namespace rekapython {

namespace {

std::vector<std::uint8_t> SampleBlock(const char16_t* name = u"Sample") {
    auto definition = reka::test::MakePackage({u"one", u"two"});
    definition->name = reka::CBstr::Make(name);
    reka::test::AddKinetic(*definition, u"r", u"2*C(one)");
    return WriteBlock(*definition);
}

TEST(PythonPackages, AreThoseThatAreShipped) {
    std::vector<std::string> notes;
    const rekatool::Definitions shipped =
        rekatool::LoadDefinitions(std::string(REKA_SHIPPED_DATA) + "/REKAConfig.dat", notes);
    EXPECT_EQ(shipped.size(), rekasim::ExampleNames().size());
    EXPECT_TRUE(notes.empty());
}

TEST(PythonPackages, SurviveTheirBlock) {
    std::vector<std::string> notes;
    const std::vector<std::uint8_t> block = SampleBlock();
    EXPECT_EQ(WriteBlock(*rekatool::LoadDefinition(block, notes)), block);
}

TEST(PythonPackages, OfTheUserLieWhereTheComponentKeepsThem) {
    EXPECT_EQ(UserTemplatesPath(), std::string(std::getenv("XDG_CONFIG_HOME")) + "/NAVO/data/REKAConfig.dat");
}

}  // namespace

}  // namespace rekapython
