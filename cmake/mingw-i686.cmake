# Cross build for 32-bit Windows: the shipped program.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
