// SPDX-License-Identifier: MIT
// Random feeds through stirred tanks of the shipped systems: temperatures, pressures, compositions, sizes and flows
// over many decades, from a seed. Each steady state is checked with the rates that the package calculates for it: what
// comes in and what reacts must be what goes out, to a part of the larger flow of the compound. Where fast reactions
// nearly cancel each other, the last digits of the flows change the rates by more than that; such a balance can't close
// better than they let it, so they count at their own size.
//
// rekasim_tank_campaign COUNT SEED DOCUMENT...: fails where less than 99 of 100 are solved, or one takes 10 s. A tank
// with a balance that isn't closed to 1e-9 isn't solved.

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

#include "FormatNumber.h"
#include "material/ReadMaterial.h"
#include "packagetext/BagMembers.h"
#include "reactor/ReactorSolvers.h"

namespace rekasim {

namespace {

constexpr double leastSolved = 0.99;
constexpr double longestAllowed = 10;   // s
constexpr double worstAllowed = 1e-9;   // of a flow
constexpr double lastDigits = 1e-15;    // of a flow
constexpr double slopeDistance = 1e-6;  // of a flow

/// A package that is loaded, with its material.
struct System {
    std::string path;
    CPackageSession session;
    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
    reka::CComRef<reka::CComObject<CReactionResults>> results = packagetext::MakeObject<CReactionResults>();
    MaterialState state;
    std::vector<Reaction> reactions;  // the kinetic ones
};

bool Open(System& system, Failure& failure) {
    packagetext::Json document;
    const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
    const auto log = packagetext::MakeObject<packagetext::CErrorLog>();
    if (!packagetext::ReadDocument(system.path, document, failure.text) ||
        !packagetext::FillBag(document["package"], *bag, failure.text) ||
        !ReadMaterial(document, system.state, failure.text)) {
        return false;
    }
    const bool isNew = document["package"]["thermoVersion"] == "1.1";
    system.material->SetState(system.state);
    CPackageSession& session = system.session;
    if (!session.Load(*bag, *log, failure) || !session.SetReactionObject(*system.results, failure) ||
        !session.SetMaterial(*system.material, isNew ? ThermoVersion::Version11 : ThermoVersion::Version10, failure) ||
        !session.ReadReactions(system.reactions, failure)) {
        return false;
    }
    std::erase_if(system.reactions, [](const Reaction& reaction) { return !reaction.isKinetic; });
    return true;
}

/// Numbers that are the same with every library, which those of the distributions aren't.
class CDice {
public:
    explicit CDice(std::uint32_t seed) : engine(seed) {}

