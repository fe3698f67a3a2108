#include "analysis/data_files.h"

#include <utility>

#include "shell/formats.h"

namespace zorvel {
namespace {

std::variant<FieldReader, LineReader> MakeReader(InputFile file, const DataFile& layout) {
    if (layout.style == RecordStyle::kLines) return LineReader(std::move(file), LineEnd::kCarriageReturn);
    return FieldReader(std::move(file), {.doubled_quotes = true, .drop_trailing_blanks = true});
}

// A field of the capture record, which is quoted only where it has to be.
std::string CaptureField(std::string_view field) {
    return field.find_first_of(",\"\r\n") == std::string_view::npos ? std::string(field)
                                                                    : QuotedDoubling(field);
}

}  // namespace

DataFileReader::DataFileReader(const Files& files, const DataFile& layout)
    : DataFileReader(files.Open(files.Path(layout.name)), layout) {}

DataFileReader::DataFileReader(InputFile file, const DataFile& layout)
    : fields_(layout.fields), reader_(MakeReader(std::move(file), layout)) {}

bool DataFileReader::Next(std::vector<std::string>& record) {
    record.resize(fields_);
    if (auto* lines = std::get_if<LineReader>(&reader_)) return NextLines(*lines, record);
    return NextRow(std::get<FieldReader>(reader_), record);
}

bool DataFileReader::NextLines(LineReader& lines, std::vector<std::string>& record) const {
    for (std::size_t i = 0; i < fields_; ++i) {
        const bool found = lines.Next(record[i]);
        if (!found && i == 0) return false;
        if (!found || !lines.line_ended()) throw Truncated();
    }
    return true;
}

bool DataFileReader::NextRow(FieldReader& fields, std::vector<std::string>& record) const {
    if (fields.AtEnd()) return false;
    for (std::size_t i = 0; i < fields_; ++i) {
        record[i] = fields.Next();
        if (fields.end() == FieldEnd::kFile) throw Truncated();
        const bool last = i + 1 == fields_;
        if (fields.end() == (last ? FieldEnd::kLine : FieldEnd::kComma)) continue;
        throw Error(errors::kInvalidCall)
            .With(Place() + ": the row has not the " + std::to_string(fields_) + " fields of its file");
    }
    return true;
}

Error DataFileReader::Truncated() const {
    return Error(errors::kPastEndOfFile).With(Place() + ": the file ends within a record");
}

std::string DataFileReader::Place() const {
    if (const auto* lines = std::get_if<LineReader>(&reader_)) {
        return lines->name() + ", line " + std::to_string(lines->line_number());
    }
    return std::get<FieldReader>(reader_).Place();
}

std::optional<CaptureRecord> ReadCaptureRecord(const Files& files) {
    const std::string path = files.Path(data_files::kCaptureDetails.name);
    if (!files.Exists(path)) return std::nullopt;
    return ReadCaptureRecord(files.Open(path));
}

CaptureRecord ReadCaptureRecord(InputFile file) {
    DataFileReader reader(std::move(file), data_files::kCaptureDetails);
    std::vector<std::string> fields;
    if (!reader.Next(fields))
        throw Error(errors::kPastEndOfFile).With(reader.Place() + ": the file is empty");
    CaptureRecord record;
    record.captured = fields[0];
    record.tree = fields[1];
    record.container = fields[2];
    record.app_count = fields[3];
    for (std::size_t i = 0; i < record.totals.size(); ++i)
        record.totals[i] = fields[4 + i];
    record.mode = fields[10];
    return record;
}

std::string CapturedOrWritten(const Files& files) {
    const std::string path = files.Path(data_files::kCaptureDetails.name);
    try {
        std::string captured = FieldReader(files.Open(path)).Next();
        ParseDateAndTime(captured);
        return captured;
    } catch (const Error&) {
        return DateAndTime(files.Modified(path));
    }
}

std::string CaptureLine(const CaptureRecord& record) {
    std::string line = record.captured + ',' + CaptureField(record.tree) + ',' +
                       CaptureField(record.container) + ',' + record.app_count + ',';
    for (const std::string& total : record.totals)
        line += total + ',';
    return line + record.mode + "\r\n";
}

void WriteCaptureRecord(const Files& files, const CaptureRecord& record) {
    files.WriteInPlace(files.Path(data_files::kCaptureDetails.name),
                       [&](OutputFile& file) { file.Write(CaptureLine(record)); });
}

void RemoveCaptureRecord(const Files& files) {
    const std::string path = files.Path(data_files::kCaptureDetails.name);
    if (!files.Exists(path)) return;
    try {
        files.Remove(path);
    } catch (const Error& error) {
        throw OutputError(error);
    }
}

std::string DatasetName(std::string_view captured) {
    return "Zorvel_" + TimeStamp(ParseDateAndTime(captured)) + ".MDB";
}

}  // namespace zorvel
