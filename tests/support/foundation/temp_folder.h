#pragma once

#include <filesystem>
#include <string>

// A fresh folder for one test, removed with everything in it when the test ends.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder as a UTF-8 path with forward slashes, the form the program's file helpers take.
    const std::string& path() const { return path_; }
    // A UTF-8 path of a name inside the folder.
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    const std::filesystem::path& native() const { return native_; }

private:
    std::filesystem::path native_;
    std::string path_;
};

// Converts a UTF-8 path to the standard library's path type without the locale getting in the way.
std::filesystem::path nativePath(const std::string& utf8);
