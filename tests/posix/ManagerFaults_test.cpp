// SPDX-License-Identifier: MIT
// Each allocation of each method of a manager fails in turn, alone and with all behind it, on files of the disk: with
// templates of the user's, without, with damaged ones, and with newer ones that were shipped. Whichever it is, the file
// of templates is whole, nothing that the user had is gone, and who asks later is told the templates from before or
// those from behind. What a method couldn't do is told, by its result or by a message.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <set>

#include "manager/CreateReactionPackManager.h"
#include "manager/TemplateSource.h"
#include "manager/TemplateStore.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"
#include "posix/AllocationFailures.h"
#include "posix/SparingFakes.h"
#include "records/Definition.h"
#include "support/Builders.h"
#include "support/FakeEditor.h"
#include "support/StoredBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

namespace fs = std::filesystem;

/// The system's files, with the folders of the component and of the user in one of the test's own.
class CFilesElsewhere final : public IFileSystem {
public:
    explicit CFilesElsewhere(const fs::path& root)
        : from(ComponentFolder()),
          to(Utf16FromUtf8((root / "component/").string())),
          user(Utf16FromUtf8(root.string())),
          before(ReplaceFiles(this)) {}
    ~CFilesElsewhere() override { ReplaceFiles(before); }
    CFilesElsewhere(const CFilesElsewhere&) = delete;
    CFilesElsewhere& operator=(const CFilesElsewhere&) = delete;

    std::unique_ptr<IFile> OpenForReading(const std::u16string& path) override {
        return SystemFiles().OpenForReading(Moved(path));
    }
    std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) override {
        return SystemFiles().OpenForWriting(Moved(path));
    }
    bool Exists(const std::u16string& path) override { return SystemFiles().Exists(Moved(path)); }
    bool IsAbsent(const std::u16string& path) override { return SystemFiles().IsAbsent(Moved(path)); }
    std::uint64_t LastWriteTime(const std::u16string& path) override {
        return SystemFiles().LastWriteTime(Moved(path));
    }
    bool CreateFolder(const std::u16string& path) override { return SystemFiles().CreateFolder(Moved(path)); }
    bool Copy(const std::u16string& source, const std::u16string& target) override {
        return SystemFiles().Copy(Moved(source), Moved(target));
    }
    bool CopyNew(const std::u16string& source, const std::u16string& target) override {
        return SystemFiles().CopyNew(Moved(source), Moved(target));
    }
    bool Rename(const std::u16string& source, const std::u16string& target) override {
        return SystemFiles().Rename(Moved(source), Moved(target));
    }
    bool Delete(const std::u16string& path) override { return SystemFiles().Delete(Moved(path)); }
    bool Replace(const std::u16string& path, const void* data, std::size_t size) override {
        return SystemFiles().Replace(Moved(path), data, size);
    }
    bool FindUserFolder(std::u16string& path) override {
        path = user;
        return true;
    }
    std::u16string LastErrorText() override { return SystemFiles().LastErrorText(); }

private:
    std::u16string Moved(const std::u16string& path) const {
        const CSparedAllocations spared;
        return path.starts_with(from) ? to + path.substr(from.size()) : path;
    }

    const std::u16string from;
    const std::u16string to;
    const std::u16string user;
    IFileSystem* before;
};

/// A file of templates, each with a compound.
std::string FileOf(std::initializer_list<const char16_t*> names) {
    CStoredBytes bytes = CStoredBytes().U32(static_cast<std::uint32_t>(names.size()));
    for (const char16_t* const name : names) {
        const auto definition = MakePackage({u"a compound with a long name"});
        definition->name = CBstr::Make(name);
        CStoredBytes block;
        std::u16string errorText;
        EXPECT_TRUE(WriteStoredDefinition(*definition, block.bytes, errorText));
        bytes.U32(static_cast<std::uint32_t>(block.bytes.size())).Add(block);
    }
    return {bytes.bytes.begin(), bytes.bytes.end()};
}

std::string Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What is there when the manager comes.
enum class Setting { Users, NewUser, Damaged, NewerShipped };
const char* const settingNames[] = {"Users", "NewUser", "Damaged", "NewerShipped"};

