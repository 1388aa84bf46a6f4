// SPDX-License-Identifier: MIT
// Allocations fail in turn while packages are stored, loaded, listed, resolved and checked.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "compounds/LoadPcdFile.h"
#include "manager/CreateReactionPackManager.h"
#include "manager/ValidateDefinition.h"
#include "package/CReactionPack.h"
#include "persistence/ReadStoredDefinition.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"
#include "posix/AllocationFailures.h"
#include "support/Builders.h"
#include "support/FakeMessages.h"
#include "support/FakeStream.h"
#include "support/StoredBytes.h"

namespace reka::test {
namespace {

/// A stream that takes no memory of its own.
class CQuietStream : public CFakeStream {
public:
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG*) override {
        const std::size_t part = std::min<std::size_t>(size, bytes.size() - position);
        std::memcpy(buffer, bytes.data() + position, part);
        position += part;
        return part == size ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return S_OK; }
};

/// Every file has the same bytes, and what is written is gone.
class CQuietFiles : public IFileSystem {
public:
    CQuietFiles() : before(ReplaceFiles(this)) {}
    ~CQuietFiles() override { ReplaceFiles(before); }
    CQuietFiles(const CQuietFiles&) = delete;
    CQuietFiles& operator=(const CQuietFiles&) = delete;

    std::unique_ptr<IFile> OpenForReading(const std::u16string&) override { return std::make_unique<CFile>(bytes); }
    std::unique_ptr<IFile> OpenForWriting(const std::u16string&) override { return std::make_unique<CFile>(bytes); }
    bool Exists(const std::u16string& path) override { return !path.ends_with(u".backup"); }
    std::uint64_t LastWriteTime(const std::u16string&) override { return 1; }
    bool CreateFolder(const std::u16string&) override { return true; }
    bool Copy(const std::u16string&, const std::u16string&) override { return true; }
    bool CopyNew(const std::u16string&, const std::u16string&) override { return true; }
    bool IsAbsent(const std::u16string&) override { return false; }
    bool Rename(const std::u16string&, const std::u16string&) override { return true; }
    bool Delete(const std::u16string&) override { return true; }
    bool Replace(const std::u16string&, const void*, std::size_t) override { return true; }
    bool FindUserFolder(std::u16string& path) override {
        path = u"/somewhere/of/the/user";
        return true;
    }
    std::u16string LastErrorText() override { return u"some reason of the system"; }

    std::vector<std::uint8_t> bytes;

private:
    class CFile : public IFile {
    public:
        explicit CFile(const std::vector<std::uint8_t>& content) : bytes(content) {}
        std::size_t Read(void* buffer, std::size_t size) override {
            const std::size_t part = position < bytes.size() ? std::min(size, bytes.size() - position) : 0;
            if (part > 0) std::memcpy(buffer, bytes.data() + position, part);
            position += part;
            return part;
        }
        bool HasFailed() const override { return false; }
        bool Write(const void*, std::size_t) override { return true; }
        bool Seek(std::uint64_t offset) override {
            position = static_cast<std::size_t>(offset);
            return true;
        }
        bool Flush() override { return true; }

    private:
        const std::vector<std::uint8_t>& bytes;
        std::size_t position = 0;
    };

    IFileSystem* before;
};

/// Messages that take no memory.
class CQuietMessages : public IUserMessages {
public:
    CQuietMessages() : before(ReplaceUserMessages(this)) {}
    ~CQuietMessages() override { ReplaceUserMessages(before); }
    CQuietMessages(const CQuietMessages&) = delete;
    CQuietMessages& operator=(const CQuietMessages&) = delete;
    MessageAnswer Show(const UserMessage&) noexcept override { return MessageAnswer::No; }

private:
    IUserMessages* before;
};

std::unique_ptr<ReactionPackDefinition> MakeSample() {
    auto definition = MakePackage({u"a first compound", u"a second compound"});
    definition->description = CBstr::Make(u"a package to be stored");
    AddKinetic(*definition, u"a reaction", u"2*T+P").stoichiometry = {-1.0, 1.0};
    return definition;
}

// The library may give memory back by an allocation, and goes without when that fails; so what fails need not make the
// whole fail. It is done as a whole or not at all.

class OutOfMemoryStored : public testing::Test {
protected:
    OutOfMemoryStored() : sample(MakeSample()) { EXPECT_TRUE(WriteStoredDefinition(*sample, block, errorText)); }

