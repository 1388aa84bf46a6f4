// SPDX-License-Identifier: MIT
// What is printed comes from the package's interfaces alone, but for the formulas and the state of the material, which
// the document gives. Units stand in the head of a column rather than behind each number, so that a table can be copied
// into a spreadsheet as it is.

#include "ReactionTable.h"

#include <ostream>

#include "AlignedTable.h"
#include "FormatNumber.h"
#include "WriteEquation.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

constexpr int temperatureDigits = 10;

std::string DescribeBasis(const Reaction& reaction) {
    if (!reaction.isKinetic) return "constant on basis " + reka::Utf8FromUtf16(reaction.concentrationBasis);
    return reaction.isHeterogeneous ? "rate per mass of catalyst" : "rate per volume";
}

std::string DescribeStoichiometry(const Reaction& reaction) {
    std::string text;
    for (const Participant& participant : reaction.participants) {
        if (!text.empty()) text += ", ";
        text += reka::Utf8FromUtf16(participant.id) + " " + FormatNumber(participant.coefficient);
    }
    return text;
}

bool IsListed(const std::vector<TableRow>& rows, const std::string& id) {
    for (const TableRow& row : rows) {
        if (!row.empty() && row[0] == id) return true;
    }
    return false;
}

}  // namespace

void WriteReactions(std::ostream& out, const std::vector<Reaction>& reactions, const MaterialState& material) {
    out << (reactions.empty() ? "No reactions\n" : "Reactions\n");
    for (const Reaction& reaction : reactions) {
        out << "  " << reka::Utf8FromUtf16(reaction.id) << ": " << WriteEquation(reaction, material) << "\n";
        out << "    " << (reaction.isKinetic ? "kinetic" : "equilibrium") << ", phase "
            << reka::Utf8FromUtf16(reaction.phase) << ", " << DescribeBasis(reaction) << "\n";
        out << "    " << DescribeStoichiometry(reaction) << "\n";
    }
}

void WriteCompounds(std::ostream& out, const std::vector<Reaction>& reactions) {
    std::vector<TableRow> rows = {{"Compound", "CAS number", "Charge"}, {}};
    for (const Reaction& reaction : reactions) {
        for (const Participant& participant : reaction.participants) {
            const std::string id = reka::Utf8FromUtf16(participant.id);
            if (IsListed(rows, id)) continue;
            rows.push_back({id, reka::Utf8FromUtf16(participant.casNumber), FormatNumber(participant.charge)});
        }
    }
    WriteAligned(out, rows, 2, 2);
}

void WriteMaterial(std::ostream& out, const MaterialState& material, const std::vector<double>& temperatures) {
    const bool isGas = material.model == PhaseModel::IdealGas;
    std::string range = FormatNumber(temperatures.front(), temperatureDigits);
    if (temperatures.size() > 1) range += " to " + FormatNumber(temperatures.back(), temperatureDigits);
    out << "Material: phase " << reka::Utf8FromUtf16(material.phase) << ", modelled as "
        << (isGas ? "an ideal gas" : "a liquid") << ", " << range << " K, "
        << FormatNumber(material.pressure, temperatureDigits) << " Pa\n";
    std::vector<TableRow> rows = {{"Compound", "Formula", "Mole fraction"}, {}};
    if (!isGas) rows[0].push_back("Activity coefficient");
    for (const MaterialCompound& compound : material.compounds) {
        TableRow& row = rows.emplace_back();
        row = {reka::Utf8FromUtf16(compound.id), reka::Utf8FromUtf16(compound.formula),
               FormatNumber(compound.moleFraction)};
        if (!isGas) row.push_back(FormatNumber(compound.activityCoefficient));
    }
    WriteAligned(out, rows, 2, 2);
}

void WriteValues(std::ostream& out, const std::vector<Reaction>& reactions, const std::vector<ReactionValues>& lines) {
    TableRow ids = {""};
    TableRow quantities = {"T"};
    TableRow units = {"K"};
    for (const Reaction& reaction : reactions) {
        const std::string id = reka::Utf8FromUtf16(reaction.id);
        ids.insert(ids.end(), {id, id});
        quantities.insert(quantities.end(), {reaction.isKinetic ? "rate" : "constant", "heat"});
        units.insert(units.end(), {reaction.isKinetic ? RateUnit(reaction) : EquilibriumUnit(reaction), "J/mol"});
    }
    std::vector<TableRow> rows = {ids, quantities, units, {}};
    for (const ReactionValues& line : lines) {
        TableRow row = {FormatNumber(line.temperature, temperatureDigits)};
        for (std::size_t i = 0; i < reactions.size(); ++i) {
            row.insert(row.end(), {line.mainValues[i], line.heats[i]});
        }
        rows.push_back(std::move(row));
    }
    WriteAligned(out, rows, 0, 2);
}

}  // namespace rekasim
