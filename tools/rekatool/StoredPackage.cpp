// SPDX-License-Identifier: MIT
// Reading and writing the fields of a block in their order. The component's own reader won't do here: it mends what it
// reads, while this program has to give back the same bytes. So a field is kept as it was stored, an obsolete text and
// the terminator of a text included, and an expression as the bytes of its tree, read once to see where they end.

#include "StoredPackage.h"

#include <memory>
#include <utility>

#include "expression/parse/ParseExpression.h"
#include "persistence/ByteWriter.h"
#include "persistence/StoredExpression.h"
#include "platform/CodePage.h"

namespace rekatool {

namespace {

constexpr std::uint32_t versionMarker = 0xFFFFFFFF;

bool HasObsoleteText(const StoredPackage& package) {
    return package.version < 2;
}
bool HasEquilibriumBasis(const StoredPackage& package) {
    return package.version >= 2;
}

bool ReadWide(reka::CByteReader& reader, StoredWideText& text) {
    std::uint32_t length = 0;
    if (!reader.ReadU32(length)) return false;
    if (length == 0) return true;
    std::span<const std::uint8_t> bytes;
    if (reader.Remaining() / 2 <= length || !reader.ReadBytes(2 * (std::size_t{length} + 1), bytes)) return false;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        text.units += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    }
    text.terminator = text.units.back();
    text.units.pop_back();
    return true;
}

bool ReadNarrow(reka::CByteReader& reader, StoredNarrowText& text) {
    std::uint32_t length = 0;
    if (!reader.ReadU32(length)) return false;
    if (length == 0) return true;
    std::span<const std::uint8_t> bytes;
    if (reader.Remaining() <= length || !reader.ReadBytes(std::size_t{length} + 1, bytes)) return false;
    text.bytes.assign(bytes.begin(), bytes.end());
    return true;
}

/// The tree is kept as its bytes; reading it tells where it ends.
bool ReadTree(reka::CByteReader& reader, StoredTree& tree) {
    if (!reader.ReadU8(tree.flag)) return false;
    if (tree.flag == 0) return true;
    if (!reader.ReadU32(tree.dependencies)) return false;
    reka::CByteReader ahead = reader;
    std::u16string errorText;
    if (!reka::ReadStoredNode(ahead, errorText)) return false;
    std::span<const std::uint8_t> bytes;
    if (!reader.ReadBytes(reader.Remaining() - ahead.Remaining(), bytes)) return false;
    tree.nodes.assign(bytes.begin(), bytes.end());
    return true;
}

bool ReadCompound(reka::CByteReader& reader, StoredCompound& compound) {
    return ReadWide(reader, compound.id) && ReadWide(reader, compound.casNumber) && ReadWide(reader, compound.name) &&
           ReadWide(reader, compound.formula) && reader.ReadF64(compound.molecularWeight) &&
           reader.ReadF64(compound.charge);
}

bool ReadReaction(reka::CByteReader& reader, const StoredPackage& package, StoredReaction& reaction) {
    if (!ReadWide(reader, reaction.id) || !ReadWide(reader, reaction.phase)) return false;
    if (HasObsoleteText(package) && !ReadWide(reader, reaction.obsolete)) return false;
    if (!reader.ReadU32(reaction.type) || !reader.ReadU32(reaction.rateBasis) ||
        !ReadNarrow(reader, reaction.rateEquation) || !ReadNarrow(reader, reaction.equilibriumConstantEquation) ||
        !ReadNarrow(reader, reaction.heatEquation)) {
        return false;
    }
    for (std::size_t i = 0; i < package.compounds.size(); ++i) {
        if (!reader.ReadF64(reaction.stoichiometry.emplace_back())) return false;
    }
    return ReadTree(reader, reaction.rateTree) && ReadTree(reader, reaction.equilibriumConstantTree) &&
           ReadTree(reader, reaction.heatTree) &&
           (!HasEquilibriumBasis(package) || reader.ReadU32(reaction.equilibriumBasis));
}

bool ReadHead(reka::CByteReader& reader, StoredPackage& package) {
    if (!ReadWide(reader, package.name) || !ReadWide(reader, package.description) ||
        !ReadNarrow(reader, package.pcdFile)) {
        return false;
    }
    std::uint32_t word = 0;
    if (!reader.ReadU32(word)) return false;
    package.hasMarker = word == versionMarker;
    package.version = 0;
    package.compoundCount = static_cast<std::int32_t>(word);
    return !package.hasMarker || (reader.ReadU32(package.version) && reader.ReadI32(package.compoundCount));
}

void WriteWide(Bytes& block, const StoredWideText& text) {
    reka::CByteWriter writer(block);
    writer.WriteU32(static_cast<std::uint32_t>(text.units.size()));
    if (text.units.empty()) return;
    for (const char16_t unit : text.units + static_cast<char16_t>(text.terminator)) {
        writer.WriteU8(static_cast<std::uint8_t>(unit & 0xFF));
        writer.WriteU8(static_cast<std::uint8_t>(unit >> 8));
    }
}

void WriteNarrow(Bytes& block, const StoredNarrowText& text) {
    reka::CByteWriter(block).WriteU32(text.bytes.empty() ? 0 : static_cast<std::uint32_t>(text.bytes.size() - 1));
    block.insert(block.end(), text.bytes.begin(), text.bytes.end());
}

void WriteTree(Bytes& block, const StoredTree& tree) {
    reka::CByteWriter writer(block);
    writer.WriteU8(tree.flag);
    if (tree.flag == 0) return;
    writer.WriteU32(tree.dependencies);
    block.insert(block.end(), tree.nodes.begin(), tree.nodes.end());
}

void WriteReaction(Bytes& block, const StoredPackage& package, const StoredReaction& reaction) {
    reka::CByteWriter writer(block);
    WriteWide(block, reaction.id);
    WriteWide(block, reaction.phase);
    if (HasObsoleteText(package)) WriteWide(block, reaction.obsolete);
    writer.WriteU32(reaction.type);
    writer.WriteU32(reaction.rateBasis);
    WriteNarrow(block, reaction.rateEquation);
    WriteNarrow(block, reaction.equilibriumConstantEquation);
    WriteNarrow(block, reaction.heatEquation);
    for (const double& coefficient : reaction.stoichiometry) writer.WriteF64(coefficient);
    WriteTree(block, reaction.rateTree);
    WriteTree(block, reaction.equilibriumConstantTree);
    WriteTree(block, reaction.heatTree);
    if (HasEquilibriumBasis(package)) writer.WriteU32(reaction.equilibriumBasis);
}

}  // namespace

