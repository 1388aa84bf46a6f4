// SPDX-License-Identifier: MIT
// What the component would read, asked without its message boxes.

#include "packagetext/StoredBlock.h"

#include <gtest/gtest.h>

#include "support/FakeMessages.h"
#include "support/StoredBytes.h"

namespace packagetext {

namespace {

using reka::test::CStoredBytes;

/// A block of version 0 with a reaction of no compounds, whose rate the component corrects.
CStoredBytes OldBlock(std::string_view rate) {
    CStoredBytes block;
    block.Wide(u"A").Wide(u"").Narrow("").U32(0).U32(1).Wide(u"R").Wide(u"").Wide(u"").U32(1).U32(0);
    return block.Narrow(rate).Narrow("").Narrow("").U8(0).U8(0).U8(0);
}

std::string ReasonOf(const CStoredBytes& block) {
    const BlockReading reading = TryBlock(block.bytes);
    return reading.isReadable ? "readable: " + reading.name : reading.reason;
}

TEST(StoredBlock, IsReadableOrHasAReason) {
    CStoredBytes block = CStoredBytes().Wide(u"A").Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(0).U32(0).U32(0);
    EXPECT_EQ(ReasonOf(block), "readable: A");
    EXPECT_EQ(ReasonOf(CStoredBytes().Wide(u"A")), "data corrupted");
    EXPECT_EQ(ReasonOf(block.U32(0)),
              "unexpected data at the end of the stored reaction package data: reaction pack data may have been saved "
              "with newer version");
    EXPECT_EQ(ReasonOf(OldBlock("T*")),
              "Parse error for rate expression of old format file: syntax error, unexpected ')'");
}

TEST(StoredBlock, ShowsNoBox) {
    reka::test::CFakeMessages messages;
    EXPECT_EQ(ReasonOf(OldBlock("2*T")), "readable: A");
    EXPECT_TRUE(messages.shown.empty());
    reka::UserMessages().ShowError(u"the boxes are back");
    EXPECT_EQ(messages.shown.size(), 1U);
}

}  // namespace

}  // namespace packagetext
