// SPDX-License-Identifier: MIT
// A number has its digits only where it is kept itself: a flow that a fast reaction leaves over is lost in an extent as
// large as the feed, and the extent of a slow reaction in the flows. So the smallest amounts are chosen, and the larger
// ones follow from them. What follows is computed from the feed each time and not from step to step, so that no element
// is lost; a difference of feeds that is only rounding is none, so that feeds in the ratio of a reaction run out
// together.

#include "reactor/TankStoichiometry.h"

#include <Eigen/LU>
#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace rekasim {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

constexpr double dependence = 1e-9;  // coefficients that agree so well are the same

/// Takes up those of `candidates`, in their order, that are independent of the ones before.
template <class VectorOf>
std::vector<Index> ChooseIndependent(const std::vector<Index>& candidates, Index most, const VectorOf& vectorOf) {
    std::vector<Index> chosen;
    std::vector<VectorXd> directions;
    for (const Index candidate : candidates) {
        if (static_cast<Index>(chosen.size()) == most) break;
        const VectorXd vector = vectorOf(candidate);
        VectorXd rest = vector;
        for (const VectorXd& direction : directions) rest -= direction.dot(rest) * direction;
        if (!(rest.norm() > dependence * vector.norm())) continue;
        directions.push_back(rest.normalized());
        chosen.push_back(candidate);
    }
    return chosen;
}

std::vector<Index> UpTo(Index count) {
    std::vector<Index> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), Index{0});
    return numbers;
}

}  // namespace

CTankStoichiometry::CTankStoichiometry(const CReactorModel& model) {
    const auto compoundCount = static_cast<Index>(model.FeedFlows().size());
    const auto reactionCount = static_cast<Index>(model.ReactionCount());
    MatrixXd all(compoundCount, reactionCount);
    for (Index i = 0; i < compoundCount; ++i) {
        for (Index r = 0; r < reactionCount; ++r) {
            all(i, r) = model.Coefficient(static_cast<std::size_t>(r), static_cast<std::size_t>(i));
        }
    }
    reactionRows = ChooseIndependent(UpTo(reactionCount), std::min(compoundCount, reactionCount),
                                     [&all](Index reaction) -> VectorXd { return all.col(reaction); });
    const auto rank = static_cast<Index>(reactionRows.size());
    const MatrixXd independent = all(Eigen::all, reactionRows);
    gradients.resize(compoundCount + rank, rank);
    gradients << independent, MatrixXd::Identity(rank, rank);
    feed = VectorXd::Zero(compoundCount + rank);
    feed.head(compoundCount) = Eigen::Map<const VectorXd>(model.FeedFlows().data(), compoundCount);
    combination = MatrixXd::Zero(rank, reactionCount);
    if (rank == 0) return;
    combination = independent.colPivHouseholderQr().solve(all);
    for (Index i = 0; i < rank; ++i) {  // exactly
        combination.col(reactionRows[static_cast<std::size_t>(i)]) = VectorXd::Unit(rank, i);
    }
}

TankCoordinates CTankStoichiometry::ChooseCoordinates(const VectorXd& amounts) const {
    std::vector<Index> order = UpTo(amounts.size());
    std::stable_sort(order.begin(), order.end(),
                     [&amounts](Index a, Index b) { return std::fabs(amounts[a]) < std::fabs(amounts[b]); });
    TankCoordinates coordinates;
    coordinates.chosen =
        ChooseIndependent(order, Rank(), [this](Index amount) -> VectorXd { return gradients.row(amount); });
    const MatrixXd chosenGradients = gradients(coordinates.chosen, Eigen::all);
    const VectorXd chosenFeed = feed(coordinates.chosen);
    coordinates.slopes = gradients * chosenGradients.inverse();
    coordinates.offsets = feed - coordinates.slopes * chosenFeed;
    const VectorXd rounding =
        8 * std::numeric_limits<double>::epsilon() * (feed + coordinates.slopes.cwiseAbs() * chosenFeed);
    for (Index i = 0; i < amounts.size(); ++i) {
        if (std::fabs(coordinates.offsets[i]) <= rounding[i]) coordinates.offsets[i] = 0;
    }
    for (Index i = 0; i < Rank(); ++i) {  // exactly
        const Index amount = coordinates.chosen[static_cast<std::size_t>(i)];
        coordinates.slopes.row(amount) = VectorXd::Unit(Rank(), i).transpose();
        coordinates.offsets[amount] = 0;
    }
    return coordinates;
}

VectorXd CTankStoichiometry::AllExtents(const VectorXd& extents, const VectorXd& reacted) const {
    VectorXd all = reacted;
    for (const Index reaction : reactionRows) all[reaction] = 0;
    const VectorXd rest = extents - combination * all;  // what the independent ones have done themselves
    for (Index i = 0; i < Rank(); ++i) all[reactionRows[static_cast<std::size_t>(i)]] = rest[i];
    return all;
}

}  // namespace rekasim