bool ReadUpToThermoVersion(reka::CByteReader& reader, StoredPackage& package) {
    if (!ReadHead(reader, package)) return false;
    for (std::int32_t i = 0; i < package.compoundCount; ++i) {
        if (!ReadCompound(reader, package.compounds.emplace_back())) return false;
    }
    if (!reader.ReadI32(package.reactionCount)) return false;
    for (std::int32_t i = 0; i < package.reactionCount; ++i) {
        if (!ReadReaction(reader, package, package.reactions.emplace_back())) return false;
    }
    return true;
}

bool ReadStoredPackage(std::span<const std::uint8_t> block, StoredPackage& package) {
    reka::CByteReader reader(block);
    if (!ReadUpToThermoVersion(reader, package)) return false;
    if (reader.Remaining() == 0) return true;
    return reader.ReadU32(package.thermoVersion.emplace()) && reader.Remaining() == 0;
}

Bytes WriteStoredPackage(const StoredPackage& package) {
    Bytes block;
    reka::CByteWriter writer(block);
    WriteWide(block, package.name);
    WriteWide(block, package.description);
    WriteNarrow(block, package.pcdFile);
    if (package.hasMarker) {
        writer.WriteU32(versionMarker);
        writer.WriteU32(package.version);
    }
    writer.WriteI32(package.compoundCount);
    for (const StoredCompound& compound : package.compounds) {
        WriteWide(block, compound.id);
        WriteWide(block, compound.casNumber);
        WriteWide(block, compound.name);
        WriteWide(block, compound.formula);
        writer.WriteF64(compound.molecularWeight);
        writer.WriteF64(compound.charge);
    }
    writer.WriteI32(package.reactionCount);
    for (const StoredReaction& reaction : package.reactions) WriteReaction(block, package, reaction);
    if (package.thermoVersion) writer.WriteU32(*package.thermoVersion);
    return block;
}

void AddCompounds(const StoredPackage& package, reka::ReactionPackDefinition& definition) {
    for (const StoredCompound& stored : package.compounds) {
        auto compound = std::make_unique<reka::CompoundDefinition>();
        compound->name = reka::CBstr::Make(stored.name.units);
        compound->id = reka::CBstr::Make(stored.id.units);
        compound->molecularWeight = stored.molecularWeight;
        compound->charge = stored.charge;
        definition.compounds.push_back(std::move(compound));
    }
}

StoredTree TreeOfText(const reka::ReactionPackDefinition& definition, const std::u16string& text) {
    StoredTree stored;
    std::u16string errorText;
    if (text.empty()) return stored;
    reka::ExpressionTree tree = reka::ParseExpression(definition, text, errorText, nullptr);
    if (!tree) return stored;
    const reka::ExpressionRef expression(std::move(tree));
    stored.flag = 1;
    stored.dependencies = expression.dependencies;
    reka::CByteWriter writer(stored.nodes);
    reka::WriteStoredNode(*expression.root, writer);
    return stored;
}

std::u16string TextOf(const StoredNarrowText& text) {
    const std::string_view bytes(text.bytes);
    return reka::WideText(bytes.substr(0, bytes.find('\0')));
}

}  // namespace rekatool
