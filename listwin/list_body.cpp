#include "listwin/list_body.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>

#include "platform/byte_view.h"

namespace pelix {
namespace {

constexpr std::size_t kLongestLine = 1000;
constexpr std::size_t kReadAtOnce = 1024 * 1024;
constexpr std::chrono::milliseconds kWaitStep{10};

class BlockBody : public ListBody {
 public:
  BlockBody(std::span<const char> block, std::size_t lines) : block_(block) {
    const char* at = block.data();
    const char* const end = at + block.size();
    for (std::size_t i = 0; i < lines && at < end; ++i) {
      offsets_.Append(static_cast<std::uint32_t>(at - block.data()));
      const void* zero = std::memchr(at, '\0', static_cast<std::size_t>(end - at));
      at = zero == nullptr ? end : static_cast<const char*>(zero) + 1;
    }
  }

  std::size_t LineCount() override { return offsets_.size(); }
  bool IsStream() const override { return false; }
  bool WaitForLine(std::size_t) override { return true; }
  int Percent() override { return 100; }
  std::string Line(std::size_t line) override {
    if (line >= offsets_.size()) return "";
    const char* start = block_.data() + offsets_[line];
    return std::string(start, std::find(start, block_.data() + block_.size(), '\0'));
  }
  bool VisitLines(std::size_t first, std::size_t end, const Visitor& visit) override {
    for (std::size_t line = first; line < std::min(end, offsets_.size()); ++line) {
      if (!visit(Line(line))) return false;
    }
    return true;
  }

 private:
  std::span<const char> block_;
  LineOffsets offsets_;
};

// Finds where lines start in text that arrives in pieces, none of which ends between the two characters of a line end.
class LineScanner {
 public:
  // Notes in *starts, which has room for a start per byte, where the lines begin that this piece shows to be there;
  // how many.
  std::size_t Scan(const char* text, std::size_t size, std::uint32_t* starts) {
    std::uint32_t* next = starts;
    const char* const end = text + size;
    for (const char* at = text; at < end;) {
      const auto* found = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
      // The carriage return of a line end is no character of the line.
      const char* stop = found == nullptr ? end : found;
      if (stop > at && stop[-1] == '\r') --stop;
      const std::uint64_t stop_position = position_ + static_cast<std::uint64_t>(stop - text);
      if (!started_) *next++ = static_cast<std::uint32_t>(line_start_);
      // A line goes on after every 1000 characters.
      for (; stop_position - line_start_ > kLongestLine; *next++ = static_cast<std::uint32_t>(line_start_)) {
        line_start_ += kLongestLine;
      }
      started_ = found == nullptr;
      if (found == nullptr) break;
      line_start_ = position_ + static_cast<std::uint64_t>(found + 1 - text);
      at = found + 1;
    }
    position_ += size;
    return static_cast<std::size_t>(next - starts);
  }

 private:
  std::uint64_t position_ = 0;    // of the piece
  std::uint64_t line_start_ = 0;  // of the line, or of its last part, that the piece continues
  bool started_ = false;          // that start is noted
};

class StreamBody : public ListBody {
 public:
  StreamBody(platform::File file, std::uint64_t size, std::size_t lines)
      : file_(std::move(file)), size_(size), promised_(lines) {}
  ~StreamBody() override {
    stop_ = true;
    if (indexer_.joinable()) indexer_.join();
  }

  void Start(const std::string& index_file) {
    if (promised_ != kUnknownLineCount && !index_file.empty() && offsets_.Load(index_file, promised_, size_)) {
      complete_ = true;
    } else {
      indexer_ = std::thread([this] { IndexAll(); });
    }
  }

  std::size_t LineCount() override {
    const std::lock_guard lock(mutex_);
    if (promised_ == kUnknownLineCount) return offsets_.size();
    return complete_ ? std::min(promised_, offsets_.size()) : promised_;
  }
  bool IsStream() const override { return true; }
  bool WaitForLine(std::size_t line) override {
    std::unique_lock lock(mutex_);
    return grown_.wait_for(lock, kWaitStep, [&] { return complete_ || line < offsets_.size(); });
  }
  int Percent() override {
    const std::lock_guard lock(mutex_);
    return size_ == 0 ? 100 : static_cast<int>(indexed_ * 100 / size_);
  }
  std::string Line(std::size_t line) override {
    std::string text;
    VisitLines(line, line + 1, [&](const std::string& found) {
      text = found;
      return true;
    });
    return text;
  }
  bool VisitLines(std::size_t first, std::size_t end, const Visitor& visit) override;

 private:
  void IndexAll() noexcept;
  void Publish(std::span<const std::uint32_t> starts, std::size_t read, bool last);
  // Both under one lock: the two threads share the file's position.
  std::size_t ReadAt(std::uint64_t position, char* to, std::size_t size) {
    const std::lock_guard lock(mutex_);
    return file_.Seek(position) ? file_.ReadSome(to, size) : 0;
  }
  // Bytes where a line starts and where the one behind it does; false when the line is not there.
  bool Extent(std::size_t line, std::uint64_t* start, std::uint64_t* end) {
    const std::lock_guard lock(mutex_);
    if (line >= offsets_.size()) return false;
    *start = offsets_[line];
    *end = line + 1 < offsets_.size() ? offsets_[line + 1] : *start + kLongestLine + 2;
    return true;
  }

