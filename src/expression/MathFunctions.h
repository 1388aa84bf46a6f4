// The library functions of the expression language. Each is within one unit in the last place of the true value, on
// every build, for every argument.

#pragma once

#include "expression/DoubleDouble.h"

namespace reka::math {

double Sqrt(double x);
double Pow(double base, double exponent);
/// The same for a base above 0 whose natural logarithm is known to more than a double.
double PowOfLogarithm(DoubleDouble logarithm, double base, double exponent);
double Exp(double x);
double Log(double x);
double Log10(double x);
double Sin(double x);
double Cos(double x);
double Tan(double x);
double Asin(double x);
double Acos(double x);
double Atan(double x);
double Sinh(double x);
double Cosh(double x);
double Tanh(double x);
double Floor(double x);
double Ceil(double x);
double Fabs(double x);
double Fmod(double x, double y);

}  // namespace reka::math
