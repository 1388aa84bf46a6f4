// SPDX-License-Identifier: MIT
// The compounds of the material.

#include <gtest/gtest.h>

#include <cmath>

#include "DocumentFixture.h"
#include "material/CMaterial.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

using Texts = std::vector<std::u16string>;
using Numbers = std::vector<double>;

class MaterialCompounds : public testing::Test {
protected:
    MaterialCompounds() { material->SetState(SampleGas()); }

    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
};

TEST_F(MaterialCompounds, AreListedWithTheirData) {
    reka::CVariant lists[6];
    ASSERT_EQ(material->GetCompoundList(&lists[0].Get(), &lists[1].Get(), &lists[2].Get(), &lists[3].Get(),
                                        &lists[4].Get(), &lists[5].Get()),
              S_OK);
    Texts texts;
    Numbers numbers;
    ASSERT_TRUE(packagetext::ReadTexts(lists[0].Get(), texts));
    EXPECT_EQ(texts, (Texts{u"Argon", u"n-Butane", u"Tracer"}));
    ASSERT_TRUE(packagetext::ReadTexts(lists[1].Get(), texts));
    EXPECT_EQ(texts, (Texts{u"Ar", u"C4H10", u""}));
    ASSERT_TRUE(packagetext::ReadTexts(lists[5].Get(), texts));
    EXPECT_EQ(texts, (Texts{u"7440-37-1", u"106-97-8", u""}));
    ASSERT_TRUE(packagetext::ReadNumbers(lists[4].Get(), numbers));
    EXPECT_EQ(numbers[1], 58.12);
    EXPECT_TRUE(std::isnan(numbers[2]));  // not known
    ASSERT_TRUE(packagetext::ReadNumbers(lists[3].Get(), numbers));
    EXPECT_TRUE(std::isnan(numbers[0]));
}

TEST_F(MaterialCompounds, GiveConstantsByPropertyAndCompound) {
    const Texts properties = {u"molecularWeight", u"chemicalFormula"};
    reka::CVariant answer;
    ASSERT_EQ(material->GetCompoundConstant(packagetext::VariantFromTexts(properties).Get(),
                                            packagetext::VariantFromTexts(Texts{u"n-Butane", u"Tracer"}).Get(),
                                            answer.Receive()),
              S_OK);
    reka::CVariant elements[4];
    for (LONG i = 0; i < 4; ++i) {
        ASSERT_EQ(SafeArrayGetElement(answer.Get().parray, &i, &elements[i].Get()), S_OK);
    }
    EXPECT_EQ(elements[0].Get().dblVal, 58.12);
    EXPECT_EQ(elements[1].Get().vt, VT_EMPTY);  // not known
    EXPECT_EQ(reka::TextOf(elements[2].Get().bstrVal), u"C4H10");
    EXPECT_EQ(elements[3].Get().vt, VT_EMPTY);
}

TEST_F(MaterialCompounds, RefuseConstantsThatADocumentDoesNotHold) {
    reka::CVariant answer;
    EXPECT_EQ(material->GetCompoundConstant(packagetext::VariantFromTexts(Texts{u"criticalTemperature"}).Get(),
                                            reka::CVariant().Get(), answer.Receive()),
              ECapeInvalidArgumentHR);
    EXPECT_EQ(LastError(static_cast<reka::ICapeThermoCompounds*>(material.Get())),
              u"rekasim has no compound constant criticalTemperature");
    EXPECT_EQ(material->GetCompoundConstant(reka::CVariant().Get(), reka::CVariant().Get(), answer.Receive()),
              ECapeInvalidArgumentHR);
    Texts texts;
    ASSERT_EQ(material->GetConstPropList(answer.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(answer.Get(), texts));
    EXPECT_EQ(texts, (Texts{u"casRegistryNumber", u"chemicalFormula", u"molecularWeight"}));
}

TEST_F(MaterialCompounds, HaveNoPropertiesOfTemperatureOrPressure) {
    const reka::CVariant none;
    reka::CVariant answer;
    EXPECT_EQ(material->GetTDependentProperty(none.Get(), 300, none.Get(), &answer.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->GetPDependentProperty(none.Get(), 1e5, none.Get(), &answer.Get()), reka::ECapeNoImplHR);
    EXPECT_EQ(material->GetTDependentPropList(answer.Receive()), S_OK);
    EXPECT_EQ(answer.Get().vt, VT_EMPTY);
    EXPECT_EQ(material->GetPDependentPropList(answer.Receive()), S_OK);
    EXPECT_EQ(answer.Get().vt, VT_EMPTY);
}

}  // namespace

}  // namespace rekasim
