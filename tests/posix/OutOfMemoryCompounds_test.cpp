// SPDX-License-Identifier: MIT
// Allocations fail in turn on the way from a material template to the compounds of a definition.

#include <gtest/gtest.h>

#include <new>

#include "editor/CompoundsOfMaterial.h"
#include "posix/AllocationFailures.h"
#include "support/Builders.h"
#include "support/FakeEditorUi.h"
#include "support/FakeMaterialTemplates.h"

namespace reka::test {
namespace {

/// The result of a routine that may run out of memory.
template <class Routine>
HRESULT Attempt(Routine&& routine) {
    try {
        return routine() ? S_OK : E_FAIL;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

TEST(OutOfMemoryCompounds, LeavesWholeListsOrSaysSo) {
    FakeTemplateSimulator simulator;
    const COwnArithmetic arithmetic;
    for (const ThermoVersion version : {ThermoVersion::Version10, ThermoVersion::Version11}) {
        MaterialCompounds compounds;
        std::u16string errorText;
        ForEachFailure([&] { errorText.clear(); },
                       [&] {
                           return Attempt([&] {
                               return ReadMaterialCompounds(*simulator.material.Dispatch(), version, compounds,
                                                            errorText, arithmetic);
                           });
                       },
                       [&](HRESULT result, bool isReached) {
                           EXPECT_EQ(simulator.Held(), 0);
                           EXPECT_TRUE(isReached || result == S_OK);
                           EXPECT_TRUE(result != E_FAIL || !errorText.empty());  // the material's own memory
                           if (result != S_OK) return;
                           EXPECT_EQ(compounds.names.size(), compounds.ids.size());
                           EXPECT_EQ(compounds.names.size(), compounds.charges.size());
                           EXPECT_EQ(compounds.names.size(), compounds.molecularWeights.size());
                           EXPECT_EQ(compounds.names.size(), compounds.formulas.size());
                           EXPECT_EQ(compounds.names.size(), compounds.casNumbers.size());
                       });
    }
}

TEST(OutOfMemoryCompounds, GivesBackAllOfTheSimulator) {
    FakeTemplateSimulator simulator;
    const std::unique_ptr<ReactionPackDefinition> definition = MakePackage({u"A"});
    definition->simulationContext = CComRef<IDispatch>(simulator.Context());
    CFakeEditorUi ui;
    ui.compoundSource = 0;
    ForEachFailure(
        [&] { simulator.log.Clear(); },
        [&] {
            return Attempt([&] { return ImportFromMaterialTemplate(*definition, ui) != MaterialImport::Cancelled; });
        },
        [&](HRESULT result, bool isReached) {
            EXPECT_EQ(simulator.Held(), 1);  // the context
            EXPECT_EQ(definition->compounds.size(), 1U);
            EXPECT_TRUE(isReached || result == S_OK);
        });
    definition->simulationContext.Reset();
}

TEST(OutOfMemoryCompounds, KeepsReactionsInStepWithTheCompounds) {
    const MaterialCompounds compounds = {{u"Water", u"Salt"}, {u"w", u"s"}, {u"H2O", u"NaCl"},
                                         {u"1", u"2"},        {18.0, 58.4}, {0.0, 0.0}};
    std::unique_ptr<ReactionPackDefinition> definition;
    CFakeEditorUi ui;
    ForEachFailure(
        [&] {
            definition = MakePackage({u"A"});
            AddKinetic(*definition, u"r", u"");
        },
        [&] { return Attempt([&] {
                  return CCompoundsOfMaterial(compounds, *definition).Accept({0, 1}, ui);
              }); },
        [&](HRESULT result, bool isReached) {
            EXPECT_EQ(result, isReached ? E_OUTOFMEMORY : S_OK);
            EXPECT_EQ(definition->reactions[0]->stoichiometry.size(), definition->compounds.size());
            EXPECT_EQ(definition->compounds.size() == 3, !isReached);
        });
}

}  // namespace
}  // namespace reka::test
