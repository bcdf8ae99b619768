# Cross build for 32-bit Windows: the shipped program. Its tests run under the WoW64 Wine that
# scripts/build-wine32.sh builds, where the machine runs 32-bit code.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/run-wine32.sh)
