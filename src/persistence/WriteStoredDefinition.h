// SPDX-License-Identifier: MIT
// The stored form of a definition: one block of bytes, the same in a simulator's document and in the file of templates.
//
// All numbers are little-endian and unaligned, and nothing in the block tells its length. "wide" is a u32 count of
// UTF-16 code units and, unless that is 0, the units with a terminator; "narrow" is the same with bytes of the thread's
// code page; a tree is as StoredExpression.h has it. Version 3 is written, all older ones are read:
//
//     name, description      wide, wide
//     compound file path     narrow
//     marker                 u32 0xFFFFFFFF   } neither in version 0, whose next word is the number of compounds itself
//     version                u32              }
//     number of compounds    i32, N
//       id, CAS number, name, formula         wide each
//       molecular weight, charge              f64 each
//     number of reactions    i32
//       id, phase                             wide each
//       an obsolete text                      wide, in versions 0 and 1 only
//       type, basis of the rate               i32 each
//       rate, equilibrium constant, heat      narrow each
//       coefficients                          N times f64
//       trees of rate, constant, heat         expression each
//       basis of the equilibrium constant     i32, from version 2 on
//     thermo version         i32, may be missing at the end of any version
//
// Version 0 has rates in kmol/h, and formulas came into their normal form with version 3; the reader mends both.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/Definition.h"

namespace reka {

/// Writes the whole of `definition` as a block of version 3. False: `errorText` holds the reason, which is want of
/// memory or of room for a 32-bit size, and `block` is empty. Throws nothing.
bool WriteStoredDefinition(const ReactionPackDefinition& definition, std::vector<std::uint8_t>& block,
                           std::u16string& errorText) noexcept;

}  // namespace reka
