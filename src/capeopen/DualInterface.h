// The part of a dual interface that comes from `IDispatch`.

#pragma once

#include "capeopen/CapeOpenInterfaces.h"

namespace reka {

/// Base for an object's implementation of one dual interface. There is no type information yet, so a late-bound call is
/// answered with `E_NOTIMPL`; everything is reached through the interface's own slots.
template <class Interface>
class CDualInterface : public Interface {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** typeInfo) override {
        if (!typeInfo) return E_POINTER;
        *typeInfo = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
};

}  // namespace reka
