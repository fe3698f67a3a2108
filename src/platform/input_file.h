// Bytes read front to back: those of a file, through one buffer, or those of a text in memory.
#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvel {

class InputFile {
  public:
    static constexpr std::size_t kBufferSize = std::size_t{256} * 1024;

    // Opens `path`, an ordinary file; `name` is what errors call it. Raises error 53, 70, 75 or 76 when it
    // cannot be opened, and 75 for a folder, a pipe or a device.
    InputFile(const std::filesystem::path& path, std::string name);

    // Reads `bytes`, which must outlive the object, as if they stood in a file that errors call `name`.
    static InputFile OfBytes(std::string_view bytes, std::string name);

    // The next byte as 0 to 255, or -1 at the end of the file; Peek does not move on. Raises error 75 on a
    // read error.
    int Peek() { return at_ < end_ || Fill() ? static_cast<unsigned char>(bytes_[at_]) : -1; }
    int Get() {
        const int byte = Peek();
        if (byte >= 0) ++at_;
        return byte;
    }
    // The bytes at hand that were not yet taken, refilled when there are none; empty at the end of the
    // file.
    std::string_view Available();
    // Moves past `count` bytes of what Available gave.
    void Skip(std::size_t count) { at_ += count; }

    // All bytes up to the end of the file. Raises error 75 on a read error.
    std::string Rest();

    // Hands everything that is read from now on to `observer`, too, in the order of the file.
    void Observe(std::function<void(std::string_view bytes)> observer) { observer_ = std::move(observer); }

    const std::string& name() const { return name_; }

  private:
    InputFile() = default;

    bool Fill();

    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string name_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::vector<char> buffer_;     // of a file
    std::string_view in_memory_;   // without a file: the bytes that are still to come
    const char* bytes_ = nullptr;  // at hand, from at_ to end_
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    std::function<void(std::string_view)> observer_;
};

}  // namespace zorvel
