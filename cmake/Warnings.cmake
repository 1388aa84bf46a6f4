# The warning set, always errors. Generated sources are compiled without it, system headers never warn.
add_library(reka_warnings INTERFACE)
target_compile_options(reka_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
