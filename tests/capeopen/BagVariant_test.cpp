// SPDX-License-Identifier: MIT
// Entries of a property bag by their types: what is taken, what is passed over, and what is told of it.

#include "capeopen/BagVariant.h"

#include <gtest/gtest.h>

#include "support/FakeBag.h"

namespace reka::test {
namespace {

CVariant Integers(VARTYPE elementType) {
    CVariant made;
    SAFEARRAYBOUND bound = {1, 0};
    made.Get().parray = SafeArrayCreate(elementType, 1, &bound);
    made.Get().vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    return made;
}

CVariant NullValue() {
    CVariant made;
    made.Get().vt = VT_NULL;
    return made;
}

/// An array that doesn't tell its own element type.
CVariant Untyped(CVariant array) {
    array.Get().parray->fFeatures = static_cast<USHORT>(array.Get().parray->fFeatures & ~FADF_HAVEVARTYPE);
    return array;
}

/// An array whose variant claims another element type.
CVariant Claiming(CVariant array, VARTYPE claimed) {
    array.Get().vt = static_cast<VARTYPE>(VT_ARRAY | claimed);
    return array;
}

struct BagCase {
    const char* name;
    CVariant (*value)();
    int expectedType;
    const char* report;  // null: read
    std::int32_t lowerBound;
    std::int32_t count;
};

constexpr int texts = VT_ARRAY | VT_BSTR;
constexpr int numbers = VT_ARRAY | VT_R8;
constexpr const char* notStrings = "key: Expected an array of type string";

const BagCase bagCases[] = {
    {"Text", [] { return Text(u"a"); }, VT_BSTR, nullptr, 0, 0},
    {"NullText", [] { return Text(nullptr); }, VT_BSTR, nullptr, 0, 0},
    {"NumbersForAText", [] { return Numbers({1.0}); }, VT_BSTR, "key: unexpected data type", 0, 0},
    {"EmptyForAText", [] { return CVariant(); }, VT_BSTR, "key: unexpected data type", 0, 0},
    {"TextsForAText", [] { return Strings({u"a"}); }, VT_BSTR, "key: unexpected data type", 0, 0},
    {"Texts",
     [] {
         return Strings({u"a", u"b"});
     },
     texts, nullptr, 0, 2},
    {"TextsFromFive",
     [] {
         return StringArray({u"a", u"b"}, 5);
     },
     texts, nullptr, 5, 2},
    {"NoTexts", [] { return Strings({}); }, texts, nullptr, 0, 0},
    {"EmptyForTexts", [] { return CVariant(); }, texts, nullptr, 0, 0},
    {"EmptyForNumbers", [] { return CVariant(); }, numbers, nullptr, 0, 0},
    {"Numbers", [] { return Numbers({1.0}, -3); }, numbers, nullptr, -3, 1},
    {"TextForTexts", [] { return Text(u"a"); }, texts, notStrings, 0, 0},
    {"NumbersForTexts", [] { return Numbers({1.0}); }, texts, notStrings, 0, 0},
    {"TextsForNumbers", [] { return Strings({u"a"}); }, numbers, "key: Expected an array of type double precision", 0,
     0},
    {"TextsForShorts", [] { return Strings({u"a"}); }, VT_ARRAY | VT_I2, "key: Expected an array of type short", 0, 0},
    {"TextsForLongs", [] { return Strings({u"a"}); }, VT_ARRAY | VT_I4, "key: Expected an array of type long", 0, 0},
    {"TextsForVariants", [] { return Strings({u"a"}); }, VT_ARRAY | VT_VARIANT,
     "key: Expected an array of type VARIANT", 0, 0},
    {"TextsForBooleans", [] { return Strings({u"a"}); }, VT_ARRAY | VT_BOOL, "key: Expected an array of type <unknown>",
     0, 0},
    {"Longs", [] { return Integers(VT_I4); }, VT_ARRAY | VT_I4, nullptr, 0, 1},
    {"NullForTexts", NullValue, texts, notStrings, 0, 0},
    {"NullForAText", NullValue, VT_BSTR, "key: unexpected data type", 0, 0},
    {"VariantsForTexts", [] { return Variants({}); }, texts, notStrings, 0, 0},
    {"NumbersThatClaimToBeTexts", [] { return Claiming(Numbers({1.0}), VT_BSTR); }, texts, notStrings, 0, 0},
    {"UntypedNumbersThatClaimToBeTexts", [] { return Claiming(Untyped(Numbers({1.0})), VT_BSTR); }, texts, notStrings,
     0, 0},
    {"UntypedLongsThatClaimToBeNumbers", [] { return Claiming(Untyped(Integers(VT_I4)), VT_R8); }, numbers,
     "key: Expected an array of type double precision", 0, 0},
    {"UntypedNumbers", [] { return Untyped(Numbers({1.0})); }, numbers, nullptr, 0, 1},
    {"TwoDimensions", [] { return TwoDimensions(VT_BSTR); }, texts,
     "key: unexpected dimension; 1-dimensional array expected", 0, 0},
};

class BagReading : public testing::TestWithParam<BagCase> {};

TEST_P(BagReading, ChecksTheTypeAndReportsWhatIsWrong) {
    CFakeBag bag;
    CFakeErrorLog errorLog;
    bag.entries["key"] = GetParam().value();
    BagVariant value;
    const auto expectedType = static_cast<VARTYPE>(GetParam().expectedType);
    const bool isRead = ReadBagVariant({&bag, &errorLog, u"REKA"}, u"key", value, expectedType);
    EXPECT_EQ(isRead, GetParam().report == nullptr);
    EXPECT_EQ(bag.lastErrorLog, &errorLog);
    if (isRead) {
        EXPECT_TRUE(errorLog.errors.empty());
        EXPECT_EQ(value.lowerBound, GetParam().lowerBound);
        EXPECT_EQ(value.count, GetParam().count);
    } else {
        EXPECT_EQ(errorLog.errors, std::vector<std::string>{GetParam().report});
        EXPECT_EQ(errorLog.sources, std::vector<std::string>{"REKA"});
    }
    EXPECT_EQ(ReadBagVariant({&bag, nullptr, u"REKA"}, u"key", value, expectedType), isRead);
    EXPECT_EQ(errorLog.references.Held() + bag.references.Held(), 0);
}
INSTANTIATE_TEST_SUITE_P(Table, BagReading, testing::ValuesIn(bagCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ReadBagVariant, SaysNothingOfAMissingEntry) {
    CFakeBag bag;
    CFakeErrorLog errorLog;
    BagVariant value;
    EXPECT_FALSE(ReadBagVariant({&bag, &errorLog, u"REKA"}, u"key", value, VT_ARRAY | VT_R8));
    EXPECT_TRUE(errorLog.errors.empty());
}

TEST(ReadBagVariant, RefusesAnArrayThatIsNotThere) {
    class CEmptyHanded : public CFakeBag {
    public:
        HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
            value->vt = static_cast<VARTYPE>(VT_ARRAY | VT_BSTR);
            value->parray = nullptr;
            return S_OK;
        }
    };
    CEmptyHanded bag;
    CFakeErrorLog errorLog;
    BagVariant value;
    EXPECT_FALSE(ReadBagVariant({&bag, &errorLog, u"REKA"}, u"key", value, VT_ARRAY | VT_BSTR));
    EXPECT_EQ(errorLog.errors, std::vector<std::string>{"key: unexpected dimension; 1-dimensional array expected"});
}

TEST(ReadBagVariant, FreesWhatItHeldBefore) {
    CFakeBag bag;
    bag.entries["first"] = Strings({u"a"});
    bag.entries["second"] = Text(u"b");
    BagVariant value;
    EXPECT_EQ(value.holdsValue, 1);
    EXPECT_EQ(value.count, 0);
    ASSERT_TRUE(ReadBagVariant({&bag, nullptr, u"REKA"}, u"first", value, VT_ARRAY | VT_BSTR));
    ASSERT_TRUE(ReadBagVariant({&bag, nullptr, u"REKA"}, u"second", value, VT_BSTR));
    EXPECT_EQ(Show(value.value), "'b'");
    value.holdsValue = 0;  // the value has been given away
    VARIANT given = value.value;
    ASSERT_TRUE(ReadBagVariant({&bag, nullptr, u"REKA"}, u"first", value, VT_ARRAY | VT_BSTR));
    EXPECT_EQ(value.holdsValue, 1);
    EXPECT_EQ(Show(given), "'b'");
    VariantClear(&given);
}

}  // namespace
}  // namespace reka::test
