// SPDX-License-Identifier: MIT
// What the component takes through its module, as a simulator has it: the start, and whole calculations through the
// interfaces and through IDispatch. The argument is the path of the module. Times are medians of rounds that take
// turns.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/call/IdleMaterial.h"
#include "capeopen/ClassIds.h"
#include "expression/parse/ParseExpression.h"
#include "manager/TemplateStore.h"
#include "persistence/WriteStoredDefinition.h"
#include "platform/Files.h"

namespace reka::bench {

namespace {

constexpr int reactionCounts[] = {1, 10, 100, 1000};
const char16_t* const templateName = u"Benchmark";

using Clock = std::chrono::steady_clock;

double NanosecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

/// A package whose rates are constants.
std::unique_ptr<ReactionPackDefinition> MakeDefinition(int reactionCount) {
    auto definition = std::make_unique<ReactionPackDefinition>(nullptr);
    definition->name = CBstr::Make(templateName);
    for (int i = 0; i < reactionCount; ++i) {
        std::u16string id = u"Reaction ";
        for (const char digit : std::to_string(i + 1)) id.push_back(static_cast<char16_t>(digit));
        auto reaction = std::make_unique<ReactionDefinition>(0);
        reaction->id = CBstr::Make(id);
        reaction->phase = CBstr::Make(u"Liquid");
        reaction->rateEquation = u"2.5";
        std::u16string errorText;
        reaction->rateExpression =
            std::make_unique<ExpressionRef>(ParseExpression(*definition, u"2.5", errorText, nullptr));
        definition->reactions.push_back(std::move(reaction));
    }
    return definition;
}

/// The module, loaded as long as this lives.
class CModuleUnderTest {
public:
    explicit CModuleUnderTest(const wchar_t* path) : module(LoadLibraryW(path)) {}
    ~CModuleUnderTest() {
        if (module) FreeLibrary(module);
    }
    CModuleUnderTest(const CModuleUnderTest&) = delete;
    CModuleUnderTest& operator=(const CModuleUnderTest&) = delete;
    bool IsLoaded() const { return module != nullptr; }

    /// A manager or a package; null if it can't be made.
    template <class Interface>
    CComRef<Interface> Create(const CLSID& classId) const {
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        CComRef<Interface> object;
        CComRef<IClassFactory> factory;
        const auto getClassObject =
            reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        if (!getClassObject) return object;
        void* made = nullptr;
        if (FAILED(getClassObject(classId, IID_IClassFactory, &made))) return object;
        factory.Reset(static_cast<IClassFactory*>(made));
        if (SUCCEEDED(factory->CreateInstance(nullptr, InterfaceId<Interface>(), &made))) {
            object.Reset(static_cast<Interface*>(made));
        }
        return object;
    }

private:
    HMODULE module;
};

template <class Interface, class Object>
CComRef<Interface> Ask(Object& object) {
    CComRef<Interface> found;
    void* pointer = nullptr;
    if (SUCCEEDED(object.QueryInterface(InterfaceId<Interface>(), &pointer))) {
        found.Reset(static_cast<Interface*>(pointer));
    }
    return found;
}

/// Loads the definition into a package, as out of a document.
bool LoadIntoPackage(IDispatch& package, const ReactionPackDefinition& definition) {
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    if (!WriteStoredDefinition(definition, block, errorText)) return false;
    CComRef<IStream> stream;
    void* pointer = nullptr;
    if (FAILED(package.QueryInterface(IID_IPersistStream, &pointer))) return false;
    CComRef<IPersistStream> persist;
    persist.Reset(static_cast<IPersistStream*>(pointer));
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()))) return false;
    const auto size = static_cast<std::uint32_t>(block.size());
    stream->Write(&size, sizeof size, nullptr);
    stream->Write(block.data(), size, nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return SUCCEEDED(persist->Load(stream.Get()));
}

