// SPDX-License-Identifier: MIT
// Numbers by reference in late-bound calls: the member sees doubles, and the client's variables keep their types.

#include "platform/win/ReferenceArguments.h"

#include <gtest/gtest.h>

#include <vector>

#include "capeopen/DualInterface.h"
#include "support/Values.h"

namespace reka::test {
namespace {

/// A material that answers with these numbers, and keeps those that it was called with.
class CMaterialOfNumbers final : public CDualInterface<ICapeThermoMaterial> {
public:
    double newTemperature = 300.5;
    double newPressure = 7e4;
    double givenTemperature = -1;
    double givenPressure = -1;
    int calls = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetOverallTPFraction(double* temperature, double* pressure, VARIANT* fractions) override {
        ++calls;
        givenTemperature = *temperature;
        givenPressure = *pressure;
        *temperature = newTemperature;
        *pressure = newPressure;
        VariantClear(fractions);
        *fractions = Numbers({0.25, 0.75}).Detach();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE ClearAllProps() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyFromMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateMaterial(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOverallProp(BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPresentPhases(VARIANT*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTPFraction(BSTR, double*, double*, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOverallProp(BSTR, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPresentPhases(VARIANT, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetSinglePhaseProp(BSTR, BSTR, BSTR, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTwoPhaseProp(BSTR, VARIANT, BSTR, VARIANT) override { return E_NOTIMPL; }
};

class NumbersByReference : public testing::Test {
protected:
    ~NumbersByReference() override { ForgetTypeLibrary(); }

    HRESULT Call(const VARIANT& temperature, const VARIANT& pressure) {
        std::wstring word = L"GetOverallTPFraction";
        LPOLESTR names[] = {word.data()};
        DISPID member = 0;
        EXPECT_EQ(material.GetIDsOfNames(IID_NULL, names, 1, 0, &member), S_OK);
        VARIANT list;
        list.vt = VT_BYREF | VT_VARIANT;
        list.pvarVal = &fractions.Get();
        VARIANT arguments[] = {list, pressure, temperature};
        DISPPARAMS parameters = {arguments, nullptr, 3, 0};
        badArgument = 99;
        return material.Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &badArgument);
    }

    CMaterialOfNumbers material;
    CVariant fractions;
    UINT badArgument = 99;
};

VARIANT ReferenceTo(VARTYPE type, void* number) {
    VARIANT reference = {};
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = number;
    return reference;
}

TEST_F(NumbersByReference, ReachVariablesOfTheirType) {
    double temperature = 290;
    double pressure = 1e5;
    EXPECT_EQ(Call(ReferenceTo(VT_R8, &temperature), ReferenceTo(VT_R8, &pressure)), S_OK);
    EXPECT_EQ(material.givenTemperature, 290);
    EXPECT_EQ(material.givenPressure, 1e5);
    EXPECT_EQ(temperature, 300.5);
    EXPECT_EQ(pressure, 7e4);
    EXPECT_EQ(NumbersIn(fractions.Get()), (std::vector<double>{0.25, 0.75}));
}

TEST_F(NumbersByReference, ReachVariablesOfOtherTypes) {
    float single = 290.5F;
    LONG whole = 100000;
    EXPECT_EQ(Call(ReferenceTo(VT_R4, &single), ReferenceTo(VT_I4, &whole)), S_OK);
    EXPECT_EQ(material.givenTemperature, 290.5);
    EXPECT_EQ(material.givenPressure, 100000);
    EXPECT_EQ(single, 300.5F);
    EXPECT_EQ(whole, 70000);
    material.newTemperature = 17;
    material.newPressure = 18;
    BYTE byte[3] = {1, 2, 3};
    SHORT small[3] = {1, 2, 3};
    EXPECT_EQ(Call(ReferenceTo(VT_UI1, &byte[1]), ReferenceTo(VT_I2, &small[1])), S_OK);
    EXPECT_EQ((std::vector<int>{byte[0], byte[1], byte[2]}), (std::vector<int>{1, 17, 3}));
    EXPECT_EQ((std::vector<int>{small[0], small[1], small[2]}), (std::vector<int>{1, 18, 3}));
    ULONG positive = 1;
    LONGLONG large = 2;
    EXPECT_EQ(Call(ReferenceTo(VT_UI4, &positive), ReferenceTo(VT_I8, &large)), S_OK);
    EXPECT_EQ(positive, 17U);
    EXPECT_EQ(large, 18);
}

TEST_F(NumbersByReference, ReachVariablesOfScripts) {
    CVariant temperature;
    CVariant pressure = Text(u"100000");
    EXPECT_EQ(Call(ReferenceTo(VT_VARIANT, &temperature.Get()), ReferenceTo(VT_VARIANT, &pressure.Get())), S_OK);
    EXPECT_EQ(material.givenTemperature, 0);  // an empty variable
    EXPECT_EQ(material.givenPressure, 100000);
    EXPECT_EQ(temperature.Get().vt, VT_R8);
    EXPECT_EQ(temperature.Get().dblVal, 300.5);
    EXPECT_EQ(pressure.Get().vt, VT_R8);
    EXPECT_EQ(pressure.Get().dblVal, 7e4);
    LONG whole = 5;  // behind a variable that is a reference itself
    VARIANT nested = ReferenceTo(VT_I4, &whole);
    EXPECT_EQ(Call(ReferenceTo(VT_VARIANT, &nested), ReferenceTo(VT_VARIANT, &pressure.Get())), S_OK);
    EXPECT_EQ(material.givenTemperature, 5);
    EXPECT_EQ(nested.vt, VT_BYREF | VT_I4);
    EXPECT_EQ(whole, 300);
}

TEST_F(NumbersByReference, MayBePlainValues) {
    CVariant temperature;
    temperature.Get().vt = VT_I4;
    temperature.Get().lVal = 291;
    EXPECT_EQ(Call(temperature.Get(), CVariant().Get()), S_OK);
    EXPECT_EQ(material.givenTemperature, 291);
    EXPECT_EQ(material.givenPressure, 0);
    EXPECT_EQ(temperature.Get().lVal, 291);
}

TEST_F(NumbersByReference, TellWhatDoesNotFit) {
    material.newPressure = 40000;
    double temperature = 290;
    SHORT small = 7;
    EXPECT_EQ(Call(ReferenceTo(VT_R8, &temperature), ReferenceTo(VT_I2, &small)), DISP_E_OVERFLOW);
    EXPECT_EQ(small, 7);
    EXPECT_EQ(temperature, 300.5);
}

TEST_F(NumbersByReference, AreRefusedBeforeTheCallWhereNoneCanBePut) {
    double temperature = 290;
    const CVariant text = Text(u"1");
    BSTR held = text.Get().bstrVal;
    DATE date = 1;
    CVariant word = Text(u"no number");
    for (const VARIANT& pressure :
         {ReferenceTo(VT_BSTR, &held), ReferenceTo(VT_DATE, &date), word.Get(), ReferenceTo(VT_VARIANT, &word.Get())}) {
        EXPECT_EQ(Call(ReferenceTo(VT_R8, &temperature), pressure), DISP_E_TYPEMISMATCH) << pressure.vt;
        EXPECT_EQ(badArgument, 1U) << pressure.vt;
    }
    EXPECT_EQ(material.calls, 0);
}

TEST_F(NumbersByReference, AreNotReadWhereThereAreNone) {
    double temperature = 290;
    for (const VARTYPE type : {VT_R8, VT_I2, VT_VARIANT}) {
        EXPECT_EQ(Call(ReferenceTo(type, nullptr), ReferenceTo(VT_R8, &temperature)), E_POINTER) << type;
        EXPECT_EQ(Call(ReferenceTo(VT_R8, &temperature), ReferenceTo(type, nullptr)), E_POINTER) << type;
    }
    EXPECT_EQ(material.calls, 0);
}

}  // namespace
}  // namespace reka::test
