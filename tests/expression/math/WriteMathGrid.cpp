// SPDX-License-Identifier: MIT
// Writes the grid against which the functions of the expression language are measured: for each function many
// arguments, and the true value that MPFR computes for them. Runs on the machine that builds, also for a cross build,
// and its output is compiled into the tests.
//
// The rows are those of tests/support/MathGrid.h: the number of the function, the bits of both arguments, the bits of
// the true value rounded to a double, and what the rounding has cut off, in units in the last place.
//
// Usage: MathGrid OUTPUT [COUNT], with the number of random arguments of each kind.

#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <vector>

namespace {

using Unary = int (*)(mpfr_t, const mpfr_t, mpfr_rnd_t);
using Binary = int (*)(mpfr_t, const mpfr_t, const mpfr_t, mpfr_rnd_t);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();
constexpr double smallestNormal = std::numeric_limits<double>::min();
constexpr double greatest = std::numeric_limits<double>::max();

// What every function is asked.
const std::vector<double> specialValues = {0.0,
                                           smallest,
                                           3 * smallest,
                                           smallestNormal - smallest,
                                           smallestNormal,
                                           1e-300,
                                           1e-20,
                                           1e-8,
                                           0.1,
                                           0.25,
                                           0.5,
                                           0.75,
                                           1.0,
                                           1.5,
                                           2.0,
                                           2.5,
                                           3.0,
                                           10.0,
                                           100.0,
                                           1e15,
                                           4503599627370496.5,
                                           9007199254740991.0,
                                           9007199254740992.0,
                                           1e22,
                                           1e100,
                                           1e300,
                                           greatest,
                                           infinity,
                                           notANumber};

std::mt19937_64 random{20240229};
int count = 120;

double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(random() >> 11) * 0x1p-53);
}

// Random digits with an exponent between the two given ones.
double WithExponent(int low, int high) {
    const int exponent = low + static_cast<int>(random() % static_cast<std::uint64_t>(high - low + 1));
    return std::ldexp(1.0 + static_cast<double>(random() >> 12) * 0x1p-52, exponent);
}

double EitherSign(double value) {
    return random() & 1 ? value : -value;
}

// The doubles at and around `value`.
void AddNeighbours(std::vector<double>& values, double value) {
    values.push_back(value);
    double up = value;
    double down = value;
    for (int i = 0; i < 3; ++i) {
        values.push_back(up = std::nextafter(up, infinity));
        values.push_back(down = std::nextafter(down, -infinity));
    }
}

void AddOrdinaryValues(std::vector<double>& values) {
    for (const double value : specialValues) {
        values.push_back(value);
        values.push_back(-value);
    }
    for (int i = 0; i < count; ++i) {
        values.push_back(EitherSign(WithExponent(-1074, 1023)));
        values.push_back(EitherSign(WithExponent(-60, -8)));
        values.push_back(EitherSign(WithExponent(-8, 8)));
        values.push_back(Between(-2.0, 2.0));
        values.push_back(Between(-40.0, 40.0));
    }
}

void AddValuesAroundOne(std::vector<double>& values) {
    AddNeighbours(values, 1.0);
    for (int i = 0; i < count; ++i) {
        values.push_back(1.0 + EitherSign(WithExponent(-52, -1)));
        values.push_back(Between(0.5, 2.0));
        values.push_back(-1.0 - EitherSign(WithExponent(-52, -1)));
    }
}

// Where sine and tangent nearly vanish or nearly have no bound.
void AddMultiplesOfHalfPi(std::vector<double>& values) {
    mpfr_t product;
    mpfr_init2(product, 2200);
    const auto addMultiple = [&](double factor) {
        mpfr_const_pi(product, MPFR_RNDN);
        mpfr_mul_d(product, product, factor / 2, MPFR_RNDN);
        AddNeighbours(values, mpfr_get_d(product, MPFR_RNDN));
    };
    for (int factor = -20; factor <= 20; ++factor) addMultiple(factor);
    for (int i = 0; i < count; ++i) addMultiple(std::floor(WithExponent(4, 52)));
    for (int i = 0; i < count; ++i) addMultiple(WithExponent(60, 1020));
    for (int i = 0; i < count; ++i) addMultiple(static_cast<double>(random() % 1000) / 2);
    mpfr_clear(product);
    AddNeighbours(values, 6381956970095103.0 * 0x1p797);  // the double that comes nearest to a multiple of pi/2
    AddNeighbours(values, 1e22);
}

// Where the exponential and the hyperbolic functions leave the range of a double or become subnormal.
void AddExponentialLimits(std::vector<double>& values) {
    for (const double limit : {709.782712893384, 710.4758600739439, -708.3964185322641, -745.1332191019411, -744.44,
                               18.714973875118524, 22.0, 0.34657359027997264, 0.5493061443340549, 88.0, 1.0}) {
        AddNeighbours(values, limit);
        AddNeighbours(values, -limit);
    }
    for (int i = 0; i < count; ++i) {
        values.push_back(Between(-746.0, -708.0));
        values.push_back(EitherSign(Between(700.0, 711.0)));
        values.push_back(EitherSign(Between(0.0, 711.0)));
        values.push_back(EitherSign(Between(0.2, 1.2)));
        values.push_back(EitherSign(Between(10.0, 24.0)));
    }
}

