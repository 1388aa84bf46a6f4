// SPDX-License-Identifier: MIT
// Compound files, whole and damaged: what becomes of each field, and what is told of a file that won't do.

#include "compounds/LoadPcdFile.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <functional>
#include <limits>

#include "platform/HostArithmetic.h"
#include "support/AllocationCounter.h"
#include "support/FakeFiles.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

const std::u16string path = u"D:/compounds.pcd";
const char* const readError = "a read error or format error occurred while reading D:/compounds.pcd";

using Bytes = std::vector<std::uint8_t>;

/// Puts a field into a record: its length byte and its characters; the rest of the field is blank.
void PutField(Bytes& record, std::size_t offset, std::string_view text) {
    record[offset] = static_cast<std::uint8_t>(text.size());
    for (std::size_t i = 0; i < 50; ++i)
        record[offset + 1 + i] = static_cast<std::uint8_t>(i < text.size() ? text[i] : ' ');
}

/// A record of `length` bytes. What isn't read is 0xEE.
Bytes Record(std::size_t length, std::string_view name, std::string_view formula, float weight,
             std::string_view cas = "") {
    Bytes record(length, 0xEE);
    PutField(record, 3, name);
    PutField(record, 54, formula);
    const auto bits = std::bit_cast<std::uint32_t>(weight);
    for (std::size_t i = 0; i < 4; ++i) record[138 + i] = static_cast<std::uint8_t>(bits >> 8 * i);
    if (length == 1024) PutField(record, 839, cas);
    return record;
}

Bytes Header(std::size_t length) {
    Bytes header(length, 0xEE);
    header[0] = static_cast<std::uint8_t>(length & 0xFF);
    header[1] = static_cast<std::uint8_t>(length >> 8);
    return header;
}

Bytes File(std::size_t length, const std::vector<Bytes>& records) {
    Bytes file = Header(length);
    for (const Bytes& record : records) file.insert(file.end(), record.begin(), record.end());
    return file;
}

class PcdFile : public testing::Test {
protected:
    /// The reason of a failure, empty for none. What is in `list` before goes away.
    std::string Load(const Bytes& bytes) {
        files.entries[path] = {bytes, 1};
        return Load();
    }
    std::string Load() {
        list.clear();
        list.push_back(std::make_unique<CompoundDefinition>());
        std::u16string errorText;
        const bool isLoaded = LoadPcdFile(path, list, errorText);
        EXPECT_EQ(isLoaded, errorText.empty());
        if (!isLoaded) {
            EXPECT_TRUE(list.empty());
        }
        EXPECT_EQ(files.openFiles, 0);
        return Utf8FromUtf16(errorText);
    }
    CFakeFiles files;
    CompoundList list;
};

TEST_F(PcdFile, GivesTheCompoundsInTheirOrder) {
    EXPECT_EQ(Load(File(1024, {Record(1024, "Ethanol", "CH3CH2OH", 46.069F, "64175"),
                               Record(1024, "Water  ", "H2O   ", 18.015F, "7732-18-5")})),
              "");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0]->id.View(), u"Ethanol");
    EXPECT_EQ(list[0]->name.View(), u"Ethanol");
    EXPECT_EQ(list[0]->formula.View(), u"C2H6O");
    EXPECT_EQ(list[0]->molecularWeight, static_cast<double>(46.069F));
    EXPECT_EQ(list[0]->casNumber.View(), u"64-17-5");
    EXPECT_EQ(list[0]->databaseIndex, 0);
    EXPECT_EQ(list[0]->charge, 0.0);
    EXPECT_EQ(list[1]->id.View(), u"Water  ");  // a name keeps its blanks
    EXPECT_EQ(list[1]->formula.View(), u"H2O");
    EXPECT_EQ(list[1]->casNumber.View(), u"7732-18-5");
    EXPECT_EQ(list[1]->databaseIndex, 1);
}

TEST_F(PcdFile, HasNoCasNumbersInShortRecords) {
    EXPECT_EQ(Load(File(839, {Record(839, "A", "CH4", 16), Record(839, "B", "CO", 28)})), "");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1]->id.View(), u"B");
    EXPECT_TRUE(list[0]->casNumber.IsAbsent());
    EXPECT_TRUE(list[1]->casNumber.IsAbsent());
}

TEST_F(PcdFile, OfAHeaderAloneIsEmpty) {
    EXPECT_EQ(Load(File(1024, {})), "");
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(Load({0x00, 0x04}), "");  // 1024, and nothing else
    EXPECT_EQ(Load({0x47, 0x03}), "");  // 839
}

TEST_F(PcdFile, TellsOfARecordLengthItDoesNotKnow) {
    const std::string reason = "invalid record length in D:/compounds.pcd";
    EXPECT_EQ(Load(Header(1000)), reason);
    EXPECT_EQ(Load({}), reason);
    EXPECT_EQ(Load({0x47}), reason);
    EXPECT_EQ(Load({0x00, 0x84}), reason);
}

