// SPDX-License-Identifier: MIT
// The material by version 1.1 of the thermo interfaces.

#include <gtest/gtest.h>

#include "DocumentFixture.h"
#include "material/CMaterial.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

using Texts = std::vector<std::u16string>;
using Numbers = std::vector<double>;

class MaterialVersion11 : public testing::Test {
protected:
    MaterialVersion11() { material->SetState(SampleGas()); }

    HRESULT Calculate(const char16_t* property, const char16_t* phase = u"Vapor") {
        return material->CalcSinglePhaseProp(packagetext::VariantFromTexts(Texts{property}).Get(),
                                             reka::CBstr::Make(phase).Get());
    }
    HRESULT Read(const char16_t* property, const char16_t* phase, const char16_t* basis) {
        const reka::CBstr basisText = basis ? reka::CBstr::Make(basis) : reka::CBstr();
        reka::CVariant answer = packagetext::VariantFromNumbers({-1});  // an output that holds something
        const HRESULT result = material->GetSinglePhaseProp(
            reka::CBstr::Make(property).Get(), reka::CBstr::Make(phase).Get(), basisText.Get(), &answer.Get());
        EXPECT_TRUE(packagetext::ReadNumbers(answer.Get(), values));
        return result;
    }
    std::u16string Error() { return LastError(static_cast<reka::ICapeThermoMaterial*>(material.Get())); }

    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
    Numbers values;
};

TEST_F(MaterialVersion11, IsTheSameObjectByAllInterfaces) {
    void* root = nullptr;
    ASSERT_EQ(material->QueryInterface(IID_IUnknown, &root), S_OK);
    reka::CComRef<IUnknown> identity;
    identity.Reset(static_cast<IUnknown*>(root));
    for (const IID& iid :
         {reka::ICapeThermoMaterialObject::iid, reka::ICapeThermoMaterial::iid, reka::ICapeThermoPropertyRoutine::iid,
          reka::ICapeThermoCompounds::iid, reka::ECapeRoot::iid, reka::ECapeUser::iid}) {
        reka::CComRef<IUnknown> asked;
        ASSERT_EQ(identity->QueryInterface(iid, reinterpret_cast<void**>(asked.Receive())), S_OK);
        reka::CComRef<IUnknown> back;
        ASSERT_EQ(asked->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(back.Receive())), S_OK);
        EXPECT_EQ(back.Get(), identity.Get());
    }
    void* other = nullptr;
    EXPECT_EQ(identity->QueryInterface(reka::ICapeUtilities::iid, &other), E_NOINTERFACE);
}

TEST_F(MaterialVersion11, TellsItsStateAtOnce) {
    ASSERT_EQ(Read(u"temperature", u"vapor", nullptr), S_OK);
    EXPECT_EQ(values, Numbers{400});
    ASSERT_EQ(Read(u"pressure", u"Vapor", u""), S_OK);
    EXPECT_EQ(values, Numbers{200000});
    ASSERT_EQ(Read(u"fraction", u"Vapor", u"Mole"), S_OK);
    EXPECT_EQ(values, (Numbers{0.5, 0.3, 0.2}));
}

