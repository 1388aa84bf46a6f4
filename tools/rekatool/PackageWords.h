// The words of the readable form that stand for stored numbers.

#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

#include "expression/tree/ExpressionNode.h"

namespace rekatool {

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
