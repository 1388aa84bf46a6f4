// SPDX-License-Identifier: MIT
// A manager object as the editor's dialogs see it.

#pragma once

#include <memory>
#include <utility>

#include "manager/CReactionPackManager.h"
#include "manager/TemplateSource.h"

namespace reka {

/// Keeps the manager alive.
class CManagerTemplates final : public ITemplateSource {
public:
    explicit CManagerTemplates(CReactionPackManager& templatesOwner)
        : manager(templatesOwner), count(static_cast<ICapeUtilities*>(&templatesOwner)) {}

    HRESULT GetListOfReactionsPackages(VARIANT* names) override { return manager.GetListOfReactionsPackages(names); }
    TemplateStore& Store() override { return manager.Store(); }

private:
    CReactionPackManager& manager;
    CComRef<ICapeUtilities> count;
};

/// A manager of its own, without a simulation context. May throw std::bad_alloc.
std::unique_ptr<ITemplateSource> MakeManagerTemplates();

}  // namespace reka