// Where the powers of ten are whole numbers, and where they leave the range of a double or become subnormal.
void AddDecimalExponents(std::vector<double>& values) {
    for (int exponent = -330; exponent <= 310; ++exponent) values.push_back(exponent);
    for (const double limit : {308.2547155599167, -307.6526555685888, -323.3062153431158, 300.0, -300.0}) {
        AddNeighbours(values, limit);
    }
    for (int i = 0; i < 4 * count; ++i) {
        values.push_back(Between(-324.0, 309.0));
        values.push_back(Between(-20.0, 20.0));
    }
}

std::uint64_t BitsOf(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void WriteRow(std::FILE* output, int function, double x, double y, const mpfr_t truth) {
    const double rounded = mpfr_get_d(truth, MPFR_RNDN);
    double rest = 0.0;
    if (std::isfinite(rounded)) {
        const double magnitude = std::fabs(rounded);
        const double unit = magnitude < smallestNormal ? smallest : std::ldexp(1.0, std::ilogb(magnitude) - 52);
        mpfr_t cutOff;
        mpfr_init2(cutOff, 400);
        mpfr_sub_d(cutOff, truth, rounded, MPFR_RNDN);
        mpfr_div_d(cutOff, cutOff, unit, MPFR_RNDN);
        rest = mpfr_get_d(cutOff, MPFR_RNDN);
        mpfr_clear(cutOff);
    }
    const auto hex = [](double value) { return static_cast<unsigned long long>(BitsOf(value)); };
    std::fprintf(output, "{%d, 0x%016llx, 0x%016llx, 0x%016llx, %.4ff},\n", function, hex(x), hex(y), hex(rounded),
                 rest);
}

void WriteUnary(std::FILE* output, int function, Unary compute, const std::vector<double>& values) {
    mpfr_t x, truth;
    mpfr_init2(x, 53);
    mpfr_init2(truth, 400);
    for (const double value : values) {
        mpfr_set_d(x, value, MPFR_RNDN);
        compute(truth, x, MPFR_RNDN);
        WriteRow(output, function, value, 0.0, truth);
    }
    mpfr_clears(x, truth, static_cast<mpfr_ptr>(nullptr));
}

struct Pair {
    double x;
    double y;
};

void WriteBinary(std::FILE* output, int function, Binary compute, const std::vector<Pair>& pairs) {
    mpfr_t x, y, truth;
    mpfr_init2(x, 53);
    mpfr_init2(y, 53);
    mpfr_init2(truth, 400);
    for (const Pair& pair : pairs) {
        mpfr_set_d(x, pair.x, MPFR_RNDN);
        mpfr_set_d(y, pair.y, MPFR_RNDN);
        compute(truth, x, y, MPFR_RNDN);
        WriteRow(output, function, pair.x, pair.y, truth);
    }
    mpfr_clears(x, y, truth, static_cast<mpfr_ptr>(nullptr));
}

std::vector<Pair> PowerArguments() {
    std::vector<Pair> pairs;
    for (const double x : specialValues) {
        for (const double y : specialValues) {
            for (const double signedX : {x, -x}) {
                for (const double signedY : {y, -y}) pairs.push_back({signedX, signedY});
            }
        }
    }
    for (int exponent = -330; exponent <= 310; ++exponent) pairs.push_back({10.0, static_cast<double>(exponent)});
    for (int i = 0; i < 2 * count; ++i) {
        const double base = WithExponent(-1074, 1023);
        const double reach = 745.0 / std::fabs(std::log(base));  // the result stays about within the range
        pairs.push_back({base, EitherSign(Between(0.0, reach))});
        pairs.push_back({base, EitherSign(Between(0.94 * reach, reach))});
        pairs.push_back({WithExponent(-10, 10), Between(-50.0, 50.0)});
        pairs.push_back({WithExponent(-3, 3), EitherSign(static_cast<double>(random() % 9) / 2)});
        pairs.push_back({-WithExponent(-20, 20), static_cast<double>(static_cast<int>(random() % 81) - 40)});
        const double nearOne = 1.0 + EitherSign(WithExponent(-52, -3));
        const double farReach = 745.0 / std::fabs(std::log(nearOne));
        pairs.push_back({nearOne, EitherSign(Between(0.0, farReach))});
        pairs.push_back({nearOne, EitherSign(WithExponent(-20, 20))});
        pairs.push_back({-nearOne, std::floor(Between(0.0, std::fmin(farReach, 1e15)))});
        pairs.push_back({WithExponent(-1074, 1023), EitherSign(WithExponent(-80, -5))});
    }
    return pairs;
}

// The exponents that have powers of their own, with any base.
std::vector<Pair> SmallPowerArguments() {
    std::vector<Pair> pairs;
    for (const double y : {-4.0, -3.0, -2.0, -1.0, 0.0, 1.0, 2.0, 3.0, 4.0, -0.5, 0.5, 1.5, 2.5}) {
        const auto add = [&](double x) {
            pairs.push_back({x, y});
            pairs.push_back({-x, y});
        };
        for (const double x : specialValues) add(x);
        for (int power = -1074; power <= 1023; power += 25) add(std::ldexp(1.0, power) * 1.1);
        for (const double limit : {0x1p-200, 0x1p200, 0x1p-256, 0x1p256, 0x1.6p341, 0x1p-358}) {
            std::vector<double> values;
            AddNeighbours(values, limit);
            for (const double x : values) add(x);
        }
        for (int i = 0; i < 4 * count; ++i) {
            add(WithExponent(-3, 3));
            add(WithExponent(-210, 210));
            add(WithExponent(-1074, 1023));
            add(static_cast<double>(random() % 100000) / 1000);
        }
    }
    return pairs;
}

std::vector<Pair> RemainderArguments() {
    std::vector<Pair> pairs;
    for (const double x : specialValues) {
        for (const double y : specialValues) {
            for (const double signedX : {x, -x}) {
                for (const double signedY : {y, -y}) pairs.push_back({signedX, signedY});
            }
        }
    }
    for (int i = 0; i < 4 * count; ++i) {
        pairs.push_back({EitherSign(WithExponent(-1074, 1023)), EitherSign(WithExponent(-1074, 1023))});
        pairs.push_back({EitherSign(WithExponent(-20, 60)), EitherSign(WithExponent(-20, 20))});
        pairs.push_back({Between(-100.0, 100.0), Between(-10.0, 10.0)});
    }
    return pairs;
}

// The arguments of one function: the ordinary ones, and those of the given groups.
std::vector<double> Arguments(std::initializer_list<void (*)(std::vector<double>&)> groups) {
    std::vector<double> values;
    AddOrdinaryValues(values);
    for (const auto group : groups) group(values);
    return values;
}

// The numbers are those of `GridFunction`.
void WriteGrid(std::FILE* output) {
    WriteUnary(output, 0, mpfr_sqrt, Arguments({AddValuesAroundOne}));
    WriteBinary(output, 1, mpfr_pow, PowerArguments());
    WriteUnary(output, 2, mpfr_exp, Arguments({AddExponentialLimits}));
    WriteUnary(output, 3, mpfr_log, Arguments({AddValuesAroundOne}));
    WriteUnary(output, 4, mpfr_log10, Arguments({AddValuesAroundOne}));
    WriteUnary(output, 5, mpfr_sin, Arguments({AddMultiplesOfHalfPi}));
    WriteUnary(output, 6, mpfr_cos, Arguments({AddMultiplesOfHalfPi}));
    WriteUnary(output, 7, mpfr_tan, Arguments({AddMultiplesOfHalfPi}));
    WriteUnary(output, 8, mpfr_asin, Arguments({AddValuesAroundOne}));
    WriteUnary(output, 9, mpfr_acos, Arguments({AddValuesAroundOne}));
    WriteUnary(output, 10, mpfr_atan, Arguments({AddValuesAroundOne}));
    WriteUnary(output, 11, mpfr_sinh, Arguments({AddExponentialLimits}));
    WriteUnary(output, 12, mpfr_cosh, Arguments({AddExponentialLimits}));
    WriteUnary(output, 13, mpfr_tanh, Arguments({AddExponentialLimits}));
    WriteUnary(
        output, 14, [](mpfr_t r, const mpfr_t x, mpfr_rnd_t) { return mpfr_floor(r, x); }, Arguments({}));
    WriteUnary(
        output, 15, [](mpfr_t r, const mpfr_t x, mpfr_rnd_t) { return mpfr_ceil(r, x); }, Arguments({}));
    WriteUnary(
        output, 16, [](mpfr_t r, const mpfr_t x, mpfr_rnd_t d) { return mpfr_abs(r, x, d); }, Arguments({}));
    WriteBinary(output, 17, mpfr_fmod, RemainderArguments());
    WriteUnary(output, 18, mpfr_exp10, Arguments({AddDecimalExponents}));
    WriteBinary(output, 19, mpfr_pow, SmallPowerArguments());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: MathGrid OUTPUT [COUNT]\n");
        return 2;
    }
    if (argc > 2) count = std::atoi(argv[2]);
    std::FILE* output = std::fopen(argv[1], "w");
    if (!output) {
        std::fprintf(stderr, "cannot write %s\n", argv[1]);
        return 1;
    }
    std::fprintf(output, "#include <iterator>\n#include \"support/MathGrid.h\"\n\nnamespace reka::test {\n\n");
    std::fprintf(output, "const GridRow gridRows[] = {\n");
    WriteGrid(output);
    std::fprintf(output, "};\n\nconst std::size_t gridRowCount = std::size(gridRows);\n\n}\n");
    return std::fclose(output) == 0 ? 0 : 1;
}
