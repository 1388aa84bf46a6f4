// SPDX-License-Identifier: MIT
// Adding compounds from a material template: which dialogs open, what they show, and what goes into the definition.

#include "editor/CompoundsOfMaterial.h"

#include <gtest/gtest.h>

#include <limits>

#include "editor/CompoundPage.h"
#include "editor/DefinitionCompounds.h"
#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "support/FakeFiles.h"
#include "support/FakeMaterialTemplates.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Lines = std::vector<std::string>;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double mostNegative = std::numeric_limits<double>::lowest();

class MaterialImportFlow : public testing::Test {
protected:
    MaterialImportFlow() {
        definition->simulationContext = CComRef<IDispatch>(simulator.Context());
        definition->thermoVersion = ThermoVersion::Version11;
        ui.compoundSource = 1;
    }
    ~MaterialImportFlow() override {
        definition->simulationContext.Reset();
        EXPECT_EQ(simulator.Held(), 0);
    }

    MaterialImport Import() {
        ui.asked.clear();
        simulator.log.Clear();
        const MaterialImport import = ImportFromMaterialTemplate(*definition, ui);
        EXPECT_EQ(simulator.Held(), 1);  // the context
        return import;
    }
    /// An import that ends with that box after the choice of the template.
    void ExpectEndsWith(const std::string& text, const char* style = "16") {
        EXPECT_EQ(Import(), MaterialImport::Ended);
        EXPECT_EQ(ui.asked, (Lines{source, "message|Error:|" + text + "|" + style}));
        EXPECT_TRUE(definition->compounds.empty());
    }

    static constexpr const char* source = "compound source|Amines|Salts";
    FakeTemplateSimulator simulator;
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({});
    CFakeEditorUi ui;
};

TEST_F(MaterialImportFlow, OffersTheCompoundsOfTheChosenTemplate) {
    int opened = 0;
    ui.inCompoundsOfMaterial = [&](const MaterialCompounds& compounds, ReactionPackDefinition& edited) {
        EXPECT_EQ(&edited, definition.get());
        EXPECT_EQ(compounds.ids.size(), 3U);
        EXPECT_EQ(simulator.material.references.Held(), 1);  // as long as the user chooses
        ++opened;
        return opened == 1;
    };
    EXPECT_EQ(Import(), MaterialImport::Added);
    EXPECT_EQ(ui.asked, (Lines{source, "compounds of material|Water|Sodium ion|Fe"}));
    EXPECT_EQ(simulator.log.calls[0], "get_MaterialTemplates()");
    EXPECT_EQ(simulator.log.calls[1], "CreateMaterialTemplate('Salts')");
    EXPECT_EQ(Import(), MaterialImport::Ended);  // cancelled there
    EXPECT_EQ(opened, 2);
}

TEST_F(MaterialImportFlow, AsksByTheVersionOfTheDefinition) {
    definition->thermoVersion = ThermoVersion::Version10;
    EXPECT_EQ(Import(), MaterialImport::Ended);
    EXPECT_EQ(ui.asked, (Lines{source, "compounds of material|oxidane|Na+|Fe"}));
}