    CStoredBytes Framed() const {
        CStoredBytes bytes = CStoredBytes().U32(static_cast<std::uint32_t>(block.size()));
        bytes.bytes.insert(bytes.bytes.end(), block.begin(), block.end());
        return bytes;
    }

    /// The one allocation that fails leaves memory for its text; where it is got by, nothing is told.
    static const char16_t* TextFor(bool isDone) { return isDone ? u"" : u"out of memory"; }

    /// Reads `bytes` with each allocation failing in turn. What is read whole is stored as `storedAgain`.
    void ReadWithFailures(const std::vector<std::uint8_t>& bytes, const std::vector<std::uint8_t>& storedAgain) {
        std::unique_ptr<ReactionPackDefinition> read;
        ForEachFailure(
            [&] {
                errorText.clear();
                read = std::make_unique<ReactionPackDefinition>(nullptr);
            },
            [&] { return ReadStoredDefinition(*read, bytes, errorText) ? S_OK : E_FAIL; },
            [&](HRESULT result, bool isFailed) {
                if (!isFailed) {
                    EXPECT_EQ(result, S_OK);
                }
                if (result == S_OK) {
                    EXPECT_EQ(StoredAgain(*read), storedAgain);
                }
                EXPECT_EQ(errorText, TextFor(result == S_OK));
            });
    }

    static std::vector<std::uint8_t> StoredAgain(const ReactionPackDefinition& definition) {
        std::vector<std::uint8_t> stored;
        std::u16string reason;
        EXPECT_TRUE(WriteStoredDefinition(definition, stored, reason));
        return stored;
    }

    std::unique_ptr<ReactionPackDefinition> sample;
    std::vector<std::uint8_t> block;
    std::u16string errorText;
};

TEST_F(OutOfMemoryStored, ABlockIsNotRead) {
    ReadWithFailures(block, block);
}

TEST_F(OutOfMemoryStored, AnOldBlockIsNotMended) {
    CStoredBytes old = CStoredBytes().Wide(u"").Wide(u"").Narrow("a path to somewhere").U32(1);
    old.Wide(u"butanol").Wide(u"").Wide(u"butanol").Wide(u"CH3CH2CH2CH2OH").F64(74).F64(0).U32(1);
    old.Wide(u"a reaction").Wide(u"").Wide(u"an obsolete text").U32(1).U32(0).Narrow("2*T+C(butanol)").Narrow("");
    old.Narrow("").F64(-1).U8(0).U8(0).U8(0);
    const CQuietMessages messages;
    ReactionPackDefinition mended(nullptr);
    ASSERT_TRUE(ReadStoredDefinition(mended, old.bytes, errorText));
    EXPECT_EQ(mended.compounds[0]->formula.View(), u"C4H10O");
    EXPECT_EQ(mended.reactions[0]->rateEquation, u"(2*T+C(butanol))/3.6");
    ReadWithFailures(old.bytes, StoredAgain(mended));
}

TEST_F(OutOfMemoryStored, ABlockIsNotWritten) {
    std::vector<std::uint8_t> written;
    int failures = 0;
    for (bool isFailed = true; isFailed; ++failures) {
        written = {1, 2, 3};
        FailAllocation(static_cast<std::size_t>(failures) + 1);
        const bool isWritten = WriteStoredDefinition(*sample, written, errorText);
        isFailed = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(isWritten, !isFailed);
        EXPECT_EQ(written, isFailed ? std::vector<std::uint8_t>() : block);
        EXPECT_EQ(errorText, TextFor(isWritten));
        errorText.clear();
    }
    EXPECT_GT(failures, 1);
}

TEST_F(OutOfMemoryStored, TheSizeOfABlockIsNotTold) {
    const CPackageHolder package(*sample);
    int failures = 0;
    for (bool isFailed = true; isFailed; ++failures) {
        ULARGE_INTEGER size;
        size.QuadPart = 7;
        FailAllocation(static_cast<std::size_t>(failures) + 1);
        const HRESULT result = package->GetSizeMax(&size);
        isFailed = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(result, isFailed ? E_FAIL : S_OK);
        EXPECT_EQ(size.QuadPart, isFailed ? 7 : block.size());
    }
    EXPECT_GT(failures, 1);
}

TEST_F(OutOfMemoryStored, AStreamLeavesThePackage) {
    CQuietStream stream;
    stream.bytes = Framed().bytes;
    CPackageHolder package(*MakePackage({u"before"}));
    ForEachFailure([&] { stream.position = 0; }, [&] { return package->Load(&stream); },
                   [&](HRESULT result, bool isFailed) {
                       if (!isFailed) {
                           EXPECT_EQ(result, S_OK);
                       }
                       EXPECT_EQ(package->Definition()->compounds.size(), FAILED(result) ? 1U : 2U);
                       if (result == S_OK) package->AssignDefinition(MakePackage({u"before"}).get());
                   });
    EXPECT_EQ(stream.references.Held(), 0);
}

TEST_F(OutOfMemoryStored, AStreamNeedsMemoryForItsBlock) {
    class CStreamBeforeAFailure : public CQuietStream {
    public:
        HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* sizeRead) override {
            const HRESULT result = CQuietStream::Read(buffer, size, sizeRead);
            if (++reads == 1) FailAllocation(1);
            return result;
        }
        int reads = 0;
    };
    CStreamBeforeAFailure stream;
    stream.bytes = Framed().bytes;
    const CPackageHolder package(*MakePackage({u"before"}));
    EXPECT_EQ(package->Load(&stream), E_OUTOFMEMORY);
    EXPECT_FALSE(IsAllocationToFail());
    FailAllocation(0);
    EXPECT_EQ(stream.reads, 1);
    EXPECT_EQ(package->Definition()->compounds.size(), 1U);
    EXPECT_EQ(package->IsDirty(), S_OK);
}

