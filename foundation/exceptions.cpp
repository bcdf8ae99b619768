#include "foundation/exceptions.h"

#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

// Puts the path into the first %1 only: a path that itself holds %1 does no harm.
std::string withPath(std::string_view messageTemplate, std::string_view path) {
    std::string message(messageTemplate);
    const std::size_t at = message.find("%1");
    if (at != std::string::npos) {
        message.replace(at, 2, utf8ToCp1251(path));
    }
    return message;
}

} // namespace

BasicException::BasicException(std::string_view message) : message_(message) {}

BasicException::BasicException(std::uint16_t code, std::string_view message,
                               std::string_view details)
    : code_(code), message_(message), details_(details) {}

const char* BasicException::what() const noexcept {
    return message_.c_str();
}

std::uint16_t BasicException::code() const {
    return code_;
}

std::string BasicException::details() const {
    return details_;
}

ClientPropertyNotSet::ClientPropertyNotSet()
    : BasicException(307, serviceMessages.text(servicemsg::propertyNotSet), "") {}

LoadLibraryError::LoadLibraryError(std::string_view path)
    : message_(commonMessages.format(commonmsg::libraryNotRead, std::string(path).c_str())) {}

const char* LoadLibraryError::what() const noexcept {
    return message_.c_str();
}

namespace filesys {

FileIOError::FileIOError(std::string_view path, std::string_view messageTemplate)
    : path_(path), message_(withPath(messageTemplate, path)) {}

const char* FileIOError::what() const noexcept {
    return message_.c_str();
}

ReadFileError::ReadFileError(std::string_view path)
    : FileIOError(path, commonMessages.text(commonmsg::fileNotRead)) {}

WriteFileError::WriteFileError(std::string_view path)
    : FileIOError(path, commonMessages.text(commonmsg::fileNotWritten)) {}

ReadFolderError::ReadFolderError(std::string_view path)
    : FileIOError(path, commonMessages.text(commonmsg::folderNotRead)) {}

} // namespace filesys

namespace detector {

const char* ConnectionNotFound::what() const noexcept {
    static const std::string words = utf8ToCp1251("Соединение отсутствует");
    return words.c_str();
}

const char* InternalError::what() const noexcept {
    static const std::string words = utf8ToCp1251("Внутренняя ошибка");
    return words.c_str();
}

} // namespace detector