TEST_F(PcdFile, TellsOfAPathThatLeadsNowhere) {
    EXPECT_EQ(Load(), "failed to open D:/compounds.pcd for reading");
    std::u16string errorText;
    EXPECT_FALSE(LoadPcdFile(u"", list, errorText));
    EXPECT_EQ(errorText, u"no PCD file specified");
}

/// Whether a file whose last record ends early loads: at the byte where it is whole, and nowhere before but at none.
void ExpectTruncations(std::size_t length, std::size_t needed, const std::function<std::string(const Bytes&)>& load) {
    const Bytes whole =
        File(length, {Record(length, "A", "CH4", 16, "74828"), Record(length, "B", "CO", 28, "630080")});
    for (std::size_t size = 2 * length; size <= whole.size(); ++size) {
        const std::size_t inRecord = size - 2 * length;
        const std::string expected = inRecord == 0 || inRecord >= needed ? "" : readError;
        EXPECT_EQ(load({whole.begin(), whole.begin() + static_cast<long>(size)}), expected) << inRecord;
    }
}

TEST_F(PcdFile, IsSpoiledByOneRecordCutOff) {
    ExpectTruncations(839, 723, [this](const Bytes& bytes) { return Load(bytes); });
    ExpectTruncations(1024, 890, [this](const Bytes& bytes) { return Load(bytes); });
}

struct FormulaCase {
    const char* name;
    std::string formula;
    const char16_t* expected;  // null for an absent one
};
const FormulaCase formulaCases[] = {
    {"Empty", "", nullptr},
    {"Blank", "   ", nullptr},
    {"Polymer", "Polyethylene", nullptr},
    {"PolymerInSmallLetters", "polyethylene", nullptr},  // which has no symbol in it
    {"TheWordAndOneLetter", "PolyX", nullptr},
    {"TheWordAlone", "Poly", u"Po"},
    {"TheWordAndBlanks", "Poly  ", u"Po"},
    {"Polonium", "PoCl4", u"Cl4Po"},
    {"BadBrackets", "CH3(CH2", nullptr},
    {"Blanks", "CH3 OH ", u"CH4O"},
    {"ZeroInTheMiddle", std::string("CH4\0O", 5), u"CH4"},
};
void PrintTo(const FormulaCase& row, std::ostream* stream) {
    *stream << row.name;
}

class PcdFormulas : public PcdFile, public testing::WithParamInterface<FormulaCase> {};

