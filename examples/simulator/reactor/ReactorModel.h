// SPDX-License-Identifier: MIT
// A reactor as the solvers see it: a feed, reactions, and numbers that the package calculates at any point of it.

#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "CPackageSession.h"
#include "material/MaterialProperties.h"

namespace rekasim {

/// Why a reactor can't be solved. Carries the package's own story where it was the package that failed.
struct ReactorFailure : std::runtime_error {
    explicit ReactorFailure(const std::string& text) : std::runtime_error(text), failure{text, "", ""} {}
    explicit ReactorFailure(const Failure& story) : std::runtime_error(story.text), failure(story) {}
    Failure failure;
};

/// A point of a reactor. The compounds are those of the material, in its order.
struct ReactorPoint {
    double position = 0;        // m3 of reactor or kg of catalyst from the inlet
    double temperature = 0;     // K
    std::vector<double> flows;  // mol/s
};

/// The feed with the reactions of one kind. Amounts are followed as extents, one per reaction in mol/s, so that flows
/// can't be anything but feed plus stoichiometry, and no element is gained or lost by integrating.
///
/// All operations throw ReactorFailure. The session has its material and its reaction object already.
class CReactorModel {
public:
    /// `flow` is the feed in mol/s; `feed` gives its composition, temperature and pressure.
    CReactorModel(CPackageSession& packageSession, CMaterial& boundMaterial, std::vector<Reaction> chosenReactions,
                  MaterialState feed, double flow);

    std::size_t ReactionCount() const { return reactions.size(); }
    const Reaction& ReactionAt(std::size_t index) const { return reactions[index]; }
    const MaterialState& Feed() const { return state; }
    double FeedFlow() const { return feedFlow; }
    const std::vector<double>& FeedFlows() const { return feedFlows; }

    std::vector<double> Flows(const std::vector<double>& extents) const;
    double Coefficient(std::size_t reaction, std::size_t compound) const { return coefficients[reaction][compound]; }

    /// mol/s per m3 or per kg of catalyst.
    std::vector<double> Rates(const std::vector<double>& extents, double temperature);
    std::vector<double> EquilibriumConstants(const std::vector<double>& extents, double temperature);
    /// J/mol.
    std::vector<double> Heats(const std::vector<double>& extents, double temperature);
    /// The same at flows in mol/s, which have digits that extents would lose.
    std::vector<double> RatesOf(const std::vector<double>& flows, double temperature);
    std::vector<double> HeatsOf(const std::vector<double>& flows, double temperature);
    /// What the constants are made of, one value per compound: fugacity, activity, mole fraction, mass fraction or
    /// molarity, as the basis of the reaction says.
    std::vector<double> ConcentrationsOf(std::size_t reaction, const std::vector<double>& extents, double temperature);

    /// Sum of flows times heat capacities, in W/K.
    double HeatCapacityFlow(const std::vector<double>& flows) const;
    /// The range of one extent, the others staying, in which no flow is negative.
    void FindRange(std::size_t reaction, const std::vector<double>& extents, double& lowest, double& highest) const;

private:
    /// Puts the material into the state of a point. Flows below zero, which a solver may try, count as zero.
    void Set(std::vector<double> flows, double temperature);
    std::vector<double> Calculate(const char16_t* property, const std::vector<double>& flows, double temperature);

    CPackageSession& session;
    CMaterial& material;
    std::vector<Reaction> reactions;
    std::vector<std::u16string> reactionIds;
    std::vector<std::vector<double>> coefficients;  // per reaction and compound
    MaterialState state;
    double feedFlow;
    std::vector<double> feedFlows;
};

/// Fails unless every element of the flows is that of the feed, to 1e-9 of what the feed brings. Compounds without a
/// formula switch the check off.
void CheckElements(const CReactorModel& model, const std::vector<double>& flows);

}  // namespace rekasim
