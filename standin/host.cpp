#include "standin/host.h"

#include <algorithm>
#include <cstdlib>

#include "host/application.h"
#include "platform/files.h"
#include "platform/format.h"

namespace standin {
namespace {

// What a fault rule may name.
constexpr const char* kCommands[] = {"ANY",   "IDENTIFY", "TASKFILE", "MCFS_READRECORD",
                                     "RESET", "SMRT",     "PHRD",     "PHWR",
                                     "PHRV",  "SEEK",     "RDBUF",    "WRBUF",
                                     "OFFT",  "STRY",     "SHRR",     "SECC",
                                     "CHRR",  "CHRW",     "RDXW",     "WRXW",
                                     "FMTU"};
constexpr int kRegisters = 14;

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), platform::UpperAscii);
  return text;
}

// A whole number, decimal or with "0x" in front; false for anything else.
bool ReadNumber(const std::string& text, std::uint32_t* value) {
  if (text.empty() || text[0] < '0' || text[0] > '9') return false;
  char* end = nullptr;
  const unsigned long long number = std::strtoull(text.c_str(), &end, 0);
  *value = static_cast<std::uint32_t>(number);
  return *end == '\0' && number <= 0xFFFFFFFFu;
}

}  // namespace

Host::Host() {
  request_.flags = kFlagBit1 | kFlagBit14;
  request_.identify = &identify_;
  request_.drive_info = &drive_info_;
  vm_.request = &request_;
  const char* const kArguments[] = {"argument 1", "argument 2", "argument 3"};
  for (int i = 0; i < 3; ++i) vm_.arguments[i] = &symbols_[kArguments[i]].node;
  for (int i = 0; i < kRegisters; ++i) symbols_[platform::Format("::R%d", i)].node.DataInt(0);
}

Host& Host::Instance() {
  // Never destroyed: a plug-in may still be unloading while the program ends.
  static Host& host = *new Host;
  return host;
}

bool Host::UseDrive(const DriveKind& kind, const std::string& folder, std::string* error) {
  std::unique_ptr<SimDrive> drive = SimDrive::Open(kind, folder, error);
  if (drive == nullptr) return false;
  drive_ = std::move(drive);
  // The host has asked the drive what it is before it loads a plug-in.
  const DriveKind& found = drive_->design().kind;
  identify_ = {};
  SerialNumberOf(found).copy(identify_.serial_number, sizeof identify_.serial_number - 1);
  FirmwareVersionOf(found).copy(identify_.firmware_version, sizeof identify_.firmware_version - 1);
  ModelNameOf(found).copy(identify_.model_name, sizeof identify_.model_name - 1);
  identified_geometry = drive_->design().geometry;
  return true;
}

void Host::SetProfile(const std::string& path) {
  profile_ = platform::FullPath(path);
}

bool Host::AddFault(const std::string& text) {
  FaultRule rule;
  const std::size_t at = text.find('@');
  const std::size_t equals = std::min(text.find('=', at == std::string::npos ? 0 : at), text.size());
  if (at == std::string::npos || equals < at) return false;
  rule.command = Upper(text.substr(0, at));
  std::string number = text.substr(at + 1, equals - at - 1);
  rule.onwards = !number.empty() && number.back() == '+';
  if (rule.onwards) number.pop_back();
  if (rule.command == "TASKFILE") rule.code = kStatusBusy;
  if (std::find(std::begin(kCommands), std::end(kCommands), rule.command) == std::end(kCommands)) return false;
  if (!ReadNumber(number, &rule.call) || rule.call == 0) return false;
  if (equals < text.size() && !ReadNumber(text.substr(equals + 1), &rule.code)) return false;
  faults_.push_back(rule);
  return true;
}

void Host::ClearFaults() {
  faults_.clear();
  calls_.clear();
}

bool Host::Fails(const char* command, ECODE* code) {
  flags_at_last_call_ = request_.flags;
  const std::uint32_t call = ++calls_[command];
  const std::uint32_t any = ++calls_["ANY"];
  for (const FaultRule& rule : faults_) {
    const bool counts_all = rule.command == "ANY";
    if (!counts_all && rule.command != command) continue;
    const std::uint32_t now = counts_all ? any : call;
    if (now != rule.call && !(rule.onwards && now > rule.call)) continue;
    *code = rule.code;
    return true;
  }
  return false;
}

void Host::SetArgument(std::size_t number, const std::string& text) {
  Symbol& symbol = symbols_[platform::Format("argument %zu", number)];
  symbol.text = text;
  symbol.node.value = static_cast<std::uint32_t>(platform::ReadDecimal(text));
  symbol.node.text = symbol.text.c_str();
}

void Host::SetArgument(std::size_t number, std::int32_t value) {
  SetArgument(number, platform::Format("%d", value));
  vm_.arguments[number - 1]->value = static_cast<std::uint32_t>(value);
}

void Host::SetRegister(int number, std::int32_t value) {
  symbols_[platform::Format("::R%d", number)].node.DataInt(value);
}

SymbolNode* Host::FindSymbol(const std::string& name) {
  const auto found = symbols_.find(name);
  return found == symbols_.end() ? nullptr : &found->second.node;
}

}  // namespace standin

void SymbolNode::DataInt(std::int32_t number) {
  value = static_cast<std::uint32_t>(number);
  text = nullptr;
}

SymbolNode* C_VM::GetSymbolData(const char* name) {
  return standin::Host::Instance().FindSymbol(name);
}

C_VM* GetVM() {
  return standin::Host::Instance().vm();
}

TARN_VM_STRUCT* GetVMstruct() {
  return standin::Host::Instance().request();
}

const char* GetProfileFileName() {
  return standin::Host::Instance().profile().c_str();
}
