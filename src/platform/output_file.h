// A file written front to back through one buffer. Every failure is an OutputError.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

class OutputFile {
  public:
    static constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

    enum class Mode { kTruncate, kAppend };
    // Whose file it is. The program's own are made for their owner alone, and are ordinary files: a pipe or a
    // device in their place is refused at once. What the user saves follows the umask and may be either.
    enum class Kind { kProgramFile, kUserFile };

    // Opens `path`, creating it when it does not exist; `name` is what errors call it.
    // Raises error 61, 70, 75 or 76 (a missing folder).
    OutputFile(const std::filesystem::path& path, std::string name, Mode mode, Kind kind = Kind::kUserFile);
    // Hands what is written to `take` instead, a part at a time; `take` raises the file's errors.
    OutputFile(std::function<void(std::string_view bytes)> take, std::string name);
    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&& other) noexcept;
    // Closes the file; a failure is lost here, so call Close first where it matters.
    ~OutputFile();

    // Appends bytes. Raises error 61 or 75 when the buffer had to be written out and could not be.
    void Write(std::string_view bytes) {
        if (bytes.size() > buffer_.size() - used_) MakeRoom(bytes.size());
        std::copy(bytes.begin(), bytes.end(), buffer_.data() + used_);
        used_ += bytes.size();
    }
    void Write(char byte) { Write(std::string_view(&byte, 1)); }

    // Hands what is buffered to the operating system.
    void Flush();
    // Does the same, and waits until it is on the disk.
    void Sync();
    // Writes out the buffer and closes the file. Does nothing on a closed file.
    void Close();

    const std::string& name() const { return name_; }

  private:
    void MakeRoom(std::size_t size);

    std::string name_;
    int descriptor_ = -1;  // -1 for a closed file, and with take_
    std::function<void(std::string_view)> take_;
    std::vector<char> buffer_;  // kBufferSize from the first write on, more for a larger one
    std::size_t used_ = 0;
};

}  // namespace zorvel
