// SPDX-License-Identifier: MIT
// What belongs together is paired first, then each pair is compared member by member. The order of a list is part of
// what a simulator sees, so it is told where all members are still there in another one.

#include "DiffPackages.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <utility>

#include "packagetext/PrintableName.h"
#include "persistence/ByteWriter.h"
#include "persistence/StoredExpression.h"
#include "text/LetterCase.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

/// A list's members of both files: their places, `none` for one that isn't in that file.
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

/// Those of the second list in its order, and behind them those that are only in the first.
Pairs PairByName(const std::vector<std::u16string>& before, const std::vector<std::u16string>& after) {
    std::map<std::u16string, std::vector<std::size_t>> places;
    for (std::size_t i = before.size(); i-- > 0;) places[reka::UpperCase(before[i])].push_back(i);
    Pairs pairs;
    for (std::size_t i = 0; i < after.size(); ++i) {
        std::vector<std::size_t>& left = places[reka::UpperCase(after[i])];
        pairs.emplace_back(left.empty() ? none : left.back(), i);
        if (!left.empty()) left.pop_back();
    }
    std::vector<std::size_t> gone;
    for (const auto& [name, left] : places) gone.insert(gone.end(), left.begin(), left.end());
    std::sort(gone.begin(), gone.end());
    for (const std::size_t i : gone) pairs.emplace_back(i, none);
    return pairs;
}

bool IsSameOrder(const Pairs& pairs) {
    std::size_t next = 0;
    for (const auto& [first, second] : pairs) {
        if (first == none || second == none) continue;
        if (first < next) return false;
        next = first;
    }
    return true;
}

template <class Member>
std::vector<std::u16string> NamesOf(const std::vector<std::unique_ptr<Member>>& list, const reka::CBstr Member::*name) {
    std::vector<std::u16string> names;
    names.reserve(list.size());
    for (const auto& member : list) names.emplace_back(((*member).*name).View());
    return names;
}

std::string Quoted(std::u16string_view text) {
    return text.empty() ? "nothing" : "\"" + packagetext::OnOneLine(text) + "\"";
}

std::string Number(double value) {
    char digits[32];  // more than the shortest text of any double takes
    return {digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr};
}

