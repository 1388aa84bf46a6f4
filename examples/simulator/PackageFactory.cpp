// The package of the component that is linked into the program.

#include "PackageFactory.h"

#include "package/CreateReactionPack.h"

namespace rekasim {

HRESULT CreatePackage(REFIID iid, void** package) {
    return reka::CreateReactionPack(iid, package);
}

}  // namespace rekasim
