// SPDX-License-Identifier: MIT
// The library's routines that know no locale: the tables are compared byte by byte between systems and read back by
// other programs. They have no form that keeps the zeros at the end of a number, so that one is made of two others; its
// exponent is taken from the rounded number, as 9.999999 has another than 10.0000.

#include "FormatNumber.h"

#include <charconv>
#include <cmath>

namespace rekasim {

namespace {

std::string ToText(double number, std::chars_format format, int precision) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, number, format, precision);
    return {text, end.ptr};
}

}  // namespace

std::string FormatNumber(double number, int digits) {
    const double withoutSignOfZero = number == 0 ? 0 : number;
    return ToText(withoutSignOfZero, std::chars_format::general, digits);
}

std::string FormatFullNumber(double number, int digits) {
    if (number == 0 || !std::isfinite(number)) return FormatNumber(number, digits);
    std::string scientific = ToText(number, std::chars_format::scientific, digits - 1);
    const std::size_t mark = scientific.find('e');
    int exponent = 0;  // of the rounded number
    const char* last = scientific.data() + scientific.size();
    std::from_chars(scientific.data() + mark + 2, last, exponent);
    if (scientific[mark + 1] == '-') exponent = -exponent;
    if (exponent < -4 || exponent >= digits) return scientific;
    return ToText(number, std::chars_format::fixed, digits - 1 - exponent);
}

bool ParseNumber(std::string_view text, double& number) {
    const char* last = text.data() + text.size();
    double parsed = 0;
    const auto end = std::from_chars(text.data(), last, parsed);
    if (end.ec != std::errc() || end.ptr != last || !std::isfinite(parsed)) return false;
    number = parsed;
    return true;
}

}  // namespace rekasim
