// SPDX-License-Identifier: MIT
// The stirred tank, followed in time from its start, filled with feed, until it is steady. The time steps are implicit
// ones that grow, each solved by Newton's method, so where several steady states exist the one that such a start leads
// to is found.

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "reactor/LinearEquations.h"
#include "reactor/ReactorSolvers.h"
#include "reactor/RootBetween.h"

namespace rekasim {

namespace {

using Vector = std::vector<double>;

constexpr int mostIterations = 50;
constexpr double tolerance = 1e-12;   // of unknowns of the order of 1
constexpr double slowestPace = 1e-9;  // a step of this length has reached the steady state
constexpr double fastestPace = 1e20;

/// The equations of one time step: extents as parts of the feed flow, and the temperature as a multiple of the feed's.
class CTank {
public:
    CTank(CReactorModel& reactorModel, double tankSize, bool adiabatic)
        : model(reactorModel),
          size(tankSize),
          isAdiabatic(adiabatic),
          feedTemperature(model.Feed().temperature),
          feedCapacity(adiabatic ? model.HeatCapacityFlow(model.FeedFlows()) : 0) {}

    std::size_t UnknownCount() const { return model.ReactionCount() + (isAdiabatic ? 1 : 0); }
    Vector Inlet() const {
        Vector unknowns(UnknownCount(), 0.0);
        if (isAdiabatic) unknowns[unknowns.size() - 1] = 1.0;
        return unknowns;
    }

    std::vector<double> Extents(const Vector& unknowns) const {
        std::vector<double> extents(model.ReactionCount());
        for (std::size_t r = 0; r < extents.size(); ++r) extents[r] = unknowns[r] * model.FeedFlow();
        return extents;
    }
    double Temperature(const Vector& unknowns) const {
        return isAdiabatic ? unknowns[unknowns.size() - 1] * feedTemperature : feedTemperature;
    }
    bool IsPossible(const Vector& unknowns) const {
        if (!(Temperature(unknowns) > 0)) return false;
        const std::vector<double> flows = model.Flows(Extents(unknowns));
        return std::all_of(flows.begin(), flows.end(), [](double flow) { return flow >= 0; });
    }

    /// What is left over of the balances after a step of 1 / `pace` residence times from `before`; with a pace of 0, of
    /// those of the steady state.
    Vector Residuals(const Vector& unknowns, const Vector& before, double pace) const {
        const std::vector<double> extents = Extents(unknowns);
        const double temperature = Temperature(unknowns);
        const std::vector<double> rates = model.Rates(extents, temperature);
        Vector residuals(UnknownCount());
        for (std::size_t r = 0; r < rates.size(); ++r) {
            residuals[r] = rates[r] * size / model.FeedFlow() - unknowns[r] - pace * (unknowns[r] - before[r]);
        }
        if (isAdiabatic) {
            const std::vector<double> heats = model.Heats(extents, temperature);
            double heat = feedCapacity * (temperature - feedTemperature);
            for (std::size_t r = 0; r < heats.size(); ++r) heat += extents[r] * heats[r];
            residuals[residuals.size() - 1] = heat / (feedCapacity * feedTemperature);
        }
        return residuals;
    }

private:
    CReactorModel& model;
    double size;
    bool isAdiabatic;
    double feedTemperature;
    double feedCapacity;
};

double LargestOf(const Vector& values) {
    double largest = 0;
    for (const double value : values) largest = std::max(largest, std::fabs(value));
    return largest;
}

/// The step that Newton's method takes; false where the equations have no slope.
bool NewtonStep(const CTank& tank, const Vector& unknowns, const Vector& before, double pace, const Vector& residuals,
                Vector& step) {
    const std::size_t count = unknowns.size();
    std::vector<Vector> rows(count, Vector(count + 1));
    for (std::size_t column = 0; column < count; ++column) {
        Vector moved = unknowns;
        double distance = 1e-7 * std::max(std::fabs(moved[column]), 1e-3);
        moved[column] += distance;
        if (!tank.IsPossible(moved)) {
            distance = -distance;
            moved[column] = unknowns[column] + distance;
        }
        const Vector values = tank.Residuals(moved, before, pace);
        for (std::size_t row = 0; row < count; ++row) rows[row][column] = (values[row] - residuals[row]) / distance;
    }
    for (std::size_t row = 0; row < count; ++row) rows[row][count] = -residuals[row];
    if (!SolveLinear(rows)) return false;
    step.resize(count);
    for (std::size_t row = 0; row < count; ++row) step[row] = rows[row][count];
    return true;
}

Vector Move(const Vector& from, const Vector& step, double part) {
    Vector to = from;
    for (std::size_t i = 0; i < to.size(); ++i) to[i] += part * step[i];
    return to;
}

/// Takes `unknowns` one time step on; false, with `unknowns` as they were, if it doesn't converge.
bool Advance(const CTank& tank, double pace, Vector& unknowns) {
    Vector current = unknowns;
    Vector residuals = tank.Residuals(current, unknowns, pace);
    for (int iteration = 0; iteration < mostIterations; ++iteration) {
        Vector step;
        if (!NewtonStep(tank, current, unknowns, pace, residuals, step)) return false;
        double part = 1.0;
        while (part > 1e-6 && !tank.IsPossible(Move(current, step, part))) part /= 2;
        const Vector next = Move(current, step, part);
        if (!tank.IsPossible(next)) return false;
        current = next;
        residuals = tank.Residuals(current, unknowns, pace);
        // The step counts and not the residuals, which fast reactions leave large by rounding alone.
        if (part < 1 || LargestOf(step) > tolerance) continue;
        unknowns = current;
        return true;
    }
    return false;
}

/// One reaction at the feed's temperature has its extent between none and the one at which a compound runs out.
std::vector<double> SolveOneReaction(CReactorModel& model, double size) {
    double low = 0;
    double high = 0;
    model.FindRange(0, {0.0}, low, high);
    const auto surplus = [&](double extent) {
        return model.Rates({extent}, model.Feed().temperature)[0] * size - extent;
    };
    const double atStart = surplus(0);
    if (atStart == 0) return {0.0};
    const auto root = atStart > 0 ? RootBetween(surplus, 0, high) : RootBetween(surplus, low, 0);
    if (!root) throw ReactorFailure("no steady state of the tank is found");
    return {*root};
}

}  // namespace

std::vector<ReactorPoint> SolveStirredTank(CReactorModel& model, double size, bool isAdiabatic) {
    const double feedTemperature = model.Feed().temperature;
    if (model.ReactionCount() == 1 && !isAdiabatic) {
        const std::vector<double> flows = model.Flows(SolveOneReaction(model, size));
        return {{0, feedTemperature, model.FeedFlows()}, {size, feedTemperature, flows}};
    }
    const CTank tank(model, size, isAdiabatic);
    Vector unknowns = tank.Inlet();
    double pace = 1;
    while (pace > slowestPace) {
        if (Advance(tank, pace, unknowns)) {
            pace /= 4;
        } else {
            pace *= 10;
        }
        if (pace > fastestPace) throw ReactorFailure("no steady state of the tank is found");
    }
    if (!Advance(tank, 0, unknowns)) throw ReactorFailure("no steady state of the tank is found");
    return {{0, feedTemperature, model.FeedFlows()},
            {size, tank.Temperature(unknowns), model.Flows(tank.Extents(unknowns))}};
}

}  // namespace rekasim
