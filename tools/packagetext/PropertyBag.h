// SPDX-License-Identifier: MIT
// What a simulator hands a package for its named values and for its complaints about them.

#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "capeopen/ComObject.h"
#include "platform/Holders.h"

namespace packagetext {

/// Named values in the order in which they were first written. Names are compared exactly.
class CPropertyBag : public IPropertyBag {
public:
    struct Entry {
        std::u16string key;
        reka::CVariant value;
    };

    void* FindInterface(REFIID iid);

    /// Copies the value of `property` into `value`, which the caller has initialised; `E_INVALIDARG` for a name that
    /// isn't there.
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR property, VARIANT* value, IErrorLog* errorLog) override;
    /// Keeps a copy of `value`, in place of an earlier one of that name.
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR property, VARIANT* value) override;

    const std::vector<Entry>& Entries() const { return entries; }
    /// What has been read, or would have been if it were there: the latter also in the order of asking.
    bool WasAskedFor(const std::u16string& name) const { return asked.contains(name); }
    const std::vector<std::u16string>& MissedNames() const { return missed; }
    void Put(std::u16string_view key, reka::CVariant value);

private:
    Entry* Find(std::u16string_view key);

    std::vector<Entry> entries;
    std::map<std::u16string, std::size_t, std::less<>> places;  // of the entries by their names
    std::set<std::u16string> asked;
    std::vector<std::u16string> missed;
};

/// Collects what a package reports while it loads.
class CErrorLog : public IErrorLog {
public:
    struct Report {
        std::u16string property;
        std::u16string text;
    };

    void* FindInterface(REFIID iid);

    HRESULT STDMETHODCALLTYPE AddError(LPCOLESTR property, EXCEPINFO* exception) override;

    const std::vector<Report>& Reports() const { return reports; }

private:
    std::vector<Report> reports;
};

/// A new object of the program's own, with the one count that the result holds.
template <class Class>
reka::CComRef<reka::CComObject<Class>> MakeObject() {
    return reka::CComRef<reka::CComObject<Class>>(new reka::CComObject<Class>());
}

}  // namespace packagetext
