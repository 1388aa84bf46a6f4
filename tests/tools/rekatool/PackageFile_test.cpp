// SPDX-License-Identifier: MIT
// Every file comes back byte for byte from its readable form.

#include "PackageFile.h"

#include <gtest/gtest.h>

#include <random>

#include "Hexadecimal.h"
#include "RandomBlock.h"

namespace rekatool {

namespace {

/// The form of a file, checked on the way there and back; "none" for what is none.
std::string RoundTrip(const CStoredBytes& bytes, Json* readable = nullptr) {
    PackageFile file;
    if (!ReadPackageFile(bytes.bytes, file)) return "none";
    EXPECT_EQ(WritePackageFile(file), bytes.bytes);
    const std::string text = packagetext::TextOfDocument(JsonFromFile(file));
    const Json content = Json::parse(text);
    PackageFile back;
    std::string errorText;
    EXPECT_TRUE(FileFromJson(content, back, errorText)) << errorText << "\n" << text;
    EXPECT_EQ(WritePackageFile(back), bytes.bytes) << text;
    if (readable) *readable = content;
    return content["form"];
}

/// The only package of a block, in its readable form.
Json PackageOf(const CStoredBytes& block) {
    Json content;
    EXPECT_EQ(RoundTrip(block, &content), "block");
    return content["packages"][0];
}

TEST(PackageFile, KnowsItsForms) {
    EXPECT_EQ(RoundTrip(EmptyBlock(u"A")), "block");
    EXPECT_EQ(RoundTrip(Framed(EmptyBlock(u"A"))), "stream");
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(EmptyBlock(u"B")))),
              "templates");
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(0)), "templates");
    EXPECT_EQ(RoundTrip(CStoredBytes()), "none");
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(1)), "none");
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(1).U32(9).U8(0)), "none");
    EXPECT_EQ(RoundTrip(CStoredBytes().Narrow("just some text")), "none");
}

TEST(PackageFile, KeepsCountsAndWhatStandsBehind) {
    Json content;
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(0xFFFFFFFE).U8(7), &content), "templates");
    EXPECT_EQ(content["count"], -2);
    EXPECT_EQ(content["rest"], "07");
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(1).Add(Framed(EmptyBlock(u"A"))).U8(0xAB).U8(0), &content), "templates");
    EXPECT_EQ(content["rest"], "AB00");
}

TEST(PackageFile, KeepsABlockThatIsDamagedAsItIs) {
    Json content;
    const CStoredBytes newer = EmptyBlock(u"B").U8(0);
    EXPECT_EQ(RoundTrip(CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(newer)), &content), "templates");
    EXPECT_EQ(content["packages"][0]["name"], "A");
    EXPECT_EQ(content["packages"][1]["reason"], "not a package that this program can read");
}

/// Bytes written out one by one: a package A with nothing in it, and a rate that is twice the temperature.
TEST(PackageFile, KeepsBytesThatWereWrittenByHand) {
    Bytes block;
    ASSERT_TRUE(
        BytesOf("0100000041000000"
                "00000000"
                "00000000"
                "FFFFFFFF03000000"
                "00000000"
                "00000000"
                "00000000",
                block));
    ASSERT_EQ(block.size(), 36U);
    EXPECT_EQ(PackageOf({block})["name"], "A");
    ASSERT_TRUE(
        BytesOf("000000000000000000000000"
                "FFFFFFFF03000000"
                "0000000001000000"  // one reaction
                "0000000000000000"
                "0100000000000000"  // kinetic, homogeneous
                "03000000542A3200"  // T*2
                "0000000000000000"
                "0108000000"
                "0300000002000000"
                "1D00000000000000"
                "000000000000000000000040"
                "0000"
                "0000000000000000",
                block));
    const Json package = PackageOf({block});
    EXPECT_EQ(package["reactions"][0]["rateEquation"], "T*2");
    EXPECT_FALSE(package["reactions"][0].contains("rateTree"));
}

