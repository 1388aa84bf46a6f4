// SPDX-License-Identifier: MIT
// Writing a definition: its fields in their order, first for their exact size, so that there is one allocation, and
// then for their bytes.

#include "persistence/WriteStoredDefinition.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>

#include "persistence/ByteWriter.h"
#include "persistence/StoredExpression.h"
#include "platform/OutOfMemoryText.h"

namespace reka {

namespace {

constexpr std::uint32_t versionMarker = 0xFFFFFFFF;
constexpr std::uint32_t currentVersion = 3;

void WriteTree(const ExpressionRef* expression, CByteWriter& writer) {
    WriteStoredExpression(expression, writer);
}

void WriteTree(const ExpressionRef* expression, CByteCounter& counter) {
    counter.Skip(StoredExpressionSize(expression));
}

template <class Writer>
void WriteCompound(const CompoundDefinition& compound, Writer& writer) {
    writer.WriteWideText(compound.id);
    writer.WriteWideText(compound.casNumber);
    writer.WriteWideText(compound.name);
    writer.WriteWideText(compound.formula);
    writer.WriteF64(compound.molecularWeight);
    writer.WriteF64(compound.charge);
}

template <class Writer>
void WriteReaction(const ReactionDefinition& reaction, std::size_t compoundCount, Writer& writer) {
    writer.WriteWideText(reaction.id);
    writer.WriteWideText(reaction.phase);
    writer.WriteI32(static_cast<std::int32_t>(reaction.type));
    writer.WriteI32(static_cast<std::int32_t>(reaction.rateBasis));
    writer.WriteNarrowText(reaction.rateEquation);
    writer.WriteNarrowText(reaction.equilibriumConstantEquation);
    writer.WriteNarrowText(reaction.heatEquation);
    // As many as a reader goes by.
    for (std::size_t i = 0; i < compoundCount; ++i) writer.WriteF64(reaction.CoefficientOf(i));
    WriteTree(reaction.rateExpression.get(), writer);
    WriteTree(reaction.equilibriumConstantExpression.get(), writer);
    WriteTree(reaction.heatExpression.get(), writer);
    writer.WriteI32(static_cast<std::int32_t>(reaction.equilibriumBasis));
}

template <class Writer>
void WriteFields(const ReactionPackDefinition& definition, Writer& writer) {
    writer.WriteWideText(definition.name);
    writer.WriteWideText(definition.description);
    writer.WriteNarrowText(definition.pcdFile);
    writer.WriteU32(versionMarker);
    writer.WriteU32(currentVersion);
    writer.WriteU32(static_cast<std::uint32_t>(definition.compounds.size()));
    for (const auto& compound : definition.compounds) WriteCompound(*compound, writer);
    writer.WriteU32(static_cast<std::uint32_t>(definition.reactions.size()));
    for (const auto& reaction : definition.reactions) WriteReaction(*reaction, definition.compounds.size(), writer);
    writer.WriteI32(static_cast<std::int32_t>(definition.thermoVersion));
}

}  // namespace

bool WriteStoredDefinition(const ReactionPackDefinition& definition, std::vector<std::uint8_t>& block,
                           std::u16string& errorText) noexcept {
    try {
        block.clear();
        CByteCounter counter;
        WriteFields(definition, counter);
        if (counter.Size() <= static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) {
            block.reserve(static_cast<std::size_t>(counter.Size()));
            CByteWriter writer(block);
            WriteFields(definition, writer);
            return true;
        }
    } catch (const std::exception&) {  // a length or an allocation that can't be had
    }
    std::vector<std::uint8_t>().swap(block);
    TellOutOfMemory(errorText);
    return false;
}

}  // namespace reka
