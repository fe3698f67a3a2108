// How a run deals with errors that it does not expect: it reports them and goes on.
#pragma once

#include "platform/error.h"
#include "shell/services.h"

namespace zorvel {

class RunErrors {
  public:
    explicit RunErrors(Services& services);

    // Runs one step of the run; `line` is its number, for the report. An error is reported and the answer is
    // false. An OutputError is raised: without its files a run has no use.
    template <typename Operation>
    bool Try(int line, Operation operation) {
        try {
            operation();
            return true;
        } catch (const OutputError&) {
            throw;
        } catch (...) {
            Report(CurrentError(), line, " - continuing");
            return false;
        }
    }

    // Sounds the warning, and tells the user and the log of an error in step `line`; `consequence` ends the
    // log line.
    void Report(const Error& error, int line, std::string_view consequence);

  private:
    Services& services_;
};

}  // namespace zorvel