/// One package with what a calculation of it needs.
class CCall {
public:
    CCall(const CModuleUnderTest& module, int reactionCount)
        : package(module.Create<IDispatch>(reactionPackClassId)), ids(MakeIds(reactionCount)) {
        if (!package || !LoadIntoPackage(*package, *MakeDefinition(reactionCount))) return;
        routine = Ask<ICapeReactionsRoutine>(*package);
        context = Ask<ICapeKineticReactionContext>(*package);
        materialContext = Ask<ICapeThermoMaterialContext>(*package);
        if (!routine || !context || !materialContext) return;
        IDispatch* results = &reactionObject;
        context->SetReactionObject(&results);
        materialContext->SetMaterial(&material);  // which has no list of compounds, and is bound all the same
        std::wstring name = L"CalcReactionProp";
        LPOLESTR names[] = {name.data()};
        if (FAILED(package->GetIDsOfNames(IID_NULL, names, 1, 0, &member))) return;
        props.Get().vt = VT_ARRAY | VT_BSTR;
        props.Get().parray = OneString(property.Get());
        works = Early() == S_OK && FindMemberOfRoutine() && Late() == S_OK && System() == S_OK;
    }
    ~CCall() {
        if (materialContext) materialContext->UnsetMaterial();
        if (!package) return;
        if (const auto utilities = Ask<ICapeUtilities>(*package)) utilities->Terminate();
    }
    CCall(const CCall&) = delete;
    CCall& operator=(const CCall&) = delete;

    bool Works() const { return works; }

    HRESULT Early() { return routine->CalcReactionProp(props.Get(), phase.Get(), all.Get(), basis.Get()); }

    HRESULT Late() {
        CArguments arguments(*this);
        return package->Invoke(member, IID_NULL, 0, DISPATCH_METHOD, &arguments.parameters, nullptr, nullptr, nullptr);
    }

    /// The same through nothing but the system's dispatcher.
    HRESULT System() {
        CArguments arguments(*this);
        return DispInvoke(routine.Get(), type.Get(), memberOfRoutine, DISPATCH_METHOD, &arguments.parameters, nullptr,
                          nullptr, nullptr);
    }

    /// The least: what the system's arrays and the reaction object take.
    HRESULT Floor() {
        ICapeReactionProperties* const object = pointer;
        for (const CBstr& id : ids) {
            SAFEARRAYBOUND bound = {1, 0};
            LONG index = 0;
            double value = 2.5;
            CVariant values;
            values.Get().vt = VT_ARRAY | VT_R8;
            values.Get().parray = SafeArrayCreate(VT_R8, 1, &bound);
            SafeArrayPutElement(values.Get().parray, &index, &value);
            CVariant identifiers;
            identifiers.Get().vt = VT_ARRAY | VT_BSTR;
            identifiers.Get().parray = OneString(id.Get());
            object->SetReactionProp(property.Get(), phase.Get(), identifiers.Get(), basis.Get(), values.Get());
        }
        return S_OK;
    }

private:
    /// The arguments of a late-bound call.
    struct CArguments {
        explicit CArguments(CCall& call) {
            values[0].vt = VT_BSTR;
            values[0].bstrVal = call.basis.Get();
            values[1] = call.all.Get();
            values[2].vt = VT_BSTR;
            values[2].bstrVal = call.phase.Get();
            values[3] = call.props.Get();
        }
        VARIANT values[4];  // the last one first
        DISPPARAMS parameters = {values, nullptr, 4, 0};
    };

    bool FindMemberOfRoutine() {
        std::wstring name = L"CalcReactionProp";
        LPOLESTR names[] = {name.data()};
        return SUCCEEDED(routine->GetTypeInfo(0, 0, type.Receive())) &&
               SUCCEEDED(type->GetIDsOfNames(names, 1, &memberOfRoutine));
    }

    static SAFEARRAY* OneString(BSTR text) {
        SAFEARRAYBOUND bound = {1, 0};
        LONG index = 0;
        SAFEARRAY* const array = SafeArrayCreate(VT_BSTR, 1, &bound);
        SafeArrayPutElement(array, &index, text);
        return array;
    }

    static std::vector<CBstr> MakeIds(int reactionCount) {
        const auto definition = MakeDefinition(reactionCount);
        std::vector<CBstr> made;
        for (const auto& reaction : definition->reactions) made.push_back(CBstr::CopyOf(reaction->id.Get()));
        return made;
    }

