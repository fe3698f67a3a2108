#include "platform/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/error.h"
#include "platform/ordinary_file.h"

namespace zorvel {

InputFile::InputFile(const std::filesystem::path& path, std::string name)
    : name_(std::move(name)), buffer_(kBufferSize) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) throw FileError(errno, name_);
    if (!IsOrdinaryFile(descriptor)) {
        ::close(descriptor);
        throw NoOrdinaryFile(name_);
    }
    file_.reset(::fdopen(descriptor, "rb"));
    if (!file_) {
        ::close(descriptor);
        throw Error(errors::kOutOfMemory);
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

InputFile InputFile::OfBytes(std::string_view bytes, std::string name) {
    InputFile file;
    file.name_ = std::move(name);
    file.in_memory_ = bytes;
    return file;
}

bool InputFile::Fill() {
    at_ = 0;
    if (file_) {
        bytes_ = buffer_.data();
        end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
        if (end_ == 0 && std::ferror(file_.get()) != 0) throw FileError(errno, name_);
    } else {
        bytes_ = in_memory_.data();
        end_ = std::exchange(in_memory_, {}).size();
    }
    if (observer_) observer_({bytes_, end_});
    return end_ > 0;
}

std::string_view InputFile::Available() {
    if (at_ == end_ && !Fill()) return {};
    return {bytes_ + at_, end_ - at_};
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
