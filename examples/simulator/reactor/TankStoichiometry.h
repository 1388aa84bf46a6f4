// SPDX-License-Identifier: MIT
// How the amounts in a tank depend on each other.

#pragma once

#include <Eigen/Core>
#include <vector>

#include "reactor/ReactorModel.h"

namespace rekasim {

/// As many of the amounts as there are independent reactions, which fix all others.
struct TankCoordinates {
    std::vector<Eigen::Index> chosen;
    Eigen::MatrixXd slopes;   // of all amounts over the chosen ones
    Eigen::VectorXd offsets;  // all amounts where the chosen ones are zero, mol/s

    Eigen::VectorXd AmountsOf(const Eigen::VectorXd& values) const { return offsets + slopes * values; }
};

/// The amounts in mol/s: the flows of all compounds, and behind them the extents of the independent reactions, of which
/// the others are sums.
class CTankStoichiometry {
public:
    explicit CTankStoichiometry(const CReactorModel& model);

    Eigen::Index Rank() const { return gradients.cols(); }
    Eigen::Index CompoundCount() const { return gradients.rows() - gradients.cols(); }
    /// Those of the feed, with no reaction.
    const Eigen::VectorXd& FeedAmounts() const { return feed; }

    /// The smallest amounts, as far as they are independent.
    TankCoordinates ChooseCoordinates(const Eigen::VectorXd& amounts) const;

    /// What each independent reaction stands for, out of one number for each reaction.
    Eigen::VectorXd Combine(const Eigen::VectorXd& reacted) const { return combination * reacted; }
    /// The extents of all reactions, out of those of the independent ones and what the others have done.
    Eigen::VectorXd AllExtents(const Eigen::VectorXd& extents, const Eigen::VectorXd& reacted) const;

private:
    Eigen::VectorXd feed;
    Eigen::MatrixXd gradients;               // of the amounts over the independent extents
    Eigen::MatrixXd combination;             // per independent reaction and reaction
    std::vector<Eigen::Index> reactionRows;  // the reaction that each independent one is
};

}  // namespace rekasim
