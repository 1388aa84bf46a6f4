// SPDX-License-Identifier: MIT
// What a simulator sets and ends: its context, the reaction object, `Initialize`, `Terminate`, and the dialog. To give
// back an object of the simulator's may run the simulator's code, which may call in here or let go of this package, so
// the package is held meanwhile, and a pointer is out of its place before its object hears of it.

#include <memory>

#include "capeopen/ErrorTexts.h"
#include "package/CReactionPack.h"
#include "package/Edit.h"

namespace reka {

HRESULT CReactionPack::get_parameters(IDispatch** parameters) {
    if (!definition) return E_UNEXPECTED;
    if (!parameters) return E_POINTER;
    *parameters = nullptr;  // a package has none
    return S_OK;
}

HRESULT CReactionPack::put_simulationContext(IDispatch* context) {
    if (HasEnded()) return E_UNEXPECTED;
    const CComRef<ECapeRoot> self(this);  // a release below may drop the last count on this object, or on the context
    const CComRef<IDispatch> kept(context);
    simulationContext = kept;
    ShareContext();
    return S_OK;
}

HRESULT CReactionPack::Initialize() {
    constexpr const char16_t* scope = u"Initialize";
    constexpr const char16_t* interfaceName = u"ICapeUtilitites";  // simulators know it by this spelling
    return RunMethod(*this, scope, interfaceName, [&] {
        if (!definition) {
            DefinitionHold made = MakeDefinition();
            PutIntoService(made);
        }
        if (resolvedOrLoaded) return S_OK;
        constexpr const char16_t* text = u"Reaction package was not resolved or loaded";
        return Fail(text, text, scope, interfaceName);
    });
}

HRESULT CReactionPack::Terminate() {
    const CComRef<ECapeRoot> self(this);
    simulationContext.Reset();
    ++bindings;
    material.Reset();
    reactionObject.Reset();
    ShareContext();
    return S_OK;
}

// The user edits a copy: the dialog can be cancelled, and while it is open the simulator may still calculate. A
// material isn't bound again to what comes back; whoever has compounds changed sets it again.
HRESULT CReactionPack::Edit() {
    return RunMethod(*this, u"Edit", u"ICapeUtilities", [&]() -> HRESULT {
        DefinitionHold copy = MakeDefinition();
        if (definition) copy->CopyFrom(*definition);
        if (!Editor().EditPackage(*copy)) return S_FALSE;
        PutIntoService(copy);  // the old one goes with `copy` when all is done: its end may let the simulator call in
        MarkChanged();
        return S_OK;
    });
}

HRESULT CReactionPack::SetReactionObject(IDispatch** reactionObjectRef) {
    constexpr const char16_t* scope = u"SetReactionObject";
    constexpr const char16_t* interfaceName = u"ICapeKineticReactionContext";
    return RunMethod(*this, scope, interfaceName, [&]() -> HRESULT {
        if (!definition) return E_UNEXPECTED;
        if (!reactionObjectRef) return E_POINTER;
        const CComRef<IDispatch> object(*reactionObjectRef);  // the caller's pointer may change during the release
        reactionObject.Reset();
        if (!object) return S_OK;
        void* found = nullptr;
        HRESULT result = object->QueryInterface(ICapeReactionProperties::iid, &found);
        if (SUCCEEDED(result) && !found) result = E_NOINTERFACE;
        if (FAILED(result)) {
            return Fail(u"Failed to obtain ICapeReactionProperties pointer: " + GetSystemErrorText(result), scope,
                        interfaceName);
        }
        reactionObject.Reset(static_cast<ICapeReactionProperties*>(found));
        return S_OK;
    });
}

}  // namespace reka