/// A folder with the user's file and the shipped one, a manager, and a user who adds a template in the dialog.
class CManagerBench {
public:
    CManagerBench()
        : root(fs::temp_directory_path() / ("reka-manager-" + std::to_string(std::random_device()()))),
          userFile(root / "NAVO" / "data" / "REKAConfig.dat"),
          files(root) {
        messages.answer = MessageAnswer::Yes;
        editor.inTemplates = [](ITemplateSource& source) {
            const CSparedAllocations spared;
            auto added = MakePackage({u"a compound with a long name"});
            added->name = CBstr::Make(u"Added");
            source.Store().templates.push_back(std::move(added));
        };
    }
    ~CManagerBench() { fs::remove_all(root); }
    CManagerBench(const CManagerBench&) = delete;
    CManagerBench& operator=(const CManagerBench&) = delete;

    void Begin(Setting setting) {
        manager.Reset();
        fs::remove_all(root);
        const fs::path shippedFile = root / "component" / "data" / "REKAConfig.dat";
        fs::create_directories(userFile.parent_path());
        fs::create_directories(shippedFile.parent_path());
        std::ofstream(shippedFile, std::ios::binary) << shipped;
        if (setting != Setting::NewUser) std::ofstream(userFile, std::ios::binary) << Users(setting);
        const auto now = fs::last_write_time(shippedFile);
        fs::last_write_time(shippedFile, now + std::chrono::hours(setting == Setting::NewerShipped ? 1 : -1));
        messages.shown.clear();
        names = CVariant();
        package.Reset();
        text.Reset();
        manager = NewManager();
    }
    std::string Users(Setting setting) const {
        return setting == Setting::Damaged ? users.substr(0, users.size() - 10) : users;
    }

    static CComRef<ICapeReactionsPackageManager> NewManager() {
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
        CComRef<ICapeReactionsPackageManager> manager;
        manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
        return manager;
    }
    template <class Interface>
    Interface* As() const {
        return static_cast<Interface*>(Ask<Interface>(manager.Get()).Get());  // the manager holds itself
    }

    /// All files below the user's folder, with their content.
    std::map<std::string, std::string> UserFiles() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::directory_iterator(userFile.parent_path())) {
            found[entry.path().filename().string()] = Read(entry.path());
        }
        return found;
    }
    /// What is told the second time, once a damaged file is out of the way.
    std::string NamesToldLater() const {
        const auto later = NewManager();
        CVariant told;
        for (int i = 0; i < 2; ++i) EXPECT_EQ(later->GetListOfReactionsPackages(told.Receive()), S_OK);
        return Show(told.Get());
    }
    bool IsToldOf(std::u16string_view words) const {
        return std::any_of(messages.shown.begin(), messages.shown.end(), [&](const UserMessage& message) {
            return message.text.find(words) != std::u16string::npos;
        });
    }
    std::string Outputs() const {
        std::string shown = Show(names.Get()) + Show(text.Get());
        if (!package) return shown;
        CBstr name;
        Ask<ICapeIdentification>(package.Get())->get_ComponentName(name.Receive());
        return shown + " package " + Show(name.Get());
    }

    const fs::path root;
    const fs::path userFile;
    const std::string users = FileOf({u"First of the user's", u"Second of the user's"});
    const std::string shipped = FileOf({u"Shipped"});
    const std::string onlyAdded = FileOf({u"Added"});
    CFilesElsewhere files;
    CSparingMessages messages;
    CFakeEditor editor;
    CComRef<ICapeReactionsPackageManager> manager;
    const CBstr wanted = CBstr::Make(u"Second of the user's");
    CVariant names;
    CBstr text;
    CComRef<IDispatch> package;
};

struct ManagerMethod {
    const char* name;
    HRESULT (*call)(CManagerBench& bench);
    HRESULT without;  // what it answers without memory; S_OK: it takes none
};
using B = CManagerBench;
const ManagerMethod managerMethods[] = {
    {"Create",
     [](B& b) {
         void* made = nullptr;
         const HRESULT result = CreateReactionPackManager(IID_IDispatch, &made);
         b.package.Reset(static_cast<IDispatch*>(made));
         return result;
     },
     E_OUTOFMEMORY},
    {"List", [](B& b) { return b.manager->GetListOfReactionsPackages(&b.names.Get()); }, ECapeUnknownHR},
    {"Resolve", [](B& b) { return b.manager->ResolveReactionsPackage(b.wanted.Get(), b.package.Receive()); },
     ECapeUnknownHR},
    {"New", [](B& b) { return b.As<ICapeThermoNewPropertyPackage>()->NewPropertyPackage(b.package.Receive()); },
     ECapeUnknownHR},
    {"Edit", [](B& b) { return b.As<ICapeUtilities>()->Edit(); }, ECapeUnknownHR},
    {"Initialize", [](B& b) { return b.As<ICapeUtilities>()->Initialize(); }, S_OK},
    {"Terminate", [](B& b) { return b.As<ICapeUtilities>()->Terminate(); }, S_OK},
    {"GetParameters", [](B& b) { return b.As<ICapeUtilities>()->get_parameters(b.package.Receive()); }, S_OK},
    {"PutContext", [](B& b) { return b.As<ICapeUtilities>()->put_simulationContext(nullptr); }, S_OK},
    {"GetName", [](B& b) { return b.As<ICapeIdentification>()->get_ComponentName(b.text.Receive()); }, E_OUTOFMEMORY},
    {"PutName", [](B& b) { return b.As<ICapeIdentification>()->put_ComponentName(b.wanted.Get()); }, ECapeUnknownHR},
    {"GetDescription", [](B& b) { return b.As<ICapeIdentification>()->get_ComponentDescription(b.text.Receive()); },
     E_OUTOFMEMORY},
    {"PutDescription", [](B& b) { return b.As<ICapeIdentification>()->put_ComponentDescription(b.wanted.Get()); },
     ECapeUnknownHR},
};

