#include "streams/entry_output.h"

#include "shell/text_records.h"
#include "streams/issue_rule.h"
#include "streams/signature.h"

namespace zorvel {

EntryOutput::EntryOutput(const ParseContext& context, OutputFile& rows, std::string_view full_name,
                         std::int32_t& signature_total)
    : context_(context),
      rows_(rows),
      full_name_(full_name),
      name_line_(OneFieldLine(full_name) + "\r\n"),
      signature_total_(signature_total) {}

void EntryOutput::Issue(std::string_view entry_type, std::string_view target, std::string_view source,
                        std::string_view code) {
    if (code == kNoIssue) return;
    context_.issues.WriteIssue(full_name_, entry_type, target, source, code);
    Count(Counter::kIssues);
}

void EntryOutput::Row(std::initializer_list<std::string_view> fields) {
    rows_.Write(name_line_);
    RowWithoutName(fields);
}

void EntryOutput::RowWithoutName(std::initializer_list<std::string_view> fields) {
    for (const std::string_view field : fields)
        WriteFieldLine(rows_, field);
}

void EntryOutput::Sign(std::string& text) {
    signature_total_ = AddSignature(signature_total_, ConvertToSig(text));
}

void EntryOutput::Sign(std::initializer_list<std::string_view> parts) {
    Join(parts);
    Sign(joined_);
}

void EntryOutput::Find(char kind, std::initializer_list<std::string_view> parts) {
    if (context_.finder != nullptr) context_.finder->Find(kind, Join(parts));
}

const std::string& EntryOutput::Join(std::initializer_list<std::string_view> parts) {
    joined_.clear();
    for (const std::string_view part : parts)
        joined_ += part;
    return joined_;
}

}  // namespace zorvel
