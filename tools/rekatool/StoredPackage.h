// SPDX-License-Identifier: MIT
// A stored block taken apart into just what is stored, byte for byte: nothing corrected, nothing judged. The layout is
// that of persistence/WriteStoredDefinition.h.

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "persistence/ByteReader.h"
#include "records/Definition.h"

namespace rekatool {

using Bytes = std::vector<std::uint8_t>;

struct StoredWideText {
    std::u16string units;
    std::uint16_t terminator = 0;  // behind a text that isn't empty
};

struct StoredNarrowText {
    std::string bytes;  // with the terminator; empty for an empty text
};

/// The field of one expression.
struct StoredTree {
    std::uint8_t flag = 0;  // 0: none, and nothing follows
    std::uint32_t dependencies = 0;
    Bytes nodes;
    bool operator==(const StoredTree&) const = default;
};

struct StoredCompound {
    StoredWideText id;
    StoredWideText casNumber;
    StoredWideText name;
    StoredWideText formula;
    double molecularWeight = 0;
    double charge = 0;
};

struct StoredReaction {
    StoredWideText id;
    StoredWideText phase;
    StoredWideText obsolete;  // up to version 1
    std::uint32_t type = 0;
    std::uint32_t rateBasis = 0;
    StoredNarrowText rateEquation;
    StoredNarrowText equilibriumConstantEquation;
    StoredNarrowText heatEquation;
    std::vector<double> stoichiometry;
    StoredTree rateTree;
    StoredTree equilibriumConstantTree;
    StoredTree heatTree;
    std::uint32_t equilibriumBasis = 0;  // from version 2 on
};

struct StoredPackage {
    StoredWideText name;
    StoredWideText description;
    StoredNarrowText pcdFile;
    bool hasMarker = true;           // without one there is no version word
    std::uint32_t version = 3;       // as stored; 0 without a marker
    std::int32_t compoundCount = 0;  // below 0 for none as well
    std::vector<StoredCompound> compounds;
    std::int32_t reactionCount = 0;
    std::vector<StoredReaction> reactions;
    std::optional<std::uint32_t> thermoVersion;
};

/// Reads a whole block. False if it isn't one, or something stands behind its end. May throw std::bad_alloc.
bool ReadStoredPackage(std::span<const std::uint8_t> block, StoredPackage& package);

/// Reads a block up to the end of its last reaction, which its thermo version may follow, wherever `reader` ends.
/// False: there is no block; `reader` is where it stops making sense. May throw std::bad_alloc.
bool ReadUpToThermoVersion(reka::CByteReader& reader, StoredPackage& package);

/// The bytes of a block.
Bytes WriteStoredPackage(const StoredPackage& package);

/// A definition with the compounds of `package`, to parse texts against.
void AddCompounds(const StoredPackage& package, reka::ReactionPackDefinition& definition);

/// What is stored for a text that was parsed: its tree, or none for an empty text and one that doesn't parse.
StoredTree TreeOfText(const reka::ReactionPackDefinition& definition, const std::u16string& text);

/// The characters of a stored text, up to its first zero.
std::u16string TextOf(const StoredNarrowText& text);

}  // namespace rekatool
