// SPDX-License-Identifier: MIT
// Whole roads of a user through the editor, from the simulator's call to what a package then calculates.

#include <gtest/gtest.h>

#include <cmath>

#include "EditorFixture.h"
#include "capeopen/CapeOpenInterfaces.h"
#include "manager/CreateReactionPackManager.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"
#include "support/PcdBytes.h"
#include "support/Values.h"

namespace reka::test {
namespace {

constexpr const char16_t* managerTitle = u"REKA Reaction Numerics:";

class Journey : public EditorFixture {
protected:
    Journey() {
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
        manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
        PcdBytes file;
        AddPcdRecord(file, "hydrogen", "H2", 2.0F, "1333-74-0");
        AddPcdRecord(file, "ethane", "C2H6", 30.0F, "74-84-0");
        AddPcdRecord(file, "ethylene", "C2H4", 28.0F, "74-85-1");
        AddPcdRecord(file, "water", "H2O", 18.0F, "7732-18-5");
        Put(ComponentFolder() + u"data" + Slash() + u"Korvex1.pcd", file, 1);
    }

    CComRef<IDispatch> Resolve(const char16_t* name) {
        CComRef<IDispatch> package;
        EXPECT_EQ(manager->ResolveReactionsPackage(CBstr::Make(name).Get(), package.Receive()), S_OK);
        return package;
    }
    std::string List() {
        CVariant names;
        EXPECT_EQ(manager->GetListOfReactionsPackages(&names.Get()), S_OK);
        return Show(names.Get());
    }
    /// `Edit` of an object, while the user does `work`.
    static HRESULT Edit(IUnknown* object, const std::function<void(CUser&)>& work) {
        CUser user(work);
        const HRESULT result = Ask<ICapeUtilities>(object)->Edit();
        user.Finish();
        return result;
    }
    /// A gas of 400 K and 50 mol/m3: 40 % hydrogen, 10 % ethane, 50 % ethylene.
    double Calculate(IDispatch* package, const char16_t* property, const char16_t* reaction) {
        CFakeMaterial material({u"hydrogen", u"ethane", u"ethylene"});
        material.answers["temperature"] = Numbers({400.0});
        material.answers["fraction"] = Numbers({0.4, 0.1, 0.5});
        material.answers["density"] = Numbers({50.0});
        CFakeReactionObject results;
        IDispatch* pointer = results.Dispatch();
        IDispatch* materialRef = material.Dispatch();
        EXPECT_EQ(Ask<ICapeUtilities>(package)->Initialize(), S_OK);
        EXPECT_EQ(Ask<ICapeKineticReactionContext>(package)->SetReactionObject(&pointer), S_OK);
        EXPECT_EQ(Ask<ICapeThermoContext10>(package)->SetMaterial(&materialRef), S_OK);
        const CVariant properties = Strings({property});
        const CVariant reactions = Strings({reaction});
        const CBstr phase = CBstr::Make(u"Vapor");
        EXPECT_EQ(Ask<ICapeReactionsRoutine>(package)->CalcReactionProp(properties.Get(), phase.Get(), reactions.Get(),
                                                                        nullptr),
                  S_OK)
            << ErrorOf(package).description;
        EXPECT_EQ(Ask<ICapeUtilities>(package)->Terminate(), S_OK);
        return results.lastValue;
    }

    static void AddCompound(CUser& u, const CDrivenWindow& compounds, const char16_t* filter) {
        compounds.Click(IDC_COMPOUNDS_ADD);
        const CDrivenWindow add = u.WaitFor(u"Add compounds:");
        add.Fill(IDC_ADD_COMPOUNDS_FILTER, filter);  // selects what it names in full
        add.Click(IDOK);
        add.WaitUntilGone();
    }
    static void CreateReaction(CUser& u, const CDrivenWindow& reactions, const char16_t* id,
                               std::initializer_list<const char16_t*> coefficients) {
        reactions.Click(IDC_REACTIONS_CREATE);
        const CDrivenWindow input = u.WaitFor(u"Enter reaction ID:");
        u.Type(id);
        u.Press(VK_RETURN);
        input.WaitUntilGone();
        int row = 0;
        for (const char16_t* const coefficient : coefficients) {
            reactions.ClickCell(IDC_REACTIONS_STOICHIOMETRY, row++, 0, 2);
            reactions.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, coefficient);
        }
        reactions.Fill(IDC_REACTIONS_PHASE, u"Vapor");
    }

