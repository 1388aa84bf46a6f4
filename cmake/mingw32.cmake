# SPDX-License-Identifier: MIT
set(CMAKE_SYSTEM_PROCESSOR i686)
set(REKA_MINGW_PREFIX i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-x86.sh)
