#include "standin/setup.h"

#include "standin/host.h"
#include "standin/output.h"
#include "standin/statements.h"

namespace standin {

bool WroteDrive(const Options& options, int* status) {
  if (options.make_drive.empty() && options.make_mcw.empty()) return false;
  std::string error = "cannot write \"" + options.make_mcw + "\"";
  const bool written = options.make_mcw.empty() ? WriteDriveFolder(options.make_drive, options.drive, &error)
                                                : WriteMcwImage(options.make_mcw, DriveDesign(options.drive));
  if (!written) Complain(error);
  *status = written ? 0 : kCannotRun;
  return true;
}

bool SetUpHost(const Options& options, int* status) {
  Host& host = Host::Instance();
  for (const std::string& rule : options.faults) {
    if (host.AddFault(rule)) continue;
    Complain("a fault rule reads COMMAND@N[+][=ECODE], not \"" + rule + "\"");
    *status = kUsageStatus;
    return false;
  }
  std::string error;
  host.SetProfile(options.profile);
  if (host.UseDrive(options.drive, options.drive_folder, &error)) return true;
  Complain(error);
  *status = kCannotRun;
  return false;
}

}  // namespace standin
