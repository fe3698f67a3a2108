// How a run deals with errors that it does not expect: it reports them and goes on.
#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/interruption.h"
#include "shell/services.h"

namespace zorvel {

// True for an error that leaves a run nothing to do: a failure of its files, or of the whole directory.
bool EndsRun(const Error& error);

class RunErrors {
  public:
    explicit RunErrors(Services& services);

    // Runs one step of the run; `line` is its number, for the report. An error is reported and the answer is
    // false, except for one that ends the run, which is raised.
    template <typename Operation>
    bool Try(int line, Operation operation) {
        try {
            operation();
            return true;
        } catch (const Interrupted&) {
            throw;
        } catch (...) {
            const Error error = CurrentError();
            if (EndsRun(error)) throw;
            Report(error, line, " - continuing");
            return false;
        }
    }

    // The same for a step at `part` of `object`, which the log names.
    template <typename Operation>
    bool TryAt(int line, std::string_view object, std::string_view part, Operation operation) {
        return Try(line, [&] {
            try {
                operation();
            } catch (const Error& error) {
                if (EndsRun(error)) throw;
                throw error.Within(std::string(object) + ", " + std::string(part));
            }
        });
    }

    // Sounds the warning, and tells the user and the log of an error in step `line`; `consequence` ends the
    // log line.
    void Report(const Error& error, int line, std::string_view consequence);

  private:
    Services& services_;
};

}  // namespace zorvel
