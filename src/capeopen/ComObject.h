// SPDX-License-Identifier: MIT
// Life and identity of the objects: reference counts, plain and aggregated. The classes themselves stay abstract and
// only tell which interfaces they have.

#pragma once

#include <new>

#include "capeopen/CapeOpenInterfaces.h"

namespace reka {

/// An object of its own. `Class` offers `void* FindInterface(REFIID)`, which gives the interface without a count, or
/// null. It may offer `End()`, which gives back all that it holds of others while the object is still whole.
/// Counts are plain: the object belongs to one apartment.
template <class Class>
class CComObject final : public Class {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = this->FindInterface(iid);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --count;
        if (left == 0) {
            count = 1;  // outside objects that are given back now may still call, and must not destroy it again
            if constexpr (requires(Class & object) { object.End(); }) this->End();
            delete this;
        }
        return left;
    }

private:
    ULONG count = 0;
};

/// An object that is part of another one: its interfaces answer with the identity and the count of `outer`, which holds
/// the inner unknown and outlives it.
template <class Class>
class CAggregatedObject final : public IUnknown {
public:
    explicit CAggregatedObject(IUnknown* outer) : contained(outer) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid == IID_IUnknown) {
            *object = static_cast<IUnknown*>(this);
            AddRef();
            return S_OK;
        }
        *object = contained.FindInterface(iid);
        if (!*object) return E_NOINTERFACE;
        contained.AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --count;
        if (left == 0) {
            count = 1;
            if constexpr (requires(Class & object) { object.End(); }) contained.End();
            delete this;
        }
        return left;
    }

private:
    ~CAggregatedObject() = default;  // only `Release` destroys it

    class CContained final : public Class {
    public:
        explicit CContained(IUnknown* outerUnknown) : outer(outerUnknown) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
            return outer->QueryInterface(iid, object);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return outer->AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return outer->Release(); }

    private:
        IUnknown* outer;  // not counted: it would keep itself alive
    };

    CContained contained;
    ULONG count = 0;
};

/// Makes an object of `Class`, part of `outer` if that isn't null, and asks it for `iid`. An aggregated object is first
/// asked for `IUnknown`; for anything else the result is `CLASS_E_NOAGGREGATION`. On failure `*object` is null and
/// nothing is left behind. Without memory the result is `E_OUTOFMEMORY`.
template <class Class>
HRESULT CreateObject(IUnknown* outer, REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer && iid != IID_IUnknown) return CLASS_E_NOAGGREGATION;
    try {
        IUnknown* made = nullptr;
        if (outer) {
            made = new CAggregatedObject<Class>(outer);
        } else {
            auto* plain = new CComObject<Class>();
            made = static_cast<IUnknown*>(plain->FindInterface(IID_IUnknown));
        }
        made->AddRef();
        const HRESULT result = made->QueryInterface(iid, object);
        made->Release();
        return result;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace reka
