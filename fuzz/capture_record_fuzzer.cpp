// Reads arbitrary bytes as a capture record: one that a run can write reads the same when it is written
// again.
#include <algorithm>
#include <string>
#include <string_view>

#include "analysis/data_files.h"
#include "fuzz_input.h"

namespace zorvel::fuzz {
namespace {

bool IsPlain(std::string_view text) {
    return text.find_first_of(",\"\r\n \t") == std::string_view::npos;
}

// The record has no quotes that would keep the blanks around a name.
bool IsTrimmed(std::string_view name) {
    constexpr std::string_view kBlanks = " \t";
    return name.empty() || (kBlanks.find(name.front()) == std::string_view::npos &&
                            kBlanks.find(name.back()) == std::string_view::npos);
}

// Date and numbers are written as they stand.
bool IsWritable(const CaptureRecord& record) {
    const bool dated =
        Readable({errors::kTypeMismatch}, [&] { return DatasetName(record.captured); }).has_value();
    return dated && IsTrimmed(record.tree) && IsTrimmed(record.container) && IsPlain(record.app_count) &&
           IsPlain(record.mode) && std::all_of(record.totals.begin(), record.totals.end(), IsPlain);
}

}  // namespace

void TestOneInput(std::string_view input) {
    const auto record = Readable({errors::kInvalidCall, errors::kPastEndOfFile},
                                 [&] { return ReadCaptureRecord(AsFile(input)); });
    if (!record || !IsWritable(*record)) return;
    const CaptureRecord again = ReadCaptureRecord(AsFile(CaptureLine(*record)));
    Require(again.captured == record->captured && again.tree == record->tree);
    Require(again.container == record->container && again.app_count == record->app_count);
    Require(again.totals == record->totals && again.mode == record->mode);
    const std::string name = DatasetName(record->captured);
    Require(name.size() == std::string_view("Zorvel_YYMMDDHHMMSS.MDB").size());
    Require(name.find_first_of("/\\") == std::string::npos);
}

}  // namespace zorvel::fuzz
