#include "host/shared_library.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "tests/support/host/model_installation.h"

TEST(LibraryFileName, AddsTheDllExtension) {
    EXPECT_EQ(libraryFileName("Corvanite"), "Corvanite.dll");
}

TEST(SharedLibrary, LoadsTheAddonDoubleAndTellsItsPath) {
    const HostModelInstallation installation;
    installation.addAddonLibrary();
    const SharedLibrary library(installation.file("Corvanite.dll"));
    EXPECT_TRUE(endsWith(utf16ToUtf8(library.modulePath()), "Corvanite.dll"));
    EXPECT_NE(library.symbol("addon_process_query"), nullptr);
    EXPECT_NE(library.symbol("addon_free"), nullptr);
}

TEST(SharedLibrary, MissingLibraryRaisesLoadLibraryErrorWithThePath) {
    const HostModelInstallation installation;
    const std::string path = installation.file("Corvanite.dll");
    try {
        const SharedLibrary library(path);
        FAIL() << "a missing library was loaded";
    } catch (const LoadLibraryError& failure) {
        EXPECT_EQ(std::string(failure.what()), commonMessages.format("CV-0009", path.c_str()));
    }
}

TEST(SharedLibrary, MissingExportRaisesWithItsName) {
    const HostModelInstallation installation;
    installation.addAddonLibrary();
    const SharedLibrary library(installation.file("Corvanite.dll"));
    try {
        library.symbol("addon_unknown");
        FAIL() << "a missing export was found";
    } catch (const std::runtime_error& failure) {
        EXPECT_EQ(std::string(failure.what()), commonMessages.format("CV-0003", "addon_unknown"));
    }
}
