// SPDX-License-Identifier: MIT
// Six formulas after real ones: an Arrhenius term, a reversible rate with inhibition, a correlation of an equilibrium
// constant, two of cheap operations, one short and one long, and a rate with adsorption. Each has its form in C++
// beside it. Values change from step to step, so that no side can carry a result over.

#include "bench/Formulas.h"

#include <array>

#include "bench/NativeFormulas.h"

namespace reka::bench {

namespace {

constexpr Formula formulas[] = {
    {"e1", u"2*exp(-5000/(R*T))*A(a)", Native1},
    {"e2", u"(1.2e5*exp(-45000/(R*T))*C(a)*C(b)-3.4e7*exp(-62000/(R*T))*C(c)*C(d))/(1.0+0.5*C(a)+2.5*C(c))^2", Native2},
    {"e3", u"10^(-2.691122*LOG10(T)-5.519265e-5*T+1.848863e-7*T^2+2001.6/T+2.6899)", Native3},
    {"e4", u"X(a)+X(b)*P/101325", Native4},
    {"e5", SumText, Native5},
    {"e6",
     u"30*exp(-25000/(R*T))*(A(a)*A(b)^0.5-A(c)/(1e-3*exp(38000/(R*T))))"
     u"/(1+2e-4*exp(29000/(R*T))*A(a)+3e-3*exp(17000/(R*T))*A(b)^0.5+4e-4*exp(24000/(R*T))*A(c))^3",
     Native6},
};

constexpr std::size_t stepCount = 256;

}  // namespace

std::span<const Formula> Formulas() {
    return formulas;
}

std::u16string DoubleCompounds(std::u16string_view text) {
    std::u16string doubled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isCompound = i > 0 && i + 1 < text.size() && text[i - 1] == u'(' && text[i + 1] == u')' &&
                                text[i] >= u'a' && text[i] <= u'd';
        doubled.append(isCompound ? 2 : 1, text[i]);
    }
    return doubled;
}

std::unique_ptr<ReactionPackDefinition> MakeBenchDefinition() {
    return MakeBenchDefinition({u"aa", u"bb", u"cc", u"dd"});
}

std::unique_ptr<ReactionPackDefinition> MakeBenchDefinition(const std::vector<std::u16string>& compoundNames) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    for (const std::u16string& name : compoundNames) {
        auto compound = std::make_unique<CompoundDefinition>();
        compound->name = CBstr::Make(name);
        compound->id = CBstr::Make(name);
        definition->compounds.push_back(std::move(compound));
    }
    definition->AllocateWorkArrays();
    for (std::size_t i = 0; i < compoundNames.size(); ++i) {
        const double fraction = 0.4 - 0.1 * static_cast<double>(i % 4);
        definition->moleFraction[i] = fraction;
        definition->activity[i] = 0.9 * fraction;
        definition->molarity[i] = 120 * fraction;
        definition->fugacity[i] = 2e5 * fraction;
    }
    return definition;
}

double TemperatureAt(std::size_t n) {
    static const auto temperatures = [] {
        std::array<double, stepCount> values{};
        for (std::size_t i = 0; i < stepCount; ++i) values[i] = 400.0 + 1.37 * static_cast<double>(i * 97 % stepCount);
        return values;
    }();
    return temperatures[n % stepCount];
}

double PressureAt(std::size_t n) {
    return 1e5 + 1000.0 * static_cast<double>(n % stepCount);
}

}  // namespace reka::bench
