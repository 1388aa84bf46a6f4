// SPDX-License-Identifier: MIT
// The manifest is a resource of its own number, not one of those that the loader reads itself: a system that can't
// fulfil it loads the module all the same.

#include "editor/win/ControlsContext.h"

#include "platform/win/SystemModules.h"

namespace reka {

CControlsContext::CControlsContext(int manifestResource) {
    ACTCTXW source = {};
    source.cbSize = sizeof source;
    source.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    source.hModule = ModuleHandle();
    source.lpResourceName = MAKEINTRESOURCEW(manifestResource);
    context = CreateActCtxW(&source);
}

CControlsContext::~CControlsContext() {
    if (IsThere()) ReleaseActCtx(context);
}

CControlsScope::CControlsScope(const CControlsContext* context) {
    isActive = context && context->IsThere() && ActivateActCtx(context->Get(), &cookie);
}

CControlsScope::~CControlsScope() {
    if (isActive) DeactivateActCtx(0, cookie);
}

}  // namespace reka
