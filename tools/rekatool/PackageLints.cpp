// SPDX-License-Identifier: MIT
// Each of these is a slip that shows nowhere else: a digit of a registry number, a number that is too long for the
// language, a heat that was typed with the wrong sign or in another unit than its constant goes by.

#include "PackageLints.h"

#include <algorithm>
#include <cmath>

#include "expression/run/EvaluateExpression.h"
#include "platform/HostArithmetic.h"
#include "text/NumberText.h"

namespace rekatool {

namespace {

constexpr double gasConstant = 8.314462618;  // J/(mol K)

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}
bool IsOfName(char16_t character) {
    return IsDigit(character) || character == u'_' || (character >= u'A' && character <= u'Z') ||
           (character >= u'a' && character <= u'z') || character >= 0x80;
}

/// Two to seven digits, two digits and a check digit, with hyphens between.
bool HasShapeOfCasNumber(std::u16string_view number) {
    if (number.size() < 7 || number.size() > 12) return false;
    for (std::size_t i = 0; i < number.size(); ++i) {
        const std::size_t fromEnd = number.size() - i;
        const bool isHyphen = fromEnd == 2 || fromEnd == 5;
        if (isHyphen ? number[i] != u'-' : !IsDigit(number[i])) return false;
    }
    return true;
}

bool Evaluate(const reka::ExpressionRef& expression, double temperature, reka::ReactionPackDefinition& definition,
              double& value) {
    std::u16string errorText;
    definition.temperature = temperature;
    return reka::EvaluateExpression(expression, value, definition, errorText) && std::isfinite(value);
}

/// The heat that the slope of the constant says, in J/mol.
bool HeatOfSlope(const reka::ExpressionRef& constant, double temperature, reka::ReactionPackDefinition& definition,
                 double& heat) {
    const double distance = temperature * 1e-4;
    double below = 0;
    double above = 0;
    if (!Evaluate(constant, temperature - distance, definition, below) ||
        !Evaluate(constant, temperature + distance, definition, above) || !(below > 0) || !(above > 0)) {
        return false;
    }
    heat = gasConstant * temperature * temperature * std::log(above / below) / (2 * distance);
    return std::isfinite(heat);
}

bool ReadsTemperatureAtMost(const reka::ExpressionRef* expression) {
    return expression && (expression->dependencies & ~reka::dependency::temperature) == 0;
}

/// J/mol as kJ/mol.
std::u16string Kilojoules(double heat) {
    return reka::FormatGeneral(std::round(heat / 10) / 100) + u" kJ/mol";
}

}  // namespace

std::u16string LintCasNumber(std::u16string_view number) {
    if (number.empty()) return {};
    if (!HasShapeOfCasNumber(number)) return u"is no CAS number";
    int sum = 0;
    int place = 0;
    for (std::size_t i = number.size() - 1; i-- > 0;) {
        if (IsDigit(number[i])) sum += ++place * (number[i] - u'0');
    }
    const auto digit = static_cast<char16_t>(u'0' + sum % 10);
    if (digit == number.back()) return {};
    return std::u16string(u"is no CAS number: its last digit would have to be ") + digit;
}

std::u16string FindLongInteger(std::u16string_view expression) {
    constexpr std::size_t mostDigits = 18;
    std::size_t i = 0;
    while (i < expression.size()) {
        if (expression[i] == u'"') {
            i = std::min(expression.find(u'"', i + 1), expression.size() - 1) + 1;
        } else if (IsDigit(expression[i])) {
            const std::size_t start = i;
            while (i < expression.size() && IsDigit(expression[i])) ++i;
            const std::size_t first = std::min(expression.find_first_not_of(u'0', start), i);
            if (i - first > mostDigits) return std::u16string(expression.substr(start, i - start));
            // What follows the point are no whole numbers, however many.
            if (i < expression.size() && expression[i] == u'.') {
                ++i;
                while (i < expression.size() && IsDigit(expression[i])) ++i;
            }
        } else if (IsOfName(expression[i])) {
            while (i < expression.size() && IsOfName(expression[i])) ++i;
        } else if (expression[i] == u'.') {
            ++i;
            while (i < expression.size() && IsDigit(expression[i])) ++i;
        } else {
            ++i;
        }
    }
    return {};
}

std::u16string CompareHeatWithConstant(reka::ReactionPackDefinition& definition,
                                       const reka::ReactionDefinition& reaction) {
    const reka::ExpressionRef* const constant = reaction.equilibriumConstantExpression.get();
    const reka::ExpressionRef* const heat = reaction.heatExpression.get();
    if (reaction.type != reka::ReactionType::Equilibrium || !ReadsTemperatureAtMost(constant) ||
        !ReadsTemperatureAtMost(heat)) {
        return {};
    }
    double moles = 0;
    for (const double coefficient : reaction.stoichiometry) moles += coefficient;
    const bool isOfMolarities = reaction.equilibriumBasis == reka::EquilibriumBasis::Molarity ||
                                reaction.equilibriumBasis == reka::EquilibriumBasis::Concentration;
    const reka::COwnArithmetic arithmetic;
    double closest = INFINITY;
    std::u16string text;
    for (const double temperature : {273.15, 298.15, 350.0, 400.0, 500.0, 600.0, 700.0, 800.0, 1000.0, 1200.0}) {
        double given = 0;
        double sloped = 0;
        if (!Evaluate(*heat, temperature, definition, given) ||
            !HeatOfSlope(*constant, temperature, definition, sloped)) {
            continue;
        }
        double distance = std::fabs(given - sloped);
        if (isOfMolarities) {
            distance = std::min(distance, std::fabs(given - sloped - moles * gasConstant * temperature));
        }
        if (distance <= 5000 || distance <= 0.15 * std::max(std::fabs(given), std::fabs(sloped))) return {};
        if (distance > closest - 1) continue;  // of the same, the lowest temperature
        closest = distance;
        text = u"the heat of reaction is " + Kilojoules(given) + u" at " + reka::FormatGeneral(temperature) +
               u" K, but the slope of the equilibrium constant says " + Kilojoules(sloped);
    }
    return text;
}

}  // namespace rekatool
