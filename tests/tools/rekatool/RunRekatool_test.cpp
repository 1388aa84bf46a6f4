// SPDX-License-Identifier: MIT
// The commands as a user sees them, on files in memory.

#include "RunRekatool.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "SampleBlocks.h"
#include "support/FakeFiles.h"
#include "support/TemporaryFile.h"

namespace rekatool {

namespace {

class Rekatool : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        const int status = RunRekatool(arguments, outStream, errStream);
        out = outStream.str();
        err = errStream.str();
        return status;
    }
    void Put(const std::u16string& path, const CStoredBytes& bytes) { files.entries[path] = {bytes.bytes, 1}; }

    reka::test::CFakeFiles files;
    std::string out;
    std::string err;
};

TEST_F(Rekatool, ExportsAndImports) {
    const CStoredBytes templates = CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(EmptyBlock(u"B")));
    Put(u"in.dat", templates);
    EXPECT_EQ(Run({"export", "in.dat", "-o", "text.json"}), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(Run({"import", "text.json", "-o", "out.dat"}), 0) << err;
    EXPECT_EQ(files.entries[u"out.dat"].bytes, templates.bytes);
    EXPECT_EQ(Run({"export", "in.dat"}), 0);
    const auto& text = files.entries[u"text.json"].bytes;
    EXPECT_EQ(out, std::string(text.begin(), text.end()));
    EXPECT_EQ(out,
              "{\n"
              "  \"rekatool\": 1,\n"
              "  \"form\": \"templates\",\n"
              "  \"packages\": [\n"
              "    {\n"
              "      \"version\": 3,\n"
              "      \"name\": \"A\",\n"
              "      \"description\": null,\n"
              "      \"pcdFile\": null,\n"
              "      \"thermoVersion\": \"1.0\",\n"
              "      \"compounds\": [],\n"
              "      \"reactions\": []\n"
              "    },\n"
              "    {\n"
              "      \"version\": 3,\n"
              "      \"name\": \"B\",\n"
              "      \"description\": null,\n"
              "      \"pcdFile\": null,\n"
              "      \"thermoVersion\": \"1.0\",\n"
              "      \"compounds\": [],\n"
              "      \"reactions\": []\n"
              "    }\n"
              "  ]\n"
              "}\n");
}

TEST_F(Rekatool, PassesOverWarningsThatAreWanted) {
    Put(u"in.dat", CStoredBytes().U32(1).Add(Framed(EmptyBlock(u"A"))).U8(7));
    const std::string warning = "file: warning: bytes behind the last template, which nothing reads: 1";
    const std::string fault = "A: fault: At least two compounds must be present";
    EXPECT_EQ(Run({"check", "in.dat"}), 2);
    EXPECT_EQ(out, warning + "\n" + fault + "\n");
    const std::string accepted = "\xEF\xBB\xBF# a remark\r\n\n" + warning + "\r\n" + fault + "\nsomething else";
    files.entries[u"accepted"] = {{accepted.begin(), accepted.end()}, 1};
    EXPECT_EQ(Run({"check", "in.dat", "--accept", "accepted"}), 2);
    EXPECT_EQ(out, fault + "\n");
    EXPECT_EQ(err, "rekatool: accepted: accepted, but not found: something else\n");
    EXPECT_EQ(Run({"check", "in.dat", "--accept", "nowhere"}), 2);
    EXPECT_EQ(err, "rekatool: nowhere: the file can't be opened\n");
    Put(u"good.dat", CStoredBytes().U32(0).U8(7));
    const std::string one = "file: warning: bytes behind the last template, which nothing reads: 1";
    files.entries[u"accepted"] = {{one.begin(), one.end()}, 1};
    EXPECT_EQ(Run({"check", "good.dat"}), 1);
    EXPECT_EQ(Run({"check", "good.dat", "--accept", "accepted"}), 0);
    EXPECT_EQ(out + err, "");
}

TEST_F(Rekatool, TellsWhatDiffers) {
    Put(u"one.dat", CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(EmptyBlock(u"B"))));
    Put(u"two.dat", EmptyBlock(u"A"));
    EXPECT_EQ(Run({"diff", "one.dat", "two.dat"}), 1);
    EXPECT_EQ(out, "B: is gone\n");
    EXPECT_EQ(Run({"diff", "one.dat", "one.dat"}), 0);
    EXPECT_EQ(out + err, "");
    EXPECT_EQ(Run({"diff", "one.dat", "three.dat"}), 2);
    EXPECT_EQ(err, "rekatool: three.dat: the file can't be opened\n");
    EXPECT_EQ(Run({"diff", "one.dat"}), 2);
    const std::string text = "{\"rekatool\": 1, \"\\u001b[31m\": 1}";
    files.entries[u"text.json"] = {{text.begin(), text.end()}, 1};
    EXPECT_EQ(Run({"diff", "one.dat", "text.json"}), 2);
    EXPECT_EQ(err.find('\x1B'), std::string::npos) << err;
}

