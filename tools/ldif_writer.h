// Writes LDIF (RFC 2849): folded lines, base64 where a value is no plain text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/output_file.h"

namespace zorvel::tools {

// Texts are of the code page and are written as UTF-8. Every operation can raise an OutputError.
class LdifWriter {
  public:
    // Writes the version line. `comment` stands above it, a "#" before each of its lines.
    LdifWriter(OutputFile& file, std::string_view comment);

    // Begins the next record.
    void Record(std::string_view dn);
    // A line of the record: a text, a number, or bytes (always as base64).
    void Text(std::string_view attribute, std::string_view text);
    void Long(std::string_view attribute, std::int64_t value);
    void Bytes(std::string_view attribute, std::string_view bytes);

  private:
    void Line(std::string_view attribute, std::string_view separator, std::string_view value);

    OutputFile& file_;
    std::string base64_;  // kept for its memory, as the line is
    std::string line_;
};

// A relative DN (RFC 4514) as text of the code page: what is special in `name` is escaped.
std::string RelativeDN(std::string_view type, std::string_view name);

}  // namespace zorvel::tools
