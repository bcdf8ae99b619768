# The release archive of the program: CVHControlPanel.exe, its layout file and a README for the
# person who installs it, as CVHControlPanel-<version>-win32.zip with a .sha256 beside it. The
# version is the project's, the one the version resource carries.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(CORVANITE_PACKAGE_SYSTEM win32)
else()
    set(CORVANITE_PACKAGE_SYSTEM win64)
endif()

configure_file(${PROJECT_SOURCE_DIR}/resources/README.txt.in ${CMAKE_BINARY_DIR}/README.txt @ONLY
    NEWLINE_STYLE CRLF)
install(TARGETS CVHControlPanel RUNTIME DESTINATION . COMPONENT panel)
install(FILES ${PROJECT_SOURCE_DIR}/layout/CVHControlPanel.json ${CMAKE_BINARY_DIR}/README.txt
    DESTINATION . COMPONENT panel)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME CVHControlPanel)
set(CPACK_PACKAGE_VENDOR "Ormal Co")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME CVHControlPanel-${PROJECT_VERSION}-${CORVANITE_PACKAGE_SYSTEM})
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
set(CPACK_COMPONENTS_ALL panel)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
include(CPack)
