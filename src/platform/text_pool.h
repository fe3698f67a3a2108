// Many small texts that live and die together, kept in large blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace zorvel {

class TextPool {
  public:
    // A copy of `text` that stays where it is until Clear or the end of the pool.
    std::string_view Keep(std::string_view text) {
        if (text.size() > room_) Grow(text.size());
        char* copy = next_;
        std::copy(text.begin(), text.end(), copy);
        next_ += text.size();
        room_ -= text.size();
        return {copy, text.size()};
    }

    void Clear() {
        blocks_.clear();
        next_ = nullptr;
        room_ = 0;
    }

  private:
    static constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

    void Grow(std::size_t needed) {
        room_ = std::max(needed, kBlockSize);
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(room_));
        next_ = blocks_.back().get();
    }

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t room_ = 0;
};

}  // namespace zorvel
