// The manager of the component that is linked into the program.

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