TEST(PackageFile, SaysAPackageInWords) {
    CStoredBytes block;
    block.Wide(u"Caf\u00E9").Wide(u"\U0001F525").Narrow("C:\\x.pcd").U32(0xFFFFFFFF).U32(3).U32(1);
    block.Wide(u"W").Wide(u"7732-18-5").Wide(u"water").Wide(u"H2O").F64(18.015).F64(-0.5).U32(1);
    block.Wide(u"R").Wide(u"").U32(0).U32(1).Narrow("").Narrow("2*T").Narrow("").F64(-1.5).U8(0);
    block.U8(1).U32(8).U32(3).U32(2).U32(0).F64(2).U32(29).U32(0).U8(0).U32(4).U32(1);
    EXPECT_EQ(PackageOf(block).dump(),
              "{\"version\":3,\"name\":\"Caf\u00E9\",\"description\":\"\U0001F525\",\"pcdFile\":\"C:\\\\x.pcd\","
              "\"thermoVersion\":\"1.1\",\"compounds\":[{\"id\":\"W\",\"name\":\"water\",\"casNumber\":\"7732-18-5\","
              "\"formula\":\"H2O\",\"molecularWeight\":18.015,\"charge\":-0.5}],\"reactions\":[{\"id\":\"R\","
              "\"phase\":null,\"type\":\"Equilibrium\",\"rateBasis\":\"Heterogeneous\",\"rateEquation\":null,"
              "\"equilibriumBasis\":\"Fugacity\",\"equilibriumConstantEquation\":\"2*T\",\"heatEquation\":null,"
              "\"stoichiometry\":[-1.5]}]}");
}

TEST(PackageFile, KeepsEveryVersion) {
    for (const std::uint32_t version : {0U, 1U, 2U, 3U, 4U, 0xFFFFFFFFU}) {
        const Json package =
            PackageOf(Head(u"V", version).U32(0).U32(1).Add(Reaction(version, TemperatureTree())).U32(1));
        EXPECT_EQ(package["version"], version);
        EXPECT_FALSE(package.contains("marker"));
        EXPECT_EQ(package["reactions"][0].contains("obsolete"), version < 2);
        EXPECT_EQ(package["reactions"][0].contains("equilibriumBasis"), version >= 2);
    }
    const Json marked = PackageOf(Head(u"V", 0).U32(0xFFFFFFFF).U32(0).U32(0).U32(0));
    EXPECT_EQ(marked["version"], 0);
    EXPECT_EQ(marked["marker"], true);
}

TEST(PackageFile, KeepsAMissingThermoVersionAndOddWords) {
    EXPECT_TRUE(PackageOf(Head(u"V", 3).U32(0).U32(0))["thermoVersion"].is_null());
    EXPECT_EQ(PackageOf(Head(u"V", 3).U32(0).U32(0).U32(9))["thermoVersion"], 9);
    const Json package = PackageOf(Head(u"V", 3).U32(0x80000000).U32(0xFFFFFFFF).U32(0));
    EXPECT_EQ(package["compoundCount"], INT32_MIN);
    EXPECT_EQ(package["reactionCount"], -1);
    CStoredBytes reaction;
    reaction.Wide(u"R").Wide(u"").U32(7).U32(0xFFFFFFFF).Narrow("").Narrow("").Narrow("").U8(0).U8(0).U8(0).U32(6);
    const Json odd = PackageOf(Head(u"V", 3).U32(0).U32(1).Add(reaction))["reactions"][0];
    EXPECT_EQ(odd["type"], 7);
    EXPECT_EQ(odd["rateBasis"], 0xFFFFFFFFU);
    EXPECT_EQ(odd["equilibriumBasis"], 6);
}

