#include "platform/write_in_place.h"

#include <string>
#include <system_error>

#include "platform/code_page.h"
#include "platform/new_file.h"

namespace zorvel {
namespace fs = std::filesystem;

void WriteInPlace(const fs::path& path, const std::function<void(OutputFile&)>& write) {
    const std::string name = FromUtf8(path.string());
    std::error_code ignored;
    const fs::file_status older = fs::status(path, ignored);
    // Pipes and devices are written to, never replaced; a folder refuses.
    if (fs::exists(older) && !fs::is_regular_file(older)) {
        OutputFile file(path, name, OutputFile::Mode::kTruncate);
        write(file);
        return file.Close();
    }
    NewFile made(path, name, OutputFile::Kind::kUserFile);
    write(made.file());
    made.file().Close();
    made.MoveIntoPlace();
}

}  // namespace zorvel
