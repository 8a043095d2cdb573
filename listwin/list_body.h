// The lines that a list window shows: a block in memory, or a text file that is read line by line.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "platform/files.h"

namespace pelix {

// Where lines start, 32 bits a line, in pieces that never move: a list of ten million lines takes 40 MB and no more.
class LineOffsets {
 public:
  std::size_t size() const { return size_; }
  std::uint32_t operator[](std::size_t line) const { return pieces_[line / kPiece][line % kPiece]; }
  void Append(const std::uint32_t* offsets, std::size_t count);
  void Append(std::uint32_t offset) { Append(&offset, 1); }
  // Replaces all by the content of an index file: `lines` numbers of 4 bytes, least significant byte first, rising
  // and below `limit`. False, and no offsets, when the file is not so.
  bool Load(const std::string& path, std::size_t lines, std::uint64_t limit);

 private:
  static constexpr std::size_t kPiece = 65536;
  std::vector<std::unique_ptr<std::uint32_t[]>> pieces_;
  std::size_t size_ = 0;
};

class ListBody {
 public:
  // Called with the text of a line; false ends the walk.
  using Visitor = std::function<bool(const std::string& line)>;

  virtual ~ListBody() = default;
  // Lines there are, or are said to be while a stream is still being indexed.
  virtual std::size_t LineCount() = 0;
  virtual bool IsStream() const = 0;
  // Waits at most 10 ms until that line can be shown. True when it can, or when it never will.
  virtual bool WaitForLine(std::size_t line) = 0;
  // How much of a stream is indexed.
  virtual int Percent() = 0;
  // Empty for a line that is not there.
  virtual std::string Line(std::size_t line) = 0;
  // Lines from `first` to before `end`, in order. False when the visitor or reading ended it early.
  virtual bool VisitLines(std::size_t first, std::size_t end, const Visitor& visit) = 0;
};

// Consecutive zero-terminated lines. At most `lines`; fewer when the block ends before. The block must outlive it.
std::unique_ptr<ListBody> MakeBlockBody(std::span<const char> block, std::size_t lines);

inline constexpr std::size_t kUnknownLineCount = 0;

// Lines of a text file, at most 1000 characters each: a longer one goes on in the next. Indexed in the background
// unless a valid index file is given. Null when the file cannot be opened, or is too long for 32-bit offsets.
std::unique_ptr<ListBody> OpenStreamBody(const std::string& path, std::size_t lines, const std::string& index_file);

}  // namespace pelix
