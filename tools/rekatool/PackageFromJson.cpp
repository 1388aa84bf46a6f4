// SPDX-License-Identifier: MIT
// The way back from the readable form of a package to its stored fields. Whoever writes that form by hand is told where
// and what is wrong; a member that isn't known is refused, since it would be a misspelt one.

#include <bit>
#include <charconv>
#include <initializer_list>
#include <limits>

#include "Hexadecimal.h"
#include "PackageFile.h"
#include "PackageWords.h"
#include "WholeNumber.h"
#include "persistence/ByteWriter.h"
#include "persistence/StoredExpression.h"
#include "platform/CodePage.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

/// Why the form can't be read, with the path of the member.
struct FormFault {
    std::string text;
};

/// One value with the path that leads to it.
class CValue {
public:
    CValue(const Json& readValue, std::string valuePath) : value(readValue), path(std::move(valuePath)) {}

    [[noreturn]] void Fail(const std::string& reason) const { throw FormFault{path + ": " + reason}; }

    bool Has(const char* name) const { return value.is_object() && value.contains(name); }
    CValue Member(const char* name) const {
        if (!Has(name)) throw FormFault{path + "." + name + ": the member is missing"};
        return {value[name], path + "." + name};
    }
    void AllowOnly(std::initializer_list<std::string_view> names) const {
        if (!value.is_object()) Fail("an object is expected");
        for (const auto& member : value.items()) {
            bool isKnown = false;
            for (const std::string_view name : names) isKnown = isKnown || member.key() == name;
            if (!isKnown) throw FormFault{path + "." + member.key() + ": there is no such member"};
        }
    }
    template <class Each>
    void ForEach(Each&& each) const {
        if (!value.is_array()) Fail("a list is expected");
        for (std::size_t i = 0; i < value.size(); ++i) each(CValue(value[i], path + "[" + std::to_string(i) + "]"));
    }

