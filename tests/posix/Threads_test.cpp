// SPDX-License-Identifier: MIT
// Simulators of many threads: each has its packages and managers in an apartment of its own, and all of them stand on
// what the process has once: the seams, the parsers' locks, the counts of the module. The threads begin at one moment
// and do the same again and again, each with numbers of its own that it must get back; the preset native-tsan watches
// every access to memory meanwhile.

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <latch>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "expression/parse/EvaluateScalarInput.h"
#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "manager/CreateReactionPackManager.h"
#include "manager/TemplateStore.h"
#include "platform/Files.h"
#include "platform/UserMessages.h"
#include "support/Builders.h"
#include "support/FakeBag.h"
#include "support/FakeMaterial.h"
#include "support/FakeReactionObject.h"
#include "support/FakeStream.h"

namespace reka::test {
namespace {

constexpr int threadCount = 8;

/// Runs `work` on all threads at once, each with its number from 0 on.
template <class Work>
void RunOnThreads(Work&& work) {
    std::latch start(threadCount);
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            start.arrive_and_wait();
            work(number);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

std::unique_ptr<ReactionPackDefinition> MakeSample() {
    auto definition = MakePackage({u"A1", u"B1"});
    AddKinetic(*definition, u"Forward", u"2*T+C(A1)*C(B1)");
    SetHeat(*definition, AddEquilibrium(*definition, u"Balance", u"EXP(-T/100)+X(A1)"), u"-1000");
    return definition;
}

/// What one simulator does with one package out of a document.
class CSimulation {
public:
    explicit CSimulation(int number) : temperature(300.0 + number) {
        material.answers["temperature"] = Numbers({temperature});
        material.answers["fraction"] = Numbers({0.4, 0.6});
        material.answers["density"] = Numbers({10.0});
    }

    void Run(const std::vector<std::uint8_t>& document) {
        const CPackageHolder package;
        CFakeStream stream;
        stream.bytes = document;
        ASSERT_EQ(package->Load(&stream), S_OK);
        ASSERT_EQ(package->Initialize(), S_OK);
        IDispatch* pointer = results.Dispatch();
        ASSERT_EQ(package->SetReactionObject(&pointer), S_OK);
        ASSERT_EQ(package->SetMaterial(material.Dispatch()), S_OK);
        const CVariant rate = Strings({u"ReactionRate"});
        const CVariant forward = Strings({u"Forward"});
        const CBstr phase = CBstr::Make(u"Liquid");
        for (int i = 0; i < 5; ++i) {
            ASSERT_EQ(package->CalcReactionProp(rate.Get(), phase.Get(), forward.Get(), nullptr), S_OK);
            ASSERT_EQ(results.lastValue, 2.0 * temperature + 24.0);  // 0.4 * 10 * (0.6 * 10)
        }
        const CVariant all;
        ASSERT_EQ(package->CalcReactionProp(rate.Get(), phase.Get(), all.Get(), nullptr), ECapeUnknownHR);
        ASSERT_EQ(ErrorOf(package.Unknown()).name,
                  "Reaction \"Balance\" is not a kinetic reaction, cannot calculate property ReactionRate");
        CFakeStream saved;
        ASSERT_EQ(package->Save(&saved, 1), S_OK);
        ASSERT_EQ(saved.bytes, document);
        CFakeBag bag;
        ASSERT_EQ(package->Save(&bag, 1, 1), S_OK);
        ASSERT_EQ(package->Load(&bag, nullptr), S_OK);  // which parses every text
        ASSERT_EQ(package->Terminate(), S_OK);
    }

private:
    const double temperature;
    CFakeMaterial material{u"A1", u"B1"};
    CFakeReactionObject results;
};

TEST(Threads, HaveEachItsOwnPackages) {
    const auto definition = MakeSample();
    CFakeStream document;
    ASSERT_EQ(CPackageHolder(*definition)->Save(&document, 0), S_OK);
    RunOnThreads([&](int number) {
        CSimulation simulation(number);
        for (int i = 0; i < 10 && !testing::Test::HasFatalFailure(); ++i) simulation.Run(document.bytes);
    });
}

TEST(Threads, ParseAtOnce) {
    RunOnThreads([](int number) {
        const auto definition = MakePackage({u"A1", u"B1"});
        definition->temperature = 100.0 * number;
        const std::u16string digits(1, static_cast<char16_t>(u'1' + number));
        for (int i = 0; i < 40; ++i) {
            std::u16string errorText;
            const ExpressionTree tree =
                ParseExpression(*definition, u"MAX(T," + digits + u")+C(B1)", errorText, nullptr);
            ASSERT_NE(tree, nullptr);
            double value = -1.0;
            ASSERT_TRUE(EvaluateExpression(*tree, value, *definition, errorText));
            ASSERT_EQ(value, number == 0 ? 1.0 : 100.0 * number);
            ASSERT_EQ(ParseExpression(*definition, u"SQRT(" + digits, errorText, nullptr), nullptr);
            ASSERT_NE(errorText, u"");
            ASSERT_TRUE(EvaluateScalarInput(digits + u"/2", value, errorText));
            ASSERT_EQ(value, (1 + number) / 2.0);
            ASSERT_EQ(errorText, u"");
            ASSERT_FALSE(EvaluateScalarInput(digits + u"/", value, errorText));
            ASSERT_NE(errorText, u"");
        }
    });
}

/// The system's files, with a folder for the user of each thread, and boxes that are counted.
class CUsersOfThreads : public IFileSystem, public IUserMessages {
public:
    CUsersOfThreads()
        : root(std::filesystem::temp_directory_path() / ("reka-threads-" + std::to_string(std::random_device()()))),
          filesBefore(ReplaceFiles(this)),
          messagesBefore(ReplaceUserMessages(this)) {}
    ~CUsersOfThreads() override {
        ReplaceFiles(filesBefore);
        ReplaceUserMessages(messagesBefore);
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    CUsersOfThreads(const CUsersOfThreads&) = delete;
    CUsersOfThreads& operator=(const CUsersOfThreads&) = delete;

    bool FindUserFolder(std::u16string& path) override {
        const std::filesystem::path folder = root / userOfThread;
        path = folder.u16string();
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        return !error;
    }
    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override { return files.OpenForReading(path); }
    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override { return files.OpenForWriting(path); }
    bool Exists(const std::u16string& path) override { return files.Exists(path); }
    bool IsAbsent(const std::u16string& path) override { return files.IsAbsent(path); }
    std::uint64_t LastWriteTime(const std::u16string& path) override { return files.LastWriteTime(path); }
    bool CreateFolder(const std::u16string& path) override { return files.CreateFolder(path); }
    bool Copy(const std::u16string& from, const std::u16string& to) override { return files.Copy(from, to); }
    bool CopyNew(const std::u16string& from, const std::u16string& to) override { return files.CopyNew(from, to); }
    bool Rename(const std::u16string& from, const std::u16string& to) override { return files.Rename(from, to); }
    bool Delete(const std::u16string& path) override { return files.Delete(path); }
    bool Replace(const std::u16string& path, const void* data, std::size_t size) override {
        return files.Replace(path, data, size);
    }
    std::u16string LastErrorText() override { return files.LastErrorText(); }

    MessageAnswer Show(const UserMessage&) noexcept override {
        ++shown;
        return MessageAnswer::Ok;
    }

    static inline thread_local std::string userOfThread = "all";
    std::atomic<int> shown = 0;

private:
    IFileSystem& files = SystemFiles();
    const std::filesystem::path root;
    IFileSystem* const filesBefore;
    IUserMessages* const messagesBefore;
};

/// Writes the sample, under `name`, as the one template of the thread's user.
void StoreSample(const std::u16string& name) {
    TemplateStore store;
    store.LoadTemplates();
    store.templates.clear();
    store.templates.push_back(MakeSample());
    store.templates[0]->name = CBstr::Make(name);
    store.StoreTemplates();
}

/// Lists the templates by a manager of its own, and takes the one of that name.
void ExpectToBeResolved(const char16_t* name) {
    CComRef<ICapeReactionsPackageManager> manager;
    ASSERT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, reinterpret_cast<void**>(manager.Receive())),
              S_OK);
    CVariant names;
    ASSERT_EQ(manager->GetListOfReactionsPackages(&names.Get()), S_OK);
    ASSERT_EQ(Show(names.Get()), "[" + Show(name) + "]");
    CComRef<IDispatch> package;
    ASSERT_EQ(manager->ResolveReactionsPackage(CBstr::Make(name).Get(), package.Receive()), S_OK);
    LONG count = 0;
    ASSERT_EQ(Ask<ICapeReactionChemistry>(package.Get())->GetNumberOfReactions(&count), S_OK);
    ASSERT_EQ(count, 2);
}

TEST(Threads, HaveEachItsOwnManagersOverTheFileOfOneUser) {
    CUsersOfThreads users;
    StoreSample(u"shared");
    RunOnThreads([](int) {
        for (int i = 0; i < 5; ++i) ExpectToBeResolved(u"shared");
    });
    EXPECT_EQ(users.shown, 0);
}

TEST(Threads, StoreTheTemplatesOfDifferentUsers) {
    CUsersOfThreads users;
    RunOnThreads([&](int number) {
        CUsersOfThreads::userOfThread = std::to_string(number);
        const std::u16string name = {u'N', static_cast<char16_t>(u'0' + number)};
        for (int i = 0; i < 3; ++i) {
            StoreSample(name);
            ExpectToBeResolved(name.c_str());
        }
        // One that can't be read is set aside, which is told.
        std::u16string path;
        TemplateStore::GetConfigFilePath(path, false);
        ASSERT_TRUE(Files().Replace(path, "damaged", 7));
        TemplateStore store;
        store.LoadTemplates();
        ASSERT_TRUE(store.templates.empty());
    });
    EXPECT_EQ(users.shown, threadCount);
}

}  // namespace
}  // namespace reka::test
