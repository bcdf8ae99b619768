#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

// Every failure the user can meet travels as one of these; what() is ready for a message box:
// code page 1251 words in the user's language.

class BasicException : public std::exception {
public:
    explicit BasicException(std::string_view message);
    BasicException(std::uint16_t code, std::string_view message, std::string_view details);

    const char* what() const noexcept override;
    virtual std::uint16_t code() const;
    virtual std::string details() const;

private:
    std::uint16_t code_ = 0;
    std::string message_;
    std::string details_;
};

// A settings key that the settings file does not hold (code 307).
class ClientPropertyNotSet : public BasicException {
public:
    ClientPropertyNotSet();
};

// The addon library could not be loaded; names the path as given.
class LoadLibraryError : public std::exception {
public:
    explicit LoadLibraryError(std::string_view path);
    const char* what() const noexcept override;

private:
    std::string message_;
};

namespace filesys {

// A file or folder failure. The words are fixed when it is thrown, with the path put in once.
class FileIOError : public std::exception {
public:
    FileIOError(std::string_view path, std::string_view messageTemplate);
    const char* what() const noexcept override;
    // The path as it was given, UTF-8.
    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::string message_;
};

class ReadFileError : public FileIOError {
public:
    explicit ReadFileError(std::string_view path);
};

class WriteFileError : public FileIOError {
public:
    explicit WriteFileError(std::string_view path);
};

class ReadFolderError : public FileIOError {
public:
    explicit ReadFolderError(std::string_view path);
};

} // namespace filesys

namespace detector {

// The two failures of the connection table keep their Russian words in every language.
class ConnectionNotFound : public std::exception {
public:
    const char* what() const noexcept override;
};

class InternalError : public std::exception {
public:
    const char* what() const noexcept override;
};

} // namespace detector
