// SPDX-License-Identifier: MIT
// What the user is told when a material has no interface to ask: the code of its own answer, or that it has none where
// it says yes and gives nothing.

#include <gtest/gtest.h>

#include "capeopen/ErrorTexts.h"
#include "support/Builders.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// A material that answers a question for its object with a code of choice, and with nothing.
class CWithoutObject final : public CFakeMaterial {
public:
    using CFakeMaterial::CFakeMaterial;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid != ICapeThermoMaterialObject::iid || !isAsked) return CFakeMaterial::QueryInterface(iid, object);
        *object = nullptr;
        return code;
    }
    bool isAsked = false;
    HRESULT code = S_OK;
};

TEST(MaterialInterfaces, AreToldToBeMissingByTheMaterialsCode) {
    const std::pair<HRESULT, HRESULT> rows[] = {
        // what the material answers, whose words the user reads
        {E_NOINTERFACE, E_NOINTERFACE}, {E_FAIL, E_FAIL},         {E_OUTOFMEMORY, E_OUTOFMEMORY},
        {S_OK, E_NOINTERFACE},          {S_FALSE, E_NOINTERFACE},
    };
    const auto definition = MakePackage({u"A1"});
    AddKinetic(*definition, u"r", u"X(A1)");
    CWithoutObject material({u"A1"});
    CFakeReactionObject results;
    const CPackageHolder package(*definition);
    IDispatch* pointer = results.Dispatch();
    package->SetReactionObject(&pointer);
    ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
    material.isAsked = true;
    for (const auto& [answered, told] : rows) {
        material.code = answered;
        const CVariant all;
        EXPECT_EQ(package->CalcReactionProp(Strings({u"ReactionRate"}).Get(), CBstr::Make(u"Liquid").Get(), all.Get(),
                                            nullptr),
                  ECapeUnknownHR);
        EXPECT_EQ(ErrorOf(package.Unknown()).name, "Failed to obtain ICapeThermoMaterialObject from material object: " +
                                                       Utf8FromUtf16(GetSystemErrorText(told)));
    }
    package->Terminate();
}

TEST(MaterialInterfaces, AreNeededToBindTheMaterial) {
    const auto definition = MakePackage({u"A1"});
    CWithoutObject material({u"A1"});
    const CPackageHolder package(*definition);
    material.isAsked = true;
    for (const HRESULT answered : {E_NOINTERFACE, S_OK}) {
        material.code = answered;
        EXPECT_EQ(package->SetMaterial(material.Dispatch()), ECapeUnknownHR);
        EXPECT_EQ(material.log.calls, std::vector<std::string>{});
    }
    package->Terminate();
    EXPECT_EQ(material.references.Held(), 0);
}

}  // namespace
}  // namespace reka::test
