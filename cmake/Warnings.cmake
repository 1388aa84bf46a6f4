# SPDX-License-Identifier: MIT
# The warning set, always errors. Generated sources are compiled without it, system headers never warn.
add_library(reka_warnings INTERFACE)
target_compile_options(reka_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 takes the inside of its own std::string for overlapping copies where a text is put in front of a string and the
# call is inlined (GCC bug 105651).
target_compile_options(reka_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