TEST(PackageFile, KeepsTheBitsOfNumbers) {
    const auto weightOf = [](std::uint64_t bits) {
        CStoredBytes block = Head(u"V", 3).U32(1).Wide(u"").Wide(u"").Wide(u"").Wide(u"").Bits(bits).F64(0).U32(0);
        return PackageOf(block)["compounds"][0]["molecularWeight"];
    };
    EXPECT_EQ(weightOf(0x7FF8000000000001U), "0x7FF8000000000001");
    EXPECT_EQ(weightOf(0x7FF0000000000001U), "0x7FF0000000000001");  // one that signals
    EXPECT_EQ(weightOf(0xFFF0000000000000U), "0xFFF0000000000000");
    EXPECT_EQ(weightOf(0x8000000000000000U), "0x8000000000000000");
    EXPECT_EQ(weightOf(0x0000000000000001U), 5e-324);
    EXPECT_EQ(weightOf(0x3FB999999999999AU), 0.1);
    EXPECT_EQ(weightOf(0x7FEFFFFFFFFFFFFFU), 1.7976931348623157e308);
    std::mt19937_64 random(1);
    for (int i = 0; i < 2000; ++i) weightOf(random());
}

TEST(PackageFile, KeepsTextsThatAreNone) {
    const std::u16string surrogate = {u'a', static_cast<char16_t>(0xD800), u'b'};
    EXPECT_EQ(PackageOf(EmptyBlock(surrogate))["name"].dump(), "{\"units\":[\"0x0061\",\"0xD800\",\"0x0062\"]}");
    EXPECT_EQ(PackageOf(EmptyBlock(std::u16string(u"a\0b", 3)))["name"], std::string("a\0b", 3));
    EXPECT_EQ(PackageOf(EmptyBlock(u"\uFFFD"))["name"], "\xEF\xBF\xBD");
    CStoredBytes odd;
    odd.U32(1).U8('a').U8(0).U8(1).U8(2).Wide(u"").Narrow("").U32(0xFFFFFFFF).U32(3).U32(0).U32(0);
    EXPECT_EQ(PackageOf(odd)["name"].dump(), "{\"units\":[\"0x0061\"],\"terminator\":\"0x0201\"}");
}

TEST(PackageFile, KeepsNarrowTextsThatAreNone) {
    const auto pathOf = [](std::initializer_list<int> bytes) {
        CStoredBytes block = CStoredBytes().Wide(u"").Wide(u"").U32(static_cast<std::uint32_t>(bytes.size() - 1));
        for (const int byte : bytes) block.U8(static_cast<std::uint8_t>(byte));
        return PackageOf(block.U32(0xFFFFFFFF).U32(3).U32(0).U32(0))["pcdFile"].dump();
    };
    EXPECT_EQ(pathOf({'a', 'b', 0}), "\"ab\"");
    EXPECT_EQ(pathOf({'a', 'b', 'c'}), "{\"bytes\":\"616263\"}");
    EXPECT_EQ(pathOf({'a', 0, 'c', 0}), "{\"bytes\":\"61006300\"}");
    EXPECT_EQ(pathOf({0x80, 0}), "\"\u20AC\"");
}

struct TreeCase {
    const char* name;
    CStoredBytes tree;
    const char* expected;  // of the member; empty for none
};
const TreeCase treeCases[] = {
    {"OfTheText", TemperatureTree(), ""},
    {"None", CStoredBytes().U8(0), "null"},
    {"AnotherMask", CStoredBytes().U8(1).U32(9).U32(29).U32(0), R"({"dependencies":9,"nodes":["Temperature 0"]})"},
    {"AnotherFlag", CStoredBytes().U8(7).U32(8).U32(29).U32(0),
     R"({"flag":7,"dependencies":8,"nodes":["Temperature 0"]})"},
    {"AnotherTree", CStoredBytes().U8(1).U32(0).U32(3).U32(2).U32(0).F64(0.1).U32(30).U32(0xFFFFFFFF),
     R"({"dependencies":0,"nodes":["Multiplication 2","RealConstant 0.1","Molarity -1"]})"},
    {"NotANumber", CStoredBytes().U8(1).U32(0).U32(0).Bits(0x7FF8000000000000U),
     R"({"dependencies":0,"nodes":["RealConstant 0x7FF8000000000000"]})"},
    {"OddArguments", CStoredBytes().U8(1).U32(0).U32(29).U32(1).U32(7).U32(0),
     R"({"dependencies":0,"nodes":["Temperature 1","ExpressionList 0"]})"},
};
void PrintTo(const TreeCase& row, std::ostream* stream) {
    *stream << row.name;
}

