# Cross build for 64-bit Windows; the programs run under Wine for the tests.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
