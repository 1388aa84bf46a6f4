// SPDX-License-Identifier: MIT
// The second half of the laws. No step and no rule of the programs was chosen for them.

#include "bench/laws/Law.h"

namespace reka::bench {

namespace {

using std::exp;
using std::pow;
using std::sqrt;

constexpr Law laws[] = {
    {"ammonia-activities", "D. C. Dyson and J. M. Simon, I&EC Fundamentals 7, 1968",
     u"1.7698e15*exp(-170560/(R*T))*(6.1e-3^2*A(aa)*(A(bb)^3/A(cc)^2)^0.75-(A(cc)^2/A(bb)^3)^0.25)",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* a = v.activity.Get();
         if (RT == 0 || a[1] <= 0 || a[2] <= 0) return Refuse(r, e);
         const double hydrogen = a[1] * a[1] * a[1];
         const double ammonia = a[2] * a[2];
         r = 1.7698e15 * exp(-170560 / RT) *
             (6.1e-3 * 6.1e-3 * a[0] * pow(hydrogen / ammonia, 0.75) - pow(ammonia / hydrogen, 0.25));
         return true;
     }},
    {"shift", "J. Xu and G. F. Froment, AIChE Journal 35, 1989",
     u"1.955e6*exp(-67130/(R*T))/(F(cc)/1e5)*(F(dd)/1e5*(F(bb)/1e5)-F(cc)/1e5*(F(ee)/1e5)/exp(4400/T-4.036))"
     u"/(1+8.23e-5*exp(70650/(R*T))*(F(dd)/1e5)+6.12e-9*exp(82900/(R*T))*(F(cc)/1e5)"
     u"+6.65e-4*exp(38280/(R*T))*(F(aa)/1e5)+1.77e5*exp(-88680/(R*T))*F(bb)/F(cc))^2",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double RT = R * T;
         const double* f = v.fugacity.Get();
         const double water = f[1] / 1e5;
         const double hydrogen = f[2] / 1e5;
         const double monoxide = f[3] / 1e5;
         if (T == 0 || hydrogen == 0) return Refuse(r, e);
         const double adsorption = 1 + 8.23e-5 * exp(70650 / RT) * monoxide + 6.12e-9 * exp(82900 / RT) * hydrogen +
                                   6.65e-4 * exp(38280 / RT) * (f[0] / 1e5) + 1.77e5 * exp(-88680 / RT) * f[1] / f[2];
         if (adsorption <= 0) return Refuse(r, e);
         r = 1.955e6 * exp(-67130 / RT) / hydrogen *
             (monoxide * water - hydrogen * (f[4] / 1e5) / exp(4400 / T - 4.036)) / (adsorption * adsorption);
         return true;
     }},
    {"unimolecular", "F. A. Lindemann, Transactions of the Faraday Society 17, 1922",
     u"3.1e9*exp(-88000/(R*T))*(P/(R*T))/(1+3.1e9*exp(-88000/(R*T))*(P/(R*T))/(2.5e15*exp(-103000/(R*T))))*C(aa)",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         if (RT == 0) return Refuse(r, e);
         const double low = 3.1e9 * exp(-88000 / RT) * (v.pressure / RT);
         const double divisor = 1 + low / (2.5e15 * exp(-103000 / RT));
         if (divisor == 0) return Refuse(r, e);
         r = low / divisor * v.molarity[0];
         return true;
     }},
    {"ether-constant", "A. Rehfinger and U. Hoffmann, Chemical Engineering Science 45, 1990",
     u"284*exp(-1492.77*(1/T-1/298.15)-77.4002*LOG(T/298.15)+0.507563*(T-298.15)-9.12739e-4*(T^2-298.15^2)"
     u"+1.10649e-6*(T^3-298.15^3)-6.27996e-10*(T^4-298.15^4))",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T <= 0) return Refuse(r, e);
         constexpr double T0 = 298.15;
         const double square = T * T;
         r = 284 * exp(-1492.77 * (1 / T - 1 / T0) - 77.4002 * std::log(T / T0) + 0.507563 * (T - T0) -
                       9.12739e-4 * (square - T0 * T0) + 1.10649e-6 * (square * T - T0 * T0 * T0) -
                       6.27996e-10 * (square * square - T0 * T0 * (T0 * T0)));
         return true;
     }},
    {"fischer-tropsch", "I. C. Yates and C. N. Satterfield, Energy and Fuels 5, 1991",
     u"0.0758*(F(aa)/1e5)*(F(bb)/1e5)/(1+11.61*(F(aa)/1e5))^2",
     [](double& r, Values v, Text& e) {
         const double* f = v.fugacity.Get();
         const double monoxide = f[0] / 1e5;
         const double sum = 1 + 11.61 * monoxide;
         if (sum <= 0) return Refuse(r, e);
         r = 0.0758 * monoxide * (f[1] / 1e5) / (sum * sum);
         return true;
     }},
    {"thiophene", "C. N. Satterfield and G. W. Roberts, AIChE Journal 14, 1968",
     u"0.31*exp(-3870/T)*F(aa)*F(bb)/(1+1.9e-6*exp(1100/T)*F(aa)+6.8e-5*exp(1400/T)*F(cc))^2",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* f = v.fugacity.Get();
         if (T == 0) return Refuse(r, e);
         const double sum = 1 + 1.9e-6 * exp(1100 / T) * f[0] + 6.8e-5 * exp(1400 / T) * f[2];
         if (sum <= 0) return Refuse(r, e);
         r = 0.31 * exp(-3870 / T) * f[0] * f[1] / (sum * sum);
         return true;
     }},
    {"allostery", "J. Monod, J. Wyman and J.-P. Changeux, Journal of Molecular Biology 12, 1965",
     u"(C(aa)/26*(1+C(aa)/26)^3+300*0.04*(C(aa)/26)*(1+0.04*(C(aa)/26))^3)"
     u"/((1+C(aa)/26)^4+300*(1+0.04*(C(aa)/26))^4)",
     [](double& r, Values v, Text& e) {
         const double a = v.molarity[0] / 26;
         const double relaxed = 1 + a;
         const double tense = 1 + 0.04 * a;
         if (relaxed < 0 || tense < 0) return Refuse(r, e);
         const double relaxedCube = relaxed * relaxed * relaxed;
         const double tenseCube = tense * tense * tense;
         const double divisor = relaxedCube * relaxed + 300 * (tenseCube * tense);
         if (divisor == 0) return Refuse(r, e);
         r = (a * relaxedCube + 300 * 0.04 * a * tenseCube) / divisor;
         return true;
     }},
    {"cooperation", "A. V. Hill, Journal of Physiology 40, 1910", u"1.4*C(aa)^2.8/(26^2.8+C(aa)^2.8)",
     [](double& r, Values v, Text& e) {
         static const double half = pow(26, 2.8);
         if (v.molarity[0] < 0) return Refuse(r, e);
         const double power = pow(v.molarity[0], 2.8);
         r = 1.4 * power / (half + power);
         return true;
     }},
    {"nitric-oxide", "Y. B. Zeldovich, Acta Physicochimica URSS 21, 1946", u"6e16/T^0.5*exp(-69090/T)*C(aa)^0.5*C(bb)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T <= 0 || c[0] < 0) return Refuse(r, e);
         r = 6e16 / sqrt(T) * exp(-69090 / T) * sqrt(c[0]) * c[1];
         return true;
     }},
    {"propane-flame", "C. K. Westbrook and F. L. Dryer, Combustion Science and Technology 27, 1981",
     u"8.6e11*exp(-125520/(R*T))*C(aa)^0.1*C(bb)^1.65",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* c = v.molarity.Get();
         if (RT == 0 || c[0] < 0 || c[1] < 0) return Refuse(r, e);
         r = 8.6e11 * exp(-125520 / RT) * pow(c[0], 0.1) * pow(c[1], 1.65);
         return true;
     }},
    {"methane-flame", "W. P. Jones and R. P. Lindstedt, Combustion and Flame 73, 1988",
     u"4.4e11*exp(-125520/(R*T))*C(aa)^0.5*C(bb)^1.25",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* c = v.molarity.Get();
         if (RT == 0 || c[0] < 0 || c[1] < 0) return Refuse(r, e);
         r = 4.4e11 * exp(-125520 / RT) * sqrt(c[0]) * pow(c[1], 1.25);
         return true;
     }},
    {"entropy", "S. Gordon and B. J. McBride, NASA SP-273, 1971",
     u"R*(3.3385*LOG(T)+2.0316e-3*T-7.2e-7*T^2/2+1.2e-10*T^3/3-7.4e-15*T^4/4+4.1)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T < 0) return Refuse(r, e);
         const double square = T * T;
         r = R * (3.3385 * std::log(T) + 2.0316e-3 * T - 7.2e-7 * square / 2 + 1.2e-10 * (square * T) / 3 -
                  7.4e-15 * (square * square) / 4 + 4.1);
         return true;
     }},
    {"reduction-oxidation", "P. Mars and D. W. van Krevelen, Chemical Engineering Science 3, 1954",
     u"3.1*exp(-9050/T)*F(aa)*(0.28*exp(-7030/T)*F(bb)^0.5)/(3.1*exp(-9050/T)*F(aa)+0.28*exp(-7030/T)*F(bb)^0.5)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* f = v.fugacity.Get();
         if (T == 0 || f[1] < 0) return Refuse(r, e);
         const double reduction = 3.1 * exp(-9050 / T) * f[0];
         const double oxidation = 0.28 * exp(-7030 / T) * sqrt(f[1]);
         if (reduction + oxidation == 0) return Refuse(r, e);
         r = reduction * oxidation / (reduction + oxidation);
         return true;
     }},
    {"ping-pong", "W. W. Cleland, Biochimica et Biophysica Acta 67, 1963",
     u"1.8*C(aa)*C(bb)/(3.4*C(aa)+7.9*C(bb)+C(aa)*C(bb))",
     [](double& r, Values v, Text& e) {
         const double* c = v.molarity.Get();
         const double divisor = 3.4 * c[0] + 7.9 * c[1] + c[0] * c[1];
         if (divisor == 0) return Refuse(r, e);
         r = 1.8 * c[0] * c[1] / divisor;
         return true;
     }},
    {"reversible-enzyme", "J. B. S. Haldane, Enzymes, 1930", u"2.2*(C(aa)-C(bb)/4.3)/(12+C(aa)+12*C(bb)/31)",
     [](double& r, Values v, Text& e) {
         const double* c = v.molarity.Get();
         const double divisor = 12 + c[0] + 12 * c[1] / 31;
         if (divisor == 0) return Refuse(r, e);
         r = 2.2 * (c[0] - c[1] / 4.3) / divisor;
         return true;
     }},
    {"nitrogen-dioxide", "M. Bodenstein, Zeitschrift fuer Elektrochemie 24, 1918", u"1.2e-9*exp(530/T)*C(aa)^2*C(bb)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T == 0 || c[0] < 0) return Refuse(r, e);
         r = 1.2e-9 * exp(530 / T) * (c[0] * c[0]) * c[1];
         return true;
     }},
    {"zwitterion", "P. V. Danckwerts, Chemical Engineering Science 34, 1979",
     u"C(aa)*C(bb)/(1/(1.1e8*exp(-4810/T))+1/(3.2e5*exp(-1200/T)*C(cc)))",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T == 0 || c[2] == 0) return Refuse(r, e);
         const double divisor = 1 / (1.1e8 * exp(-4810 / T)) + 1 / (3.2e5 * exp(-1200 / T) * c[2]);
         if (divisor == 0) return Refuse(r, e);
         r = c[0] * c[1] / divisor;
         return true;
     }},
    {"electrode", "T. Erdey-Gruz and M. Volmer, Zeitschrift fuer physikalische Chemie A 150, 1930",
     u"0.012*(C(aa)/1000*exp(0.5*96485*0.031/(R*T))-C(bb)/1000*exp(-(1-0.5)*96485*0.031/(R*T)))",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* c = v.molarity.Get();
         if (RT == 0) return Refuse(r, e);
         r = 0.012 * (c[0] / 1000 * exp(0.5 * 96485 * 0.031 / RT) - c[1] / 1000 * exp(-(1 - 0.5) * 96485 * 0.031 / RT));
         return true;
     }},
    {"heat-capacity", "F. A. Aly and L. L. Lee, Fluid Phase Equilibria 6, 1981",
     u"33.36+26.79*(2610.5/T/sinh(2610.5/T))^2+8.9*(1169/T/cosh(1169/T))^2",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T <= 0) return Refuse(r, e);
         const double high = 2610.5 / T / std::sinh(2610.5 / T);
         const double low = 1169 / T / std::cosh(1169 / T);
         r = 33.36 + 26.79 * (high * high) + 8.9 * (low * low);
         return true;
     }},
    {"first-dissociation", "H. S. Harned and R. Davis, Journal of the American Chemical Society 65, 1943",
     u"10^(14.8435-3404.71/T-0.032786*T)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T == 0) return Refuse(r, e);
         r = pow(10.0, 14.8435 - 3404.71 / T - 0.032786 * T);
         return true;
     }},
    {"product-inhibition", "O. Levenspiel, Biotechnology and Bioengineering 22, 1980",
     u"0.24*(1-C(bb)/87)^0.5*C(aa)/(0.22+C(aa))*C(cc)",
     [](double& r, Values v, Text& e) {
         const double* c = v.molarity.Get();
         const double room = 1 - c[1] / 87;
         if (room < 0 || 0.22 + c[0] == 0) return Refuse(r, e);
         r = 0.24 * sqrt(room) * c[0] / (0.22 + c[0]) * c[2];
         return true;
     }},
    {"phthalic-anhydride", "G. F. Froment, Industrial and Engineering Chemistry 59, 1967",
     u"(exp(19.837-13588/T)+exp(18.97-14394/T))*(F(aa)/101325)*(F(bb)/101325)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* f = v.fugacity.Get();
         if (T == 0) return Refuse(r, e);
         r = (exp(19.837 - 13588 / T) + exp(18.97 - 14394 / T)) * (f[0] / 101325) * (f[1] / 101325);
         return true;
     }},
};

}  // namespace

std::span<const Law> SecondLaws() {
    return laws;
}

}  // namespace reka::bench
