// Errors that carry the number and the description shown in messages and in the log.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zorvel {

// The numbers that errors of this program can have.
namespace errors {
inline constexpr std::int32_t kInvalidCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscript = 9;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kInternal = 51;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kFileExists = 58;
inline constexpr std::int32_t kDiskFull = 61;
inline constexpr std::int32_t kPastEndOfFile = 62;
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kNoAutomation = 430;
inline constexpr std::int32_t kDirectoryUnreadable = 600;
inline constexpr std::int32_t kNoSuchObject = 601;
inline constexpr std::int32_t kNoSuchValue = 603;
inline constexpr std::int32_t kStore = static_cast<std::int32_t>(0x80004005);
}  // namespace errors

// An error as the user is told of it: "Error" + number + " (" + description + ")".
class Error : public std::runtime_error {
  public:
    // The error `number` with its standard description.
    explicit Error(std::int32_t number);
    // The error `number` with a description of its own.
    Error(std::int32_t number, const std::string& description);

    std::int32_t number() const noexcept { return number_; }
    std::string description() const { return what(); }

    // A sentence for the log: where the trouble lies and what it is ("file, line 12: ..."); empty when there
    // is no more to say than the description does.
    const std::string& detail() const noexcept { return detail_; }
    // The detail, or else the description: never empty.
    std::string Reason() const { return detail_.empty() ? description() : detail_; }
    // This error with `detail` added to it.
    Error With(std::string detail) const;
    // This error with the detail `place` + ": " + Reason(): what struck at a place that it did not know.
    Error Within(std::string_view place) const;
    // This error with the detail `path` + ": " + description.
    Error At(const std::string& path) const;

    // True for an OutputError, also after it was copied as an Error.
    bool IsOutputError() const noexcept { return output_; }

  private:
    std::int32_t number_;
    std::string detail_;

  protected:
    bool output_ = false;
};

// A failure to write a file. Loops that go on after other errors stop at this one: what they would produce is
// lost.
class OutputError : public Error {
  public:
    explicit OutputError(const Error& error) : Error(error) { output_ = true; }
};

// `text` cut to 200 characters, "..." the last of them: what an error says of a statement or a value, however
// long that is.
std::string CutForMessage(std::string_view text);

// The standard description of error `number`, or "Application-defined or object-defined error".
std::string DescriptionOf(std::int32_t number);

// The error for the value of `errno` that a file operation on `path` left (53, 61, 70, 75 or 76).
Error FileError(int error_code, const std::string& path);

// The exception being handled, as an Error. Call it only inside a catch block.
Error CurrentError();

}  // namespace zorvel