    bool IsNull() const { return value.is_null(); }
    bool IsText() const { return value.is_string(); }
    bool IsObject() const { return value.is_object(); }
    const std::string& Text() const {
        if (!value.is_string()) Fail("a text is expected");
        return value.get_ref<const std::string&>();
    }
    bool Flag() const {
        if (!value.is_boolean()) Fail("true or false is expected");
        return value.get<bool>();
    }
    std::int64_t Integer(std::int64_t lowest, std::int64_t highest) const {
        const std::optional<std::int64_t> number = WholeNumber(value);
        if (!number || *number < lowest || *number > highest) {
            Fail("a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest) + " is expected");
        }
        return *number;
    }
    std::uint32_t Word() const {
        return static_cast<std::uint32_t>(Integer(0, std::numeric_limits<std::uint32_t>::max()));
    }
    /// A count that stands in for that of an empty list.
    std::int32_t CountBelowZero(std::size_t listed) const {
        if (listed > 0) Fail("only an empty list can have another count");
        return static_cast<std::int32_t>(Integer(std::numeric_limits<std::int32_t>::min(), -1));
    }
    double Number() const {
        std::uint64_t bits = 0;
        if (value.is_string() && ReadHexadecimalNumber(Text(), 16, bits)) return std::bit_cast<double>(bits);
        if (!value.is_number()) Fail("a number, or its bits as \"0x...\", is expected");
        return value.get<double>();
    }
    template <std::size_t count>
    std::uint32_t WordOf(const char16_t* const (&words)[count]) const {
        if (!IsText()) return Word();
        for (std::uint32_t i = 0; i < count; ++i) {
            if (Text() == reka::Utf8FromUtf16(words[i])) return i;
        }
        Fail("there is no \"" + Text() + "\" here");
    }

private:
    const Json& value;
    std::string path;
};

std::uint16_t ReadUnit(const CValue& value) {
    std::uint64_t unit = 0;
    if (!ReadHexadecimalNumber(value.Text(), 4, unit)) value.Fail("\"0x\" and four digits are expected");
    return static_cast<std::uint16_t>(unit);
}

StoredWideText ReadWide(const CValue& value) {
    StoredWideText text;
    if (value.IsNull()) return text;
    if (value.IsText()) {
        text.units = reka::Utf16FromUtf8(value.Text());
        return text;
    }
    value.AllowOnly({"units", "terminator"});
    value.Member("units").ForEach([&](const CValue& unit) { text.units += static_cast<char16_t>(ReadUnit(unit)); });
    if (value.Has("terminator")) text.terminator = ReadUnit(value.Member("terminator"));
    return text;
}

StoredNarrowText ReadNarrow(const CValue& value) {
    StoredNarrowText text;
    if (value.IsNull()) return text;
    if (value.IsText()) {
        const std::u16string characters = reka::Utf16FromUtf8(value.Text());
        if (characters.find(u'\0') != std::u16string::npos) value.Fail("a zero character can't be stored");
        text.bytes = reka::NarrowText(characters);
        if (text.bytes.size() != characters.size() || reka::WideText(text.bytes) != characters) {
            value.Fail("the code page has not all of these characters");
        }
        if (!text.bytes.empty()) text.bytes += '\0';
        return text;
    }
    value.AllowOnly({"bytes"});
    Bytes bytes;
    if (!BytesOf(value.Member("bytes").Text(), bytes) || bytes.size() < 2) {
        value.Fail("pairs of hexadecimal digits are expected, for two bytes at least");
    }
    text.bytes.assign(bytes.begin(), bytes.end());
    return text;
}

/// "Temperature 0": the kind, and its number.
void ReadNode(const CValue& value, reka::CByteWriter& writer) {
    const std::string_view line = value.Text();
    const std::size_t blank = line.find(' ');
    const std::string_view word = line.substr(0, blank);
    const std::string_view number = blank == std::string_view::npos ? "" : line.substr(blank + 1);
    std::uint32_t kind = 0;
    while (kind < reka::nodeKindCount && NodeWord(kind) != word) ++kind;
    if (kind == reka::nodeKindCount) value.Fail("there is no kind \"" + std::string(word) + "\"");
    writer.WriteU32(kind);
    const char* const end = number.data() + number.size();
    std::uint64_t bits = 0;
    double constant = 0;
    std::int32_t count = 0;
    std::from_chars_result read = {number.data(), std::errc::invalid_argument};
    if (static_cast<reka::NodeKind>(kind) != reka::NodeKind::RealConstant) {
        read = std::from_chars(number.data(), end, count);
        writer.WriteI32(count);
    } else if (ReadHexadecimalNumber(number, 16, bits)) {
        read = {end, std::errc()};
        writer.WriteF64(std::bit_cast<double>(bits));
    } else {
        read = std::from_chars(number.data(), end, constant);
        writer.WriteF64(constant);
    }
    if (read.ec != std::errc() || read.ptr != end) value.Fail("a number is expected behind the kind");
}

/// The nodes must be one whole tree, or the block that they go into would be damaged.
void CheckNodes(const CValue& value, const Bytes& nodes) {
    reka::CByteReader reader(nodes);
    std::u16string errorText;
    if (reka::ReadStoredNode(reader, errorText) && reader.Remaining() == 0) return;
    value.Fail("the nodes are not one tree");
}

StoredTree ReadTree(const CValue& reaction, const char* member, const StoredNarrowText& text,
                    const reka::ReactionPackDefinition& definition) {
    if (!reaction.Has(member)) return TreeOfText(definition, TextOf(text));
    const CValue value = reaction.Member(member);
    StoredTree tree;
    if (value.IsNull()) return tree;
    value.AllowOnly({"flag", "dependencies", "nodes"});
    tree.flag = value.Has("flag") ? static_cast<std::uint8_t>(value.Member("flag").Integer(1, 255)) : 1;
    tree.dependencies = value.Member("dependencies").Word();
    const CValue nodes = value.Member("nodes");
    reka::CByteWriter writer(tree.nodes);
    nodes.ForEach([&](const CValue& node) { ReadNode(node, writer); });
    CheckNodes(nodes, tree.nodes);
    return tree;
}

StoredCompound ReadCompound(const CValue& value) {
    value.AllowOnly({"id", "name", "casNumber", "formula", "molecularWeight", "charge"});
    StoredCompound compound;
    compound.id = ReadWide(value.Member("id"));
    compound.name = ReadWide(value.Member("name"));
    compound.casNumber = ReadWide(value.Member("casNumber"));
    compound.formula = ReadWide(value.Member("formula"));
    compound.molecularWeight = value.Member("molecularWeight").Number();
    compound.charge = value.Member("charge").Number();
    return compound;
}

StoredReaction ReadReaction(const CValue& value, const StoredPackage& package,
                            const reka::ReactionPackDefinition& definition) {
    value.AllowOnly({"id", "phase", "obsolete", "type", "rateBasis", "rateEquation", rateTreeMember, "equilibriumBasis",
                     "equilibriumConstantEquation", constantTreeMember, "heatEquation", heatTreeMember,
                     "stoichiometry"});
    StoredReaction reaction;
    reaction.id = ReadWide(value.Member("id"));
    reaction.phase = ReadWide(value.Member("phase"));
    if (package.version < 2) {
        reaction.obsolete = ReadWide(value.Member("obsolete"));
    } else if (value.Has("obsolete")) {
        value.Member("obsolete").Fail("only versions 0 and 1 have this text");
    }
    reaction.type = value.Member("type").WordOf(reka::reactionTypeWords);
    reaction.rateBasis = value.Member("rateBasis").WordOf(reka::rateBasisWords);
    reaction.rateEquation = ReadNarrow(value.Member("rateEquation"));
    reaction.equilibriumConstantEquation = ReadNarrow(value.Member("equilibriumConstantEquation"));
    reaction.heatEquation = ReadNarrow(value.Member("heatEquation"));
    value.Member("stoichiometry").ForEach([&](const CValue& number) {
        reaction.stoichiometry.push_back(number.Number());
    });
    if (reaction.stoichiometry.size() != package.compounds.size()) {
        value.Member("stoichiometry").Fail("one number for each compound is expected");
    }
    reaction.rateTree = ReadTree(value, rateTreeMember, reaction.rateEquation, definition);
    reaction.equilibriumConstantTree =
        ReadTree(value, constantTreeMember, reaction.equilibriumConstantEquation, definition);
    reaction.heatTree = ReadTree(value, heatTreeMember, reaction.heatEquation, definition);
    if (package.version >= 2) {
        reaction.equilibriumBasis = value.Member("equilibriumBasis").WordOf(reka::equilibriumBasisWords);
    } else if (value.Has("equilibriumBasis")) {
        value.Member("equilibriumBasis").Fail("versions 0 and 1 have no basis");
    }
    return reaction;
}

StoredPackage ReadPackage(const CValue& value) {
    value.AllowOnly({"version", "marker", "name", "description", "pcdFile", "thermoVersion", "compoundCount",
                     "compounds", "reactionCount", "reactions"});
    StoredPackage package;
    package.version = value.Member("version").Word();
    package.hasMarker = value.Has("marker") ? value.Member("marker").Flag() : package.version > 0;
    if (!package.hasMarker && package.version != 0) value.Fail("a version without its marker can't be stored");
    package.name = ReadWide(value.Member("name"));
    package.description = ReadWide(value.Member("description"));
    package.pcdFile = ReadNarrow(value.Member("pcdFile"));
    const CValue thermoVersion = value.Member("thermoVersion");
    if (!thermoVersion.IsNull()) package.thermoVersion = thermoVersion.WordOf(reka::thermoVersionWords);
    value.Member("compounds").ForEach([&](const CValue& compound) {
        package.compounds.push_back(ReadCompound(compound));
    });
    package.compoundCount = static_cast<std::int32_t>(package.compounds.size());
    if (value.Has("compoundCount")) {
        package.compoundCount = value.Member("compoundCount").CountBelowZero(package.compounds.size());
    }
    reka::ReactionPackDefinition definition(nullptr);
    AddCompounds(package, definition);
    value.Member("reactions").ForEach([&](const CValue& reaction) {
        package.reactions.push_back(ReadReaction(reaction, package, definition));
    });
    package.reactionCount = static_cast<std::int32_t>(package.reactions.size());
    if (value.Has("reactionCount")) {
        package.reactionCount = value.Member("reactionCount").CountBelowZero(package.reactions.size());
    }
    return package;
}

}  // namespace

bool PackageFromJson(const Json& content, const std::string& path, StoredPackage& package, std::string& errorText) {
    try {
        package = ReadPackage({content, path});
        return true;
    } catch (const FormFault& fault) {
        errorText = fault.text;
        return false;
    }
}

}  // namespace rekatool
