// Where the entries decoded from one stream go: counters, issues, rows, signature and search.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/output_file.h"
#include "streams/parse_context.h"

namespace zorvel {

class EntryOutput {
  public:
    // All are used until the stream is parsed; `signature_total` takes the sum of the entries' signatures.
    EntryOutput(const ParseContext& context, OutputFile& rows, std::string_view full_name,
                std::int32_t& signature_total);

    const RuleLists& rules() const { return context_.rules; }

    // Adds one to both counters of a category.
    void Count(Counter counter) { context_.counters.Add(counter); }
    // Writes and counts an issue, unless `code` is "OK".
    void Issue(std::string_view entry_type, std::string_view target, std::string_view source,
               std::string_view code);
    // Writes a row: the application's full name, then `fields`.
    void Row(std::initializer_list<std::string_view> fields);
    // Writes a row of `fields` alone.
    void RowWithoutName(std::initializer_list<std::string_view> fields);
    // Adds the signature of `text`, which becomes upper case, to the total. Raises error 6 on overflow.
    void Sign(std::string& text);
    // Adds the signature of the joined `parts`, which stay as they are.
    void Sign(std::initializer_list<std::string_view> parts);
    // Hands the joined `parts` to the search of a Find run.
    void Find(char kind, std::initializer_list<std::string_view> parts);

    // Buffers that decoders may use within one entry; kept from entry to entry to save allocations.
    std::string first_buffer;
    std::string second_buffer;

  private:
    const std::string& Join(std::initializer_list<std::string_view> parts);

    const ParseContext& context_;
    OutputFile& rows_;
    std::string_view full_name_;
    std::string name_line_;  // the line that begins each row
    std::int32_t& signature_total_;
    std::string joined_;
};

}  // namespace zorvel
