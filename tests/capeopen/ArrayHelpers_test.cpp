// SPDX-License-Identifier: MIT
// The two readers of lists, in what they take and in what they say, and the makers of lists.

#include "capeopen/ArrayHelpers.h"

#include <gtest/gtest.h>

#include "support/Values.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr const char* wrongBstr = "invalid type; array of type BSTR expected";
constexpr const char* wrongReal = "invalid type; array of type REAL expected";
constexpr const char* wrongVariant = "invalid type; array of type VARIANT expected";
constexpr const char* wrongLowerBound = "unexpected array dimensions; expected 0 for lower bound";
constexpr const char* noElements = "unexpected array dimensions; negative upper bound";
constexpr const char* wrongDimension = "unexpected dimension; 1-dimensional array expected";

CVariant NullArray(VARTYPE elementType) {
    CVariant made;
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    made.Get().parray = nullptr;
    return made;
}

CVariant SingleNumber() {
    CVariant made;
    made.Get().vt = VT_R8;
    made.Get().dblVal = 1.0;
    return made;
}

CVariant NullVariant() {
    CVariant made;
    made.Get().vt = VT_NULL;
    return made;
}

/// An array whose variant claims another element type than the array has.
CVariant Mislabelled(CVariant array, VARTYPE claimed) {
    array.Get().vt = static_cast<VARTYPE>(VT_ARRAY | claimed);
    return array;
}

CVariant ManyVariants(std::size_t count) {
    std::vector<CVariant> elements(count);
    return Variants(std::move(elements));
}

/// Each shape of value, and what the three ways of reading it strictly and the lenient one make of it.
struct ReadingCase {
    const char* name;
    CVariant (*value)();
    const char* asStrings;  // null: accepted
    const char* asNumbers;
    const char* asVariants;
    std::int32_t count;     // where it is accepted strictly
    const char* leniently;  // null: accepted
    std::size_t listLength;
};

const ReadingCase readingCases[] = {
    {"Empty", [] { return CVariant(); }, nullptr, nullptr, nullptr, 0, "expected a string array", 0},
    {"Null", NullVariant, wrongBstr, wrongReal, wrongVariant, 0, "expected a string array", 0},
    {"SingleString", [] { return Text(u"a"); }, wrongBstr, wrongReal, wrongVariant, 0, "expected a string array", 0},
    {"SingleNumber", SingleNumber, wrongBstr, wrongReal, wrongVariant, 0, "expected a string array", 0},
    {"Strings",
     [] {
         return Strings({u"a", nullptr});
     },
     nullptr, wrongReal, wrongVariant, 2, nullptr, 2},
    {"Numbers",
     [] {
         return Numbers({1.0, 2.0, 3.0});
     },
     wrongBstr, nullptr, wrongVariant, 3, "expected a string array", 0},
    {"Variants", [] { return ManyVariants(2); }, wrongBstr, wrongReal, nullptr, 2, "expected a string array", 0},
    {"NoStrings", [] { return Strings({}); }, noElements, wrongReal, wrongVariant, 0, nullptr, 0},
    {"NoNumbers", [] { return Numbers({}); }, wrongBstr, noElements, wrongVariant, 0, "expected a string array", 0},
    {"NoVariants", [] { return ManyVariants(0); }, wrongBstr, wrongReal, noElements, 0, "expected a string array", 0},
    {"StringsFromOneToThree",
     [] {
         return StringArray({u"a", u"b", u"c"}, 1);
     },
     wrongLowerBound, wrongReal, wrongVariant, 0, nullptr, 3},
    {"StringsFromMinusOne",
     [] {
         return StringArray({u"a", u"b"}, -1);
     },
     wrongLowerBound, wrongReal, wrongVariant, 0, nullptr, 2},
    {"NoStringsFromOne", [] { return StringArray({}, 1); }, wrongLowerBound, wrongReal, wrongVariant, 0, nullptr, 0},
    {"NumbersFromOne", [] { return Numbers({1.0}, 1); }, wrongBstr, wrongLowerBound, wrongVariant, 0,
     "expected a string array", 0},
    {"TwoDimensionsOfStrings", [] { return TwoDimensions(VT_BSTR); }, wrongDimension, wrongReal, wrongVariant, 0,
     "expected a string array with dimension of 1", 0},
    {"TwoDimensionsOfNumbers", [] { return TwoDimensions(VT_R8); }, wrongBstr, wrongDimension, wrongVariant, 0,
     "expected a string array", 0},
    {"NullStringArray", [] { return NullArray(VT_BSTR); }, wrongDimension, wrongReal, wrongVariant, 0,
     "expected a string array with dimension of 1", 0},
    {"NullNumberArray", [] { return NullArray(VT_R8); }, wrongBstr, wrongDimension, wrongVariant, 0,
     "expected a string array", 0},
    {"NumbersThatClaimToBeStrings", [] { return Mislabelled(Numbers({1.0}), VT_BSTR); }, wrongBstr, wrongReal,
     wrongVariant, 0, "expected a string array", 0},
    {"VariantsThatClaimToBeNumbers", [] { return Mislabelled(ManyVariants(1), VT_R8); }, wrongBstr, wrongReal,
     wrongVariant, 0, "expected a string array", 0},
};

