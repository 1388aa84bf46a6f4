// SPDX-License-Identifier: MIT
// A new user at a keyboard, with the help beside it: the synthesis of methanol by two reactions, from Create to a
// template that a simulator can use. No message is sent and nothing is clicked. The pictures of the help are
// taken on the way.

#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "capeopen/CapeOpenInterfaces.h"
#include "manager/CreateReactionPackManager.h"
#include "support/PcdBytes.h"
#include "support/Values.h"

namespace reka::test {
namespace {

class MethanolByKeys : public EditorFixture {
protected:
    MethanolByKeys() {
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
        manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
        PcdBytes file;
        AddPcdRecord(file, "Hydrogen", "H2", 2.016F, "1333740");
        AddPcdRecord(file, "Carbon monoxide", "CO", 28.01F, "630080");
        AddPcdRecord(file, "Carbon dioxide", "CO2", 44.01F, "124389");
        AddPcdRecord(file, "Methanol", "CH4O", 32.042F, "67561");
        AddPcdRecord(file, "Water", "H2O", 18.015F, "7732185");
        AddPcdRecord(file, "Acetic acid", "C2H4O2", 60.053F, "64197");
        AddPcdRecord(file, "Ethanol", "C2H6O", 46.069F, "64175");
        AddPcdRecord(file, "Ethyl acetate", "C4H8O2", 88.106F, "141786");
        Put(ComponentFolder() + u"data" + Slash() + u"Korvex1.pcd", file, 1);
    }

    /// Tab, until the keyboard is there.
    static void TabTo(CUser& u, const CDrivenWindow& dialog, int control) {
        for (int i = 0; i < 40 && !dialog.HasFocus(control); ++i) u.Press(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(control)) << control;
    }
    static void AddCompound(CUser& u, const char16_t* casNumber) {
        u.Press('A', {VK_MENU});
        const CDrivenWindow add = u.WaitFor(u"Add compounds:");
        u.Type(casNumber);
        u.Press(VK_RETURN);
        add.WaitUntilGone();
    }
    /// From any place on the reactions page.
    static void CreateReaction(CUser& u, const CDrivenWindow& page, const char16_t* id,
                               std::initializer_list<const char16_t*> coefficients) {
        u.Press('C', {VK_MENU});
        const CDrivenWindow input = u.WaitFor(u"Enter reaction ID:");
        u.Type(id);
        input.TakePicture("HelpReactionId");
        u.Press(VK_RETURN);
        input.WaitUntilGone();
        TabTo(u, page, IDC_REACTIONS_STOICHIOMETRY);
        u.Press(VK_HOME);
        for (const char16_t* const coefficient : coefficients) {
            if (*coefficient) {
                u.Press(VK_SPACE);  // selects the row
                u.Press(VK_F2);
                page.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, coefficient);
            }
            u.Press(VK_DOWN);
        }
        TabTo(u, page, IDC_REACTIONS_HEAT);
        u.Type(*id == u'm' ? u"-90770" : u"-49160");
        TabTo(u, page, IDC_REACTIONS_PHASE);
        u.Type(u"Vapor");
    }
    static void WriteRateByWizard(CUser& u, const CDrivenWindow& page) {
        TabTo(u, page, IDC_REACTIONS_RATE_WIZARD);
        u.Press(VK_SPACE);
        const CDrivenWindow wizard = u.WaitFor(u"Reaction rate wizard:");
        TabTo(u, wizard, IDC_RATE_WIZARD_ACTIVITY);
        u.Press(VK_RIGHT);
        EXPECT_TRUE(wizard.IsChecked(IDC_RATE_WIZARD_MOLARITY));
        TabTo(u, wizard, IDC_RATE_WIZARD_FORWARD);
        u.Press(VK_SPACE);
        TabTo(u, wizard, IDC_RATE_WIZARD_FORWARD_CONSTANT);
        u.Type(u"2.5E-3");
        TabTo(u, wizard, IDC_RATE_WIZARD_HAS_FORWARD_ENERGY);
        u.Press(VK_SPACE);
        TabTo(u, wizard, IDC_RATE_WIZARD_FORWARD_ENERGY);
        u.Type(u"87.5*1000");
        TabTo(u, wizard, IDC_RATE_WIZARD_REFERENCE_TEMPERATURE);
        u.Type(u"500");
        wizard.TakePicture("HelpRateWizard");
        u.Press(VK_RETURN);
        wizard.WaitUntilGone();
    }
    static void Insert(CUser& u, std::initializer_list<WORD> keys) {
        u.Press(VK_SPACE, {VK_CONTROL});
        u.WaitUntil("a menu", [&] { return u.ShownWindow(u"#32768") != nullptr; });
        for (const WORD key : keys) u.Press(key);
        u.Press(VK_RETURN);
        u.Settle();
    }
    static void WriteRateByEditor(CUser& u, const CDrivenWindow& page) {
        TabTo(u, page, IDC_REACTIONS_EDIT_RATE);
        u.Press(VK_SPACE);
        const CDrivenWindow editor = u.WaitFor(u"Edit formula:");
        u.Type(u"1E-4*EXP(-45000/(R*T))*");
        Insert(u, {'Q', VK_DOWN, VK_DOWN});           // C()
        Insert(u, {'D', VK_DOWN, VK_DOWN, VK_DOWN});  // the fourth compound
        u.Type(u"*c(hydrogn");
        editor.TakePicture("HelpExpressionEditor");
        u.Press(VK_BACK);
        u.Type(u"en)");
        u.Press(VK_LEFT);
        u.Press(VK_END);
        EXPECT_EQ(editor.Text(IDC_EXPRESSION_STATUS), u"");
        u.Press(VK_RETURN);
        editor.WaitUntilGone();
    }

