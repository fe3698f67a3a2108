// What a Find run does beside reading: it searches the streams, and keeps a results file.
#pragma once

#include <string_view>

#include "streams/parse_context.h"

namespace zorvel {

class FindRun : public Finder {
  public:
    // The run begins: the match count is 0 and the results file is made.
    virtual void Start() = 0;
    // A stream of an application is about to be searched, and has been.
    virtual void BeginStream(std::string_view application_name, std::string_view full_name,
                             std::string_view stream_label) = 0;
    // EndStream keeps its errors for the next call of BeginStream or Finish.
    virtual void EndStream() noexcept = 0;
    // The run has ended: the results are completed and shown with their total.
    virtual void Finish() = 0;
};

}  // namespace zorvel
