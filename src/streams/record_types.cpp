#include "streams/record_types.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "shell/formats.h"
#include "streams/entry_texts.h"
#include "streams/file_rules.h"
#include "streams/issue_rule.h"
#include "streams/macro_rules.h"
#include "streams/portable_paths.h"
#include "streams/registry_rules.h"
#include "streams/stream_failures.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

using Data = HeaderLayout::Data;

constexpr std::size_t kShortHeader = 16;
constexpr std::size_t kHeader = 20;
constexpr std::size_t kSlot = 4;

// Action bytes.
constexpr std::uint8_t kCreateValue = 1;  // registry values: anything else deletes
constexpr std::uint8_t kDelete = 2;       // all other types

std::size_t DecodeFile(Record& record, EntryOutput& output) {
    const std::string_view source = record.TakeFirstString();
    std::string& target = output.first_buffer;
    if (record.action == kDelete) {
        output.Count(Counter::kFiles);
        target.clear();
        output.Sign(target);
        output.Row({"", source, "Delete"});
        output.Find('F', {});
        return kHeader + source.size();
    }
    target = record.fields.TakeString();
    output.Count(Counter::kFiles);
    output.Sign(target);
    const CopyMode mode = CopyModeOf(static_cast<std::uint32_t>(record.flags));
    output.Issue("File", target, source, FileValid(target, mode.text, output.rules().FileIssueList));
    if (CheckMacroReplacements(target)) output.Issue("File", target, source, CodeOf(Issue::kFilePortable));
    output.second_buffer = mode.text;
    output.second_buffer += mode.suffix;
    output.Row({target, source, output.second_buffer});
    output.Find('F', {target});
    return kHeader + source.size() + kSlot + target.size();
}

std::size_t DecodeDirectory(Record& record, EntryOutput& output) {
    const std::string_view path = record.TakeFirstString();
    const std::size_t separator = path.rfind('\\');
    const std::string_view name = path.substr(separator + 1);
    const std::string_view parent = separator == std::string_view::npos ? "" : path.substr(0, separator);
    output.Row({name, parent, record.action == kDelete ? "Delete Directory" : "Create Directory"});
    output.Sign({name});
    output.Find('F', {path});
    return kHeader + path.size();
}

std::size_t DecodeIniValue(Record& record, EntryOutput& output) {
    const std::string_view first = record.TakeFirstString();
    const std::string_view second = record.fields.TakeString();
    const std::string_view third = record.fields.TakeString();
    const std::string_view fourth = record.fields.TakeLongString();
    output.Count(Counter::kIni);
    output.Row({first, second, DisplayForm(third, output.first_buffer),
                DisplayForm(fourth, output.second_buffer), record.action == kDelete ? "[ITEM DELETED]" : ""});
    output.Sign({second});
    return kHeader + static_cast<std::size_t>(record.first_length) + kSlot + second.size() + kSlot +
           third.size() + kSlot + fourth.size();
}

std::size_t DecodeRegistryValue(Record& record, EntryOutput& output) {
    constexpr std::size_t kModeAt = 12;
    constexpr std::size_t kFixedSize = 28;  // up to the value name, without the key
    const std::string_view key = record.fields.Take(static_cast<std::size_t>(record.first_length));
    const std::string_view name = record.fields.TakeString();
    std::size_t size = kFixedSize + key.size() + name.size();
    std::string_view data;
    std::string_view mode = "Delete";
    if (record.action == kCreateValue) {
        data = record.fields.TakeLongString();
        mode = CreationModeText(record.header.ByteAt(kModeAt));
        size += kSlot + data.size();
    }
    output.Count(Counter::kRegistry);
    data = DisplayForm(data, output.first_buffer);
    const std::string_view code = RegistryValid(key, name, data, output.rules().RegExcludeList);
    if (code != kNoIssue) {
        output.second_buffer = key;
        output.second_buffer += '\\';
        output.second_buffer += name;
        output.Issue("Registry", output.second_buffer, data, code);
    }
    output.Row({key, name, data, mode});
    output.Sign({key, name, data});
    output.Find('R', {key, "  ", name, "  ", data});
    return size;
}

std::size_t DecodeRegistryKey(Record& record, EntryOutput& output) {
    const std::string_view key = record.TakeFirstString();
    const bool deleted = record.action == kDelete;
    output.Count(Counter::kRegistry);
    output.Row({key, "", "", deleted ? "Delete" : "Create"});
    // The signature leaves its text in upper case, and so the key reaches the search.
    output.first_buffer = key;
    output.Sign(output.first_buffer);
    output.Find('R', {output.first_buffer});
    if (deleted) return kHeader + static_cast<std::size_t>(record.first_length);
    return record.header_length != 0 ? static_cast<std::size_t>(record.length_value) : kHeader + key.size();
}

// A record that stands for no entry.
std::size_t DecodeNothing(Record& record, EntryOutput& /*output*/) {
    return static_cast<std::size_t>(record.length_value);
}

