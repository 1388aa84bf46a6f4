// The functions of the expression language, in the order of their node kinds.

#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

#include "expression/tree/ExpressionNode.h"

namespace reka {

struct FunctionRow {
    std::u16string_view name;
    std::int32_t argumentCount;  // for the reader; the check goes by the kind
    NodeKind kind;
};

constexpr FunctionRow FunctionTable[] = {
    {u"SQRT", 1, NodeKind::Sqrt},   {u"SIN", 1, NodeKind::Sin},     {u"COS", 1, NodeKind::Cos},
    {u"SINH", 1, NodeKind::Sinh},   {u"COSH", 1, NodeKind::Cosh},   {u"ASIN", 1, NodeKind::Asin},
    {u"ACOS", 1, NodeKind::Acos},   {u"TAN", 1, NodeKind::Tan},     {u"ATAN", 1, NodeKind::Atan},
    {u"ABS", 1, NodeKind::Abs},     {u"FLOOR", 1, NodeKind::Floor}, {u"CEIL", 1, NodeKind::Ceil},
    {u"ROUND", 1, NodeKind::Round}, {u"EXP", 1, NodeKind::Exp},     {u"LOG", 1, NodeKind::Log},
    {u"LOG10", 1, NodeKind::Log10}, {u"TANH", 1, NodeKind::Tanh},   {u"MIN", 2, NodeKind::Min},
    {u"MAX", 2, NodeKind::Max},     {u"MOD", 2, NodeKind::Mod},
};

constexpr std::int32_t functionCount = 20;
static_assert(std::size(FunctionTable) == functionCount);

}  // namespace reka
