// A lock on a file, by which programs on one or several machines tell each other what they use. The kernel
// releases it when its process ends, however that ends.
#pragma once

#include <filesystem>
#include <string>

namespace zorvel {

class FileLock {
  public:
    // Opens `path`, creating an empty file for its owner when there is none; `name` is what errors call it.
    // A file that may not be written is opened for reading. Raises error 70, 75 or 76, and 75 for what is no
    // ordinary file.
    FileLock(const std::filesystem::path& path, std::string name);
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    ~FileLock();

    // Takes the lock for this object alone; false when another has it, alone or shared.
    bool TryAlone();
    // Takes the lock together with others who share it, or shares it when this object has it alone. Waits for
    // one who has it alone.
    void Share();
    void Release();

    // Makes `text` the file's content.
    void Write(const std::string& text);
    // The file's content, as far as it fits into `size` bytes.
    std::string Read(std::size_t size) const;

  private:
    std::string name_;
    int descriptor_ = -1;
};

}  // namespace zorvel