TEST_F(OutOfMemoryStored, APackageIsNotSaved) {
    CQuietStream stream;
    CPackageHolder package(*sample);
    int failures = 0;
    for (bool isFailed = true; isFailed; ++failures) {
        FailAllocation(static_cast<std::size_t>(failures) + 1);
        const HRESULT result = package->Save(&stream, 1);
        isFailed = !IsAllocationToFail();
        FailAllocation(0);
        EXPECT_EQ(result, isFailed ? E_FAIL : S_OK);
        EXPECT_EQ(package->IsDirty(), isFailed ? S_OK : S_FALSE);
    }
    EXPECT_GT(failures, 1);
}

class OutOfMemoryManager : public OutOfMemoryStored {
protected:
    OutOfMemoryManager() {
        files.bytes = CStoredBytes().U32(1).Add(Framed()).bytes;
        void* made = nullptr;
        EXPECT_EQ(CreateReactionPackManager(ICapeReactionsPackageManager::iid, &made), S_OK);
        manager.Reset(static_cast<ICapeReactionsPackageManager*>(made));
    }
    CQuietFiles files;
    CQuietMessages messages;
    CComRef<ICapeReactionsPackageManager> manager;
};

TEST_F(OutOfMemoryManager, IsNotMade) {
    ForEachFailure([] {},
                   [] {
                       void* made = nullptr;
                       const HRESULT result = CreateReactionPackManager(IID_IUnknown, &made);
                       if (made) static_cast<IUnknown*>(made)->Release();
                       return result;
                   },
                   [](HRESULT result, bool isFailed) { EXPECT_EQ(result, isFailed ? E_OUTOFMEMORY : S_OK); });
}

