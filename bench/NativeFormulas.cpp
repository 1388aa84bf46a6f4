// SPDX-License-Identifier: MIT
// Written out by hand, with the guards that the language has, since a comparison with C++ that may divide by zero would
// be one with something nobody can use. The mathematics is that of the compiler's runtime.

#include "bench/NativeFormulas.h"

#include <cmath>
#include <limits>

namespace reka::bench {

namespace {

constexpr double R = 8.314;  // J/(mol K), as the language has it

bool Refuse(double& result, std::u16string& errorText, const char16_t* text) {
    result = std::numeric_limits<double>::quiet_NaN();
    errorText = text;
    return false;
}

bool Divide(double a, double b, double& quotient) {
    if (b == 0) return false;
    quotient = a / b;
    return true;
}

}  // namespace

bool Native1(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    double term;
    if (!Divide(-5000, R * definition.temperature, term)) return Refuse(result, errorText, u"division by zero");
    result = 2 * std::exp(term) * definition.activity[0];
    return true;
}

bool Native2(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double* c = definition.molarity.Get();
    const double RT = R * definition.temperature;
    double forward;
    double backward;
    if (!Divide(-45000, RT, forward) || !Divide(-62000, RT, backward)) {
        return Refuse(result, errorText, u"division by zero");
    }
    const double inhibition = 1.0 + 0.5 * c[0] + 2.5 * c[2];
    if (inhibition < 0) return Refuse(result, errorText, u"negative base in power");
    const double difference = 1.2e5 * std::exp(forward) * c[0] * c[1] - 3.4e7 * std::exp(backward) * c[2] * c[3];
    if (!Divide(difference, inhibition * inhibition, result)) return Refuse(result, errorText, u"division by zero");
    return true;
}

bool Native3(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    if (T < 0) return Refuse(result, errorText, u"log of negative number");
    double term;
    if (!Divide(2001.6, T, term)) return Refuse(result, errorText, u"division by zero");
    result = std::pow(10.0, -2.691122 * std::log10(T) - 5.519265e-5 * T + 1.848863e-7 * (T * T) + term + 2.6899);
    return true;
}

bool Native4(double& result, const ReactionPackDefinition& definition, std::u16string&) {
    const double* x = definition.moleFraction.Get();
    result = x[0] + x[1] * definition.pressure / 101325;
    return true;
}

bool Native5(double& result, const ReactionPackDefinition& definition, std::u16string&) {
    const double* x = definition.moleFraction.Get();
    const double T = definition.temperature;
    result = 0.37 * T + 0.483 * x[1] + 0.596 * T * x[2] + x[3] + 0.822 + 0.935 * T + 1.048 * x[2] + 1.161 * T * x[3] +
             x[0] + 1.387 + 1.5 * T + 1.613 * x[3] + 1.726 * T * x[0] + x[1] + 1.952 + 2.065 * T + 2.178 * x[0] +
             2.291 * T * x[1] + x[2] + 2.517 + 2.63 * T + 2.743 * x[1] + 2.856 * T * x[2] + x[3] + 3.082 + 3.195 * T +
             3.308 * x[2] + 3.421 * T * x[3] + x[0] + 3.647 + 3.76 * T + 3.873 * x[3] + 3.986 * T * x[0] + x[1] +
             4.212 + 4.325 * T + 4.438 * x[0] + 4.551 * T * x[1] + x[2] + 4.777 + 4.89 * T + 5.003 * x[1] +
             5.116 * T * x[2] + x[3] + 5.342 + 5.455 * T + 5.568 * x[2] + 5.681 * T * x[3] + x[0] + 5.907 + 6.02 * T +
             6.133 * x[3] + 6.246 * T * x[0] + x[1] + 6.472 + 6.585 * T + 6.698 * x[0] + 6.811 * T * x[1] + x[2] +
             7.037;
    return true;
}

bool Native6(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double* activity = definition.activity.Get();
    const double RT = R * definition.temperature;
    if (RT == 0) return Refuse(result, errorText, u"division by zero");
    if (activity[1] < 0) return Refuse(result, errorText, u"negative base in power");
    const double root = std::sqrt(activity[1] + 0.0);
    const double equilibrium = 1e-3 * std::exp(38000 / RT);
    double backward;
    if (!Divide(activity[2], equilibrium, backward)) return Refuse(result, errorText, u"division by zero");
    const double rate = 30 * std::exp(-25000 / RT) * (activity[0] * root - backward);
    const double adsorption = 1 + 2e-4 * std::exp(29000 / RT) * activity[0] + 3e-3 * std::exp(17000 / RT) * root +
                              4e-4 * std::exp(24000 / RT) * activity[2];
    if (adsorption < 0) return Refuse(result, errorText, u"negative base in power");
    if (!Divide(rate, adsorption * adsorption * adsorption, result)) {
        return Refuse(result, errorText, u"division by zero");
    }
    return true;
}

}  // namespace reka::bench
