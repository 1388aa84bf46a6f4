// SPDX-License-Identifier: MIT
// The package in a simulator's document, as bytes: a u32 with the size of the block, and the block as
// WriteStoredDefinition.h has it. Nothing refers to a template or to a file, so a document stands for itself.

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "package/CReactionPack.h"
#include "persistence/ByteReader.h"
#include "persistence/ByteWriter.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"

namespace reka {

namespace {

constexpr ULONG sizeWordBytes = 4;

struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

bool HasFailed(HRESULT result) {
    return result == S_FALSE || FAILED(result);
}

/// `E_OUTOFMEMORY` for a size that is negative as a signed number, or more than there is. The block is zeroed, since a
/// stream may say that it has read what it hasn't.
HRESULT ReadBlock(IStream& stream, std::unique_ptr<std::uint8_t, FreeMemory>& block, std::uint32_t& size) {
    std::uint8_t sizeWord[sizeWordBytes] = {};
    ULONG got = 0;  // not looked at: the result alone tells
    HRESULT result = stream.Read(sizeWord, sizeWordBytes, &got);
    if (HasFailed(result)) return result;
    CByteReader(sizeWord).ReadU32(size);
    if (size > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) return E_OUTOFMEMORY;
    block.reset(static_cast<std::uint8_t*>(std::calloc(size == 0 ? 1 : size, 1)));
    if (!block) return E_OUTOFMEMORY;
    result = stream.Read(block.get(), size, &got);
    return HasFailed(result) ? result : S_OK;
}

}  // namespace

HRESULT CReactionPack::IsDirty() {
    return dirty ? S_OK : S_FALSE;
}

HRESULT CReactionPack::Load(IStream* stream) {
    if (!stream) return E_POINTER;
    return LoadAside(E_OUTOFMEMORY, [&](ReactionPackDefinition& loaded) -> HRESULT {
        std::unique_ptr<std::uint8_t, FreeMemory> block;
        std::uint32_t size = 0;
        const HRESULT result = ReadBlock(*stream, block, size);
        if (result != S_OK) return result;
        std::u16string errorText;  // there is nobody to be told
        return ReadStoredDefinition(loaded, std::span(block.get(), size), errorText) ? S_OK : E_FAIL;
    });
}

HRESULT CReactionPack::Save(IStream* stream, BOOL clearDirty) {
    if (!definition) return E_UNEXPECTED;
    if (!stream) return E_POINTER;
    return SaveAsItIs(clearDirty, [&](const ReactionPackDefinition& saved) -> HRESULT {
        std::vector<std::uint8_t> block;
        std::u16string errorText;
        if (!WriteStoredDefinition(saved, block, errorText)) return E_FAIL;
        const auto size = static_cast<ULONG>(block.size());
        std::vector<std::uint8_t> sizeWord;
        CByteWriter(sizeWord).WriteU32(size);
        ULONG written = 0;
        const HRESULT result = stream->Write(sizeWord.data(), sizeWordBytes, &written);
        if (HasFailed(result)) return result;
        const HRESULT blockResult = stream->Write(block.data(), size, &written);
        return HasFailed(blockResult) ? blockResult : S_OK;
    });
}

HRESULT CReactionPack::GetSizeMax(ULARGE_INTEGER* size) {
    if (!size) return E_POINTER;
    if (!definition) return E_UNEXPECTED;
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    if (!WriteStoredDefinition(*definition, block, errorText)) return E_FAIL;
    size->QuadPart = block.size();  // of the block alone, without its size word
    return S_OK;
}

}  // namespace reka
