// SPDX-License-Identifier: MIT
// Packages out of each form of file, and what is said of a file that holds none.

#include "python/native/Packages.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "DocumentFixture.h"
#include "persistence/ByteWriter.h"
#include "support/Builders.h"
#include "support/TemporaryFile.h"
#include "text/Utf8.h"

namespace rekapython {

namespace {

using reka::test::CTemporaryFile;

std::string Text(const std::vector<std::uint8_t>& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::vector<std::uint8_t> SampleBlock(const char16_t* name = u"Sample") {
    auto definition = reka::test::MakePackage({u"one", u"two"});
    definition->name = reka::CBstr::Make(name);
    reka::test::AddKinetic(*definition, u"r", u"2*C(one)");
    return WriteBlock(*definition);
}

/// The names of the packages in a file of that content, or the words of the refusal behind the file's path.
std::vector<std::string> NamesIn(const std::string& content) {
    const CTemporaryFile file("packages", content);
    std::vector<std::string> names;
    std::vector<std::string> notes;
    try {
        for (const auto& definition : ReadPackages(file.Path(), notes)) {
            names.push_back(reka::Utf8FromUtf16(definition->name.View()));
        }
    } catch (const PackageError& error) {
        const std::string words = error.what();
        return {words.starts_with(file.Path()) ? words.substr(file.Path().size()) : words};
    }
    return names;
}

using Names = std::vector<std::string>;

TEST(PythonPackages, AreReadFromEachFormOfFile) {
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
    EXPECT_EQ(NamesIn(rekasim::ReadExampleText("methanol-synthesis.json")), Names{"Methanol synthesis"});
}

TEST(PythonPackages, AreThoseThatAreShipped) {
    std::vector<std::string> notes;
    const Definitions shipped = ReadPackages(std::string(REKA_SHIPPED_DATA) + "/REKAConfig.dat", notes);
    EXPECT_EQ(shipped.size(), rekasim::ExampleNames().size());
    EXPECT_TRUE(notes.empty());
}

TEST(PythonPackages, SurviveTheirBlock) {
    std::vector<std::string> notes;
    const std::vector<std::uint8_t> block = SampleBlock();
    EXPECT_EQ(WriteBlock(*ReadBlock(block, notes)), block);
}

TEST(PythonPackages, RefuseWhatIsNone) {
    EXPECT_EQ(NamesIn("some text"), Names{": neither a file of templates nor a stored package nor a document"});
    EXPECT_EQ(NamesIn(" "), Names{": neither a file of templates nor a stored package nor a document"});
    EXPECT_EQ(NamesIn("{}"), Names{": line 1: package: the member is missing or no object"});
    EXPECT_EQ(NamesIn(R"({"package": {}})"), Names{": line 1: package.compoundId: the member is missing"});
    EXPECT_EQ(NamesIn("{\"package\": {\n\"Name\": true}}"),
              Names{": line 2: package.Name: a text, a list of texts or null, or a list of numbers is expected"});
}

TEST(PythonPackages, RefuseADocumentThatAPackagePassesOver) {
    std::string text = rekasim::ReadExampleText("methanol-synthesis.json");
    text.replace(text.find("\"Kinetic\""), 9, "\"Kinetik\"");
    EXPECT_EQ(NamesIn(text), Names{": line 19: package.reactionType[0]: invalid value 'Kinetik'"});
}

TEST(PythonPackages, TellWhyAFileCantBeOpened) {
    std::vector<std::string> notes;
    try {
        ReadPackages("/nowhere/at/all", notes);
        FAIL();
    } catch (const PackageError& error) {
        EXPECT_STREQ(error.what(), "/nowhere/at/all: No such file or directory");
    }
}

TEST(PythonPackages, TellWhichOfThemCantBeRead) {
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

}  // namespace rekapython
