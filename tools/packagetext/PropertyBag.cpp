// SPDX-License-Identifier: MIT
// A bag has a few dozen entries: a vector that is searched from its start will do, and it keeps the order in which the
// package wrote them, and with it that of the document's members. Values are copied in and out, as the rules of the
// interface want it.

#include "packagetext/PropertyBag.h"

namespace packagetext {

void* CPropertyBag::FindInterface(REFIID iid) {
    const bool offered = iid == IID_IUnknown || iid == IID_IPropertyBag;
    return offered ? static_cast<IPropertyBag*>(this) : nullptr;
}

CPropertyBag::Entry* CPropertyBag::Find(std::u16string_view key) {
    for (Entry& entry : entries) {
        if (entry.key == key) return &entry;
    }
    return nullptr;
}

void CPropertyBag::Put(std::u16string_view key, reka::CVariant value) {
    Entry* entry = Find(key);
    if (!entry) entry = &entries.emplace_back(Entry{std::u16string(key), {}});
    entry->value = std::move(value);
}

HRESULT STDMETHODCALLTYPE CPropertyBag::Read(LPCOLESTR property, VARIANT* value, IErrorLog*) {
    if (!property || !value) return E_POINTER;
    const Entry* entry = Find(reka::TextOf(property));
    const bool isNew = asked.insert(std::u16string(reka::TextOf(property))).second;
    if (!entry && isNew) missed.emplace_back(reka::TextOf(property));
    return entry ? VariantCopy(value, const_cast<VARIANT*>(&entry->value.Get())) : E_INVALIDARG;
}

HRESULT STDMETHODCALLTYPE CPropertyBag::Write(LPCOLESTR property, VARIANT* value) {
    if (!property || !value) return E_POINTER;
    reka::CVariant copy;
    const HRESULT result = VariantCopy(&copy.Get(), value);
    if (SUCCEEDED(result)) Put(reka::TextOf(property), std::move(copy));
    return result;
}

void* CErrorLog::FindInterface(REFIID iid) {
    const bool offered = iid == IID_IUnknown || iid == IID_IErrorLog;
    return offered ? static_cast<IErrorLog*>(this) : nullptr;
}

HRESULT STDMETHODCALLTYPE CErrorLog::AddError(LPCOLESTR property, EXCEPINFO* exception) {
    if (!exception) return E_POINTER;
    reports.push_back(
        {std::u16string(reka::TextOf(property)), std::u16string(reka::TextOf(exception->bstrDescription))});
    return S_OK;
}

}  // namespace packagetext
