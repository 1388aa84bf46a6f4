// SPDX-License-Identifier: MIT
// The manager of the component that is linked into the program: so rekasim runs, and its tests with it, on systems that
// have no registry to find a component in.

#include "PackageFactory.h"

#include "manager/CreateReactionPackManager.h"

namespace rekasim {

HRESULT CreateManager(REFIID iid, void** manager) {
    return reka::CreateReactionPackManager(iid, manager);
}

std::string AdviceWithoutManager() {
    return {};
}

}  // namespace rekasim