TEST_F(MaterialImportFlow, IsNotOfferedWithoutAContext) {
    definition->simulationContext.Reset();
    EXPECT_EQ(ImportFromMaterialTemplate(*definition, ui), MaterialImport::UseFile);
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(MaterialImportFlow, IsNotOfferedWithoutTemplates) {
    simulator.context.templateNames = Strings({});
    EXPECT_EQ(Import(), MaterialImport::UseFile);
    simulator.context.templateNames.Reset();
    EXPECT_EQ(Import(), MaterialImport::UseFile);
    simulator.context.offersSystem = false;
    EXPECT_EQ(Import(), MaterialImport::UseFile);
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(MaterialImportFlow, LeavesTheFileOrEndsAsTheUserSays) {
    ui.compoundSource = -1;
    EXPECT_EQ(Import(), MaterialImport::UseFile);
    ui.compoundSource.reset();
    EXPECT_EQ(Import(), MaterialImport::Cancelled);
    EXPECT_EQ(ui.asked, Lines{source});
    EXPECT_EQ(simulator.log.calls, Lines{"get_MaterialTemplates()"});
}

TEST_F(MaterialImportFlow, TellsWhereItFailed) {
    const auto fail = [this](int call) { simulator.log.failAt = call; };
    fail(2);
    ExpectEndsWith("Failed to create selected material template");
    fail(3);
    ExpectEndsWith("Failed to create material object from selected material template", "0");  // without an icon
    fail(4);
    ExpectEndsWith("Failed to get list of compound IDs from material object");
    fail(0);
    simulator.material.offersCompounds = false;
    ExpectEndsWith("Failed to get ICapeThermoCompounds interface from material object");
    simulator.materialTemplate.offersTemplate = false;
    ExpectEndsWith("Failed to obtain ICapeThermoMaterialTemplate interface from selected material template");
    fail(1);
    EXPECT_EQ(Import(), MaterialImport::UseFile);
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(MaterialImportFlow, EndsWithoutAWordIfTheContextHasLostItsTemplates) {
    simulator.log.onCall = [this](const std::string&) { simulator.context.offersSystem = false; };
    EXPECT_EQ(Import(), MaterialImport::Ended);
    EXPECT_EQ(ui.asked, Lines{source});
}

TEST_F(MaterialImportFlow, TellsThatThereAreNoCompounds) {
    const std::string none = "There are no compound definitions for the selected material template";
    simulator.material.componentIds = Strings({});
    definition->thermoVersion = ThermoVersion::Version10;
    ExpectEndsWith(none);
    for (CVariant* list : {&simulator.material.ids, &simulator.material.formulas, &simulator.material.names,
                           &simulator.material.molecularWeights, &simulator.material.casNumbers}) {
        list->Reset();
    }
    definition->thermoVersion = ThermoVersion::Version11;
    ExpectEndsWith(none);
}

TEST_F(MaterialImportFlow, IsTheFirstHalfOfTheButtonOfThePage) {
    CFakeFiles files;
    CCompoundPage page(*definition, ui);
    const CompoundPageChange nothing = {false, false};
    const CompoundPageChange reactionPageAlone = {false, true};
    const CompoundPageChange both = {true, true};
    EXPECT_EQ(page.Add(), reactionPageAlone);  // cancelled among the compounds
    EXPECT_EQ(ui.asked.back(), "compounds of material|Water|Sodium ion|Fe");
    ui.inCompoundsOfMaterial = [](const MaterialCompounds&, ReactionPackDefinition&) { return true; };
    EXPECT_EQ(page.Add(), both);  // with nothing ticked
    ui.inCompoundsOfMaterial = [](const MaterialCompounds&, ReactionPackDefinition& edited) {
        AddCompoundToDefinition(edited, std::make_unique<CompoundDefinition>());
        return true;
    };
    const auto row = static_cast<std::int32_t>(definition->compounds.size());
    EXPECT_EQ(page.Add(), (CompoundPageChange{true, true, row}));
    EXPECT_EQ(page.Add(), (CompoundPageChange{true, true, row + 1}));
    page.Select(0);
    EXPECT_EQ(page.Add(), (CompoundPageChange{true, true, row + 2}));
    EXPECT_EQ(page.Selection(), -1);  // the list is made anew
    simulator.material.offersCompounds = false;
    EXPECT_EQ(page.Add(), reactionPageAlone);  // after a failure too
    ui.compoundSource.reset();
    EXPECT_EQ(page.Add(), nothing);
    EXPECT_EQ(ui.asked.back(), source);
    ui.compoundSource = -1;
    EXPECT_EQ(page.Add(), reactionPageAlone);
    EXPECT_EQ(ui.asked.back().substr(0, 18), "compounds of file|");
}

TEST(CompoundSourceChoice, OpensOnTheDatabase) {
    CCompoundSourceChoice choice;
    EXPECT_TRUE(choice.isFromDatabase);
    EXPECT_EQ(choice.selectedListIndex, 0);
    EXPECT_FALSE(choice.IsListEnabled());
    EXPECT_TRUE(choice.Accept());
    EXPECT_EQ(choice.selectedTemplate, -1);
}

TEST(CompoundSourceChoice, TakesTheSelectedTemplate) {
    CCompoundSourceChoice choice;
    choice.isFromDatabase = false;
    choice.selectedListIndex = 2;
    EXPECT_TRUE(choice.IsListEnabled());
    EXPECT_TRUE(choice.Accept());
    EXPECT_EQ(choice.selectedTemplate, 2);
    choice.isFromDatabase = true;  // chosen again: the selection counts no more
    EXPECT_TRUE(choice.Accept());
    EXPECT_EQ(choice.selectedTemplate, -1);
}

TEST(CompoundSourceChoice, StaysOpenWithoutATemplate) {
    CCompoundSourceChoice choice;
    choice.isFromDatabase = false;
    choice.selectedListIndex = -1;
    EXPECT_FALSE(choice.Accept());
    EXPECT_EQ(choice.selectedTemplate, -1);
}

/// The dialog on water, a sodium ion without a name, and an unknown.
class CompoundsOfMaterial : public testing::Test {
protected:
    CompoundsOfMaterial() {
        compounds.names = {u"Water", u"", u"Unknown"};
        compounds.ids = {u"H2O", u"Na+", u"X"};
        compounds.formulas = {u"H2O", u"Na", u""};
        compounds.casNumbers = {u"7732-18-5", u"", u""};
        compounds.molecularWeights = {18.01528, 22.98977, nan};
        compounds.charges = {nan, 1.0, mostNegative};
        AddKinetic(*definition, u"r", u"").stoichiometry = {-1.0};
    }
    Lines Names() const {
        Lines names;
        for (const auto& compound : definition->compounds) names.push_back(Show(compound->name.Get()));
        return names;
    }

    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"A"});
    MaterialCompounds compounds;
    CFakeEditorUi ui;
    CCompoundsOfMaterial dialog{compounds, *definition};
};

TEST_F(CompoundsOfMaterial, ShowsOneRowForEach) {
    const Lines labels = {"Name", "Formula", "Mol Weight", "CAS"};
    ASSERT_EQ(std::size(materialCompoundColumns), labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(Utf8FromUtf16(materialCompoundColumns[i]), labels[i]);
    const std::vector<MaterialCompoundRow> rows = dialog.Rows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0], (MaterialCompoundRow{u"Water", u"H2O", u"18.0153", u"7732-18-5"}));
    EXPECT_EQ(rows[1], (MaterialCompoundRow{u"", u"Na", u"22.9898", u""}));
    EXPECT_EQ(rows[2], (MaterialCompoundRow{u"Unknown", u"", u"N/A", u""}));
    compounds.molecularWeights[2] = mostNegative;
    EXPECT_EQ(dialog.Rows()[2][2], u"N/A");
}

