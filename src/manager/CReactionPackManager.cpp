// SPDX-License-Identifier: MIT
// The manager object: the list of templates for the simulator, and the packages made out of them. The file is read
// afresh for each question, so that templates stored by another simulator, or another manager, are seen at once.
// Reading may show a message box, and a box lets the host call in: what an answer needs of the caller's is copied
// before that.

#include "manager/CReactionPackManager.h"

#include <memory>
#include <new>
#include <string>
#include <utility>

#include "capeopen/ArrayHelpers.h"
#include "capeopen/ComObject.h"
#include "capeopen/ErrorTexts.h"
#include "manager/ConfigFile.h"
#include "manager/CreateReactionPackManager.h"
#include "manager/ManagerTemplates.h"
#include "package/CReactionPack.h"
#include "package/Edit.h"
#include "platform/Files.h"
#include "platform/SameText.h"
#include "platform/ThreadError.h"

namespace reka {

namespace {

using PackageRef = CComRef<CComObject<CReactionPack>>;

/// A new package without a definition; null without memory.
PackageRef MakePackage() {
    try {
        return PackageRef(new CComObject<CReactionPack>());
    } catch (const std::bad_alloc&) {
        return {};
    }
}

/// Gives the package away as `IDispatch`.
HRESULT GivePackage(PackageRef& made, IDispatch** package) {
    if (!made) return E_OUTOFMEMORY;
    void* found = nullptr;
    const HRESULT result = made->QueryInterface(IID_IDispatch, &found);
    *package = static_cast<IDispatch*>(found);
    return result;
}

}  // namespace

HRESULT CreateReactionPackManager(REFIID iid, void** manager) noexcept {
    return CreateObject<CReactionPackManager>(nullptr, iid, manager);
}

std::unique_ptr<ITemplateSource> MakeManagerTemplates() {
    return std::make_unique<CManagerTemplates>(*CComRef(new CComObject<CReactionPackManager>()));
}

CReactionPackManager::CReactionPackManager() {
    Files().CreateFolder(SystemDataFolder());  // whether or not it can be made
    componentName = CBstr::Make(u"REKA");
    componentDescription = CBstr::Make(u"Reaction package manager for REKA - CAPE-OPEN Reaction Numerics");
}

void CReactionPackManager::FinalRelease() {
    store.simulationContext.Reset();
    store.DiscardTemplates();
}

std::span<const IID> CReactionPackManager::LateBoundInterfaces() const {
    static constexpr IID interfaces[] = {
        ICapeReactionsPackageManager::iid, ICapeUtilities::iid, ICapeThermoNewPropertyPackage::iid,
        ICapeIdentification::iid,          ECapeRoot::iid,      ECapeUser::iid};
    return interfaces;
}

void* CReactionPackManager::FindInterface(REFIID iid) {
    if (iid == ICapeReactionsPackageManager::iid) return static_cast<ICapeReactionsPackageManager*>(this);
    if (iid == ICapeUtilities::iid) return static_cast<ICapeUtilities*>(this);
    if (iid == ICapeThermoNewPropertyPackage::iid) return static_cast<ICapeThermoNewPropertyPackage*>(this);
    return BaseObject::FindInterface(iid);
}

HRESULT CReactionPackManager::GetListOfReactionsPackages(VARIANT* names) {
    constexpr const char16_t* scope = u"GetListOfReactionsPackages";
    constexpr const char16_t* interfaceName = u"ICapeReactionsPackageManager";
    if (!names) return E_POINTER;
    VariantInit(names);
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        store.LoadTemplates();
        // Without templates there is no array at all, rather than an empty one.
        const auto putName = [&](SAFEARRAY& array, LONG index) {
            return PutString(array, index, store.templates[static_cast<std::size_t>(index)]->name.Get());
        };
        if (!CreateListVariant(*names, store.templates.size(), VT_BSTR, putName)) throw std::bad_alloc();
        return S_OK;
    });
}

HRESULT CReactionPackManager::ResolveReactionsPackage(BSTR name, IDispatch** package) {
    constexpr const char16_t* scope = u"ResolveReactionsPackage";
    constexpr const char16_t* interfaceName = u"ICapeReactionsPackageManager";
    if (!package) return E_POINTER;
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        const CBstr wanted = CBstr::CopyOf(name);  // a message box may let the caller free it
        if (IDispatch* const held = std::exchange(*package, nullptr)) held->Release();
        PackageRef made = MakePackage();
        CComRef<IDispatch> answer;
        const HRESULT result = GivePackage(made, answer.Receive());
        if (FAILED(result)) {
            return Fail(u"Failed to create reaction package: " + GetSystemErrorText(result), scope, interfaceName);
        }
        store.LoadTemplates();
        for (const auto& definition : store.templates) {
            if (!SameText(definition->name.Get(), wanted.Get())) continue;
            made->AssignDefinition(definition.get());
            break;
        }
        // An unknown name gives a package too: it may still be loaded from a document.
        *package = answer.Detach();
        return S_OK;
    });
}

HRESULT CReactionPackManager::get_parameters(IDispatch** parameters) {
    if (!parameters) return E_POINTER;
    *parameters = nullptr;
    return S_OK;
}

HRESULT CReactionPackManager::put_simulationContext(IDispatch* context) {
    if (HasEnded()) return E_UNEXPECTED;
    const CComRef<ECapeRoot> self(this);  // a release may drop the last count on this object
    store.simulationContext = CComRef<IDispatch>(context);
    return S_OK;
}

HRESULT CReactionPackManager::Initialize() {
    return S_OK;
}

HRESULT CReactionPackManager::Terminate() {
    const CComRef<ECapeRoot> self(this);
    store.simulationContext.Reset();
    return S_OK;
}

// The file is written whatever the user did: a deletion waits for this, and a file that was set aside as damaged is
// whole again.
HRESULT CReactionPackManager::Edit() {
    return RunMethod(*this, u"Edit", u"ICapeUtilities", [&]() -> HRESULT {
        store.LoadTemplates();
        CManagerTemplates templates(*this);
        Editor().EditTemplates(templates);
        const unsigned long reason = ThreadError();  // why no dialog was shown, for the caller
        store.StoreTemplates();
        SetThreadError(reason);
        return S_OK;
    });
}

HRESULT CReactionPackManager::NewPropertyPackage(IDispatch** package) {
    if (!package) return E_POINTER;
    *package = nullptr;
    return RunMethod(*this, u"NewPropertyPackage", u"ICapeThermoNewPropertyPackage", [&]() -> HRESULT {
        PackageRef made = MakePackage();
        CComRef<IDispatch> answer;
        const HRESULT result = GivePackage(made, answer.Receive());
        if (FAILED(result)) throw std::bad_alloc();
        ReactionPackDefinition definition(nullptr);
        definition.name = CBstr::Make(u"New Reaction Package");
        made->AssignDefinition(&definition);
        *package = answer.Detach();
        return S_OK;
    });
}

}  // namespace reka
