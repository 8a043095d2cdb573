// Images, directory files and record files of any content: loading the directory and reading the records.
//
// Input: byte 0 the kind of source; then, for record files, identify data, FSI and FIT one behind the other; for the
// rest the image. The identified drive has as many heads as byte 1 says, where the input gives none itself.
#include <cstring>

#include "drive/commands.h"
#include "fuzz/fuzz_sandbox.h"
#include "platform/automation.h"
#include "plugin/application.h"
#include "records/record_source.h"
#include "standin/host.h"

namespace {

using pelix::AccessMode;

constexpr std::size_t kIdentifyBytes = 64;

void WriteFile(const char* path, const std::uint8_t* data, std::size_t size) {
  platform::File file = platform::File::Open(path, "wb");
  if (!file.Write(data, size)) std::abort();
}

void ReadEverything() {
  if (pelix::g_records->directory() == nullptr) return;
  const std::vector<pelix::DirectoryEntry> entries = pelix::g_records->directory()->entries();
  int huge = 0;  // records whose size is a lie cost memory, not insight
  for (std::size_t i = 0; i < entries.size() && i < 40; ++i) {
    if (entries[i].size > 256 && ++huge > 1) continue;
    const pelix::Record record = pelix::g_records->FetchRecord(entries[i].name, 0, entries[i].IsSecondCopy());
    std::uint8_t sector[512];
    pelix::g_records->ReadSectors(entries[i], {entries[i].size / 2u, 1}, sector);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::EnterSandbox();
  std::string error;
  standin::Host::Instance().SetProfile("fuzz.ini");
  standin::Host::Instance().UseDrive({}, "", &error);
  pelix::StartUp();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  pelix::DriveIdentity& identity = *pelix::g_identity;
  const int kind = data[0] % 4;
  pelix::DriveInfo()->heads = data[1];
  identity.access.image_file = "image";
  identity.access.directory_file = "image";
  identity.use_directory_file = kind == 3;
  data += 2;
  size -= 2;
  if (kind == 2) {
    const std::size_t identify = std::min(kIdentifyBytes, size);
    const std::size_t fsi = std::min<std::size_t>(512, size - identify);
    WriteFile("VU_IDFY.bin", data, identify);
    WriteFile("FSI.bin", data + identify, fsi);
    WriteFile("FIT.bin", data + identify + fsi, size - identify - fsi);
    identity.access.mode = AccessMode::kFile;
    pelix::Identify(&identity, true);
  } else {
    WriteFile("image", data, size);
    identity.access.mode = kind == 0 ? AccessMode::kMcf : kind == 1 ? AccessMode::kMcw : AccessMode::kDisk;
    // An error log out of its place ends the program on purpose: not a finding.
    if (kind == 3 && memmem(data, size, "ERLOG", 5) != nullptr) return 0;
    if (kind == 3 && memmem(data, size, "EL", 2) != nullptr) return 0;
    pelix::g_records->LoadDirectory();
  }
  ReadEverything();
  return 0;
}
