// Bytes that grow to any size without standing in memory twice, and numbers packed into them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace zorvel {

// Large buffers grow and shrink with realloc, which moves their pages instead of copying them. The bytes stay
// where they are when the buffer is moved.
class ByteBuffer {
  public:
    ByteBuffer() = default;
    ByteBuffer(ByteBuffer&& other) noexcept { Swap(other); }
    ByteBuffer& operator=(ByteBuffer&& other) noexcept {
        ByteBuffer taken(std::move(other));
        Swap(taken);
        return *this;
    }
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    ~ByteBuffer() = default;

    char* data() { return bytes_.get(); }
    const char* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    std::string_view view() const { return {bytes_.get(), size_}; }
    // The number of bytes that can be appended while those there stay where they are.
    std::size_t room() const { return capacity_ - size_; }

    void Append(std::string_view bytes) {
        if (bytes.empty()) return;
        if (bytes.size() > room()) SetCapacity(std::max({size_ + bytes.size(), capacity_ * 2, kSmallest}));
        std::memcpy(bytes_.get() + size_, bytes.data(), bytes.size());
        size_ += bytes.size();
    }
    // Makes room for exactly `size` bytes in an empty buffer.
    void Reserve(std::size_t size) { SetCapacity(size); }
    // Keeps `size` of the bytes, from `begin` on, and no room for more.
    void CutTo(std::size_t begin, std::size_t size) {
        if (begin > 0) std::memmove(bytes_.get(), bytes_.get() + begin, size);
        size_ = size;
        SetCapacity(size);
    }
    void RemoveLast() { --size_; }
    // Empties the buffer; the memory of a large one is given back.
    void Clear() {
        size_ = 0;
        if (capacity_ > kKept) SetCapacity(0);
    }

  private:
    static constexpr std::size_t kSmallest = 64;
    static constexpr std::size_t kKept = std::size_t{1024} * 1024;

    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void SetCapacity(std::size_t capacity) {
        if (capacity == 0) {
            bytes_.reset();
        } else {
            void* const moved = std::realloc(bytes_.get(), capacity);
            if (moved == nullptr) throw std::bad_alloc();
            static_cast<void>(bytes_.release());
            bytes_.reset(static_cast<char*>(moved));
        }
        capacity_ = capacity;
    }
    void Swap(ByteBuffer& other) noexcept {
        bytes_.swap(other.bytes_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Appends a number, seven bits a byte, the lowest first; the high bit says that more follow.
inline void AppendNumber(ByteBuffer& to, std::uint64_t number) {
    std::array<char, 10> bytes{};
    std::size_t size = 0;
    for (; number >= 0x80; number >>= 7)
        bytes[size++] = static_cast<char>(number | 0x80);
    bytes[size++] = static_cast<char>(number);
    to.Append({bytes.data(), size});
}

// Reads the number at `from`, and moves past it.
inline std::uint64_t TakeNumber(const char*& from) {
    std::uint64_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*from++);
        number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if (byte < 0x80) return number;
    }
}

}  // namespace zorvel