bool SameNumber(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

/// The word for a stored value, or the value itself where it has none.
template <class Enum, std::size_t Count>
std::u16string WordOrNumber(Enum value, const char16_t* const (&words)[Count]) {
    const auto number = static_cast<std::int32_t>(value);
    if (number >= 0 && static_cast<std::size_t>(number) < Count) return words[number];
    return reka::Utf16FromUtf8(std::to_string(number));
}

/// The path of the compound file; nothing for the shipped one, which lies elsewhere on each machine.
std::u16string CompoundFileOf(const reka::ReactionPackDefinition& definition) {
    const reka::ReactionPackDefinition fresh(nullptr);
    return definition.pcdFile == fresh.pcdFile ? std::u16string() : definition.pcdFile;
}

std::vector<std::uint8_t> TreeOf(const reka::ExpressionRef* expression) {
    std::vector<std::uint8_t> bytes;
    reka::CByteWriter writer(bytes);
    reka::WriteStoredExpression(expression, writer);
    return bytes;
}

/// Collects the differences of one pair of packages.
class CPackageDiff {
public:
    /// `placeInFile` is that of the package in its file.
    CPackageDiff(std::vector<std::string>& target, std::u16string_view name, std::size_t placeInFile)
        : lines(target),
          package(name.empty() ? "package " + std::to_string(placeInFile + 1) : packagetext::OnOneLine(name)) {}

    void Compare(const reka::ReactionPackDefinition& before, const reka::ReactionPackDefinition& after) {
        Text("name", before.name.View(), after.name.View());
        Text("description", before.description.View(), after.description.View());
        Text("compound file", CompoundFileOf(before), CompoundFileOf(after));
        Text("thermo version", WordOrNumber(before.thermoVersion, reka::thermoVersionWords),
             WordOrNumber(after.thermoVersion, reka::thermoVersionWords));
        const Pairs compounds = PairByName(NamesOf(before.compounds, &reka::CompoundDefinition::name),
                                           NamesOf(after.compounds, &reka::CompoundDefinition::name));
        for (const auto& [first, second] : compounds) {
            const auto& named = second == none ? before.compounds[first] : after.compounds[second];
            place = "compound " + packagetext::OnOneLine(named->name.View()) + ": ";
            if (first == none) Tell("is new");
            if (second == none) Tell("is gone");
            if (first != none && second != none) CompareCompounds(*before.compounds[first], *after.compounds[second]);
        }
        Order("compounds", compounds);
        areCompoundsSame =
            std::all_of(compounds.begin(), compounds.end(), [](const auto& pair) { return pair.first == pair.second; });
        const Pairs reactions = PairByName(NamesOf(before.reactions, &reka::ReactionDefinition::id),
                                           NamesOf(after.reactions, &reka::ReactionDefinition::id));
        for (const auto& [first, second] : reactions) {
            const auto& named = second == none ? before.reactions[first] : after.reactions[second];
            place = "reaction " + packagetext::OnOneLine(named->id.View()) + ": ";
            if (first == none) Tell("is new");
            if (second == none) Tell("is gone");
            if (first == none || second == none) continue;
            CompareReactions(*before.reactions[first], *after.reactions[second]);
            CompareCoefficients(*before.reactions[first], *after.reactions[second], before, after, compounds);
        }
        Order("reactions", reactions);
    }

    void Tell(const std::string& text) { lines.push_back(package + ": " + place + text); }

private:
    void Text(const std::string& what, std::u16string_view before, std::u16string_view after) {
        if (before != after) Tell(what + ": " + Quoted(before) + " became " + Quoted(after));
    }
    void Value(const std::string& what, double before, double after) {
        if (!SameNumber(before, after)) Tell(what + ": " + Number(before) + " became " + Number(after));
    }
    void Order(const std::string& what, const Pairs& pairs) {
        place.clear();
        if (!IsSameOrder(pairs)) Tell("the order of the " + what + " has changed");
    }

    void CompareCompounds(const reka::CompoundDefinition& before, const reka::CompoundDefinition& after) {
        Text("name", before.name.View(), after.name.View());
        Text("identifier", before.id.View(), after.id.View());
        Text("CAS number", before.casNumber.View(), after.casNumber.View());
        Text("formula", before.formula.View(), after.formula.View());
        Value("molecular weight", before.molecularWeight, after.molecularWeight);
        Value("charge", before.charge, after.charge);
    }

    void CompareReactions(const reka::ReactionDefinition& before, const reka::ReactionDefinition& after) {
        Text("identifier", before.id.View(), after.id.View());
        Text("phase", before.phase.View(), after.phase.View());
        Text("type", WordOrNumber(before.type, reka::reactionTypeWords),
             WordOrNumber(after.type, reka::reactionTypeWords));
        Text("basis of the rate", WordOrNumber(before.rateBasis, reka::rateBasisWords),
             WordOrNumber(after.rateBasis, reka::rateBasisWords));
        Text("basis of the equilibrium constant", WordOrNumber(before.equilibriumBasis, reka::equilibriumBasisWords),
             WordOrNumber(after.equilibriumBasis, reka::equilibriumBasisWords));
        Expression("rate", before.rateEquation, before.rateExpression.get(), after.rateEquation,
                   after.rateExpression.get());
        Expression("equilibrium constant", before.equilibriumConstantEquation,
                   before.equilibriumConstantExpression.get(), after.equilibriumConstantEquation,
                   after.equilibriumConstantExpression.get());
        Expression("heat of reaction", before.heatEquation, before.heatExpression.get(), after.heatEquation,
                   after.heatExpression.get());
    }

    void Expression(const std::string& what, const std::u16string& before, const reka::ExpressionRef* treeBefore,
                    const std::u16string& after, const reka::ExpressionRef* treeAfter) {
        Text(what, before, after);
        if (before != after || !areCompoundsSame || TreeOf(treeBefore) == TreeOf(treeAfter)) return;
        Tell("the stored tree of the " + what + " has changed, its text hasn't");
    }

    /// A compound that is only in one of the packages takes no part in the other.
    void CompareCoefficients(const reka::ReactionDefinition& before, const reka::ReactionDefinition& after,
                             const reka::ReactionPackDefinition& packageBefore,
                             const reka::ReactionPackDefinition& packageAfter, const Pairs& compounds) {
        for (const auto& [first, second] : compounds) {
            const auto& named = second == none ? packageBefore.compounds[first] : packageAfter.compounds[second];
            Value("coefficient of " + packagetext::OnOneLine(named->name.View()),
                  first == none ? 0 : before.CoefficientOf(first), second == none ? 0 : after.CoefficientOf(second));
        }
    }

    std::vector<std::string>& lines;
    const std::string package;
    std::string place;              // in the package
    bool areCompoundsSame = false;  // and in the same order, so that trees mean the same by their places
};

}  // namespace

std::vector<std::string> DiffPackages(const Definitions& before, const Definitions& after) {
    std::vector<std::string> lines;
    const Pairs packages = PairByName(NamesOf(before, &reka::ReactionPackDefinition::name),
                                      NamesOf(after, &reka::ReactionPackDefinition::name));
    for (const auto& [first, second] : packages) {
        const std::size_t placeInFile = second == none ? first : second;
        CPackageDiff diff(lines, (second == none ? before : after)[placeInFile]->name.View(), placeInFile);
        if (first == none) diff.Tell("is new");
        if (second == none) diff.Tell("is gone");
        if (first != none && second != none) diff.Compare(*before[first], *after[second]);
    }
    if (!IsSameOrder(packages)) lines.emplace_back("the order of the packages has changed");
    return lines;
}

}  // namespace rekatool
