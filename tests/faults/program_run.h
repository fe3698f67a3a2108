// A program as a process, and the faults that it is given.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zorvel::test {

struct Outcome {
    int status = 0;  // the exit status, or the number of the signal that ended it, negative
    std::string output;
    std::string errors;
    std::string hit;  // the call that the fault met, or the number of calls; empty when it met none
};

// A program that runs with what it writes caught in files of `scratch`, a folder of its own that it does not
// work in.
class ProgramRun {
  public:
    // `fault` is what the shim is told ("kill 7"), for the calls that change files of `folder`; none when
    // empty.
    ProgramRun(std::vector<std::string> command, const std::filesystem::path& folder,
               const std::filesystem::path& scratch, const std::string& fault = {});

    // Waits for its end.
    Outcome Wait();

  private:
    std::filesystem::path scratch_;
    int id_ = -1;
};

}  // namespace zorvel::test
