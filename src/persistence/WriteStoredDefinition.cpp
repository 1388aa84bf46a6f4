// Writing a definition: the exact size first, so that there is one allocation, then the fields in their order.

#include <cstdint>
#include <exception>
#include <limits>

#include "persistence/ByteWriter.h"
#include "persistence/StoredDefinition.h"
#include "persistence/StoredExpression.h"
#include "platform/OutOfMemoryText.h"

namespace reka {

namespace {

constexpr std::uint32_t versionMarker = 0xFFFFFFFF;
constexpr std::uint32_t currentVersion = 3;

std::uint64_t CompoundSize(const CompoundDefinition& compound) {
    return WideTextSize(compound.id) + WideTextSize(compound.casNumber) + WideTextSize(compound.name) +
           WideTextSize(compound.formula) + 16;
}

std::uint64_t ReactionSize(const ReactionDefinition& reaction) {
    return WideTextSize(reaction.id) + WideTextSize(reaction.phase) + 8 + NarrowTextSize(reaction.rateEquation) +
           NarrowTextSize(reaction.equilibriumConstantEquation) + NarrowTextSize(reaction.heatEquation) +
           8 * std::uint64_t{reaction.stoichiometry.size()} + StoredExpressionSize(reaction.rateExpression.get()) +
           StoredExpressionSize(reaction.equilibriumConstantExpression.get()) +
           StoredExpressionSize(reaction.heatExpression.get()) + 4;
}

std::uint64_t BlockSize(const ReactionPackDefinition& definition) {
    std::uint64_t size = 20;  // marker, version, two counts, thermo version
    size += WideTextSize(definition.name) + WideTextSize(definition.description) + NarrowTextSize(definition.pcdFile);
    for (const auto& compound : definition.compounds) size += CompoundSize(*compound);
    for (const auto& reaction : definition.reactions) size += ReactionSize(*reaction);
    return size;
}

void WriteCompound(const CompoundDefinition& compound, CByteWriter& writer) {
    writer.WriteWideText(compound.id);
    writer.WriteWideText(compound.casNumber);
    writer.WriteWideText(compound.name);
    writer.WriteWideText(compound.formula);
    writer.WriteF64(compound.molecularWeight);
    writer.WriteF64(compound.charge);
}

void WriteReaction(const ReactionDefinition& reaction, CByteWriter& writer) {
    writer.WriteWideText(reaction.id);
    writer.WriteWideText(reaction.phase);
    writer.WriteI32(static_cast<std::int32_t>(reaction.type));
    writer.WriteI32(static_cast<std::int32_t>(reaction.rateBasis));
    writer.WriteNarrowText(reaction.rateEquation);
    writer.WriteNarrowText(reaction.equilibriumConstantEquation);
    writer.WriteNarrowText(reaction.heatEquation);
    for (const double& coefficient : reaction.stoichiometry) writer.WriteF64(coefficient);
    WriteStoredExpression(reaction.rateExpression.get(), writer);
    WriteStoredExpression(reaction.equilibriumConstantExpression.get(), writer);
    WriteStoredExpression(reaction.heatExpression.get(), writer);
    writer.WriteI32(static_cast<std::int32_t>(reaction.equilibriumBasis));
}

void WriteFields(const ReactionPackDefinition& definition, CByteWriter& writer) {
    writer.WriteWideText(definition.name);
    writer.WriteWideText(definition.description);
    writer.WriteNarrowText(definition.pcdFile);
    writer.WriteU32(versionMarker);
    writer.WriteU32(currentVersion);
    writer.WriteU32(static_cast<std::uint32_t>(definition.compounds.size()));
    for (const auto& compound : definition.compounds) WriteCompound(*compound, writer);
    writer.WriteU32(static_cast<std::uint32_t>(definition.reactions.size()));
    for (const auto& reaction : definition.reactions) WriteReaction(*reaction, writer);
    writer.WriteI32(static_cast<std::int32_t>(definition.thermoVersion));
}

}  // namespace

bool WriteStoredDefinition(const ReactionPackDefinition& definition, std::vector<std::uint8_t>& block,
                           std::u16string& errorText) noexcept {
    try {
        block.clear();
        const std::uint64_t size = BlockSize(definition);
        if (size <= static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) {
            block.reserve(static_cast<std::size_t>(size));
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
