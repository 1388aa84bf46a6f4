// SPDX-License-Identifier: MIT
// The dialogs that ask for the name of a template.

#include <gtest/gtest.h>

#include <optional>

#include "ControlTable.h"
#include "EditorFixture.h"
#include "support/Values.h"

namespace reka::test {
namespace {

constexpr const char16_t* loadTitle = u"Load from reaction package template:";
constexpr const char16_t* storeTitle = u"Store reaction package template:";

/// Templates with a list that a test replaces.
class CGivenList : public ITemplateSource {
public:
    HRESULT GetListOfReactionsPackages(VARIANT* names) override {
        CopyVariant(names, list.Get());
        return result;
    }
    TemplateStore& Store() override { return store; }

    CVariant list;
    HRESULT result = S_OK;

private:
    TemplateStore store;
};

class TemplateNameDialogs : public EditorFixture {
protected:
    TemplateNameDialogs() { Put(userFile, FileOf({u"beta", u"Alpha", u"gamma"}), 100); }

    /// The answer, none for Cancel.
    std::optional<std::u16string> AskToLoad(std::u16string name, const Work& work) {
        return Ask(loadTitle, name, work);
    }
    std::optional<std::u16string> AskToStore(std::u16string name, const Work& work) {
        return Ask(storeTitle, name, work);
    }

    std::unique_ptr<ITemplateSource> templates = MakeManagerTemplates();

private:
    std::optional<std::u16string> Ask(const char16_t* title, std::u16string name, const Work& work) {
        CUser user([&](CUser& u) { work(u, u.WaitFor(title)); });
        CEditorWindows windows(nullptr);
        const bool isAnswered = title == loadTitle ? windows.AskForTemplateToLoad(*templates, name)
                                                   : windows.AskForTemplateToStore(*templates, name);
        user.Finish();
        return isAnswered ? std::optional(name) : std::nullopt;
    }
};

TEST_F(TemplateNameDialogs, HaveTheirControls) {
    const auto loaded = AskToLoad(u"GAMMA", [](CUser& u, const CDrivenWindow& dialog) {
        CheckControls(u, dialog.Get(),
                      {{anyLabel, u"Static", u"Template:", 0, WS_VISIBLE, true, false},
                       {IDC_LOAD_TEMPLATE_NAME, u"ComboBox", u"gamma", CBS_DROPDOWNLIST | CBS_SORT | WS_TABSTOP},
                       {IDOK, u"Button", u"OK", BS_DEFPUSHBUTTON | WS_TABSTOP},
                       {IDCANCEL, u"Button", u"Cancel", WS_TABSTOP}});
        CheckLayout(u, dialog.Get());
        dialog.TakePicture("206");
        u.Press(VK_ESCAPE);
    });
    EXPECT_FALSE(loaded);
    const auto stored = AskToStore(u"GAMMA", [](CUser& u, const CDrivenWindow& dialog) {
        CheckControls(u, dialog.Get(),
                      {{anyLabel, u"Static", u"Template:", 0, WS_VISIBLE, true, false},
                       {IDC_STORE_TEMPLATE_NAME, u"ComboBox", u"GAMMA", CBS_DROPDOWN | CBS_SORT | WS_TABSTOP},
                       {IDOK, u"Button", u"OK", BS_DEFPUSHBUTTON | WS_TABSTOP},
                       {IDCANCEL, u"Button", u"Cancel", WS_TABSTOP}});
        CheckLayout(u, dialog.Get());
        dialog.TakePicture("207");
        u.Press(VK_ESCAPE);
    });
    EXPECT_FALSE(stored);
}

TEST_F(TemplateNameDialogs, SortTheNames) {
    const Work look = [](CUser&, const CDrivenWindow& dialog) {
        ASSERT_EQ(dialog.ListCount(IDC_LOAD_TEMPLATE_NAME), 3);
        EXPECT_EQ(dialog.ListText(IDC_LOAD_TEMPLATE_NAME, 0), u"Alpha");
        EXPECT_EQ(dialog.ListText(IDC_LOAD_TEMPLATE_NAME, 1), u"beta");
        EXPECT_EQ(dialog.ListText(IDC_LOAD_TEMPLATE_NAME, 2), u"gamma");
        dialog.Click(IDCANCEL);
    };
    AskToLoad(u"", look);
    AskToStore(u"", look);
}

TEST_F(TemplateNameDialogs, LoadSuggestsTheFirstIfNoneHasTheName) {
    const auto name = AskToLoad(u"nobody", [](CUser&, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_LOAD_TEMPLATE_NAME), u"Alpha");
        dialog.Click(IDOK);
    });
    EXPECT_EQ(name, u"Alpha");
}

