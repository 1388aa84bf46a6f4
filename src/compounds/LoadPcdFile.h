// SPDX-License-Identifier: MIT
// Compounds out of a pure compound data file, the database of an outside tool.
//
// The file has records of one length, little-endian. The first two bytes of record 0 are that length, 839 or 1024; the
// compounds are the records from 1 on:
//     4 to 53      name, in the thread's code page; the byte at 3 is its length
//     55 to 104    formula; the byte at 54 is its length
//     138 to 141   molecular weight in g/mol, a 32-bit float
//     840 to 889   CAS number, in records of 1024 bytes; the byte at 839 is its length
// A record must be there up to its byte 722, or up to 889 with a CAS number.

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/Definition.h"

namespace reka {

using CompoundList = std::vector<std::unique_ptr<CompoundDefinition>>;

/// Fills `list` with the compounds of the file at `path`, in its order; what the list held before is gone in any case.
/// Identifier and name are the name of the record, the formula is in normal form (absent for polymers and where there
/// is none), the CAS number has its dashes, and no compound has a charge. `databaseIndex` counts from 0.
///
/// False: `errorText`, which the caller passes empty, holds the reason, and the list is empty. One record that can't be
/// read spoils the whole file. Throws nothing.
bool LoadPcdFile(const std::u16string& path, CompoundList& list, std::u16string& errorText) noexcept;

/// A CAS number in its three parts: the digits 64175 become 64-17-5. What doesn't look like one stays as it is, and
/// misplaced dashes are taken for digits. May throw std::bad_alloc.
std::u16string FormatCasNumber(std::u16string_view text);

}  // namespace reka
