// SPDX-License-Identifier: MIT
// The documents of the examples against their publications: each formula is worked out here once more in plain C++, in
// the publication's own units, and turned into SI at the end.

#include <gtest/gtest.h>

#include <cmath>

#include "DocumentFixture.h"

namespace rekasim {

namespace {

constexpr double gasConstant = 8.314;  // J/(mol K), the constant of the expression language
constexpr double atmosphere = 101325;  // Pa
constexpr double bar = 1e5;            // Pa

constexpr char16_t rate[] = u"ReactionRate";
constexpr char16_t constant[] = u"ChemicalEquilibriumConstant";
constexpr char16_t heat[] = u"EnthalpyOfReaction";

void ExpectClose(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
}

/// Heat of reaction (J/mol) by the slope of ln K over T, from two constants close by.
template <class Constant>
double HeatBySlope(Constant equilibriumConstant, double temperature) {
    constexpr double distance = 0.01;  // K
    const double slope = (std::log(equilibriumConstant(temperature + distance)) -
                          std::log(equilibriumConstant(temperature - distance))) /
                         (2 * distance);
    return gasConstant * temperature * temperature * slope;
}

/// 1/atm
double AmmoniaConstant(double t) {
    return std::pow(10, -2.691122 * std::log10(t) - 5.519265e-5 * t + 1.848863e-7 * t * t + 2001.6 / t + 2.6899);
}

TEST(AmmoniaSynthesis, HasTheConstantOfGillespieAndBeattie) {
    for (const double t : {600.0, 673.15, 723.15, 773.15}) {
        ExpectClose(CalculateExample("ammonia-synthesis.json", constant, u"synthesis", t),
                    AmmoniaConstant(t) / atmosphere);
    }
}

TEST(AmmoniaSynthesis, HasTheHeatThatBelongsToItsConstant) {
    const double calculated = CalculateExample("ammonia-synthesis.json", heat, u"synthesis");
    EXPECT_NEAR(calculated, HeatBySlope(AmmoniaConstant, 723.15), 0.5);
}

double ShiftConstant(double t) {
    return std::exp(4577.8 / t - 4.33);
}

TEST(WaterGasShift, HasTheConstantOfMoe) {
    for (const double t : {500.0, 600.0, 700.0}) {
        ExpectClose(CalculateExample("water-gas-shift.json", constant, u"shift", t), ShiftConstant(t));
    }
}

TEST(WaterGasShift, HasTheHeatThatBelongsToItsConstant) {
    EXPECT_NEAR(CalculateExample("water-gas-shift.json", heat, u"shift"), HeatBySlope(ShiftConstant, 700), 0.5);
}

/// atm^-0.5
double SulfurConstant(double t) {
    return std::pow(10, 4956 / t - 4.678);
}

TEST(SulfurDioxideOxidation, HasTheConstantOfEklund) {
    for (const double t : {673.15, 723.15, 873.15}) {
        ExpectClose(CalculateExample("sulfur-dioxide-oxidation.json", constant, u"oxidation", t),
                    SulfurConstant(t) / std::sqrt(atmosphere));
    }
}

TEST(SulfurDioxideOxidation, HasTheHeatThatBelongsToItsConstant) {
    EXPECT_NEAR(CalculateExample("sulfur-dioxide-oxidation.json", heat, u"oxidation"),
                HeatBySlope(SulfurConstant, 723.15), 0.5);
}

TEST(NitrogenTetroxide, RunsThroughTheTwoValuesOfVerhoekAndDaniels) {
    const char name[] = "nitrogen-tetroxide-dissociation.json";
    ExpectClose(CalculateExample(name, constant, u"dissociation", 298.15), 0.1426 * atmosphere);
    ExpectClose(CalculateExample(name, constant, u"dissociation", 318.15), 0.6706 * atmosphere);
}

TEST(NitrogenTetroxide, HasTheHeatThatBelongsToItsConstant) {
    const double inverseDistance = 1 / 298.15 - 1 / 318.15;
    ExpectClose(CalculateExample("nitrogen-tetroxide-dissociation.json", heat, u"dissociation"),
                gasConstant * std::log(0.6706 / 0.1426) / inverseDistance);
}

TEST(DinitrogenPentoxide, DecomposesByFirstOrder) {
    const double molarity = 0.5 * 50000 / (8.314462618 * 298.15);  // mol/m3
    ExpectClose(CalculateExample("dinitrogen-pentoxide-decomposition.json", rate, u"decomposition", 298.15),
                3.46e-5 * molarity);
}

TEST(TolueneHydrodealkylation, HasTheRatesOfZimmermanAndYork) {
    constexpr double t = 922;
    constexpr double psi = 6894.757293;                     // Pa
    constexpr double poundMole = 453.59237;                 // mol
    constexpr double cubicFoot = 0.3048 * 0.3048 * 0.3048;  // m3
    constexpr double toSi = poundMole / (60 * cubicFoot);   // from lbmol/(min ft3)
    const double total = 3400000 / psi;
    const double toluene = 0.05 * total;
    const double hydrogen = 0.4 * total;
    const double benzene = 0.049 * total;
    const double diphenyl = 0.001 * total;
    const double slowness = std::exp(-25616 / t);
    ExpectClose(CalculateExample("toluene-hydrodealkylation.json", rate, u"dealkylation"),
                toSi * 3.6858e6 * slowness * toluene * std::sqrt(hydrogen));
    ExpectClose(CalculateExample("toluene-hydrodealkylation.json", rate, u"diphenyl"),
                toSi * slowness * (5.987e4 * benzene * benzene - 2.553e5 * diphenyl * hydrogen));
}

TEST(TolueneHydrodealkylation, HasTheHeatsOfDouglas) {
    constexpr double britishThermalUnit = 1055.05585262;  // J
    ExpectClose(CalculateExample("toluene-hydrodealkylation.json", heat, u"dealkylation"),
                -21500 * britishThermalUnit / 453.59237);
    EXPECT_EQ(CalculateExample("toluene-hydrodealkylation.json", heat, u"diphenyl"), 0);
}

/// Activities of the liquid in both documents of the esterification.
struct EsterActivities {
    double aceticAcid = 0.4 * 0.9;
    double methanol = 0.4 * 1.0;
    double methylAcetate = 0.1 * 1.5;
    double water = 0.1 * 1.6;
};

/// mol/(g s)
double PseudohomogeneousRate(double t) {
    const EsterActivities a;
    return 2.961e4 * std::exp(-49190 / (gasConstant * t)) * a.aceticAcid * a.methanol -
           1.348e6 * std::exp(-69230 / (gasConstant * t)) * a.methylAcetate * a.water;
}

TEST(MethylAcetate, HasThePseudohomogeneousRateOfPopken) {
    for (const double t : {303.15, 323.15, 343.15}) {
        ExpectClose(CalculateExample("methyl-acetate-esterification.json", rate, u"esterification", t),
                    1000 * PseudohomogeneousRate(t));
    }
}

TEST(MethylAcetate, HasTheAdsorptionRateOfPopken) {
    constexpr double t = 323.15;
    const EsterActivities a;
    const double aceticAcid = 3.15 * a.aceticAcid / 60.052;
    const double methanol = 5.64 * a.methanol / 32.042;
    const double methylAcetate = 4.15 * a.methylAcetate / 74.079;
    const double water = 5.24 * a.water / 18.015;
    const double forward = 8.497e6 * std::exp(-60470 / (gasConstant * t)) * aceticAcid * methanol;
    const double backward = 6.127e5 * std::exp(-63730 / (gasConstant * t)) * methylAcetate * water;
    const double covered = aceticAcid + methanol + methylAcetate + water;
    ExpectClose(CalculateExample("methyl-acetate-adsorption.json", rate, u"esterification"),
                1000 * (forward - backward) / (covered * covered));
}

/// Pressures in bar of the synthesis gas in the document.
struct SynthesisGas {
    double total = 5000000 / bar;
    double hydrogen = 0.81 * total;
    double carbonMonoxide = 0.04 * total;
    double carbonDioxide = 0.03 * total;
    double methanol = 0.015 * total;
    double water = 0.005 * total;
};

double Arrhenius(double factor, double exponent, double t) {
    return factor * std::exp(exponent / (gasConstant * t));
}

/// The free sites' part of the denominators.
double SiteSum(const SynthesisGas& p, double t) {
    return 1 + 3453.38 * p.water / p.hydrogen + Arrhenius(0.499, 17197, t) * std::sqrt(p.hydrogen) +
           Arrhenius(6.62e-11, 124119, t) * p.water;
}

TEST(MethanolSynthesis, HasTheRatesOfVandenBusscheAndFroment) {
    const SynthesisGas p;
    for (const double t : {473.15, 493.15, 533.15}) {
        const double k1 = std::pow(10, 3066 / t - 10.592);  // bar^-2
        const double k3 = std::pow(10, 2073 / t - 2.029);
        const double toMethanol = 1 - p.water * p.methanol / (k1 * std::pow(p.hydrogen, 3) * p.carbonDioxide);
        const double toShift = 1 - k3 * p.water * p.carbonMonoxide / (p.carbonDioxide * p.hydrogen);
        const double sites = SiteSum(p, t);
        ExpectClose(CalculateExample("methanol-synthesis.json", rate, u"methanol", t),
                    Arrhenius(1.07, 36696, t) * p.carbonDioxide * p.hydrogen * toMethanol / std::pow(sites, 3));
        ExpectClose(CalculateExample("methanol-synthesis.json", rate, u"reverse shift", t),
                    Arrhenius(1.22e10, -94765, t) * p.carbonDioxide * toShift / sites);
    }
}

TEST(MethanolSynthesis, HasTheHeatsThatBelongToItsConstants) {
    EXPECT_NEAR(CalculateExample("methanol-synthesis.json", heat, u"methanol"),
                HeatBySlope([](double t) { return std::pow(10, 3066 / t - 10.592); }, 493.15), 0.5);
    EXPECT_NEAR(CalculateExample("methanol-synthesis.json", heat, u"reverse shift"),
                HeatBySlope([](double t) { return std::pow(10, 2.029 - 2073 / t); }, 493.15), 0.5);
}

}  // namespace

}  // namespace rekasim
