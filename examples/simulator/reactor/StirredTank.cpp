// SPDX-License-Identifier: MIT
// The stirred tank, followed in time from its start, filled with feed, until it is steady. The time steps are implicit
// ones that grow, each solved by Newton's method with Eigen's elimination, so where several steady states exist the one
// that such a start leads to is found. The unknowns are the smallest of the flows and extents, for their digits.

#include <Eigen/LU>
#include <algorithm>
#include <cmath>

#include "reactor/ReactorSolvers.h"
#include "reactor/TankStoichiometry.h"

namespace rekasim {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

constexpr int mostCalculations = 50'000;  // of the rates: seconds
constexpr int mostIterations = 60;        // of Newton's method, for one step in time
constexpr double tolerance = 1e-11;       // of a step, as a part of each flow and of the temperature
constexpr double slowestPace = 1e-9;      // a step of this length has reached the steady state
constexpr double fastestPace = 1e100;
constexpr double distance = 1e-7;      // of the point that a slope is taken from, as a part of the unknown
constexpr double possiblePart = 0.99;  // of what is left of a compound, that one step may take away
constexpr double leastPart = 1e-6;     // of a step: one that would take away so much more leads nowhere

/// All amounts of the tank in mol/s, as CTankStoichiometry has them, and its temperature in K.
struct TankState {
    VectorXd amounts;
    double temperature = 0;
};

/// The equations of one time step.
class CTank {
public:
    CTank(CReactorModel& reactorModel, double tankSize, bool adiabatic)
        : model(reactorModel),
          stoichiometry(reactorModel),
          size(tankSize),
          isAdiabatic(adiabatic),
          feedTemperature(model.Feed().temperature),
          feedCapacity(adiabatic ? model.HeatCapacityFlow(model.FeedFlows()) : 0) {}

    TankState Feed() const { return {stoichiometry.FeedAmounts(), feedTemperature}; }
    auto Flows(const TankState& state) const { return state.amounts.head(stoichiometry.CompoundCount()); }
    auto Extents(const TankState& state) const { return state.amounts.tail(stoichiometry.Rank()); }
    TankCoordinates ChooseCoordinates(const TankState& state) const {
        return stoichiometry.ChooseCoordinates(state.amounts);
    }

    /// The unknowns of a state: the chosen amounts, and the temperature.
    VectorXd Unknowns(const TankState& state, const TankCoordinates& coordinates) const {
        VectorXd unknowns(UnknownCount());
        unknowns.head(stoichiometry.Rank()) = state.amounts(coordinates.chosen);
        if (isAdiabatic) unknowns[UnknownCount() - 1] = state.temperature;
        return unknowns;
    }
    TankState StateOf(const VectorXd& unknowns, const TankCoordinates& coordinates) const {
        return {coordinates.AmountsOf(unknowns.head(stoichiometry.Rank())),
                isAdiabatic ? unknowns[UnknownCount() - 1] : feedTemperature};
    }

    /// What reacts, in mol/s for each independent reaction; for the temperature, the heat that is there too much, in K.
    VectorXd Sources(const TankState& state) const {
        ++calculations;
        const std::vector<double> flows(Flows(state).begin(), Flows(state).end());
        const std::vector<double> rates = model.RatesOf(flows, state.temperature);
        const VectorXd reacted = size * Eigen::Map<const VectorXd>(rates.data(), static_cast<Index>(rates.size()));
        VectorXd sources(UnknownCount());
        sources.head(stoichiometry.Rank()) = stoichiometry.Combine(reacted);
        if (isAdiabatic) {
            const std::vector<double> heats = model.HeatsOf(flows, state.temperature);
            const VectorXd extents = stoichiometry.AllExtents(Extents(state), reacted);
            const double heat = extents.dot(Eigen::Map<const VectorXd>(heats.data(), extents.size()));
            sources[UnknownCount() - 1] = state.temperature - feedTemperature + heat / feedCapacity;
        }
        return sources;
    }

    /// What is left over of the balances after a step of 1 / `pace` residence times from `before`; with a pace of 0, of
    /// those of the steady state.
    VectorXd Residuals(const TankState& state, const VectorXd& sources, const TankState& before, double pace) const {
        VectorXd residuals = sources;
        residuals.head(stoichiometry.Rank()) -= Extents(state) + pace * (Extents(state) - Extents(before));
        return residuals;
    }

    /// What each unknown is measured by: itself, or where there is nothing of it a part of the way on which no compound
    /// runs out.
    VectorXd ScalesOf(const VectorXd& unknowns, const TankState& state, const TankCoordinates& coordinates) const {
        VectorXd scales = unknowns;
        for (Index i = 0; i < stoichiometry.Rank(); ++i) {
            if (scales[i] != 0) continue;
            const double forward = RoomAlong(coordinates.slopes.col(i), state);
            scales[i] = forward > 0 ? forward : -RoomAlong(-coordinates.slopes.col(i), state);
            if (scales[i] == 0) scales[i] = trace * model.FeedFlow();
        }
        return scales;
    }

    /// The slopes of the residuals over the unknowns, each of which is counted in its scale.
    MatrixXd Slopes(const VectorXd& unknowns, const VectorXd& scales, const TankCoordinates& coordinates,
                    const VectorXd& sources, double pace) const {
        MatrixXd slopes(UnknownCount(), UnknownCount());
        for (Index column = 0; column < UnknownCount(); ++column) {
            VectorXd moved = unknowns;
            moved[column] += distance * scales[column];
            TankState state = StateOf(moved, coordinates);
            if (Flows(state).minCoeff() < 0) {
                moved[column] = unknowns[column] - distance * scales[column];
                state = StateOf(moved, coordinates);
            }
            slopes.col(column) = (Sources(state) - sources) * (scales[column] / (moved[column] - unknowns[column]));
        }
        const Index rank = stoichiometry.Rank();
        slopes.topLeftCorner(rank, rank) -=
            (1 + pace) * coordinates.slopes.bottomRows(rank) * scales.head(rank).asDiagonal();
        return slopes;
    }

