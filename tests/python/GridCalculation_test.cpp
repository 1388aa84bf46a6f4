// SPDX-License-Identifier: MIT
// Each number of a grid against the one that a package gives to a simulator at that point, bit for bit.

#include "python/native/GridCalculation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <thread>

#include "CPackageSession.h"
#include "DocumentFixture.h"
#include "material/ReadMaterial.h"
#include "packagetext/BagMembers.h"
#include "platform/HostArithmetic.h"
#include "platform/SameText.h"
#include "support/Builders.h"

namespace rekapython {

namespace {

constexpr const char16_t* properties[] = {u"ReactionRate", u"ChemicalEquilibriumConstant", u"EnthalpyOfReaction"};

const reka::ReactionProperty& Property(const char16_t* name) {
    return *reka::FindReactionProperty(reka::CBstr::Make(name).Get());
}

std::uint64_t Bits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

GridInput Numbers(const std::vector<double>& values, std::vector<std::ptrdiff_t> steps) {
    for (std::ptrdiff_t& step : steps) step *= static_cast<std::ptrdiff_t>(sizeof(double));
    return {reinterpret_cast<const char*>(values.data()), std::move(steps), sizeof(double)};
}

std::unique_ptr<reka::ReactionPackDefinition> ReadExample(const std::string& name) {
    std::vector<std::string> notes;
    return std::move(rekatool::LoadDefinitions(rekasim::ExamplePath(name), notes).front());
}

/// The indices of the reactions that have `property`.
std::vector<std::size_t> ReactionsWith(const reka::ReactionPackDefinition& definition,
                                       const reka::ReactionProperty& property) {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < definition.reactions.size(); ++i) {
        const reka::ReactionDefinition& reaction = *definition.reactions[i];
        if (reka::CanBeCalculated(property, reaction, reaction.phase.Get())) indices.push_back(i);
    }
    return indices;
}

/// What the material of a document gives for each compound of `definition`.
std::vector<double> Values(const rekasim::MaterialState& state, const char16_t* property,
                           const reka::ReactionPackDefinition& definition) {
    std::vector<double> all;
    std::u16string errorText;
    if (!rekasim::ComputeMaterialProperty(state, *rekasim::FindMaterialProperty(property), false, all, errorText)) {
        return {};
    }
    if (all.size() == 1) return all;
    std::vector<double> values;
    for (const auto& compound : definition.compounds) {
        for (std::size_t i = 0; i < state.compounds.size(); ++i) {
            if (state.compounds[i].casNumber == compound->casNumber.View()) values.push_back(all[i]);
        }
    }
    return values;
}

TEST(GridCalculation, GivesTheBitsThatAPackageGives) {
    std::size_t compared = 0;
    for (const std::string& name : rekasim::ExampleNames()) {
        rekasim::MaterialState state;
        std::string errorText;
        ASSERT_TRUE(rekasim::ReadMaterial(rekasim::ReadExample(name), state, errorText)) << errorText;
        CGridPackage package(ReadExample(name));
        const auto one = static_cast<std::ptrdiff_t>(package.Definition().compounds.size());
        const double middle = state.temperature;
        for (const char16_t* const property : properties) {
            const std::vector<std::size_t> reactions = ReactionsWith(package.Definition(), Property(property));
            std::vector<double> temperatures, fractions, molarities, activities, fugacities, results;
            const std::vector<double> factors = {0.9, 1, 1.1};
            for (const double factor : factors) {
                state.temperature = middle * factor;
                temperatures.push_back(state.temperature);
                const auto add = [&](std::vector<double>& all, const char16_t* what) {
                    const std::vector<double> values = Values(state, what, package.Definition());
                    all.insert(all.end(), values.begin(), values.end());
                };
                add(fractions, u"fraction");
                add(activities, u"activity");
                add(fugacities, u"fugacity");
                const std::vector<double> density = Values(state, u"density", package.Definition());
                for (const double fraction : Values(state, u"fraction", package.Definition())) {
                    if (!density.empty()) molarities.push_back(fraction * density[0]);
                }
            }
            const std::vector<double> pressure = {state.pressure};
            GridState grid;
            grid.shape = {factors.size()};
            grid.temperature = Numbers(temperatures, {1});
            grid.pressure = Numbers(pressure, {0});
            grid.moleFraction = Numbers(fractions, {one});
            if (!molarities.empty()) grid.molarity = Numbers(molarities, {one});
            if (!activities.empty()) grid.activity = Numbers(activities, {one});
            if (!fugacities.empty()) grid.fugacity = Numbers(fugacities, {one});
            results.resize(factors.size() * reactions.size());
            package.Calculate(Property(property), reactions, grid, false, results.data(), [] {});
            std::vector<double> modelled(results.size());
            if (state.model == rekasim::PhaseModel::IdealGas) {
                grid.molarity = grid.activity = grid.fugacity = {};
                grid.isIdealGas = true;
                package.Calculate(Property(property), reactions, grid, false, modelled.data(), [] {});
            } else {
                modelled = results;
            }
            for (std::size_t point = 0; point < factors.size(); ++point) {
                for (std::size_t i = 0; i < reactions.size(); ++i) {
                    const std::u16string id(package.Definition().reactions[reactions[i]]->id.View());
                    const double expected = rekasim::CalculateExample(name, property, id, middle * factors[point]);
                    EXPECT_EQ(Bits(results[point * reactions.size() + i]), Bits(expected)) << name;
                    EXPECT_EQ(Bits(modelled[point * reactions.size() + i]), Bits(expected)) << name;
                    ++compared;
                }
            }
            state.temperature = middle;
        }
    }
    EXPECT_GE(compared, 60u);
}

/// Rate T + 1000 P + 1e6 X(one) + 1e7 X(two).
std::unique_ptr<reka::ReactionPackDefinition> MakePlain() {
    auto definition = reka::test::MakePackage({u"one", u"two"});
    reka::test::AddKinetic(*definition, u"plain", u"T+1000*P+1E6*X(one)+1E7*X(two)");
    return definition;
}

TEST(GridCalculation, WalksEachAxisWithItsOwnStep) {
    CGridPackage package(MakePlain());
    const std::vector<double> temperatures = {1, 2, 3};
    const std::vector<double> pressures = {4, 5};
    // Laid out with the compounds outermost: x[compound][pressure].
    const std::vector<double> fractions = {1, 2, 3, 4};
    GridState grid;
    grid.shape = {3, 2};
    grid.temperature = Numbers(temperatures, {1, 0});
    grid.pressure = Numbers(pressures, {0, 1});
    grid.moleFraction = Numbers(fractions, {0, 1});
    grid.moleFraction.compoundStep = 2 * sizeof(double);
    std::vector<double> results(6);
    package.Calculate(Property(u"ReactionRate"), {0}, grid, false, results.data(), [] {});
    for (std::size_t t = 0; t < 3; ++t) {
        for (std::size_t p = 0; p < 2; ++p) {
            EXPECT_EQ(results[2 * t + p],
                      temperatures[t] + 1000 * pressures[p] + 1e6 * fractions[p] + 1e7 * fractions[2 + p]);
        }
    }
}

TEST(GridCalculation, ReadsNumbersThatLieBetweenTheWords) {
    CGridPackage package(MakePlain());
    std::vector<char> bytes(3 * sizeof(double) + 1);
    const double numbers[] = {300, 0.25, 0.75};
    std::memcpy(bytes.data() + 1, numbers, sizeof numbers);
    const double pressure = 2;
    GridState grid;
    grid.temperature = {bytes.data() + 1, {}, 0};
    grid.pressure = {reinterpret_cast<const char*>(&pressure), {}, 0};
    grid.moleFraction = {bytes.data() + 1 + sizeof(double), {}, sizeof(double)};
    double result = 0;
    package.Calculate(Property(u"ReactionRate"), {0}, grid, false, &result, [] {});
    EXPECT_EQ(result, 300 + 2000 + 0.25e6 + 0.75e7);
}

TEST(GridCalculation, TakesNoPointsAndNoReactions) {
    CGridPackage package(MakePlain());
    GridState grid;
    const std::vector<double> none;
    grid.shape = {4, 0};
    grid.temperature = grid.pressure = Numbers(none, {0, 0});
    grid.moleFraction = Numbers(none, {0, 0});
    EXPECT_EQ(CountPoints(grid), 0u);
    package.Calculate(Property(u"ReactionRate"), {0}, grid, false, nullptr, [] {});
    grid.shape = {};
    EXPECT_EQ(CountPoints(grid), 1u);
    package.Calculate(Property(u"ReactionRate"), {}, grid, false, nullptr, [] {});
}

/// The words of a refusal.
template <class Call>
std::string WordsOf(Call&& call) {
    try {
        call();
    } catch (const PackageError& error) {
        return error.what();
    }
    return "(none)";
}

TEST(GridCalculation, RefusesInTheWordsOfAPackage) {
    auto definition = reka::test::MakePackage({u"A"});
    reka::test::AddKinetic(*definition, u"k", u"1/(T-300)");
    reka::test::AddKinetic(*definition, u"empty", u"");
    reka::test::AddEquilibrium(*definition, u"e", u"2");
    const CGridPackage package(std::move(definition));
    const auto words = [&](const char16_t* property, std::size_t reaction, std::optional<std::u16string> phase) {
        return WordsOf([&] { package.Dependencies(Property(property), {reaction}, phase); });
    };
    EXPECT_EQ(words(u"ReactionRate", 0, {}), "(none)");
    EXPECT_EQ(words(u"ReactionRate", 0, u"liquid"), "(none)");
    EXPECT_EQ(words(u"ReactionRate", 2, {}),
              "Reaction \"e\" is not a kinetic reaction, cannot calculate property ReactionRate");
    EXPECT_EQ(words(u"ChemicalEquilibriumConstant", 0, {}),
              "Reaction \"k\" is not an equilibrium reaction, cannot calculate property ChemicalEquilibriumConstant");
    EXPECT_EQ(words(u"ReactionRate", 0, u"Vapor"),
              "Reaction \"k\" is defined for phase Liquid; cannot perform calculation for requested phase Vapor");
    EXPECT_EQ(words(u"ReactionRate", 1, {}), "rate expression not defined for requested reaction");
    EXPECT_EQ(words(u"EnthalpyOfReaction", 0, {}),
              "heat of reaction is not defined for reaction \"k\". Cannot calculation property EnthalpyOfReaction");
}

TEST(GridCalculation, TellsAPointWithoutAValueOrMarksIt) {
    auto definition = reka::test::MakePackage({u"A"});
    reka::test::AddKinetic(*definition, u"k", u"LOG(T-300)");
    CGridPackage package(std::move(definition));
    const std::vector<double> temperatures = {301, 299, 302};
    GridState grid;
    grid.shape = {3};
    grid.temperature = Numbers(temperatures, {1});
    std::vector<double> results(3);
    const std::string words =
        WordsOf([&] { package.Calculate(Property(u"ReactionRate"), {0}, grid, false, results.data(), [] {}); });
    EXPECT_EQ(words.find("Failed to calculate ReactionRate for reaction k: "), 0u) << words;
    package.Calculate(Property(u"ReactionRate"), {0}, grid, true, results.data(), [] {});
    EXPECT_EQ(results[0], 0);
    EXPECT_TRUE(std::isnan(results[1]));
    EXPECT_EQ(results[2], std::log(2.0));
}

TEST(GridCalculation, CalculatesUnderItsOwnSettingsAndPausesUnderTheCallers) {
    auto definition = reka::test::MakePackage({u"A"});
    reka::test::AddKinetic(*definition, u"k", u"T/3");
    CGridPackage package(std::move(definition));
    const std::vector<double> temperatures(1 << 17, 1.0);
    GridState grid;
    grid.shape = {temperatures.size()};
    grid.temperature = Numbers(temperatures, {1});
    std::vector<double> results(temperatures.size());
    const reka::ArithmeticSettings before = reka::CurrentArithmetic();
    const reka::ArithmeticSettings upwards = {before.sse | 0x4000, before.x87};
    reka::SetArithmetic(upwards);
    std::size_t pauses = 0;
    bool areCallers = true;
    package.Calculate(Property(u"ReactionRate"), {0}, grid, false, results.data(), [&] {
        ++pauses;
        areCallers = areCallers && reka::SameArithmetic(reka::CurrentArithmetic(), upwards);
    });
    const bool areKept = reka::SameArithmetic(reka::CurrentArithmetic(), upwards);
    reka::SetArithmetic(before);
    EXPECT_EQ(pauses, 2u);
    EXPECT_TRUE(areCallers);
    EXPECT_TRUE(areKept);
    EXPECT_EQ(results.front(), 1.0 / 3);
    EXPECT_EQ(results.back(), 1.0 / 3);
}

TEST(GridCalculation, MayBeAskedAgainWhileItPauses) {
    CGridPackage package(MakePlain());
    const std::vector<double> temperatures(1 << 17, 300);
    const std::vector<double> rest = {0, 0};
    const std::vector<double> other = {700};
    const auto calculate = [&](const std::vector<double>& temperature, std::ptrdiff_t step,
                               const std::function<void()>& pause) {
        GridState grid;
        grid.shape = {temperature.size()};
        grid.temperature = Numbers(temperature, {step});
        grid.pressure = Numbers(rest, {0});
        grid.moleFraction = Numbers(rest, {0});
        std::vector<double> results(temperature.size());
        package.Calculate(Property(u"ReactionRate"), {0}, grid, false, results.data(), pause);
        return results;
    };
    std::vector<double> inner;
    const auto outer = calculate(temperatures, 0, [&] { inner = calculate(other, 0, [] {}); });
    EXPECT_EQ(inner, other);
    EXPECT_EQ(outer, temperatures);
}

TEST(GridCalculation, ServesOneThreadAfterTheOther) {
    CGridPackage package(MakePlain());
    std::vector<std::vector<double>> results(4, std::vector<double>(2000));
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < results.size(); ++thread) {
        threads.emplace_back([&, thread] {
            const std::vector<double> temperature = {static_cast<double>(thread)};
            const std::vector<double> rest = {0, 0};
            GridState grid;
            grid.shape = {2000};
            grid.temperature = Numbers(temperature, {0});
            grid.pressure = Numbers(rest, {0});
            grid.moleFraction = Numbers(rest, {0});
            package.Calculate(Property(u"ReactionRate"), {0}, grid, false, results[thread].data(), [] {});
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (std::size_t thread = 0; thread < results.size(); ++thread) {
        EXPECT_EQ(results[thread], std::vector<double>(2000, static_cast<double>(thread)));
    }
}

}  // namespace

}  // namespace rekapython
