#include "platform/input_file.h"

#include <cerrno>
#include <utility>

#include "platform/error.h"

namespace zorvel {

InputFile::InputFile(const std::filesystem::path& path, std::string name)
    : name_(std::move(name)), file_(std::fopen(path.c_str(), "rbe")), buffer_(kBufferSize) {
    if (!file_) throw FileError(errno, name_);
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

bool InputFile::Fill() {
    at_ = 0;
    end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (end_ == 0 && std::ferror(file_.get()) != 0) throw FileError(errno, name_);
    return end_ > 0;
}

std::string_view InputFile::Available() {
    if (at_ == end_ && !Fill()) return {};
    return {buffer_.data() + at_, end_ - at_};
}

std::string InputFile::Rest() {
    std::string text;
    for (std::string_view bytes = Available(); !bytes.empty(); bytes = Available()) {
        text += bytes;
        Skip(bytes.size());
    }
    return text;
}

}  // namespace zorvel
