// SPDX-License-Identifier: MIT
// The reaction package as the simulator holds it.

#pragma once

#include <boost/smart_ptr/local_shared_ptr.hpp>
#include <boost/smart_ptr/make_local_shared.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "capeopen/BaseObject.h"
#include "package/LentArray.h"
#include "package/MaterialReader.h"
#include "package/ReactionIndex.h"
#include "records/Definition.h"

namespace reka {

/// One reaction package at run time: its definition, the references that the simulator set, and the interfaces over
/// them. Each subject has its own source: CReactionPackChemistry.cpp, CReactionPackCalculation.cpp and so on. An
/// object belongs to one apartment and takes no locks.
///
/// A material or a reaction object may call back into the package while a calculation asks it. The calculation keeps
/// the definition, its working values and the objects that it began with; what a callback sets or calculates is apart
/// from them, and counts from the next call on. The package lives until the call has returned.
class CReactionPack : public BaseObject,
                      public CDualInterface<ICapeKineticReactionContext>,
                      public CDualInterface<ICapeReactionChemistry>,
                      public CDualInterface<ICapeReactionsRoutine>,
                      public CDualInterface<ICapeThermoMaterialContext>,
                      public CDualInterface<ICapeThermoContext10>,
                      public CDualInterface<ICapeUtilities>,
                      public IPersistPropertyBag,
                      public IPersistStream {
public:
    /// Gives the package a deep copy of `source`, or takes its definition away for null. With a definition the package
    /// counts as resolved; either way it asks to be saved. May throw std::bad_alloc, which leaves the package as
    /// it was.
    void AssignDefinition(const ReactionPackDefinition* source);

    /// The definition in use, null before there is one. Good until the next call.
    const ReactionPackDefinition* Definition() const { return definition.get(); }

    /// The interface that `iid` names, without a count; null if the package hasn't got it.
    void* FindInterface(REFIID iid) override;

    // ICapeIdentification: the package's identity is that of its definition.
    HRESULT STDMETHODCALLTYPE get_ComponentName(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE put_ComponentName(BSTR name) override;
    HRESULT STDMETHODCALLTYPE get_ComponentDescription(BSTR* description) override;
    HRESULT STDMETHODCALLTYPE put_ComponentDescription(BSTR description) override;

    // ICapeUtilities
    HRESULT STDMETHODCALLTYPE get_parameters(IDispatch** parameters) override;
    HRESULT STDMETHODCALLTYPE put_simulationContext(IDispatch* context) override;
    HRESULT STDMETHODCALLTYPE Initialize() override;
    HRESULT STDMETHODCALLTYPE Terminate() override;
    HRESULT STDMETHODCALLTYPE Edit() override;

    // ICapeKineticReactionContext
    HRESULT STDMETHODCALLTYPE SetReactionObject(IDispatch** reactionObjectRef) override;

    // ICapeThermoMaterialContext and ICapeThermoContext10
    HRESULT STDMETHODCALLTYPE SetMaterial(IDispatch* newMaterial) override;
    HRESULT STDMETHODCALLTYPE UnsetMaterial() override;
    HRESULT STDMETHODCALLTYPE SetMaterial(IDispatch** materialRef) override;

    // ICapeReactionsRoutine
    HRESULT STDMETHODCALLTYPE CalcReactionProp(VARIANT props, BSTR phase, VARIANT reacIds, BSTR basis) override;

    // ICapeReactionChemistry
    HRESULT STDMETHODCALLTYPE GetNumberOfReactions(LONG* count) override;
    HRESULT STDMETHODCALLTYPE GetReactionsIds(VARIANT* reactionIds) override;
    HRESULT STDMETHODCALLTYPE GetReactionType(BSTR reactionId, CapeReactionType* type) override;
    HRESULT STDMETHODCALLTYPE GetNumberOfReactionCompounds(BSTR reactionId, LONG* count) override;
    HRESULT STDMETHODCALLTYPE GetReactionCompoundIds(BSTR reactionId, VARIANT* compoundIds, VARIANT* charges,
                                                     VARIANT* casNumbers) override;
    HRESULT STDMETHODCALLTYPE GetStoichiometricCoefficients(BSTR reactionId, VARIANT* coefficients) override;
    HRESULT STDMETHODCALLTYPE GetReactionPhase(BSTR reactionId, BSTR* phase) override;
    HRESULT STDMETHODCALLTYPE GetReactionRateBasis(BSTR reactionId, CapeReactionRateBasis* basis) override;
    HRESULT STDMETHODCALLTYPE GetReactionConcBasis(BSTR reactionId, BSTR* basis) override;
    HRESULT STDMETHODCALLTYPE GetBaseReactant(BSTR reactionId, BSTR* baseReactant) override;
    HRESULT STDMETHODCALLTYPE GetPhaseCompounds(BSTR reactionId, LONG* compoundCount, VARIANT* compoundIds) override;
    HRESULT STDMETHODCALLTYPE GetReactionParameters(BSTR reactionId, IDispatch** parameters) override;

    // IPersistPropertyBag and IPersistStream
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* classId) override;

    // IPersistPropertyBag
    HRESULT STDMETHODCALLTYPE InitNew() override;
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* errorLog) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAllProperties) override;

    // IPersistStream
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;

