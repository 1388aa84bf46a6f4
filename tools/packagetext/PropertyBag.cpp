// SPDX-License-Identifier: MIT
// The entries keep the order in which the package wrote them, and with it that of the document's members; a package of
// many reactions has as many, so they are found by their names in a table beside. Values are copied in and out, as the
// rules of the interface want it.

#include "packagetext/PropertyBag.h"

#include <new>

namespace packagetext {

namespace {

/// No exception leaves a method that the package calls.
template <class Body>
HRESULT WithMemory(Body&& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace

void* CPropertyBag::FindInterface(REFIID iid) {
    const bool offered = iid == IID_IUnknown || iid == IID_IPropertyBag;
    return offered ? static_cast<IPropertyBag*>(this) : nullptr;
}

CPropertyBag::Entry* CPropertyBag::Find(std::u16string_view key) {
    const auto found = places.find(key);
    return found == places.end() ? nullptr : &entries[found->second];
}

void CPropertyBag::Put(std::u16string_view key, reka::CVariant value) {
    const auto [place, isNew] = places.try_emplace(std::u16string(key), entries.size());
    if (isNew) entries.push_back(Entry{place->first, {}});
    entries[place->second].value = std::move(value);
}

HRESULT STDMETHODCALLTYPE CPropertyBag::Read(LPCOLESTR property, VARIANT* value, IErrorLog*) {
    if (!property || !value) return E_POINTER;
    return WithMemory([&]() -> HRESULT {
        const Entry* entry = Find(reka::TextOf(property));
        const bool isNew = asked.insert(std::u16string(reka::TextOf(property))).second;
        if (!entry && isNew) missed.emplace_back(reka::TextOf(property));
        return entry ? VariantCopy(value, const_cast<VARIANT*>(&entry->value.Get())) : E_INVALIDARG;
    });
}

HRESULT STDMETHODCALLTYPE CPropertyBag::Write(LPCOLESTR property, VARIANT* value) {
    if (!property || !value) return E_POINTER;
    return WithMemory([&]() -> HRESULT {
        reka::CVariant copy;
        const HRESULT result = VariantCopy(&copy.Get(), value);
        if (SUCCEEDED(result)) Put(reka::TextOf(property), std::move(copy));
        return result;
    });
}

void* CErrorLog::FindInterface(REFIID iid) {
    const bool offered = iid == IID_IUnknown || iid == IID_IErrorLog;
    return offered ? static_cast<IErrorLog*>(this) : nullptr;
}

HRESULT STDMETHODCALLTYPE CErrorLog::AddError(LPCOLESTR property, EXCEPINFO* exception) {
    if (!exception) return E_POINTER;
    return WithMemory([&]() -> HRESULT {
        reports.push_back(
            {std::u16string(reka::TextOf(property)), std::u16string(reka::TextOf(exception->bstrDescription))});
        return S_OK;
    });
}

}  // namespace packagetext
