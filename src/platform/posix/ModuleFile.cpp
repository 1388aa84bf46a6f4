// SPDX-License-Identifier: MIT
// The loader knows which file the address of this very routine came from, whether that is a shared library or the
// program. It tells a program's path as the program was started, which may be a relative one, so it is made absolute;
// where that fails, as after the file was deleted, what the loader said is better than nothing.

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
