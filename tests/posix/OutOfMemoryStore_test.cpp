// SPDX-License-Identifier: MIT
// Allocations fail in turn while templates are stored and loaded, in a folder of the test's own: whichever fails, what
// the user had is still there, and the user is told.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

#include "manager/TemplateStore.h"
#include "platform/UserMessages.h"
#include "posix/AllocationFailures.h"
#include "support/Builders.h"
#include "support/posix/EnvironmentVariable.h"

namespace reka::test {
namespace {

namespace fs = std::filesystem;

/// Keeps the last message without taking memory for it.
class CQuietMessages : public IUserMessages {
public:
    CQuietMessages() : before(ReplaceUserMessages(this)) { text.reserve(4096); }
    ~CQuietMessages() override { ReplaceUserMessages(before); }
    CQuietMessages(const CQuietMessages&) = delete;
    CQuietMessages& operator=(const CQuietMessages&) = delete;
    MessageAnswer Show(const UserMessage& message) noexcept override {
        ++count;
        text.assign(message.text, 0, std::min<std::size_t>(message.text.size(), 4096));
        return MessageAnswer::No;
    }

    int count = 0;
    std::u16string text;

private:
    IUserMessages* before;
};

class TemplatesOutOfMemory : public testing::Test {
protected:
    TemplatesOutOfMemory()
        : root(fs::temp_directory_path() / ("reka-memory-" + std::to_string(std::random_device()()))),
          userFile(root / "NAVO" / "data" / "REKAConfig.dat"),
          configured("XDG_CONFIG_HOME", root.string()) {}
    ~TemplatesOutOfMemory() override {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    /// The bytes of a file, or "<none>".
    static std::string Read(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        if (!file) return "<none>";
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void Write(std::string_view bytes) {
        fs::remove_all(root);
        fs::create_directories(userFile.parent_path());
        std::ofstream(userFile, std::ios::binary) << bytes;
    }
    /// What a store of packages with these compounds writes.
    std::string Stored(std::initializer_list<const char16_t*> compounds) {
        TemplateStore store;
        Fill(store, compounds);
        store.StoreTemplates();
        return Read(userFile);
    }
    static void Fill(TemplateStore& store, std::initializer_list<const char16_t*> compounds) {
        for (const char16_t* const compound : compounds) store.templates.push_back(MakePackage({compound}));
    }

    /// Runs `operation` with the n-th allocation failing, for n from 1 on as long as it comes to that. `prepare` runs
    /// before each, `check` behind it, and is told whether the allocation failed.
    template <class Prepare, class Operation, class Check>
    void ForEachAllocation(Prepare&& prepare, Operation&& operation, Check&& check) {
        std::size_t n = 0;
        for (bool isFailed = true; isFailed;) {
            prepare();
            messages.count = 0;
            FailAllocation(++n);
            operation();
            isFailed = !IsAllocationToFail();
            FailAllocation(0);
            SCOPED_TRACE("allocation " + std::to_string(n));
            check(isFailed);
        }
        EXPECT_GT(n, 10U);
    }

    const fs::path root;
    const fs::path userFile;
    const CEnvironmentVariable configured;
    CQuietMessages messages;
};

TEST_F(TemplatesOutOfMemory, KeepTheOldFileOrHaveTheNewOne) {
    const std::string old = Stored({u"A"});
    const std::string fresh = Stored({u"B", u"C"});
    TemplateStore store;
    Fill(store, {u"B", u"C"});
    ForEachAllocation([&] { Write(old); }, [&] { store.StoreTemplates(); },
                      [&](bool isFailed) {
                          // No allocation stands behind the deletion of the old file.
                          EXPECT_EQ(Read(userFile), isFailed ? old : fresh);
                          EXPECT_EQ(messages.count, isFailed ? 1 : 0);
                          if (isFailed) {
                              EXPECT_EQ(messages.text, u"Failed to store templates: out of memory");
                          }
                          EXPECT_EQ(store.templates.size(), 2U);
                      });
}

TEST_F(TemplatesOutOfMemory, AreReadOrSetAside) {
    const std::string bytes = Stored({u"A", u"B"});
    const fs::path backup = userFile.string() + ".backup";
    TemplateStore store;
    int setAside = 0;
    ForEachAllocation(
        [&] {
            Write(bytes);
            store.DiscardTemplates();
        },
        [&] { store.LoadTemplates(); },
        [&](bool isFailed) {
            const bool isWhole = store.templates.size() == 2;
            EXPECT_TRUE(isWhole || isFailed);
            EXPECT_TRUE(isWhole || store.templates.empty());
            EXPECT_EQ(messages.count, isWhole ? 0 : 1);
            if (!isWhole) {
                EXPECT_NE(messages.text.find(u"out of memory"), std::u16string::npos);
            }
            // The file is where it was, or where the message says.
            const bool isSetAside = !fs::exists(userFile);
            setAside += isSetAside;
            EXPECT_EQ(Read(isSetAside ? backup : userFile), bytes);
            EXPECT_EQ(isSetAside, fs::exists(backup));
            EXPECT_EQ(isSetAside,
                      messages.count == 1 && messages.text.find(u"has been renamed") != std::u16string::npos);
        });
    EXPECT_GT(setAside, 0);
}

TEST_F(TemplatesOutOfMemory, AreNotReplacedByAListThatCouldNotBeRead) {
    const std::string old = Stored({u"A", u"B"});
    std::unique_ptr<TemplateStore> store;
    ForEachAllocation(
        [&] {
            Write(old);
            store = std::make_unique<TemplateStore>();
        },
        [&] { store->LoadTemplates(); },
        [&](bool isFailed) {
            std::u16string text;
            const bool stands = fs::exists(userFile);  // otherwise it was set aside, and the list is all there is
            EXPECT_EQ(store->CanStore(text), !isFailed || !stands);
            if (!stands) return;
            store->StoreTemplates();
            EXPECT_EQ(Read(userFile), old);
        });
}

TEST_F(TemplatesOutOfMemory, LoseNoDamagedFile) {
    const std::string damaged = Stored({u"A", u"B"}).substr(0, 60);
    const std::string older = "older";
    const fs::path backup = userFile.string() + ".backup";
    TemplateStore store;
    ForEachAllocation(
        [&] {
            Write(damaged);
            std::ofstream(backup) << older;
        },
        [&] { store.LoadTemplates(); },
        [&](bool) {
            EXPECT_TRUE(store.templates.empty());
            EXPECT_EQ(messages.count, 1);
            const bool isSetAside = !fs::exists(userFile);
            EXPECT_EQ(Read(isSetAside ? backup : userFile), damaged);
            const bool isMoved = fs::exists(backup.string() + "1");
            EXPECT_EQ(Read(isMoved ? backup.string() + "1" : backup.string()), older);
            EXPECT_EQ(isSetAside, messages.text.find(u"has been renamed") != std::u16string::npos);
        });
}

}  // namespace
}  // namespace reka::test
