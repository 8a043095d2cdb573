// Building bytes of records, tables and images by hand.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "platform/byte_view.h"
#include "platform/files.h"

namespace pelix {

class RecordBytes {
 public:
  explicit RecordBytes(std::size_t size) : bytes_(size) {}
  RecordBytes& Le(std::size_t offset, std::uint32_t value, std::size_t width) {
    platform::StoreLe(bytes_.data() + offset, width, value);
    return *this;
  }
  RecordBytes& Be(std::size_t offset, std::uint32_t value, std::size_t width) {
    platform::StoreBe(bytes_.data() + offset, width, value);
    return *this;
  }
  RecordBytes& Text(std::size_t offset, const std::string& text) {
    std::copy(text.begin(), text.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
    return *this;
  }
  // Bytes in which no two neighbours agree and none is zero by luck.
  RecordBytes& Pattern(std::size_t from, std::uint8_t seed) {
    for (std::size_t i = from; i < bytes_.size(); ++i) {
      bytes_[i] = static_cast<std::uint8_t>((i * 31 + i / 512 * 7 + seed) % 251 + 1);
    }
    return *this;
  }
  const std::vector<std::uint8_t>& Get() const { return bytes_; }
  platform::ByteView View() const { return {bytes_.data(), bytes_.size()}; }

 private:
  std::vector<std::uint8_t> bytes_;
};

// A raw FIT: words most significant byte first, descriptors from byte 32.
class FitBytes {
 public:
  explicit FitBytes(std::uint16_t sectors, std::uint16_t flags) : bytes_(std::size_t{sectors} * 512) {
    bytes_.Text(0, "FIT     ").Be(8, 1, 2).Be(10, flags, 2).Be(18, sectors, 2).Be(24, 32, 2);
  }
  FitBytes& Add(const std::string& name, std::uint16_t identifier, std::uint16_t location, std::uint16_t size,
                std::uint8_t cylinder = 0, std::uint8_t attributes = 0) {
    const std::size_t at = 32 + 16 * std::size_t{count_};
    bytes_.Be(at, identifier, 2).Text(at + 2, name).Be(at + 10, location, 2).Be(at + 12, size, 2);
    bytes_.Le(at + 14, cylinder, 1).Le(at + 15, attributes, 1).Be(20, ++count_, 2);
    return *this;
  }
  FitBytes& Count(std::uint16_t count) {
    bytes_.Be(20, count, 2);
    return *this;
  }
  const std::vector<std::uint8_t>& Get() const { return bytes_.Get(); }

 private:
  RecordBytes bytes_;
  std::uint16_t count_ = 0;
};

inline std::vector<std::uint8_t> FsiBytes(std::uint16_t fit_sectors) {
  return RecordBytes(512).Text(0, "FSI     ").Be(16, fit_sectors, 2).Get();
}

// Identify data of ten blocks with that firmware code and geometry.
inline RecordBytes IdentifyBytes(const std::string& code, std::uint16_t heads) {
  return RecordBytes(5120).Text(6, code).Le(30, heads, 2).Le(32, 1, 2).Le(36, 31, 4).Le(4918, 10, 2);
}

inline void WriteBytes(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  platform::File file = platform::File::Open(path, "wb");
  if (!bytes.empty()) (void)file.Write(bytes.data(), bytes.size());
}

inline std::string ReadText(const std::string& path) {
  std::string content;
  return platform::ReadWholeFile(path, 1u << 30, &content) ? content : "(no file)";
}

// A text file's content, whatever ends its lines.
inline std::string ReadLines(const std::string& path) {
  std::string text = ReadText(path);
  std::erase(text, '\r');
  return text;
}

inline void ForEachTruncation(platform::ByteView whole, const std::function<void(platform::ByteView)>& check) {
  for (std::size_t size = 0; size < whole.size(); ++size) check(platform::ByteView(whole.data(), size));
}

}  // namespace pelix