  std::mutex mutex_;  // over all below, and over every access to the file
  std::condition_variable grown_;
  platform::File file_;
  LineOffsets offsets_;
  std::uint64_t indexed_ = 0;  // bytes
  bool complete_ = false;

  const std::uint64_t size_;
  const std::size_t promised_;
  std::atomic<bool> stop_ = false;
  std::thread indexer_;
};

void StreamBody::IndexAll() noexcept {
  try {
    std::vector<char> text(kReadAtOnce);
    const std::unique_ptr<std::uint32_t[]> starts(new std::uint32_t[kReadAtOnce]);
    LineScanner scanner;
    for (std::uint64_t position = 0; !stop_;) {
      std::size_t read = ReadAt(position, text.data(), text.size());
      if (read > 1 && text[read - 1] == '\r' && position + read < size_) --read;  // what may be half a line end
      const std::size_t found = scanner.Scan(text.data(), read, starts.get());
      position += read;
      Publish({starts.get(), found}, read, read == 0 || position >= size_);
      if (read == 0 || position >= size_) return;
    }
  } catch (...) {
    // Out of memory: what is indexed by now is what there is to see.
    Publish({}, 0, true);
  }
}

void StreamBody::Publish(std::span<const std::uint32_t> starts, std::size_t read, bool last) {
  {
    const std::lock_guard lock(mutex_);
    offsets_.Append(starts.data(), starts.size());
    indexed_ += read;
    complete_ = last;
  }
  grown_.notify_all();
}

// Reads ahead in large pieces, so that a long list is not a seek for every line.
bool StreamBody::VisitLines(std::size_t first, std::size_t end, const Visitor& visit) {
  const std::size_t lines = std::min(end - first, kReadAtOnce);
  std::vector<char> text(std::min(kReadAtOnce, lines * (kLongestLine + 2)));
  std::uint64_t text_at = 0;
  std::size_t text_size = 0;
  for (std::size_t line = first; line < end; ++line) {
    while (!WaitForLine(line)) {
    }
    std::uint64_t start = 0;
    std::uint64_t stop = 0;
    if (!Extent(line, &start, &stop)) return false;
    stop = std::min(stop, start + text.size());
    if (start < text_at || stop > text_at + text_size) {
      text_at = start;
      text_size = ReadAt(start, text.data(), text.size());
    }
    const auto offset = static_cast<std::size_t>(start - text_at);
    const auto length = static_cast<std::size_t>(std::min(stop, text_at + text_size) - start);
    std::string content(text.data() + offset, length);
    content.resize(std::min(content.find('\n'), content.size()));
    if (!content.empty() && content.back() == '\r') content.pop_back();
    content.resize(std::min(content.size(), kLongestLine));
    if (!visit(content)) return false;
  }
  return true;
}

}  // namespace

void LineOffsets::Append(const std::uint32_t* offsets, std::size_t count) {
  while (count > 0) {
    const std::size_t used = size_ % kPiece;
    if (used == 0) pieces_.emplace_back(new std::uint32_t[kPiece]);
    const std::size_t taken = std::min(count, kPiece - used);
    std::copy_n(offsets, taken, pieces_.back().get() + used);
    size_ += taken;
    offsets += taken;
    count -= taken;
  }
}

bool LineOffsets::Load(const std::string& path, std::size_t lines, std::uint64_t limit) {
  pieces_.clear();
  size_ = 0;
  platform::File file = platform::File::Open(path, "rb");
  std::uint64_t size = 0;
  if (!file.Size(&size) || size != std::uint64_t{lines} * 4) return false;
  for (std::size_t line = 0; line < lines; ++line) {
    std::uint8_t bytes[4];
    std::uint32_t offset = 0;
    const bool good = file.Read(bytes, sizeof bytes) && platform::ByteView(bytes, sizeof bytes).Le(0, 4, &offset) &&
                      offset < limit && (line == 0 || offset > (*this)[line - 1]);
    if (!good) {
      pieces_.clear();
      size_ = 0;
      return false;
    }
    Append(offset);
  }
  return true;
}

std::unique_ptr<ListBody> MakeBlockBody(std::span<const char> block, std::size_t lines) {
  return std::make_unique<BlockBody>(block, lines);
}

std::unique_ptr<ListBody> OpenStreamBody(const std::string& path, std::size_t lines, const std::string& index_file) {
  platform::File file = platform::File::Open(path, "rb");
  std::uint64_t size = 0;
  if (!file.Size(&size) || size > 0xFFFF'FFFFu) return nullptr;
  auto body = std::make_unique<StreamBody>(std::move(file), size, lines);
  body->Start(index_file);
  return body;
}

}  // namespace pelix
