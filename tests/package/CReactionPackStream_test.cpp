// SPDX-License-Identifier: MIT
// The package in a stream: framing, results and what a failure leaves.

#include <gtest/gtest.h>

#include "capeopen/ClassIds.h"
#include "package/CReactionPack.h"
#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeMessages.h"
#include "support/FakeReactionObject.h"
#include "support/FakeStream.h"
#include "support/Garbage.h"
#include "support/StoredBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

using Lines = std::vector<std::string>;

std::unique_ptr<ReactionPackDefinition> MakeSample(const char16_t* name) {
    auto definition = MakePackage({u"A", u"B"});
    definition->name = CBstr::Make(name);
    AddKinetic(*definition, u"R", u"2*T").stoichiometry = {-1.0, 1.0};
    return definition;
}

/// The block of a package without a name, compounds and reactions.
CStoredBytes EmptyBlock() {
    return CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(0).U32(0).U32(0);
}

std::vector<std::uint8_t> Framed(const CStoredBytes& block) {
    return CStoredBytes().U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block).bytes;
}

/// A package that already has a definition, and a stream.
class PackageStream : public testing::Test {
protected:
    /// The package is what it was: it still has the definition named "before" and asks to be saved.
    void ExpectUntouched() {
        EXPECT_EQ(package->Definition(), before);
        EXPECT_EQ(package->Definition()->name.View(), u"before");
        EXPECT_EQ(package->IsDirty(), S_OK);
        EXPECT_EQ(stream.references.Held(), 0);
    }

    CFakeStream stream;
    CPackageHolder package{*MakeSample(u"before")};
    const ReactionPackDefinition* before = package->Definition();
};

TEST_F(PackageStream, KeepsTheDefinition) {
    EXPECT_EQ(package->Save(&stream, 1), S_OK);
    EXPECT_EQ(package->IsDirty(), S_FALSE);
    EXPECT_EQ(stream.log.calls, (Lines{"Write 4", "Write " + std::to_string(stream.bytes.size() - 4)}));
    CPackageHolder loaded;
    EXPECT_EQ(loaded->IsDirty(), S_FALSE);
    EXPECT_EQ(loaded->Load(&stream), S_OK);
    EXPECT_EQ(loaded->IsDirty(), S_FALSE);
    EXPECT_TRUE(loaded->Initialize() == S_OK);
    EXPECT_EQ(loaded->Definition()->name.View(), u"before");
    EXPECT_EQ(loaded->Definition()->workArraySize, 2U);
    EXPECT_NE(loaded->Definition()->molarity, nullptr);
    CFakeStream again;
    EXPECT_EQ(loaded->Save(&again, 0), S_OK);
    EXPECT_EQ(again.bytes, stream.bytes);
    EXPECT_EQ(stream.references.Held(), 0);
}

TEST_F(PackageStream, StaysDirtyWhenItIsToldSo) {
    EXPECT_EQ(package->Save(&stream, 0), S_OK);
    EXPECT_EQ(package->IsDirty(), S_OK);
}

TEST_F(PackageStream, TakesItsBytesFromWhereTheStreamStands) {
    stream.bytes = {9, 9};
    stream.position = 2;
    package->Save(&stream, 1);
    package->Save(&stream, 1);  // two packages, one behind the other
    CPackageHolder first;
    CPackageHolder second;
    EXPECT_EQ(first->Load(&stream), S_OK);
    EXPECT_EQ(second->Load(&stream), S_OK);
    EXPECT_EQ(stream.position, stream.bytes.size());
}

TEST_F(PackageStream, LoadsWhatItIsGiven) {
    stream.bytes = Framed(EmptyBlock());
    EXPECT_EQ(package->Load(&stream), S_OK);
    EXPECT_EQ(stream.log.calls, (Lines{"Read 4", "Read 32"}));
    EXPECT_TRUE(package->Definition()->name.IsAbsent());
    EXPECT_EQ(package->Definition()->workArraySize, 0U);
    EXPECT_EQ(package->IsDirty(), S_FALSE);
}

TEST_F(PackageStream, GivesBackTheResultOfAStreamThatEnds) {
    const auto whole = Framed(EmptyBlock());
    for (const HRESULT result : {S_FALSE, E_FAIL, static_cast<HRESULT>(0x8003001E)}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            stream.bytes.assign(whole.begin(), whole.begin() + static_cast<long>(size));
            stream.position = 0;
            stream.shortResult = result;
            EXPECT_EQ(package->Load(&stream), result) << size;
            ExpectUntouched();
        }
    }
}

