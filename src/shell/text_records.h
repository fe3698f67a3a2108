// Readers and writers of the program's text files: free-format fields, and lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/input_file.h"
#include "platform/output_file.h"

namespace zorvel {

// How a FieldReader takes the fields of a file.
struct FieldRules {
    bool doubled_quotes = false;        // "" inside a quoted field is one quote, not the field's end
    bool drop_trailing_blanks = false;  // blanks at the end of an unquoted field are not part of it
};

// What a field of a FieldReader ended at.
enum class FieldEnd {
    kComma,
    kLine,
    kFile,  // the end of the file, without a line end
    kText,  // text behind the closing quote, which is the next field
};

// Reads free-format fields: separated by commas or line ends, leading blanks skipped, a field that begins
// with a quote running to the next quote (over line ends, too).
class FieldReader {
  public:
    explicit FieldReader(InputFile file, FieldRules rules = {});

    // True when no field is left.
    bool AtEnd() { return file_.Peek() < 0; }
    // The next field. Raises error 62 at the end of the file.
    std::string Next();
    // The next field as a number (NumericValue, rounded towards zero). Raises error 6 or 62, the detail
    // naming file and line.
    std::int32_t NextNumber();
    // Takes the rest of the line as it stands, without its end. Raises error 62 at the end of the file.
    std::string NextLine();
    // What the field read last ended at.
    FieldEnd end() const { return end_; }

    // "file, line N" of the field read last, for error texts.
    std::string Place() const;

  private:
    void SkipLineEnd();
    std::string QuotedField();
    std::string PlainField();

    InputFile file_;
    FieldRules rules_;
    FieldEnd end_ = FieldEnd::kFile;
    std::int64_t line_ = 1;        // the line to be read next
    std::int64_t field_line_ = 1;  // the line of the field read last
};

// What ends a line for a LineReader.
enum class LineEnd {
    kAny,             // CR LF, a lone CR or a lone LF: files that users edit
    kCarriageReturn,  // CR LF or a lone CR: files whose values may hold line feeds
};

// Reads lines, each without its end.
class LineReader {
  public:
    LineReader(InputFile file, LineEnd line_end);

    // Reads the next line into `line`; false when there is none left.
    bool Next(std::string& line);
    // The number of lines read.
    std::int64_t line_number() const { return line_number_; }
    // False when the file ended within the line read last.
    bool line_ended() const { return line_ended_; }
    const std::string& name() const { return file_.name(); }

  private:
    InputFile file_;
    std::string_view ends_;
    std::int64_t line_number_ = 0;
    bool line_ended_ = true;
};

// `text` with one LF for each CR LF and each lone CR: the form that WriteFieldLine gives a field.
std::string OneFieldLine(std::string_view text);
// Writes `field` and CR LF. CR LF and a lone CR inside the field become one LF, so that the field stays one
// line.
void WriteFieldLine(OutputFile& file, std::string_view field);

// `field` between quotes, a quote inside it doubled; alone, or appended to a text.
std::string QuotedDoubling(std::string_view field);
void AppendQuotedDoubling(std::string& text, std::string_view field);

// `field` between quotes, as it stands.
std::string Quoted(std::string_view field);

}  // namespace zorvel
