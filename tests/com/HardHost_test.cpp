// SPDX-License-Identifier: MIT
// Hosts that are hard to live with.

#include <gtest/gtest.h>

#include <float.h>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <functional>

#include "HostObjects.h"

namespace host {
namespace {

/// Puts the host's floating point control word back.
class CControlWord {
public:
    CControlWord() : before(_controlfp(0, 0)) {}
    ~CControlWord() {
        _clearfp();
        _controlfp(before, _MCW_EM | _MCW_RC);
    }
    unsigned Now() const { return _controlfp(0, 0) & (_MCW_EM | _MCW_RC); }

private:
    unsigned before;
};

TEST(HardHost, KeepsItsFloatingPointExceptionsUnmasked) {
    CMaterial material;
    CReactionObject results;
    // Overflow, division by zero in a function, an invalid operation and an inexact result, none of which may trap.
    const auto package =
        MakePackage(L"EXP(1000*T)+LOG(X(First)-0.25)+MOD(1,T-300)+1/3", L"SQRT(2)*EXP(-1000*T)", L"1.1");
    ASSERT_TRUE(package);
    ASSERT_EQ(Bind(package, material, results), S_OK);
    const CControlWord word;
    _clearfp();
    _controlfp(0, _EM_INVALID | _EM_ZERODIVIDE | _EM_OVERFLOW | _EM_UNDERFLOW | _EM_INEXACT);
    _controlfp(_RC_UP, _MCW_RC);
    const unsigned set = word.Now();
    EXPECT_EQ(Calculate(package), S_OK);
    EXPECT_EQ(word.Now(), set);
    const auto made = MakePackage(L"1E300*1E300*T+2^0.5");
    EXPECT_EQ(word.Now(), set);
    _clearfp();
    _controlfp(_MCW_EM | _RC_NEAR, _MCW_EM | _MCW_RC);
    EXPECT_TRUE(std::isnan(results.values[L"ReactionRate R"]));
    EXPECT_EQ(results.values[L"EnthalpyOfReaction R"], 0);
    EXPECT_EQ(package->Terminate(), S_OK);
}

/// A language of the running thread, with the comma that it writes in numbers and the code page of its texts.
struct Language {
    const char* name;
    LANGID id;
    const wchar_t* word;
    const char* bytesOfWord;
};

const Language languages[] = {
    {"German", MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), L"Gr\u00F6\u00DFe",
     "Gr\xF6\xDF"
     "e"},                                                                                                    // 1252
    {"Russian", MAKELANGID(LANG_RUSSIAN, SUBLANG_DEFAULT), L"\u0412\u043E\u0434\u0430", "\xC2\xEE\xE4\xE0"},  // 1251
};

class HardHostLanguage : public testing::TestWithParam<Language> {
protected:
    HardHostLanguage() : before(GetThreadLocale()) {
        EXPECT_TRUE(SetThreadLocale(MAKELCID(GetParam().id, SORT_DEFAULT)));
        EXPECT_TRUE(std::setlocale(LC_ALL, GetParam().name));
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
        char bytes[16] = {};
        WideCharToMultiByte(CP_THREAD_ACP, 0, GetParam().word, -1, bytes, sizeof bytes, nullptr, nullptr);
        EXPECT_STREQ(bytes, GetParam().bytesOfWord);
    }
    ~HardHostLanguage() override {
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
        std::setlocale(LC_ALL, "C");
        SetThreadLocale(before);
    }

    LCID before;
};

/// All that a stream holds.
std::string BytesOf(IStream* stream) {
    LARGE_INTEGER start = {};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    std::string bytes(1 << 16, '\0');
    ULONG got = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got);
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    bytes.resize(got);
    return bytes;
}

