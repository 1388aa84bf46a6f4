// SPDX-License-Identifier: MIT
// The fields of the general page as the editor opens.

#include "editor/GeneralPage.h"

#include <gtest/gtest.h>

#include "support/Builders.h"

namespace reka::test {
namespace {

TEST(GeneralPage, ShowsNameAndDescription) {
    const auto definition = MakePackage({});
    definition->description = CBstr::Make(u"About it");
    const GeneralPageFields fields = FillGeneralPage(*definition);
    EXPECT_EQ(fields.name, u"Test package");
    EXPECT_EQ(fields.description, u"About it");
}

TEST(GeneralPage, ShowsAbsentTextsAsEmptyFields) {
    const ReactionPackDefinition definition(nullptr);
    const GeneralPageFields fields = FillGeneralPage(definition);
    EXPECT_EQ(fields.name, u"");
    EXPECT_EQ(fields.description, u"");
}

TEST(GeneralPage, SelectsTheThermoVersion) {
    ReactionPackDefinition definition(nullptr);
    EXPECT_EQ(FillGeneralPage(definition).versionIndex, 0);
    EXPECT_EQ(std::u16string(thermoVersionTexts[0]), u"Version 1.0");
    definition.thermoVersion = ThermoVersion::Version11;
    EXPECT_EQ(FillGeneralPage(definition).versionIndex, 1);
    EXPECT_EQ(std::u16string(thermoVersionTexts[1]), u"Version 1.1");
    for (const std::int32_t unknown : {2, -1}) {
        definition.thermoVersion = static_cast<ThermoVersion>(unknown);
        EXPECT_EQ(FillGeneralPage(definition).versionIndex, -1);
    }
}

}  // namespace
}  // namespace reka::test
