// SPDX-License-Identifier: MIT
// Stored blocks for the tests of rekatool, written by hand.

#pragma once

#include <string_view>

#include "support/StoredBytes.h"

namespace rekatool {

using reka::test::CStoredBytes;

/// A block up to its number of compounds.
inline CStoredBytes Head(std::u16string_view name, std::uint32_t version) {
    CStoredBytes bytes;
    bytes.Wide(name).Wide(u"").Narrow("");
    if (version > 0) bytes.U32(0xFFFFFFFF).U32(version);
    return bytes;
}

inline CStoredBytes EmptyBlock(std::u16string_view name, std::uint32_t version = 3) {
    return Head(name, version).U32(0).U32(0).U32(0);
}

/// The stored tree of the temperature, with its flag and mask.
inline CStoredBytes TemperatureTree() {
    return CStoredBytes().U8(1).U32(8).U32(29).U32(0);
}

/// A reaction of no compounds with the rate T.
inline CStoredBytes Reaction(std::uint32_t version, const CStoredBytes& rateTree) {
    CStoredBytes bytes;
    bytes.Wide(u"R").Wide(u"Vapor");
    if (version < 2) bytes.Wide(u"left over");
    bytes.U32(1).U32(0).Narrow("T").Narrow("").Narrow("").Add(rateTree).U8(0).U8(0);
    if (version >= 2) bytes.U32(4);
    return bytes;
}

inline CStoredBytes Framed(const CStoredBytes& block) {
    return CStoredBytes().U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block);
}

}  // namespace rekatool