    CComRef<ICapeReactionsPackageManager> manager;
};

/// Nothing but the compound file beside the component is there at first.
TEST_F(Journey, FromNothingToAPackageThatCalculates) {
    EXPECT_EQ(List(), "empty");
    EXPECT_EQ(Edit(manager.Get(),
                   [](CUser& u) {
                       const CDrivenWindow dialog = u.WaitFor(managerTitle);
                       dialog.Click(IDC_MANAGER_CREATE);
                       const CDrivenWindow shell = u.WaitFor(u"Edit:");
                       VisiblePage(u, shell).Fill(IDC_GENERAL_NAME, u"Hydrogenation");

                       const CDrivenWindow compounds = OpenPage(u, shell, EditPage::Compounds);
                       for (const char16_t* const cas : {u"1333-74-0", u"74-84-0", u"74-85-1"}) {
                           AddCompound(u, compounds, cas);
                       }

                       const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
                       CreateReaction(u, reactions, u"Forward", {u"-1", u"1", u"-1"});
                       reactions.Click(IDC_REACTIONS_RATE_WIZARD);
                       const CDrivenWindow wizard = u.WaitFor(u"Reaction rate wizard:");
                       wizard.Click(IDC_RATE_WIZARD_MOLARITY);
                       wizard.Click(IDC_RATE_WIZARD_FORWARD);
                       wizard.Fill(IDC_RATE_WIZARD_FORWARD_CONSTANT, u"0.5");
                       wizard.Click(IDC_RATE_WIZARD_HAS_FORWARD_ENERGY);
                       wizard.Fill(IDC_RATE_WIZARD_FORWARD_ENERGY, u"20000");
                       wizard.Fill(IDC_RATE_WIZARD_REFERENCE_TEMPERATURE, u"350");
                       EXPECT_EQ(wizard.Text(IDC_RATE_WIZARD_PREVIEW),
                                 u"0.5*exp(-20000/R*(1/T-1/350))*C(hydrogen)*C(ethylene)");
                       wizard.Click(IDOK);
                       wizard.WaitUntilGone();
                       reactions.Fill(IDC_REACTIONS_HEAT, u"-136000");

                       CreateReaction(u, reactions, u"Balance", {u"-1", u"1", u"-1"});
                       reactions.Click(IDC_REACTIONS_EQUILIBRIUM);
                       reactions.Fill(IDC_REACTIONS_EQUILIBRIUM_CONSTANT, u"1E-6*EXP(136000/(R*T))");
                       EXPECT_EQ(reactions.Text(IDC_REACTIONS_EQUILIBRIUM_CONSTANT_UNIT), u"m³/mol");

                       shell.Click(IDOK);
                       shell.WaitUntilGone();
                       EXPECT_EQ(dialog.ListText(IDC_MANAGER_LIST, 0), u"Hydrogenation");
                       dialog.Click(IDOK);
                   }),
              S_OK);
    EXPECT_EQ(List(), "['Hydrogenation']");

    const CComRef<IDispatch> package = Resolve(u"Hydrogenation");
    ASSERT_TRUE(package);
    // 0.5 * exp(-20000 / 8.314 * (1/400 - 1/350)) * 20 * 25 mol/m3
    const double rate = 250.0 * std::exp(20000.0 / 8.314 / 2800.0);
    EXPECT_NEAR(Calculate(package.Get(), u"ReactionRate", u"Forward"), rate, 1e-12 * rate);
    const double constant = 1e-6 * std::exp(136000.0 / 3325.6);
    EXPECT_NEAR(Calculate(package.Get(), u"ChemicalEquilibriumConstant", u"Balance"), constant, 1e-12 * constant);
    EXPECT_EQ(Calculate(package.Get(), u"EnthalpyOfReaction", u"Forward"), -136000.0);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(Journey, FromAPackageToATemplateOfItsOwn) {
    const auto stored = MakePackage({u"hydrogen", u"ethane", u"ethylene"});
    stored->name = CBstr::Make(u"Hydrogenation");
    const double weights[] = {2.0, 30.0, 28.0};
    for (std::size_t i = 0; i < 3; ++i) stored->compounds[i]->molecularWeight = weights[i];
    ReactionDefinition& reaction = AddKinetic(*stored, u"Forward", u"3*C(hydrogen)");
    reaction.stoichiometry = {-1.0, 1.0, -1.0};
    reaction.phase = CBstr::Make(u"Vapor");
    PutDefinitions({stored.get()});

    const CComRef<IDispatch> package = Resolve(u"Hydrogenation");
    EXPECT_EQ(Calculate(package.Get(), u"ReactionRate", u"Forward"), 60.0);  // 3 * 0.4 * 50 mol/m3
    EXPECT_EQ(Edit(package.Get(),
                   [](CUser& u) {
                       const CDrivenWindow shell = u.WaitFor(u"Edit:");
                       const CDrivenWindow reactions = OpenPage(u, shell, EditPage::Reactions);
                       const char16_t* const doubled[] = {u"-2", u"2", u"2*(-1)"};
                       for (int row = 0; row < 3; ++row) {
                           reactions.ClickCell(IDC_REACTIONS_STOICHIOMETRY, row, 0, 2);
                           reactions.TypeIntoCell(IDC_REACTIONS_STOICHIOMETRY, doubled[row]);
                       }
                       reactions.Fill(IDC_REACTIONS_RATE, u"1.5*C(hydrogen)");
                       shell.Click(IDC_EDIT_STORE);
                       const CDrivenWindow names = u.WaitFor(u"Store reaction package template:");
                       names.Fill(IDC_STORE_TEMPLATE_NAME, u"Doubled");
                       names.Click(IDOK);
                       names.WaitUntilGone();
                       shell.Click(IDOK);
                   }),
              S_OK);
    CBstr name;
    EXPECT_EQ(Ask<ICapeIdentification>(package.Get())->get_ComponentName(name.Receive()), S_OK);
    EXPECT_EQ(name.View(), u"Hydrogenation");  // the field's text
    CVariant coefficients;
    const CBstr id = CBstr::Make(u"Forward");
    EXPECT_EQ(
        Ask<ICapeReactionChemistry>(package.Get())->GetStoichiometricCoefficients(id.Get(), coefficients.Receive()),
        S_OK);
    EXPECT_EQ(Show(coefficients.Get()), "[-2, 2, -2]");
    EXPECT_EQ(Calculate(package.Get(), u"ReactionRate", u"Forward"), 30.0);
    EXPECT_EQ(List(), "['Hydrogenation', 'Doubled']");

    EXPECT_EQ(Edit(manager.Get(),
                   [](CUser& u) {
                       const CDrivenWindow dialog = u.WaitFor(managerTitle);
                       ASSERT_EQ(dialog.ListCount(IDC_MANAGER_LIST), 2);
                       EXPECT_EQ(dialog.ListText(IDC_MANAGER_LIST, 1), u"Doubled");
                       u.Press(VK_ESCAPE);
                   }),
              S_OK);
    EXPECT_EQ(FromFile(u"Doubled")->reactions[0]->stoichiometry, (std::vector<double>{-2.0, 2.0, -2.0}));
    EXPECT_EQ(FromFile(u"Hydrogenation")->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 1.0, -1.0}));
    EXPECT_EQ(Calculate(Resolve(u"Doubled").Get(), u"ReactionRate", u"Forward"), 30.0);
}

}  // namespace
}  // namespace reka::test
