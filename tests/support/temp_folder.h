// A program folder of a test's own, removed with it.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace zorvel::test {

// The bytes of a file.
inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zorvel-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
        for (const char* folder : {"TempData", "Databases", "Reports", "Trees"}) {
            std::filesystem::create_directory(path_ / folder);
        }
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // Writes a file of the folder (`name` with "/"), byte for byte.
    void Write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    // The bytes of a file of the folder.
    std::string Read(const std::string& name) const { return ReadFile(path_ / name); }
    bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

  private:
    std::filesystem::path path_;
};

}  // namespace zorvel::test