TEST_F(MaterialVersion11, CalculatesBeforeItTells) {
    EXPECT_EQ(Read(u"activity", u"Vapor", nullptr), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(values, Numbers{-1});  // the output is as it was
    ASSERT_EQ(Calculate(u"activity"), S_OK);
    ASSERT_EQ(Read(u"activity", u"Vapor", nullptr), S_OK);
    EXPECT_EQ(values, (Numbers{1, 0.6, 0.4}));
    ASSERT_EQ(material->ClearAllProps(), S_OK);
    EXPECT_EQ(Read(u"activity", u"Vapor", nullptr), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Error(), u"activity has not been calculated for the present state");
}

TEST_F(MaterialVersion11, TellsTheOverallState) {
    double temperature = 0;
    double pressure = 0;
    reka::CVariant composition;
    ASSERT_EQ(material->GetOverallTPFraction(&temperature, &pressure, &composition.Get()), S_OK);
    EXPECT_EQ(temperature, 400);
    EXPECT_EQ(pressure, 200000);
    ASSERT_TRUE(packagetext::ReadNumbers(composition.Get(), values));
    EXPECT_EQ(values, (Numbers{0.5, 0.3, 0.2}));
    ASSERT_EQ(material->GetTPFraction(reka::CBstr::Make(u"Vapor").Get(), &temperature, &pressure, &composition.Get()),
              S_OK);
    EXPECT_EQ(material->GetTPFraction(reka::CBstr::Make(u"Solid").Get(), &temperature, &pressure, &composition.Get()),
              ECapeInvalidArgumentHR);
    reka::CVariant answer;
    ASSERT_EQ(material->GetOverallProp(reka::CBstr::Make(u"pressure").Get(), nullptr, &answer.Get()), S_OK);
    ASSERT_TRUE(packagetext::ReadNumbers(answer.Get(), values));
    EXPECT_EQ(values, Numbers{200000});
}

TEST_F(MaterialVersion11, TellsItsOnePhase) {
    reka::CVariant labels;
    reka::CVariant status;
    ASSERT_EQ(material->GetPresentPhases(&labels.Get(), &status.Get()), S_OK);
    Texts texts;
    ASSERT_TRUE(packagetext::ReadTexts(labels.Get(), texts));
    EXPECT_EQ(texts, Texts{u"Vapor"});
    ASSERT_EQ(status.Get().vt, VT_ARRAY | VT_I4);
    LONG index = 0;
    LONG value = 0;
    ASSERT_EQ(SafeArrayGetElement(status.Get().parray, &index, &value), S_OK);
    EXPECT_EQ(value, 1);  // at equilibrium
}

TEST_F(MaterialVersion11, KnowsWhatItCanCalculate) {
    VARIANT_BOOL valid = VARIANT_FALSE;
    const reka::CBstr vapor = reka::CBstr::Make(u"Vapor");
    material->CheckSinglePhasePropSpec(reka::CBstr::Make(u"density").Get(), vapor.Get(), &valid);
    EXPECT_EQ(valid, VARIANT_TRUE);
    material->CheckSinglePhasePropSpec(reka::CBstr::Make(u"temperature").Get(), vapor.Get(), &valid);
    EXPECT_EQ(valid, VARIANT_FALSE);
    material->CheckSinglePhasePropSpec(reka::CBstr::Make(u"density").Get(), reka::CBstr::Make(u"Solid").Get(), &valid);
    EXPECT_EQ(valid, VARIANT_FALSE);
    reka::CVariant list;
    Texts texts;
    ASSERT_EQ(material->GetSinglePhasePropList(list.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(list.Get(), texts));
    EXPECT_EQ(texts, (Texts{u"density", u"activity", u"fugacity"}));
}

struct RefusedPhaseRead {
    const char* name;
    const char16_t* property;
    const char16_t* phase;
    const char16_t* basis;
    const char16_t* errorText;
};
const RefusedPhaseRead refusedPhaseReads[] = {
    {"Phase", u"fraction", u"Liquid", u"mole", u"the material has no phase Liquid, it is Vapor"},
    {"OverallIsNoPhase", u"fraction", u"overall", u"mole", u"the material has no phase overall, it is Vapor"},
    {"Property", u"enthalpy", u"Vapor", u"mole", u"rekasim's material has no property enthalpy"},
    {"NoBasis", u"fraction", u"Vapor", nullptr, u"fraction needs the basis mole or mass"},
    {"Basis", u"activity", u"Vapor", u"mole", u"activity takes no basis"},
};
class RefusedPhaseReads : public MaterialVersion11, public testing::WithParamInterface<RefusedPhaseRead> {};

TEST_P(RefusedPhaseReads, TellWhy) {
    const RefusedPhaseRead& read = GetParam();
    EXPECT_EQ(Read(read.property, read.phase, read.basis), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), read.errorText);
    reka::CBstr text;
    material->get_interfaceName(text.Receive());
    EXPECT_EQ(text.View(), u"ICapeThermoMaterial");
}
INSTANTIATE_TEST_SUITE_P(Table, RefusedPhaseReads, testing::ValuesIn(refusedPhaseReads),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MaterialVersion11, RefusesWhatItDoesNotOffer) {
    const reka::CVariant none;
    reka::CVariant answer;
    IDispatch* object = nullptr;
    EXPECT_EQ(material->CopyFromMaterial(&object), reka::ECapeNoImplHR);
    EXPECT_EQ(material->CreateMaterial(&object), reka::ECapeNoImplHR);
    EXPECT_EQ(material->GetTwoPhaseProp(nullptr, none.Get(), nullptr, &answer.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->SetOverallProp(nullptr, nullptr, none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->SetPresentPhases(none.Get(), none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->SetSinglePhaseProp(nullptr, nullptr, nullptr, none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->SetTwoPhaseProp(nullptr, none.Get(), nullptr, none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->CalcTwoPhaseProp(none.Get(), none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->CalcAndGetLnPhi(nullptr, 1, 1, none.Get(), 0, nullptr, nullptr, nullptr, nullptr),
              reka::ECapeNoImplHR);
    EXPECT_EQ(Error(), u"CalcAndGetLnPhi is not offered by rekasim");
    VARIANT_BOOL valid = VARIANT_TRUE;
    EXPECT_EQ(material->CheckTwoPhasePropSpec(nullptr, none.Get(), &valid), S_OK);
    EXPECT_EQ(valid, VARIANT_FALSE);
    EXPECT_EQ(material->GetTwoPhasePropList(answer.Receive()), S_OK);
    EXPECT_EQ(answer.Get().vt, VT_EMPTY);
}

}  // namespace

}  // namespace rekasim
