// SPDX-License-Identifier: MIT
// A simulator's reaction object that keeps what it was given.

#pragma once

#include "support/CountedFake.h"

namespace reka::test {

class CFakeReactionObject : public CDualInterface<ICapeReactionProperties>, public CFakeErrors {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = FindErrors(iid);
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == ICapeReactionProperties::iid) {
            *object = static_cast<ICapeReactionProperties*>(this);
        }
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references.Remove(); }

    HRESULT STDMETHODCALLTYPE GetReactionProp(BSTR, BSTR, VARIANT, BSTR, VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetReactionProp(BSTR property, BSTR phase, VARIANT reacIds, BSTR basis,
                                              VARIANT values) override {
        const std::vector<double> numbers = NumbersIn(values);
        if (!numbers.empty()) lastValue = numbers[0];
        const bool fails = log.Record("SetReactionProp(" + Show(property) + ", " + Show(phase) + ", " + Show(reacIds) +
                                      ", " + Show(basis) + ", " + Show(values) + ")");
        return fails ? log.failCode : S_OK;
    }

    /// As the package takes it.
    IDispatch* Dispatch() { return static_cast<ICapeReactionProperties*>(this); }

    CReferences references;
    CallLog log;
    double lastValue = 0.0;
};

}  // namespace reka::test
