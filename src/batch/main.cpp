#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "batch/batch_program.h"
#include "batch/batch_window.h"
#include "paper/headless_pdf.h"
#include "platform/ending_signals.h"

int main(int argc, char** argv) {
    zorvel::OnEndingSignal(zorvel::BatchWindow::Interrupt);  // does what the ESC key does
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a full disk, not the end of the program

    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path folder = error ? std::filesystem::path(".") : program.parent_path();
    return zorvel::RunBatchProgram(std::vector<std::string>(argv + 1, argv + argc), folder,
                                   isatty(STDERR_FILENO) != 0, std::cout, std::cerr,
                                   zorvel::WritePdfWithoutDisplay);
}
