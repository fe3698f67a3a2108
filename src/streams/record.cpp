#include "streams/record.h"

#include <algorithm>

#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::size_t kActionAt = 4;
constexpr std::size_t kLengthAt = 8;
constexpr std::size_t kFlagsAt = 12;

// Works out the length value in force and what it bounds.
void BoundFields(const HeaderLayout& layout, Record& record) {
    using Data = HeaderLayout::Data;
    if (layout.data == Data::kNone) return;
    if (layout.data == Data::kFirstString || record.length_value == 0) {
        if (record.length_value == 0) record.length_value = record.first_length;
        record.header_length = 0;
        return;
    }
    if (record.length_value < record.header_length) throw Error(errors::kInvalidCall);
    if (layout.data == Data::kRecord) return;
    record.fields.Limit(static_cast<std::size_t>(record.length_value - record.header_length));
}

}  // namespace

std::string_view Record::TakeFirstString() {
    first_size = static_cast<std::size_t>(std::min(first_length, length_value - header_length));
    return fields.Take(first_size);
}

void ReadHeader(std::string_view rest, const HeaderLayout& layout, Record& record) {
    record.fields = StreamCursor(rest);
    record.header = StreamCursor(record.fields.Take(layout.size));
    record.action = record.header.ByteAt(kActionAt);
    record.header_length = static_cast<std::int32_t>(layout.size);
    if (layout.length_bytes == 1) record.length_value = record.header.ByteAt(kLengthAt);
    if (layout.length_bytes == 2) record.length_value = record.header.WordAt(kLengthAt);
    if (layout.has_flags) record.flags = record.header.WordAt(kFlagsAt);
    if (layout.first_length_at != 0) record.first_length = record.header.ByteAt(layout.first_length_at);
    BoundFields(layout, record);
}

}  // namespace zorvel