    static void LookAtTemplates(CUser& u) {
        u.Press('L', {VK_MENU});
        const CDrivenWindow load = u.WaitFor(u"Load from reaction package template:");
        load.TakePicture("HelpLoad");
        u.Press(VK_ESCAPE);
        load.WaitUntilGone();
    }

    CComRef<ICapeReactionsPackageManager> manager;
};

TEST_F(MethanolByKeys, BecomesATemplate) {
    const auto esterification = MakePackage({u"Acetic acid", u"Ethanol", u"Ethyl acetate", u"Water"});
    esterification->name = CBstr::Make(u"Esterification of acetic acid");
    PutDefinitions({esterification.get()});
    CUser user([](CUser& u) {
        const CDrivenWindow dialog = u.WaitFor(u"REKA Reaction Numerics:");
        u.Press('C', {VK_MENU});
        const CDrivenWindow shell = u.WaitFor(u"Edit:");
        u.Type(u"Methanol synthesis");
        u.Press(VK_TAB);
        u.Type(u"Methanol from carbon monoxide, carbon dioxide and hydrogen");
        shell.TakePicture("HelpGeneral");

        u.Press(VK_TAB, {VK_CONTROL});
        for (const char16_t* const cas : {u"630-08-0", u"1333-74-0", u"67-56-1", u"124-38-9", u"7732-18-5"}) {
            AddCompound(u, cas);
        }
        shell.TakePicture("HelpCompounds");

        u.Press(VK_TAB, {VK_CONTROL});
        const CDrivenWindow page = VisiblePage(u, shell);
        CreateReaction(u, page, u"methanol from CO", {u"-1", u"-2", u"1"});
        WriteRateByWizard(u, page);
        shell.TakePicture("HelpReactions");
        CreateReaction(u, page, u"CO2 to methanol", {u"", u"-3", u"1", u"-1", u"1"});
        WriteRateByEditor(u, page);
        shell.TakePicture("HelpEditor");
        LookAtTemplates(u);

        TabTo(u, shell, IDOK);
        u.Press(VK_SPACE);
        shell.WaitUntilGone();
        EXPECT_EQ(dialog.ListText(IDC_MANAGER_LIST, 1), u"Methanol synthesis");
        dialog.TakePicture("HelpManager");
        u.Press(VK_ESCAPE);
    });
    EXPECT_EQ(Ask<ICapeUtilities>(manager.Get())->Edit(), S_OK);
    user.Finish();
    EXPECT_TRUE(messages.shown.empty());

    const auto made = FromFile(u"Methanol synthesis");
    ASSERT_TRUE(made);
    ASSERT_EQ(made->reactions.size(), 2U);
    const ReactionDefinition& first = *made->reactions[0];
    EXPECT_EQ(first.id.View(), u"methanol from CO");
    EXPECT_EQ(first.stoichiometry, (std::vector<double>{-1.0, -2.0, 1.0, 0.0, 0.0}));
    EXPECT_EQ(first.rateEquation, u"0.0025*exp(-87500/R*(1/T-1/500))*C(\"Carbon monoxide\")*C(Hydrogen)^2");
    EXPECT_EQ(first.heatEquation, u"-90770");
    EXPECT_EQ(first.phase.View(), u"Vapor");
    const ReactionDefinition& second = *made->reactions[1];
    EXPECT_EQ(second.stoichiometry, (std::vector<double>{0.0, -3.0, 1.0, -1.0, 1.0}));
    EXPECT_EQ(second.rateEquation, u"1E-4*EXP(-45000/(R*T))*C(\"Carbon dioxide\")*c(hydrogen)");
}

}  // namespace
}  // namespace reka::test
