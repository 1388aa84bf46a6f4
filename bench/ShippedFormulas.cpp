// SPDX-License-Identifier: MIT
// The texts come from the documents; their C++ forms stand here, in the order of the documents' names.

#include "bench/ShippedFormulas.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "text/Utf8.h"

namespace reka::bench {

namespace {

constexpr double R = 8.314;

bool Refuse(double& result, std::u16string& errorText, const char16_t* text) {
    result = std::numeric_limits<double>::quiet_NaN();
    errorText = text;
    return false;
}

bool DivisionByZero(double& result, std::u16string& errorText) {
    return Refuse(result, errorText, u"division by zero");
}

bool NegativeBase(double& result, std::u16string& errorText) {
    return Refuse(result, errorText, u"negative base in power");
}

bool AmmoniaConstant(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    if (T < 0) return Refuse(result, errorText, u"log of negative number");
    if (T == 0) return DivisionByZero(result, errorText);
    result = std::pow(10.0, -2.691122 * std::log10(T) - 5.519265e-5 * T + 1.848863e-7 * (T * T) + 2001.6 / T + 2.6899) /
             101325;
    return true;
}

bool PentoxideRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    static const double factor = std::log(4.87e-3 / 3.46e-5);
    const double T = definition.temperature;
    if (T == 0) return DivisionByZero(result, errorText);
    result = 3.46e-5 * std::exp(factor * (1 / 298.15 - 1 / T) / (1 / 298.15 - 1 / 338.15)) * definition.molarity[0];
    return true;
}

/// 1 plus the adsorption terms of the copper catalyst, for carbon dioxide 0, hydrogen 1, methanol 2, water 3 and carbon
/// monoxide 4. False for operands that are refused.
bool CopperAdsorption(double T, const double* f, double& adsorption) {
    const double RT = R * T;
    if (f[1] == 0 || RT == 0 || f[1] / 1e5 < 0) return false;
    adsorption = 1 + 3453.38 * f[3] / f[1] + 0.499 * std::exp(17197 / RT) * std::sqrt(f[1] / 1e5) +
                 6.62e-11 * std::exp(124119 / RT) * f[3] / 1e5;
    return adsorption > 0;
}

bool MethanolRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    const double* f = definition.fugacity.Get();
    double adsorption;
    if (!CopperAdsorption(T, f, adsorption)) return DivisionByZero(result, errorText);
    const double reverse = f[3] * f[2] * 1e10 / (f[1] * f[1] * f[1] * f[0]) / std::pow(10.0, 3066 / T - 10.592);
    result = 1.07 * std::exp(36696 / (R * T)) * (f[0] / 1e5) * (f[1] / 1e5) * (1 - reverse) /
             (adsorption * adsorption * adsorption);
    return true;
}

bool ReverseShiftRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    const double* f = definition.fugacity.Get();
    double adsorption;
    if (!CopperAdsorption(T, f, adsorption) || f[0] * f[1] == 0) return DivisionByZero(result, errorText);
    const double reverse = std::pow(10.0, 2073 / T - 2.029) * f[3] * f[4] / (f[0] * f[1]);
    result = 1.22e10 * std::exp(-94765 / (R * T)) * (f[0] / 1e5) * (1 - reverse) / adsorption;
    return true;
}

bool AdsorptionRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double RT = R * definition.temperature;
    if (RT == 0) return DivisionByZero(result, errorText);
    const double* a = definition.activity.Get();
    const double acid = 3.15 * a[0] / 60.052;
    const double alcohol = 5.64 * a[1] / 32.042;
    const double ester = 4.15 * a[2] / 74.079;
    const double water = 5.24 * a[3] / 18.015;
    const double sum = acid + alcohol + ester + water;
    if (sum < 0) return NegativeBase(result, errorText);
    if (sum * sum == 0) return DivisionByZero(result, errorText);
    result = 1000 *
             (8.497e6 * std::exp(-60470 / RT) * acid * alcohol - 6.127e5 * std::exp(-63730 / RT) * ester * water) /
             (sum * sum);
    return true;
}

