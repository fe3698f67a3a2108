#include "analysis/run_files.h"

#include "platform/error.h"
#include "shell/formats.h"
#include "streams/text_helpers.h"

namespace zorvel {
namespace {

OutputFile CreateDataFile(const Files& files, const DataFile& layout) {
    return files.Create(files.Path(layout.name));
}

void WriteLines(OutputFile& file, std::initializer_list<std::string_view> fields) {
    for (const std::string_view field : fields)
        WriteFieldLine(file, field);
}

std::vector<OutputFile> CreateStreamFiles(const Files& files) {
    std::vector<OutputFile> created;
    for (const StreamRow& stream : kStreamTable) {
        if (stream.file != nullptr) created.push_back(CreateDataFile(files, *stream.file));
    }
    return created;
}

}  // namespace

RunFiles::RunFiles(const Files& files)
    : stream_files_(CreateStreamFiles(files)),
      issues_(CreateDataFile(files, data_files::kIssues)),
      attributes_(CreateDataFile(files, data_files::kAppDetails)),
      app_associations_(CreateDataFile(files, data_files::kAppAssociations)),
      associations_(CreateDataFile(files, data_files::kAssociations)) {}

OutputFile& RunFiles::StreamFile(const StreamRow& stream) {
    return stream_files_[static_cast<std::size_t>(&stream - kStreamTable.data())];
}

// Begins a comma row with quoted fields.
void RunFiles::QuoteRow(std::initializer_list<std::string_view> fields) {
    row_.clear();
    for (const std::string_view field : fields) {
        if (!row_.empty()) row_ += ',';
        AppendQuotedDoubling(row_, field);
    }
}

void RunFiles::WriteIssue(std::string_view full_name, std::string_view entry_type,
                          std::string_view target_file, std::string_view source_file,
                          std::string_view issue_code) {
    WriteLines(issues_, {full_name, entry_type, target_file, source_file, issue_code});
}

void RunFiles::WriteAttribute(std::string_view full_name, std::string_view attribute,
                              std::string_view value) {
    if (value.find('\r') == std::string_view::npos) {
        WriteLines(attributes_, {full_name, attribute, value});
    } else {
        WriteLines(attributes_, {full_name, attribute, CRLF2LF(value)});
    }
}

void RunFiles::WriteAssociation(std::string_view full_name, std::string_view user,
                                std::string_view association, std::string_view type) {
    QuoteRow({full_name, user, association, type});
    row_ += "\r\n";
    associations_.Write(row_);
}

void RunFiles::WriteAppAssociations(std::string_view full_name, std::string_view groups,
                                    std::string_view containers, std::string_view workstations,
                                    std::int32_t users, std::string_view fingerprint) {
    QuoteRow({full_name, groups, containers, workstations});
    row_ += ',' + PlainNumber(users) + ',';
    row_ += fingerprint;
    row_ += "\r\n";
    app_associations_.Write(row_);
}

void RunFiles::Close() {
    for (OutputFile& file : stream_files_)
        file.Close();
    for (OutputFile* file : {&issues_, &attributes_, &app_associations_, &associations_})
        file->Close();
}

}  // namespace zorvel
