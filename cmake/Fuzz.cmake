# libFuzzer builds: every target of the tree gets clang's coverage instrumentation with AddressSanitizer
# and UBSan, so that the fuzzer sees the branches of the code under test and any report stops it.
# Only the fuzz targets link the fuzzer's own main (corvanite_fuzz_target).
if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzz targets need clang: configure with the fuzz preset")
endif()

# -O1 keeps the sanitizers' reports readable and the runs fast; UBSan findings abort like crashes.
add_compile_options(-O1 -g -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer
                    -fno-sanitize-recover=all)
add_link_options(-fsanitize=address,undefined)

# One libFuzzer executable from one source of tests/fuzz; it lands in build/fuzz/tests/fuzz/.
function(corvanite_fuzz_target name)
    add_executable(${name} ${name}.cpp ${ARGN})
    target_link_libraries(${name} PRIVATE corvanite_core)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    corvanite_warnings(${name})
endfunction()
