// SPDX-License-Identifier: MIT
// A package in the system's own stream.

#include <gtest/gtest.h>

#include "support/Builders.h"

namespace reka::test {
namespace {

CComRef<IStream> MakeStream() {
    CComRef<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()), S_OK);
    return stream;
}

void Rewind(IStream& stream) {
    LARGE_INTEGER start;
    start.QuadPart = 0;
    EXPECT_EQ(stream.Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
}

TEST(StreamOnMemory, KeepsPackagesOneBehindTheOther) {
    const auto definition = MakePackage({u"First", u"Second"});
    AddKinetic(*definition, u"R", u"2*C(First)").stoichiometry = {-1.0, 1.0};
    const CPackageHolder saved(*definition);
    const auto stream = MakeStream();
    EXPECT_EQ(saved->Save(stream.Get(), 1), S_OK);
    EXPECT_EQ(saved->IsDirty(), S_FALSE);
    EXPECT_EQ(saved->Save(stream.Get(), 1), S_OK);
    Rewind(*stream);
    for (int i = 0; i < 2; ++i) {
        const CPackageHolder loaded;
        EXPECT_EQ(loaded->Load(stream.Get()), S_OK);
        EXPECT_EQ(loaded->Definition()->reactions[0]->rateEquation, u"2*C(First)");
        EXPECT_NE(loaded->Definition()->reactions[0]->rateExpression, nullptr);
    }
}

TEST(StreamOnMemory, ThatEndsEarlyLeavesThePackage) {
    const CPackageHolder package(*MakePackage({u"First", u"Second"}));
    const auto empty = MakeStream();
    EXPECT_NE(package->Load(empty.Get()), S_OK);
    EXPECT_EQ(package->Definition()->compounds.size(), 2U);
    const auto shortened = MakeStream();
    const std::uint8_t bytes[] = {100, 0, 0, 0, 1, 0, 0, 0, 'A', 0, 0, 0};
    EXPECT_EQ(shortened->Write(bytes, sizeof bytes, nullptr), S_OK);
    Rewind(*shortened);
    EXPECT_NE(package->Load(shortened.Get()), S_OK);
    EXPECT_EQ(package->Definition()->compounds.size(), 2U);
}

}  // namespace
}  // namespace reka::test