TEST_F(Rekatool, ChecksFilesAndTheirText) {
    Put(u"in.dat", EmptyBlock(u"A"));
    EXPECT_EQ(Run({"check", "in.dat"}), 2);
    EXPECT_EQ(out, "A: fault: At least two compounds must be present\n");
    EXPECT_EQ(Run({"export", "in.dat", "-o", "text.json"}), 0);
    EXPECT_EQ(Run({"check", "text.json"}), 2);
    EXPECT_EQ(out, "A: fault: At least two compounds must be present\n");
    Put(u"none.dat", CStoredBytes().U32(0));
    EXPECT_EQ(Run({"check", "none.dat"}), 0);
    EXPECT_EQ(out, "");
    CStoredBytes warned = Head(u"A", 3).U32(2);
    for (const char16_t* const name : {u"one", u"two"}) warned.Wide(name).Wide(u"").Wide(name).Wide(u"").F64(1).F64(0);
    warned.U32(1).Wide(u"R").Wide(u"Vapor").U32(1).U32(0).Narrow("").Narrow("").Narrow("").F64(-1).F64(1);
    Put(u"warned.dat", warned.U8(0).U8(0).U8(0).U32(0).U32(0));
    EXPECT_EQ(Run({"check", "warned.dat"}), 1);
    EXPECT_EQ(out, "A: reaction R: warning: there is no rate\n");
}

TEST_F(Rekatool, SaysWhatItCanNotDo) {
    Put(u"text.dat", CStoredBytes().Narrow("hello"));
    Put(u"empty.json", CStoredBytes().U8('{').U8('}'));
    Put(u"broken.json", CStoredBytes().U8('{'));
    const std::pair<std::vector<std::string>, const char*> rows[] = {
        {{"export", "missing.dat"}, "rekatool: missing.dat: the file can't be opened\n"},
        {{"export", "text.dat"}, "rekatool: text.dat: neither a file of templates nor a stored package\n"},
        {{"check", "text.dat"}, "rekatool: text.dat: neither a file of templates nor a stored package\n"},
        {{"import", "empty.json", "-o", "x"}, "rekatool: empty.json: not what rekatool export writes\n"},
    };
    for (const auto& [arguments, expected] : rows) {
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(err, expected);
        EXPECT_EQ(out, "");
    }
    EXPECT_EQ(Run({"import", "broken.json", "-o", "x"}), 2);
    EXPECT_EQ(err.substr(0, 23), "rekatool: broken.json: ");
    EXPECT_FALSE(files.entries.contains(u"x"));
}

TEST_F(Rekatool, SaysWhatIsMisused) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"export"}, {"import", "x"}, {"export", "a", "b"}, {"mend", "x"}}) {
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(err.substr(0, 10), "rekatool: ");
    }
    EXPECT_EQ(Run({"--help"}), 0);
    EXPECT_NE(out.find("export"), std::string::npos);
}

TEST_F(Rekatool, NoticesAFileThatCanNotBeWritten) {
    Put(u"in.dat", EmptyBlock(u"A"));
    files.entries[u"out.json"] = {{'o', 'l', 'd'}, 1};
    files.failAt = 4;  // behind open, read and close
    EXPECT_EQ(Run({"export", "in.dat", "-o", "out.json"}), 2);
    EXPECT_EQ(err, "rekatool: out.json: the file can't be written: the system's reason\n");
    EXPECT_EQ(files.operations.back(), "replace out.json");
    EXPECT_EQ(files.entries[u"out.json"].bytes, (std::vector<std::uint8_t>{'o', 'l', 'd'}));
}

TEST_F(Rekatool, RefusesTextThatNestsWithoutEnd) {
    const std::string open(1'000'000, '[');
    const std::string close(1'000'000, ']');
    const std::string head = "{\"rekatool\":1,\"form\":\"templates\",\"packages\":";
    for (const std::string& deep : {open, head + open, head + open + close + "}", "{\"form\":" + open + close + "}"}) {
        files.entries[u"deep.json"] = {{deep.begin(), deep.end()}, 1};
        EXPECT_EQ(Run({"import", "deep.json", "-o", "x"}), 2);
        EXPECT_EQ(err, "rekatool: deep.json: the text is nested too deeply\n");
    }
    EXPECT_FALSE(files.entries.contains(u"x"));
}