std::size_t DecodeMacro(Record& record, EntryOutput& output) {
    const std::string_view name = record.TakeFirstString();
    const std::string_view value = record.fields.TakeString();
    output.Count(Counter::kMacros);
    output.Issue("Macro", name, value, MacroValid(name, value));
    output.Row({name, value, "", ""});
    output.Sign({name, value});
    if (record.header_length != 0) return static_cast<std::size_t>(record.length_value);
    return kShortHeader + name.size() + kSlot + value.size();
}

std::size_t DecodeTextChange(Record& record, EntryOutput& output) {
    const std::string_view file = record.TakeFirstString();
    const std::string_view text = record.fields.TakeString();
    std::size_t size = kHeader + file.size() + kSlot + text.size();
    std::string_view replacement;
    if (record.action == kFindAndReplace) {
        replacement = record.fields.TakeString();
        size += kSlot + replacement.size();
    }
    const std::string_view change = ChangeText(record.action);
    output.Count(Counter::kText);
    output.Row({file, text, replacement, change});
    output.Sign({file, text, replacement, change});
    return size;
}

std::size_t DecodeIniSection(Record& record, EntryOutput& output) {
    const std::string_view first = record.fields.Take(static_cast<std::size_t>(record.first_length));
    const std::string_view second = record.fields.TakeString();
    output.Count(Counter::kIni);
    output.Row({first, second, "", "", "[SECTION DELETED]"});
    output.Sign({second});
    return kHeader + first.size() + kSlot + second.size();
}

std::size_t DecodeEnvironment(Record& record, EntryOutput& output) {
    constexpr std::size_t kCodeAt = 16;
    const auto code = static_cast<char>(record.header.ByteAt(kCodeAt));
    record.first_length = record.fields.TakeByteSlot();
    const std::string_view name = record.fields.Take(static_cast<std::size_t>(record.first_length));
    const std::string_view value = record.fields.TakeString();
    output.RowWithoutName({name, value, {&code, 1}});
    return static_cast<std::size_t>(record.length_value);
}

std::size_t DecodePromptedMacro(Record& record, EntryOutput& output) {
    const std::uint8_t minimum_space = StreamCursor(record.fields.Take(kSlot + kSlot)).ByteAt(kSlot);
    record.first_length = record.fields.TakeByteSlot();
    if (record.length_value == 0) record.length_value = record.first_length;
    const std::string_view name = record.fields.Take(static_cast<std::size_t>(record.first_length));
    const std::string_view value = record.fields.TakeString();
    const std::string_view prompt = record.fields.TakeString();
    output.Count(Counter::kMacros);
    output.Row({name, value, Grouped(minimum_space), prompt});
    output.Sign({name, value});
    return static_cast<std::size_t>(record.length_value);
}

std::size_t DecodeUnrecognised(Record& /*record*/, EntryOutput& /*output*/) {
    throw Error(kUnrecognisedType);
}

// The headers that tell the length of a first string.
constexpr HeaderLayout kTextHeader{
    .size = kHeader, .length_bytes = 1, .first_length_at = 16, .has_flags = true, .data = Data::kFirstString};
constexpr HeaderLayout kPathHeader{
    .size = kHeader, .length_bytes = 1, .first_length_at = 16, .has_flags = true, .data = Data::kBounded};
constexpr HeaderLayout kLongHeader{
    .size = kHeader, .length_bytes = 2, .first_length_at = 16, .has_flags = true, .data = Data::kBounded};
constexpr HeaderLayout kMacroHeader{
    .size = kShortHeader, .length_bytes = 1, .first_length_at = 12, .data = Data::kBounded};

constexpr std::array kRecordTypes = {
    RecordType{.number = 1, .layout = kTextHeader, .decode = DecodeFile},
    RecordType{.number = 2, .layout = kPathHeader, .decode = DecodeDirectory},
    RecordType{.number = 3, .layout = kLongHeader, .decode = DecodeIniValue},
    RecordType{.number = 5,
               .layout = {.size = kHeader + kSlot, .first_length_at = kHeader},
               .decode = DecodeRegistryValue},
    RecordType{.number = 6, .layout = kLongHeader, .decode = DecodeRegistryKey},
    RecordType{.number = 8, .layout = kMacroHeader, .decode = DecodeNothing},
    RecordType{.number = 10, .layout = kMacroHeader, .decode = DecodeMacro},
    RecordType{.number = 21, .layout = kTextHeader, .decode = DecodeTextChange},
    RecordType{.number = 23,
               .layout = {.size = kHeader, .length_bytes = 2, .first_length_at = 16},
               .decode = DecodeIniSection},
    RecordType{.number = 24, .layout = {.size = kHeader, .length_bytes = 2}, .decode = DecodeEnvironment},
    RecordType{.number = 38,
               .layout = {.size = kShortHeader, .length_bytes = 1, .data = Data::kRecord},
               .decode = DecodePromptedMacro},
};
constexpr RecordType kUnknownType{.number = 0, .layout = kMacroHeader, .decode = DecodeUnrecognised};

}  // namespace

const RecordType& RecordTypeOf(std::uint8_t number) {
    const auto* const row = std::find_if(kRecordTypes.begin(), kRecordTypes.end(),
                                         [number](const RecordType& type) { return type.number == number; });
    return row == kRecordTypes.end() ? kUnknownType : *row;
}

}  // namespace zorvel
