// The words of the readable form that stand for stored numbers.

#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

#include "expression/tree/ExpressionNode.h"

namespace rekatool {

constexpr std::string_view typeWords[] = {"Equilibrium", "Kinetic"};
constexpr std::string_view rateBasisWords[] = {"Homogeneous", "Heterogeneous"};
constexpr std::string_view equilibriumBasisWords[] = {"Molarity",     "Concentration", "MoleFraction",
                                                      "MassFraction", "Fugacity",      "Activity"};
constexpr std::string_view thermoVersionWords[] = {"1.0", "1.1"};

/// Kinds of nodes, by their stored numbers.
constexpr std::string_view nodeWords[] = {
    "RealConstant",
    "Addition",
    "Subtraction",
    "Multiplication",
    "Division",
    "Negation",
    "Power",
    "ExpressionList",
    "Sqrt",
    "Sin",
    "Cos",
    "Sinh",
    "Cosh",
    "Asin",
    "Acos",
    "Tan",
    "Atan",
    "Abs",
    "Floor",
    "Ceil",
    "Round",
    "Exp",
    "Log",
    "Log10",
    "Tanh",
    "Min",
    "Max",
    "Mod",
    "Pressure",
    "Temperature",
    "Molarity",
    "MoleFraction",
    "MolecularWeight",
    "Activity",
    "Fugacity",
};
static_assert(std::size(nodeWords) == reka::nodeKindCount);

/// The members of a reaction that hold its three trees, where they aren't what the texts give.
constexpr const char* rateTreeMember = "rateTree";
constexpr const char* constantTreeMember = "equilibriumConstantTree";
constexpr const char* heatTreeMember = "heatTree";

}  // namespace rekatool