TEST_F(PackageStream, BelievesNoStreamThatSaysItReadWhatItDidNot) {
    stream.shortResult = S_OK;
    const auto whole = Framed(EmptyBlock());
    constexpr std::size_t endOfMarker = 20;  // behind it zeros are a block too: its version, counts and thermo version
    for (std::size_t size = 0; size < endOfMarker; ++size) {
        LeaveGarbage(whole.size() - 4);
        stream.bytes.assign(whole.begin(), whole.begin() + static_cast<long>(size));
        stream.position = 0;
        EXPECT_EQ(package->Load(&stream), E_FAIL) << size;
        ExpectUntouched();
    }
    stream.bytes.assign(whole.begin(), whole.begin() + endOfMarker);
    stream.position = 0;
    EXPECT_EQ(package->Load(&stream), S_OK);
    EXPECT_TRUE(package->Definition()->compounds.empty());
}

TEST_F(PackageStream, GivesBackTheResultOfTheCallThatFailed) {
    const auto whole = Framed(EmptyBlock());
    for (const HRESULT result : {S_FALSE, E_ACCESSDENIED}) {
        stream.log.failCode = result;
        for (int call = 1; call <= 2; ++call) {
            stream.log.Clear();
            stream.log.failAt = call;
            stream.bytes = whole;
            stream.position = 0;
            EXPECT_EQ(package->Load(&stream), result);
            EXPECT_EQ(stream.log.calls.size(), static_cast<std::size_t>(call));
            ExpectUntouched();
            stream.log.Clear();
            EXPECT_EQ(package->Save(&stream, 1), result);
            EXPECT_EQ(stream.log.calls.size(), static_cast<std::size_t>(call));
            ExpectUntouched();
        }
    }
}

TEST_F(PackageStream, RefusesASizeThatIsNone) {
    for (const std::uint32_t size : {0xFFFFFFFFU, 0x80000000U}) {
        stream.bytes = CStoredBytes().U32(size).bytes;
        stream.position = 0;
        stream.log.Clear();
        EXPECT_EQ(package->Load(&stream), E_OUTOFMEMORY);
        EXPECT_EQ(stream.log.calls, Lines{"Read 4"});
        ExpectUntouched();
    }
}

TEST_F(PackageStream, FailsOnABlockThatIsNone) {
    for (const CStoredBytes& block : {CStoredBytes(), CStoredBytes().U8(1), EmptyBlock().U8(0)}) {
        stream.bytes = Framed(block);
        stream.position = 0;
        EXPECT_EQ(package->Load(&stream), E_FAIL);
        ExpectUntouched();
    }
    EXPECT_EQ(ErrorOf(package.Unknown()).name, "<null>");  // nobody is told why
}

