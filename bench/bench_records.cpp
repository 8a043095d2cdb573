// Whole-record reads from an MCF image of 200 MB with 1,000 records, against a plain loop over the same bytes.
#include <cstdlib>
#include <vector>

#include "bench/measure.h"
#include "tests/support/plugin_test.h"

namespace pelix {
namespace {

constexpr std::uint32_t kRecords = 1000;
constexpr std::uint16_t kSectors = 400;
constexpr std::uint32_t kHeaderSectors = 32;
constexpr std::size_t kRecordBytes = std::size_t{kSectors} * 512;
constexpr char kImage[] = "big.mcf";

RecordName NameOf(std::uint32_t i) {
  return RecordName(platform::Format("R%07u", i).c_str());
}

void MakeImage() {
  std::vector<DirectoryEntry> entries(kRecords);
  for (std::uint32_t i = 0; i < kRecords; ++i) {
    entries[i].identifier = static_cast<FID_TYPE>(i + 1);
    entries[i].name = NameOf(i);
    entries[i].size = kSectors;
  }
  const std::vector<std::uint8_t> header = Directory(kHeaderSectors, std::move(entries)).Encode();
  platform::File file = platform::File::Open(kImage, "wb");
  bool written = file.Write(header.data(), header.size());
  for (std::uint32_t i = 0; i < kRecords && written; ++i) {
    const std::vector<std::uint8_t> record = RecordBytes(kRecordBytes).Pattern(0, static_cast<std::uint8_t>(i)).Get();
    written = file.Write(record.data(), record.size());
  }
  if (!file.Close() || !written) std::abort();
}

std::uint64_t checksum;  // so that no read is left out

void ReadPlainly() {
  std::vector<char> piece(64 * 1024);
  for (std::uint32_t i = 0; i < kRecords; ++i) {
    std::FILE* file = std::fopen(kImage, "rb");
    std::fseek(file, static_cast<long>(kHeaderSectors * 512 + i * kRecordBytes), SEEK_SET);
    for (std::size_t left = kRecordBytes; left > 0;) {
      const std::size_t got = std::fread(piece.data(), 1, std::min(left, piece.size()), file);
      if (got == 0) std::abort();
      checksum += static_cast<std::uint8_t>(piece[got - 1]);
      left -= got;
    }
    std::fclose(file);
  }
}

void FetchAll() {
  for (std::uint32_t i = 0; i < kRecords; ++i) {
    const Record record = g_records->FetchRecord(NameOf(i));
    if (!record) std::abort();
    checksum += record.bytes[record.size - 1];
  }
}

void ReadAllIntoOneBuffer() {
  std::vector<std::uint8_t> buffer(kRecordBytes);
  for (std::uint32_t i = 0; i < kRecords; ++i) {
    if (!g_records->ReadWhole(NameOf(i), buffer.data())) std::abort();
    checksum += buffer.back();
  }
}

void Look(std::uint32_t from, std::uint32_t times) {
  for (std::uint32_t i = 0; i < times; ++i) {
    checksum += g_records->FindEntry(NameOf(from + i % 10), 0, Report::kNo, false)->size;
  }
}

bool Run() {
  const EmptyFolder folder;
  std::string error;
  standin::Host::Instance().SetProfile("bench.ini");
  standin::Host::Instance().UseDrive({}, "", &error);
  StartUp();
  MakeImage();
  g_identity->access.mode = AccessMode::kMcf;
  g_identity->access.image_file = kImage;
  if (!g_records->LoadDirectory()) std::abort();
  constexpr int kRounds = 7;
  constexpr std::uint32_t kLookups = 200000;
  bool good = bench::Report("200 MB image, 1,000 records, FetchRecord", "plain loop",
                            bench::BestOf(kRounds, ReadPlainly, FetchAll), 1.1);
  good &= bench::Report("200 MB image, 1,000 records, ReadWhole", "plain loop",
                        bench::BestOf(kRounds, ReadPlainly, ReadAllIntoOneBuffer), 1.1);
  // All records have been read by now; what is looked up first and last must cost the same.
  good &= bench::Report("200,000 lookups among the last names", "the first",
                        bench::BestOf(
                            kRounds, [] { Look(0, kLookups); }, [] { Look(kRecords - 10, kLookups); }),
                        1.3);
  ShutDown();
  std::printf("(checksum %llu)\n", static_cast<unsigned long long>(checksum % 1000));
  return good;
}

}  // namespace
}  // namespace pelix

int main() {
  return pelix::Run() ? 0 : 1;
}
