// SPDX-License-Identifier: MIT
// What the loading of a document's package leaves to tell, with a package that the test plays.

#include "packagetext/LoadFaults.h"

#include <gtest/gtest.h>

#include "packagetext/BagMembers.h"

namespace packagetext {

namespace {

using Faults = std::vector<std::string>;

/// A load: what the package asks for, and what it reports.
class LoadFaults : public testing::Test {
protected:
    explicit LoadFaults(const char* text) : package(Json::parse(text)) {
        std::string errorText;
        EXPECT_TRUE(FillBag(package, *bag, errorText)) << errorText;
    }
    LoadFaults()
        : LoadFaults(R"({"reactionID": ["R", "S", "T"], "reactionType": ["x", "Kinetic", "x"], "odd": "1",
                                  "stoichiometry[R]": [1], "stoichiometry[U]": [1]})") {}

    void Ask(std::initializer_list<const char16_t*> names) {
        for (const char16_t* const name : names) {
            reka::CVariant value;
            bag->Read(reka::CBstr::Make(name).Get(), value.Receive(), nullptr);
        }
    }
    void Report(const char16_t* name, const char16_t* text) {
        const reka::CBstr description = reka::CBstr::Make(text);
        EXCEPINFO exception = {};
        exception.bstrDescription = description.Get();
        log->AddError(reka::CBstr::Make(name).Get(), &exception);
    }
    Faults Find() const { return FindLoadFaults(package, *bag, *log); }

    Json package;
    reka::CComRef<reka::CComObject<CPropertyBag>> bag = MakeObject<CPropertyBag>();
    reka::CComRef<reka::CComObject<CErrorLog>> log = MakeObject<CErrorLog>();
};

TEST_F(LoadFaults, AreReportsWithTheElementsThatTheyCite) {
    Report(u"reactionType", u"invalid value 'x'");
    Report(u"reactionType", u"invalid value 'x'");
    Report(u"reactionType", u"no such thing for reaction T:\r\nnor here\r\n");
    Report(u"odd", u"unexpected data type");
    EXPECT_EQ(
        Find(),
        (Faults{"package.reactionType[0]: invalid value 'x'", "package.reactionType[2]: invalid value 'x'",
                "package.reactionType: no such thing for reaction T: nor here", "package.odd: unexpected data type"}));
}

TEST_F(LoadFaults, AreMembersThatNobodyAskedFor) {
    Ask({u"reactionID", u"reactionType", u"stoichiometry[S]", u"Name", u"thermoVersion"});
    EXPECT_EQ(Find(), (Faults{"package.odd: a package has no such member",
                              "package.stoichiometry[U]: there is no such reaction",
                              "package.stoichiometry[S]: the member is missing"}));
}

TEST_F(LoadFaults, SayNothingOfMembersWhenTheLoadGaveUp) {
    Ask({u"reactionID"});
    EXPECT_EQ(Find(), Faults{});
}

TEST_F(LoadFaults, AreIdentifiersOfReactionsThatStandTwice) {
    package["reactionID"] = {"R", nullptr, "r", nullptr};
    package["compoundId"] = {"a", "b", "b"};
    EXPECT_EQ(Find(), Faults{"package.reactionID[2]: \"r\" is there twice"});  // compounds go by their names
}

}  // namespace

}  // namespace packagetext
