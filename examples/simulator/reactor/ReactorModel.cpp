// SPDX-License-Identifier: MIT
// The unknowns are extents, one for each reaction, rather than flows, one for each compound: there are fewer of them,
// and no element can be lost on the way. A solver may try a point at which a flow is below zero; the package is asked
// at zero there, since its rates mean nothing beyond, while the flows themselves stay what the extents make of them.

#include "reactor/ReactorModel.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "SameName.h"
#include "packagetext/CountElements.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

/// The coefficients of a reaction by compounds of the material. After the binding the package speaks of compounds by
/// the material's identifiers.
std::vector<double> SpreadCoefficients(const Reaction& reaction, const MaterialState& state) {
    std::vector<double> coefficients(state.compounds.size(), 0.0);
    for (const Participant& participant : reaction.participants) {
        const auto found =
            std::find_if(state.compounds.begin(), state.compounds.end(),
                         [&](const MaterialCompound& compound) { return SameName(compound.id, participant.id); });
        if (found == state.compounds.end()) {
            throw ReactorFailure("the material has no " + reka::Utf8FromUtf16(participant.id));
        }
        coefficients[static_cast<std::size_t>(found - state.compounds.begin())] += participant.coefficient;
    }
    return coefficients;
}

/// The property that a basis of an equilibrium constant speaks of.
struct BasisProperty {
    std::u16string_view basis;
    std::u16string_view property;
    bool isMassBasis;
};
constexpr BasisProperty basisProperties[] = {{u"Fugacity", u"fugacity", false},
                                             {u"Activity", u"activity", false},
                                             {u"MoleFraction", u"fraction", false},
                                             {u"MassFraction", u"fraction", true},
                                             {u"Molarity", u"fraction", false}};

}  // namespace

CReactorModel::CReactorModel(CPackageSession& packageSession, CMaterial& boundMaterial,
                             std::vector<Reaction> chosenReactions, MaterialState feed, double flow)
    : session(packageSession),
      material(boundMaterial),
      reactions(std::move(chosenReactions)),
      state(std::move(feed)),
      feedFlow(flow) {
    for (const Reaction& reaction : reactions) {
        if (!SameName(reaction.phase, reactions.front().phase)) {
            throw ReactorFailure("the reactions run in different phases, and a reactor here has one");
        }
        reactionIds.push_back(reaction.id);
        coefficients.push_back(SpreadCoefficients(reaction, state));
    }
    for (const MaterialCompound& compound : state.compounds) feedFlows.push_back(compound.moleFraction * flow);
}

std::vector<double> CReactorModel::Flows(const std::vector<double>& extents) const {
    std::vector<double> flows = feedFlows;
    for (std::size_t r = 0; r < reactions.size(); ++r) {
        for (std::size_t i = 0; i < flows.size(); ++i) flows[i] += coefficients[r][i] * extents[r];
    }
    return flows;
}

void CReactorModel::Set(std::vector<double> flows, double temperature) {
    double total = 0;
    for (double& flow : flows) {
        flow = std::max(flow, 0.0);
        total += flow;
    }
    for (std::size_t i = 0; i < flows.size(); ++i) state.compounds[i].moleFraction = flows[i] / total;
    state.temperature = temperature;
    material.SetState(state);
}

std::vector<double> CReactorModel::Calculate(const char16_t* property, const std::vector<double>& flows,
                                             double temperature) {
    Set(flows, temperature);
    std::vector<double> values;
    Failure failure;
    if (!session.Calculate(property, reactions.front().phase, reactionIds, values, failure)) {
        throw ReactorFailure(failure);
    }
    for (const double value : values) {
        if (!std::isfinite(value)) {
            throw ReactorFailure("the package calculates no number at " + std::to_string(std::lround(temperature)) +
                                 " K for a composition on the way");
        }
    }
    return values;
}

std::vector<double> CReactorModel::Rates(const std::vector<double>& extents, double temperature) {
    return RatesOf(Flows(extents), temperature);
}

