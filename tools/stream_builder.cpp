#include "stream_builder.h"

#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kShortHeader = 16;
constexpr std::size_t kHeader = 20;
constexpr std::size_t kLengthAt = 8;
constexpr std::size_t kModeAt = 12;
constexpr std::size_t kFirstLengthAt = 16;

// Action bytes: of all types but registry values, and of registry values.
constexpr std::uint8_t kCreate = 1;
constexpr std::uint8_t kDelete = 2;
constexpr std::uint8_t kCreateValue = 1;
constexpr std::uint8_t kDeleteValue = 2;

constexpr std::size_t Largest(std::size_t width) {
    return (std::size_t{1} << 8 * width) - 1;
}

}  // namespace

StreamBuilder::StreamBuilder() : bytes_("AOT FILE") {}

void StreamBuilder::Begin(std::uint8_t type, std::uint8_t action, std::size_t size) {
    start_ = bytes_.size();
    bytes_.append(size, '\0');
    Put(0, type);
    Put(4, action);
}

void StreamBuilder::Put(std::size_t offset, std::size_t value, std::size_t width) {
    if (value > Largest(width)) throw Error(errors::kInvalidCall);
    for (std::size_t byte = 0; byte < width; ++byte) {
        bytes_[start_ + offset + byte] = static_cast<char>(static_cast<unsigned char>(value >> 8 * byte));
    }
}

void StreamBuilder::Slot(std::size_t length, std::size_t width) {
    const std::size_t offset = bytes_.size() - start_;
    bytes_.append(4, '\0');
    Put(offset, length, width);
}

void StreamBuilder::String(std::string_view text) {
    Slot(text.size());
    bytes_ += text;
}

void StreamBuilder::LongString(std::string_view text) {
    Slot(text.size(), 2);
    bytes_ += text;
}

StreamBuilder& StreamBuilder::FinishWithSize(std::size_t width) {
    const std::size_t size = bytes_.size() - start_;
    Put(kLengthAt, size <= Largest(width) ? size : 0, width);
    return *this;
}

StreamBuilder& StreamBuilder::FinishWithWholeSize(std::size_t width) {
    Put(kLengthAt, bytes_.size() - start_, width);
    return *this;
}

StreamBuilder& StreamBuilder::FileCopy(std::string_view source, std::string_view target,
                                       std::uint16_t flags) {
    Begin(1, kCreate, kHeader);
    Put(kModeAt, flags, 2);
    Put(kFirstLengthAt, source.size());
    bytes_ += source;
    String(target);
    return FinishWithSize(1);
}

StreamBuilder& StreamBuilder::FileDelete(std::string_view path) {
    return Path(1, kDelete, path, 1);
}

StreamBuilder& StreamBuilder::DirectoryCreate(std::string_view path) {
    return Path(2, kCreate, path, 1);
}

StreamBuilder& StreamBuilder::DirectoryDelete(std::string_view path) {
    return Path(2, kDelete, path, 1);
}

StreamBuilder& StreamBuilder::IniValue(std::string_view file, std::string_view section, std::string_view item,
                                       std::string_view value) {
    return Ini(kCreate, file, section, item, value);
}

StreamBuilder& StreamBuilder::IniItemDelete(std::string_view file, std::string_view section,
                                            std::string_view item, std::string_view value) {
    return Ini(kDelete, file, section, item, value);
}

StreamBuilder& StreamBuilder::RegistryValue(std::string_view key, std::string_view name,
                                            std::string_view data, std::uint8_t mode,
                                            std::uint8_t data_type) {
    Begin(5, kCreateValue, kHeader);
    Put(kModeAt, mode);
    Put(16, data_type);
    String(key);
    String(name);
    LongString(data);
    return *this;
}

StreamBuilder& StreamBuilder::RegistryValueDelete(std::string_view key, std::string_view name) {
    Begin(5, kDeleteValue, kHeader);
    String(key);
    String(name);
    return *this;
}

StreamBuilder& StreamBuilder::RegistryKeyCreate(std::string_view key) {
    return Path(6, kCreate, key, 2);
}

StreamBuilder& StreamBuilder::RegistryKeyDelete(std::string_view key) {
    return Path(6, kDelete, key, 2);
}

StreamBuilder& StreamBuilder::NoEntry() {
    Begin(8, 0, kShortHeader);
    return FinishWithWholeSize(1);
}

StreamBuilder& StreamBuilder::Macro(std::string_view name, std::string_view value) {
    Begin(10, kCreate, kShortHeader);
    Put(12, name.size());
    bytes_ += name;
    String(value);
    return FinishWithSize(1);
}

StreamBuilder& StreamBuilder::TextFileChange(std::uint8_t kind, std::string_view file, std::string_view text,
                                             std::string_view replacement) {
    Begin(21, kind, kHeader);
    Put(kFirstLengthAt, file.size());
    bytes_ += file;
    String(text);
    if (kind == 4) String(replacement);
    return FinishWithSize(1);
}

StreamBuilder& StreamBuilder::IniSectionDelete(std::string_view file, std::string_view section) {
    Begin(23, kDelete, kHeader);
    Put(kFirstLengthAt, file.size());
    bytes_ += file;
    String(section);
    return FinishWithSize(2);
}

StreamBuilder& StreamBuilder::EnvironmentSetting(std::string_view name, std::string_view value, char code) {
    Begin(24, kCreate, kHeader);
    Put(16, static_cast<unsigned char>(code));
    String(name);
    String(value);
    return FinishWithWholeSize(2);
}

StreamBuilder& StreamBuilder::PromptedMacro(std::string_view name, std::string_view value,
                                            std::uint8_t minimum_space, std::string_view prompt) {
    Begin(38, kCreate, kShortHeader + 8);
    Put(20, minimum_space);
    String(name);
    String(value);
    String(prompt);
    return FinishWithWholeSize(1);
}

StreamBuilder& StreamBuilder::Raw(std::string_view bytes) {
    bytes_ += bytes;
    return *this;
}

StreamBuilder& StreamBuilder::Path(std::uint8_t type, std::uint8_t action, std::string_view path,
                                   std::size_t width) {
    Begin(type, action, kHeader);
    Put(kFirstLengthAt, path.size());
    bytes_ += path;
    return FinishWithSize(width);
}

StreamBuilder& StreamBuilder::Ini(std::uint8_t action, std::string_view file, std::string_view section,
                                  std::string_view item, std::string_view value) {
    Begin(3, action, kHeader);
    Put(kFirstLengthAt, file.size());
    bytes_ += file;
    String(section);
    String(item);
    LongString(value);
    return FinishWithSize(2);
}

}  // namespace zorvel