    double From(double low, double high) { return low + (high - low) * (static_cast<double>(engine()) / 4294967296.0); }
    double FromDecades(double low, double high) { return std::pow(10, From(low, high)); }
    std::size_t Of(std::size_t count) { return engine() % count; }

private:
    std::mt19937 engine;
};

struct Feed {
    MaterialState state;
    double flow = 0;
    double size = 0;
};

/// One compound in eight is missing, and one in four a trace.
Feed RollFeed(const System& system, CDice& dice) {
    Feed feed = {system.state, dice.FromDecades(-6, 6), dice.FromDecades(-9, 9)};
    feed.state.temperature = dice.From(250, 1500);
    feed.state.pressure = dice.FromDecades(2, 9);
    double sum = 0;
    for (MaterialCompound& compound : feed.state.compounds) {
        const std::size_t kind = dice.Of(8);
        compound.moleFraction = kind == 0 ? 0 : kind < 3 ? dice.FromDecades(-12, 0) : dice.From(0, 1);
        sum += compound.moleFraction;
    }
    for (MaterialCompound& compound : feed.state.compounds) compound.moleFraction /= sum;
    return feed;
}

/// How far the balances are from closed.
struct Balance {
    double worst = 0;      // beyond the last digits
    bool isStrict = true;  // also without counting those
};

Balance CheckBalances(CReactorModel& model, const Feed& feed, const std::vector<double>& flows) {
    const std::vector<double> rates = model.RatesOf(flows, feed.state.temperature);
    std::vector<std::vector<double>> turnovers;  // per compound that changes a little, and reaction
    for (std::size_t j = 0; j < flows.size(); ++j) {
        std::vector<double> moved = flows;
        moved[j] *= 1 + slopeDistance;
        turnovers.push_back(model.RatesOf(moved, feed.state.temperature));
        for (std::size_t r = 0; r < rates.size(); ++r) {
            turnovers[j][r] = feed.size * (turnovers[j][r] - rates[r]) / slopeDistance;
        }
    }
    Balance balance;
    for (std::size_t i = 0; i < flows.size(); ++i) {
        double left = flows[i] - model.FeedFlows()[i];
        double turnover = 0;
        for (std::size_t r = 0; r < rates.size(); ++r) left -= model.Coefficient(r, i) * feed.size * rates[r];
        for (std::size_t j = 0; j < flows.size(); ++j) {
            double change = 0;
            for (std::size_t r = 0; r < rates.size(); ++r) change += model.Coefficient(r, i) * turnovers[j][r];
            turnover += std::fabs(change);
        }
        const double scale = std::max(flows[i], model.FeedFlows()[i]);
        const double digits = turnover * lastDigits / worstAllowed;
        if (left == 0) continue;
        balance.worst = std::max(balance.worst, std::fabs(left) / (scale + digits));
        balance.isStrict = balance.isStrict && std::fabs(left) <= worstAllowed * scale;
    }
    return balance;
}

struct Result {
    int solved = 0;
    int unsolved = 0;
    int strict = 0;
    double longest = 0;  // s
    double worst = 0;
};

std::string Describe(const System& system, const Feed& feed) {
    std::string text = system.path + " T=" + FormatNumber(feed.state.temperature, 17) +
                       " P=" + FormatNumber(feed.state.pressure, 17) + " flow=" + FormatNumber(feed.flow, 17) +
                       " size=" + FormatNumber(feed.size, 17);
    for (const MaterialCompound& compound : feed.state.compounds) {
        text +=
            " " + std::string(compound.id.begin(), compound.id.end()) + "=" + FormatNumber(compound.moleFraction, 17);
    }
    return text;
}

/// False for a feed that the package itself can't calculate, which is no feed for a tank.
bool RunOne(System& system, const Feed& feed, Result& result) {
    CReactorModel model(system.session, *system.material, system.reactions, feed.state, feed.flow);
    try {
        model.RatesOf(model.FeedFlows(), feed.state.temperature);
    } catch (const ReactorFailure&) {
        return false;
    }
    const auto start = std::chrono::steady_clock::now();
    std::string reason;
    Balance balance;
    try {
        const std::vector<ReactorPoint> points = SolveStirredTank(model, feed.size, false);
        CheckElements(model, points.back().flows);
        balance = CheckBalances(model, feed, points.back().flows);
        if (!(balance.worst <= worstAllowed)) reason = "a balance is open by " + FormatNumber(balance.worst);
    } catch (const ReactorFailure& failure) {
        reason = failure.failure.text;
    }
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - start;
    result.longest = std::max(result.longest, duration.count());
    result.worst = std::max(result.worst, balance.worst);
    ++(reason.empty() ? result.solved : result.unsolved);
    if (reason.empty() && balance.isStrict) ++result.strict;
    if (!reason.empty()) std::printf("unsolved: %s: %s\n", Describe(system, feed).c_str(), reason.c_str());
    return true;
}

bool ReadWhole(const char* text, std::uint32_t& number) {
    const char* const end = text + std::strlen(text);
    const auto [rest, error] = std::from_chars(text, end, number);
    return error == std::errc() && rest == end;
}

int Run(std::uint32_t count, std::uint32_t seed, const std::vector<std::string>& documents) {
    std::vector<std::unique_ptr<System>> systems;
    for (const std::string& path : documents) {
        auto system = std::make_unique<System>();
        system->path = path;
        Failure failure;
        if (!Open(*system, failure)) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), failure.text.c_str());
            return 2;
        }
        if (!system->reactions.empty()) systems.push_back(std::move(system));
    }
    if (systems.empty()) {
        std::fputs("no document has a kinetic reaction\n", stderr);
        return 2;
    }
    CDice dice(seed);
    Result result;
    for (std::uint32_t i = 0; i < count; ++i) {
        System& system = *systems[i % systems.size()];
        while (!RunOne(system, RollFeed(system, dice), result)) continue;
    }
    std::printf(
        "seed %u, %u systems: %d solved, %d unsolved, longest %s s, worst balance %s; %d closed to 1e-9 without the "
        "last digits\n",
        seed, static_cast<unsigned>(systems.size()), result.solved, result.unsolved,
        FormatNumber(result.longest, 3).c_str(), FormatNumber(result.worst, 3).c_str(), result.strict);
    const bool isGood = result.solved >= leastSolved * count && result.longest < longestAllowed;
    return isGood ? 0 : 1;
}

}  // namespace

}  // namespace rekasim

int main(int argc, char** argv) {
    std::uint32_t count = 0;
    std::uint32_t seed = 0;
    if (argc < 4 || !rekasim::ReadWhole(argv[1], count) || !rekasim::ReadWhole(argv[2], seed)) {
        std::fputs("rekasim_tank_campaign COUNT SEED DOCUMENT...\n", stderr);
        return 2;
    }
    return rekasim::Run(count, seed, {argv + 3, argv + argc});
}
