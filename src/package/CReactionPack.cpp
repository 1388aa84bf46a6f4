// SPDX-License-Identifier: MIT
// The package object itself: its interfaces, its identification and the way a definition comes into it. A definition is
// held by counted pointers, because a call that is under way goes on with the one it began with, whatever a callback
// puts in its place; the count is one of a single thread, as is the object. Whatever is new is made whole first and
// then swapped in, so a failure leaves the package as it was.

#include "package/CReactionPack.h"

#include "capeopen/ComObject.h"
#include "package/CreateReactionPack.h"

namespace reka {

HRESULT CreateReactionPack(REFIID iid, void** package) noexcept {
    return CreateObject<CReactionPack>(nullptr, iid, package);
}

void CReactionPack::FinalRelease() {
    reactionObject.Reset();
    ++bindings;
    material.Reset();
    definition.reset();
    simulationContext.Reset();
}

std::span<const IID> CReactionPack::LateBoundInterfaces() const {
    // Both thermo contexts have a SetMaterial, which does the same.
    static constexpr IID interfaces[] = {ICapeReactionChemistry::iid,
                                         ICapeReactionsRoutine::iid,
                                         ICapeKineticReactionContext::iid,
                                         ICapeThermoMaterialContext::iid,
                                         ICapeThermoContext10::iid,
                                         ICapeUtilities::iid,
                                         ICapeIdentification::iid,
                                         ECapeRoot::iid,
                                         ECapeUser::iid};
    return interfaces;
}

void* CReactionPack::FindInterface(REFIID iid) {
    if (iid == ICapeKineticReactionContext::iid) return static_cast<ICapeKineticReactionContext*>(this);
    if (iid == ICapeReactionChemistry::iid) return static_cast<ICapeReactionChemistry*>(this);
    if (iid == ICapeReactionsRoutine::iid) return static_cast<ICapeReactionsRoutine*>(this);
    if (iid == ICapeThermoMaterialContext::iid) return static_cast<ICapeThermoMaterialContext*>(this);
    if (iid == ICapeThermoContext10::iid) return static_cast<ICapeThermoContext10*>(this);
    if (iid == ICapeUtilities::iid) return static_cast<ICapeUtilities*>(this);
    if (iid == IID_IPersistPropertyBag || iid == IID_IPersist) return static_cast<IPersistPropertyBag*>(this);
    if (iid == IID_IPersistStream) return static_cast<IPersistStream*>(this);
    return BaseObject::FindInterface(iid);
}

void CReactionPack::AssignDefinition(const ReactionPackDefinition* source) {
    DefinitionHold copy;
    if (source) {
        copy = MakeDefinition();
        copy->CopyFrom(*source);
    }
    PutIntoService(copy);
    if (definition) resolvedOrLoaded = true;
    MarkChanged();
}

CReactionPack::DefinitionHold CReactionPack::MakeDefinition() const {
    return boost::make_local_shared<ReactionPackDefinition>(simulationContext.Get());
}

void CReactionPack::PutIntoService(DefinitionHold& next) {
    if (next) next->AllocateWorkArrays();
    definition.swap(next);
    ShareContext();  // another one may have been set while `next` was read or edited
}

void CReactionPack::ShareContext() {
    if (!definition || definition->simulationContext.Get() == simulationContext.Get()) return;
    definition->simulationContext = simulationContext;
}

CReactionPack::DefinitionHold CReactionPack::CopyDefinition(const ReactionPackDefinition& source) {
    auto copy = boost::make_local_shared<ReactionPackDefinition>(source.simulationContext.Get());
    copy->CopyFrom(source);
    for (std::size_t i = 0; i < source.compounds.size(); ++i) {
        copy->compounds[i]->databaseIndex = source.compounds[i]->databaseIndex;
    }
    copy->AllocateWorkArrays();
    return copy;
}

boost::local_shared_ptr<CCallArrays> CReactionPack::ArraysFor(const ReactionPackDefinition& used) {
    if (!callArrays) callArrays = boost::make_local_shared<CCallArrays>();
    const bool isInUse = callArrays.local_use_count() > 1;
    auto arrays = isInUse ? boost::make_local_shared<CCallArrays>() : callArrays;
    arrays->UseFor(used.WorkStamp(), used.reactions.size());
    return arrays;
}

HRESULT CReactionPack::get_ComponentName(BSTR* name) {
    if (!name) return E_POINTER;
    return definition ? GiveCopy(definition->name, name) : E_UNEXPECTED;
}

HRESULT CReactionPack::put_ComponentName(BSTR name) {
    if (!definition) return E_UNEXPECTED;
    return RunMethod(*this, u"put_ComponentName", u"ICapeIdentification", [&] {
        definition->name = CBstr::CopyOf(name);
        MarkChanged();
        return S_OK;
    });
}

HRESULT CReactionPack::get_ComponentDescription(BSTR* description) {
    if (!description) return E_POINTER;
    return definition ? GiveCopy(definition->description, description) : E_UNEXPECTED;
}

HRESULT CReactionPack::put_ComponentDescription(BSTR description) {
    if (!definition) return E_UNEXPECTED;
    return RunMethod(*this, u"put_ComponentDescription", u"ICapeIdentification", [&] {
        definition->description = CBstr::CopyOf(description);
        MarkChanged();
        return S_OK;
    });
}

}  // namespace reka
