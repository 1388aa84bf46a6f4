// SPDX-License-Identifier: MIT
// Where the editor's dialogs get the templates from: a manager object, as far as they need one.

#pragma once

#include <functional>
#include <memory>

#include "manager/TemplateStore.h"

namespace reka {

class ITemplateSource {
public:
    virtual ~ITemplateSource() = default;

    /// The names of the templates, read afresh from the file, as the manager object gives them: an array of strings, or
    /// empty for none. `names` is empty before. Pointers into the list of `Store` are good until the next call.
    virtual HRESULT GetListOfReactionsPackages(VARIANT* names) = 0;

    virtual TemplateStore& Store() = 0;
};

/// Makes a manager for the time of one action. Null if there is none to be had.
using TemplateSourceFactory = std::function<std::unique_ptr<ITemplateSource>()>;

}  // namespace reka