TEST_F(Rekatool, SalvagesWhatIsWhole) {
    const CStoredBytes templates = CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(EmptyBlock(u"B")));
    Put(u"whole.dat", templates);
    EXPECT_EQ(Run({"salvage", "whole.dat", "-o", "out.dat"}), 0);
    EXPECT_EQ(err, "");
    EXPECT_EQ(files.entries[u"out.dat"].bytes, templates.bytes);
    CStoredBytes cut = templates;
    cut.bytes.resize(cut.bytes.size() - 1);
    Put(u"cut.dat", cut);
    EXPECT_EQ(Run({"salvage", "cut.dat", "-o", "out.dat"}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(
        err,
        "rekatool: cut.dat: template 2, \"B\", from byte 44 on, is lost: its size says 36 bytes, but the file ends "
        "after 35\n"
        "rekatool: out.dat: holds the 1 whole template\n");
    EXPECT_EQ(files.entries[u"out.dat"].bytes, CStoredBytes().U32(1).Add(Framed(EmptyBlock(u"A"))).bytes);
    EXPECT_EQ(files.entries[u"cut.dat"].bytes, cut.bytes);
}

TEST_F(Rekatool, WritesNothingWhereNothingIsWhole) {
    Put(u"text.txt", CStoredBytes().Narrow("hello"));
    EXPECT_EQ(Run({"salvage", "text.txt", "-o", "out.dat"}), 2);
    EXPECT_EQ(err.substr(err.find("there")), "there is no whole template in it; nothing is written\n");
    EXPECT_EQ(Run({"salvage", "missing.dat", "-o", "out.dat"}), 2);
    EXPECT_EQ(err, "rekatool: missing.dat: the file can't be opened\n");
    EXPECT_FALSE(files.entries.contains(u"out.dat"));
}

TEST_F(Rekatool, SaysThatSalvageCanNotWrite) {
    Put(u"in.dat", CStoredBytes().U32(1).Add(Framed(EmptyBlock(u"A"))));
    files.failAt = 4;  // behind open, read and close
    EXPECT_EQ(Run({"salvage", "in.dat", "-o", "out.dat"}), 2);
    EXPECT_EQ(err, "rekatool: out.dat: the file can't be written: the system's reason\n");
}

/// On the disk itself: by the same name, by another spelling of it and by a second name.
TEST(RekatoolOnTheDisk, NeverSalvagesOverTheDamagedFile) {
    const std::string content("\1\0\0\0\7\0\0\0damaged", 15);
    const reka::test::CTemporaryFile damaged("damaged.dat", content);
    const reka::test::CTemporaryFile second("second.dat", "");
    const std::filesystem::path path(std::u8string(damaged.Path().begin(), damaged.Path().end()));
    std::filesystem::create_hard_link(path, std::u8string(second.Path().begin(), second.Path().end()));
    const std::u8string spelling = (path.parent_path() / "." / path.filename()).u8string();
    for (const std::string& output : {damaged.Path(), std::string(spelling.begin(), spelling.end()), second.Path()}) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunRekatool({"salvage", damaged.Path(), "-o", output}, out, err), 2);
        EXPECT_EQ(err.str(),
                  "rekatool: " + output + ": this is the damaged file, which stays; give another name to write to\n");
        EXPECT_EQ(damaged.Content(), content);
    }
}

/// Sizes may have the number of an opening brace in them, which is no text for that.
TEST_F(Rekatool, ChecksPackagesOfAnySize) {
    CStoredBytes block = CStoredBytes().Wide(u"A").Wide(u"").Narrow(std::string(86, 'x'));
    block.U32(0xFFFFFFFF).U32(3).U32(0).U32(0).U32(0);
    ASSERT_EQ(block.bytes.size(), std::size_t{'{'});
    Put(u"stream.dat", Framed(block));
    Put(u"templates.dat", CStoredBytes().U32(1).Add(Framed(block)));
    Put(u"block.dat", EmptyBlock(std::u16string('{', u'n')));
    for (const char* const path : {"stream.dat", "templates.dat", "block.dat"}) {
        EXPECT_EQ(Run({"check", path}), 2);
        EXPECT_EQ(err, "");
        EXPECT_NE(out.find(": fault: At least two compounds must be present\n"), std::string::npos);
    }
}

TEST_F(Rekatool, TakesTextWithAByteOrderMark) {
    Put(u"in.dat", EmptyBlock(u"A"));
    EXPECT_EQ(Run({"export", "in.dat", "-o", "text.json"}), 0);
    auto& text = files.entries[u"text.json"].bytes;
    text.insert(text.begin(), {0xEF, 0xBB, 0xBF});
    EXPECT_EQ(Run({"check", "text.json"}), 2);
    EXPECT_EQ(out, "A: fault: At least two compounds must be present\n");
    EXPECT_EQ(Run({"import", "text.json", "-o", "out.dat"}), 0) << err;
    EXPECT_EQ(files.entries[u"out.dat"].bytes, EmptyBlock(u"A").bytes);
}

/// Some text, of which the first four bytes are a number below 0.
TEST_F(Rekatool, WarnsOfAFileThatHardlyIsOne) {
    Put(u"menu.txt", CStoredBytes().U8('C').U8('a').U8('f').U8(0xE9).U8('s').U8('!'));
    EXPECT_EQ(Run({"check", "menu.txt"}), 1);
    EXPECT_EQ(out, "file: warning: bytes behind the last template, which nothing reads: 2\n");
}

TEST_F(Rekatool, NoticesOutputThatGoesNowhere) {
    Put(u"in.dat", EmptyBlock(u"A"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"export", "in.dat"}, {"check", "in.dat"}, {"--help"}, {"check", "--help"}}) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        outStream.setstate(std::ios::badbit);
        EXPECT_EQ(RunRekatool(arguments, outStream, errStream), 2);
        EXPECT_EQ(errStream.str(), "rekatool: the output can't be written\n");
    }
}

}  // namespace

}  // namespace rekatool
