// SPDX-License-Identifier: MIT
// Each call of the system fails in turn while a file is replaced, copied, renamed, written or read. Whichever it is,
// the operation is done, or it says that it isn't and the old file is there as it was.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "platform/Files.h"
#include "support/posix/FailingCalls.h"

namespace reka::test {
namespace {

namespace fs = std::filesystem;
using Folder = std::map<std::string, std::string>;  // content by name

struct FileOperation {
    const char* name;
    bool (*run)(const std::u16string& folder);
    Folder done;       // what is there then; "a" and "old" are there before
    Folder failed;     // and where the operation says that it isn't done
    int callCount;     // of the system that may fail
    int silentFaults;  // of those, with which it is done all the same
};

const std::string content(100'000, 'a');  // longer than what is copied at once

const FileOperation fileOperations[] = {
    {"ReplacesAFile",
     [](const std::u16string& folder) { return SystemFiles().Replace(folder + u"old", "new", 3); },
     {{"a", content}, {"old", "new"}},
     {{"a", content}, {"old", "old"}},
     8,
     3},
    {"MakesAFile",
     [](const std::u16string& folder) { return SystemFiles().Replace(folder + u"b", "new", 3); },
     {{"a", content}, {"b", "new"}, {"old", "old"}},
     {{"a", content}, {"old", "old"}},
     6,
     2},
    {"CopiesToANewName",
     [](const std::u16string& folder) { return SystemFiles().CopyNew(folder + u"a", folder + u"b"); },
     {{"a", content}, {"b", content}, {"old", "old"}},
     {{"a", content}, {"old", "old"}},
     9,
     1},
    {"Renames",
     [](const std::u16string& folder) { return SystemFiles().Rename(folder + u"old", folder + u"b"); },
     {{"a", content}, {"b", "old"}},
     {{"a", content}, {"old", "old"}},
     1,
     0},
    {"Reads",
     [](const std::u16string& folder) {
         const auto file = SystemFiles().OpenForReading(folder + u"a");
         std::string read(content.size() + 1, ' ');
         if (!file) return false;
         const std::size_t size = file->Read(read.data(), read.size());
         return !file->HasFailed() && read.substr(0, size) == content;
     },
     {{"a", content}, {"old", "old"}},
     {{"a", content}, {"old", "old"}},
     4,
     1},
    {"WritesAndFlushes",
     [](const std::u16string& folder) {
         const auto file = SystemFiles().OpenForWriting(folder + u"b");
         return file && file->Write("new", 3) && file->Flush();
     },
     {{"a", content}, {"b", "new"}, {"old", "old"}},
     {},
     3,
     0},
};

class FileCallFaults : public testing::TestWithParam<FileOperation> {
protected:
    ~FileCallFaults() override { fs::remove_all(root); }

    void Prepare() const {
        fs::remove_all(root);
        fs::create_directories(root);
        std::ofstream(root / "a") << content;
        std::ofstream(root / "old") << "old";
    }
    Folder Found() const {
        Folder found;
        for (const auto& entry : fs::directory_iterator(root)) {
            std::ifstream file(entry.path());
            found[entry.path().filename().string()] = {std::istreambuf_iterator<char>(file),
                                                       std::istreambuf_iterator<char>()};
        }
        return found;
    }
    const fs::path root = fs::temp_directory_path() / ("reka-calls-" + std::to_string(std::random_device()()));
};

TEST_P(FileCallFaults, LeaveTheFilesAsTheyWereOrAsTheyShallBe) {
    const FileOperation& row = GetParam();
    bool isDone = false;
    int silentFaults = 0;
    const int calls = ForEachFileCall([&] { Prepare(); }, [&] { isDone = row.run((root / "").u16string()); },
                                      [&](int n, bool isReached) {
                                          SCOPED_TRACE("call " + std::to_string(n));
                                          EXPECT_TRUE(isDone || isReached);
                                          silentFaults += isDone && isReached;
                                          if (isDone || !row.failed.empty()) {
                                              EXPECT_EQ(Found(), isDone ? row.done : row.failed);
                                          }
                                      });
    EXPECT_EQ(calls, row.callCount);
    EXPECT_EQ(silentFaults, row.silentFaults);
}

INSTANTIATE_TEST_SUITE_P(Operations, FileCallFaults, testing::ValuesIn(fileOperations),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
