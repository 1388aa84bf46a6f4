// SPDX-License-Identifier: MIT
// The component's own exponentials, logarithms and powers, which products for Windows compute with, for any arguments,
// against the C library's in extended precision: each is within one unit in the last place of that.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <span>

#include "expression/math/MathFunctions.h"
#include "persistence/ByteReader.h"

namespace {

struct Row {
    double (*own)(double x, double y);
    long double (*expected)(long double x, long double y);
};

const Row rows[] = {
    {[](double x, double) { return reka::math::Exp(x); }, [](long double x, long double) { return expl(x); }},
    {[](double x, double) { return reka::math::Log(x); }, [](long double x, long double) { return logl(x); }},
    {[](double x, double) { return reka::math::Exp10(x); }, [](long double x, long double) { return powl(10, x); }},
    {[](double x, double) { return reka::math::Log10(x); }, [](long double x, long double) { return log10l(x); }},
    {[](double x, double) { return reka::math::Sinh(x); }, [](long double x, long double) { return sinhl(x); }},
    {[](double x, double) { return reka::math::Cosh(x); }, [](long double x, long double) { return coshl(x); }},
    {[](double x, double) { return reka::math::Tanh(x); }, [](long double x, long double) { return tanhl(x); }},
    {[](double x, double y) { return reka::math::Pow(x, y); }, [](long double x, long double y) { return powl(x, y); }},
};

/// Whether `value` is within one unit in the last place of `truth`, which has more digits.
bool IsClose(double value, long double truth) {
    if (std::isnan(truth) || std::isnan(value)) return std::isnan(truth) && std::isnan(value);
    const auto rounded = static_cast<double>(truth);
    if (value == rounded) return std::signbit(value) == std::signbit(rounded);
    if (!std::isfinite(value) || !std::isfinite(rounded)) {  // one at the edge of the range
        return std::fabs(truth) > 0.999999999999999L * std::numeric_limits<double>::max() &&
               std::fabs(value) >= std::nextafter(std::numeric_limits<double>::max(), 0.0);
    }
    const double magnitude = std::fabs(rounded);
    const double unit = std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
    return std::fabs(static_cast<long double>(value) - truth) <= static_cast<long double>(unit);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::CByteReader reader(std::span(data, size));
    double x = 0;
    double y = 0;
    reader.ReadF64(x);
    reader.ReadF64(y);
    for (const Row& row : rows) {
        for (const double argument : {x, std::fmod(x, 800.0), 1.0 + std::fmod(x, 0x1p-10)}) {
            if (!IsClose(row.own(argument, y), row.expected(argument, y))) std::abort();
            if (!IsClose(row.own(argument, std::round(std::fmod(y, 300.0))),
                         row.expected(argument, std::round(std::fmod(y, 300.0))))) {
                std::abort();
            }
        }
    }
    return 0;
}
