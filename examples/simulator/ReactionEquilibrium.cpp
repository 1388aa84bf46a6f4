// Equilibrium of one reaction after the other, until none moves any more. Each is a root between the two extents at
// which a compound runs out; for an ideal phase each step lowers the Gibbs energy, which has one minimum.

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdint>
#include <functional>

#include "ReactorSolvers.h"

namespace rekasim {

namespace {

constexpr int mostRounds = 100000;
constexpr std::uintmax_t mostSteps = 200;

double FindRoot(const std::function<double(double)>& function, double low, double high) {
    const double atLow = function(low);
    const double atHigh = function(high);
    if (atLow == 0) return low;
    if (atHigh == 0) return high;
    if ((atLow < 0) == (atHigh < 0)) throw ReactorFailure("no equilibrium is found");
    std::uintmax_t steps = mostSteps;
    const auto [left, right] = boost::math::tools::toms748_solve(function, low, high, atLow, atHigh,
                                                                 boost::math::tools::eps_tolerance<double>(52), steps);
    return (left + right) / 2;
}

/// Product side less constant times reactant side: finite where a compound has run out, and of opposite signs at both
/// ends of the range.
double Imbalance(CReactorModel& model, std::size_t reaction, const std::vector<double>& extents, double temperature) {
    const double constant = model.EquilibriumConstants(extents, temperature)[reaction];
    const std::vector<double> concentrations = model.ConcentrationsOf(reaction, extents, temperature);
    double products = 1;
    double reactants = 1;
    for (std::size_t i = 0; i < concentrations.size(); ++i) {
        const double coefficient = model.Coefficient(reaction, i);
        if (coefficient > 0) products *= std::pow(concentrations[i], coefficient);
        if (coefficient < 0) reactants *= std::pow(concentrations[i], -coefficient);
    }
    return products - constant * reactants;
}

std::vector<double> EquilibriumExtents(CReactorModel& model, double temperature) {
    std::vector<double> extents(model.ReactionCount(), 0.0);
    for (int round = 0; round < mostRounds; ++round) {
        double change = 0;
        for (std::size_t r = 0; r < extents.size(); ++r) {
            double low = 0;
            double high = 0;
            model.FindRange(r, extents, low, high);
            std::vector<double> tried = extents;
            const double root = low < high ? FindRoot(
                                                 [&](double extent) {
                                                     tried[r] = extent;
                                                     return Imbalance(model, r, tried, temperature);
                                                 },
                                                 low, high)
                                           : low;
            change = std::max(change, std::fabs(root - extents[r]));
            extents[r] = root;
        }
        if (extents.size() == 1 || change <= 1e-14 * model.FeedFlow()) return extents;
    }
    throw ReactorFailure("the equilibria don't settle");
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
        if ((imbalance(end) < 0) != warms) return FindRoot(imbalance, low, high);
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