TEST(CheckArrayVariant, BelievesNoArrayOfPointersWithoutARecordOfItsType) {
    std::u16string errorText;
    CVariant value = Numbers({1.0});
    value.Get().parray->fFeatures = static_cast<USHORT>(value.Get().parray->fFeatures & ~FADF_HAVEVARTYPE);
    EXPECT_EQ(CheckArrayVariant(value.Get(), VT_R8, errorText), 1);
    value.Get().vt = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(CheckArrayVariant(value.Get(), VT_BSTR, errorText), -1);
    EXPECT_EQ(Utf8FromUtf16(errorText), wrongBstr);
    CVariant strings = Strings({u"a"});
    strings.Get().parray->fFeatures = static_cast<USHORT>(strings.Get().parray->fFeatures & ~FADF_HAVEVARTYPE);
    EXPECT_EQ(CheckArrayVariant(strings.Get(), VT_BSTR, errorText), 1);  // flagged as strings
}

class ArrayReading : public testing::TestWithParam<ReadingCase> {
protected:
    static void ExpectStrict(const CVariant& value, VARTYPE elementType, const char* text) {
        std::u16string errorText = u"left";
        const std::int32_t count = CheckArrayVariant(value.Get(), elementType, errorText);
        EXPECT_EQ(count, text ? -1 : GetParam().count);
        EXPECT_EQ(Utf8FromUtf16(errorText), text ? text : "left");
    }
};

TEST_P(ArrayReading, IsStrictForASimulatorsValues) {
    const CVariant value = GetParam().value();
    ExpectStrict(value, VT_BSTR, GetParam().asStrings);
    ExpectStrict(value, VT_R8, GetParam().asNumbers);
    ExpectStrict(value, VT_VARIANT, GetParam().asVariants);
}

TEST_P(ArrayReading, IsLenientForStringLists) {
    const CVariant value = GetParam().value();
    std::vector<std::u16string> list = {u"left"};
    const CBstr error = ReadStringArray(list, value.Get());
    EXPECT_EQ(Show(error.Get()), GetParam().leniently ? "'" + std::string(GetParam().leniently) + "'" : "null");
    EXPECT_EQ(list.size(), GetParam().listLength);
}