TEST(PackageOutOfAStream, ComputesWithZeroWhatItsMaskHides) {
    constexpr std::size_t compoundCount = 8;
    CStoredBytes block = CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(compoundCount);
    for (const char16_t* const name : {u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H"}) {
        block.Wide(name).Wide(u"").Wide(name).Wide(u"").F64(1).F64(0);
    }
    block.U32(1).Wide(u"R").Wide(u"Liquid").U32(1).U32(0).Narrow("C(H)").Narrow("").Narrow("");
    for (std::size_t i = 0; i < compoundCount; ++i) block.F64(0);
    block.U8(1).U32(0).U32(30).U32(7);  // the molarity of the last compound, of which the mask says nothing
    block.U8(0).U8(0).U32(0).U32(0);
    CFakeStream stream;
    stream.bytes = Framed(block);
    CFakeMaterial material({u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H"});
    CFakeReactionObject results;
    IDispatch* pointer = results.Dispatch();
    const CPackageHolder package;
    LeaveGarbage(compoundCount * sizeof(double));
    ASSERT_EQ(package->Load(&stream), S_OK);
    ASSERT_EQ(package->SetReactionObject(&pointer), S_OK);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    material.log.Clear();
    const CVariant props = Strings({u"ReactionRate"});
    const CVariant ids = Strings({u"R"});
    const CBstr phase = CBstr::Make(u"Liquid");
    EXPECT_EQ(package->CalcReactionProp(props.Get(), phase.Get(), ids.Get(), nullptr), S_OK);
    EXPECT_EQ(results.log.calls, Lines{"SetReactionProp('ReactionRate', 'Liquid', ['R'], null, [0])"});
    EXPECT_TRUE(material.log.calls.empty());
    package->Terminate();
}

TEST_F(PackageStream, WarnsOfAnOldBlockAndIsNotDirty) {
    CFakeMessages messages;
    CStoredBytes block = CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(0).U32(1);
    block.Wide(u"R").Wide(u"").Wide(u"").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").U8(0).U8(0).U8(0);
    stream.bytes = Framed(block);
    EXPECT_EQ(package->Load(&stream), S_OK);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, u"REKA warning:");
    EXPECT_EQ(package->IsDirty(), S_FALSE);
    EXPECT_EQ(package->Definition()->reactions[0]->rateEquation, u"(T)/3.6");
}

TEST_F(PackageStream, LivesThroughAHostThatLetsGoWhileTheWarningIsOpen) {
    CFakeMessages messages;
    CStoredBytes block = CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(0).U32(1);
    block.Wide(u"R").Wide(u"").Wide(u"").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").U8(0).U8(0).U8(0);
    stream.bytes = Framed(block);
    messages.onShow = [&] {
        messages.onShow = nullptr;
        const auto other = MakeSample(u"meanwhile");
        package->AssignDefinition(other.get());
    };
    EXPECT_EQ(package->Load(&stream), S_OK);
    EXPECT_EQ(package->Definition()->reactions[0]->rateEquation, u"(T)/3.6");
}

TEST(PackageWithoutDefinition, StaysWithoutOneWhenALoadFails) {
    const CPackageHolder package;
    CFakeStream stream;
    const auto good = Framed(EmptyBlock());
    const std::vector<std::uint8_t> streams[] = {{}, {good.begin(), good.end() - 1}, Framed(EmptyBlock().U8(0))};
    const HRESULT results[] = {S_FALSE, S_FALSE, E_FAIL};
    for (std::size_t i = 0; i < 3; ++i) {
        stream.bytes = streams[i];
        stream.position = 0;
        EXPECT_EQ(package->Load(&stream), results[i]);
        EXPECT_EQ(package->Definition(), nullptr);
        EXPECT_EQ(package->IsDirty(), S_FALSE);
    }
    EXPECT_EQ(package->Initialize(), ECapeUnknownHR);
    EXPECT_EQ(ErrorOf(package.Unknown()).description, "Reaction package was not resolved or loaded");
}

TEST(PackageWithoutDefinition, CanNotBeSaved) {
    CPackageHolder package;
    CFakeStream stream;
    EXPECT_EQ(package->Save(&stream, 1), E_UNEXPECTED);
    EXPECT_EQ(package->Save(static_cast<IStream*>(nullptr), 1), E_UNEXPECTED);
    ULARGE_INTEGER size;
    size.QuadPart = 7;
    EXPECT_EQ(package->GetSizeMax(&size), E_UNEXPECTED);
    EXPECT_EQ(package->GetSizeMax(nullptr), E_POINTER);
    EXPECT_TRUE(stream.log.calls.empty());
}

TEST_F(PackageStream, TellsTheSizeOfTheBlockAlone) {
    ULARGE_INTEGER size;
    size.QuadPart = 0;
    EXPECT_EQ(package->GetSizeMax(&size), S_OK);
    package->Save(&stream, 0);
    EXPECT_EQ(size.QuadPart, stream.bytes.size() - 4);
    EXPECT_EQ(package->GetSizeMax(nullptr), E_POINTER);
}

TEST_F(PackageStream, RefusesNull) {
    EXPECT_EQ(package->Load(static_cast<IStream*>(nullptr)), E_POINTER);
    EXPECT_EQ(package->Save(static_cast<IStream*>(nullptr), 1), E_POINTER);
}

TEST_F(PackageStream, HasTheClassAndIdentityOfThePackage) {
    const auto persist = Ask<IPersistStream>(package.Unknown());
    ASSERT_TRUE(persist);
    CLSID classId = {};
    EXPECT_EQ(persist->GetClassID(&classId), S_OK);
    EXPECT_TRUE(classId == reactionPackClassId);
    EXPECT_EQ(persist->GetClassID(nullptr), E_POINTER);
    EXPECT_EQ(Ask<IUnknown>(persist.Get()).Get(), Ask<IUnknown>(package.Unknown()).Get());
}

TEST_F(PackageStream, KeepsAChangeThatAStreamMakesDirty) {
    stream.log.onCall = [&](const std::string& call) {
        if (call == "Write 4") package->put_ComponentName(nullptr);
    };
    EXPECT_EQ(package->Save(&stream, 1), S_OK);
    EXPECT_EQ(package->IsDirty(), S_OK);
}

}  // namespace
}  // namespace reka::test
