// Powers of ten for the exponent of a number in a text.

#pragma once

namespace reka {

/// The double nearest to 10 raised to `exponent`, a whole number: 0 and infinity beyond the range of a double. The
/// runtimes' own pow differs in the last bit from build to build, which would show in every constant.
double PowerOfTen(double exponent);

}  // namespace reka
