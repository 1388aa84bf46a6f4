// SPDX-License-Identifier: MIT
// Members of a document in and out of a bag.

#include "packagetext/BagMembers.h"

#include <gtest/gtest.h>

namespace packagetext {

namespace {

Json RoundTrip(const char* text) {
    const auto bag = MakeObject<CPropertyBag>();
    std::string errorText;
    EXPECT_TRUE(FillBag(Json::parse(text), *bag, errorText)) << errorText;
    return MembersFromBag(*bag);
}

TEST(BagMembers, ComeBackAsTheyWere) {
    const char text[] =
        R"({"Name": "Größe", "compoundId": ["a", null, ""], "stoichiometry[r]": [-1.0, 0.5], "none": [], "nulls": [null]})";
    EXPECT_EQ(RoundTrip(text), Json::parse(text));
}

TEST(BagMembers, AreStringsAndArraysInTheBag) {
    const auto bag = MakeObject<CPropertyBag>();
    std::string errorText;
    ASSERT_TRUE(FillBag(Json::parse(R"({"a": "x", "b": ["x"], "c": [1], "d": []})"), *bag, errorText));
    EXPECT_EQ(bag->Entries()[0].value.Get().vt, VT_BSTR);
    EXPECT_EQ(bag->Entries()[1].value.Get().vt, VT_ARRAY | VT_BSTR);
    EXPECT_EQ(bag->Entries()[2].value.Get().vt, VT_ARRAY | VT_R8);
    EXPECT_EQ(bag->Entries()[3].value.Get().vt, VT_EMPTY);
}

TEST(BagMembers, LeaveACommentOut) {
    EXPECT_EQ(RoundTrip(R"({"Name": "x", "comment": {"any": 1}})"), Json::parse(R"({"Name": "x"})"));
}

TEST(BagMembers, RefuseWhatHasNoPlaceInABag) {
    for (const char* text :
         {R"({"a": 1})", R"({"a": ["x", 1]})", R"({"a": [[1]]})", R"({"a": {}})", R"({"a": true})"}) {
        const auto bag = MakeObject<CPropertyBag>();
        std::string errorText;
        EXPECT_FALSE(FillBag(Json::parse(text), *bag, errorText)) << text;
        EXPECT_EQ(errorText, "package.a: a text, a list of texts or null, or a list of numbers is expected");
    }
}

}  // namespace

}  // namespace packagetext
