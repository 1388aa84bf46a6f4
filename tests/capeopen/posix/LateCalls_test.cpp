// SPDX-License-Identifier: MIT
// Calls by name through an object's one `IDispatch`, where a table stands for the type library: what is done before a
// call and behind it is the same as on Windows, and runs under the sanitizers here. The arguments are those that
// scripts make.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "posix/AllocationFailures.h"
#include "posix/SparingFakes.h"
#include "support/Builders.h"
#include "support/posix/LateMembers.h"

namespace reka::test {
namespace {

/// A client's variable, as it is passed by reference.
VARIANT Reference(CVariant& variable) {
    VARIANT reference = {};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &variable.Get();
    return reference;
}

VARIANT Object(IDispatch* object) {
    VARIANT value = {};
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    return value;
}

/// The elements of a list of variants, which is what scripts read: texts and numbers, or "null".
std::string ElementsOf(const VARIANT& list) {
    if (list.vt != (VT_ARRAY | VT_VARIANT)) return Show(list);
    std::string shown;
    for (ULONG i = 0; i < list.parray->rgsabound[0].cElements; ++i) {
        const VARIANT& element = static_cast<const VARIANT*>(list.parray->pvData)[i];
        const std::string text = element.vt == VT_R8 ? std::to_string(element.dblVal) : Show(element.bstrVal);
        shown += (shown.empty() ? "" : ", ") + text;
    }
    return shown;
}

class CalledByName : public testing::Test {
protected:
    CalledByName() {
        const auto definition = MakePackage({u"A1", u"B1"});
        definition->compounds[0]->casNumber = CBstr::Make(u"71-43-2");
        AddKinetic(*definition, u"r", u"2*T").stoichiometry = {-1.0, 2.0};
        package = std::make_unique<CPackageHolder>(*definition);
        late = Ask<IDispatch>(package->Unknown());
        material.answers["temperature"] = Numbers({300.0});
        IDispatch* pointer = results.Dispatch();
        EXPECT_EQ((*package)->SetReactionObject(&pointer), S_OK);
    }
    ~CalledByName() override {
        (*package)->Terminate();
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
    }

    DISPID IdOf(std::u16string name) const {
        LPOLESTR names[] = {name.data()};
        DISPID id = 0;
        EXPECT_EQ(late->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
        return id;
    }
    /// Calls with arguments in the order of their declaration.
    HRESULT CallId(DISPID id, WORD flags, std::vector<VARIANT> arguments = {}, std::vector<DISPID> names = {}) {
        std::reverse(arguments.begin(), arguments.end());
        DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                                 static_cast<UINT>(names.size())};
        badArgument = 99;
        return late->Invoke(id, IID_NULL, 0, flags, &parameters, result.Receive(), &exception, &badArgument);
    }
    HRESULT Call(const char16_t* name, std::vector<VARIANT> arguments = {}) {
        return CallId(IdOf(name), callMethod, std::move(arguments));
    }
    std::string Words() const { return Show(exception.bstrSource) + " " + Show(exception.bstrDescription); }

