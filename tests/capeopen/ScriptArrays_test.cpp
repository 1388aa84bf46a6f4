// SPDX-License-Identifier: MIT
// Lists as scripts read them, and as the members want what scripts pass.

#include "capeopen/ScriptArrays.h"

#include <gtest/gtest.h>

#include "capeopen/ArrayHelpers.h"
#include "support/Values.h"

namespace reka::test {
namespace {

/// The element at `index` of an array of variants.
CVariant ElementOf(const CVariant& list, LONG index) {
    CVariant element;
    EXPECT_EQ(SafeArrayGetElement(list.Get().parray, &index, &element.Get()), S_OK);
    return element;
}

TEST(ScriptArrays, HoldTheStringsOfAList) {
    CVariant list = StringArray({u"First", u"", u"Üben"}, 3);
    MakeReadableForScripts(list.Get());
    ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_VARIANT);
    LONG low = 0;
    LONG high = 0;
    EXPECT_EQ(SafeArrayGetLBound(list.Get().parray, 1, &low), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(list.Get().parray, 1, &high), S_OK);
    EXPECT_EQ(low, 3);
    EXPECT_EQ(high, 5);
    EXPECT_EQ(Show(ElementOf(list, 3).Get().bstrVal), "'First'");
    EXPECT_EQ(ElementOf(list, 4).Get().vt, VT_BSTR);
    EXPECT_EQ(TextOf(ElementOf(list, 5).Get().bstrVal), u"Üben");
}

TEST(ScriptArrays, HoldTheNumbersOfAList) {
    CVariant list = Numbers({1.5, -2});
    MakeReadableForScripts(list.Get());
    ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_VARIANT);
    EXPECT_EQ(ElementOf(list, 0).Get().vt, VT_R8);
    EXPECT_EQ(ElementOf(list, 0).Get().dblVal, 1.5);
    EXPECT_EQ(ElementOf(list, 1).Get().dblVal, -2);

    CVariant whole;
    ASSERT_TRUE(CreateArrayVariant(whole.Get(), 1, VT_I4));
    LONG index = 0;
    LONG number = 7;
    ASSERT_EQ(SafeArrayPutElement(whole.Get().parray, &index, &number), S_OK);
    MakeReadableForScripts(whole.Get());
    ASSERT_EQ(whole.Get().vt, VT_ARRAY | VT_VARIANT);
    EXPECT_EQ(ElementOf(whole, 0).Get().vt, VT_I4);
    EXPECT_EQ(ElementOf(whole, 0).Get().lVal, 7);
}

TEST(ScriptArrays, LeaveEverythingElse) {
    CVariant empty;
    CVariant text = Text(u"text");
    CVariant plane = TwoDimensions(VT_R8);
    CVariant none = Numbers({});
    std::vector<CVariant> elements;
    elements.push_back(Text(u"text"));
    CVariant variants = Variants(std::move(elements));
    CVariant hollow;
    hollow.Get().vt = VT_ARRAY | VT_BSTR;
    for (CVariant* value : {&empty, &text, &plane, &none, &variants, &hollow}) {
        const VARTYPE type = value->Get().vt;
        const void* const content = value->Get().byref;
        MakeReadableForScripts(value->Get());
        EXPECT_EQ(value->Get().vt, type);
        EXPECT_EQ(value->Get().byref, content);
    }
}

TEST(ScriptArrays, OfStringsBecomeLists) {
    std::vector<CVariant> elements;
    elements.push_back(Text(u"First"));
    elements.push_back(Text(u""));
    elements.push_back(Text(u"Üben"));
    CVariant list = Variants(std::move(elements));
    MakeReadableForMembers(list.Get());
    ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_BSTR);
    EXPECT_TRUE(HoldsElements(list.Get().parray, VT_BSTR));
    EXPECT_EQ(Show(list.Get()), "['First', '', 'Üben']");
}

TEST(ScriptArrays, OfNumbersBecomeLists) {
    std::vector<CVariant> elements(4);
    elements[0].Get().vt = VT_I2;
    elements[0].Get().iVal = -3;
    elements[1].Get().vt = VT_I4;
    elements[1].Get().lVal = 70000;
    elements[2].Get().vt = VT_R4;
    elements[2].Get().fltVal = 0.5F;
    elements[3].Get().vt = VT_R8;
    elements[3].Get().dblVal = 0.1;
    CVariant list = Variants(std::move(elements));
    MakeReadableForMembers(list.Get());
    ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_R8);
    EXPECT_TRUE(HoldsElements(list.Get().parray, VT_R8));
    EXPECT_EQ(NumbersIn(list.Get()), (std::vector<double>{-3, 70000, 0.5, 0.1}));
}

TEST(ScriptArrays, KeepTheirBounds) {
    CVariant list = StringArray({u"First", u"Second"}, 3);
    MakeReadableForScripts(list.Get());
    MakeReadableForMembers(list.Get());
    ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_BSTR);
    LONG low = 0;
    LONG high = 0;
    EXPECT_EQ(SafeArrayGetLBound(list.Get().parray, 1, &low), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(list.Get().parray, 1, &high), S_OK);
    EXPECT_EQ(low, 3);
    EXPECT_EQ(high, 4);
}

TEST(ScriptArrays, OfAnythingElseStay) {
    std::vector<CVariant> mixed;
    mixed.push_back(Text(u"text"));
    mixed.emplace_back().Get().vt = VT_I4;
    std::vector<CVariant> mixedToo;
    mixedToo.emplace_back().Get().vt = VT_I4;
    mixedToo.push_back(Text(u"text"));
    CVariant lists[] = {Variants(std::move(mixed)),
                        Variants(std::move(mixedToo)),
                        Variants(std::vector<CVariant>(1)),
                        Variants({}),
                        TwoDimensions(VT_VARIANT),
                        Numbers({1}),
                        Text(u"text"),
                        CVariant()};
    for (CVariant& list : lists) {
        const VARTYPE type = list.Get().vt;
        const void* const content = list.Get().byref;
        MakeReadableForMembers(list.Get());
        EXPECT_EQ(list.Get().vt, type);
        EXPECT_EQ(list.Get().byref, content);
    }
    CVariant hollow;
    hollow.Get().vt = VT_ARRAY | VT_VARIANT;
    MakeReadableForMembers(hollow.Get());
    EXPECT_EQ(hollow.Get().vt, VT_ARRAY | VT_VARIANT);
    CVariant mislabelled = Numbers({1});
    mislabelled.Get().vt = VT_ARRAY | VT_VARIANT;
    MakeReadableForMembers(mislabelled.Get());
    EXPECT_EQ(mislabelled.Get().vt, VT_ARRAY | VT_VARIANT);
    mislabelled.Get().vt = VT_ARRAY | VT_R8;  // for its end
}

}  // namespace
}  // namespace reka::test
