// SPDX-License-Identifier: MIT
// Each operation on files fails in turn in each command: the file that was there stays whole, the exit status tells of
// a failure, and so do words.

#include <gtest/gtest.h>

#include <sstream>

#include "RunRekatool.h"
#include "SampleBlocks.h"
#include "support/FakeFiles.h"

namespace rekatool {

namespace {

struct ToolCommand {
    const char* name;
    std::vector<std::string> arguments;
    int status;                         // without a failure
    std::vector<std::string> failures;  // the words for each operation, in order; empty for one that doesn't matter
};

const std::string notOpened = ": the file can't be opened\n";
const std::string notRead = ": the file can't be read\n";
const std::string notWritten = "rekatool: out: the file can't be written: the system's reason\n";

const ToolCommand toolCommands[] = {
    {"Export",
     {"export", "in.dat", "-o", "out"},
     0,
     {"rekatool: in.dat" + notOpened, "rekatool: in.dat" + notRead, "", notWritten}},
    {"Import",
     {"import", "in.json", "-o", "out"},
     0,
     {"rekatool: in.json" + notOpened, "rekatool: in.json" + notRead, "", notWritten}},
    {"Salvage",
     {"salvage", "in.dat", "-o", "out"},
     0,
     {"rekatool: in.dat" + notOpened, "rekatool: in.dat" + notRead, "", notWritten}},
    {"ExportOfALongFile",
     {"export", "long.dat", "-o", "out"},
     0,
     {"rekatool: long.dat" + notOpened, "rekatool: long.dat" + notRead, "rekatool: long.dat" + notRead, "",
      notWritten}},
    {"SalvageOfALongFile",
     {"salvage", "long.dat", "-o", "out"},
     0,
     {"rekatool: long.dat" + notOpened, "rekatool: long.dat" + notRead, "rekatool: long.dat" + notRead, "",
      notWritten}},
    {"CheckOfAFileWithoutTemplates",
     {"check", "none.dat"},
     0,
     {"rekatool: none.dat" + notOpened, "rekatool: none.dat" + notRead, ""}},
};

/// A template of more than what is read at once.
CStoredBytes LongBlock() {
    return CStoredBytes()
        .Wide(u"long")
        .Wide(std::u16string(600'000, u'x'))
        .Narrow("")
        .U32(0xFFFFFFFF)
        .U32(3)
        .U32(0)
        .U32(0)
        .U32(0);
}

class RekatoolFaults : public testing::TestWithParam<ToolCommand> {
protected:
    void Put(const std::u16string& path, const CStoredBytes& bytes) { files.entries[path] = {bytes.bytes, 1}; }
    int Run(const std::vector<std::string>& arguments) {
        std::ostringstream out;
        std::ostringstream errors;
        const int status = RunRekatool(arguments, out, errors);
        err = errors.str();
        return status;
    }
    reka::test::CFakeFiles files;
    std::string err;
};

TEST_P(RekatoolFaults, LeaveTheOldFileAndSaySo) {
    const ToolCommand& row = GetParam();
    const CStoredBytes templates = CStoredBytes().U32(2).Add(Framed(EmptyBlock(u"A"))).Add(Framed(EmptyBlock(u"B")));
    Put(u"in.dat", templates);
    Put(u"none.dat", CStoredBytes().U32(0));
    Put(u"long.dat", CStoredBytes().U32(2).Add(Framed(LongBlock())).Add(Framed(EmptyBlock(u"B"))));
    ASSERT_EQ(Run({"export", "in.dat", "-o", "in.json"}), 0);
    const auto entries = files.entries;
    for (std::size_t n = 1; n <= row.failures.size() + 1; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n));
        files.entries = entries;
        files.entries[u"out"] = {{'o', 'l', 'd'}, 1};
        files.operations.clear();
        files.failAt = static_cast<int>(n);
        const int status = Run(row.arguments);
        files.failAt = 0;
        const std::string expected = n <= row.failures.size() ? row.failures[n - 1] : "";
        EXPECT_EQ(err, expected);
        EXPECT_EQ(status, expected.empty() ? row.status : 2);
        EXPECT_EQ(files.operations.size() >= n, n <= row.failures.size());
        EXPECT_EQ(files.openFiles, 0);
        const bool isOld = files.entries[u"out"].bytes == std::vector<std::uint8_t>{'o', 'l', 'd'};
        EXPECT_EQ(isOld, !expected.empty() || row.arguments[0] == "check");
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, RekatoolFaults, testing::ValuesIn(toolCommands),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace rekatool