class StoredTrees : public testing::TestWithParam<TreeCase> {};

TEST_P(StoredTrees, AreSaidUnlessTheTextGivesThem) {
    const Json package = PackageOf(Head(u"V", 3).U32(0).U32(1).Add(Reaction(3, GetParam().tree)).U32(0));
    const Json& reaction = package["reactions"][0];
    if (*GetParam().expected == '\0') {
        EXPECT_FALSE(reaction.contains("rateTree"));
    } else {
        EXPECT_EQ(reaction["rateTree"].dump(), GetParam().expected);
    }
}
INSTANTIATE_TEST_SUITE_P(Table, StoredTrees, testing::ValuesIn(treeCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PackageFile, KeepsDeepTrees) {
    CStoredBytes tree = CStoredBytes().U8(1).U32(0);
    for (int i = 0; i < 100000; ++i) tree.U32(5).U32(1);
    tree.U32(29).U32(0);
    EXPECT_EQ(PackageOf(Head(u"V", 3).U32(0).U32(1).Add(Reaction(3, tree)).U32(0))["reactions"][0]["rateTree"]["nodes"]
                  .size(),
              100001U);
}

TEST(PackageFile, SaysAllThatABlockCanHold) {
    CRandomBlock random(5);
    for (int turn = 0; turn < 1500; ++turn) {
        const CStoredBytes block = random.Make();
        StoredPackage package;
        ASSERT_TRUE(ReadStoredPackage(block.bytes, package)) << turn;
        EXPECT_EQ(WriteStoredPackage(package), block.bytes) << turn;
        Json content;
        EXPECT_EQ(RoundTrip(CStoredBytes().U32(1).Add(Framed(block)), &content), "templates");
        EXPECT_FALSE(content["packages"][0].contains("raw")) << turn;
    }
}

/// Good blocks with some bytes changed: they come back, or are refused.
TEST(PackageFile, SurvivesWhateverIsChanged) {
    CStoredBytes block = Head(u"Name", 3).U32(2);
    for (int i = 0; i < 2; ++i) block.Wide(u"id").Wide(u"1-2").Wide(u"water").Wide(u"H2O").F64(18.015).F64(0);
    block.U32(1).Wide(u"R").Wide(u"Vapor").U32(1).U32(0).Narrow("2*T").Narrow("").Narrow("5").F64(-1).F64(1);
    block.U8(1).U32(8).U32(3).U32(2).U32(0).F64(2).U32(29).U32(0).U8(0).U8(1).U32(0).U32(0).F64(5).U32(0).U32(0);
    const CStoredBytes templates = CStoredBytes().U32(1).Add(Framed(block));
    std::mt19937 random(7);
    int readable = 0;
    for (int turn = 0; turn < 1500; ++turn) {
        CStoredBytes changed = turn % 2 == 0 ? block : templates;
        for (auto change = random() % 3 + 1; change > 0; --change) {
            changed.bytes[random() % changed.bytes.size()] =
                static_cast<std::uint8_t>(random() % 4 == 0 ? 0xFF : random());
        }
        if (random() % 8 == 0) changed.bytes.resize(random() % changed.bytes.size());
        if (RoundTrip(changed) != "none") ++readable;
    }
    EXPECT_GT(readable, 150);
}

}  // namespace

}  // namespace rekatool
