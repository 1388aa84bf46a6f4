// SPDX-License-Identifier: MIT
// A material that changes the package's binding twice while it is being bound itself. It has to be noticed then, too:
// the binding under way is over, whatever number the changes come to, and takes no identifiers.

#include <gtest/gtest.h>

#include "support/Builders.h"
#include "support/FakeMaterial.h"

namespace reka::test {
namespace {

class BindingMeanwhile : public testing::Test {
protected:
    BindingMeanwhile() { package->AssignDefinition(MakePackage({u"Ethanol", u"Water"}).get()); }

    /// Binds a material that binds another one, and does `meanwhile` after that.
    template <class Action>
    void Bind(CFakeMaterial& inner, Action&& meanwhile) {
        outer.log.onCall = [&](const std::string& call) {
            if (call != "get_ComponentIds()") return;
            package->SetMaterial(inner.Dispatch());
            meanwhile();
        };
        EXPECT_EQ(package->SetMaterial(outer.Dispatch()), S_OK);
        EXPECT_EQ(outer.references.Held(), 0);
        EXPECT_EQ(inner.references.Held(), 0);
    }
    std::string Ids() const {
        std::string ids;
        for (const auto& compound : package->Definition()->compounds) ids += Show(compound->id.Get());
        return ids;
    }

    CFakeMaterial outer{u"ETHANOL", u"WATER"};
    CPackageHolder package;
};

TEST_F(BindingMeanwhile, IsNoticedWhereNoMaterialIsLeft) {
    CFakeMaterial inner({u"ethanol", u"water"});
    Bind(inner, [&] { package->UnsetMaterial(); });
    EXPECT_EQ(Ids(), "'ethanol''water'");
}

TEST_F(BindingMeanwhile, IsNoticedWhereThePackageHasEnded) {
    CFakeMaterial inner({u"ethanol", u"water"});
    Bind(inner, [&] { package->Terminate(); });
    EXPECT_EQ(Ids(), "'ethanol''water'");
}

TEST_F(BindingMeanwhile, IsNoticedWhereTheOtherOneWasRefused) {
    const std::string before = Ids();
    CFakeMaterial inner({u"ethanol", u"argon"});
    Bind(inner, [] {});
    EXPECT_EQ(Ids(), before);
}

}  // namespace
}  // namespace reka::test
