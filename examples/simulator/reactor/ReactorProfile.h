// SPDX-License-Identifier: MIT
// What rekasim prints of a solved reactor.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "reactor/ReactorModel.h"

namespace rekasim {

/// The columns of a profile.
struct ReactorProfile {
    std::string positionName;  // "volume", "catalyst" or "outlet"
    std::string positionUnit;  // "m3", "kg" or none
    std::vector<ReactorPoint> points;
    std::vector<std::string> compounds;  // identifiers, UTF-8
    std::size_t key = 0;                 // the compound whose conversion is told
};

enum class PlotForm : unsigned char { Svg, Png };

/// Part of the key compound's feed that has reacted.
double ConversionAt(const ReactorProfile& profile, const ReactorPoint& point);

/// A table for people: position, temperature, conversion, flows in mol/s.
void WriteProfileTable(std::ostream& out, const ReactorProfile& profile);
/// The same as comma-separated values with all digits; one header line with the units in the names.
void WriteProfileCsv(std::ostream& out, const ReactorProfile& profile);
/// A gnuplot script that draws the flows, and the temperature if it changes, into the file at `path`.
std::string ProfilePlotScript(const ReactorProfile& profile, const std::string& title, PlotForm form,
                              const std::string& path);

}  // namespace rekasim
