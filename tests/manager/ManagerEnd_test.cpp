// SPDX-License-Identifier: MIT
// What a manager gives back when its last count goes, and in which order: its own context comes before what its
// templates hold.

#include "manager/CReactionPackManager.h"
#include "manager/CreateReactionPackManager.h"
#include "manager/StoreFixture.h"
#include "support/CountedFake.h"
#include "support/Values.h"

namespace reka::test {
namespace {

class ManagerEnd : public StoreFixture {};

TEST_F(ManagerEnd, GivesItsContextBackBeforeItsTemplates) {
    Put(userFile, FileOf({u"A"}), 100);
    CFakeObject ofTemplates;
    CFakeObject own;
    void* made = nullptr;
    ASSERT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
    CComRef<ICapeReactionsPackageManager> manager;
    manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
    {
        const CComRef<ICapeUtilities> utilities = Ask<ICapeUtilities>(manager.Get());
        utilities->put_simulationContext(&ofTemplates);
        CVariant names;
        ASSERT_EQ(manager->GetListOfReactionsPackages(&names.Get()), S_OK);
        utilities->put_simulationContext(&own);  // for the templates that are made from here on
    }
    ASSERT_EQ(ofTemplates.references.Held(), 1);
    Lines order;
    ofTemplates.onRelease = [&] { order.push_back("of the templates"); };
    own.onRelease = [&] { order.push_back("its own"); };
    manager.Reset();
    EXPECT_EQ(order, (Lines{"its own", "of the templates"}));
    EXPECT_EQ(own.references.Held(), 0);
    EXPECT_EQ(ofTemplates.references.Held(), 0);
}

}  // namespace
}  // namespace reka::test