    /// The part of a way from a state that leaves something of every compound, and half of the temperature.
    double PossiblePart(const TankState& state, const TankState& way) const {
        double part = 1;
        for (Index i = 0; i < stoichiometry.CompoundCount(); ++i) {
            if (way.amounts[i] >= 0 || state.amounts[i] + way.amounts[i] > 0) continue;
            part = std::min(part, possiblePart * state.amounts[i] / -way.amounts[i]);
        }
        if (way.temperature < 0) part = std::min(part, state.temperature / 2 / -way.temperature);
        return part;
    }

    /// Whether a way is so short that its start is a solution.
    bool IsShort(const TankState& state, const TankState& way) const {
        for (Index i = 0; i < stoichiometry.CompoundCount(); ++i) {
            if (std::fabs(way.amounts[i]) > tolerance * state.amounts[i]) return false;
        }
        return std::fabs(way.temperature) <= tolerance * state.temperature;
    }

    bool IsAtTheEndOfItsWork() const { return calculations >= mostCalculations; }

private:
    static constexpr double trace = 1e-3;

    Index UnknownCount() const { return stoichiometry.Rank() + (isAdiabatic ? 1 : 0); }

    /// How far an amount can go, up to a part of the feed, while the flows have these slopes.
    double RoomAlong(const VectorXd& slopes, const TankState& state) const {
        double room = trace * model.FeedFlow();
        for (Index i = 0; i < stoichiometry.CompoundCount(); ++i) {
            if (slopes[i] < 0) room = std::min(room, state.amounts[i] / -slopes[i]);
        }
        return room;
    }

    CReactorModel& model;
    CTankStoichiometry stoichiometry;
    double size;
    bool isAdiabatic;
    double feedTemperature;  // the model's own becomes that of the point it was asked for last
    double feedCapacity;
    mutable int calculations = 0;
};

/// The step of Newton's method, in scales. Each equation counts by its largest slope, since a fast reaction's is many
/// digits above the others'.
VectorXd NewtonStep(MatrixXd slopes, VectorXd residuals) {
    for (Index row = 0; row < slopes.rows(); ++row) {
        const double largest = slopes.row(row).cwiseAbs().maxCoeff();
        if (!(largest > 0)) continue;
        slopes.row(row) /= largest;
        residuals[row] /= largest;
    }
    Eigen::FullPivLU<MatrixXd> elimination;
    elimination.setThreshold(0);  // a column that is many digits below the others counts too
    return -elimination.compute(slopes).solve(residuals);
}

/// Takes `state` one time step on; false, with `state` as it was, if it doesn't converge.
bool Advance(const CTank& tank, double pace, TankState& state) {
    TankState current = state;
    for (int iteration = 0; iteration < mostIterations && !tank.IsAtTheEndOfItsWork(); ++iteration) {
        const TankCoordinates coordinates = tank.ChooseCoordinates(current);
        const VectorXd unknowns = tank.Unknowns(current, coordinates);
        current = tank.StateOf(unknowns, coordinates);
        const VectorXd scales = tank.ScalesOf(unknowns, current, coordinates);
        const VectorXd sources = tank.Sources(current);
        const VectorXd step = NewtonStep(tank.Slopes(unknowns, scales, coordinates, sources, pace),
                                         tank.Residuals(current, sources, state, pace))
                                  .cwiseProduct(scales);
        if (!step.allFinite()) return false;
        const TankState way = {coordinates.slopes * step.head(coordinates.slopes.cols()),
                               step.size() > coordinates.slopes.cols() ? step[step.size() - 1] : 0.0};
        const double part = tank.PossiblePart(current, way);
        if (!(part > leastPart)) return false;
        current = tank.StateOf(unknowns + part * step, coordinates);
        // The step counts and not the residuals, which fast reactions leave large by rounding alone.
        if (part < 1 || !tank.IsShort(current, way)) continue;
        state = current;
        return true;
    }
    return false;
}

/// The same for numbers that the package can't calculate on the way, which a shorter step may avoid.
bool TryToAdvance(const CTank& tank, double pace, TankState& state) {
    try {
        return Advance(tank, pace, state);
    } catch (const ReactorFailure&) {
        return false;
    }
}

}  // namespace

std::vector<ReactorPoint> SolveStirredTank(CReactorModel& model, double size, bool isAdiabatic) {
    const CTank tank(model, size, isAdiabatic);
    const TankState feed = tank.Feed();
    TankState state = feed;
    tank.Sources(state);  // a package that can't calculate the feed says so
    double pace = 1;
    bool isSteady = false;
    while (!isSteady) {
        if (tank.IsAtTheEndOfItsWork()) {
            throw ReactorFailure("no steady state of the tank is found within " + std::to_string(mostCalculations) +
                                 " calculations of the rates: try a smaller tank");
        }
        const bool isLast = pace <= slowestPace;
        if (TryToAdvance(tank, isLast ? 0 : pace, state)) {
            isSteady = isLast;
            pace /= 4;
        } else {
            pace = std::min(10 * pace, fastestPace);
        }
    }
    return {{0, feed.temperature, model.FeedFlows()},
            {size, state.temperature, {tank.Flows(state).begin(), tank.Flows(state).end()}}};
}

}  // namespace rekasim
