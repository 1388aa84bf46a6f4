// SPDX-License-Identifier: MIT
// The component writes the newest form alone, and a fuzzer that begins with that one would hardly find its way into the
// older ones. So the older blocks are written here, and a bag turns what is written to it into answers: seeds that
// reach every branch of the readers from the first run on.

#include "SeedForms.h"

#include <algorithm>
#include <string>

#include "BagAnswers.h"
#include "capeopen/ArrayHelpers.h"
#include "persistence/ByteWriter.h"
#include "persistence/StoredExpression.h"
#include "persistence/WriteBag.h"
#include "platform/CodePage.h"

namespace reka::fuzz {

namespace {

void WriteCompound(const CompoundDefinition& compound, CByteWriter& writer) {
    writer.WriteWideText(compound.id);
    writer.WriteWideText(compound.casNumber);
    writer.WriteWideText(compound.name);
    writer.WriteWideText(compound.formula);
    writer.WriteF64(compound.molecularWeight);
    writer.WriteF64(compound.charge);
}

void WriteReaction(const ReactionDefinition& reaction, std::uint32_t version, CByteWriter& writer) {
    writer.WriteWideText(reaction.id);
    writer.WriteWideText(reaction.phase);
    if (version < 2) writer.WriteWideText(reaction.phase);  // the obsolete text
    writer.WriteI32(static_cast<std::int32_t>(reaction.type));
    writer.WriteI32(static_cast<std::int32_t>(reaction.rateBasis));
    writer.WriteNarrowText(reaction.rateEquation);
    writer.WriteNarrowText(reaction.equilibriumConstantEquation);
    writer.WriteNarrowText(reaction.heatEquation);
    for (const double coefficient : reaction.stoichiometry) writer.WriteF64(coefficient);
    WriteStoredExpression(reaction.rateExpression.get(), writer);
    WriteStoredExpression(reaction.equilibriumConstantExpression.get(), writer);
    WriteStoredExpression(reaction.heatExpression.get(), writer);
    if (version >= 2) writer.WriteI32(static_cast<std::int32_t>(reaction.equilibriumBasis));
}

/// Turns what is written to it into the answers of a bag that is read.
class CAnsweringBag : public IPropertyBag {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT*, IErrorLog*) override { return E_FAIL; }

    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT* value) override {
        switch (value->vt) {
            case VT_EMPTY:
                Kind(BagAnswer::Empty);
                return S_OK;
            case VT_BSTR:
                Kind(BagAnswer::Text);
                Text(value->bstrVal);
                return S_OK;
            case VT_ARRAY | VT_BSTR:
                Kind(BagAnswer::Texts);
                return Elements<BSTR>(*value, [&](BSTR text) { Text(text); });
            case VT_ARRAY | VT_R8:
                Kind(BagAnswer::Numbers);
                return Elements<double>(*value, [&](double number) { writer.WriteF64(number); });
            default:
                return E_FAIL;
        }
    }

    std::vector<std::uint8_t> answers = {1};  // with an error log

private:
    void Kind(BagAnswer kind) { writer.WriteU8(static_cast<std::uint8_t>(kind)); }
    void Length(std::size_t length) {
        writer.WriteU8(static_cast<std::uint8_t>(length & 0xFF));
        writer.WriteU8(static_cast<std::uint8_t>(length >> 8));
    }
    void Text(BSTR text) {
        if (!text) return Length(absentTextBit);
        const std::string bytes = NarrowText(StringFromBstr(text)).substr(0, longestText);
        Length(bytes.size());
        for (const char byte : bytes) writer.WriteU8(static_cast<std::uint8_t>(byte));
    }
    template <class Element, class WriteElement>
    HRESULT Elements(const VARIANT& value, WriteElement&& writeElement) {
        const SAFEARRAYBOUND& bound = value.parray->rgsabound[0];
        const auto count = static_cast<std::uint8_t>(std::min<std::size_t>(bound.cElements, 0xFF));
        writer.WriteU8(static_cast<std::uint8_t>(bound.lLbound));
        writer.WriteU8(count);
        for (std::size_t i = 0; i < count; ++i) writeElement(static_cast<const Element*>(value.parray->pvData)[i]);
        return S_OK;
    }

    CByteWriter writer{answers};
};

}  // namespace

std::vector<std::uint8_t> OldBlock(const ReactionPackDefinition& definition, std::uint32_t version) {
    std::vector<std::uint8_t> block;
    CByteWriter writer(block);
    writer.WriteWideText(definition.name);
    writer.WriteWideText(definition.description);
    writer.WriteNarrowText(definition.pcdFile);
    if (version > 0) {
        writer.WriteU32(0xFFFFFFFF);
        writer.WriteU32(version);
    }
    writer.WriteU32(static_cast<std::uint32_t>(definition.compounds.size()));
    for (const auto& compound : definition.compounds) WriteCompound(*compound, writer);
    writer.WriteU32(static_cast<std::uint32_t>(definition.reactions.size()));
    for (const auto& reaction : definition.reactions) WriteReaction(*reaction, version, writer);
    writer.WriteI32(static_cast<std::int32_t>(definition.thermoVersion));
    return block;
}

std::vector<std::uint8_t> BagAnswers(const ReactionPackDefinition& definition) {
    CAnsweringBag bag;
    WriteDefinitionToBag(definition, bag);
    return bag.answers;
}

}  // namespace reka::fuzz
