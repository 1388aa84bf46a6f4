// SPDX-License-Identifier: MIT
// A material in which a compound can't be told from another one stays bound, and calculations go on with the places
// that were found before.

#include "package/BindingFixture.h"
#include "support/FakeReactionObject.h"

namespace reka::test {
namespace {

/// A sum of fractions by which each compound's place in the material's list 1, 2, 4, 8, 16 can be told.
class AmbiguousMaterial : public MaterialBinding {
protected:
    AmbiguousMaterial() {
        definition->thermoVersion = ThermoVersion::Version11;
        AddKinetic(*definition, u"r", u"X(Ethanol)+100*X(Water)+10000*X(Argon)");
        Assign();
        IDispatch* pointer = results.Dispatch();
        package->SetReactionObject(&pointer);
    }
    ~AmbiguousMaterial() override { package->Terminate(); }

    CFakeMaterial& NewMaterialOfFive(std::initializer_list<const char16_t*> identifiers) {
        CFakeMaterial& material = NewMaterial(identifiers);
        material.answers["fraction"] = Numbers({1, 2, 4, 8, 16});
        return material;
    }
    double Calculate() {
        const CVariant props = Strings({u"ReactionRate"});
        const CVariant all;
        EXPECT_EQ(package->CalcReactionProp(props.Get(), CBstr::Make(u"Liquid").Get(), all.Get(), nullptr), S_OK);
        return results.lastValue;
    }

    CFakeReactionObject results;
};

TEST_F(AmbiguousMaterial, StaysBoundWithAMapThatIsPartlyFilled) {
    CFakeMaterial& material = NewMaterialOfFive({u"x", u"Water", u"Argon", u"m-ethanol", u"water"});
    material.SetCasNumber(3, u"64-17-5");
    ExpectFailure(material, "compound ID water is present more than once; unable to determine which compound is which");
    EXPECT_EQ(material.references.Held(), 1);
    EXPECT_EQ(Calculate(), 8 + 100 * 1 + 10000 * 1);  // ethanol was found; the others start at the first place
}

TEST_F(AmbiguousMaterial, LeavesTheRestOfTheMapAsTheBindingBeforeMadeIt) {
    ASSERT_EQ(package->SetMaterial(NewMaterialOfFive({u"Ethanol", u"x", u"Water", u"y", u"Argon"}).Dispatch()), S_OK);
    EXPECT_EQ(Calculate(), 1 + 100 * 4 + 10000 * 16);
    CFakeMaterial& material = NewMaterialOfFive({u"x", u"m-water", u"Argon", u"m-ethanol", u"m-water"});
    material.SetCasNumber(3, u"64-17-5");
    material.SetCasNumber(1, u"7732-18-5");
    material.SetCasNumber(4, u"7732-18-5");
    EXPECT_EQ(package->SetMaterial(material.Dispatch()), ECapeUnknownHR);
    EXPECT_EQ(
        ErrorOf(package.Unknown()).name,
        "CAS number 7732-18-5 for compound m-water is present more than once; unable to determine which compound is "
        "which");
    EXPECT_EQ(Ids(), "'Ethanol''Water''Argon'");
    EXPECT_EQ(Calculate(), 8 + 100 * 4 + 10000 * 16);
}

}  // namespace
}  // namespace reka::test