class ManagerFaults : public testing::TestWithParam<std::tuple<ManagerMethod, Setting>> {};

TEST_P(ManagerFaults, LoseNoTemplatesAndSayWhatFailed) {
    const ManagerMethod& row = std::get<0>(GetParam());
    const Setting setting = std::get<1>(GetParam());
    CManagerBench bench;
    bench.Begin(setting);
    const std::string toldBefore = bench.NamesToldLater();
    bench.Begin(setting);
    const auto filesBefore = bench.UserFiles();
    const HRESULT done = row.call(bench);
    const std::string outputsAfter = bench.Outputs();
    const auto filesAfter = bench.UserFiles();
    const std::string toldAfter = bench.NamesToldLater();

    const int faults = ForEachFault(
        [&] { bench.Begin(setting); }, [&] { return row.call(bench); },
        [&](HRESULT result, bool isReached, bool isAlone) {
            const auto left = bench.UserFiles();
            const auto contentOf = [](const std::map<std::string, std::string>& all) {
                const auto found = all.find("REKAConfig.dat");
                return found == all.end() ? "<none>" : found->second;
            };
            const bool isAfter = contentOf(left) == contentOf(filesAfter);
            const bool isKept = std::any_of(left.begin(), left.end(),
                                            [&](const auto& file) { return file.second == bench.Users(setting); });
            EXPECT_TRUE(isAfter || isKept || setting == Setting::NewUser);
            // What couldn't be read is set aside, also for want of memory, and the user is told where it is.
            // A new user who goes on after a load that failed has just what was added.
            const bool isLeftBehind = bench.IsToldOf(u"The file has been renamed to ") ||
                                      (setting == Setting::NewUser && bench.IsToldOf(u"out of memory"));
            const std::set<std::string> known = {contentOf(filesBefore), contentOf(filesAfter), bench.shipped};
            const std::set<std::string> behind = {"<none>", bench.onlyAdded};
            EXPECT_TRUE(known.contains(contentOf(left)) || (isLeftBehind && behind.contains(contentOf(left))));

            const std::string outputs = bench.Outputs();
            const ReportedError error = ErrorOf(bench.manager.Get());
            const bool isDone = result == done && outputs == outputsAfter && isAfter;
            if (!isDone) {
                ASSERT_TRUE(isReached);
                // A list that couldn't be read, or stored, is told by a message, and is empty then.
                const bool isTold = bench.IsToldOf(u"out of memory");
                EXPECT_TRUE(isTold || result == row.without) << result;
                if (result == ECapeUnknownHR) {
                    const bool isText = error.description.find("ut of memory") != std::string::npos ||
                                        error.description.find("0x8007000E") != std::string::npos;
                    EXPECT_TRUE(isText || (!isAlone && error.description == "<null>")) << error.description;
                }
            }
            const std::string told = bench.NamesToldLater();
            EXPECT_TRUE(isLeftBehind || told == toldBefore || told == toldAfter) << told;
        });
    EXPECT_EQ(faults > 0, row.without != S_OK);
    RecordProperty("faults", faults);
}

INSTANTIATE_TEST_SUITE_P(Methods, ManagerFaults,
                         testing::Combine(testing::ValuesIn(managerMethods),
                                          testing::Values(Setting::Users, Setting::NewUser, Setting::Damaged,
                                                          Setting::NewerShipped)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).name) +
                                    settingNames[static_cast<int>(std::get<1>(row.param))];
                         });

}  // namespace
}  // namespace reka::test