TEST_F(CompoundsOfMaterial, AddsTheTickedOnesInTheirOrder) {
    definition->compounds[0]->name = CBstr::Make(u"Water");  // it may be there already
    EXPECT_TRUE(dialog.Accept({0, 1}, ui));
    EXPECT_EQ(ui.asked, Lines{});
    EXPECT_EQ(Names(), (Lines{"'Water'", "'Water'", "null"}));
    EXPECT_EQ(definition->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 0.0, 0.0}));
    const CompoundDefinition& water = *definition->compounds[1];
    EXPECT_EQ(Show(water.id.Get()), "'H2O'");
    EXPECT_EQ(Show(water.formula.Get()), "'H2O'");
    EXPECT_EQ(Show(water.casNumber.Get()), "'7732-18-5'");
    EXPECT_EQ(water.molecularWeight, 18.01528);
    EXPECT_EQ(water.charge, 0.0);  // unknown
    EXPECT_EQ(water.databaseIndex, -1);
    const CompoundDefinition& sodium = *definition->compounds[2];
    EXPECT_EQ(Show(sodium.casNumber.Get()), "null");
    EXPECT_EQ(sodium.charge, 1.0);
}

TEST_F(CompoundsOfMaterial, AddsNothingOfAListWithAnUnknownWeight) {
    for (const double unknown : {nan, mostNegative}) {
        compounds.molecularWeights[2] = unknown;
        ui.asked.clear();
        EXPECT_FALSE(dialog.Accept({0, 2}, ui));
        EXPECT_EQ(ui.asked, Lines{"message|Error:|Cannot add compound Unknown: molar weight is unknown|16"});
        EXPECT_EQ(Names(), Lines{"'A'"});
    }
    compounds.molecularWeights[0] = nan;
    ui.asked.clear();
    EXPECT_FALSE(dialog.Accept({0, 2}, ui));  // the first one is told
    EXPECT_EQ(ui.asked, Lines{"message|Error:|Cannot add compound Water: molar weight is unknown|16"});
}

TEST_F(CompoundsOfMaterial, TakesEveryWeightThatIsANumber) {
    compounds.molecularWeights = {0.0, -1.0, std::numeric_limits<double>::infinity()};
    EXPECT_TRUE(dialog.Accept({0, 1, 2}, ui));
    EXPECT_EQ(definition->compounds.size(), 4U);
    EXPECT_EQ(definition->compounds[3]->charge, 0.0);  // the most negative number
}

TEST_F(CompoundsOfMaterial, EndsWithNothingTicked) {
    EXPECT_TRUE(dialog.Accept({}, ui));
    EXPECT_EQ(Names(), Lines{"'A'"});
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(CompoundsOfMaterial, EndsWithoutCompounds) {
    compounds = {};
    EXPECT_TRUE(dialog.Rows().empty());
    EXPECT_TRUE(dialog.Accept({}, ui));
    EXPECT_TRUE(dialog.Accept({0, 7}, ui));  // no such rows
    EXPECT_EQ(Names(), Lines{"'A'"});
}

}  // namespace
}  // namespace reka::test
