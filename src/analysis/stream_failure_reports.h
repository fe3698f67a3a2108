// What the user and the log are told of a stream that cannot be decoded, and the dump file of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "shell/services.h"
#include "streams/stream_failures.h"

namespace zorvel {

class StreamFailureReports final : public StreamFailures {
  public:
    // Those of one run, which waits `wait` seconds at each decoding error.
    StreamFailureReports(Services& services, double wait);

    // Decoding errors handled so far.
    std::int32_t count() const { return count_; }

    void RefuseStream() override;
    // Waits, writes the dump file when the options ask for it, reports a decoding error to the user and in
    // the log, and counts it. Error 430 stops the whole run instead. A dump file that cannot be written is
    // reported, too.
    bool Handle(const Error& error, const ParsePlace& place) override;

  private:
    // Writes the dump file and gives its path; an empty text when none is wanted or it could not be written.
    std::string CreateDump(const ParsePlace& place);
    std::string NewDumpPath();
    void WriteDump(const std::string& dump_file, const ParsePlace& place) const;
    void ReportLostDump(const std::string& dump_file, const Error& error);
    // `dump_file` is empty when there is none.
    std::string Advice(const std::string& dump_file) const;
    void Report(const Error& error, const ParsePlace& place, const std::string& advice);
    void Warn(const std::string& advice);

    Services& services_;
    const double wait_;
    std::unordered_map<std::string, int> dumps_;  // how many dump files the run made, by their second
    bool lost_dump_told_ = false;                 // the user knows that dump files cannot be written
    std::int32_t count_ = 0;
};

}  // namespace zorvel
