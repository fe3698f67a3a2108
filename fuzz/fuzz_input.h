// What the fuzzers share: each defines TestOneInput, which reads the bytes as one part of the program does,
// in memory, and requires of the outcome what must hold for any input.
#pragma once

#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/error.h"
#include "platform/input_file.h"

namespace zorvel::fuzz {

// What errors call the input.
inline constexpr std::string_view kInputName = "input";

// Tries one input. Whatever leaves it, or does not hold in it, is a finding.
void TestOneInput(std::string_view input);

// Makes a finding of a condition that does not hold.
inline void Require(bool condition) {
    if (!condition) std::abort();
}

// The bytes as a file that the program reads; they must outlive it.
inline InputFile AsFile(std::string_view bytes) {
    return InputFile::OfBytes(bytes, std::string(kInputName));
}

// What `read` gives, or nothing when it refuses its input: with one of these errors, and a reason.
template <typename Read>
auto Readable(std::initializer_list<std::int32_t> errors, Read read)
    -> std::optional<std::invoke_result_t<Read>> {
    try {
        return read();
    } catch (const Error& error) {
        bool known = false;
        for (const std::int32_t number : errors)
            known = known || number == error.number();
        Require(known && !error.Reason().empty());
        return std::nullopt;
    }
}

// Takes the text up to the first `separator`, or what is left, off `rest`.
inline std::string_view TakePart(std::string_view& rest, char separator) {
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(part.size() < rest.size() ? part.size() + 1 : part.size());
    return part;
}

// True for a text that stands between quotes in a cache or a selection and reads back as it is.
inline bool IsCarried(std::string_view text) {
    return text.find_first_of("\"\r\n") == std::string_view::npos;
}

}  // namespace zorvel::fuzz
