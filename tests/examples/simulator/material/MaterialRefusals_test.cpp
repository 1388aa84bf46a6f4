// SPDX-License-Identifier: MIT
// Lists that a caller of the material by version 1.0 passes and that are none, and what the material can be asked for.

#include <gtest/gtest.h>

#include "DocumentFixture.h"
#include "material/CMaterial.h"
#include "packagetext/PropertyBag.h"
#include "packagetext/VariantArrays.h"

namespace rekasim {

namespace {

using Texts = std::vector<std::u16string>;

class MaterialRefusals : public testing::Test {
protected:
    MaterialRefusals() { material->SetState(SampleGas()); }

    void ExpectRefusal(HRESULT result, const char16_t* text) {
        EXPECT_EQ(result, ECapeInvalidArgumentHR);
        EXPECT_EQ(LastError(static_cast<reka::ICapeThermoMaterialObject*>(material.Get())), text);
    }

    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
    const reka::CVariant density = packagetext::VariantFromTexts(Texts{u"density"});
    const reka::CVariant numbers = packagetext::VariantFromNumbers({1.0});
    const reka::CBstr vapor = reka::CBstr::Make(u"Vapor");
    const reka::CBstr mixture = reka::CBstr::Make(u"mixture");
    const reka::CBstr mole = reka::CBstr::Make(u"mole");
};

TEST_F(MaterialRefusals, AreToldOfPhasesThatAreNoTexts) {
    ExpectRefusal(material->CalcProp(density.Get(), numbers.Get(), mixture.Get()),
                  u"the phases must be an array of strings");
    const reka::CVariant none = packagetext::VariantFromTexts(Texts{});
    ExpectRefusal(material->CalcProp(density.Get(), none.Get(), mixture.Get()),
                  u"the phases must be an array of strings");
}

TEST_F(MaterialRefusals, AreToldOfCompoundsThatAreNoTexts) {
    const reka::CBstr fraction = reka::CBstr::Make(u"fraction");
    reka::CVariant answer;
    ExpectRefusal(material->GetProp(fraction.Get(), vapor.Get(), numbers.Get(), reka::CBstr().Get(), mole.Get(),
                                    answer.Receive()),
                  u"the compounds must be an array of strings");
    EXPECT_EQ(answer.Get().vt, VT_EMPTY);
}

TEST_F(MaterialRefusals, AreToldOfPropertiesThatAreNoTexts) {
    ExpectRefusal(material->RemoveResults(numbers.Get()), u"the properties must be an array of strings");
}

using MaterialLists = MaterialRefusals;

TEST_F(MaterialLists, AreOfAllPropertiesAndOfThoseThatAreHeld) {
    Texts held;
    Texts all;
    reka::CVariant answer;
    ASSERT_EQ(material->AvailableProps(answer.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(answer.Get(), held));
    ASSERT_EQ(material->GetPropList(answer.Receive()), S_OK);
    ASSERT_TRUE(packagetext::ReadTexts(answer.Get(), all));
    EXPECT_EQ(held, MaterialPropertyNames(false));
    EXPECT_EQ(all, MaterialPropertyNames(true));
    EXPECT_NE(held, all);
}

}  // namespace

}  // namespace rekasim
