// SPDX-License-Identifier: MIT
// The base of fakes that stand on a test's stack and count who holds them.

#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "capeopen/DualInterface.h"
#include "support/Values.h"

namespace reka::test {

/// The references on a fake: all must have been given back when it goes away.
class CReferences {
public:
    ULONG Add() { return static_cast<ULONG>(++held); }
    ULONG Remove() { return static_cast<ULONG>(--held); }
    int Held() const { return held; }

private:
    int held = 0;
};

/// What outside objects were asked, in order. An operation whose number is `failAt`, counted from 1, fails with
/// `failCode`.
struct CallLog {
    std::vector<std::string> calls;
    int failAt = 0;
    HRESULT failCode = E_FAIL;
    std::function<void(const std::string& call)> onCall;  // runs inside the call: a host that calls back
    std::function<void()> onCount;                        // the same in AddRef and Release, where a fake tells them

    /// Records a call. True if it is the one that fails.
    bool Record(const std::string& call) {
        calls.push_back(call);
        if (onCall) onCall(call);
        return failAt > 0 && static_cast<int>(calls.size()) == failAt;
    }
    CReferences& Counting(CReferences& references) {
        if (onCount) onCount();
        return references;
    }
    void Clear() { calls.clear(); }
};

/// A plain object that offers `IDispatch` and nothing else.
class CFakeObject : public CDualInterface<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = references.Remove();
        if (onRelease) std::exchange(onRelease, nullptr)();
        return left;
    }

    CReferences references;
    std::function<void()> onRelease;  // runs once, in the next release: a host that calls back
};

/// A fake that says no to one of its interfaces, yet leaves the pointer, for which it counts nothing: whoever takes it
/// is seen in the log, whoever gives it back in the count.
template <class Fake>
class CRefusing : public Fake {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const HRESULT result = Fake::QueryInterface(iid, object);
        if (FAILED(result) || iid != refused) return result;
        this->Release();
        return E_NOINTERFACE;
    }
    IID refused = {};
};

/// A fake that calls back whenever it is given back.
template <class Fake>
class CReturning final : public Fake {
public:
    using Fake::Fake;
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = Fake::Release();
        if (onReturn) onReturn();
        return left;
    }
    std::function<void()> onReturn;
};

/// The error interfaces of a fake. Offered as it is told; absent texts stay null.
class CFakeErrors : public CDualInterface<ECapeUser>, public CDualInterface<ECapeRoot> {
public:
    HRESULT STDMETHODCALLTYPE get_name(BSTR* text) override { return Give(name, text); }
    HRESULT STDMETHODCALLTYPE get_code(LONG* code) override {
        *code = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_description(BSTR* text) override { return Give(description, text); }
    HRESULT STDMETHODCALLTYPE get_scope(BSTR* text) override { return Give(u"", text); }
    HRESULT STDMETHODCALLTYPE get_interfaceName(BSTR* text) override { return Give(u"", text); }
    HRESULT STDMETHODCALLTYPE get_operation(BSTR* text) override { return Give(u"", text); }
    HRESULT STDMETHODCALLTYPE get_moreInfo(BSTR* text) override { return Give(u"", text); }

    bool offersUser = true;
    bool offersRoot = true;
    bool getterFails = false;
    std::u16string name;
    std::u16string description;
    int asked = 0;  // times that a text was read

protected:
    /// The error interface of that identifier, if it is offered.
    void* FindErrors(REFIID iid) {
        if (iid == ECapeUser::iid && offersUser) return static_cast<ECapeUser*>(this);
        if (iid == ECapeRoot::iid && offersRoot) return static_cast<ECapeRoot*>(this);
        return nullptr;
    }

private:
    HRESULT Give(const std::u16string& text, BSTR* output) {
        ++asked;
        *output = nullptr;
        if (getterFails) return E_FAIL;
        *output = CBstr::Make(text).Detach();
        return S_OK;
    }
};

}  // namespace reka::test
