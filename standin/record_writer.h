// Building a record's bytes field by field. A record's end that nothing was put into is left out: it is zero.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/byte_view.h"

namespace standin {

enum class ByteOrder {
  kLittle,
  kBig,
  kWordSwapped,  // 32 bits: the high half first, each half least significant byte first
  kHalfSwapped,  // 32 bits: the low half first, each half most significant byte first
};

class RecordWriter {
 public:
  explicit RecordWriter(std::size_t size) : size_(size) {}

  std::vector<std::uint8_t> Take() { return std::move(bytes_); }
  // The record's whole size.
  std::size_t size() const { return size_; }
  bool Holds(std::size_t offset, std::size_t count) const { return offset <= size_ && count <= size_ - offset; }

  // Fields that do not fit the record are left out.
  void Put(std::size_t offset, std::size_t width, std::uint32_t value, ByteOrder order = ByteOrder::kLittle) {
    if (!Holds(offset, width)) return;
    if (bytes_.size() < offset + width) bytes_.resize(offset + width);
    std::uint8_t* at = bytes_.data() + offset;
    switch (order) {
      case ByteOrder::kLittle:
        platform::StoreLe(at, width, value);
        break;
      case ByteOrder::kBig:
        platform::StoreBe(at, width, value);
        break;
      case ByteOrder::kWordSwapped:
        platform::StoreLe(at, 2, value >> 16);
        platform::StoreLe(at + 2, 2, value);
        break;
      case ByteOrder::kHalfSwapped:
        platform::StoreBe(at, 2, value);
        platform::StoreBe(at + 2, 2, value >> 16);
        break;
    }
  }
  void PutText(std::size_t offset, const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) Put(offset + i, 1, static_cast<std::uint8_t>(text[i]));
  }

 private:
  std::size_t size_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace standin
