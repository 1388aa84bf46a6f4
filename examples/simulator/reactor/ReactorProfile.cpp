// SPDX-License-Identifier: MIT
// One profile in three forms. The table is for a person and has six digits, the values separated by commas have all of
// them, so that they read back as the same numbers. The script for gnuplot carries its numbers along: it is piped to
// the program, and there is no file of data that could be left behind. Names from a document are quoted as each form
// wants it.

#include "reactor/ReactorProfile.h"

#include <ostream>
#include <sstream>

#include "AlignedTable.h"
#include "FormatNumber.h"

namespace rekasim {

namespace {

constexpr int allDigits = 17;

/// A field of a line of comma-separated values.
std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char character : text) {
        quoted += character;
        if (character == '"') quoted += '"';
    }
    return quoted + "\"";
}

/// A text in single quotes as gnuplot reads it.
std::string PlotText(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\n' || character == '\r') continue;
        quoted += character;
        if (character == '\'') quoted += '\'';
    }
    return quoted + "'";
}

bool ChangesTemperature(const ReactorProfile& profile) {
    return profile.points.back().temperature != profile.points.front().temperature;
}

}  // namespace

double ConversionAt(const ReactorProfile& profile, const ReactorPoint& point) {
    const double feed = profile.points.front().flows[profile.key];
    return (feed - point.flows[profile.key]) / feed;
}

void WriteProfileTable(std::ostream& out, const ReactorProfile& profile) {
    TableRow names = {profile.positionName, "T", "conversion"};
    TableRow units = {profile.positionUnit, "K", profile.compounds[profile.key]};
    for (const std::string& compound : profile.compounds) {
        names.push_back(compound);
        units.push_back("mol/s");
    }
    std::vector<TableRow> rows = {names, units, {}};
    for (const ReactorPoint& point : profile.points) {
        TableRow& row = rows.emplace_back();
        row.push_back(FormatNumber(point.position));
        row.push_back(FormatFullNumber(point.temperature));
        row.push_back(FormatFullNumber(ConversionAt(profile, point)));
        for (const double flow : point.flows) row.push_back(FormatFullNumber(flow));
    }
    WriteAligned(out, rows, 0, 2);
}

void WriteProfileCsv(std::ostream& out, const ReactorProfile& profile) {
    const std::string unit = profile.positionUnit.empty() ? "" : "_" + profile.positionUnit;
    out << profile.positionName << unit << ",temperature_K,"
        << CsvField("conversion_" + profile.compounds[profile.key]);
    for (const std::string& compound : profile.compounds) out << "," << CsvField("flow_" + compound + "_mol_per_s");
    out << "\n";
    for (const ReactorPoint& point : profile.points) {
        out << FormatNumber(point.position, allDigits) << "," << FormatNumber(point.temperature, allDigits) << ","
            << FormatNumber(ConversionAt(profile, point), allDigits);
        for (const double flow : point.flows) out << "," << FormatNumber(flow, allDigits);
        out << "\n";
    }
}

std::string ProfilePlotScript(const ReactorProfile& profile, const std::string& title, PlotForm form,
                              const std::string& path) {
    const bool hasTemperature = ChangesTemperature(profile);
    const std::size_t columns = profile.compounds.size();
    std::ostringstream script;
    script << "set terminal " << (form == PlotForm::Png ? "pngcairo" : "svg") << " size 900,560 noenhanced\n"
           << "set output " << PlotText(path) << "\nset title " << PlotText(title) << "\nset xlabel "
           << PlotText(profile.positionName + ", " + profile.positionUnit) << "\nset ylabel 'flow, mol/s'\n"
           << "set key outside right\nset grid\n";
    if (hasTemperature) script << "set y2label 'temperature, K'\nset y2tics\nset ytics nomirror\n";
    script << "$profile << END\n";
    for (const ReactorPoint& point : profile.points) {
        script << FormatNumber(point.position, allDigits) << " " << FormatNumber(point.temperature, allDigits);
        for (const double flow : point.flows) script << " " << FormatNumber(flow, allDigits);
        script << "\n";
    }
    script << "END\nplot ";
    for (std::size_t i = 0; i < columns; ++i) {
        script << (i == 0 ? "" : ", ") << "$profile using 1:" << i + 3 << " with lines linewidth 2 title "
               << PlotText(profile.compounds[i]);
    }
    if (hasTemperature) script << ", $profile using 1:2 axes x1y2 with lines dashtype 2 title 'temperature'";
    script << "\n";
    return script.str();
}

}  // namespace rekasim
