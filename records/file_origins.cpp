// Records in files: the MCF image, single record files and the MCW image.
#include <cstring>

#include "records/record_origin.h"

namespace pelix {
namespace {

constexpr char kNoMcfFile[] = "PELIX doesn't support this format.\nYou should check if this file is really MCF file.";
constexpr char kMcwIsReadOnly[] = "MCW file cannot be written";

std::string PlaceKey(const DirectoryEntry& entry) {
  std::string key(entry.name.bytes.begin(), entry.name.bytes.end());
  key += static_cast<char>(entry.Fid() >> 8);
  key += static_cast<char>(entry.Fid() & 0xFF);
  return key;
}

}  // namespace

Failure ReadFromFile(const std::string& path, std::uint64_t position, void* to, std::size_t bytes) {
  platform::File file = platform::File::Open(path, "rb");
  if (!file.IsOpen()) return kFileOpenFail;
  if (!file.Seek(position)) return kFileSeekFail;
  return file.Read(to, bytes) ? nullptr : kFileReadFail;
}

Failure WriteToFile(const std::string& path, const char* mode, std::uint64_t position, const void* from,
                    std::size_t bytes) {
  platform::File file = platform::File::Open(path, mode);
  if (!file.IsOpen()) return kFileOpenFail;
  if (!file.Seek(position)) return kFileSeekFail;
  const bool written = file.Write(from, bytes);
  return file.Close() && written ? nullptr : kFileWriteFail;
}

Failure McfOrigin::Open() {
  image_ = Directory();
  places_.clear();
  std::vector<std::uint8_t> header(kSectorBytes);
  if (const Failure failure = ReadFromFile(access_->image_file, 0, header.data(), header.size())) return failure;
  const ByteView first_sector(header.data(), header.size());
  const std::uint32_t sectors = Directory::HeaderSectors(first_sector);
  if (!Directory::HasSignature(first_sector) || sectors == 0) return kNoMcfFile;
  header.resize(std::size_t{sectors} * kSectorBytes);
  if (const Failure failure = ReadFromFile(access_->image_file, 0, header.data(), header.size())) return failure;
  image_ = Directory::Decode(ByteView(header.data(), header.size()));
  std::uint64_t position = header.size();
  for (const DirectoryEntry& entry : image_.entries()) {
    places_.try_emplace(PlaceKey(entry), Place{position, entry.size});
    position += std::uint64_t{entry.size} * kSectorBytes;
  }
  return nullptr;
}

Failure McfOrigin::Create(const Directory& directory) {
  const std::vector<std::uint8_t> header = directory.Encode();
  end_ = header.size();
  return WriteToFile(access_->image_file, "wb", 0, header.data(), header.size());
}

Failure McfOrigin::Append(DirectoryEntry* entry, const std::uint8_t* from) {
  const std::size_t bytes = std::size_t{entry->size} * kSectorBytes;
  entry->location = static_cast<std::uint16_t>(end_ / kSectorBytes);
  const Failure failure = WriteToFile(access_->image_file, "r+b", end_, from, bytes);
  end_ += bytes;
  return failure;
}

Failure McfOrigin::RewriteHeader(const Directory& directory) {
  const std::vector<std::uint8_t> header = directory.Encode();
  return WriteToFile(access_->image_file, "r+b", 0, header.data(), header.size());
}

Failure McfOrigin::FindPlace(const DirectoryEntry& entry, SectorRange range, std::uint64_t* position) const {
  const auto found = places_.find(PlaceKey(entry));
  if (found == places_.end()) return kNotInImage;
  // A directory that is not the image's own may give the record more room than the image holds for it.
  if (std::uint64_t{range.offset} + range.count > found->second.size) return kSizeMismatch;
  *position = found->second.position + range.OffsetBytes();
  return nullptr;
}

Failure McfOrigin::Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  std::uint64_t position = 0;
  if (const Failure failure = FindPlace(entry, range, &position)) return failure;
  return ReadFromFile(access_->image_file, position, to, range.Bytes());
}

Failure McfOrigin::Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) {
  std::uint64_t position = 0;
  if (const Failure failure = FindPlace(entry, range, &position)) return failure;
  return WriteToFile(access_->image_file, "r+b", position, from, range.Bytes());
}

Failure FileOrigin::Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  return ReadFromFile(entry.name.FileName(entry.IsSecondCopy()), range.OffsetBytes(), to, range.Bytes());
}

Failure FileOrigin::Write(const DirectoryEntry& entry, SectorRange range, std::uint8_t* from) {
  return WriteToFile(entry.name.FileName(entry.IsSecondCopy()), "wb", range.OffsetBytes(), from, range.Bytes());
}

Failure McwOrigin::Read(const DirectoryEntry& entry, SectorRange range, std::uint8_t* to) {
  if (entry.location == 0) return kNotInImage;
  // The offset counts bytes here, unlike everywhere else: tools in the field rely on it.
  const std::uint64_t position = std::uint64_t{entry.location} * kSectorBytes + range.offset;
  return ReadFromFile(access_->image_file, position, to, range.Bytes());
}

Failure McwOrigin::Write(const DirectoryEntry&, SectorRange, std::uint8_t*) {
  return kMcwIsReadOnly;
}

}  // namespace pelix
