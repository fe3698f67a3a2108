// The files of a run: open from its start to its end, one operation per kind of record.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/data_files.h"
#include "analysis/stream_table.h"
#include "platform/files.h"
#include "streams/parse_aot.h"

namespace zorvel {

// How an application reaches a user or a workstation, as the associations file names it.
namespace association_type {
inline constexpr std::string_view kUser = "User";
inline constexpr std::string_view kGroup = "Group";
inline constexpr std::string_view kContainer = "OU";
inline constexpr std::string_view kWorkstation = "WS";
}  // namespace association_type

// Every failure to create, write or close a file is an OutputError.
class RunFiles final : public IssueWriter {
  public:
    // Creates all files empty.
    explicit RunFiles(const Files& files);

    // The file of a stream's entries; the stream must have one.
    OutputFile& StreamFile(const StreamRow& stream);

    void WriteIssue(std::string_view full_name, std::string_view entry_type, std::string_view target_file,
                    std::string_view source_file, std::string_view issue_code) override;
    // `value` is written without its carriage returns.
    void WriteAttribute(std::string_view full_name, std::string_view attribute, std::string_view value);
    void WriteAssociation(std::string_view full_name, std::string_view user, std::string_view association,
                          std::string_view type);
    void WriteAppAssociations(std::string_view full_name, std::string_view groups,
                              std::string_view containers, std::string_view workstations, std::int32_t users,
                              std::string_view fingerprint);

    // Writes out and closes all files.
    void Close();

  private:
    void QuoteRow(std::initializer_list<std::string_view> fields);

    std::vector<OutputFile> stream_files_;  // in the order of kStreamTable
    OutputFile issues_;
    OutputFile attributes_;
    OutputFile app_associations_;
    OutputFile associations_;
    std::string row_;  // the comma row at hand
};

}  // namespace zorvel