TEST_P(HardHostLanguage, ChangesNeitherNumbersNorTexts) {
    const std::wstring word = GetParam().word;
    const std::wstring rate = L"1.5*T+0.25+0*X(\"" + word + L"\")";
    CBag bag;
    FillBag(bag, rate, L"-1.25E3", L"1.1");
    bag.members.insert_or_assign(L"compoundId", StringArray({word, L"Second"}));
    bag.members.insert_or_assign(L"compoundName", StringArray({word, L"Second"}));
    bag.members.insert_or_assign(L"reactionID", StringArray({word}));
    bag.members.insert_or_assign(L"stoichiometry[" + word + L"]", NumberArray({-1, 1}));
    const auto made = MakePackage(L"1");
    ASSERT_EQ(made.As<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
    CRef<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()), S_OK);
    ASSERT_EQ(made.As<IPersistStream>()->Save(stream.Get(), TRUE), S_OK);
    EXPECT_NE(BytesOf(stream.Get()).find("X(\"" + std::string(GetParam().bytesOfWord) + "\")"), std::string::npos);

    const auto package = MakePackage(L"1");
    ASSERT_EQ(package.As<IPersistStream>()->Load(stream.Get()), S_OK);
    CBag loaded;
    ASSERT_EQ(package.As<IPersistPropertyBag>()->Save(&loaded, TRUE, TRUE), S_OK);
    EXPECT_EQ(StringsOf(loaded.members[L"compoundId"].Get()), (std::vector<std::wstring>{word, L"Second"}));
    EXPECT_EQ(StringsOf(loaded.members[L"compoundName"].Get()), (std::vector<std::wstring>{word, L"Second"}));
    EXPECT_EQ(StringsOf(loaded.members[L"reactionID"].Get()), (std::vector<std::wstring>{word}));
    EXPECT_EQ(StringsOf(loaded.members[L"reactionRateEquation"].Get()), (std::vector<std::wstring>{rate}));
    CMaterial material;
    CReactionObject results;
    EXPECT_EQ(Bind(package, material, results), S_OK);
    EXPECT_EQ(Calculate(package), S_OK);
    EXPECT_EQ(results.values[L"ReactionRate " + word], 450.25);  // 1.5 * 300 K + 0.25
    EXPECT_EQ(results.values[L"EnthalpyOfReaction " + word], -1250);
    EXPECT_EQ(package->Terminate(), S_OK);
}
INSTANTIATE_TEST_SUITE_P(Table, HardHostLanguage, testing::ValuesIn(languages),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(HardHost, HasNoCurrentFolderAnyMore) {
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring gone = std::wstring(folder) + L"reka-gone-" + std::to_wstring(GetCurrentProcessId());
    ASSERT_TRUE(CreateDirectoryW(gone.c_str(), nullptr));
    ASSERT_TRUE(SetCurrentDirectoryW(gone.c_str()));
    RemoveDirectoryW(gone.c_str());
    EXPECT_TRUE(ResolvePackage(L"Ammonia synthesis"));
    SetCurrentDirectoryW(before);
    RemoveDirectoryW(gone.c_str());
}

DWORD WINAPI RunWork(void* context) {
    (*static_cast<std::function<void()>*>(context))();
    return 0;
}

/// Runs `work` on a thread whose stack has `size` bytes.
void RunOnStack(SIZE_T size, std::function<void()> work) {
    const HANDLE thread = CreateThread(nullptr, size, RunWork, &work, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    ASSERT_TRUE(thread);
    EXPECT_EQ(WaitForSingleObject(thread, 120000), WAIT_OBJECT_0);
    CloseHandle(thread);
}

TEST(HardHost, HasASmallStack) {
    std::wstring deep = L"T";
    for (int i = 0; i < 100000; ++i) deep += L"+1";
    HRESULT calculated = E_FAIL;
    double value = 0;
    RunOnStack(256 * 1024, [&] {
        const CApartment apartment;
        CMaterial material;
        CReactionObject results;
        const auto package = MakePackage(deep);
        if (!package || FAILED(Bind(package, material, results))) return;
        calculated = Calculate(package);
        value = results.values[L"ReactionRate R"];
        const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
        CValue names;
        if (FAILED(manager->GetListOfReactionsPackages(&names.Get()))) calculated = E_FAIL;
        package->Terminate();
    });
    EXPECT_EQ(calculated, S_OK);
    EXPECT_EQ(value, 100300);
}

TEST(HardHost, CallsInTheWrongOrder) {
    const auto manager = MakeManager<reka::ICapeReactionsPackageManager>();
    CRef<IDispatch> made;
    ASSERT_EQ(manager->ResolveReactionsPackage(CText(L"none").Get(), made.Receive()), S_OK);
    const auto package = made.As<reka::ICapeUtilities>();
    CMaterial material;
    CReactionObject results;
    EXPECT_EQ(Calculate(package), E_UNEXPECTED);
    EXPECT_EQ(Bind(package, material, results), E_UNEXPECTED);
    EXPECT_EQ(package.As<reka::ICapeThermoMaterialContext>()->UnsetMaterial(), S_OK);
    EXPECT_EQ(package->Terminate(), S_OK);
    EXPECT_EQ(package->Terminate(), S_OK);
    CValue ids;
    EXPECT_EQ(package.As<reka::ICapeReactionChemistry>()->GetReactionsIds(&ids.Get()), E_UNEXPECTED);
    CText name;
    EXPECT_EQ(package.As<reka::ICapeIdentification>()->get_ComponentName(name.Receive()), E_UNEXPECTED);
    EXPECT_EQ(package->Initialize(), reka::ECapeUnknownHR);  // which leaves an empty package
    EXPECT_EQ(package.As<reka::ICapeReactionChemistry>()->GetReactionsIds(&ids.Get()), S_OK);
    EXPECT_EQ(material.calls.held, 0);
    EXPECT_EQ(results.calls.held, 0);
    const auto filled = MakePackage(L"T");
    EXPECT_EQ(Calculate(filled), reka::ECapeUnknownHR);
    EXPECT_EQ(filled->Terminate(), S_OK);
    EXPECT_EQ(filled->Initialize(), S_OK);
}

TEST(HardHost, PassesVariantsOfEveryType) {
    CMaterial material;
    CReactionObject results;
    const auto package = MakePackage(L"T");
    ASSERT_EQ(Bind(package, material, results), S_OK);
    const auto routine = package.As<reka::ICapeReactionsRoutine>();
    const CText phase(L"Vapor");
    const CValue properties = StringArray({L"ReactionRate"});
    const CValue reactions = StringArray({L"R"});
    for (const int flags : {0, int{VT_ARRAY}, int{VT_BYREF}, VT_ARRAY | VT_BYREF}) {
        for (int type = 0; type <= VT_UINT_PTR; ++type) {
            VARIANT wrong = {};
            wrong.vt = static_cast<VARTYPE>(type | flags);
            const bool isList = wrong.vt == VT_EMPTY;  // all reactions
            EXPECT_TRUE(FAILED(routine->CalcReactionProp(wrong, phase.Get(), reactions.Get(), nullptr))) << wrong.vt;
            EXPECT_EQ(SUCCEEDED(routine->CalcReactionProp(properties.Get(), phase.Get(), wrong, nullptr)), isList)
                << wrong.vt;
        }
    }
    EXPECT_EQ(package->Terminate(), S_OK);
}

TEST(HardHost, PassesArraysOfOtherShapes) {
    CMaterial material;
    CReactionObject results;
    const auto package = MakePackage(L"T");
    ASSERT_EQ(Bind(package, material, results), S_OK);
    const auto routine = package.As<reka::ICapeReactionsRoutine>();
    const CText phase(L"Vapor");
    const CValue properties = StringArray({L"ReactionRate"});
    const auto fails = [&](const CValue& list) {
        return FAILED(routine->CalcReactionProp(properties.Get(), phase.Get(), list.Get(), nullptr)) &&
               FAILED(routine->CalcReactionProp(list.Get(), phase.Get(), CValue().Get(), nullptr));
    };
    EXPECT_TRUE(fails(StringArray({L"R"}, 1)));
    EXPECT_TRUE(fails(StringArray({L"R"}, -1)));
    EXPECT_TRUE(fails(StringArray({})));
    EXPECT_TRUE(fails(NumberArray({1})));
    SAFEARRAYBOUND bounds[] = {{1, 0}, {1, 0}};
    CValue plane;
    plane.Get().vt = VT_ARRAY | VT_BSTR;
    plane.Get().parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    EXPECT_TRUE(fails(plane));
    CValue mislabelled = NumberArray({1, 2});
    mislabelled.Get().vt = VT_ARRAY | VT_BSTR;
    EXPECT_TRUE(fails(mislabelled));
    mislabelled.Get().vt = VT_ARRAY | VT_R8;  // for its end
    EXPECT_EQ(package->Terminate(), S_OK);
}

/// Binds and calculates; true when every step succeeded.
bool BindAndCalculate(const CRef<reka::ICapeUtilities>& package, CMaterial& material, CReactionObject& results) {
    return SUCCEEDED(Bind(package, material, results)) && SUCCEEDED(Calculate(package));
}

TEST(HardHost, FailsAtEveryCall) {
    for (const wchar_t* version : {L"1.0", L"1.1"}) {
        int calls = 0;
        for (int failAt = 1;; ++failAt) {
            CMaterial material;
            CReactionObject results;
            const auto package = MakePackage(L"T+P+X(First)+C(First)+A(First)+F(First)", L"T", version);
            ASSERT_TRUE(package);
            material.calls.failAt = failAt;
            const bool isDone = BindAndCalculate(package, material, results);
            calls = material.calls.count;
            EXPECT_EQ(package->Terminate(), S_OK);
            EXPECT_EQ(material.calls.held, 0) << failAt;
            EXPECT_EQ(results.calls.held, 0) << failAt;
            if (failAt > calls) {
                EXPECT_TRUE(isDone);
                break;
            }
        }
        EXPECT_GT(calls, 8);
        for (int failAt = 1; failAt <= 2; ++failAt) {
            CMaterial material;
            CReactionObject results;
            const auto package = MakePackage(L"T", L"T", version);
            results.calls.failAt = failAt;
            EXPECT_FALSE(BindAndCalculate(package, material, results));
            EXPECT_EQ(package->Terminate(), S_OK);
        }
    }
}

TEST(HardHost, CallsBackIntoThePackage) {
    for (const wchar_t* version : {L"1.0", L"1.1"}) {
        CMaterial material;
        CReactionObject results;
        const auto package = MakePackage(L"2*T", L"3*T", version);
        ASSERT_EQ(Bind(package, material, results), S_OK);
        int depth = 0;
        material.calls.onCall = [&] {
            if (depth > 0) return;
            ++depth;
            Calculate(package);
            IDispatch* none = nullptr;
            package.As<reka::ICapeThermoMaterialContext>()->SetMaterial(material.Dispatch());
            package.As<reka::ICapeThermoContext10>()->SetMaterial(&none);
            CBag bag;
            FillBag(bag, L"7*T", L"1", L"1.1");
            package.As<IPersistPropertyBag>()->Load(&bag, nullptr);
            package->Terminate();
            --depth;
        };
        EXPECT_EQ(Calculate(package), S_OK);  // with what it began with
        EXPECT_EQ(results.values[L"ReactionRate R"], 600);
        EXPECT_EQ(package->Terminate(), S_OK);
        EXPECT_EQ(material.calls.held, 0);
        EXPECT_EQ(results.calls.held, 0);
    }
}

}  // namespace
}  // namespace host
