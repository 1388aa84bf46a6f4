// SPDX-License-Identifier: MIT
// A package in its readable form. Texts are strings, numbers are numbers, and stored words are told by name; what can't
// be said so gets an object or hexadecimal digits instead.

#include <bit>
#include <charconv>
#include <cmath>

#include "Hexadecimal.h"
#include "PackageFile.h"
#include "PackageWords.h"
#include "persistence/ByteReader.h"
#include "platform/CodePage.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

/// A text that isn't good UTF-16, or whose terminator isn't zero, is told by its units.
Json JsonOfText(const StoredWideText& text) {
    if (text.units.empty()) return nullptr;
    const std::string utf8 = reka::Utf8FromUtf16(text.units);
    if (text.terminator == 0 && reka::Utf16FromUtf8(utf8) == text.units) return utf8;
    Json::array_t units;
    for (const char16_t unit : text.units) units.emplace_back(HexadecimalNumber(unit, 4));
    Json content = {{"units", units}};
    if (text.terminator != 0) content["terminator"] = HexadecimalNumber(text.terminator, 4);
    return content;
}

/// Bytes that don't come back out of their text, or don't end in their one zero, are told as they are.
Json JsonOfText(const StoredNarrowText& text) {
    if (text.bytes.empty()) return nullptr;
    const std::u16string characters = reka::WideText(std::string_view(text.bytes).substr(0, text.bytes.size() - 1));
    const std::string utf8 = reka::Utf8FromUtf16(characters);
    if (text.bytes.find('\0') == text.bytes.size() - 1 && characters.size() + 1 == text.bytes.size() &&
        reka::NarrowText(characters) + '\0' == text.bytes && reka::Utf16FromUtf8(utf8) == characters) {
        return utf8;
    }
    return {{"bytes",
             HexadecimalOf(std::span(reinterpret_cast<const std::uint8_t*>(text.bytes.data()), text.bytes.size()))}};
}

bool IsPlain(double number) {
    return std::isfinite(number) && !(number == 0 && std::signbit(number));
}

Json JsonOfNumber(double number) {
    if (IsPlain(number)) return number;
    return HexadecimalNumber(std::bit_cast<std::uint64_t>(number), 16);
}

/// As it stands in a line of a tree.
std::string TextOfNumber(double number) {
    if (!IsPlain(number)) return HexadecimalNumber(std::bit_cast<std::uint64_t>(number), 16);
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

template <std::size_t count>
Json JsonOfWord(std::uint32_t word, const char16_t* const (&words)[count]) {
    if (word < count) return reka::Utf8FromUtf16(words[word]);
    return word;
}

/// One line a node, in the order in which they are stored: its kind, and its value, its compound or the number of its
/// arguments, which follow it.
Json JsonOfNodes(const Bytes& nodes) {
    Json lines = Json::array();
    reka::CByteReader reader(nodes);
    std::uint32_t kind = 0;
    while (reader.ReadU32(kind)) {
        std::string line = NodeWord(kind);
        if (static_cast<reka::NodeKind>(kind) == reka::NodeKind::RealConstant) {
            double value = 0;
            reader.ReadF64(value);
            line += " " + TextOfNumber(value);
        } else {
            std::int32_t number = 0;
            reader.ReadI32(number);
            line += " " + std::to_string(number);
        }
        lines.push_back(line);
    }
    return lines;
}

/// Adds the tree to the reaction unless it is what its text gives.
void AddTree(Json& reaction, const char* member, const StoredTree& tree, const StoredNarrowText& text,
             const reka::ReactionPackDefinition& definition) {
    if (tree == TreeOfText(definition, TextOf(text))) return;
    if (tree.flag == 0) {
        reaction[member] = nullptr;
        return;
    }
    Json content = Json::object();
    if (tree.flag != 1) content["flag"] = tree.flag;
    content["dependencies"] = tree.dependencies;
    content["nodes"] = JsonOfNodes(tree.nodes);
    reaction[member] = std::move(content);
}

Json JsonOfCompound(const StoredCompound& compound) {
    return {{"id", JsonOfText(compound.id)},
            {"name", JsonOfText(compound.name)},
            {"casNumber", JsonOfText(compound.casNumber)},
            {"formula", JsonOfText(compound.formula)},
            {"molecularWeight", JsonOfNumber(compound.molecularWeight)},
            {"charge", JsonOfNumber(compound.charge)}};
}

Json JsonOfReaction(const StoredPackage& package, const StoredReaction& stored,
                    const reka::ReactionPackDefinition& definition) {
    Json reaction = {{"id", JsonOfText(stored.id)}, {"phase", JsonOfText(stored.phase)}};
    if (package.version < 2) reaction["obsolete"] = JsonOfText(stored.obsolete);
    reaction["type"] = JsonOfWord(stored.type, reka::reactionTypeWords);
    reaction["rateBasis"] = JsonOfWord(stored.rateBasis, reka::rateBasisWords);
    reaction["rateEquation"] = JsonOfText(stored.rateEquation);
    AddTree(reaction, rateTreeMember, stored.rateTree, stored.rateEquation, definition);
    if (package.version >= 2) {
        reaction["equilibriumBasis"] = JsonOfWord(stored.equilibriumBasis, reka::equilibriumBasisWords);
    }
    reaction["equilibriumConstantEquation"] = JsonOfText(stored.equilibriumConstantEquation);
    AddTree(reaction, constantTreeMember, stored.equilibriumConstantTree, stored.equilibriumConstantEquation,
            definition);
    reaction["heatEquation"] = JsonOfText(stored.heatEquation);
    AddTree(reaction, heatTreeMember, stored.heatTree, stored.heatEquation, definition);
    reaction["stoichiometry"] = Json::array();
    for (const double coefficient : stored.stoichiometry) {
        reaction["stoichiometry"].push_back(JsonOfNumber(coefficient));
    }
    return reaction;
}

}  // namespace

Json JsonFromPackage(const StoredPackage& package) {
    reka::ReactionPackDefinition definition(nullptr);
    AddCompounds(package, definition);
    Json content = {{"version", package.version}};
    if (package.hasMarker != (package.version > 0)) content["marker"] = package.hasMarker;
    content["name"] = JsonOfText(package.name);
    content["description"] = JsonOfText(package.description);
    content["pcdFile"] = JsonOfText(package.pcdFile);
    content["thermoVersion"] =
        package.thermoVersion ? JsonOfWord(*package.thermoVersion, reka::thermoVersionWords) : Json();
    if (package.compoundCount < 0) content["compoundCount"] = package.compoundCount;
    content["compounds"] = Json::array();
    for (const StoredCompound& compound : package.compounds) content["compounds"].push_back(JsonOfCompound(compound));
    if (package.reactionCount < 0) content["reactionCount"] = package.reactionCount;
    content["reactions"] = Json::array();
    for (const StoredReaction& reaction : package.reactions) {
        content["reactions"].push_back(JsonOfReaction(package, reaction, definition));
    }
    return content;
}

}  // namespace rekatool
