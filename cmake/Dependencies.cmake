# Third-party libraries, all from the system's packages.

# nlohmann JSON is header-only. The Windows builds must not see /usr/include as a whole, so they get a
# folder in the build tree that holds nothing but a link to the package's headers.
add_library(corvanite_json INTERFACE)
if(CMAKE_CROSSCOMPILING)
    set(json_root "${CMAKE_BINARY_DIR}/json-include")
    file(MAKE_DIRECTORY "${json_root}")
    file(CREATE_LINK /usr/include/nlohmann "${json_root}/nlohmann" SYMBOLIC)
    target_include_directories(corvanite_json SYSTEM INTERFACE "${json_root}")
else()
    find_package(nlohmann_json 3.11 REQUIRED)
    target_link_libraries(corvanite_json INTERFACE nlohmann_json::nlohmann_json)
endif()

# zlib gives the ZIP writer its raw deflate; linked statically so the program needs no zlib DLL.
set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB REQUIRED)
add_library(corvanite_zlib INTERFACE)
target_link_libraries(corvanite_zlib INTERFACE ZLIB::ZLIB)

# System libraries of the platform layer.
add_library(corvanite_platform_libs INTERFACE)
if(WIN32)
    target_link_libraries(corvanite_platform_libs INTERFACE
        comctl32 shell32 ole32 oleaut32 wbemuuid uuid advapi32 ws2_32 gdi32 user32)
    target_compile_definitions(corvanite_platform_libs INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
else()
    find_package(Threads REQUIRED)
    target_link_libraries(corvanite_platform_libs INTERFACE Threads::Threads ${CMAKE_DL_LIBS})
endif()
