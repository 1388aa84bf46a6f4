// SPDX-License-Identifier: MIT
// From the command line to the profile. What can be said of the options is said before anything long is calculated, an
// option without a use as well as one that is missing, since either is a misunderstanding of what the package's rates
// count by. Every point is checked for its elements before it is printed: a package whose reactions don't balance gives
// numbers that look right.

#include "reactor/ReactorCommand.h"

#include <algorithm>
#include <cmath>

#include "SameName.h"
#include "reactor/DrawProfile.h"
#include "reactor/ReactorProfile.h"
#include "reactor/ReactorSolvers.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

/// The reactions that the reactor is about. They count per volume or per catalyst mass, all of them alike.
std::vector<Reaction> ChooseReactions(std::vector<Reaction> reactions, ReactorKind kind) {
    const bool wantsKinetic = kind != ReactorKind::Equilibrium;
    std::erase_if(reactions, [&](const Reaction& reaction) { return reaction.isKinetic != wantsKinetic; });
    if (reactions.empty()) {
        throw ReactorFailure(wantsKinetic
                                 ? "the package has no kinetic reaction; --equilibrium solves the others"
                                 : "the package has no equilibrium reaction; --pfr and --cstr solve the others");
    }
    for (const Reaction& reaction : reactions) {
        if (reaction.isHeterogeneous != reactions.front().isHeterogeneous) {
            throw ReactorFailure("some rates count per volume and others per mass of catalyst");
        }
    }
    return reactions;
}

/// A size that nothing counts by would be a mistake.
double SizeOf(const Reaction& reaction, const ReactorOptions& options) {
    const auto& size = reaction.isHeterogeneous ? options.catalyst : options.volume;
    const auto& other = reaction.isHeterogeneous ? options.volume : options.catalyst;
    if (!size) {
        throw ReactorFailure(reaction.isHeterogeneous
                                 ? "the rates count per mass of catalyst: --catalyst gives it in kg"
                                 : "the rates count per volume: --volume gives it in m3");
    }
    if (!other) return *size;
    throw ReactorFailure(reaction.isHeterogeneous ? "the rates count per mass of catalyst: --volume has no use"
                                                  : "the rates count per volume: --catalyst has no use");
}

/// The compound that was asked for, or the one of which the first reaction uses up the feed first.
std::size_t FindKey(const CReactorModel& model, const std::string& wanted) {
    const auto& compounds = model.Feed().compounds;
    std::size_t key = compounds.size();
    for (std::size_t i = 0; i < compounds.size(); ++i) {
        if (!wanted.empty()) {
            if (SameName(compounds[i].id, reka::Utf16FromUtf8(wanted))) key = i;
            continue;
        }
        const double coefficient = model.Coefficient(0, i);
        if (coefficient >= 0 || model.FeedFlows()[i] == 0) continue;
        if (key == compounds.size() ||
            model.FeedFlows()[i] / -coefficient < model.FeedFlows()[key] / -model.Coefficient(0, key)) {
            key = i;
        }
    }
    if (key == compounds.size() || model.FeedFlows()[key] == 0) {
        throw ReactorFailure(wanted.empty()
                                 ? "the feed has nothing that the first reaction uses; --key names a compound"
                                 : "the feed has no " + wanted);
    }
    return key;
}

std::vector<ReactorPoint> Solve(CReactorModel& model, const ReactorOptions& options) {
    if (options.kind == ReactorKind::Equilibrium) {
        if (options.volume || options.catalyst) throw ReactorFailure("an equilibrium has no size");
        return SolveEquilibrium(model, options.isAdiabatic);
    }
    const double size = SizeOf(model.ReactionAt(0), options);
    if (options.kind == ReactorKind::StirredTank) return SolveStirredTank(model, size, options.isAdiabatic);
    return SolvePlugFlow(model, size, options.pointCount, options.isAdiabatic);
}

ReactorProfile MakeProfile(const CReactorModel& model, const ReactorOptions& options, std::size_t key,
                           std::vector<ReactorPoint> points) {
    ReactorProfile profile;
    const bool hasCatalyst = model.ReactionAt(0).isHeterogeneous;
    const bool isEquilibrium = options.kind == ReactorKind::Equilibrium;
    profile.positionName = isEquilibrium ? "outlet" : hasCatalyst ? "catalyst" : "volume";
    profile.positionUnit = isEquilibrium ? "" : hasCatalyst ? "kg" : "m3";
    profile.points = std::move(points);
    for (const MaterialCompound& compound : model.Feed().compounds) {
        profile.compounds.push_back(reka::Utf8FromUtf16(compound.id));
    }
    profile.key = key;
    return profile;
}

std::string TitleOf(CPackageSession& session) {
    std::u16string name;
    std::u16string description;
    Failure failure;
    if (!session.ReadIdentity(name, description, failure)) throw ReactorFailure(failure);
    return reka::Utf8FromUtf16(name);
}

}  // namespace

bool SolveReactor(CPackageSession& session, MaterialState state, ThermoVersion version, const ReactorOptions& options,
                  std::ostream& out, Failure& failure) {
    state.temperature = options.temperature.value_or(state.temperature);
    state.pressure = options.pressure.value_or(state.pressure);
    const auto material = packagetext::MakeObject<CMaterial>();
    const auto results = packagetext::MakeObject<CReactionResults>();
    material->SetState(state);
    std::vector<Reaction> reactions;
    if (!session.SetReactionObject(*results, failure)) return false;
    if (!session.SetMaterial(*material, version, failure)) return false;
    if (!session.ReadReactions(reactions, failure)) return false;
    try {
        CReactorModel model(session, *material, ChooseReactions(std::move(reactions), options.kind), state,
                            options.flow);
        const std::size_t key = FindKey(model, options.key);  // before a long calculation
        std::vector<ReactorPoint> points = Solve(model, options);
        for (const ReactorPoint& point : points) CheckElements(model, point.flows);
        const ReactorProfile profile = MakeProfile(model, options, key, std::move(points));
        if (!options.plotPath.empty()) DrawProfile(profile, TitleOf(session), options.plotPath);
        options.isCsv ? WriteProfileCsv(out, profile) : WriteProfileTable(out, profile);
        return true;
    } catch (const ReactorFailure& reason) {
        failure = reason.failure;
        return false;
    }
}

}  // namespace rekasim
