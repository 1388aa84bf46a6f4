// SPDX-License-Identifier: MIT
// The routines of the library that know no locale do the work: a host runs with a decimal comma often enough, and
// printf would follow it. They tell a number that is too large and one that is too small by the same error; which of
// them it was is seen from the digits, since the small one must become zero.

#include "text/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace reka {

namespace {

/// The largest number has 309 digits in front of the point.
constexpr std::size_t longestNumber = 400;

std::u16string Format(double number, std::chars_format format) {
    char digits[longestNumber];
    char* const end = std::to_chars(digits, digits + sizeof digits, number, format, 6).ptr;
    return std::u16string(&digits[0], end);
}

}  // namespace

std::u16string FormatGeneral(double number) {
    return Format(number, std::chars_format::general);
}

std::u16string FormatFixed(double number) {
    return Format(number, std::chars_format::fixed);
}

bool ScanNumber(std::u16string_view text, double& number) {
    std::string digits(text.size(), '\0');
    std::transform(text.begin(), text.end(), digits.begin(), [](char16_t digit) { return static_cast<char>(digit); });
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::invalid_argument) return false;
    if (error == std::errc::result_out_of_range) {
        // Too large, or too small to be anything but zero: a digit before the point that isn't zero tells.
        const std::size_t point = std::min(digits.find('.'), digits.size());
        const bool isLarge = digits.find_first_not_of('0') < point;
        number = isLarge ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return true;
}

}  // namespace reka
