// SPDX-License-Identifier: MIT
// Lists in and out of a VARIANT.

#include "packagetext/VariantArrays.h"

#include <gtest/gtest.h>

namespace packagetext {

namespace {

TEST(VariantArrays, KeepTextsAndTheirAbsence) {
    const std::vector<NullableText> texts = {u"a", std::nullopt, u"", u"Größe"};
    const reka::CVariant variant = VariantFromTexts(texts);
    EXPECT_EQ(variant.Get().vt, VT_ARRAY | VT_BSTR);
    std::vector<NullableText> read;
    ASSERT_TRUE(ReadNullableTexts(variant.Get(), read));
    EXPECT_EQ(read, texts);
}

TEST(VariantArrays, ReadAnAbsentTextAsAnEmptyOneWhereThatIsEnough) {
    const reka::CVariant variant = VariantFromTexts(std::vector<NullableText>{u"a", std::nullopt});
    std::vector<std::u16string> read;
    ASSERT_TRUE(ReadTexts(variant.Get(), read));
    EXPECT_EQ(read, (std::vector<std::u16string>{u"a", u""}));
}

TEST(VariantArrays, KeepNumbers) {
    const std::vector<double> numbers = {1.5, -2, 0};
    const reka::CVariant variant = VariantFromNumbers(numbers);
    EXPECT_EQ(variant.Get().vt, VT_ARRAY | VT_R8);
    std::vector<double> read;
    ASSERT_TRUE(ReadNumbers(variant.Get(), read));
    EXPECT_EQ(read, numbers);
}

TEST(VariantArrays, AreEmptyForAnEmptyList) {
    EXPECT_EQ(VariantFromNumbers({}).Get().vt, VT_EMPTY);
    std::vector<double> read = {1};
    EXPECT_TRUE(ReadNumbers(reka::CVariant().Get(), read));
    EXPECT_TRUE(read.empty());
}

TEST(VariantArrays, AcceptAnyLowerBound) {
    SAFEARRAYBOUND bound = {2, 5};
    reka::CVariant variant;
    variant.Get().parray = SafeArrayCreate(VT_R8, 1, &bound);
    variant.Get().vt = VT_ARRAY | VT_R8;
    LONG index = 6;
    double number = 7;
    SafeArrayPutElement(variant.Get().parray, &index, &number);
    std::vector<double> read;
    ASSERT_TRUE(ReadNumbers(variant.Get(), read));
    EXPECT_EQ(read, (std::vector<double>{0, 7}));
}

TEST(VariantArrays, RefuseAnotherTypeOrMoreDimensions) {
    std::vector<double> numbers;
    std::vector<std::u16string> texts;
    EXPECT_FALSE(ReadNumbers(VariantFromText(u"1").Get(), numbers));
    EXPECT_FALSE(ReadNumbers(VariantFromTexts(std::vector<std::u16string>{u"1"}).Get(), numbers));
    EXPECT_FALSE(ReadTexts(VariantFromNumbers({1}).Get(), texts));
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    reka::CVariant square;
    square.Get().parray = SafeArrayCreate(VT_R8, 2, bounds);
    square.Get().vt = VT_ARRAY | VT_R8;
    EXPECT_FALSE(ReadNumbers(square.Get(), numbers));
}

TEST(VariantArrays, NestVariants) {
    std::vector<reka::CVariant> values(2);
    values[0] = VariantFromText(u"x");
    const reka::CVariant variant = VariantFromVariants(values);
    EXPECT_EQ(variant.Get().vt, VT_ARRAY | VT_VARIANT);
    LONG index = 0;
    reka::CVariant element;
    ASSERT_EQ(SafeArrayGetElement(variant.Get().parray, &index, &element.Get()), S_OK);
    ASSERT_EQ(element.Get().vt, VT_BSTR);
    EXPECT_EQ(reka::TextOf(element.Get().bstrVal), u"x");
}

}  // namespace

}  // namespace packagetext
