// SPDX-License-Identifier: MIT
// Stored blocks for tests: put together by hand, read and written.

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"
#include "support/StoredBytes.h"
#include "text/Utf8.h"

namespace reka::test {

constexpr std::uint32_t versionMarker = 0xFFFFFFFF;

inline const char* const corrupted = "data corrupted";
inline const char* const newer =
    "unexpected data at the end of the stored reaction package data: reaction pack data may have been saved with newer "
    "version";

struct ReadBlock {
    bool isRead = false;
    std::unique_ptr<ReactionPackDefinition> definition = std::make_unique<ReactionPackDefinition>(nullptr);
    std::string errorText;
};

inline ReadBlock Read(const std::vector<std::uint8_t>& bytes) {
    ReadBlock block;
    std::u16string errorText;
    block.isRead = ReadStoredDefinition(*block.definition, bytes, errorText);
    block.errorText = Utf8FromUtf16(errorText);
    return block;
}
inline ReadBlock Read(const CStoredBytes& block) {
    return Read(block.bytes);
}

inline std::vector<std::uint8_t> Write(const ReactionPackDefinition& definition) {
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    EXPECT_TRUE(WriteStoredDefinition(definition, block, errorText)) << Utf8FromUtf16(errorText);
    return block;
}

/// A block up to the number of compounds: name, description and compound file empty.
inline CStoredBytes Head(std::uint32_t version) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").Narrow("");
    if (version > 0) bytes.U32(versionMarker).U32(version);
    return bytes;
}

inline CStoredBytes Compound(std::u16string_view id, std::u16string_view formula) {
    return CStoredBytes().Wide(id).Wide(u"").Wide(id).Wide(formula).F64(18.015).F64(0);
}

/// A reaction without coefficients and trees, as `version` has it.
inline CStoredBytes Reaction(std::uint32_t version, std::string_view rate, std::string_view constant = "") {
    CStoredBytes bytes;
    bytes.Wide(u"R").Wide(u"Vapor");
    if (version < 2) bytes.Wide(u"left over");
    bytes.U32(1).U32(0).Narrow(rate).Narrow(constant).Narrow("");
    bytes.U8(0).U8(0).U8(0);
    if (version >= 2) bytes.U32(4);
    return bytes;
}

}  // namespace reka::test