TEST_P(ArrayReading, RefusesEverythingByReference) {
    CVariant value = GetParam().value();
    if (!(value.Get().vt & VT_ARRAY)) return;
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = static_cast<VARTYPE>(value.Get().vt | VT_BYREF);
    reference.pparray = &value.Get().parray;
    std::u16string errorText;
    EXPECT_EQ(CheckArrayVariant(reference, VT_BSTR, errorText), -1);
    EXPECT_EQ(Utf8FromUtf16(errorText), wrongBstr);
    std::vector<std::u16string> list;
    EXPECT_EQ(Show(ReadStringArray(list, reference).Get()), "'expected a string array'");
}
INSTANTIATE_TEST_SUITE_P(Table, ArrayReading, testing::ValuesIn(readingCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CheckArrayVariant, NamesAnElementTypeThatItDoesNotKnow) {
    std::u16string errorText;
    const CVariant value = Numbers({1.0});
    EXPECT_EQ(CheckArrayVariant(value.Get(), VT_I4, errorText), -1);
    EXPECT_EQ(Utf8FromUtf16(errorText), "invalid type; array of type <unknown> expected");
}

TEST(ReadStringArray, KeepsTheOrderAndTakesNullForEmpty) {
    std::vector<std::u16string> list;
    const CVariant value = Strings({u"a", nullptr, u"c"});
    EXPECT_TRUE(ReadStringArray(list, value.Get()).IsAbsent());
    EXPECT_EQ(list, (std::vector<std::u16string>{u"a", u"", u"c"}));
}

TEST(CreateArrayVariant, MakesZeroedElementsFromZeroOn) {
    CVariant value;
    ASSERT_TRUE(CreateArrayVariant(value.Get(), 2, VT_BSTR));
    EXPECT_EQ(value.Get().vt, VT_ARRAY | VT_BSTR);
    EXPECT_EQ(Show(value.Get()), "[null, null]");
    LONG lowerBound = -1;
    SafeArrayGetLBound(value.Get().parray, 1, &lowerBound);
    EXPECT_EQ(lowerBound, 0);
}

TEST(CreateArrayVariant, LeavesTheVariantAloneWhenItFails) {
    CVariant value = Text(u"left");
    EXPECT_FALSE(CreateArrayVariant(value.Get(), -1, VT_BSTR));
    EXPECT_EQ(Show(value.Get()), "'left'");
}

TEST(CreateListVariant, MakesNoArrayForNoElements) {
    VARIANT value;
    value.vt = VT_R8;
    EXPECT_TRUE(CreateListVariant(value, 0, VT_R8, [](SAFEARRAY&, LONG) { return E_FAIL; }));
    EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(CreateListVariant, LeavesAnEmptyVariantWhenAnElementCannotBeStored) {
    VARIANT value;
    EXPECT_FALSE(CreateListVariant(value, 3, VT_BSTR, [](SAFEARRAY& array, LONG index) {
        return index == 2 ? E_OUTOFMEMORY : PutString(array, index, std::u16string_view(u"text"));
    }));
    EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST(PutString, MakesAnAbsentTextANullElement) {
    CVariant value = Strings({u"a", u"b"});
    EXPECT_EQ(PutString(*value.Get().parray, 1, static_cast<BSTR>(nullptr)), S_OK);
    EXPECT_EQ(Show(value.Get()), "['a', null]");
    EXPECT_EQ(PutString(*value.Get().parray, 0, std::u16string_view()), S_OK);
    EXPECT_EQ(Show(value.Get()), "[null, null]");
    EXPECT_EQ(PutString(*value.Get().parray, 0, CBstr::Make(u"").Get()), S_OK);
    EXPECT_EQ(Show(value.Get()), "['', null]");
    EXPECT_EQ(PutString(*value.Get().parray, 2, static_cast<BSTR>(nullptr)), DISP_E_BADINDEX);
    EXPECT_EQ(PutString(*value.Get().parray, -1, static_cast<BSTR>(nullptr)), DISP_E_BADINDEX);
}

TEST(Strings, AreAbsentWhenTheyAreEmptyText) {
    EXPECT_TRUE(BstrFromString(std::u16string_view()).IsAbsent());
    EXPECT_TRUE(BstrFromString(static_cast<BSTR>(nullptr)).IsAbsent());
    const CBstr empty = CBstr::Make(u"");
    EXPECT_FALSE(empty.IsAbsent());
    EXPECT_TRUE(BstrFromString(empty.Get()).IsAbsent());
    EXPECT_EQ(BstrFromString(std::u16string_view(u"text")).View(), u"text");
    const CBstr text = CBstr::Make(u"text");
    const CBstr copy = BstrFromString(text.Get());
    EXPECT_NE(copy.Get(), text.Get());
    EXPECT_EQ(copy.View(), u"text");
    EXPECT_EQ(StringFromBstr(nullptr), u"");
    EXPECT_EQ(StringFromBstr(text.Get()), u"text");
}

}  // namespace
}  // namespace reka::test
