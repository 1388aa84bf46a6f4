// SPDX-License-Identifier: MIT
// Plug flow by an explicit Runge-Kutta method of order 5 with controlled steps. Rates of reaction engineering are
// smooth, and one that is too steep for it ends in a sentence rather than in hours.

#include <algorithm>
#include <boost/numeric/odeint/integrate/integrate_times.hpp>
#include <boost/numeric/odeint/integrate/max_step_checker.hpp>
#include <boost/numeric/odeint/stepper/generation.hpp>
#include <boost/numeric/odeint/stepper/runge_kutta_dopri5.hpp>
#include <utility>

#include "reactor/ReactorSolvers.h"

namespace rekasim {

namespace {

namespace odeint = boost::numeric::odeint;

// Extents are integrated as parts of the feed flow, positions as parts of the reactor, temperatures as multiples of the
// feed's, so one tolerance fits all.
constexpr double absoluteTolerance = 1e-11;
constexpr double relativeTolerance = 1e-9;
constexpr double smallestFlow = 1e-9;
constexpr int mostSteps = 5000;  // between two points

using Unknowns = std::vector<double>;  // extents, then the temperature

class CPlugFlow {
public:
    CPlugFlow(CReactorModel& reactorModel, double reactorSize, bool adiabatic)
        : model(reactorModel), size(reactorSize), isAdiabatic(adiabatic) {}

    Unknowns Inlet() const {
        Unknowns unknowns(model.ReactionCount() + 1, 0.0);
        unknowns.back() = 1.0;
        return unknowns;
    }

    void operator()(const Unknowns& unknowns, Unknowns& slopes, double) const {
        const std::vector<double> extents = Extents(unknowns);
        const double temperature = Temperature(unknowns);
        const std::vector<double> rates = model.Rates(extents, temperature);
        for (std::size_t r = 0; r < rates.size(); ++r) slopes[r] = rates[r] * size / model.FeedFlow();
        slopes.back() = isAdiabatic ? TemperatureSlope(extents, temperature, rates) : 0.0;
    }

    ReactorPoint PointOf(const Unknowns& unknowns, double position) const {
        std::vector<double> flows = model.Flows(Extents(unknowns));
        for (double& flow : flows) {
            if (flow < 0 && flow > -smallestFlow * SmallestFeed()) flow = 0;  // what the tolerance leaves over
        }
        return {position * size, Temperature(unknowns), std::move(flows)};
    }

    /// The smallest flow of the feed that isn't zero, in mol/s: what matters to that compound matters.
    double SmallestFeed() const {
        double smallest = model.FeedFlow();
        for (const double flow : model.FeedFlows()) {
            if (flow > 0) smallest = std::min(smallest, flow);
        }
        return smallest;
    }

private:
    std::vector<double> Extents(const Unknowns& unknowns) const {
        std::vector<double> extents(unknowns.begin(), unknowns.end() - 1);
        for (double& extent : extents) extent *= model.FeedFlow();
        return extents;
    }
    double Temperature(const Unknowns& unknowns) const { return unknowns.back() * FeedTemperature(); }
    double FeedTemperature() const { return feedTemperature; }

    double TemperatureSlope(const std::vector<double>& extents, double temperature,
                            const std::vector<double>& rates) const {
        const std::vector<double> heats = model.Heats(extents, temperature);
        double released = 0;
        for (std::size_t r = 0; r < rates.size(); ++r) released -= rates[r] * heats[r];
        return released * size / model.HeatCapacityFlow(model.Flows(extents)) / FeedTemperature();
    }

    CReactorModel& model;
    double size;
    bool isAdiabatic;
    double feedTemperature = model.Feed().temperature;
};

}  // namespace

std::vector<ReactorPoint> SolvePlugFlow(CReactorModel& model, double size, std::size_t pointCount, bool isAdiabatic) {
    const CPlugFlow reactor(model, size, isAdiabatic);
    std::vector<double> positions;
    for (std::size_t i = 0; i < pointCount; ++i) {
        positions.push_back(static_cast<double>(i) / static_cast<double>(pointCount - 1));
    }
    std::vector<ReactorPoint> points;
    Unknowns unknowns = reactor.Inlet();
    try {
        odeint::integrate_times(
            odeint::make_controlled(absoluteTolerance * reactor.SmallestFeed() / model.FeedFlow(), relativeTolerance,
                                    odeint::runge_kutta_dopri5<Unknowns>()),
            reactor, unknowns, positions.begin(), positions.end(), 1e-6,
            [&](const Unknowns& reached, double position) { points.push_back(reactor.PointOf(reached, position)); },
            odeint::max_step_checker(mostSteps));
    } catch (const ReactorFailure&) {
        throw;
    } catch (const std::runtime_error&) {  // odeint's own: too many steps, or none that is small enough
        throw ReactorFailure("the profile is too steep to be integrated");
    }
    return points;
}

}  // namespace rekasim
