// Bytes from outside with the one bounds check of the whole program. Owns nothing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

class ByteView {
 public:
  constexpr ByteView() = default;
  constexpr ByteView(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  const std::uint8_t* data() const { return data_; }
  std::size_t size() const { return size_; }

  // Whether `count` bytes stand at `offset`.
  bool Holds(std::size_t offset, std::size_t count) const { return offset <= size_ && count <= size_ - offset; }

  // Number of `width` bytes (1 to 4) at `offset`; false and *value 0 when it does not lie inside.
  [[nodiscard]] bool Le(std::size_t offset, std::size_t width, std::uint32_t* value) const {
    *value = 0;
    if (!Holds(offset, width)) return false;
    for (std::size_t i = width; i-- > 0;) *value = *value << 8 | data_[offset + i];
    return true;
  }
  [[nodiscard]] bool Be(std::size_t offset, std::size_t width, std::uint32_t* value) const {
    *value = 0;
    if (!Holds(offset, width)) return false;
    for (std::size_t i = 0; i < width; ++i) *value = *value << 8 | data_[offset + i];
    return true;
  }

 private:
  const std::uint8_t* data_ = nullptr;
  std::size_t size_ = 0;
};

// Stores the low `width` bytes of a number, least significant first. The caller has room for them.
inline void StoreLe(std::uint8_t* to, std::size_t width, std::uint32_t value) {
  for (std::size_t i = 0; i < width; ++i, value >>= 8) to[i] = static_cast<std::uint8_t>(value);
}
inline void StoreBe(std::uint8_t* to, std::size_t width, std::uint32_t value) {
  for (std::size_t i = width; i-- > 0; value >>= 8) to[i] = static_cast<std::uint8_t>(value);
}

// Exchanges the two bytes of every 16-bit word in place; an odd last byte stays.
inline void SwapWords(std::uint8_t* data, std::size_t size) {
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    const std::uint8_t first = data[i];
    data[i] = data[i + 1];
    data[i + 1] = first;
  }
}

}  // namespace platform
