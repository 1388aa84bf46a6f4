// SPDX-License-Identifier: MIT
// The common base of the component's objects: identification, and the last failure as the CAPE-OPEN error interfaces
// show it.

#pragma once

#include <new>
#include <stdexcept>
#include <string>

#include "capeopen/DualInterface.h"
#include "capeopen/LastFailure.h"
#include "capeopen/MergedDispatch.h"
#include "capeopen/ModuleLocks.h"
#include "platform/Holders.h"

namespace reka {

/// Answers `ECapeRoot`, `ECapeUnknown`, `ECapeUser` and `ICapeIdentification` for the object derived from it. There is
/// no separate error object: after a failed call the object itself is asked. A success leaves the last failure in
/// place. Reference counts come with `CComObject` or `CAggregatedObject`. The module stays loaded while it lives.
class BaseObject : public CDualInterface<ECapeRoot>,
                   public CDualInterface<ECapeUnknown>,
                   public CDualInterface<ECapeUser>,
                   public CDualInterface<ICapeIdentification>,
                   public CMergedDispatch,
                   public CLastFailure {
public:
    BaseObject() = default;
    BaseObject(const BaseObject&) = delete;
    BaseObject& operator=(const BaseObject&) = delete;
    virtual ~BaseObject() = default;

    // ECapeRoot and ECapeUser
    HRESULT STDMETHODCALLTYPE get_name(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_code(LONG* code) override;
    HRESULT STDMETHODCALLTYPE get_description(BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_scope(BSTR* scope) override;
    HRESULT STDMETHODCALLTYPE get_interfaceName(BSTR* interfaceName) override;
    HRESULT STDMETHODCALLTYPE get_operation(BSTR* operation) override;
    HRESULT STDMETHODCALLTYPE get_moreInfo(BSTR* moreInfo) override;

    // ICapeIdentification
    HRESULT STDMETHODCALLTYPE get_ComponentName(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE put_ComponentName(BSTR name) override;
    HRESULT STDMETHODCALLTYPE get_ComponentDescription(BSTR* description) override;
    HRESULT STDMETHODCALLTYPE put_ComponentDescription(BSTR description) override;

    /// Records the last failure: a short name, the sentence, the method and its interface. Null gives an absent text,
    /// and so does a text that can't be copied for want of memory.
    void SetError(const char16_t* name, const char16_t* description, const char16_t* scope,
                  const char16_t* interfaceName) noexcept {
        Record(name, description, scope, interfaceName);
    }

    /// The end of a method that fails: `SetError` and its result code, with a name and a sentence or with one text for
    /// both.
    HRESULT Fail(const char16_t* name, const char16_t* description, const char16_t* scope,
                 const char16_t* interfaceName) noexcept {
        SetError(name, description, scope, interfaceName);
        return ECapeUnknownHR;
    }
    HRESULT Fail(const std::u16string& text, const char16_t* scope, const char16_t* interfaceName) noexcept {
        return Fail(text.c_str(), text.c_str(), scope, interfaceName);
    }

    /// The interface that `iid` names, without a count; null if the object hasn't got it. `IUnknown` and `IDispatch`
    /// are always the same ones; the latter knows the members of all interfaces.
    void* FindInterface(REFIID iid) override;

    /// The last count has been given back: the object gives back all that it holds of others, and is destroyed then.
    /// The others may still call, but from here on it takes nothing: `RunMethod` and `HasEnded` see to that.
    void End() {
        ended = true;
        FinalRelease();
    }
    bool HasEnded() const { return ended; }

protected:
    /// Gives back all that the object holds of others.
    virtual void FinalRelease() {}

private:
    CModuleLock moduleLock;  // goes last

protected:
    std::span<const IID> LateBoundInterfaces() const override;
    const CLastFailure* Failures() const override { return this; }

    CBstr componentName;
    CBstr componentDescription;

private:
    bool ended = false;
};

/// Answers a getter: `E_POINTER` without an output, otherwise a fresh copy, null for an absent text. `E_OUTOFMEMORY` if
/// the text can't be copied.
HRESULT GiveCopy(const CBstr& text, BSTR* output);

/// Runs the body of an interface method. The object lives until it has returned, whatever a call that goes out gives
/// back. Nothing thrown leaves it: without memory, `SetError` gets "out of memory" as name and description and the
/// result is `ECapeUnknownHR`; the same code without a text answers anything else. An object that has ended does
/// nothing and answers `E_UNEXPECTED`.
template <class Body>
HRESULT RunMethod(BaseObject& object, const char16_t* scope, const char16_t* interfaceName, Body&& body) noexcept {
    if (object.HasEnded()) [[unlikely]]
        return E_UNEXPECTED;
    const CComRef<ECapeRoot> self(&object);
    const CLastFailure::CMethod method(object);
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return object.Fail(u"out of memory", u"out of memory", scope, interfaceName);
    } catch (const std::length_error&) {
        return object.Fail(u"out of memory", u"out of memory", scope, interfaceName);
    } catch (...) {
        return ECapeUnknownHR;
    }
}

}  // namespace reka
