// SPDX-License-Identifier: MIT
// Which file system the component works on.

#include "platform/Files.h"

#include "platform/Seam.h"

namespace reka {

namespace {

CSeam<IFileSystem> seam;

}  // namespace

IFileSystem& Files() {
    return seam.Or(SystemFiles());
}

IFileSystem* ReplaceFiles(IFileSystem* other) {
    return seam.Replace(other);
}

}  // namespace reka