    CSparingMaterial material{u"A1", u"B1"};
    CSparingResults results;
    std::unique_ptr<CPackageHolder> package;
    CComRef<IDispatch> late;
    CVariant result;
    EXCEPINFO exception = {};
    UINT badArgument = 99;
};

TEST_F(CalledByName, HasTheMembersOfAllInterfacesUnderIdentifiersOfTheirOwn) {
    EXPECT_EQ(IdOf(u"GetReactionsIds"), 1 * 0x10000 + 2);
    EXPECT_EQ(IdOf(u"calcreactionprop"), 2 * 0x10000 + 1);
    EXPECT_EQ(IdOf(u"SetMaterial"), 4 * 0x10000 + 1);  // of the first of two interfaces
    EXPECT_EQ(IdOf(u"ComponentName"), 7 * 0x10000 + 1);
    std::u16string unknown = u"nothing";
    LPOLESTR names[] = {unknown.data()};
    DISPID id = 0;
    EXPECT_EQ(late->GetIDsOfNames(IID_NULL, names, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
    for (const DISPID none : {-1, 0, 1, 0x10000, 0x10000 + 99, 99 * 0x10000 + 1, 0x7FFFFFFF}) {
        EXPECT_EQ(CallId(none, callMethod), DISP_E_MEMBERNOTFOUND) << none;
    }
}

TEST_F(CalledByName, KnowsTheNamesOfArguments) {
    std::u16string words[] = {u"CalcReactionProp", u"basis", u"reacIds", u"nothing"};
    LPOLESTR names[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data()};
    DISPID ids[4] = {};
    EXPECT_EQ(late->GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
    EXPECT_EQ(ids[1], 3);
    EXPECT_EQ(ids[2], 2);
    EXPECT_EQ(late->GetIDsOfNames(IID_NULL, names, 4, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 2 * 0x10000 + 1);
    EXPECT_EQ(ids[3], DISPID_UNKNOWN);
}

TEST_F(CalledByName, GivesListsThatScriptsCanRead) {
    EXPECT_EQ(Call(u"GetReactionsIds"), S_OK);
    EXPECT_EQ(ElementsOf(result.Get()), "'r'");
    const CVariant id = Text(u"r");
    EXPECT_EQ(Call(u"GetStoichiometricCoefficients", {id.Get()}), S_OK);
    EXPECT_EQ(ElementsOf(result.Get()), "-1.000000, 2.000000");
}

TEST_F(CalledByName, WritesListsIntoVariables) {
    CVariant id = Text(u"r");
    CVariant lists[3];
    lists[0] = Text(u"what was there");
    for (int round = 0; round < 2; ++round) {  // into what is in them, and over the lists of the first round
        EXPECT_EQ(Call(u"GetReactionCompoundIds",
                       {Reference(id), Reference(lists[0]), Reference(lists[1]), Reference(lists[2])}),
                  S_OK);
        EXPECT_EQ(ElementsOf(lists[0].Get()), "'A1', 'B1'");
        EXPECT_EQ(ElementsOf(lists[1].Get()), "0.000000, 0.000000");
        EXPECT_EQ(ElementsOf(lists[2].Get()), "'71-43-2', ''");
        EXPECT_EQ(Show(id.Get().bstrVal), "'r'");
    }
}

TEST_F(CalledByName, TakesTheListsThatScriptsMake) {
    ASSERT_EQ(Call(u"SetMaterial", {Object(material.Dispatch())}), S_OK);
    std::vector<CVariant> elements;
    elements.push_back(Text(u"ReactionRate"));
    CVariant properties = Variants(std::move(elements));
    CVariant phase = Text(u"Liquid");
    CVariant all;
    CVariant basis = Text(u"");
    for (const VARIANT& argument : {Reference(properties), properties.Get()}) {
        results.lastValue = 0;
        EXPECT_EQ(Call(u"CalcReactionProp", {argument, phase.Get(), Reference(all), basis.Get()}), S_OK) << Words();
        EXPECT_EQ(results.lastValue, 600.0);
        EXPECT_EQ(properties.Get().vt, VT_ARRAY | VT_VARIANT);  // the script's own is as it was
    }
}

TEST_F(CalledByName, GetsAndPutsProperties) {
    const DISPID id = IdOf(u"ComponentName");
    const CVariant name = Text(u"a new name");
    EXPECT_EQ(CallId(id, putProperty, {name.Get()}, {propertyPut}), S_OK);
    EXPECT_EQ(CallId(id, getProperty), S_OK);
    EXPECT_EQ(Show(result.Get().bstrVal), "'a new name'");
    EXPECT_EQ(CallId(id, callMethod), DISP_E_MEMBERNOTFOUND);
}

TEST_F(CalledByName, TellsAFailureWithItsWords) {
    const CVariant id = Text(u"none");
    EXPECT_EQ(Call(u"GetStoichiometricCoefficients", {id.Get()}), DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, ECapeUnknownHR);
    EXPECT_EQ(Words(), "'ICapeReactionChemistry.GetStoichiometricCoefficients' 'Invalid reaction ID: none'");
    EXPECT_EQ(Show(result.Get()), "empty");
}

TEST_F(CalledByName, TellsTheWordsByAnInterfacesOwnDispatchToo) {
    const auto chemistry = Ask<ICapeReactionChemistry>(package->Unknown());
    late = CComRef<IDispatch>(chemistry.Get());
    const CVariant id = Text(u"none");
    EXPECT_EQ(Call(u"GetStoichiometricCoefficients", {id.Get()}), DISP_E_EXCEPTION);
    EXPECT_EQ(Words(), "'ICapeReactionChemistry.GetStoichiometricCoefficients' 'Invalid reaction ID: none'");
}

TEST_F(CalledByName, RefusesWhatDoesNotFit) {
    const CVariant number = Numbers({1});
    const CVariant id = Text(u"r");
    EXPECT_EQ(Call(u"GetStoichiometricCoefficients"), badParameterCount);
    EXPECT_EQ(Call(u"GetStoichiometricCoefficients", {number.Get()}), typeMismatch);
    EXPECT_EQ(badArgument, 0U);
    VARIANT nothing = {};
    nothing.vt = VT_BYREF | VT_VARIANT;
    VARIANT nothingBehind = {};
    nothingBehind.vt = VT_BYREF | VT_BSTR;
    CVariant variable;
    variable.Get() = nothingBehind;
    for (const VARIANT& bad : {nothing, nothingBehind, Reference(variable)}) {
        EXPECT_EQ(Call(u"GetStoichiometricCoefficients", {bad}), E_POINTER);
    }
    variable.Detach();
    DISPPARAMS parameters = {nullptr, nullptr, 1, 0};
    const DISPID member = IdOf(u"GetReactionsIds");
    EXPECT_EQ(late->Invoke(member, IID_NULL, 0, callMethod, &parameters, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(late->Invoke(member, IID_NULL, 0, callMethod, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    parameters = {nullptr, nullptr, 0, 0};
    EXPECT_EQ(late->Invoke(member, IID_IUnknown, 0, callMethod, &parameters, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(late->Invoke(member, IID_NULL, 0, callMethod, &parameters, nullptr, nullptr, nullptr), S_OK);
}

/// More arguments than any member has are no reason to write behind a table.
TEST_F(CalledByName, BearsAnyNumberOfArguments) {
    CVariant variable = Text(u"r");
    for (const std::size_t count : {15U, 16U, 17U, 200U}) {
        EXPECT_EQ(Call(u"GetReactionsIds", std::vector<VARIANT>(count, Reference(variable))), badParameterCount);
    }
    EXPECT_EQ(Show(variable.Get().bstrVal), "'r'");
}

/// Without memory a script gets the list as the member gave it, or is told; and nothing is lost or freed twice.
TEST_F(CalledByName, IsAnsweredWithoutMemoryToo) {
    CVariant id = Text(u"r");
    std::vector<CVariant> lists;
    const DISPID member = IdOf(u"GetReactionCompoundIds");
    const int faults = ForEachFault(
        [&] {
            lists.clear();
            lists.resize(3);
            for (CVariant& list : lists) list = Strings({u"what was there"});
        },
        [&] {
            std::array<VARIANT, 4> arguments = {Reference(lists[2]), Reference(lists[1]), Reference(lists[0]),
                                                id.Get()};
            DISPPARAMS parameters = {arguments.data(), nullptr, 4, 0};
            return late->Invoke(member, IID_NULL, 0, callMethod, &parameters, nullptr, &exception, nullptr);
        },
        [&](HRESULT called, bool isReached, bool) {
            EXPECT_TRUE(called == S_OK ||
                        (isReached && called == DISP_E_EXCEPTION && exception.scode == ECapeUnknownHR));
            const std::string ids = lists[0].Get().vt == VT_EMPTY ? "" : ElementsOf(lists[0].Get());
            EXPECT_TRUE(called != S_OK ? ids.empty() : ids == "'A1', 'B1'" || ids == "['A1', 'B1']") << ids;
            SysFreeString(std::exchange(exception.bstrSource, nullptr));
            SysFreeString(std::exchange(exception.bstrDescription, nullptr));
        });
    EXPECT_GT(faults, 30);
}

}  // namespace
}  // namespace reka::test
