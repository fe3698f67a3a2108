// The record types of a stream: one row a type, with the layout of its header and its decoder.
#pragma once

#include <cstddef>
#include <cstdint>

#include "streams/entry_output.h"
#include "streams/record.h"

namespace zorvel {

struct RecordType {
    std::uint8_t number;
    HeaderLayout layout;
    // Decodes the record behind its header and passes the entry on. Returns the record's length: the bytes
    // from its first byte to the next record's. Raises error 9 when a field runs past the end, error 6 for a
    // signature overflow.
    std::size_t (*decode)(Record& record, EntryOutput& output);
};

// The row of type `number`. An unknown type has a row, too, whose decoder raises kUnrecognisedType.
const RecordType& RecordTypeOf(std::uint8_t number);

}  // namespace zorvel
