// SPDX-License-Identifier: MIT
// Whoever is called while a package is loaded or saved may let go of it: it lives until the call has returned. Whoever
// is given back at its end may call once more, and gets nothing into it.

#include <gtest/gtest.h>

#include "capeopen/ComObject.h"
#include "support/Builders.h"
#include "support/FakeBag.h"
#include "support/FakeEditor.h"
#include "support/FakeMaterial.h"
#include "support/FakeMessages.h"
#include "support/FakeReactionObject.h"
#include "support/FakeStream.h"
#include "support/StoredBytes.h"

namespace reka::test {
namespace {

/// A package that tells when it is destroyed.
class CWatchedPack : public CReactionPack {
public:
    ~CWatchedPack() override { ++destroyed; }
    static inline int destroyed = 0;
};

class PackageLife : public testing::Test {
protected:
    PackageLife() {
        CWatchedPack::destroyed = 0;
        auto definition = MakePackage({u"A", u"B"});
        AddKinetic(*definition, u"R", u"2*T").stoichiometry = {-1.0, 1.0};
        const CPackageHolder source(*definition);
        source->Save(&bag, 0, 0);
        source->Save(&stream, 0);
        bag.log.Clear();
        stream.log.Clear();
        package->AddRef();
        package->AssignDefinition(definition.get());
    }

    /// Lets go of the only reference at the call `last` of the bag or the stream.
    std::function<void(const std::string&)> ReleaseAt(const std::string& last) {
        return [this, last](const std::string& call) {
            if (call == last) Release();
        };
    }
    void Release() {
        EXPECT_EQ(package->Release(), 1U);  // the call's own is left
        EXPECT_EQ(CWatchedPack::destroyed, 0);
        isReleased = true;
    }
    void ExpectDestroyed() {
        EXPECT_TRUE(isReleased);
        EXPECT_EQ(CWatchedPack::destroyed, 1);
        EXPECT_EQ(bag.references.Held() + stream.references.Held(), 0);
    }

    CFakeBag bag;
    CFakeStream stream;
    CComObject<CWatchedPack>* package = new CComObject<CWatchedPack>();
    bool isReleased = false;
};

TEST_F(PackageLife, LastsWhileAStreamIsRead) {
    stream.log.onCall = ReleaseAt("Read 4");
    EXPECT_EQ(package->Load(&stream), S_OK);
    ExpectDestroyed();
}

TEST_F(PackageLife, LastsWhileAStreamThatEndsIsRead) {
    stream.bytes.resize(3);
    stream.log.onCall = ReleaseAt("Read 4");
    EXPECT_EQ(package->Load(&stream), S_FALSE);
    ExpectDestroyed();
}

TEST_F(PackageLife, LastsWhileAStreamIsWritten) {
    stream.log.onCall = ReleaseAt("Write 4");
    EXPECT_EQ(package->Save(&stream, 1), S_OK);
    ExpectDestroyed();
}

TEST_F(PackageLife, LastsWhileABagIsRead) {
    bag.log.onCall = ReleaseAt("Read Name");
    EXPECT_EQ(package->Load(&bag, nullptr), S_OK);
    ExpectDestroyed();
}

TEST_F(PackageLife, LastsWhileABagIsWritten) {
    bag.log.onCall = ReleaseAt("Write Name");
    EXPECT_EQ(package->Save(&bag, 1, 0), S_OK);
    ExpectDestroyed();
}

TEST_F(PackageLife, LastsWhileTheWarningIsOpen) {
    CStoredBytes block = CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(0).U32(1);
    block.Wide(u"R").Wide(u"").Wide(u"").U32(1).U32(0).Narrow("T").Narrow("").Narrow("").U8(0).U8(0).U8(0);
    stream.bytes = CStoredBytes().U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block).bytes;
    CFakeMessages messages;
    messages.onShow = [&] { Release(); };
    EXPECT_EQ(package->Load(&stream), S_OK);
    EXPECT_EQ(messages.shown.size(), 1U);
    ExpectDestroyed();
}

TEST(PackageEnd, TakesNothingWhateverItsObjectsSetMeanwhile) {
    CWatchedPack::destroyed = 0;
    CFakeEditor editor;
    editor.inPackage = [](ReactionPackDefinition&) { return true; };
    CReturning<CFakeObject> context;
    CReturning<CFakeMaterial> material({u"A", u"B"});
    CReturning<CFakeReactionObject> results;
    CFakeBag bag;
    CFakeStream stream;
    auto definition = MakePackage({u"A", u"B"});
    AddKinetic(*definition, u"R", u"2*T").stoichiometry = {-1.0, 1.0};
    auto* const package = new CComObject<CWatchedPack>();
    package->AddRef();
    package->put_simulationContext(&context);
    package->AssignDefinition(definition.get());
    package->Save(&bag, 0, 0);
    package->Save(&stream, 0);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    IDispatch* pointer = results.Dispatch();
    ASSERT_EQ(package->SetReactionObject(&pointer), S_OK);
    const std::size_t askedOfStream = stream.log.calls.size();
    const std::size_t askedOfBag = bag.log.calls.size();

    int returned = 0;
    context.onReturn = material.onReturn = results.onReturn = [&] {
        if (++returned > 100) return;
        EXPECT_EQ(CWatchedPack::destroyed, 0);
        EXPECT_EQ(package->put_simulationContext(&context), E_UNEXPECTED);
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), E_UNEXPECTED);
        IDispatch* materialPointer = material.Dispatch();
        EXPECT_EQ(package->SetMaterial(&materialPointer), E_UNEXPECTED);
        EXPECT_EQ(package->SetReactionObject(&pointer), E_UNEXPECTED);
        EXPECT_EQ(package->Initialize(), E_UNEXPECTED);
        EXPECT_EQ(package->Edit(), E_UNEXPECTED);
        EXPECT_EQ(package->Load(&stream), E_UNEXPECTED);
        EXPECT_EQ(package->Load(&bag, nullptr), E_UNEXPECTED);
        const CVariant props = Strings({u"ReactionRate"});
        EXPECT_EQ(package->CalcReactionProp(props.Get(), nullptr, {}, nullptr), E_UNEXPECTED);
        EXPECT_EQ(package->UnsetMaterial(), S_OK);
        EXPECT_EQ(package->Terminate(), S_OK);
    };
    EXPECT_EQ(package->Release(), 0U);
    EXPECT_EQ(CWatchedPack::destroyed, 1);
    EXPECT_EQ(returned, 4);  // the reaction object, the material, and the context of the package and its definition
    EXPECT_EQ(context.references.Held() + material.references.Held() + results.references.Held(), 0);
    EXPECT_EQ(editor.timesOpened, 0);
    EXPECT_EQ(stream.log.calls.size(), askedOfStream);
    EXPECT_EQ(bag.log.calls.size(), askedOfBag);
}

}  // namespace
}  // namespace reka::test