bool EsterificationRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double RT = R * definition.temperature;
    if (RT == 0) return DivisionByZero(result, errorText);
    const double* a = definition.activity.Get();
    result = 1000 * (2.961e4 * std::exp(-49190 / RT) * a[0] * a[1] - 1.348e6 * std::exp(-69230 / RT) * a[2] * a[3]);
    return true;
}

bool TetroxideConstant(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    static const double factor = std::log(0.6706 / 0.1426);
    const double T = definition.temperature;
    if (T == 0) return DivisionByZero(result, errorText);
    result = 101325 * 0.1426 * std::exp(factor * (1 / 298.15 - 1 / T) / (1 / 298.15 - 1 / 318.15));
    return true;
}

bool SulfurConstant(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    if (T == 0) return DivisionByZero(result, errorText);
    result = std::pow(10.0, 4956 / T - 4.678) / std::sqrt(101325.0);
    return true;
}

constexpr double perHourAndCubicFoot = 453.59237 / (60 * 0.028316846592);
constexpr double poundPerSquareInch = 6894.757293;

bool DealkylationRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    const double* f = definition.fugacity.Get();
    if (T == 0) return DivisionByZero(result, errorText);
    if (f[1] < 0) return NegativeBase(result, errorText);
    result = perHourAndCubicFoot * 3.6858e6 * std::exp(-25616 / T) * (f[0] / poundPerSquareInch) *
             std::sqrt(f[1] / poundPerSquareInch);
    return true;
}

bool DiphenylRate(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    const double* f = definition.fugacity.Get();
    if (T == 0) return DivisionByZero(result, errorText);
    if (f[2] < 0) return NegativeBase(result, errorText);
    const double benzene = f[2] / poundPerSquareInch;
    result = perHourAndCubicFoot *
             (5.987e4 * std::exp(-25616 / T) * (benzene * benzene) -
              2.553e5 * std::exp(-25616 / T) * (f[4] / poundPerSquareInch) * (f[1] / poundPerSquareInch));
    return true;
}

bool ShiftConstant(double& result, const ReactionPackDefinition& definition, std::u16string& errorText) {
    const double T = definition.temperature;
    if (T == 0) return DivisionByZero(result, errorText);
    result = std::exp(4577.8 / T - 4.33);
    return true;
}

constexpr NativeFormula nativeForms[] = {AmmoniaConstant,  PentoxideRate,      MethanolRate,      ReverseShiftRate,
                                         AdsorptionRate,   EsterificationRate, TetroxideConstant, SulfurConstant,
                                         DealkylationRate, DiphenylRate,       ShiftConstant};

}  // namespace

std::vector<ShippedFormula> ShippedFormulas() {
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(REKA_DOCUMENTS)) files.insert(entry.path());
    std::vector<ShippedFormula> formulas;
    for (const auto& path : files) {
        std::ifstream file(path);
        const nlohmann::json package = nlohmann::json::parse(file)["package"];
        std::vector<std::u16string> compoundNames;
        for (const std::string name : package["compoundName"]) compoundNames.push_back(Utf16FromUtf8(name));
        int count = 0;
        for (const char* member : {"reactionRateEquation", "reactionEquilibriumConstantEquation"}) {
            for (const auto& entry : package.value(member, nlohmann::json::array())) {
                const std::string text = entry.is_string() ? entry.get<std::string>() : "";
                if (text.empty()) continue;
                if (formulas.size() == std::size(nativeForms)) throw std::runtime_error("more formulas than C++ forms");
                const std::string number = count++ == 0 ? "" : std::to_string(count);
                formulas.push_back(
                    {path.stem().string() + number, Utf16FromUtf8(text), compoundNames, nativeForms[formulas.size()]});
            }
        }
    }
    if (formulas.size() != std::size(nativeForms)) throw std::runtime_error("fewer formulas than C++ forms");
    return formulas;
}

}  // namespace reka::bench