private:
    void FinalRelease() override;

    // Counted without locks, since a package and the calls under way in it belong to one apartment.
    using DefinitionHold = boost::local_shared_ptr<ReactionPackDefinition>;
    using MapHold =
        boost::local_shared_ptr<const std::vector<std::int32_t>>;  // per compound: index into the material's

    std::span<const IID> LateBoundInterfaces() const override;

    const CLastFailure* Failures() const override { return this; }  // of all its interfaces

    /// The first reaction of that name; null after `SetError` for the method `scope`.
    const ReactionDefinition* FindReaction(BSTR reactionId, const char16_t* scope);

    /// Whether a call under way works on the definition, which must stay for it as it is.
    bool IsDefinitionInUse() const { return definition.local_use_count() > 1; }
    /// A definition of the same content with working values of its own.
    static DefinitionHold CopyDefinition(const ReactionPackDefinition& source);

    /// The arrays that a calculation lends: those of the package, or fresh ones where a calculation is under way.
    boost::local_shared_ptr<CCallArrays> ArraysFor(const ReactionPackDefinition& used);

    void MarkChanged() {
        dirty = true;
        ++changes;
    }

    /// An empty definition with the package's context.
    DefinitionHold MakeDefinition() const;
    /// Puts a definition, which may be null, into service: with working values, and with the context as it is by then.
    /// `next` gets the one before, whose end may let the simulator call in.
    void PutIntoService(DefinitionHold& next);
    /// Gives the definition the context of the package, which the dialogs find there.
    void ShareContext();

    /// The frame of both loads: `read` fills a definition aside, and when it answers `S_OK` that one is put into
    /// service. `thrown` answers whatever is thrown.
    template <class Read>
    HRESULT LoadAside(HRESULT thrown, Read&& read) noexcept {
        if (HasEnded()) return E_UNEXPECTED;
        const CComRef<ECapeRoot> self(this);  // what is read may give the last count back
        try {
            DefinitionHold loaded = MakeDefinition();
            const HRESULT result = read(*loaded);
            if (result != S_OK) return result;
            PutIntoService(loaded);
            resolvedOrLoaded = true;
            dirty = false;
            return S_OK;
        } catch (...) {
            return thrown;
        }
    }

    /// The frame of both saves: `write` gets the definition as it is, whatever it calls, and answers `S_OK`.
    template <class Write>
    HRESULT SaveAsItIs(BOOL clearDirty, Write&& write) noexcept {
        const CComRef<ECapeRoot> self(this);
        try {
            const DefinitionHold saved = definition;
            const std::uint32_t savedChanges = changes;
            const HRESULT result = write(*saved);
            if (result != S_OK) return result;
            if (clearDirty && changes == savedChanges) dirty = false;  // unless something was changed behind it
            return S_OK;
        } catch (...) {
            return E_FAIL;
        }
    }

    // Shared with the calls under way alone.
    DefinitionHold definition;
    boost::local_shared_ptr<CCallArrays> callArrays;
    CReactionIndex reactionIndex;
    CComRef<ICapeReactionProperties> reactionObject;
    CComRef<IDispatch> material;
    CComRef<IDispatch> simulationContext;
    MaterialWords materialWords;
    bool dirty = false;
    MapHold compoundMap;  // may be null
    std::int32_t materialCompoundCount = 0;
    bool resolvedOrLoaded = false;
    std::uint32_t changes = 0;   // counts what made it dirty, so that a save notices a change made meanwhile
    std::uint32_t bindings = 0;  // counts the changes of `material`, so that a binding notices one made behind its back
};

}  // namespace reka
