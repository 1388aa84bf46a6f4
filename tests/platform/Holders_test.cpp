// SPDX-License-Identifier: MIT
// The holders of what the platform hands out: what each takes over, lends and gives away.

#include "platform/Holders.h"

#include <gtest/gtest.h>

#include "support/CountedFake.h"

namespace reka::test {
namespace {

TEST(CBstr, TellsAbsentFromEmpty) {
    EXPECT_TRUE(CBstr().IsAbsent());
    EXPECT_FALSE(CBstr::Make(u"").IsAbsent());
    EXPECT_TRUE(CBstr::CopyOf(nullptr).IsAbsent());
    EXPECT_FALSE(CBstr::CopyOf(CBstr::Make(u"").Get()).IsAbsent());
    EXPECT_EQ(CBstr().Copy(), nullptr);
    EXPECT_EQ(CBstr().View(), u"");
}

TEST(CBstr, MovesAndTakesOver) {
    CBstr text = CBstr::Make(u"text");
    BSTR const held = text.Get();
    CBstr other = std::move(text);
    EXPECT_EQ(other.Get(), held);
    other = CBstr::Make(u"next");
    EXPECT_EQ(other.View(), u"next");
    const CBstr copy(other.Copy());
    EXPECT_NE(copy.Get(), other.Get());
    EXPECT_EQ(copy.View(), u"next");
    CBstr given(other.Detach());
    EXPECT_TRUE(other.IsAbsent());
    EXPECT_EQ(*given.Receive(), nullptr);
}

TEST(CBstr, EndsAtItsFirstZero) {
    const OLECHAR characters[] = {'a', 0, 'b'};
    const CBstr text(SysAllocStringLen(characters, 3));
    EXPECT_EQ(text.View(), u"a");
    EXPECT_EQ(SysStringLen(CBstr(text.Copy()).Get()), 1U);
}

TEST(CComRef, CountsWhatItHolds) {
    CFakeObject object;
    CFakeObject other;
    {
        CComRef<IDispatch> first(&object);
        EXPECT_EQ(object.references.Held(), 1);
        CComRef<IDispatch> second = first;
        EXPECT_EQ(object.references.Held(), 2);
        CComRef<IDispatch> third = std::move(second);
        EXPECT_EQ(object.references.Held(), 2);
        EXPECT_FALSE(second);
        first = CComRef<IDispatch>(&other);
        EXPECT_EQ(object.references.Held(), 1);
        EXPECT_EQ(other.references.Held(), 1);
        third = first;
        EXPECT_EQ(object.references.Held(), 0);
        third = *&third;
        EXPECT_EQ(other.references.Held(), 2);
        third.Reset();
        EXPECT_EQ(other.references.Held(), 1);
        IDispatch* const given = first.Detach();
        EXPECT_EQ(other.references.Held(), 1);
        given->Release();
    }
    EXPECT_EQ(object.references.Held() + other.references.Held(), 0);
}

TEST(CComRef, IsClearedBeforeTheObjectHearsOfIt) {
    class CCurious : public CFakeObject {
    public:
        ULONG STDMETHODCALLTYPE Release() override {
            isCleared = !watched->Get();
            return CFakeObject::Release();
        }
        CComRef<IDispatch>* watched = nullptr;
        bool isCleared = false;
    };
    CCurious object;
    CComRef<IDispatch> held(&object);
    object.watched = &held;
    held.Reset();
    EXPECT_TRUE(object.isCleared);
}

TEST(CVariant, GivesAndTakes) {
    CVariant value = Text(u"a");
    CVariant moved = std::move(value);
    EXPECT_EQ(Show(value.Get()), "empty");
    EXPECT_EQ(Show(moved.Get()), "'a'");
    value.Reset(moved.Detach());
    EXPECT_EQ(Show(value.Get()), "'a'");
    EXPECT_EQ(value.Receive()->vt, VT_EMPTY);
}

}  // namespace
}  // namespace reka::test
