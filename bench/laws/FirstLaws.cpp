// SPDX-License-Identifier: MIT
// The first half of the laws. A native form is what a programmer writes who knows the law: what occurs twice is
// computed once, small powers are products and roots, and what the language refuses is refused.

#include "bench/laws/Law.h"

namespace reka::bench {

namespace {

using std::exp;
using std::sqrt;

constexpr Law laws[] = {
    {"reforming", "J. Xu and G. F. Froment, AIChE Journal 35, 1989",
     u"4.225e15*exp(-240100/(R*T))/(F(cc)/1e5)^2.5"
     u"*(F(aa)/1e5*(F(bb)/1e5)-(F(cc)/1e5)^3*(F(dd)/1e5)/exp(30.114-26830/T))"
     u"/(1+8.23e-5*exp(70650/(R*T))*(F(dd)/1e5)+6.12e-9*exp(82900/(R*T))*(F(cc)/1e5)"
     u"+6.65e-4*exp(38280/(R*T))*(F(aa)/1e5)+1.77e5*exp(-88680/(R*T))*F(bb)/F(cc))^2",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double RT = R * T;
         const double* f = v.fugacity.Get();
         const double methane = f[0] / 1e5;
         const double water = f[1] / 1e5;
         const double hydrogen = f[2] / 1e5;
         const double monoxide = f[3] / 1e5;
         if (T == 0 || hydrogen <= 0) return Refuse(r, e);
         const double adsorption = 1 + 8.23e-5 * exp(70650 / RT) * monoxide + 6.12e-9 * exp(82900 / RT) * hydrogen +
                                   6.65e-4 * exp(38280 / RT) * methane + 1.77e5 * exp(-88680 / RT) * f[1] / f[2];
         if (adsorption <= 0) return Refuse(r, e);
         r = 4.225e15 * exp(-240100 / RT) / (hydrogen * hydrogen * sqrt(hydrogen)) *
             (methane * water - hydrogen * hydrogen * hydrogen * monoxide / exp(30.114 - 26830 / T)) /
             (adsorption * adsorption);
         return true;
     }},
    {"methanol", "G. H. Graaf, E. J. Stamhuis and A. A. C. M. Beenackers, Chemical Engineering Science 43, 1988",
     u"2.69e7*exp(-109900/(R*T))*(7.99e-7*exp(58100/(R*T)))"
     u"*(F(aa)/1e5*(F(bb)/1e5)^1.5-F(cc)/1e5/((F(bb)/1e5)^0.5*10^(5139/T-12.621)))"
     u"/((1+7.99e-7*exp(58100/(R*T))*(F(aa)/1e5)+1.02e-7*exp(67400/(R*T))*(F(dd)/1e5))"
     u"*((F(bb)/1e5)^0.5+4.13e-11*exp(104500/(R*T))*(F(ee)/1e5)))",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double RT = R * T;
         const double* f = v.fugacity.Get();
         const double monoxide = f[0] / 1e5;
         const double hydrogen = f[1] / 1e5;
         if (T == 0 || hydrogen <= 0) return Refuse(r, e);
         const double root = sqrt(hydrogen);
         const double adsorption = 7.99e-7 * exp(58100 / RT);
         const double divisor = (1 + adsorption * monoxide + 1.02e-7 * exp(67400 / RT) * (f[3] / 1e5)) *
                                (root + 4.13e-11 * exp(104500 / RT) * (f[4] / 1e5));
         if (divisor == 0) return Refuse(r, e);
         r = 2.69e7 * exp(-109900 / RT) * adsorption *
             (monoxide * (hydrogen * root) - f[2] / 1e5 / (root * std::pow(10.0, 5139 / T - 12.621))) / divisor;
         return true;
     }},
    {"ammonia", "M. Temkin and V. Pyzhev, Acta Physicochimica URSS 12, 1940",
     u"1.79e4*exp(-87090/(R*T))*F(aa)*(F(bb)^3/F(cc)^2)^0.5-2.57e16*exp(-198464/(R*T))*(F(cc)^2/F(bb)^3)^0.5",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* f = v.fugacity.Get();
         if (RT == 0 || f[1] <= 0 || f[2] <= 0) return Refuse(r, e);
         const double hydrogen = f[1] * f[1] * f[1];
         const double ammonia = f[2] * f[2];
         r = 1.79e4 * exp(-87090 / RT) * f[0] * sqrt(hydrogen / ammonia) -
             2.57e16 * exp(-198464 / RT) * sqrt(ammonia / hydrogen);
         return true;
     }},
    {"sulfur-dioxide", "R.-B. Eklund, The Rate of Oxidation of Sulfur Dioxide, Stockholm 1956",
     u"exp(12.16-5473/T)*sqrt(F(aa)/F(cc))*(F(bb)/101325-(F(cc)/(F(aa)*exp(11300/T-10.68)))^2)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* f = v.fugacity.Get();
         if (T == 0 || f[0] <= 0 || f[2] <= 0) return Refuse(r, e);
         const double conversion = f[2] / (f[0] * exp(11300 / T - 10.68));
         r = exp(12.16 - 5473 / T) * sqrt(f[0] / f[2]) * (f[1] / 101325 - conversion * conversion);
         return true;
     }},
    {"exhaust",
     "S. E. Voltz, C. R. Morgan, D. Liederman and S. M. Jacob, I&EC Product Research and Development 12, 1973",
     u"6.699e9*exp(-12556/T)*X(aa)*X(bb)/(T*(1+65.5*exp(961/T)*X(aa)+2080*exp(361/T)*X(cc))^2"
     u"*(1+3.98*exp(11611/T)*X(aa)^2*X(cc)^2)*(1+4.79e5*exp(-3733/T)*X(dd)^0.7))",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* x = v.moleFraction.Get();
         if (T == 0 || x[3] < 0) return Refuse(r, e);
         const double sum = 1 + 65.5 * exp(961 / T) * x[0] + 2080 * exp(361 / T) * x[2];
         const double divisor = T * (sum * sum) * (1 + 3.98 * exp(11611 / T) * (x[0] * x[0]) * (x[2] * x[2])) *
                                (1 + 4.79e5 * exp(-3733 / T) * std::pow(x[3], 0.7));
         if (divisor == 0) return Refuse(r, e);
         r = 6.699e9 * exp(-12556 / T) * x[0] * x[1] / divisor;
         return true;
     }},
    {"falloff", "S. P. Sander et al., JPL Publication 06-2, 2006",
     u"1.8e-30*(T/300)^(-3)*(7.243e16*P/T)/(1+1.8e-30*(T/300)^(-3)*(7.243e16*P/T)/2.8e-11)"
     u"*0.6^(1/(1+LOG10(1.8e-30*(T/300)^(-3)*(7.243e16*P/T)/2.8e-11)"
     u"*LOG10(1.8e-30*(T/300)^(-3)*(7.243e16*P/T)/2.8e-11)))*C(aa)*C(bb)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T == 0 || T < 0) return Refuse(r, e);
         const double reduced = T / 300;
         const double low = 1.8e-30 / (reduced * reduced * reduced) * (7.243e16 * v.pressure / T);
         const double ratio = low / 2.8e-11;
         const double logarithm = std::log10(ratio);
         r = low / (1 + ratio) * std::pow(0.6, 1 / (1 + logarithm * logarithm)) * c[0] * c[1];
         return true;
     }},
    {"oxygen-atom", "D. L. Baulch et al., Journal of Physical and Chemical Reference Data 21, 1992",
     u"0.0506*T^2.67*exp(-26317/(R*T))*C(aa)*C(bb)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T <= 0) return Refuse(r, e);
         r = 0.0506 * std::pow(T, 2.67) * exp(-26317 / (R * T)) * c[0] * c[1];
         return true;
     }},
    {"shomate-heat", "C. H. Shomate, Journal of Physical Chemistry 58, 1954",
     u"1000*(30.092*(T/1000)+6.832514*(T/1000)^2/2+6.793435*(T/1000)^3/3-2.53448*(T/1000)^4/4"
     u"-0.082139/(T/1000)-250.881)",
     [](double& r, Values v, Text& e) {
         const double t = v.temperature / 1000;
         if (t == 0) return Refuse(r, e);
         const double square = t * t;
         r = 1000 * (30.092 * t + 6.832514 * square / 2 + 6.793435 * (square * t) / 3 -
                     2.53448 * (square * square) / 4 - 0.082139 / t - 250.881);
         return true;
     }},
    {"seven-coefficients", "S. Gordon and B. J. McBride, NASA Reference Publication 1311, 1994",
     u"R*T*(3.3385+2.0316e-3*T/2-7.2e-7*T^2/3+1.2e-10*T^3/4-7.4e-15*T^4/5-30209/T)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T == 0) return Refuse(r, e);
         const double square = T * T;
         r = R * T *
             (3.3385 + 2.0316e-3 * T / 2 - 7.2e-7 * square / 3 + 1.2e-10 * (square * T) / 4 -
              7.4e-15 * (square * square) / 5 - 30209 / T);
         return true;
     }},
    {"carbonic-acid", "T. J. Edwards, G. Maurer, J. Newman and J. M. Prausnitz, AIChE Journal 24, 1978",
     u"exp(-12092.1/T-36.7816*LOG(T)+235.482)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T <= 0) return Refuse(r, e);
         r = exp(-12092.1 / T - 36.7816 * std::log(T) + 235.482);
         return true;
     }},
    {"michaelis-menten", "L. Michaelis and M. L. Menten, Biochemische Zeitschrift 49, 1913", u"0.35*C(aa)/(16.7+C(aa))",
     [](double& r, Values v, Text& e) {
         const double s = v.molarity[0];
         if (16.7 + s == 0) return Refuse(r, e);
         r = 0.35 * s / (16.7 + s);
         return true;
     }},
    {"substrate-inhibition", "J. F. Andrews, Biotechnology and Bioengineering 10, 1968",
     u"0.42*C(aa)/(3.1+C(aa)+C(aa)^2/95)*C(bb)",
     [](double& r, Values v, Text& e) {
         const double s = v.molarity[0];
         const double divisor = 3.1 + s + s * s / 95;
         if (divisor == 0 || s < 0) return Refuse(r, e);
         r = 0.42 * s / divisor * v.molarity[1];
         return true;
     }},
    {"mass-action", "C. M. Guldberg and P. Waage, Journal fuer praktische Chemie 19, 1879",
     u"2.3e-3*C(aa)*C(bb)-4.1e-4*C(cc)*C(dd)",
     [](double& r, Values v, Text&) {
         const double* c = v.molarity.Get();
         r = 2.3e-3 * c[0] * c[1] - 4.1e-4 * c[2] * c[3];
         return true;
     }},
    {"first-order", "L. Wilhelmy, Annalen der Physik 157, 1850", u"0.052*C(aa)",
     [](double& r, Values v, Text&) {
         r = 0.052 * v.molarity[0];
         return true;
     }},
    {"gel-effect", "A. W. Hui and A. E. Hamielec, Journal of Applied Polymer Science 16, 1972",
     u"sqrt(2.19e-1*exp(-13810/T)*C(aa)^3/(1.255e6*exp(-844/T)))*1.009e4*exp(-3557/T)*C(aa)"
     u"*exp((2.57-5.05e-3*T)*X(bb)+(9.56-1.76e-2*T)*X(bb)^2+(7.85e-3*T-3.03)*X(bb)^3)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double monomer = v.molarity[0];
         const double x = v.moleFraction[1];
         if (T == 0 || monomer < 0 || x < 0) return Refuse(r, e);
         r = sqrt(2.19e-1 * exp(-13810 / T) * (monomer * monomer * monomer) / (1.255e6 * exp(-844 / T))) * 1.009e4 *
             exp(-3557 / T) * monomer *
             exp((2.57 - 5.05e-3 * T) * x + (9.56 - 1.76e-2 * T) * (x * x) + (7.85e-3 * T - 3.03) * (x * x * x));
         return true;
     }},
    {"radical-chain", "P. J. Flory, Principles of Polymer Chemistry, 1953",
     u"4.92e2*exp(-18220/(R*T))*C(aa)*(2*0.58*(1.58e15*exp(-128900/(R*T)))*C(bb)/(9.8e4*exp(-2930/(R*T))))^0.5",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* c = v.molarity.Get();
         if (RT == 0 || c[1] < 0) return Refuse(r, e);
         r = 4.92e2 * exp(-18220 / RT) * c[0] *
             sqrt(2 * 0.58 * (1.58e15 * exp(-128900 / RT)) * c[1] / (9.8e4 * exp(-2930 / RT)));
         return true;
     }},
    {"salt-effect", "C. W. Davies, Ion Association, 1962",
     u"7.1e-5*10^(2*0.509*2*(sqrt(C(cc)/1000)/(1+sqrt(C(cc)/1000))-0.3*(C(cc)/1000)))*C(aa)*C(bb)",
     [](double& r, Values v, Text& e) {
         const double* c = v.molarity.Get();
         const double strength = c[2] / 1000;
         if (strength < 0) return Refuse(r, e);
         const double root = sqrt(strength);
         r = 7.1e-5 * std::pow(10.0, 2 * 0.509 * 2 * (root / (1 + root) - 0.3 * strength)) * c[0] * c[1];
         return true;
     }},
    {"water-ionization", "G. Olofsson and L. G. Hepler, Journal of Solution Chemistry 4, 1975",
     u"10^(8909.483-142613.6/T-4229.195*LOG10(T)+9.7384*T-0.0129638*T^2+1.15068e-5*T^3-4.602e-9*T^4)",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T <= 0) return Refuse(r, e);
         const double square = T * T;
         r = std::pow(10.0, 8909.483 - 142613.6 / T - 4229.195 * std::log10(T) + 9.7384 * T - 0.0129638 * square +
                                1.15068e-5 * (square * T) - 4.602e-9 * (square * square));
         return true;
     }},
    {"styrene", "J. G. P. Sheel and C. M. Crowe, Canadian Journal of Chemical Engineering 47, 1969",
     u"exp(-0.08539-10925/T)*(F(aa)/1e5-F(bb)/1e5*(F(cc)/1e5)/exp(-(122725-126.3*T-0.002194*T^2)/(R*T)))",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* f = v.fugacity.Get();
         if (T <= 0) return Refuse(r, e);
         const double constant = exp(-(122725 - 126.3 * T - 0.002194 * (T * T)) / (R * T));
         if (constant == 0) return Refuse(r, e);
         r = exp(-0.08539 - 10925 / T) * (f[0] / 1e5 - f[1] / 1e5 * (f[2] / 1e5) / constant);
         return true;
     }},
    {"dual-site", "O. A. Hougen and K. M. Watson, Industrial and Engineering Chemistry 35, 1943",
     u"0.21*(0.044*exp(2100/T)*A(aa))*(0.0032*exp(2900/T)*A(bb))"
     u"/(1+0.044*exp(2100/T)*A(aa)+0.0032*exp(2900/T)*A(bb)+0.11*exp(1500/T)*A(cc))^2",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         if (T == 0) return Refuse(r, e);
         const double* a = v.activity.Get();
         const double first = 0.044 * exp(2100 / T) * a[0];
         const double second = 0.0032 * exp(2900 / T) * a[1];
         const double sum = 1 + first + second + 0.11 * exp(1500 / T) * a[2];
         if (sum <= 0) return Refuse(r, e);
         r = 0.21 * first * second / (sum * sum);
         return true;
     }},
    {"dimethyl-ether", "G. Bercic and J. Levec, Industrial and Engineering Chemistry Research 31, 1992",
     u"5.35e10*exp(-143666/(R*T))*(5.39e-4*exp(8686/T))^2*(C(aa)^2-C(bb)*C(cc)/exp(4019/T+3.707*LOG(T)-26.64))"
     u"/(1+2*sqrt(5.39e-4*exp(8686/T)*C(aa))+8.47e-2*exp(5070/T)*C(bb))^4",
     [](double& r, Values v, Text& e) {
         const double T = v.temperature;
         const double* c = v.molarity.Get();
         if (T <= 0 || c[0] < 0) return Refuse(r, e);
         const double adsorption = 5.39e-4 * exp(8686 / T);
         const double sum = 1 + 2 * sqrt(adsorption * c[0]) + 8.47e-2 * exp(5070 / T) * c[1];
         if (sum <= 0) return Refuse(r, e);
         const double square = sum * sum;
         r = 5.35e10 * exp(-143666 / (R * T)) * (adsorption * adsorption) *
             (c[0] * c[0] - c[1] * c[2] / exp(4019 / T + 3.707 * std::log(T) - 26.64)) / (square * square);
         return true;
     }},
    {"hydrogen-bromide", "M. Bodenstein and S. C. Lind, Zeitschrift fuer physikalische Chemie 57, 1907",
     u"1.2e9*exp(-175000/(R*T))*C(aa)*C(bb)^1.5/(C(bb)+0.1*C(cc))",
     [](double& r, Values v, Text& e) {
         const double RT = R * v.temperature;
         const double* c = v.molarity.Get();
         const double divisor = c[1] + 0.1 * c[2];
         if (RT == 0 || divisor == 0 || c[1] < 0) return Refuse(r, e);
         r = 1.2e9 * exp(-175000 / RT) * c[0] * (c[1] * sqrt(c[1])) / divisor;
         return true;
     }},
};

}  // namespace

std::span<const Law> FirstLaws() {
    return laws;
}

}  // namespace reka::bench
