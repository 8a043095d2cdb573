// The stand-in host: the drive in use, the script machine and its symbols, fault rules. The programs set it up; the
// plug-in sees it through the host's interface alone.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/commands.h"
#include "standin/sim_drive.h"

namespace standin {

// The N-th call of a host command fails, or with `onwards` every call from the N-th on.
struct FaultRule {
  std::string command;  // in upper case: "PHRD", "IDENTIFY", …; "ANY" counts all commands together
  std::uint32_t call = 1;
  bool onwards = false;
  ECODE code = kInjected;
};

class HOST_API Host {
 public:
  static Host& Instance();

  // Puts a drive under test; the one before goes away.
  bool UseDrive(const DriveKind& kind, const std::string& folder, std::string* error);
  void SetProfile(const std::string& path);
  const std::string& profile() const { return profile_; }

  // Reads "COMMAND@N[+][=ECODE]". False for anything else, or a command that the host does not have.
  bool AddFault(const std::string& rule);
  void ClearFaults();
  // Counts a call of the command; true, and the code, when a rule makes it fail.
  bool Fails(const char* command, ECODE* code);
  // Calls of a command so far, of all with "ANY".
  std::uint32_t call_count(const std::string& command) const { return calls_[command]; }
  // The command flags as they were at the last call.
  HostWord flags_at_last_call() const { return flags_at_last_call_; }

  SimDrive& drive() { return *drive_; }
  C_VM* vm() { return &vm_; }
  TARN_VM_STRUCT* request() { return &request_; }

  // Script arguments as a plug-in's command receives them, from 1: a number has a text and a text a value too. Valid
  // until the next call.
  void SetArgument(std::size_t number, const std::string& text);
  void SetArgument(std::size_t number, std::int32_t value);
  void SetRegister(int number, std::int32_t value);
  SymbolNode* FindSymbol(const std::string& name);

  // Geometry of the drive, or of the identify data that was processed last; empty when that holds no zones.
  DriveGeometry identified_geometry;

 private:
  Host();

  struct Symbol {
    SymbolNode node;
    std::string text;
  };

  std::unique_ptr<SimDrive> drive_;
  C_VM vm_{};
  TARN_VM_STRUCT request_{};
  IDENTIFY_RECORD identify_{};
  C_DRIVEVUINFO drive_info_{};
  std::map<std::string, Symbol> symbols_;
  std::string profile_;
  std::vector<FaultRule> faults_;
  mutable std::map<std::string, std::uint32_t> calls_;
  HostWord flags_at_last_call_ = 0;
};

}  // namespace standin
