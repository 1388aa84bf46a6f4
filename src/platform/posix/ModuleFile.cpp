// See ModuleFile.h.

#include "platform/ModuleFile.h"

#include <dlfcn.h>

#include <climits>
#include <cstdlib>

#include "text/Utf8.h"

namespace reka {

const char16_t pathSeparator = u'/';

std::u16string ModuleFilePath() {
    Dl_info module;
    if (dladdr(reinterpret_cast<const void*>(&ModuleFilePath), &module) == 0 || !module.dli_fname) return {};
    char absolute[PATH_MAX];
    return Utf16FromUtf8(realpath(module.dli_fname, absolute) ? absolute : module.dli_fname);
}

}  // namespace reka
