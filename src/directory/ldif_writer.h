// Writes the records of an LDIF file (RFC 2849).
#pragma once

#include <string_view>

#include "platform/output_file.h"

namespace zorvel {

// Every operation raises error 61 or 75 when the file cannot be written.
class LdifWriter {
  public:
    // Begins with the file's version. `file` must live as long.
    explicit LdifWriter(OutputFile& file);

    // A line for people; ahead of a record.
    void Comment(std::string_view utf8_text);
    // Records have an empty line before them.
    void BeginRecord(std::string_view dn);
    // A value as it is, folded, and in base64 where it has to be.
    void Value(std::string_view attribute, std::string_view value);

  private:
    OutputFile& file_;
};

}  // namespace zorvel
