// SPDX-License-Identifier: MIT
// The stored form of an expression: a tree beside its text, so that a package calculates without the parser.
//
// An expression field is a flag byte, 0 for none. Otherwise the u32 mask of what the tree reads follows, and its root.
// A node is a u32 kind, and then
//     kind 0 (constant)            f64 value
//     kinds 30 to 34 (compounds)   i32 index into the compounds of the same block
//     all others                   i32 number of arguments, 0 to 4, then each of them as a node, left to right
// so the tree is stored depth-first, a parent before its arguments, without separators or an end mark.

#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "expression/tree/ExpressionRef.h"
#include "persistence/ByteReader.h"
#include "persistence/ByteWriter.h"

namespace reka {

/// Bytes of the field of `expression`, which may be null, and of one tree.
std::uint64_t StoredExpressionSize(const ExpressionRef* expression);
std::uint64_t StoredNodeSize(const TreeSurvey& tree);

void WriteStoredExpression(const ExpressionRef* expression, CByteWriter& writer);
void WriteStoredNode(const ExpressionNode& node, CByteWriter& writer);

/// Reads one field. `expression` gets the tree with the mask as it was stored, and stays as it is where the field says
/// that there is none. False: `errorText` holds the reason, `expression` is as it was.
///
/// Kinds and numbers of arguments are compared with the limits of the form alone, and compound indices with nothing:
/// an operation without its operands, or without a value, fails when it is evaluated. May throw std::bad_alloc.
bool ReadStoredExpression(std::unique_ptr<ExpressionRef>& expression, CByteReader& reader, std::u16string& errorText);

/// Reads a node with everything under it. However deep the tree is, the stack isn't. Null: `errorText` holds the
/// reason, and nothing was allocated for the tree. May throw std::bad_alloc.
ExpressionTree ReadStoredNode(CByteReader& reader, std::u16string& errorText);

}  // namespace reka