std::vector<double> CReactorModel::EquilibriumConstants(const std::vector<double>& extents, double temperature) {
    return Calculate(u"ChemicalEquilibriumConstant", Flows(extents), temperature);
}

std::vector<double> CReactorModel::Heats(const std::vector<double>& extents, double temperature) {
    return HeatsOf(Flows(extents), temperature);
}

std::vector<double> CReactorModel::RatesOf(const std::vector<double>& flows, double temperature) {
    return Calculate(u"ReactionRate", flows, temperature);
}

std::vector<double> CReactorModel::HeatsOf(const std::vector<double>& flows, double temperature) {
    return Calculate(u"EnthalpyOfReaction", flows, temperature);
}

std::vector<double> CReactorModel::ConcentrationsOf(std::size_t reaction, const std::vector<double>& extents,
                                                    double temperature) {
    const std::u16string& basis = reactions[reaction].concentrationBasis;
    for (const BasisProperty& row : basisProperties) {
        if (!SameName(basis, row.basis)) continue;
        Set(Flows(extents), temperature);
        std::vector<double> values;
        std::u16string errorText;
        if (!ComputeMaterialProperty(state, *FindMaterialProperty(row.property), row.isMassBasis, values, errorText)) {
            throw ReactorFailure(reka::Utf8FromUtf16(errorText));
        }
        if (!SameName(basis, u"Molarity")) return values;
        std::vector<double> density;
        if (!ComputeMaterialProperty(state, *FindMaterialProperty(u"density"), false, density, errorText)) {
            throw ReactorFailure(reka::Utf8FromUtf16(errorText));
        }
        for (double& value : values) value *= density.front();
        return values;
    }
    throw ReactorFailure("an equilibrium on basis " + reka::Utf8FromUtf16(basis) + " isn't solved here");
}

double CReactorModel::HeatCapacityFlow(const std::vector<double>& flows) const {
    double sum = 0;
    for (std::size_t i = 0; i < flows.size(); ++i) {
        const auto& capacity = state.compounds[i].heatCapacity;
        if (!capacity) {
            throw ReactorFailure("the material gives no heatCapacity of " + reka::Utf8FromUtf16(state.compounds[i].id) +
                                 ", which --adiabatic needs");
        }
        sum += flows[i] * *capacity;
    }
    return sum;
}

void CReactorModel::FindRange(std::size_t reaction, const std::vector<double>& extents, double& lowest,
                              double& highest) const {
    const std::vector<double> flows = Flows(extents);
    lowest = -HUGE_VAL;
    highest = HUGE_VAL;
    for (std::size_t i = 0; i < flows.size(); ++i) {
        const double coefficient = coefficients[reaction][i];
        if (coefficient == 0) continue;
        const double limit = extents[reaction] - std::max(flows[i], 0.0) / coefficient;
        if (coefficient < 0) {
            highest = std::min(highest, limit);
        } else {
            lowest = std::max(lowest, limit);
        }
    }
}

void CheckElements(const CReactorModel& model, const std::vector<double>& flows) {
    std::map<std::u16string, std::pair<double, double>> amounts;  // in the feed, and the difference
    const auto& compounds = model.Feed().compounds;
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        std::map<std::u16string, double> atoms;
        if (!packagetext::CountElements(compounds[i].formula, atoms)) return;
        for (const auto& [symbol, count] : atoms) {
            auto& [feed, difference] = amounts[symbol];
            feed += count * model.FeedFlows()[i];
            difference += count * (flows[i] - model.FeedFlows()[i]);
        }
    }
    constexpr double tolerance = 1e-9;
    for (const auto& [symbol, amount] : amounts) {
        if (std::fabs(amount.second) <= tolerance * std::max(amount.first, model.FeedFlow() * tolerance)) continue;
        throw ReactorFailure("the reactions don't conserve " + reka::Utf8FromUtf16(symbol));
    }
}

}  // namespace rekasim
