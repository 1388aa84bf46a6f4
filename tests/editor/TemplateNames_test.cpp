// SPDX-License-Identifier: MIT
// The dialogs that ask for the name of a template.

#include "editor/TemplateNames.h"

#include <gtest/gtest.h>

#include "editor/TemplateFixture.h"

namespace reka::test {
namespace {

constexpr auto toLoad = TemplateNamePurpose::Load;
constexpr auto toStore = TemplateNamePurpose::Store;

class TemplateNames : public TemplateFixture {
protected:
    CTemplateNames Open(TemplateNamePurpose purpose, const char16_t* suggestion) {
        CTemplateNames dialog(purpose, suggestion, ui);
        dialog.Fill(source);
        return dialog;
    }
    static std::string ErrorBox(const char* text) { return "message|Error:|" + std::string(text) + "|16"; }

    CManagerTemplates source;
};

TEST_F(TemplateNames, AreThoseOfTheFile) {
    PutTemplates({u"B", u"", u"A"});
    for (const TemplateNamePurpose purpose : {toLoad, toStore}) {
        EXPECT_EQ(Open(purpose, u"").Names(), (Names{u"B", u"", u"A"}));
    }
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(TemplateNames, HoldTheSuggestionInLettersOfAnyCase) {
    PutTemplates({u"Beta", u"Alpha", u"alpha2"});
    EXPECT_EQ(Open(toLoad, u"ALPHA").SuggestedPosition(), 1);
    EXPECT_EQ(Open(toStore, u"alpha2").SuggestedPosition(), 2);
    EXPECT_EQ(Open(toStore, u"ALPHA").TemplateName(), u"ALPHA");  // the field shows the suggestion itself
}

TEST_F(TemplateNames, AreOfferedWithoutTheSuggestionToo) {
    PutTemplates({u"Beta", u"Alpha"});
    const CTemplateNames dialog = Open(toLoad, u"Gamma");
    EXPECT_EQ(dialog.SuggestedPosition(), -1);  // the first row of the sorted list
    EXPECT_EQ(dialog.Names().size(), 2U);
    EXPECT_EQ(Open(toLoad, u"").SuggestedPosition(), -1);
}

TEST_F(TemplateNames, AreNoneWithoutTemplates) {
    CTemplateNames dialog = Open(toLoad, u"A");
    EXPECT_EQ(dialog.Names(), Names{});
    EXPECT_EQ(dialog.SuggestedPosition(), -1);
    EXPECT_EQ(ui.asked, Lines{});
    EXPECT_FALSE(dialog.Accept(u""));
    EXPECT_EQ(ui.asked, Lines{ErrorBox("No reaction package template name selected.")});
}

TEST_F(TemplateNames, AreNoneAfterAFailedCall) {
    source.ReplaceList(Strings({u"A"}), E_FAIL);
    EXPECT_EQ(Open(toLoad, u"A").Names(), Names{});
    EXPECT_EQ(Open(toStore, u"A").Names(), Names{});
    EXPECT_EQ(ui.asked, Lines{});
}

TEST_F(TemplateNames, AreNoneOfWhatIsNoList) {
    source.ReplaceList(Numbers({1.0}));
    EXPECT_EQ(Open(toLoad, u"A").Names(), Names{});
    EXPECT_EQ(ui.asked, Lines{ErrorBox("invalid type; array of type BSTR expected")});
    ui.asked.clear();
    source.ReplaceList(StringArray({u"A"}, 1));
    EXPECT_EQ(Open(toStore, u"A").Names(), Names{});
    EXPECT_EQ(ui.asked, Lines{ErrorBox("unexpected array dimensions; expected 0 for lower bound")});
}

TEST_F(TemplateNames, EndWithTheTextOfTheField) {
    PutTemplates({u"A"});
    CTemplateNames dialog = Open(toLoad, u"b");
    EXPECT_TRUE(dialog.Accept(u"A"));
    EXPECT_EQ(dialog.TemplateName(), u"A");
}

TEST_F(TemplateNames, MayBeNewToStoreUnder) {
    PutTemplates({u"A"});
    CTemplateNames dialog = Open(toStore, u"A");
    EXPECT_FALSE(dialog.Accept(u""));
    EXPECT_EQ(ui.asked, Lines{ErrorBox("A template name must be specified.")});
    EXPECT_EQ(dialog.TemplateName(), u"A");
    EXPECT_TRUE(dialog.Accept(u"typed"));
    EXPECT_EQ(dialog.TemplateName(), u"typed");
}

}  // namespace
}  // namespace reka::test
