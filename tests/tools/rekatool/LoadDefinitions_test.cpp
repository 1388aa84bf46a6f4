// SPDX-License-Identifier: MIT
// Packages out of each form of file, and what is said of a file that holds none.

#include "LoadDefinitions.h"

#include <gtest/gtest.h>

#include "PackageFile.h"
#include "packagetext/Document.h"
#include "persistence/ByteWriter.h"
#include "persistence/WriteStoredDefinition.h"
#include "support/Builders.h"
#include "support/TemporaryFile.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

using reka::test::CTemporaryFile;

std::string Text(const std::vector<std::uint8_t>& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::vector<std::uint8_t> SampleBlock(const char16_t* name = u"Sample") {
    auto definition = reka::test::MakePackage({u"one", u"two"});
    definition->name = reka::CBstr::Make(name);
    reka::test::AddKinetic(*definition, u"r", u"2*C(one)");
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    EXPECT_TRUE(reka::WriteStoredDefinition(*definition, block, errorText));
    return block;
}

/// The names of the packages in a file of that content, or the words of the refusal behind the file's path.
std::vector<std::string> NamesIn(const std::string& content) {
    const CTemporaryFile file("packages", content);
    std::vector<std::string> names;
    std::vector<std::string> notes;
    try {
        for (const auto& definition : LoadDefinitions(file.Path(), notes)) {
            names.push_back(reka::Utf8FromUtf16(definition->name.View()));
        }
    } catch (const CLoadError& error) {
        const std::string words = error.what();
        return {words.starts_with(file.Path()) ? words.substr(file.Path().size()) : words};
    }
    return names;
}

using Names = std::vector<std::string>;

const std::string document = R"json({
  "package": {
    "Name": "Of a document",
    "compoundId": ["one", "two"],
    "compoundName": ["one", "two"],
    "compoundCAS": ["", ""],
    "compoundFormula": ["", ""],
    "compoundMolecularWeight": [1, 1],
    "compoundCharge": [0, 0],
    "reactionID": ["r"],
    "reactionPhase": ["Vapor"],
    "reactionType": ["Kinetic"],
    "reactionRateBasis": ["Homogeneous"],
    "reactionRateEquation": ["C(one)"],
    "reactionEquilibriumBasis": ["Molarity"],
    "reactionEquilibriumConstantEquation": [null],
    "reactionHeatEquation": [null],
    "thermoVersion": "1.0",
    "stoichiometry[r]": [-1, 1]
}
})json";

TEST(LoadDefinitions, ReadsEachFormOfFile) {
    const std::vector<std::uint8_t> block = SampleBlock();
    std::vector<std::uint8_t> stream;
    reka::CByteWriter(stream).WriteU32(static_cast<std::uint32_t>(block.size()));
    stream.insert(stream.end(), block.begin(), block.end());
    std::vector<std::uint8_t> templates;
    reka::CByteWriter(templates).WriteU32(2);
    templates.insert(templates.end(), stream.begin(), stream.end());
    const std::vector<std::uint8_t> second = SampleBlock(u"Other");
    reka::CByteWriter(templates).WriteU32(static_cast<std::uint32_t>(second.size()));
    templates.insert(templates.end(), second.begin(), second.end());
    EXPECT_EQ(NamesIn(Text(block)), Names{"Sample"});
    EXPECT_EQ(NamesIn(Text(stream)), Names{"Sample"});
    EXPECT_EQ(NamesIn(Text(templates)), (Names{"Sample", "Other"}));
    PackageFile file;
    ASSERT_TRUE(ReadPackageFile(templates, file));
    EXPECT_EQ(NamesIn(packagetext::TextOfDocument(JsonFromFile(file))), (Names{"Sample", "Other"}));
    EXPECT_EQ(NamesIn(document), Names{"Of a document"});
}

TEST(LoadDefinitions, RefusesWhatIsNone) {
    EXPECT_EQ(NamesIn("some text"), Names{": neither a file of templates nor a stored package nor a document"});
    EXPECT_EQ(NamesIn(" "), Names{": neither a file of templates nor a stored package nor a document"});
    EXPECT_EQ(NamesIn("{}"), Names{": line 1: package: the member is missing or no object"});
    EXPECT_EQ(NamesIn(R"({"package": {}})"), Names{": line 1: package.compoundId: the member is missing"});
    EXPECT_EQ(NamesIn("{\"package\": {\n\"Name\": true}}"),
              Names{": line 2: package.Name: a text, a list of texts or null, or a list of numbers is expected"});
}

TEST(LoadDefinitions, RefusesADocumentThatAPackagePassesOver) {
    std::string text = document;
    text.replace(text.find("\"Kinetic\""), 9, "\"Kinetik\"");
    EXPECT_EQ(NamesIn(text), Names{": line 12: package.reactionType[0]: invalid value 'Kinetik'"});
}

TEST(LoadDefinitions, TellsWhyAFileCantBeOpened) {
    std::vector<std::string> notes;
    try {
        LoadDefinitions("/nowhere/at/all", notes);
        FAIL();
    } catch (const CLoadError& error) {
        EXPECT_STREQ(error.what(), "/nowhere/at/all: the file can't be opened");
    }
}

TEST(LoadDefinitions, TellsWhichOfThemCantBeRead) {
    std::vector<std::uint8_t> block = SampleBlock();
    std::vector<std::uint8_t> templates;
    reka::CByteWriter(templates).WriteU32(1);
    block.resize(block.size() / 2);
    reka::CByteWriter(templates).WriteU32(static_cast<std::uint32_t>(block.size()));
    templates.insert(templates.end(), block.begin(), block.end());
    const Names words = NamesIn(Text(templates));
    ASSERT_EQ(words.size(), 1u);
    EXPECT_TRUE(words[0].starts_with(": package 1: ")) << words[0];
}

}  // namespace

}  // namespace rekatool
