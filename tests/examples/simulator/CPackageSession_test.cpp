// SPDX-License-Identifier: MIT
// A package in use, call by call.

#include "CPackageSession.h"

#include <gtest/gtest.h>

#include "DocumentFixture.h"
#include "material/ReadMaterial.h"
#include "packagetext/BagMembers.h"

namespace rekasim {

namespace {

class PackageSession : public testing::Test {
protected:
    bool Load(const packagetext::Json& package) {
        const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
        EXPECT_TRUE(packagetext::FillBag(package, *bag, failure.text)) << failure.text;
        return session.Load(*bag, *log, failure);
    }
    bool LoadExample(const std::string& name) {
        document = ReadExample(name);
        MaterialState state;
        EXPECT_TRUE(ReadMaterial(document, state, failure.text)) << failure.text;
        material->SetState(state);
        return Load(document["package"]);
    }

    packagetext::Json document;
    reka::CComRef<reka::CComObject<CMaterial>> material = packagetext::MakeObject<CMaterial>();
    reka::CComRef<reka::CComObject<CReactionResults>> results = packagetext::MakeObject<CReactionResults>();
    reka::CComRef<reka::CComObject<packagetext::CErrorLog>> log = packagetext::MakeObject<packagetext::CErrorLog>();
    Failure failure;
    CPackageSession session;
};

TEST_F(PackageSession, ReadsIdentityAndReactions) {
    ASSERT_TRUE(LoadExample("methanol-synthesis.json")) << failure.text;
    std::u16string name;
    std::u16string description;
    ASSERT_TRUE(session.ReadIdentity(name, description, failure));
    EXPECT_EQ(name, u"Methanol synthesis");
    EXPECT_EQ(description, u"Methanol from carbon dioxide, with the reverse shift (Vanden Bussche and Froment 1996)");
    std::vector<Reaction> reactions;
    ASSERT_TRUE(session.ReadReactions(reactions, failure)) << failure.text;
    ASSERT_EQ(reactions.size(), 2U);
    EXPECT_EQ(reactions[1].id, u"reverse shift");
    EXPECT_EQ(reactions[1].phase, u"Vapor");
    EXPECT_TRUE(reactions[1].isKinetic);
    EXPECT_TRUE(reactions[1].isHeterogeneous);
    ASSERT_EQ(reactions[1].participants.size(), 4U);
    EXPECT_EQ(reactions[1].participants[3].id, u"carbon monoxide");
    EXPECT_EQ(reactions[1].participants[3].casNumber, u"630-08-0");
    EXPECT_EQ(reactions[1].participants[3].coefficient, 1);
}

TEST_F(PackageSession, SpeaksOfCompoundsByTheMaterialsIdentifiersOnceBound) {
    ASSERT_TRUE(LoadExample("water-gas-shift.json")) << failure.text;
    ASSERT_TRUE(session.SetMaterial(*material, ThermoVersion::Version11, failure)) << failure.text;
    std::vector<Reaction> reactions;
    ASSERT_TRUE(session.ReadReactions(reactions, failure)) << failure.text;
    EXPECT_EQ(reactions[0].participants[0].id, u"CO");
    EXPECT_EQ(reactions[0].concentrationBasis, u"Fugacity");
}

TEST_F(PackageSession, TakesTheMaterialThroughEitherContext) {
    ASSERT_TRUE(LoadExample("water-gas-shift.json")) << failure.text;
    EXPECT_TRUE(session.SetMaterial(*material, ThermoVersion::Version10, failure)) << failure.text;
    EXPECT_TRUE(session.SetMaterial(*material, ThermoVersion::Version11, failure)) << failure.text;
}

TEST_F(PackageSession, PassesOnThePackagesOwnWords) {
    ASSERT_TRUE(LoadExample("water-gas-shift.json")) << failure.text;
    ASSERT_TRUE(session.SetReactionObject(*results, failure)) << failure.text;
    std::vector<double> values;
    EXPECT_FALSE(session.Calculate(u"ReactionRate", u"Vapor", {u"shift"}, values, failure));
    EXPECT_EQ(failure.text, "A material reference has not been set on the reaction package before CalcReactionProp");
    EXPECT_EQ(failure.scope, "CalcReactionProp");
    EXPECT_EQ(failure.interfaceName, "ICapeReactionsRoutine");
}

TEST_F(PackageSession, PassesOnTheMaterialsWordsThroughThePackage) {
    ASSERT_TRUE(LoadExample("methyl-acetate-esterification.json")) << failure.text;
    packagetext::Json package = document["package"];
    package["reactionRateEquation"] = {"F(water)"};
    ASSERT_TRUE(Load(package)) << failure.text;
    ASSERT_TRUE(session.SetReactionObject(*results, failure)) << failure.text;
    ASSERT_TRUE(session.SetMaterial(*material, ThermoVersion::Version11, failure)) << failure.text;
    std::vector<double> values;
    EXPECT_FALSE(session.Calculate(u"ReactionRate", u"Liquid", {u"esterification"}, values, failure));
    EXPECT_EQ(
        failure.text,
        "CalcSinglePhaseProp failed for property fugacity, phase Liquid: the fugacity of the liquid is not known: "
        "the document gives no vapourPressure of Acetic acid");
}

TEST_F(PackageSession, TellsWhichCompoundTheMaterialLacks) {
    ASSERT_TRUE(LoadExample("ammonia-synthesis.json")) << failure.text;
    MaterialState state;
    ASSERT_TRUE(ReadMaterial(document, state, failure.text));
    state.compounds.pop_back();
    material->SetState(state);
    EXPECT_FALSE(session.SetMaterial(*material, ThermoVersion::Version10, failure));
    EXPECT_EQ(failure.text, "unable to resolve reaction compound ammonia");
    EXPECT_EQ(failure.interfaceName, "ICapeThermoContext");
}

TEST_F(PackageSession, TellsWhyAPackageCannotBeLoaded) {
    packagetext::Json package = ReadExample("ammonia-synthesis.json")["package"];
    package["compoundCAS"].erase(0);
    EXPECT_FALSE(Load(package));
    EXPECT_EQ(failure.text, "the package can't be loaded: compoundCAS: array size mismatch");
    EXPECT_FALSE(Load(packagetext::Json::object()));
}

TEST_F(PackageSession, SavesWhatItLoaded) {
    ASSERT_TRUE(LoadExample("toluene-hydrodealkylation.json")) << failure.text;
    const auto saved = packagetext::MakeObject<packagetext::CPropertyBag>();
    ASSERT_TRUE(session.Save(*saved, failure)) << failure.text;
    const packagetext::Json members = packagetext::MembersFromBag(*saved);
    for (const auto& member : document["package"].items()) EXPECT_EQ(members[member.key()], member.value());
}

}  // namespace

}  // namespace rekasim
