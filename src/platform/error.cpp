#include "platform/error.h"

#include <cerrno>
#include <new>
#include <utility>

namespace zorvel {

std::string DescriptionOf(std::int32_t number) {
    switch (number) {
        case errors::kInvalidCall:
            return "Invalid procedure call or argument";
        case errors::kOverflow:
            return "Overflow";
        case errors::kOutOfMemory:
            return "Out of memory";
        case errors::kSubscript:
            return "Subscript out of range";
        case errors::kTypeMismatch:
            return "Type mismatch";
        case errors::kInternal:
            return "Internal error";
        case errors::kFileNotFound:
            return "File not found";
        case errors::kFileExists:
            return "File already exists";
        case errors::kDiskFull:
            return "Disk full";
        case errors::kPastEndOfFile:
            return "Input past end of file";
        case errors::kPermissionDenied:
            return "Permission denied";
        case errors::kPathFileAccess:
            return "Path/File access error";
        case errors::kPathNotFound:
            return "Path not found";
        case errors::kNoAutomation:
            return "Class does not support Automation or does not support expected interface";
        case errors::kDirectoryUnreadable:
            return "The directory could not be read";
        case errors::kNoSuchObject:
            return "The object does not exist";
        case errors::kNoSuchValue:
            return "The attribute has no value";
        default:
            return "Application-defined or object-defined error";
    }
}

Error::Error(std::int32_t number) : Error(number, DescriptionOf(number)) {}

Error::Error(std::int32_t number, const std::string& description)
    : std::runtime_error(description), number_(number) {}

Error Error::With(std::string detail) const {
    Error copy = *this;
    copy.detail_ = std::move(detail);
    return copy;
}

Error Error::Within(std::string_view place) const {
    return With(std::string(place) + ": " + Reason());
}

Error Error::At(const std::string& path) const {
    return With(path + ": " + description());
}

std::string CutForMessage(std::string_view text) {
    constexpr std::size_t kMessageLength = 200;
    constexpr std::string_view kCutMark = "...";
    if (text.size() <= kMessageLength) return std::string(text);
    return std::string(text.substr(0, kMessageLength - kCutMark.size())) += kCutMark;
}

Error FileError(int error_code, const std::string& path) {
    switch (error_code) {
        case ENOENT:
            return Error(errors::kFileNotFound).At(path);
        case ENOTDIR:
            return Error(errors::kPathNotFound).At(path);
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Error(errors::kDiskFull).At(path);
        case EACCES:
        case EPERM:
            return Error(errors::kPermissionDenied).At(path);
        default:
            return Error(errors::kPathFileAccess).At(path);
    }
}

Error CurrentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error(errors::kOutOfMemory);
    } catch (const std::exception& error) {
        return Error(errors::kInternal).With(error.what());
    }
}

}  // namespace zorvel
