// SPDX-License-Identifier: MIT
// A wrong sign, a wrong unit or a misplaced bracket seldom shows in the text of a rate, but soon in its numbers. So a
// reaction is calculated at conditions that a chemist would try, and what can't be right at any of them is told, the
// first case of each sort: a value that is no number, a constant that isn't above zero, a rate that runs backwards
// where there is nothing to run back from.

#include "RateGrid.h"

#include <algorithm>
#include <cmath>

#include "expression/run/EvaluateExpression.h"
#include "platform/HostArithmetic.h"
#include "platform/SameText.h"
#include "text/NumberText.h"

namespace rekatool {

namespace {

constexpr double temperatures[] = {250, 298.15, 350, 400, 500, 600, 700, 800, 1000, 1200, 1500};  // K
constexpr double pressure = 1e5;                                                                  // Pa
constexpr double gasConstant = 8.314462618;                                                       // J/(mol K)
constexpr double liquidDensity = 1e4;                                                             // mol/m3
constexpr double trace = 1e-6;

enum class Mixture { EqualParts, Reactants, Products, ReactantsAlone, ProductsAlone };

const char16_t* NameOf(Mixture mixture) {
    switch (mixture) {
        case Mixture::EqualParts:
            return u"with equal parts of all compounds";
        case Mixture::Reactants:
            return u"with reactants and a trace of the others";
        case Mixture::Products:
            return u"with products and a trace of the others";
        case Mixture::ReactantsAlone:
            return u"without products";
        default:
            return u"without reactants";
    }
}

/// The part of a compound with that coefficient, before the parts are made to add up to 1.
double PartOf(double coefficient, Mixture mixture) {
    switch (mixture) {
        case Mixture::Reactants:
            return coefficient < 0 ? 1 : trace;
        case Mixture::Products:
            return coefficient > 0 ? 1 : trace;
        case Mixture::ReactantsAlone:
            return coefficient > 0 ? 0 : 1;
        case Mixture::ProductsAlone:
            return coefficient < 0 ? 0 : 1;
        default:
            return 1;
    }
}

bool IsLiquid(const reka::ReactionDefinition& reaction) {
    const std::u16string_view phase = reaction.phase.View();
    for (std::size_t i = 0; i + 3 <= phase.size(); ++i) {
        if (reka::SameText(phase.substr(i, 3), std::u16string_view(u"liq"))) return true;
    }
    return false;
}

class CTrial {
public:
    CTrial(reka::ReactionPackDefinition& target, const reka::ReactionDefinition& tried)
        : definition(target), reaction(tried), isKinetic(tried.type == reka::ReactionType::Kinetic) {}

    std::vector<std::u16string> Run() {
        const reka::COwnArithmetic arithmetic;
        for (const double temperature : temperatures) {
            for (const Mixture mixture : {Mixture::EqualParts, Mixture::Reactants, Mixture::Products}) {
                TryValue(temperature, mixture);
            }
            if (!isKinetic) continue;
            TrySign(temperature, Mixture::ReactantsAlone);
            TrySign(temperature, Mixture::ProductsAlone);
        }
        std::vector<std::u16string> findings;
        for (std::u16string* text : {&failure, &noNumber, &wrongSign[0], &wrongSign[1]}) {
            if (!text->empty()) findings.push_back(*text);
        }
        return findings;
    }

private:
    const reka::ExpressionRef& Expression() const {
        return isKinetic ? *reaction.rateExpression : *reaction.equilibriumConstantExpression;
    }
    std::u16string Place(double temperature, Mixture mixture) const {
        return u" at " + reka::FormatGeneral(temperature) + u" K " + NameOf(mixture);
    }
    std::u16string What() const { return isKinetic ? u"the rate" : u"the equilibrium constant"; }

    void Set(double temperature, Mixture mixture) {
        double total = 0;
        for (const double coefficient : reaction.stoichiometry) total += PartOf(coefficient, mixture);
        const double density = IsLiquid(reaction) ? liquidDensity : pressure / (gasConstant * temperature);
        definition.temperature = temperature;
        definition.pressure = pressure;
        for (std::size_t i = 0; i < definition.workArraySize; ++i) {
            const double fraction = PartOf(reaction.stoichiometry[i], mixture) / total;
            definition.moleFraction[i] = fraction;
            definition.molarity[i] = fraction * density;
            definition.activity[i] = fraction;
            definition.fugacity[i] = fraction * pressure;
        }
    }

    bool Evaluate(double temperature, Mixture mixture, double& value, std::u16string& errorText) {
        Set(temperature, mixture);
        return reka::EvaluateExpression(Expression(), value, definition, errorText);
    }

    void TryValue(double temperature, Mixture mixture) {
        double value = 0;
        std::u16string errorText;
        if (!Evaluate(temperature, mixture, value, errorText)) {
            if (failure.empty()) failure = What() + u" fails" + Place(temperature, mixture) + u": " + errorText;
        } else if (!std::isfinite(value)) {
            if (noNumber.empty()) {
                noNumber = What() + u" is " + reka::FormatGeneral(value) + Place(temperature, mixture);
            }
        } else if (!isKinetic && !(value > 0) && wrongSign[0].empty()) {
            wrongSign[0] = What() + u" is " + reka::FormatGeneral(value) + Place(temperature, mixture) +
                           u", where it can only be above 0";
        }
    }

    /// Without products a reaction can't run backwards, and without reactants not forwards. A rate that can't be
    /// computed there at all may be one that needs a trace of something.
    void TrySign(double temperature, Mixture mixture) {
        const bool isForwards = mixture == Mixture::ReactantsAlone;
        std::u16string& finding = wrongSign[isForwards ? 0 : 1];
        double value = 0;
        std::u16string errorText;
        if (!finding.empty() || !Evaluate(temperature, mixture, value, errorText)) return;
        if (isForwards ? value < 0 : value > 0) {
            finding = What() + u" is " + reka::FormatGeneral(value) + Place(temperature, mixture) +
                      (isForwards ? u", as if the reaction ran backwards" : u", as if the reaction ran forwards");
        }
    }

    reka::ReactionPackDefinition& definition;
    const reka::ReactionDefinition& reaction;
    bool isKinetic;
    std::u16string failure;
    std::u16string noNumber;
    std::u16string wrongSign[2];
};

}  // namespace

std::vector<std::u16string> TryReaction(reka::ReactionPackDefinition& definition,
                                        const reka::ReactionDefinition& reaction) {
    if (reaction.stoichiometry.size() != definition.workArraySize || reaction.stoichiometry.empty()) return {};
    return CTrial(definition, reaction).Run();
}

}  // namespace rekatool