TEST_F(TemplateNameDialogs, LoadSuggestsTheTemplateOfTheName) {
    const auto name = AskToLoad(u"BETA", [](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_LOAD_TEMPLATE_NAME), u"beta");
        u.Press(VK_RETURN);
        dialog.WaitUntilGone();
    });
    EXPECT_EQ(name, u"beta");
}

TEST_F(TemplateNameDialogs, LoadTakesTheChosenName) {
    const auto name = AskToLoad(u"BETA", [](CUser&, const CDrivenWindow& dialog) {
        dialog.ChooseComboItem(IDC_LOAD_TEMPLATE_NAME, 2);
        dialog.Click(IDOK);
    });
    EXPECT_EQ(name, u"gamma");
}

TEST_F(TemplateNameDialogs, LoadNeedsATemplate) {
    Put(userFile, FileOf({}), 100);
    const auto name = AskToLoad(u"nobody", [](CUser& u, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.ListCount(IDC_LOAD_TEMPLATE_NAME), 0);
        for (int round = 0; round < 2; ++round) {
            dialog.Click(IDOK);
            u.Answer({u"Error:", u"No reaction package template name selected.", errorBox}, IDOK);
            EXPECT_FALSE(dialog.IsGone());
        }
        dialog.Click(IDCANCEL);
    });
    EXPECT_FALSE(name);
}

TEST_F(TemplateNameDialogs, StoreTakesANameThatNoTemplateHas) {
    const auto name = AskToStore(u"Suggested", [](CUser&, const CDrivenWindow& dialog) {
        EXPECT_EQ(dialog.Text(IDC_STORE_TEMPLATE_NAME), u"Suggested");
        dialog.Fill(IDC_STORE_TEMPLATE_NAME, u"Typed");
        dialog.Click(IDOK);
    });
    EXPECT_EQ(name, u"Typed");
}

TEST_F(TemplateNameDialogs, StoreTakesTheNameOfATemplate) {
    const auto name = AskToStore(u"Suggested", [](CUser&, const CDrivenWindow& dialog) {
        dialog.ChooseComboItem(IDC_STORE_TEMPLATE_NAME, 1);
        EXPECT_EQ(dialog.Text(IDC_STORE_TEMPLATE_NAME), u"beta");
        dialog.Click(IDOK);
    });
    EXPECT_EQ(name, u"beta");
}

TEST_F(TemplateNameDialogs, StoreNeedsAName) {
    const auto name = AskToStore(u"", [](CUser& u, const CDrivenWindow& dialog) {
        dialog.Click(IDOK);
        u.Answer({u"Error:", u"A template name must be specified.", errorBox}, IDOK);
        dialog.Fill(IDC_STORE_TEMPLATE_NAME, u"Now");
        dialog.Click(IDOK);
    });
    EXPECT_EQ(name, u"Now");
}

TEST_F(TemplateNameDialogs, AreEmptyWhereThereIsNoList) {
    auto given = std::make_unique<CGivenList>();
    given->result = E_FAIL;
    templates = std::move(given);
    EXPECT_EQ(AskToStore(u"Mine",
                         [](CUser&, const CDrivenWindow& dialog) {
                             EXPECT_EQ(dialog.ListCount(IDC_STORE_TEMPLATE_NAME), 0);
                             dialog.Click(IDOK);
                         }),
              u"Mine");
}

TEST_F(TemplateNameDialogs, TellOfAListThatIsNone) {
    auto given = std::make_unique<CGivenList>();
    given->list.Get().vt = VT_R8;
    templates = std::move(given);
    std::u16string name = u"Mine";
    CUser user([](CUser& u) {
        const CDrivenWindow box = u.WaitFor(u"Error:");  // before the dialog is seen
        EXPECT_EQ(u.CountDialogs(), 1);
        box.Click(IDOK);
        const CDrivenWindow dialog = u.WaitFor(loadTitle);
        EXPECT_EQ(dialog.ListCount(IDC_LOAD_TEMPLATE_NAME), 0);
        dialog.Click(IDCANCEL);
    });
    EXPECT_FALSE(CEditorWindows(nullptr).AskForTemplateToLoad(*templates, name));
}

TEST_F(TemplateNameDialogs, TakeLongNames) {
    const std::u16string longName(5000, u'n');
    Put(userFile, FileOf({longName}), 100);
    EXPECT_EQ(AskToLoad(u"", [](CUser&, const CDrivenWindow& dialog) { dialog.Click(IDOK); }), longName);
    EXPECT_EQ(AskToStore(longName, [](CUser&, const CDrivenWindow& dialog) { dialog.Click(IDOK); }), longName);
}

}  // namespace
}  // namespace reka::test
