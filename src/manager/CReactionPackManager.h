// SPDX-License-Identifier: MIT
// The object through which a simulator reaches the templates.

#pragma once

#include "capeopen/BaseObject.h"
#include "manager/TemplateStore.h"

namespace reka {

/// Lists the templates, makes packages out of them, and new ones. It reads the file of templates afresh whenever it is
/// asked, so two calls can disagree if something wrote the file in between. A package is a copy: it keeps nothing of
/// the manager and gets nothing of later changes. An object belongs to one apartment and takes no locks.
class CReactionPackManager : public BaseObject,
                             public CDualInterface<ICapeReactionsPackageManager>,
                             public CDualInterface<ICapeUtilities>,
                             public CDualInterface<ICapeThermoNewPropertyPackage> {
public:
    CReactionPackManager();

    /// The interface that `iid` names, without a count; null if the manager hasn't got it.
    void* FindInterface(REFIID iid) override;

    /// The templates as they were last read.
    TemplateStore& Store() { return store; }

    // ICapeReactionsPackageManager
    HRESULT STDMETHODCALLTYPE GetListOfReactionsPackages(VARIANT* names) override;
    HRESULT STDMETHODCALLTYPE ResolveReactionsPackage(BSTR name, IDispatch** package) override;

    // ICapeUtilities
    HRESULT STDMETHODCALLTYPE get_parameters(IDispatch** parameters) override;
    HRESULT STDMETHODCALLTYPE put_simulationContext(IDispatch* context) override;
    HRESULT STDMETHODCALLTYPE Initialize() override;
    HRESULT STDMETHODCALLTYPE Terminate() override;
    HRESULT STDMETHODCALLTYPE Edit() override;

    // ICapeThermoNewPropertyPackage
    HRESULT STDMETHODCALLTYPE NewPropertyPackage(IDispatch** package) override;

private:
    void FinalRelease() override;
    std::span<const IID> LateBoundInterfaces() const override;
    const CLastFailure* Failures() const override { return this; }  // of all its interfaces

    TemplateStore store;
};

}  // namespace reka
