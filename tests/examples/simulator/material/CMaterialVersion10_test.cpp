// SPDX-License-Identifier: MIT
// The material by version 1.0 of the thermo interfaces.

#include <gtest/gtest.h>

#include "DocumentFixture.h"
#include "material/CMaterial.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

using Texts = std::vector<std::u16string>;
using Numbers = std::vector<double>;

reka::CBstr TextOrNull(const char16_t* text) {
    return text ? reka::CBstr::Make(text) : reka::CBstr();
}

class MaterialVersion10 : public testing::Test {
protected:
    MaterialVersion10() { material->SetState(SampleGas()); }

    HRESULT Calculate(const char16_t* property, const char16_t* phase = u"Vapor",
                      const char16_t* calcType = u"mixture") {
        return material->CalcProp(packagetext::VariantFromTexts(Texts{property}).Get(),
                                  packagetext::VariantFromTexts(Texts{phase}).Get(), TextOrNull(calcType).Get());
    }
    HRESULT Read(const char16_t* property, const char16_t* phase, const Texts& ids, const char16_t* calcType,
                 const char16_t* basis) {
        reka::CVariant answer;
        const HRESULT result = material->GetProp(TextOrNull(property).Get(), TextOrNull(phase).Get(),
                                                 packagetext::VariantFromTexts(ids).Get(), TextOrNull(calcType).Get(),
                                                 TextOrNull(basis).Get(), answer.Receive());
        EXPECT_TRUE(packagetext::ReadNumbers(answer.Get(), values));
        return result;
    }
    std::u16string Error() { return LastError(static_cast<reka::ICapeThermoMaterialObject*>(material.Get())); }

    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
    Numbers values;
};

