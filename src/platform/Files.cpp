// Which file system the component works on.

#include "platform/Files.h"

#include <utility>

namespace reka {

namespace {

IFileSystem* replacement = nullptr;

}  // namespace

IFileSystem& Files() {
    return replacement ? *replacement : SystemFiles();
}

IFileSystem* ReplaceFiles(IFileSystem* other) {
    return std::exchange(replacement, other);
}

}  // namespace reka
