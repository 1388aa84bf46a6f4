// SPDX-License-Identifier: MIT
// What the component relies on in the platform's automation types, the same of the system's own and of the stand-in.

#include "platform/Automation.h"

#include <gtest/gtest.h>

#include "support/CountedFake.h"

namespace reka::test {
namespace {

TEST(SysAllocString, TellsAbsentFromEmpty) {
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0U);
    const OLECHAR nothing[] = {0};
    BSTR empty = SysAllocString(nothing);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(SysStringLen(empty), 0U);
    EXPECT_EQ(empty[0], 0);
    SysFreeString(empty);
    SysFreeString(nullptr);
}

TEST(SysAllocStringLen, CopiesZerosAndEndsWithOne) {
    const OLECHAR characters[] = {'a', 0, 'b', 'c'};
    BSTR text = SysAllocStringLen(characters, 3);
    EXPECT_EQ(SysStringLen(text), 3U);
    EXPECT_EQ(text[2], 'b');
    EXPECT_EQ(text[3], 0);
    SysFreeString(text);
}

TEST(SafeArray, KeepsBoundsAndElements) {
    SAFEARRAYBOUND bound = {3, -1};
    SAFEARRAY* array = SafeArrayCreate(VT_R8, 1, &bound);
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(SafeArrayGetDim(array), 1U);
    EXPECT_EQ(SafeArrayGetElemsize(array), 8U);
    LONG lower = 0;
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetLBound(array, 1, &lower), S_OK);
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &upper), S_OK);
    EXPECT_EQ(lower, -1);
    EXPECT_EQ(upper, 1);
    EXPECT_TRUE(FAILED(SafeArrayGetLBound(array, 2, &lower)));
    EXPECT_TRUE(FAILED(SafeArrayGetUBound(array, 0, &upper)));
    double number = 2.5;
    LONG index = 1;
    EXPECT_EQ(SafeArrayPutElement(array, &index, &number), S_OK);
    number = 0.0;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), S_OK);
    EXPECT_EQ(number, 2.5);
    index = 0;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &number), S_OK);
    EXPECT_EQ(number, 0.0);
    for (const LONG outside : {LONG{-2}, LONG{2}}) {
        index = outside;
        EXPECT_TRUE(FAILED(SafeArrayGetElement(array, &index, &number)));
        EXPECT_TRUE(FAILED(SafeArrayPutElement(array, &index, &number)));
    }
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, HasAnUpperBoundBelowTheLowerOneWithoutElements) {
    SAFEARRAYBOUND bound = {0, 0};
    SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bound);
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 1, &upper), S_OK);
    EXPECT_EQ(upper, -1);
    SafeArrayDestroy(array);
}

TEST(SafeArray, CopiesStringsInAndOut) {
    SAFEARRAYBOUND bound = {2, 0};
    SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bound);
    const CBstr text = CBstr::Make(u"text");
    LONG index = 1;
    EXPECT_EQ(SafeArrayPutElement(array, &index, text.Get()), S_OK);
    CBstr out;
    EXPECT_EQ(SafeArrayGetElement(array, &index, out.Receive()), S_OK);
    EXPECT_NE(out.Get(), text.Get());
    EXPECT_EQ(out.View(), u"text");
    index = 0;
    EXPECT_EQ(SafeArrayGetElement(array, &index, out.Receive()), S_OK);
    EXPECT_TRUE(out.IsAbsent());
    EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), S_OK);  // not what one would think
    EXPECT_EQ(SafeArrayGetElement(array, &index, out.Receive()), S_OK);
    EXPECT_FALSE(out.IsAbsent());
    SafeArrayDestroy(array);
}

TEST(SafeArray, AddressesTwoDimensions) {
    SAFEARRAYBOUND bounds[2] = {{2, 0}, {3, 1}};
    SAFEARRAY* array = SafeArrayCreate(VT_R8, 2, bounds);
    EXPECT_EQ(SafeArrayGetDim(array), 2U);
    for (LONG i = 0; i < 2; ++i) {
        for (LONG j = 1; j < 4; ++j) {
            LONG indices[2] = {i, j};
            double number = 10.0 * i + j;
            EXPECT_EQ(SafeArrayPutElement(array, indices, &number), S_OK);
        }
    }
    LONG indices[2] = {1, 2};
    double number = 0.0;
    EXPECT_EQ(SafeArrayGetElement(array, indices, &number), S_OK);
    EXPECT_EQ(number, 12.0);
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &upper), S_OK);
    EXPECT_EQ(upper, 3);
    SafeArrayDestroy(array);
}

TEST(SafeArray, OfNothingHasNoDimension) {
    EXPECT_EQ(SafeArrayGetDim(nullptr), 0U);
    LONG bound = 0;
    EXPECT_TRUE(FAILED(SafeArrayGetLBound(nullptr, 1, &bound)));
    EXPECT_EQ(SafeArrayDestroy(nullptr), S_OK);
}

TEST(Variant, CopiesDeeply) {
    CFakeObject object;
    VARIANT dispatch;
    VariantInit(&dispatch);
    dispatch.vt = VT_DISPATCH;
    dispatch.pdispVal = &object;
    const CVariant strings = Strings({u"a", nullptr});
    {
        CVariant copy;
        EXPECT_EQ(CopyVariant(&copy.Get(), dispatch), S_OK);
        EXPECT_EQ(object.references.Held(), 1);
        EXPECT_EQ(CopyVariant(&copy.Get(), strings.Get()), S_OK);
        EXPECT_EQ(object.references.Held(), 0);
        EXPECT_NE(copy.Get().parray, strings.Get().parray);
        EXPECT_EQ(Show(copy.Get()), "['a', null]");
    }
    EXPECT_EQ(Show(strings.Get()), "['a', null]");
}

TEST(Variant, LeavesWhatItRefersToAlone) {
    CVariant strings = Strings({u"a"});
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    reference.pparray = &strings.Get().parray;
    EXPECT_EQ(VariantClear(&reference), S_OK);
    EXPECT_EQ(reference.vt, VT_EMPTY);
    EXPECT_EQ(Show(strings.Get()), "['a']");
}

TEST(Variant, OwnsTheVariantsOfItsArray) {
    CFakeObject object;
    {
        CVariant element;
        element.Get().vt = VT_UNKNOWN;
        element.Get().punkVal = &object;
        object.AddRef();
        std::vector<CVariant> elements;
        elements.push_back(std::move(element));
        const CVariant array = Variants(std::move(elements));
        EXPECT_EQ(object.references.Held(), 1);
    }
    EXPECT_EQ(object.references.Held(), 0);
}

}  // namespace
}  // namespace reka::test