    CIdleReactionObject reactionObject;
    CIdleObject<IDispatch> material;
    ICapeReactionProperties* volatile pointer = &reactionObject;
    CComRef<IDispatch> package;
    CComRef<ICapeReactionsRoutine> routine;
    CComRef<ICapeKineticReactionContext> context;
    CComRef<ICapeThermoMaterialContext> materialContext;
    CComRef<ITypeInfo> type;
    DISPID member = 0;
    DISPID memberOfRoutine = 0;
    std::vector<CBstr> ids;
    CVariant props;
    CVariant all;
    CBstr property = CBstr::Make(u"ReactionRate");
    CBstr phase = CBstr::Make(u"Liquid");
    CBstr basis = CBstr::Make(u"Mole");
    bool works = false;
};

bool MeasureCalls(const CModuleUnderTest& module, int rounds) {
    std::printf("%-16s %9s %9s %9s %9s %12s %13s %11s\n", "ns per reaction", "floor", "early", "system", "late",
                "early/floor", "system/floor", "late/floor");
    for (const int count : reactionCounts) {
        CCall call(module, count);
        if (!call.Works()) {
            std::fprintf(stderr, "a package of %d reactions does not calculate\n", count);
            return false;
        }
        const int repetitions = std::max(1, 20000 / count / (rounds > 3 ? 1 : 100));
        std::vector<double> times[4];
        HRESULT (CCall::*const sides[])() = {&CCall::Floor, &CCall::Early, &CCall::System, &CCall::Late};
        for (int round = 0; round < rounds; ++round) {
            for (std::size_t side = 0; side < 4; ++side) {
                const auto start = Clock::now();
                for (int i = 0; i < repetitions; ++i) (call.*sides[side])();
                times[side].push_back(NanosecondsSince(start) / repetitions / count);
            }
        }
        const double floor = Median(times[0]);
        const double early = Median(times[1]);
        const double system = Median(times[2]);
        const double late = Median(times[3]);
        std::printf("%-16d %9.0f %9.0f %9.0f %9.0f %12.2f %13.2f %11.2f\n", count, floor, early, system, late,
                    early / floor, system / floor, late / floor);
    }
    return true;
}

/// The file of templates with one package in it, unless the user has one.
class COwnTemplates {
public:
    COwnTemplates() {
        TemplateStore::GetConfigFilePath(path, false);
        if (Files().Exists(path)) return;
        TemplateStore store;
        store.templates.push_back(MakeDefinition(10));
        store.StoreTemplates();
        isOurs = true;
    }
    ~COwnTemplates() {
        if (isOurs) Files().Delete(path);
    }
    COwnTemplates(const COwnTemplates&) = delete;
    COwnTemplates& operator=(const COwnTemplates&) = delete;

private:
    std::u16string path;
    bool isOurs = false;
};

bool MeasureStart(const wchar_t* path, int rounds) {
    const COwnTemplates templates;
    std::vector<double> times[3];
    for (int round = 0; round < rounds; ++round) {
        auto start = Clock::now();
        const CModuleUnderTest module(path);
        if (!module.IsLoaded()) return false;
        times[0].push_back(NanosecondsSince(start));
        start = Clock::now();
        const auto manager = module.Create<ICapeReactionsPackageManager>(reactionPackManagerClassId);
        if (!manager) return false;
        times[1].push_back(NanosecondsSince(start));
        start = Clock::now();
        CComRef<IDispatch> package;
        const CBstr name = CBstr::Make(templateName);
        if (FAILED(manager->ResolveReactionsPackage(name.Get(), package.Receive()))) return false;
        times[2].push_back(NanosecondsSince(start));
    }
    const char* const steps[] = {"load the module", "create the manager", "resolve a package"};
    std::printf("\n%-20s %12s\n", "start", "us");
    for (std::size_t i = 0; i < 3; ++i) std::printf("%-20s %12.0f\n", steps[i], Median(times[i]) / 1000);
    return true;
}

int Run(const wchar_t* path, bool isBrief) {
    const int rounds = isBrief ? 3 : 41;
    {
        const CModuleUnderTest module(path);
        if (!module.IsLoaded()) {
            std::fprintf(stderr, "the module can't be loaded\n");
            return 1;
        }
        if (!MeasureCalls(module, rounds)) return 1;
    }
    return MeasureStart(path, rounds) ? 0 : 1;
}

}  // namespace

}  // namespace reka::bench

int wmain(int count, wchar_t** arguments) {
    if (count < 2 || FAILED(OleInitialize(nullptr))) return 2;
    const int result = reka::bench::Run(arguments[1], count > 2);
    OleUninitialize();
    return result;
}
