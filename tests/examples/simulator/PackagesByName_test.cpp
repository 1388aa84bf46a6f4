// SPDX-License-Identifier: MIT
// Packages that rekasim gets from the manager: listed, resolved, calculated, saved into a document and loaded back.

#include <gtest/gtest.h>

#include "CPackageSession.h"
#include "DocumentFixture.h"
#include "manager/TemplateStore.h"
#include "package/CReactionPack.h"
#include "packagetext/BagMembers.h"
#include "persistence/ReadBag.h"
#include "support/FakeFiles.h"

namespace rekasim {

namespace {

/// The packages of these documents as the templates of a user.
class PackagesByName : public testing::Test {
protected:
    void Offer(const std::vector<std::string>& documents) {
        reka::TemplateStore store;
        for (const std::string& name : documents) {
            const packagetext::Json content = ReadExample(name);
            const auto bag = packagetext::MakeObject<packagetext::CPropertyBag>();
            std::string errorText;
            ASSERT_TRUE(packagetext::FillBag(content["package"], *bag, errorText)) << errorText;
            auto definition = std::make_unique<reka::ReactionPackDefinition>(nullptr);
            ASSERT_TRUE(reka::ReadDefinitionFromBag(*definition, reka::BagReader{bag.Get(), nullptr, u"test"}));
            store.templates.push_back(std::move(definition));
        }
        store.StoreTemplates();
    }

    reka::test::CFakeFiles files;
};

TEST_F(PackagesByName, AreListed) {
    EXPECT_EQ(RunProgram({"list"}).out, "");
    Offer({"water-gas-shift.json", "ammonia-synthesis.json"});
    const RunResult result = RunProgram({"list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Water-gas shift\nAmmonia synthesis\n");
}

TEST_F(PackagesByName, AreShownAsTheirDocument) {
    Offer({"ammonia-synthesis.json"});
    const RunResult result = RunProgram({"show", "AMMONIA synthesis"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, RunProgram({"show", "--document", ExamplePath("ammonia-synthesis.json")}).out);
}

TEST_F(PackagesByName, CalculateAsTheirDocument) {
    const auto names = ExampleNames();
    Offer(names);
    for (const std::string& name : names) {
        const std::string path = ExamplePath(name);
        const std::string package = ReadExample(name)["package"]["Name"];
        const RunResult result = RunProgram({"table", package, "--material", path});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, RunProgram({"table", "--document", path}).out);
        EXPECT_FALSE(result.out.empty());
    }
}

TEST_F(PackagesByName, AreSavedIntoDocumentsThatLoadBack) {
    Offer({"ammonia-synthesis.json"});
    const CTemporaryFile document("saved.json", "");
    const RunResult saved = RunProgram({"save", "Ammonia synthesis", "--to", document.Path()});
    EXPECT_EQ(saved.status, 0) << saved.err;
    files.entries.clear();
    EXPECT_EQ(RunProgram({"show", "--document", document.Path()}).out,
              RunProgram({"show", "--document", ExamplePath("ammonia-synthesis.json")}).out);
}

TEST_F(PackagesByName, AreAskedForWithTheHintWhereToLook) {
    const RunResult result = RunProgram({"show", "Nowhere"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "rekasim: \"Nowhere\": Reaction package was not resolved or loaded (rekasim list shows the names)\n");
}

TEST_F(PackagesByName, NeedAMaterialForATable) {
    EXPECT_EQ(RunProgram({"table", "X"}).status, 2);
    EXPECT_EQ(RunProgram({"table", "--material", "x.json"}).status, 2);
    EXPECT_EQ(RunProgram({"table", "X", "--document", "x.json"}).status, 2);
    EXPECT_EQ(RunProgram({"show"}).status, 2);
    Offer({"ammonia-synthesis.json"});
    EXPECT_EQ(RunProgram({"table", "Ammonia synthesis", "--material", "missing.json"}).status, 1);
}

}  // namespace

}  // namespace rekasim
