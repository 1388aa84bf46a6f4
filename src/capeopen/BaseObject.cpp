// SPDX-License-Identifier: MIT
// The last failure is told by the object itself, since a host asks after the call has returned. Its words are kept by
// LastFailure.h, where a late-bound caller's failed call finds them as well.

#include "capeopen/BaseObject.h"

namespace reka {

HRESULT GiveCopy(const CBstr& text, BSTR* output) {
    if (!output) return E_POINTER;
    *output = text.Copy();
    return text.IsAbsent() || *output ? S_OK : E_OUTOFMEMORY;
}

HRESULT BaseObject::get_name(BSTR* name) {
    return GiveCopy(Name(), name);
}

HRESULT BaseObject::get_code(LONG* code) {
    if (!code) return E_POINTER;
    *code = 0;  // the failed method's result is the only code
    return S_OK;
}

HRESULT BaseObject::get_description(BSTR* description) {
    return GiveCopy(Description(), description);
}

HRESULT BaseObject::get_scope(BSTR* scope) {
    return GiveCopy(Scope(), scope);
}

HRESULT BaseObject::get_interfaceName(BSTR* interfaceName) {
    return GiveCopy(InterfaceName(), interfaceName);
}

HRESULT BaseObject::get_operation(BSTR* operation) {
    if (!operation) return E_POINTER;
    *operation = CBstr::TryMake(u"-").Detach();  // the method is told by the scope
    return *operation ? S_OK : E_OUTOFMEMORY;
}

HRESULT BaseObject::get_moreInfo(BSTR* moreInfo) {
    if (!moreInfo) return E_POINTER;
    *moreInfo = nullptr;
    return S_OK;
}

HRESULT BaseObject::get_ComponentName(BSTR* name) {
    return GiveCopy(componentName, name);
}

HRESULT BaseObject::put_ComponentName(BSTR name) {
    return RunMethod(*this, u"put_ComponentName", u"ICapeIdentification", [&] {
        componentName = CBstr::CopyOf(name);
        return S_OK;
    });
}

HRESULT BaseObject::get_ComponentDescription(BSTR* description) {
    return GiveCopy(componentDescription, description);
}

HRESULT BaseObject::put_ComponentDescription(BSTR description) {
    return RunMethod(*this, u"put_ComponentDescription", u"ICapeIdentification", [&] {
        componentDescription = CBstr::CopyOf(description);
        return S_OK;
    });
}

std::span<const IID> BaseObject::LateBoundInterfaces() const {
    static constexpr IID interfaces[] = {ICapeIdentification::iid, ECapeRoot::iid, ECapeUser::iid};
    return interfaces;
}

void* BaseObject::FindInterface(REFIID iid) {
    if (iid == IID_IUnknown || iid == ECapeRoot::iid) return static_cast<ECapeRoot*>(this);
    if (iid == IID_IDispatch) return static_cast<CMergedDispatch*>(this);
    if (iid == ECapeUnknown::iid) return static_cast<ECapeUnknown*>(this);
    if (iid == ECapeUser::iid) return static_cast<ECapeUser*>(this);
    if (iid == ICapeIdentification::iid) return static_cast<ICapeIdentification*>(this);
    return nullptr;
}

}  // namespace reka