TEST_F(OutOfMemoryManager, ListsNothingOrFails) {
    CVariant names;
    ForEachFailure([&] { names = CVariant(); }, [&] { return manager->GetListOfReactionsPackages(&names.Get()); },
                   [&](HRESULT result, bool isFailed) {
                       if (!isFailed) {
                           EXPECT_EQ(Show(names.Get()), "['Test package']");
                       }
                       if (result != S_OK) {
                           EXPECT_EQ(result, ECapeUnknownHR);
                       }
                       if (names.Get().vt != VT_EMPTY) {
                           EXPECT_EQ(Show(names.Get()), "['Test package']");
                       }
                   });
}

TEST_F(OutOfMemoryManager, ResolvesNothingOrFails) {
    const CBstr name = CBstr::Make(u"Test package");
    CComRef<IDispatch> package;
    std::vector<ReportedError> errors;
    ForEachFailure([&] { package.Reset(); },
                   [&] { return manager->ResolveReactionsPackage(name.Get(), package.Receive()); },
                   [&](HRESULT result, bool isFailed) {
                       EXPECT_EQ(result == S_OK, static_cast<bool>(package));
                       if (!isFailed) {
                           EXPECT_EQ(Ask<IPersistStream>(package.Get())->IsDirty(), S_OK);
                       }
                       if (result != S_OK) {
                           EXPECT_EQ(result, ECapeUnknownHR);
                           errors.push_back(ErrorOf(manager.Get()));
                       }
                   });
    const std::string notMade = "Failed to create reaction package: error code 0x8007000E";
    const ReportedError expected = {notMade, notMade, "ResolveReactionsPackage", "ICapeReactionsPackageManager"};
    EXPECT_NE(std::find(errors.begin(), errors.end(), expected), errors.end());
}

TEST_F(OutOfMemoryManager, MakesNoNewPackage) {
    const auto maker = Ask<ICapeThermoNewPropertyPackage>(manager.Get());
    CComRef<IDispatch> package;
    ForEachFailure([&] { package.Reset(); }, [&] { return maker->NewPropertyPackage(package.Receive()); },
                   [&](HRESULT result, bool isFailed) {
                       EXPECT_EQ(result, isFailed ? ECapeUnknownHR : S_OK);
                       EXPECT_EQ(static_cast<bool>(package), !isFailed);
                   });
}

TEST_F(OutOfMemoryStored, ACheckFails) {
    class CNoUi : public IUserMessages {
        MessageAnswer Show(const UserMessage&) noexcept override { return MessageAnswer::Ok; }
    };
    CNoUi ui;
    sample->reactions[0]->heatEquation = u"2*T*P";
    ForEachFailure([&] { errorText.clear(); },
                   [&] {
                       return ValidateDefinition(*sample, nullptr, true, u"a name", u"a description", 0, errorText, ui)
                                  ? S_OK
                                  : E_FAIL;
                   },
                   [&](HRESULT result, bool isFailed) {
                       if (!isFailed) {
                           EXPECT_EQ(result, S_OK);
                       }
                       if (result == S_OK) {
                           EXPECT_NE(sample->reactions[0]->heatExpression, nullptr);
                       } else {
                           EXPECT_EQ(errorText, u"out of memory");
                       }
                   });
}

TEST_F(OutOfMemoryStored, ACompoundFileIsNotRead) {
    CQuietFiles files;
    files.bytes.resize(2 * 1024);
    files.bytes[1] = 4;  // records of 1024 bytes
    files.bytes[1024 + 3] = 30;
    std::fill_n(files.bytes.begin() + 1024 + 4, 30, std::uint8_t{'n'});
    files.bytes[1024 + 54] = 20;
    std::fill_n(files.bytes.begin() + 1024 + 55, 20, std::uint8_t{'C'});
    CompoundList list;
    const std::u16string path = u"a path to somewhere";
    ForEachFailure([&] { errorText.clear(); }, [&] { return LoadPcdFile(path, list, errorText) ? S_OK : E_FAIL; },
                   [&](HRESULT result, bool isFailed) {
                       EXPECT_EQ(result, isFailed ? E_FAIL : S_OK);
                       EXPECT_EQ(list.size(), isFailed ? 0U : 1U);
                       EXPECT_EQ(errorText, TextFor(result == S_OK));
                   });
}

}  // namespace
}  // namespace reka::test
