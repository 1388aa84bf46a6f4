// SPDX-License-Identifier: MIT
// The reaction object.

#include "CReactionResults.h"

#include <gtest/gtest.h>

#include "DocumentFixture.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

using Texts = std::vector<std::u16string>;

class ReactionResults : public testing::Test {
protected:
    HRESULT Set(const char16_t* property, const char16_t* phase, const Texts& ids, const std::vector<double>& set) {
        return results->SetReactionProp(reka::CBstr::Make(property).Get(), reka::CBstr::Make(phase).Get(),
                                        packagetext::VariantFromTexts(ids).Get(), nullptr,
                                        packagetext::VariantFromNumbers(set).Get());
    }
    HRESULT Get(const char16_t* property, const char16_t* phase, const Texts& ids) {
        reka::CVariant answer;
        const HRESULT result =
            results->GetReactionProp(reka::CBstr::Make(property).Get(), reka::CBstr::Make(phase).Get(),
                                     packagetext::VariantFromTexts(ids).Get(), nullptr, answer.Receive());
        EXPECT_TRUE(packagetext::ReadNumbers(answer.Get(), values));
        return result;
    }
    std::u16string Error() { return LastError(static_cast<reka::ICapeReactionProperties*>(results.Get())); }

    reka::CComRef<reka::CComObject<CReactionResults>> results = packagetext::MakeObject<CReactionResults>();
    std::vector<double> values;
};

TEST_F(ReactionResults, GiveBackWhatWasSet) {
    ASSERT_EQ(Set(u"ReactionRate", u"Vapor", {u"r1", u"r2"}, {1.5, 2.5}), S_OK);
    ASSERT_EQ(Get(u"reactionrate", u"VAPOR", {u"R2", u"r1", u"r2"}), S_OK);
    EXPECT_EQ(values, (std::vector<double>{2.5, 1.5, 2.5}));
}

TEST_F(ReactionResults, ReplaceAnEarlierValue) {
    Set(u"ReactionRate", u"Vapor", {u"r"}, {1});
    Set(u"ReactionRate", u"Vapor", {u"r"}, {2});
    ASSERT_EQ(Get(u"ReactionRate", u"Vapor", {u"r"}), S_OK);
    EXPECT_EQ(values, (std::vector<double>{2}));
    EXPECT_EQ(results->Count(), 1U);
}

TEST_F(ReactionResults, KeepPropertiesAndPhasesApart) {
    Set(u"ReactionRate", u"Vapor", {u"r"}, {1});
    EXPECT_EQ(Get(u"ReactionRate", u"Liquid", {u"r"}), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Get(u"EnthalpyOfReaction", u"Vapor", {u"r"}), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Error(), u"EnthalpyOfReaction of reaction r has not been set");
}

TEST_F(ReactionResults, RefuseListsThatDoNotFit) {
    EXPECT_EQ(Set(u"ReactionRate", u"Vapor", {u"r"}, {1, 2}), ECapeInvalidArgumentHR);
    EXPECT_EQ(Set(u"ReactionRate", u"Vapor", {}, {}), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"one reaction identifier and one number are needed for each reaction");
    EXPECT_EQ(Get(u"ReactionRate", u"Vapor", {}), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"the reactions must be an array of strings");
}

TEST_F(ReactionResults, ForgetEverythingWhenCleared) {
    Set(u"ReactionRate", u"Vapor", {u"r"}, {1});
    results->Clear();
    EXPECT_EQ(Get(u"ReactionRate", u"Vapor", {u"r"}), ECapeThrmPropertyNotAvailableHR);
}

TEST_F(ReactionResults, TellMethodAndInterfaceOfAFailure) {
    Set(u"ReactionRate", u"Vapor", {}, {});
    reka::CBstr text;
    results->get_scope(text.Receive());
    EXPECT_EQ(text.View(), u"SetReactionProp");
    results->get_interfaceName(text.Receive());
    EXPECT_EQ(text.View(), u"ICapeReactionProperties");
    results->get_name(text.Receive());
    EXPECT_EQ(text.View(), u"one reaction identifier and one number are needed for each reaction");
    LONG code = 0;
    EXPECT_EQ(results->get_code(&code), S_OK);
    EXPECT_EQ(code, ECapeInvalidArgumentHR);
    EXPECT_EQ(results->get_scope(nullptr), E_POINTER);
}

}  // namespace

}  // namespace rekasim
