// SPDX-License-Identifier: MIT
// One routine for each level of precedence, with the value computed on the way: there is no tree, no folding and no
// automaton. What it has in common with the component are the functions themselves and the power, which tests compare
// with true values.

#include "ScalarReading.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <string>

#include "expression/math/MathFunctions.h"
#include "expression/tree/NodeKinds.h"

namespace reka::fuzz {

namespace {

struct NamedFunction {
    const char* name;
    int arguments;
    double (*compute)(double a, double b);
};

const NamedFunction functions[] = {
    {"SQRT", 1, [](double a, double) { return std::sqrt(a); }},
    {"SIN", 1, [](double a, double) { return math::Sin(a); }},
    {"COS", 1, [](double a, double) { return math::Cos(a); }},
    {"TAN", 1, [](double a, double) { return math::Tan(a); }},
    {"ASIN", 1, [](double a, double) { return math::Asin(a); }},
    {"ACOS", 1, [](double a, double) { return math::Acos(a); }},
    {"ATAN", 1, [](double a, double) { return math::Atan(a); }},
    {"SINH", 1, [](double a, double) { return math::Sinh(a); }},
    {"COSH", 1, [](double a, double) { return math::Cosh(a); }},
    {"TANH", 1, [](double a, double) { return math::Tanh(a); }},
    {"ABS", 1, [](double a, double) { return std::fabs(a); }},
    {"FLOOR", 1, [](double a, double) { return std::floor(a); }},
    {"CEIL", 1, [](double a, double) { return std::ceil(a); }},
    {"ROUND", 1, [](double a, double) { return std::floor(a + 0.5); }},
    {"EXP", 1, [](double a, double) { return math::Exp(a); }},
    {"LOG", 1, [](double a, double) { return math::Log(a); }},
    {"LOG10", 1, [](double a, double) { return math::Log10(a); }},
    {"MIN", 2, [](double a, double b) { return a < b ? a : b; }},
    {"MAX", 2, [](double a, double b) { return a > b ? a : b; }},
    {"MOD", 2, [](double a, double b) { return std::fmod(a, b); }},
};

class CScalarReader {
public:
    explicit CScalarReader(std::string_view source) : text(source.substr(0, source.find('\0'))) {}

    std::optional<double> Read() {
        const double value = Sum();
        SkipBlanks();
        if (isWrong || place != text.size()) return std::nullopt;
        return value;
    }

private:
    char Next() const { return place < text.size() ? text[place] : '\0'; }
    bool IsDigitNext() const { return std::isdigit(static_cast<unsigned char>(Next())) != 0; }
    void SkipBlanks() {
        while (Next() == ' ' || Next() == '\t') ++place;
    }
    /// A number or a word is closed by one blank, which may be a carriage return.
    void EndToken() {
        if (Next() == '\r') ++place;
    }
    bool Take(char wanted) {
        SkipBlanks();
        if (isWrong || Next() != wanted) return false;
        ++place;
        return true;
    }
    double Fail() {
        isWrong = true;
        return 0;
    }

    double Sum() {
        double value = Product();
        while (true) {
            if (Take('+')) {
                value = value + Product();
            } else if (Take('-')) {
                value = value - Product();
            } else {
                return value;
            }
        }
    }
    double Product() {
        double value = Signed();
        while (true) {
            if (Take('*')) {
                value = value * Signed();
            } else if (Take('/')) {
                const double divisor = Signed();
                if (divisor == 0) return Fail();
                value = value / divisor;
            } else {
                return value;
            }
        }
    }
    double Signed() { return Take('-') ? -Signed() : Power(); }
    double Power() {
        const double base = Primary();
        return Take('^') ? RaiseTo(base, Signed()) : base;  // from the right
    }
    double Primary() {
        SkipBlanks();
        if (isWrong) return 0;
        if (IsDigitNext() || Next() == '.') return Number();
        if (Take('(')) {
            const double value = Sum();
            return Take(')') ? value : Fail();
        }
        return Named();
    }

    double Number() {
        double value = 0;
        const bool hasWhole = IsDigitNext();
        while (IsDigitNext()) value = value * 10.0 + (text[place++] - '0');
        bool isReal = false;
        if (Next() == '.') {
            ++place;
            if (!hasWhole && !IsDigitNext()) return Fail();
            isReal = true;
            double scale = 0.1;
            for (; IsDigitNext(); scale *= 0.1) value += (text[place++] - '0') * scale;
        }
        if (Next() == 'e' || Next() == 'E') {
            ++place;
            isReal = true;
            const bool isNegative = Next() == '-';
            if (isNegative || Next() == '+') ++place;
            if (!IsDigitNext()) return Fail();
            std::string digits = isNegative ? "1e-" : "1e";
            bool isZero = true;
            for (; IsDigitNext(); ++place) {
                isZero = isZero && Next() == '0';
                digits += Next();
            }
            if (!isZero) value *= std::strtod(digits.c_str(), nullptr);
        }
        EndToken();
        return isReal && !std::isfinite(value) ? Fail() : value;
    }

    std::string Word() {
        std::string word;
        const bool isQuoted = Next() == '"';
        if (isQuoted) ++place;
        while (isQuoted ? place < text.size() && Next() != '"'
                        : Next() == '_' || std::isalnum(static_cast<unsigned char>(Next()))) {
            word += static_cast<char>(std::toupper(static_cast<unsigned char>(text[place++])));
        }
        if (isQuoted) {
            if (place == text.size()) isWrong = true;
            ++place;
        } else {
            EndToken();
        }
        return word;
    }

    double Named() {
        const std::string word = Word();
        if (word == "PI") return 3.141592653589793;
        if (word == "R") return 8.314;
        for (const NamedFunction& function : functions) {
            if (word == function.name) return Call(function);
        }
        return Fail();
    }
    double Call(const NamedFunction& function) {
        if (!Take('(')) return Fail();
        double arguments[2] = {};
        int count = 0;
        SkipBlanks();
        if (Next() != ',' && Next() != ')') arguments[count++] = Sum();
        while (Take(',')) {  // one may stand in front of the first
            const double argument = Sum();
            if (count < 2) arguments[count] = argument;
            ++count;
        }
        if (!Take(')') || count != function.arguments) return Fail();
        return function.compute(arguments[0], arguments[1]);
    }

    std::string_view text;
    std::size_t place = 0;
    bool isWrong = false;
};

}  // namespace

std::optional<double> ReadScalar(std::string_view text) {
    return CScalarReader(text).Read();
}

}  // namespace reka::fuzz
