// SPDX-License-Identifier: MIT
// A simulator's property bag and error log, which record their calls.

#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/CountedFake.h"
#include "text/Utf8.h"

namespace reka::test {

class CFakeBag : public IPropertyBag {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IPropertyBag ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references.Remove(); }

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR property, VARIANT* value, IErrorLog* errorLog) override {
        const std::string key = Utf8FromUtf16(TextOf(property));
        lastErrorLog = errorLog;
        if (log.Record("Read " + key)) return log.failCode;
        const auto entry = entries.find(key);
        return entry == entries.end() ? E_INVALIDARG : CopyVariant(value, entry->second.Get());
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR property, VARIANT* value) override {
        const std::string key = Utf8FromUtf16(TextOf(property));
        if (log.Record("Write " + key)) return log.failCode;
        return CopyVariant(entries[key].Receive(), *value);
    }

    /// The entry as `Show` prints it; "<none>" if there is none.
    std::string Entry(const std::string& key) const {
        const auto entry = entries.find(key);
        return entry == entries.end() ? "<none>" : Show(entry->second.Get());
    }

    CReferences references;
    CallLog log;
    std::map<std::string, CVariant> entries;
    IErrorLog* lastErrorLog = nullptr;
};

class CFakeErrorLog : public IErrorLog {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IErrorLog ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references.Add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references.Remove(); }

    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR property, EXCEPINFO* exception) override {
        errors.push_back(Utf8FromUtf16(TextOf(property)) + ": " + Utf8FromUtf16(TextOf(exception->bstrDescription)));
        sources.push_back(Utf8FromUtf16(TextOf(exception->bstrSource)));
        return S_OK;
    }

    CReferences references;
    std::vector<std::string> errors;  // "key: text"
    std::vector<std::string> sources;
};

}  // namespace reka::test