TEST_F(MaterialVersion10, ListsItsCompoundsAndPhases) {
    reka::CVariant answer;
    Texts texts;
    ASSERT_EQ(material->get_ComponentIds(answer.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(answer.Get(), texts));
    EXPECT_EQ(texts, (Texts{u"Argon", u"n-Butane", u"Tracer"}));
    ASSERT_EQ(material->get_PhaseIds(answer.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(answer.Get(), texts));
    EXPECT_EQ(texts, (Texts{u"Vapor", u"Overall"}));
    LONG count = 0;
    EXPECT_EQ(material->GetNumComponents(&count), S_OK);
    EXPECT_EQ(count, 3);
}

TEST_F(MaterialVersion10, TellsCasNumbersOfTheCompoundsThatHaveOne) {
    reka::CVariant answer;
    const reka::CVariant cas = packagetext::VariantFromTexts(Texts{u"CASRegistryNumber"});
    ASSERT_EQ(material->GetComponentConstant(cas.Get(), packagetext::VariantFromTexts(Texts{u"argon"}).Get(),
                                             answer.Receive()),
              S_OK);
    ASSERT_EQ(answer.Get().vt, VT_ARRAY | VT_VARIANT);
    LONG index = 0;
    reka::CVariant element;
    ASSERT_EQ(SafeArrayGetElement(answer.Get().parray, &index, &element.Get()), S_OK);
    EXPECT_EQ(reka::TextOf(element.Get().bstrVal), u"7440-37-1");
    EXPECT_EQ(material->GetComponentConstant(cas.Get(), packagetext::VariantFromTexts(Texts{u"Tracer"}).Get(),
                                             answer.Receive()),
              ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Error(), u"CASRegistryNumber of Tracer is not known");
}

TEST_F(MaterialVersion10, TellsTemperatureAndPressureOfTheWholeAndOfThePhase) {
    for (const char16_t* phase : {u"overall", u"Vapor", u"vapor"}) {
        ASSERT_EQ(Read(u"temperature", phase, {}, nullptr, nullptr), S_OK);
        EXPECT_EQ(values, Numbers{400});
        ASSERT_EQ(Read(u"pressure", phase, {}, nullptr, nullptr), S_OK);
        EXPECT_EQ(values, Numbers{200000});
    }
}

TEST_F(MaterialVersion10, TellsFractionsOfTheNamedCompoundsInTheirOrder) {
    ASSERT_EQ(Read(u"fraction", u"Vapor", {u"n-butane", u"ARGON"}, nullptr, u"mole"), S_OK);
    EXPECT_EQ(values, (Numbers{0.3, 0.5}));
    ASSERT_EQ(Read(u"fraction", u"overall", {}, nullptr, u"mole"), S_OK);
    EXPECT_EQ(values, (Numbers{0.5, 0.3, 0.2}));
}

TEST_F(MaterialVersion10, CalculatesBeforeItTells) {
    EXPECT_EQ(Read(u"fugacity", u"Vapor", {}, u"mixture", nullptr), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Error(), u"fugacity has not been calculated for the present state");
    ASSERT_EQ(Calculate(u"fugacity"), S_OK);
    ASSERT_EQ(Read(u"fugacity", u"Vapor", {u"n-Butane"}, u"Mixture", nullptr), S_OK);
    EXPECT_EQ(values, Numbers{60000});
}

TEST_F(MaterialVersion10, ForgetsWhatWasCalculatedWithANewState) {
    ASSERT_EQ(Calculate(u"density"), S_OK);
    material->SetTemperature(500);
    EXPECT_EQ(Read(u"density", u"Vapor", {}, u"mixture", u"mole"), ECapeThrmPropertyNotAvailableHR);
    ASSERT_EQ(Calculate(u"density"), S_OK);
    ASSERT_EQ(Read(u"density", u"Vapor", {}, u"mixture", u"mole"), S_OK);
    EXPECT_DOUBLE_EQ(values[0], 200000 / (8.314462618 * 500));
}

TEST_F(MaterialVersion10, RemovesResults) {
    Calculate(u"density");
    Calculate(u"activity");
    ASSERT_EQ(material->RemoveResults(packagetext::VariantFromTexts(Texts{u"Density"}).Get()), S_OK);
    EXPECT_EQ(Read(u"density", u"Vapor", {}, u"mixture", u"mole"), ECapeThrmPropertyNotAvailableHR);
    EXPECT_EQ(Read(u"activity", u"Vapor", {}, u"mixture", nullptr), S_OK);
    ASSERT_EQ(material->RemoveResults(reka::CVariant().Get()), S_OK);
    EXPECT_EQ(Read(u"activity", u"Vapor", {}, u"mixture", nullptr), ECapeThrmPropertyNotAvailableHR);
}

struct RefusedRead {
    const char* name;
    const char16_t* property;
    const char16_t* phase;
    Texts ids;
    const char16_t* calcType;
    const char16_t* basis;
    const char16_t* errorText;
};
const RefusedRead refusedReads[] = {
    {"Phase", u"fraction", u"Liquid", {}, nullptr, u"mole", u"the material has no phase Liquid, it is Vapor"},
    {"Property", u"viscosity", u"Vapor", {}, nullptr, nullptr, u"rekasim's material has no property viscosity"},
    {"OverallDensity",
     u"density",
     u"overall",
     {},
     u"mixture",
     u"mole",
     u"rekasim's material has no overall property density"},
    {"FractionBasis", u"fraction", u"Vapor", {}, nullptr, nullptr, u"fraction needs the basis mole or mass"},
    {"DensityBasis", u"density", u"Vapor", {}, u"mixture", u"volume", u"density needs the basis mole or mass"},
    {"FugacityBasis", u"fugacity", u"Vapor", {}, u"mixture", u"mole", u"fugacity takes no basis"},
    {"HeldCalcType", u"temperature", u"Vapor", {}, u"mixture", nullptr, u"temperature takes no calculation type"},
    {"CalcType", u"fugacity", u"Vapor", {}, u"pure", nullptr, u"fugacity needs the calculation type mixture"},
    {"NoCalcType", u"fugacity", u"Vapor", {}, nullptr, nullptr, u"fugacity needs the calculation type mixture"},
    {"Compound", u"fugacity", u"Vapor", {u"Xenon"}, u"mixture", nullptr, u"the material has no compound Xenon"},
    {"ScalarWithCompounds",
     u"pressure",
     u"overall",
     {u"Argon"},
     nullptr,
     nullptr,
     u"pressure doesn't belong to a compound"},
};
class RefusedReads : public MaterialVersion10, public testing::WithParamInterface<RefusedRead> {};

TEST_P(RefusedReads, TellWhy) {
    Calculate(u"density");
    Calculate(u"fugacity");
    const RefusedRead& read = GetParam();
    EXPECT_EQ(Read(read.property, read.phase, read.ids, read.calcType, read.basis), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), read.errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, RefusedReads, testing::ValuesIn(refusedReads),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MaterialVersion10, RefusesCalculationsThatItCannotDo) {
    EXPECT_EQ(Calculate(u"fugacity", u"Liquid"), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"the material has no phase Liquid, it is Vapor");
    EXPECT_EQ(Calculate(u"fugacity", u"Vapor", nullptr), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"rekasim calculates with the calculation type mixture only");
    EXPECT_EQ(Calculate(u"temperature"), ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"rekasim can't calculate the property temperature");
    EXPECT_EQ(material->CalcProp(reka::CVariant().Get(), packagetext::VariantFromTexts(Texts{u"Vapor"}).Get(),
                                 reka::CBstr::Make(u"mixture").Get()),
              ECapeInvalidArgumentHR);
    EXPECT_EQ(Error(), u"the properties must be an array of strings");
}

TEST_F(MaterialVersion10, CalculatesAllOrNothing) {
    const Texts properties = {u"density", u"viscosity"};
    EXPECT_EQ(
        material->CalcProp(packagetext::VariantFromTexts(properties).Get(),
                           packagetext::VariantFromTexts(Texts{u"Vapor"}).Get(), reka::CBstr::Make(u"mixture").Get()),
        ECapeInvalidArgumentHR);
    EXPECT_EQ(Read(u"density", u"Vapor", {}, u"mixture", u"mole"), ECapeThrmPropertyNotAvailableHR);
}

TEST_F(MaterialVersion10, TellsWhatTheDocumentLeavesOut) {
    MaterialState liquid = SampleLiquid();
    liquid.compounds[0].vapourPressure.reset();
    material->SetState(liquid);
    EXPECT_EQ(Calculate(u"fugacity", u"Liquid"), ECapeComputationHR);
    EXPECT_EQ(Error(), u"the fugacity of the liquid is not known: the document gives no vapourPressure of Water");
}

TEST_F(MaterialVersion10, RefusesWhatItDoesNotOffer) {
    const reka::CVariant none;
    reka::CVariant answer;
    IDispatch* object = nullptr;
    EXPECT_EQ(material->SetProp(nullptr, nullptr, none.Get(), nullptr, nullptr, none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(Error(), u"SetProp is not offered by rekasim");
    EXPECT_EQ(material->CalcEquilibrium(nullptr, none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->SetIndependentVar(none.Get(), none.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->GetIndependentVar(none.Get(), answer.Receive()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->GetUniversalConstant(none.Get(), answer.Receive()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->PropCheck(none.Get(), answer.Receive()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->ValidityCheck(none.Get(), answer.Receive()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->CreateMaterialObject(&object), reka::ECapeNoImplHR);
    EXPECT_EQ(material->Duplicate(&object), reka::ECapeNoImplHR);
    EXPECT_EQ(Error(), u"Duplicate is not offered by rekasim");
    EXPECT_EQ(object, nullptr);
}

TEST_F(MaterialVersion10, RefusesANullOutput) {
    const reka::CVariant none;
    EXPECT_EQ(material->get_ComponentIds(nullptr), E_POINTER);
    EXPECT_EQ(material->GetProp(nullptr, nullptr, none.Get(), nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(material->GetComponentConstant(none.Get(), none.Get(), nullptr), E_POINTER);
    EXPECT_EQ(material->GetNumComponents(nullptr), E_POINTER);
}

}  // namespace

}  // namespace rekasim
