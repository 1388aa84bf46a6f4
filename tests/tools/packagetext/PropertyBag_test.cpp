// SPDX-License-Identifier: MIT
// The bag and the error log that a package is handed.

#include "packagetext/PropertyBag.h"

#include <gtest/gtest.h>

#include "packagetext/VariantArrays.h"

namespace packagetext {

namespace {

TEST(PropertyBag, GivesACopyOfWhatWasWritten) {
    const auto bag = MakeObject<CPropertyBag>();
    const reka::CBstr key = reka::CBstr::Make(u"Name");
    reka::CVariant written = VariantFromText(u"first");
    ASSERT_EQ(bag->Write(key.Get(), &written.Get()), S_OK);
    written = VariantFromText(u"second");
    reka::CVariant read;
    ASSERT_EQ(bag->Read(key.Get(), read.Receive(), nullptr), S_OK);
    EXPECT_EQ(reka::TextOf(read.Get().bstrVal), u"first");
}

TEST(PropertyBag, ReplacesAValueAndKeepsTheOrder) {
    const auto bag = MakeObject<CPropertyBag>();
    bag->Put(u"b", VariantFromText(u"1"));
    bag->Put(u"a", VariantFromText(u"2"));
    bag->Put(u"b", VariantFromText(u"3"));
    ASSERT_EQ(bag->Entries().size(), 2U);
    EXPECT_EQ(bag->Entries()[0].key, u"b");
    EXPECT_EQ(reka::TextOf(bag->Entries()[0].value.Get().bstrVal), u"3");
}

TEST(PropertyBag, RemembersWhatItWasAskedFor) {
    const auto bag = MakeObject<CPropertyBag>();
    bag->Put(u"a", VariantFromText(u"1"));
    bag->Put(u"b", VariantFromText(u"2"));
    for (const char16_t* const name : {u"d", u"a", u"c", u"d"}) {
        reka::CVariant read;
        bag->Read(reka::CBstr::Make(name).Get(), read.Receive(), nullptr);
    }
    EXPECT_TRUE(bag->WasAskedFor(u"a"));
    EXPECT_FALSE(bag->WasAskedFor(u"b"));
    EXPECT_TRUE(bag->WasAskedFor(u"c"));
    EXPECT_EQ(bag->MissedNames(), (std::vector<std::u16string>{u"d", u"c"}));
}

TEST(PropertyBag, FailsForANameThatIsNotThere) {
    const auto bag = MakeObject<CPropertyBag>();
    bag->Put(u"name", VariantFromText(u"1"));
    reka::CVariant read;
    EXPECT_EQ(bag->Read(reka::CBstr::Make(u"Name").Get(), read.Receive(), nullptr), E_INVALIDARG);
    EXPECT_EQ(read.Get().vt, VT_EMPTY);
    EXPECT_EQ(bag->Read(nullptr, read.Receive(), nullptr), E_POINTER);
}

TEST(PropertyBag, OffersItsInterfaceAlone) {
    const auto bag = MakeObject<CPropertyBag>();
    reka::CComRef<IPropertyBag> found;
    EXPECT_EQ(bag->QueryInterface(IID_IPropertyBag, reinterpret_cast<void**>(found.Receive())), S_OK);
    void* other = nullptr;
    EXPECT_EQ(bag->QueryInterface(IID_IErrorLog, &other), E_NOINTERFACE);
}

TEST(ErrorLog, CollectsReportsInTheirOrder) {
    const auto log = MakeObject<CErrorLog>();
    const reka::CBstr text = reka::CBstr::Make(u"array size mismatch");
    EXCEPINFO information = {};
    information.bstrDescription = text.Get();
    ASSERT_EQ(log->AddError(reka::CBstr::Make(u"compoundCAS").Get(), &information), S_OK);
    ASSERT_EQ(log->Reports().size(), 1U);
    EXPECT_EQ(log->Reports()[0].property, u"compoundCAS");
    EXPECT_EQ(log->Reports()[0].text, u"array size mismatch");
    EXPECT_EQ(log->AddError(text.Get(), nullptr), E_POINTER);
}

}  // namespace

}  // namespace packagetext
