// SPDX-License-Identifier: MIT
// The system's dialog that opens a file.

#include "editor/win/ChooseFile.h"

#include <gtest/gtest.h>

#include <string>

#include "EditorFixture.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

constexpr int fileNameField = 0x47C;  // the system's number
constexpr FileFilter filters[] = {{u"Texts (*.txt)", u"*.txt"}, {u"All files (*.*)", u"*.*"}};
const OpenFileRequest openRequest = {u"Select a text:", filters, u"txt", 2047};

class FileChoice : public EditorFixture {
protected:
    FileChoice() {
        const HANDLE file = CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        CloseHandle(file);
    }
    ~FileChoice() override { DeleteFileW(Wide(path)); }

    OpenFileAnswer Ask(std::u16string& chosen, const Work& work) {
        CUser user([&](CUser& u) { work(u, u.WaitFor(openRequest.title)); });
        const OpenFileAnswer answer = ChooseFile(nullptr, openRequest, chosen);
        user.Finish();
        return answer;
    }

    const std::u16string path = ComponentFolder() + u"chosen \u00E9.txt";
};

TEST_F(FileChoice, TakesAFileThatThereIs) {
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);
    std::u16string chosen;
    EXPECT_EQ(Ask(chosen,
                  [this](CUser& u, const CDrivenWindow& dialog) {
                      dialog.Fill(fileNameField, ComponentFolder() + u"no such file");
                      u.Press(VK_RETURN);
                      EXPECT_EQ(u.CountDialogs(), 2);  // the system's word on it
                      u.Press(VK_RETURN);
                      dialog.Fill(fileNameField, path);
                      u.Press(VK_RETURN);
                  }),
              OpenFileAnswer::Chosen);
    EXPECT_EQ(chosen, path);
    wchar_t after[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_EQ(std::wstring(before), after);  // the simulator's folder stays what it was
}

TEST_F(FileChoice, BeginsWithTheFileInUse) {
    std::u16string chosen = path;
    EXPECT_EQ(Ask(chosen,
                  [](CUser&, const CDrivenWindow& dialog) {
                      EXPECT_NE(dialog.Text(fileNameField).find(u"chosen \u00E9.txt"), std::u16string::npos);
                      dialog.Click(IDOK);
                  }),
              OpenFileAnswer::Chosen);
    EXPECT_EQ(chosen, path);
}

/// The longest path fits with its terminator.
TEST_F(FileChoice, BeginsWithNoPathThatIsTooLong) {
    for (const std::size_t length : {2046U, 2047U, 2048U}) {
        std::u16string begin = ComponentFolder();
        while (begin.size() + 14 < length) begin += u".\\";
        begin += std::u16string(length - begin.size() - 12, u'\\') + u"chosen \u00E9.txt";
        ASSERT_EQ(begin.size(), length);
        std::u16string chosen = begin;
        EXPECT_EQ(Ask(chosen,
                      [&](CUser&, const CDrivenWindow& dialog) {
                          const bool isOffered = dialog.Text(fileNameField).find(u"chosen") != std::u16string::npos;
                          EXPECT_EQ(isOffered, length <= openRequest.longestPath) << length;
                          dialog.Click(IDCANCEL);
                      }),
                  OpenFileAnswer::Cancelled);
        EXPECT_EQ(chosen, begin);
    }
}

/// The system's dialog may take the process along to the folder that the user looks at.
TEST_F(FileChoice, LeavesTheProcessInItsFolder) {
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);
    std::u16string chosen;
    EXPECT_EQ(Ask(chosen,
                  [](CUser& u, const CDrivenWindow& dialog) {
                      u.OnTestThread([] { SetCurrentDirectoryW(L"C:\\windows"); });
                      dialog.Click(IDCANCEL);
                  }),
              OpenFileAnswer::Cancelled);
    wchar_t after[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_EQ(std::wstring(before), after);
}

TEST_F(FileChoice, LeavesThePathAloneWhenItIsCancelled) {
    for (const std::u16string& begin :
         {std::u16string(), path, std::u16string(u"C:\\no|path?"), std::u16string(3000, u'x')}) {
        std::u16string chosen = begin;
        EXPECT_EQ(Ask(chosen, [](CUser&, const CDrivenWindow& dialog) { dialog.Click(IDCANCEL); }),
                  OpenFileAnswer::Cancelled);
        EXPECT_EQ(chosen, begin);
    }
}

TEST_F(FileChoice, TellsThatThereIsNoMemory) {
    std::u16string chosen = path;
    for (const std::size_t n : {1U, 2U, 3U}) {
        FailAllocation(n);
        EXPECT_EQ(ChooseFile(nullptr, openRequest, chosen), OpenFileAnswer::NoMemory);
    }
    FailAllocation(0);
    EXPECT_EQ(chosen, path);
}

}  // namespace
}  // namespace reka::test
