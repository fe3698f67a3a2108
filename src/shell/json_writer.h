// The texts of a JSON file (RFC 8259).
#pragma once

#include <string_view>

#include "platform/output_file.h"
#include "shell/character_table.h"

namespace zorvel {

class JsonWriter {
  public:
    // Writes to `file`, which must outlive the object. All raise the file's errors.
    explicit JsonWriter(OutputFile& file);

    // Writes a string; control characters are escaped.
    void Write(std::string_view text);
    // Writes a number, true, false, or punctuation as it stands.
    void WriteBare(std::string_view text) { file_.Write(text); }
    // Writes the name of a member, and the colon behind it.
    void WriteKey(std::string_view name);

  private:
    OutputFile& file_;
    CharacterTable spelling_;
};

}  // namespace zorvel
