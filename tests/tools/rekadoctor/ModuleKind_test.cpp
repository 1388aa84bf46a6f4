// SPDX-License-Identifier: MIT
// The headers of module files, whole and broken.

#include "ModuleKind.h"

#include <gtest/gtest.h>

#include "FakeComputer.h"

namespace rekadoctor {

namespace {

TEST(ModuleKind, IsTheMachineOfTheHeader) {
    EXPECT_EQ(KindOfModule(Module64()), ModuleKind::X64);
    EXPECT_EQ(KindOfModule(Module32()), ModuleKind::X86);
    EXPECT_EQ(KindOfModule(ModuleBytes(0xAA64)), ModuleKind::Other);  // ARM64
    EXPECT_EQ(KindOfModule(ModuleBytes(0)), ModuleKind::Other);
}

TEST(ModuleKind, IsNoneForEveryTruncation) {
    const std::vector<std::uint8_t> whole = Module64();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<std::uint8_t> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(KindOfModule(cut), ModuleKind::NotAModule) << length;
    }
}

TEST(ModuleKind, IsNoneWhereAMarkIsWrong) {
    for (const std::size_t place : {0U, 1U, 64U, 65U, 66U, 67U}) {
        std::vector<std::uint8_t> bytes = Module64();
        bytes[place] ^= 0xFF;
        EXPECT_EQ(KindOfModule(bytes), ModuleKind::NotAModule) << place;
    }
}

TEST(ModuleKind, IsNoneWhereTheHeaderLiesOutside) {
    std::vector<std::uint8_t> bytes = Module64();
    bytes[60] = 65;
    EXPECT_EQ(KindOfModule(bytes), ModuleKind::NotAModule);
    for (std::size_t i = 60; i < 64; ++i) bytes[i] = 0xFF;  // the greatest place there can be
    EXPECT_EQ(KindOfModule(bytes), ModuleKind::NotAModule);
}

TEST(ModuleKind, FindsAHeaderFurtherBehind) {
    std::vector<std::uint8_t> bytes = Module64();
    bytes.insert(bytes.begin() + 64, 0x100 - 64, 0);
    bytes[60] = 0;
    bytes[61] = 1;  // 0x100
    EXPECT_EQ(KindOfModule(bytes), ModuleKind::X64);
}

}  // namespace

}  // namespace rekadoctor
