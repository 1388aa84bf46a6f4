// SPDX-License-Identifier: MIT
// Reading a definition, all versions. The fields come in the order of the layout in WriteStoredDefinition.h. What comes
// in is anybody's bytes: the cursor checks what is left before it moves, and a count makes no room before there are
// bytes for what it counts.

#include "persistence/ReadStoredDefinition.h"

#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <utility>

#include "expression/parse/ParseExpression.h"
#include "formula/FormulaNormalForm.h"
#include "persistence/ByteReader.h"
#include "persistence/StoredExpression.h"
#include "platform/Holders.h"
#include "platform/HostArithmetic.h"
#include "platform/OutOfMemoryText.h"
#include "platform/UserMessages.h"

namespace reka {

namespace {

constexpr std::uint32_t versionMarker = 0xFFFFFFFF;

// What a version brought.
constexpr std::uint32_t ratesInMolPerSecond = 1;
constexpr std::uint32_t noObsoleteText = 2;
constexpr std::uint32_t equilibriumBases = 2;
constexpr std::uint32_t formulasInNormalForm = 3;

void WarnOfCorrectedRates() {
    UserMessages().Show(
        {u"Old reaction package file format. Rate expressions have been corrected from kmol/h to mol/s "
         u"by factor 1/3.6",
         u"REKA warning:", messagestyle::iconExclamation | messagestyle::ok, MessageOwner::None});
}

/// The reading of one block.
class CDefinitionReader {
public:
    CDefinitionReader(ReactionPackDefinition& target, std::span<const std::uint8_t> bytes, std::u16string& reason)
        : definition(target), compounds(target), block(bytes), errorText(reason) {}

    bool Read() {
        std::int32_t compoundCount = 0;
        if (!ReadHead(compoundCount)) return Fail(u"data corrupted");
        for (std::int32_t i = 0; i < compoundCount; ++i) {
            definition.compounds.push_back(std::make_unique<CompoundDefinition>());
            if (!ReadCompound(*definition.compounds.back())) return Fail(u"data corrupted");
        }
        std::int32_t reactionCount = 0;
        if (!block.ReadI32(reactionCount)) return Fail(u"data corrupted");
        for (std::int32_t i = 0; i < reactionCount; ++i) {
            // The coefficients come with the record.
            definition.reactions.push_back(std::make_unique<ReactionDefinition>(0));
            if (!ReadReaction(*definition.reactions.back())) return false;
        }
        if (hasCorrectedRate) WarnOfCorrectedRates();
        return ReadThermoVersion();
    }

private:
    bool Fail(const char16_t* reason) {
        errorText = reason;
        return false;
    }

    /// Name, description, compound file, version and number of compounds.
    bool ReadHead(std::int32_t& compoundCount) {
        if (!block.ReadWideText(definition.name) || !block.ReadWideText(definition.description) ||
            !block.ReadNarrowText(definition.pcdFile)) {
            return false;
        }
        std::uint32_t word = 0;
        if (!block.ReadU32(word)) return false;
        if (word == versionMarker) return block.ReadU32(version) && block.ReadI32(compoundCount);
        version = 0;
        compoundCount = static_cast<std::int32_t>(word);
        return true;
    }

    bool ReadCompound(CompoundDefinition& compound) {
        if (!block.ReadWideText(compound.id) || !block.ReadWideText(compound.casNumber) ||
            !block.ReadWideText(compound.name) || !block.ReadWideText(compound.formula) ||
            !block.ReadF64(compound.molecularWeight) || !block.ReadF64(compound.charge)) {
            return false;
        }
        if (version < formulasInNormalForm && !compound.formula.IsAbsent()) {
            const COwnArithmetic arithmetic;
            compound.formula = BstrFromString(NormalizePcdFormula(StringFromBstr(compound.formula.Get())));
        }
        return true;
    }

    bool ReadReaction(ReactionDefinition& reaction) {
        if (!block.ReadWideText(reaction.id) || !block.ReadWideText(reaction.phase)) return Fail(u"data corrupted");
        CBstr obsolete;
        if (version < noObsoleteText && !block.ReadWideText(obsolete)) return Fail(u"data corrupted");
        if (block.Remaining() < 8) return Fail(u"invalid data");
        if (!ReadWord(reaction.type) || !ReadWord(reaction.rateBasis) || !block.ReadNarrowText(reaction.rateEquation) ||
            !block.ReadNarrowText(reaction.equilibriumConstantEquation) ||
            !block.ReadNarrowText(reaction.heatEquation) || !ReadCoefficients(reaction)) {
            return Fail(u"data corrupted");
        }
        if (!ReadStoredExpression(reaction.rateExpression, block, errorText) ||
            !ReadStoredExpression(reaction.equilibriumConstantExpression, block, errorText) ||
            !ReadStoredExpression(reaction.heatExpression, block, errorText)) {
            return false;
        }
        if (version >= equilibriumBases && !ReadWord(reaction.equilibriumBasis)) return Fail(u"data corrupted");
        return version >= ratesInMolPerSecond || CorrectRate(reaction);
    }

    /// A word that stands for one of the enumerations; what it holds isn't judged.
    template <class Enumeration>
    bool ReadWord(Enumeration& value) {
        std::int32_t word = 0;
        if (!block.ReadI32(word)) return false;
        value = static_cast<Enumeration>(word);
        return true;
    }

    bool ReadCoefficients(ReactionDefinition& reaction) {
        if (block.Remaining() / 8 < definition.compounds.size()) return false;
        reaction.stoichiometry.resize(definition.compounds.size());
        for (double& coefficient : reaction.stoichiometry) {
            if (!block.ReadF64(coefficient)) return false;
        }
        return true;
    }

    /// From kmol/h to mol/s. A rate that isn't there or is zero needs none of it.
    bool CorrectRate(ReactionDefinition& reaction) {
        if (reaction.rateEquation.empty() || reaction.rateEquation == u"0") return true;
        hasCorrectedRate = true;
        reaction.rateEquation = u"(" + reaction.rateEquation + u")/3.6";
        reaction.rateExpression.reset();
        std::u16string parserText;
        ExpressionTree tree = ParseExpression(compounds, reaction.rateEquation, parserText, nullptr);
        if (!tree) {
            errorText = u"Parse error for rate expression of old format file: " + parserText;
            return false;
        }
        reaction.rateExpression = std::make_unique<ExpressionRef>(std::move(tree));
        return true;
    }

    bool ReadThermoVersion() {
        if (!HasMore()) return true;
        if (!ReadWord(definition.thermoVersion)) return Fail(u"data corrupted");
        if (!HasMore()) return true;
        return Fail(
            u"unexpected data at the end of the stored reaction package data: reaction pack data may have been saved "
            u"with newer version");
    }

    bool HasMore() const { return block.Remaining() > 0; }

    ReactionPackDefinition& definition;
    CCompoundLookup compounds;  // for the expressions, which are read when all compounds are there
    CByteReader block;
    std::u16string& errorText;
    std::uint32_t version = 0;
    bool hasCorrectedRate = false;
};

}  // namespace

bool ReadStoredDefinition(ReactionPackDefinition& definition, std::span<const std::uint8_t> block,
                          std::u16string& errorText) noexcept {
    try {
        return CDefinitionReader(definition, block, errorText).Read();
    } catch (const std::exception&) {
        TellOutOfMemory(errorText);
        return false;
    }
}

}  // namespace reka
