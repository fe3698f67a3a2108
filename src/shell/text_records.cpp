#include "shell/text_records.h"

#include <utility>

#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {
namespace {

constexpr bool IsLineEnd(int byte) {
    return byte == '\r' || byte == '\n';
}
constexpr bool IsBlank(int byte) {
    return byte == ' ' || byte == '\t';
}

// Hands `text` to `write`, part by part, with one LF for each CR LF and each lone CR.
template <typename Writer>
void WriteLineEndsAsLF(std::string_view text, Writer write) {
    for (std::size_t end = text.find('\r'); end != std::string_view::npos; end = text.find('\r')) {
        write(text.substr(0, end));
        write("\n");
        text.remove_prefix(end + 1);
        if (text.starts_with('\n')) text.remove_prefix(1);
    }
    write(text);
}

}  // namespace

FieldReader::FieldReader(InputFile file, FieldRules rules) : file_(std::move(file)), rules_(rules) {}

void FieldReader::SkipLineEnd() {
    if (file_.Get() == '\r' && file_.Peek() == '\n') file_.Get();
    ++line_;
    end_ = FieldEnd::kLine;
}

std::string FieldReader::QuotedField() {
    std::string field;
    file_.Get();
    for (int byte = file_.Get(); byte >= 0; byte = file_.Get()) {
        if (byte == '"') {
            if (!rules_.doubled_quotes || file_.Peek() != '"') break;
            file_.Get();
        }
        if (byte == '\n') ++line_;
        field += static_cast<char>(byte);
    }
    while (IsBlank(file_.Peek()))
        file_.Get();
    if (file_.Peek() == ',') {
        file_.Get();
        end_ = FieldEnd::kComma;
    } else if (IsLineEnd(file_.Peek())) {
        SkipLineEnd();
    } else if (!AtEnd()) {
        end_ = FieldEnd::kText;
    }
    return field;
}

std::string FieldReader::PlainField() {
    std::string field;
    for (int byte = file_.Peek(); byte >= 0; byte = file_.Peek()) {
        if (IsLineEnd(byte)) {
            SkipLineEnd();
            break;
        }
        file_.Get();
        if (byte == ',') {
            end_ = FieldEnd::kComma;
            break;
        }
        field += static_cast<char>(byte);
    }
    if (rules_.drop_trailing_blanks) field.erase(field.find_last_not_of(" \t") + 1);
    return field;
}

std::string FieldReader::Next() {
    if (AtEnd()) throw Error(errors::kPastEndOfFile).With(Place() + ": the file ends within a record");
    field_line_ = line_;
    end_ = FieldEnd::kFile;
    while (IsBlank(file_.Peek()))
        file_.Get();
    return file_.Peek() == '"' ? QuotedField() : PlainField();
}

std::int32_t FieldReader::NextNumber() {
    const std::string field = Next();
    try {
        return WholeValue(field);
    } catch (const Error& error) {
        throw error.Within(Place());
    }
}

std::string FieldReader::NextLine() {
    if (AtEnd())
        throw Error(errors::kPastEndOfFile).With(Place() + ": the file ends before its first record");
    field_line_ = line_;
    std::string text;
    while (file_.Peek() >= 0 && !IsLineEnd(file_.Peek()))
        text += static_cast<char>(file_.Get());
    if (file_.Peek() >= 0) SkipLineEnd();
    return text;
}

std::string FieldReader::Place() const {
    return file_.name() + ", line " + std::to_string(field_line_);
}

LineReader::LineReader(InputFile file, LineEnd line_end)
    : file_(std::move(file)), ends_(line_end == LineEnd::kAny ? "\r\n" : "\r") {}

bool LineReader::Next(std::string& line) {
    line.clear();
    std::string_view available = file_.Available();
    if (available.empty()) return false;
    ++line_number_;
    line_ended_ = false;
    while (!available.empty()) {
        // A single character is found at a stretch, a set of them only byte by byte.
        const std::size_t length =
            ends_.size() == 1 ? available.find(ends_.front()) : available.find_first_of(ends_);
        line += available.substr(0, length);
        if (length != std::string_view::npos) {
            line_ended_ = true;
            const bool carriage_return = available[length] == '\r';
            file_.Skip(length + 1);
            if (carriage_return && file_.Peek() == '\n') file_.Get();
            break;
        }
        file_.Skip(available.size());
        available = file_.Available();
    }
    return true;
}

std::string OneFieldLine(std::string_view text) {
    std::string line;
    WriteLineEndsAsLF(text, [&line](std::string_view part) { line += part; });
    return line;
}

void WriteFieldLine(OutputFile& file, std::string_view field) {
    WriteLineEndsAsLF(field, [&file](std::string_view part) { file.Write(part); });
    file.Write("\r\n");
}

void AppendQuotedDoubling(std::string& text, std::string_view field) {
    text += '"';
    for (std::size_t quote = field.find('"'); quote != std::string_view::npos; quote = field.find('"')) {
        text += field.substr(0, quote + 1);
        text += '"';
        field.remove_prefix(quote + 1);
    }
    text += field;
    text += '"';
}

std::string QuotedDoubling(std::string_view field) {
    std::string quoted;
    AppendQuotedDoubling(quoted, field);
    return quoted;
}

std::string Quoted(std::string_view field) {
    std::string quoted = "\"";
    quoted += field;
    quoted += '"';
    return quoted;
}

}  // namespace zorvel
