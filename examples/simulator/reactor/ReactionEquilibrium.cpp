// SPDX-License-Identifier: MIT
// Equilibrium. One reaction has its extent between the two at which a compound runs out. Several are brought inside
// their ranges one after the other and then moved together by Newton's method, whose slopes are those of an ideal
// phase.

#include <algorithm>
#include <cmath>

#include "reactor/LinearEquations.h"
#include "reactor/ReactorSolvers.h"
#include "reactor/RootBetween.h"

namespace rekasim {

namespace {

constexpr int mostRounds = 50;
constexpr int mostNewtonSteps = 100;
constexpr double tolerance = 1e-11;      // of logarithms
constexpr double largestAffinity = 1e4;  // stands for infinity, where a compound has run out

/// How far a reaction is from its equilibrium: the logarithm of its product of concentrations over its constant. Below
/// zero it goes on.
double Affinity(CReactorModel& model, std::size_t reaction, const std::vector<double>& extents, double temperature) {
    const double constant = model.EquilibriumConstants(extents, temperature)[reaction];
    if (!(constant > 0)) throw ReactorFailure("an equilibrium constant isn't above zero");
    const std::vector<double> concentrations = model.ConcentrationsOf(reaction, extents, temperature);
    double sum = -std::log(constant);
    bool lacksProduct = false;
    bool lacksReactant = false;
    for (std::size_t i = 0; i < concentrations.size(); ++i) {
        const double coefficient = model.Coefficient(reaction, i);
        if (coefficient == 0) continue;
        if (concentrations[i] > 0) {
            sum += coefficient * std::log(concentrations[i]);
        } else {
            (coefficient > 0 ? lacksProduct : lacksReactant) = true;
        }
    }
    if (lacksProduct && lacksReactant) return 0;  // it can't move
    if (lacksProduct) return -largestAffinity;
    if (lacksReactant) return largestAffinity;
    return std::clamp(sum, -largestAffinity, largestAffinity);
}

std::vector<double> Affinities(CReactorModel& model, const std::vector<double>& extents, double temperature) {
    std::vector<double> affinities;
    for (std::size_t r = 0; r < extents.size(); ++r) affinities.push_back(Affinity(model, r, extents, temperature));
    return affinities;
}

double LargestOf(const std::vector<double>& values) {
    double largest = 0;
    for (const double value : values) largest = std::max(largest, std::fabs(value));
    return largest;
}

/// Brings one reaction to its equilibrium, the others staying.
void Settle(CReactorModel& model, std::size_t reaction, std::vector<double>& extents, double temperature) {
    double low = 0;
    double high = 0;
    model.FindRange(reaction, extents, low, high);
    if (!(low < high)) return;
    std::vector<double> tried = extents;
    const auto root = RootBetween(
        [&](double extent) {
            tried[reaction] = extent;
            return Affinity(model, reaction, tried, temperature);
        },
        low, high);
    if (root) extents[reaction] = *root;
}

/// The part of a step that leaves every flow above a hundredth of itself.
double PossiblePart(const CReactorModel& model, const std::vector<double>& extents, const std::vector<double>& step) {
    const std::vector<double> flows = model.Flows(extents);
    double part = 1;
    for (std::size_t i = 0; i < flows.size(); ++i) {
        double change = 0;
        for (std::size_t r = 0; r < step.size(); ++r) change += model.Coefficient(r, i) * step[r];
        if (change < 0 && flows[i] > 0) part = std::min(part, 0.99 * flows[i] / -change);
    }
    return part;
}

/// One step of all reactions together; false where none helps.
bool MoveTogether(CReactorModel& model, std::vector<double>& extents, double temperature) {
    const std::size_t count = extents.size();
    const std::vector<double> affinities = Affinities(model, extents, temperature);
    const std::vector<double> flows = model.Flows(extents);
    double total = 0;
    for (const double flow : flows) total += flow;
    std::vector<std::vector<double>> rows(count, std::vector<double>(count + 1));
    for (std::size_t r = 0; r < count; ++r) {
        for (std::size_t s = 0; s < count; ++s) {
            double changeR = 0;
            double changeS = 0;
            for (std::size_t i = 0; i < flows.size(); ++i) {
                const double product = model.Coefficient(r, i) * model.Coefficient(s, i);
                if (product != 0 && flows[i] > 0) rows[r][s] += product / flows[i];
                changeR += model.Coefficient(r, i);
                changeS += model.Coefficient(s, i);
            }
            rows[r][s] -= changeR * changeS / total;
        }
        rows[r][r] *= 1 + 1e-12;  // reactions that are sums of others leave the equations without one solution
        rows[r][count] = -affinities[r];
    }
    if (!SolveLinear(rows)) return false;
    std::vector<double> step;
    step.reserve(count);
    for (const std::vector<double>& row : rows) step.push_back(row[count]);
    double part = PossiblePart(model, extents, step);
    for (int tries = 0; tries < 30; ++tries, part /= 2) {
        std::vector<double> next = extents;
        for (std::size_t r = 0; r < count; ++r) next[r] += part * step[r];
        if (!(LargestOf(Affinities(model, next, temperature)) < LargestOf(affinities))) continue;
        extents = next;
        return true;
    }
    return false;
}

/// What rounding makes of affinities: a flow is the difference of larger ones.
double RoundingOf(const CReactorModel& model, const std::vector<double>& extents) {
    double smallest = model.FeedFlow();
    for (const double flow : model.Flows(extents)) {
        if (flow > 0) smallest = std::min(smallest, flow);
    }
    return std::max(1e-7, 1e-14 * model.FeedFlow() / smallest);
}

std::vector<double> EquilibriumExtents(CReactorModel& model, double temperature) {
    std::vector<double> extents(model.ReactionCount(), 0.0);
    if (extents.size() == 1) {
        Settle(model, 0, extents, temperature);
        return extents;
    }
    for (int round = 0; round < mostRounds; ++round) {
        for (std::size_t r = 0; r < extents.size(); ++r) Settle(model, r, extents, temperature);
        for (int step = 0; step < mostNewtonSteps; ++step) {
            if (LargestOf(Affinities(model, extents, temperature)) <= tolerance) return extents;
            if (!MoveTogether(model, extents, temperature)) break;
        }
        // Where rounding leaves no better step the reactions are as near as they get.
        if (LargestOf(Affinities(model, extents, temperature)) <= RoundingOf(model, extents)) return extents;
    }
    throw ReactorFailure("the equilibria don't settle: the constants may contradict each other");
}

/// The heat that is missing at `temperature`, in W: what warms the feed, and what the reactions take.
double HeatImbalance(CReactorModel& model, double feedTemperature, double temperature) {
    const std::vector<double> extents = EquilibriumExtents(model, temperature);
    const std::vector<double> heats = model.Heats(extents, temperature);
    double heat = model.HeatCapacityFlow(model.FeedFlows()) * (temperature - feedTemperature);
    for (std::size_t r = 0; r < heats.size(); ++r) heat += extents[r] * heats[r];
    return heat;
}

double AdiabaticTemperature(CReactorModel& model, double feedTemperature) {
    const auto imbalance = [&](double temperature) { return HeatImbalance(model, feedTemperature, temperature); };
    const bool warms = imbalance(feedTemperature) < 0;
    double low = feedTemperature;
    double high = feedTemperature;
    for (int tries = 0; tries < 100; ++tries) {
        double& end = warms ? high : low;
        end *= warms ? 1.05 : 1 / 1.05;
        const auto root = RootBetween(imbalance, low, high);
        if (root) return *root;
    }
    throw ReactorFailure("no temperature closes the heat balance");
}

}  // namespace

std::vector<ReactorPoint> SolveEquilibrium(CReactorModel& model, bool isAdiabatic) {
    const double feedTemperature = model.Feed().temperature;
    const double temperature = isAdiabatic ? AdiabaticTemperature(model, feedTemperature) : feedTemperature;
    return {{0, feedTemperature, model.FeedFlows()},
            {1, temperature, model.Flows(EquilibriumExtents(model, temperature))}};
}

}  // namespace rekasim
