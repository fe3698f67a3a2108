// Builds well-formed binary streams of Application objects, record by record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvel {

// Each method appends one record and returns the builder. Strings hold at most 255 characters, registry data
// and INI values at most 65535; a prompted macro's whole record at most 255 bytes and an environment
// setting's at most 65535. Anything longer raises error 5.
class StreamBuilder {
  public:
    // A stream that holds only the signature.
    StreamBuilder();

    // Type 1. `flags` is the copy mode; add 512 for a shared file.
    StreamBuilder& FileCopy(std::string_view source, std::string_view target, std::uint16_t flags = 1);
    StreamBuilder& FileDelete(std::string_view path);
    // Type 2.
    StreamBuilder& DirectoryCreate(std::string_view path);
    StreamBuilder& DirectoryDelete(std::string_view path);
    // Type 3.
    StreamBuilder& IniValue(std::string_view file, std::string_view section, std::string_view item,
                            std::string_view value);
    StreamBuilder& IniItemDelete(std::string_view file, std::string_view section, std::string_view item,
                                 std::string_view value);
    // Type 5. `mode`: 1 create always, 2 create if it exists, 4 create if it does not exist.
    StreamBuilder& RegistryValue(std::string_view key, std::string_view name, std::string_view data,
                                 std::uint8_t mode = 1, std::uint8_t data_type = 1);
    StreamBuilder& RegistryValueDelete(std::string_view key, std::string_view name);
    // Type 6.
    StreamBuilder& RegistryKeyCreate(std::string_view key);
    StreamBuilder& RegistryKeyDelete(std::string_view key);
    // Type 8, which stands for no entry: a bare header.
    StreamBuilder& NoEntry();
    // Type 10.
    StreamBuilder& Macro(std::string_view name, std::string_view value);
    // Type 21. `kind`: 1 add to the beginning, 2 add to the end, 3 delete, 4 replace by `replacement`.
    StreamBuilder& TextFileChange(std::uint8_t kind, std::string_view file, std::string_view text,
                                  std::string_view replacement = {});
    // Type 23.
    StreamBuilder& IniSectionDelete(std::string_view file, std::string_view section);
    // Type 24.
    StreamBuilder& EnvironmentSetting(std::string_view name, std::string_view value, char code);
    // Type 38. `minimum_space` in megabytes.
    StreamBuilder& PromptedMacro(std::string_view name, std::string_view value, std::uint8_t minimum_space,
                                 std::string_view prompt);
    // Bytes as they stand, for streams that are not well-formed.
    StreamBuilder& Raw(std::string_view bytes);

    // The stream so far.
    const std::string& bytes() const { return bytes_; }

  private:
    // Appends a header of `size` zero bytes with type and action, which the next Finish completes.
    void Begin(std::uint8_t type, std::uint8_t action, std::size_t size);
    // Puts a number into the current record, low byte first.
    void Put(std::size_t offset, std::size_t value, std::size_t width = 1);
    void Slot(std::size_t length, std::size_t width = 1);
    void String(std::string_view text);
    void LongString(std::string_view text);
    // Writes the record's size at offset 8 in `width` bytes; a size that does not fit is written as 0, which
    // leaves it to the strings' lengths.
    StreamBuilder& FinishWithSize(std::size_t width);
    // The same, but a size that does not fit raises error 5.
    StreamBuilder& FinishWithWholeSize(std::size_t width);

    StreamBuilder& Path(std::uint8_t type, std::uint8_t action, std::string_view path, std::size_t width);
    StreamBuilder& Ini(std::uint8_t action, std::string_view file, std::string_view section,
                       std::string_view item, std::string_view value);

    std::string bytes_;
    std::size_t start_ = 0;  // of the current record
};

}  // namespace zorvel
