// SPDX-License-Identifier: MIT
// Arguments of calls by name: named, missing, in variables, by reference and as scripts make them.

#include <gtest/gtest.h>

#include "HostObjects.h"
#include "LateCalls.h"

namespace host {
namespace {

TEST(LateArguments, CanBeNamed) {
    const auto package = MakePackage(L"2*T").As<IDispatch>();
    CMaterial material;
    CReactionObject results;
    CValue materialValue(material.Dispatch());
    CValue resultsValue(results.Dispatch());
    ASSERT_EQ(Call(package.Get(), L"SetMaterial", DISPATCH_METHOD, {materialValue.Get()}).code, S_OK);
    ASSERT_EQ(Call(package.Get(), L"SetReactionObject", DISPATCH_METHOD, {resultsValue.Get()}).code, S_OK);

    std::wstring words[] = {L"CalcReactionProp", L"basis", L"reacIds", L"phase", L"props"};
    LPOLESTR names[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), words[4].data()};
    DISPID identifiers[5] = {};
    ASSERT_EQ(package->GetIDsOfNames(IID_NULL, names, 5, 0, identifiers), S_OK);
    EXPECT_EQ(identifiers[1], 3);
    EXPECT_EQ(identifiers[2], 2);
    EXPECT_EQ(identifiers[3], 1);
    EXPECT_EQ(identifiers[4], 0);
    CValue basis(L"");
    CValue all;
    CValue phase(L"Vapor");
    CValue properties = StringArray({L"ReactionRate"});
    VARIANT arguments[] = {basis.Get(), all.Get(), phase.Get(), properties.Get()};
    DISPPARAMS parameters = {arguments, identifiers + 1, 4, 4};
    EXPECT_EQ(package->Invoke(identifiers[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(results.values[L"ReactionRate R"], 600);
    EXPECT_EQ(Call(package.Get(), L"Terminate", DISPATCH_METHOD).code, S_OK);
}

TEST(LateArguments, HaveNoNamesButTheirOwn) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    std::wstring words[] = {L"GetReactionType", L"nothing"};
    LPOLESTR names[] = {words[0].data(), words[1].data()};
    DISPID identifiers[2] = {};
    EXPECT_EQ(package->GetIDsOfNames(IID_NULL, names, 2, 0, identifiers), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(identifiers[1], DISPID_UNKNOWN);
}

TEST(LateArguments, AreNeitherMissingNorTooMany) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    EXPECT_EQ(Call(package.Get(), L"GetReactionType", DISPATCH_METHOD).code, DISP_E_BADPARAMCOUNT);
    CValue first(L"R");
    CValue second(L"R");
    EXPECT_EQ(Call(package.Get(), L"GetReactionType", DISPATCH_METHOD, {first.Get(), second.Get()}).code,
              DISP_E_BADPARAMCOUNT);
    CValue missing;
    missing.Get().vt = VT_ERROR;
    missing.Get().scode = DISP_E_PARAMNOTFOUND;  // how a client leaves one out
    EXPECT_EQ(Call(package.Get(), L"GetReactionType", DISPATCH_METHOD, {missing.Get()}).code, DISP_E_TYPEMISMATCH);
}

TEST(LateArguments, AreWrittenThroughReferences) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    CValue reaction(L"R");
    CValue identifiers;
    CValue charges;
    CValue casNumbers;
    for (int round = 0; round < 2; ++round) {  // into empty variables, and over what is in them
        ASSERT_EQ(Call(package.Get(), L"GetReactionCompoundIds", DISPATCH_METHOD,
                       {reaction.Get(), Reference(identifiers), Reference(charges), Reference(casNumbers)})
                      .code,
                  S_OK);
        EXPECT_EQ(StringsOf(identifiers.Get()), (std::vector<std::wstring>{L"First", L"Second"}));
        EXPECT_EQ(identifiers.Get().vt, VT_ARRAY | VT_VARIANT);
        EXPECT_EQ(NumbersOf(charges.Get()), (std::vector<double>{0, 0}));
        EXPECT_EQ(StringsOf(casNumbers.Get()), (std::vector<std::wstring>{L"71-43-2", L""}));
    }
}

TEST(LateArguments, CanBeObjectsByValueAndByReference) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    CReactionObject results;
    CValue variable(results.Dispatch());
    VARIANT object = variable.Get();
    VARIANT byReference;
    byReference.vt = VT_BYREF | VT_DISPATCH;
    byReference.ppdispVal = &object.pdispVal;
    for (const VARIANT& argument : {object, byReference, Reference(variable)}) {
        EXPECT_EQ(Call(package.Get(), L"SetReactionObject", DISPATCH_METHOD, {argument}).code, S_OK) << argument.vt;
        EXPECT_EQ(results.calls.held, 2);
    }
    EXPECT_EQ(Call(package.Get(), L"Terminate", DISPATCH_METHOD).code, S_OK);
    EXPECT_EQ(results.calls.held, 1);
}

TEST(LateArguments, CanBeNumbersInVariables) {
    // A call that reaches its method, which the package refuses: a variable isn't a reference to a number by itself.
    const auto package = MakePackage(L"1").As<IDispatch>();
    CValue reaction(L"R");
    for (const bool isEmpty : {true, false}) {
        CValue count = isEmpty ? CValue() : CValue(LONG{1});
        CValue identifiers;
        const CallResult called = Call(package.Get(), L"GetPhaseCompounds", DISPATCH_METHOD,
                                       {reaction.Get(), Reference(count), Reference(identifiers)});
        EXPECT_EQ(called.code, DISP_E_EXCEPTION);
        EXPECT_EQ(called.failure, E_NOTIMPL);
    }
}

TEST(LateArguments, CanReferToNumbersOfOtherTypes) {
    const auto package = MakePackage(L"1").As<IDispatch>();
    const CValue reaction(L"R");
    SHORT small = 1;
    double real = 1;
    VARIANT byReference[2];
    byReference[0].vt = VT_BYREF | VT_I2;
    byReference[0].piVal = &small;
    byReference[1].vt = VT_BYREF | VT_R8;
    byReference[1].pdblVal = &real;
    for (const VARIANT& count : byReference) {
        CValue identifiers;
        const CallResult called =
            Call(package.Get(), L"GetPhaseCompounds", DISPATCH_METHOD, {reaction.Get(), count, Reference(identifiers)});
        EXPECT_EQ(called.code, DISP_E_EXCEPTION) << count.vt;
        EXPECT_EQ(called.failure, E_NOTIMPL) << count.vt;
    }
    const CText text(L"1");  // which couldn't take a number back
    BSTR held = text.Get();
    VARIANT textReference;
    textReference.vt = VT_BYREF | VT_BSTR;
    textReference.pbstrVal = &held;
    CValue identifiers;
    const CallResult refused = Call(package.Get(), L"GetPhaseCompounds", DISPATCH_METHOD,
                                    {reaction.Get(), textReference, Reference(identifiers)});
    EXPECT_EQ(refused.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(refused.badArgument, 1U);
}

/// A list of variants, as scripts make them.
CValue VariantArray(std::vector<CValue> elements) {
    SAFEARRAYBOUND bound = {static_cast<ULONG>(elements.size()), 0};
    CValue made;
    made.Get().vt = VT_ARRAY | VT_VARIANT;
    made.Get().parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
    LONG index = 0;
    for (CValue& element : elements) {
        SafeArrayPutElement(made.Get().parray, &index, &element.Get());
        ++index;
    }
    return made;
}

CValue ScriptList(const std::vector<std::wstring>& texts) {
    std::vector<CValue> elements;
    for (const std::wstring& text : texts) elements.emplace_back(text);
    return VariantArray(std::move(elements));
}

VARIANT ArrayReference(CValue& list) {
    VARIANT reference;
    reference.vt = static_cast<VARTYPE>(VT_BYREF | list.Get().vt);
    reference.pparray = &list.Get().parray;
    return reference;
}

/// A package that is ready to calculate, with the two ways to call it late.
class LateCalculation : public testing::Test {
protected:
    LateCalculation() : package(MakePackage(L"2*T")) {
        EXPECT_EQ(Bind(package, material, results), S_OK);
        merged = package.As<IDispatch>();
        void* found = nullptr;
        EXPECT_EQ(package->QueryInterface(reka::ICapeReactionsRoutine::iid, &found), S_OK);
        routine = CRef<IDispatch>(static_cast<IDispatch*>(found));
    }
    ~LateCalculation() override { package->Terminate(); }

    CallResult Calculate(IDispatch* object, const VARIANT& properties, const VARIANT& reactions) {
        results.values.clear();
        const CValue phase(L"Vapor");
        const CValue basis(L"");
        return Call(object, L"CalcReactionProp", DISPATCH_METHOD, {properties, phase.Get(), reactions, basis.Get()});
    }
    void ExpectRate(IDispatch* object, const VARIANT& properties, const VARIANT& reactions) {
        EXPECT_EQ(Calculate(object, properties, reactions).code, S_OK) << properties.vt << ", " << reactions.vt;
        EXPECT_EQ(results.values[L"ReactionRate R"], 600);  // 2 * 300 K
    }
    void ExpectRefusal(IDispatch* object, const VARIANT& properties, const VARIANT& reactions) {
        const CallResult called = Calculate(object, properties, reactions);
        EXPECT_EQ(called.code, DISP_E_EXCEPTION) << properties.vt << ", " << reactions.vt;
        EXPECT_EQ(called.failure, reka::ECapeUnknownHR);
        EXPECT_TRUE(results.values.empty());
    }

    CMaterial material;
    CReactionObject results;
    CRef<reka::ICapeUtilities> package;
    CRef<IDispatch> merged;
    CRef<IDispatch> routine;
};

TEST_F(LateCalculation, TakesListsInVariables) {
    CValue properties = StringArray({L"ReactionRate"});
    CValue reactions = StringArray({L"R"});
    CValue all;
    for (IDispatch* object : {merged.Get(), routine.Get()}) {
        ExpectRate(object, properties.Get(), all.Get());
        ExpectRate(object, Reference(properties), Reference(reactions));
        ExpectRate(object, Reference(properties), Reference(all));
        ExpectRate(object, ArrayReference(properties), ArrayReference(reactions));
        CValue nested;  // a variable that refers to the list
        nested.Get() = ArrayReference(properties);
        ExpectRate(object, Reference(nested), all.Get());
    }
}

TEST_F(LateCalculation, TakesTheListsThatScriptsMake) {
    CValue properties = ScriptList({L"ReactionRate"});
    CValue reactions = ScriptList({L"R", L"R"});
    ExpectRate(merged.Get(), properties.Get(), reactions.Get());
    ExpectRate(merged.Get(), Reference(properties), Reference(reactions));
    ExpectRate(merged.Get(), ArrayReference(properties), ArrayReference(reactions));
    EXPECT_EQ(properties.Get().vt, VT_ARRAY | VT_VARIANT);  // the script's own
    EXPECT_EQ(StringsOf(properties.Get()), (std::vector<std::wstring>{L"ReactionRate"}));
}

TEST_F(LateCalculation, TakesListsOfVariantsFromScriptsAlone) {
    const CValue properties = ScriptList({L"ReactionRate"});
    ExpectRefusal(routine.Get(), properties.Get(), CValue().Get());
    ExpectRefusal(routine.Get(), StringArray({L"ReactionRate"}).Get(), ScriptList({L"R"}).Get());
    const CText phase(L"Vapor");
    EXPECT_EQ(package.As<reka::ICapeReactionsRoutine>()->CalcReactionProp(properties.Get(), phase.Get(), CValue().Get(),
                                                                          nullptr),
              reka::ECapeUnknownHR);
}

TEST_F(LateCalculation, RefusesListsOfAnythingElse) {
    std::vector<CValue> mixed;
    mixed.emplace_back(L"R");
    mixed.emplace_back(LONG{1});
    std::vector<CValue> numbers;
    numbers.emplace_back(LONG{1});
    const CValue properties = ScriptList({L"ReactionRate"});
    ExpectRefusal(merged.Get(), properties.Get(), VariantArray(std::move(mixed)).Get());
    ExpectRefusal(merged.Get(), properties.Get(), VariantArray(std::move(numbers)).Get());
    ExpectRefusal(merged.Get(), properties.Get(), VariantArray({}).Get());
    CValue hollow;
    hollow.Get().vt = VT_ARRAY | VT_VARIANT;
    ExpectRefusal(merged.Get(), properties.Get(), hollow.Get());
}

TEST_F(LateCalculation, SurvivesReferencesToNothing) {
    const CValue properties = StringArray({L"ReactionRate"});
    VARIANT nothing = {};
    for (const int type : {int{VT_VARIANT}, int{VT_BSTR}, int{VT_I4}, int{VT_DISPATCH}, VT_ARRAY | VT_BSTR}) {
        nothing.vt = static_cast<VARTYPE>(VT_BYREF | type);
        CValue variable;
        variable.Get().vt = nothing.vt;  // which refers to nothing either
        for (const VARIANT& argument : {nothing, Reference(variable)}) {
            for (IDispatch* object : {merged.Get(), routine.Get()}) {
                EXPECT_EQ(Calculate(object, argument, CValue().Get()).code, E_POINTER) << type;
                EXPECT_EQ(Calculate(object, properties.Get(), argument).code, E_POINTER) << type;
            }
            for (const wchar_t* name : {L"SetReactionObject", L"SetMaterial", L"GetReactionType"}) {
                EXPECT_EQ(Call(merged.Get(), name, DISPATCH_METHOD, {argument}).code, E_POINTER) << type;
            }
            const CValue reaction(L"R");
            CValue list;
            EXPECT_EQ(
                Call(merged.Get(), L"GetPhaseCompounds", DISPATCH_METHOD, {reaction.Get(), argument, Reference(list)})
                    .code,
                E_POINTER)
                << type;
            EXPECT_EQ(Call(merged.Get(), L"GetReactionCompoundIds", DISPATCH_METHOD,
                           {reaction.Get(), argument, Reference(list), Reference(list)})
                          .code,
                      E_POINTER)
                << type;
        }
        variable.Get().vt = VT_EMPTY;
    }
}

}  // namespace
}  // namespace host