TEST_P(PcdFormulas, ComeInNormalFormOrNotAtAll) {
    EXPECT_EQ(Load(File(839, {Record(839, "A", GetParam().formula, 1)})), "");
    ASSERT_EQ(list.size(), 1U);
    if (GetParam().expected) {
        EXPECT_EQ(list[0]->formula.View(), GetParam().expected);
    } else {
        EXPECT_TRUE(list[0]->formula.IsAbsent());
    }
}
INSTANTIATE_TEST_SUITE_P(Table, PcdFormulas, testing::ValuesIn(formulaCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PcdFile, CutsTextsAtTheirLength) {
    Bytes record = Record(1024, "Ethanol", "CH4", 1, "64175");
    record[3] = 3;
    record[54] = 1;
    EXPECT_EQ(Load(File(1024, {record})), "");
    EXPECT_EQ(list[0]->id.View(), u"Eth");
    EXPECT_EQ(list[0]->formula.View(), u"C");
    record[3] = 0;
    EXPECT_EQ(Load(File(1024, {record})), "");
    EXPECT_EQ(SysStringLen(list[0]->id.Get()), 0U);
    record[3] = 50;
    EXPECT_EQ(Load(File(1024, {record})), "");
    EXPECT_EQ(list[0]->id.View(), u"Ethanol" + std::u16string(43, u' '));
}

TEST_F(PcdFile, HasTextsInTheCodePageOfTheThread) {
    EXPECT_EQ(Load(File(839, {Record(839, "\xD6l \x80 a\xE7o",
                                     "H\xFC"
                                     "2O",
                                     1)})),
              "");
    EXPECT_EQ(list[0]->id.View(), u"\u00D6l \u20AC a\u00E7o");
    EXPECT_EQ(list[0]->name.View(), u"\u00D6l \u20AC a\u00E7o");
    EXPECT_EQ(list[0]->formula.View(), u"HO");  // the digit stands behind no symbol
}

TEST_F(PcdFile, RefusesLengthsThatAFieldHasNot) {
    for (const std::size_t offset : {std::size_t{3}, std::size_t{54}, std::size_t{839}}) {
        for (const int length : {51, 127, 128, 255}) {
            Bytes record = Record(1024, "A", "CH4", 1, "64175");
            record[offset] = static_cast<std::uint8_t>(length);
            EXPECT_EQ(Load(File(1024, {Record(1024, "B", "CO", 1), record})), readError) << offset << " " << length;
        }
    }
}

TEST_F(PcdFile, BringsNoCharge) {
    for (const std::uint32_t bits : {0x3F800000U, 0xBF800000U, 0x7F800000U, 0xFFFFFFFFU, 0x7FFFFFFFU}) {
        Bytes record = Record(839, "A", "CH4", 1);
        for (std::size_t i = 0; i < 4; ++i) record[719 + i] = static_cast<std::uint8_t>(bits >> 8 * i);
        EXPECT_EQ(Load(File(839, {record})), "");
        EXPECT_EQ(list[0]->charge, 0.0);
        EXPECT_FALSE(std::signbit(list[0]->charge));
    }
}

TEST_F(PcdFile, TakesEveryMolecularWeight) {
    EXPECT_EQ(Load(File(839, {Record(839, "A", "", std::numeric_limits<float>::infinity()), Record(839, "B", "", -1),
                              Record(839, "C", "", std::numeric_limits<float>::quiet_NaN())})),
              "");
    EXPECT_EQ(list[0]->molecularWeight, std::numeric_limits<double>::infinity());
    EXPECT_EQ(list[1]->molecularWeight, -1.0);
    EXPECT_TRUE(std::isnan(list[2]->molecularWeight));
}

TEST_F(PcdFile, IsReadUnderItsOwnArithmetic) {
    Bytes record = Record(839, "A", "C.1H.3(N.7)3", 0);
    const std::uint8_t signalling[] = {0x01, 0x00, 0x80, 0x7F};  // a NaN that every use of reports
    std::copy(std::begin(signalling), std::end(signalling), record.begin() + 138);
    const Bytes bytes = File(839, {record});
    const ArithmeticSettings before = CurrentArithmetic();
    SetArithmetic({before.sse & ~0x1F80U, static_cast<std::uint16_t>(before.x87 & ~0x3FU)});
    const std::string reason = Load(bytes);
    const ArithmeticSettings after = CurrentArithmetic();
    SetArithmetic(before);
    EXPECT_EQ(reason, "");
    EXPECT_EQ(after.sse & 0x1F80U, 0U);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_TRUE(std::isnan(list[0]->molecularWeight));
    EXPECT_EQ(list[0]->formula.View(), u"C0.1H0.3N2.1");
}

TEST_F(PcdFile, TellsOfAFailureThatCouldNotBeToldAtOnce) {
    files.entries[path] = {File(839, {Record(839, "A", "CH4", 1)}), 1};
    const std::pair<std::size_t, std::string> rows[] = {
        {1, "out of memory"},
        {2, "an error occurred while attempting to load compounds from D:/compounds.pcd"},  // that failed as well
        {3, ""},                                                                            // and so did this
    };
    for (const auto& [failures, expected] : rows) {
        std::u16string errorText;
        FailAllocation(1, failures);
        const bool isLoaded = LoadPcdFile(path, list, errorText);
        FailAllocation(0);
        EXPECT_FALSE(isLoaded);
        EXPECT_EQ(Utf8FromUtf16(errorText), expected) << failures;
    }
}

TEST_F(PcdFile, TellsOfWhicheverOperationFails) {
    const Bytes bytes = File(1024, {Record(1024, "A", "CH4", 16), Record(1024, "B", "CO", 28)});
    // open, read of the header, then seek and read of each record and of the end, close
    const std::string expected[] = {"failed to open D:/compounds.pcd for reading",
                                    "invalid record length in D:/compounds.pcd",
                                    "",
                                    readError,
                                    "",
                                    readError,
                                    "",
                                    "",
                                    ""};
    int fault = 0;
    for (const std::string& reason : expected) {
        files.operations.clear();
        files.failAt = ++fault;
        EXPECT_EQ(Load(bytes), reason) << fault;
        EXPECT_GE(files.operations.size(), static_cast<std::size_t>(fault));
    }
    files.failAt = 0;
    files.operations.clear();
    Load(bytes);
    EXPECT_EQ(files.operations.size(), std::size(expected));
}

const std::pair<const char16_t*, const char16_t*> casCases[] = {
    {u"", u""},
    {u"7732185", u"7732-18-5"},
    {u"7732-18-5", u"7732-18-5"},
    {u"64175", u"64-17-5"},
    {u"1234", u"1-23-4"},
    {u"123", u"123"},
    {u"12", u"12"},
    {u"123456789", u"123456-78-9"},
    {u"1234567890", u"1234567890"},
    {u"1234567-89-0", u"1234567-89-0"},
    {u"12345678-90-1", u"12345678-90-1"},
    {u"64-17-5x", u"64-17-5x"},
    {u"64 17 5", u"64 17 5"},
    {u"1-2-3", u"1-2-3"},      // two dashes, too short
    {u"123-45", u"123--4-5"},  // misplaced dashes are taken for digits
    {u"1-2345", u"1-2-34-5"},
    {u"12-3-45", u"12-3--4-5"},
    {u"12345-6-7", u"12345--6--7"},  // only one of the two dashes stands where it belongs
    {u"1--234", u"1---23-4"},        // only the other one
    {u"7-7-32185", u"7-7-32-18-5"},
    {u"-----", u"-------"},
    {u"1234-5678-9", u"1234-5678-9"},
};

TEST(CasNumber, HasItsThreeParts) {
    for (const auto& [text, expected] : casCases) {
        EXPECT_EQ(Utf8FromUtf16(FormatCasNumber(text)), Utf8FromUtf16(expected)) << Utf8FromUtf16(text);
    }
}

}  // namespace
}  // namespace reka::test
