// The temporary data files: the one place that knows their names and layouts, for the run that writes them
// and the import that reads them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "shell/text_records.h"

namespace zorvel {

// How the records of a data file lie in it.
enum class RecordStyle {
    kLines,  // one field a line, ended by CR LF; values may hold line feeds
    // One record a line, fields separated by commas; texts between quotes, inner quotes doubled. The capture
    // record has quotes only where it needs them.
    kCommaRow,
};

struct DataFile {
    std::string_view name;  // relative to the program folder
    RecordStyle style;
    std::size_t fields;  // per record
};

namespace data_files {
inline constexpr DataFile kAppDetails{R"(TempData\Zorvel_AppDetails.CSV)", RecordStyle::kLines, 3};
inline constexpr DataFile kIssues{R"(TempData\Zorvel_Issues.CSV)", RecordStyle::kLines, 5};
inline constexpr DataFile kAssociations{R"(TempData\Zorvel_Associations.CSV)", RecordStyle::kCommaRow, 4};
inline constexpr DataFile kAppAssociations{R"(TempData\Zorvel_AppAssociations.CSV)", RecordStyle::kCommaRow,
                                           6};
inline constexpr DataFile kCaptureDetails{R"(TempData\Zorvel_CaptureDetails.CSV)", RecordStyle::kCommaRow,
                                          11};
inline constexpr DataFile kMacros{R"(TempData\Zorvel_Macros.CSV)", RecordStyle::kLines, 5};
inline constexpr DataFile kCopyFiles{R"(TempData\Zorvel_CopyFiles.CSV)", RecordStyle::kLines, 4};
inline constexpr DataFile kCopyFilesAlways{R"(TempData\Zorvel_CopyFilesAlways.CSV)", RecordStyle::kLines, 4};
inline constexpr DataFile kRegistrySettings{R"(TempData\Zorvel_RegistrySettings.CSV)", RecordStyle::kLines,
                                            5};
inline constexpr DataFile kRegistrySettingsAlways{R"(TempData\Zorvel_RegistrySettingsAlways.CSV)",
                                                  RecordStyle::kLines, 5};
inline constexpr DataFile kINISettings{R"(TempData\Zorvel_INISettings.CSV)", RecordStyle::kLines, 6};
inline constexpr DataFile kINISettingsAlways{R"(TempData\Zorvel_INISettingsAlways.CSV)", RecordStyle::kLines,
                                             6};
inline constexpr DataFile kTextFiles{R"(TempData\Zorvel_TextFiles.CSV)", RecordStyle::kLines, 5};
inline constexpr DataFile kTextFilesAlways{R"(TempData\Zorvel_TextFilesAlways.CSV)", RecordStyle::kLines, 5};
inline constexpr DataFile kEnvironmentSettings{R"(TempData\Zorvel_EnvironmentSettings.CSV)",
                                               RecordStyle::kLines, 3};
}  // namespace data_files

// Reads the records of a data file in file order.
class DataFileReader {
  public:
    // Opens the file. Raises error 53 when it is missing, or another file error.
    DataFileReader(const Files& files, const DataFile& layout);
    // Reads what lies in `file` in the layout.
    DataFileReader(InputFile file, const DataFile& layout);

    // Reads the next record, one text a field; false at the end of the file.
    // Raises error 62 when the file ends within a record, or without the line end of its last one; error 5
    // when a comma row has not exactly the layout's fields.
    bool Next(std::vector<std::string>& record);
    // "file, line N" of the record read last, for error texts.
    std::string Place() const;

  private:
    bool NextLines(LineReader& lines, std::vector<std::string>& record) const;
    bool NextRow(FieldReader& fields, std::vector<std::string>& record) const;
    Error Truncated() const;

    std::size_t fields_;
    std::variant<FieldReader, LineReader> reader_;
};

// The one record that a finished run leaves behind, as texts.
struct CaptureRecord {
    std::string captured;               // "dd/mm/yyyy hh:mm:ss" at the end of the run
    std::string tree;                   // of the last application read
    std::string container;              // full name, or "[Multiple OUs]"
    std::string app_count;              // applications read ("#": zero is empty)
    std::array<std::string, 6> totals;  // the run's counters ("#")
    std::string mode;                   // "Zorvelrun" or "Find"
};

// The capture record, or nothing when the last run did not finish. Raises a file error, or 5 or 62 for a
// record that is not whole.
std::optional<CaptureRecord> ReadCaptureRecord(const Files& files);
CaptureRecord ReadCaptureRecord(InputFile file);
// When the run of a capture record ended, as far as the file tells: its first field or, when that is no date,
// the time at which the file was written. Raises error 53 when there is no capture record.
std::string CapturedOrWritten(const Files& files);
// The line that holds a capture record in its file.
std::string CaptureLine(const CaptureRecord& record);
// Writes the capture record, whole at every moment, or raises an OutputError.
void WriteCaptureRecord(const Files& files, const CaptureRecord& record);
// Deletes the capture record, if there is one. Raises an OutputError.
void RemoveCaptureRecord(const Files& files);

// The name of the dataset database of a run: "Zorvel_" + YYMMDDHHMMSS + ".MDB".
// Raises error 13 when `captured` is not a date and time.
std::string DatasetName(std::string_view captured);

}  // namespace zorvel
