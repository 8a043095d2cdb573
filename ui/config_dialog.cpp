#include "ui/config_dialog.h"

#include "drive/commands.h"
#include "drive/drive_identity.h"
#include "drive/host_services.h"
#include "platform/prompts.h"
#include "records/record_source.h"
#include "ui/main_window.h"

namespace pelix {
namespace {

using platform::ControlKind;

enum ControlId : int {
  kDiskMode = 1029,
  kMcfMode = 1030,
  kFileMode = 1031,
  kUpdateSpeed = 1032,
  kUpdateWedges = 1033,
  kUseMcfs = 1034,
  kSpeed = 1035,
  kWedges = 1036,
  kIdentify = 1037,
  kSendReset = 1038,
  kBrowseImage = 1039,
  kUpdateModel = 1040,
  kImagePath = 1041,
  kDriveInformation = 1042,
  kDefaultModel = 1043,
  kUseDirectoryFile = 1044,
  kDirectoryPath = 1045,
  kBrowseDirectory = 1046,
  kDisplaySerial = 1077,
  kMcwMode = 1078,
};

constexpr char kTitle[] = "PELIX Configuration";

// In the order in which the tabulator key visits them.
constexpr platform::ControlDescription kControls[] = {
    {kDiskMode, ControlKind::kRadio, "DISK I/O"},
    {kMcfMode, ControlKind::kRadio, "MCF I/O"},
    {kFileMode, ControlKind::kRadio, "FILE I/O"},
    {kMcwMode, ControlKind::kRadio, "MCW I/O"},
    {kImagePath, ControlKind::kEdit, "MCF File"},
    {kBrowseImage, ControlKind::kButton, "Browse"},
    {kUpdateSpeed, ControlKind::kCheck, "Update RPM automatically"},
    {kSpeed, ControlKind::kEdit, "RPM"},
    {kUpdateWedges, ControlKind::kCheck, "Update servo wedge number automatically"},
    {kWedges, ControlKind::kEdit, "Servo Wedge #"},
    {kUpdateModel, ControlKind::kCheck, "Update model"},
    {kDefaultModel, ControlKind::kEdit, "Default Model"},
    {kUseMcfs, ControlKind::kCheck, "Use MCFS"},
    {kDisplaySerial, ControlKind::kCheck, "Display serial number"},
    {kUseDirectoryFile, ControlKind::kCheck, "Use MCFS directory file"},
    {kDirectoryPath, ControlKind::kEdit, "MCFS Directory File"},
    {kBrowseDirectory, ControlKind::kButton, "Browse"},
    {kDriveInformation, ControlKind::kMultilineEdit, "Drive Information"},
    {kIdentify, ControlKind::kButton, "Identify"},
    {kSendReset, ControlKind::kButton, "Send Reset"},
    {platform::kDialogOk, ControlKind::kButton, "OK"},
    {platform::kDialogCancel, ControlKind::kButton, "Cancel"},
};

struct ModeRadio {
  AccessMode mode;
  int id;
};
// OK looks at them in this order; FILE I/O is what remains.
constexpr ModeRadio kModeRadios[] = {
    {AccessMode::kDisk, kDiskMode},
    {AccessMode::kMcf, kMcfMode},
    {AccessMode::kMcw, kMcwMode},
    {AccessMode::kFile, kFileMode},
};

struct CheckBox {
  int id;
  bool DriveIdentity::*flag;
};
constexpr CheckBox kCheckBoxes[] = {
    {kUpdateSpeed, &DriveIdentity::update_spindle_speed},
    {kUpdateWedges, &DriveIdentity::update_servo_wedges},
    {kUseMcfs, &DriveIdentity::use_mcfs},
    {kUpdateModel, &DriveIdentity::update_model},
    {kDisplaySerial, &DriveIdentity::display_serial_number},
    {kUseDirectoryFile, &DriveIdentity::use_directory_file},
};

class ConfigDialog : public platform::DialogEvents {
 public:
  explicit ConfigDialog(DriveIdentity* identity) : identity_(*identity) {}
  void Show() { dialog_.RunModal(kConfigDialogResource, kTitle, kControls, this); }

 private:
  void OnOpen() override;
  void OnClick(int id) override;

  void HandleClick(int id);
  void EnableControls();
  AccessMode SelectedMode() const;
  void Apply();
  void BrowseFor(int edit, const char* extension, const char* filter);
  void IdentifyAndTell();

  DriveIdentity& identity_;
  platform::Dialog dialog_;
};

void ConfigDialog::OnOpen() {
  for (const ModeRadio& radio : kModeRadios) dialog_.SetChecked(radio.id, radio.mode == identity_.access.mode);
  for (const CheckBox& box : kCheckBoxes) dialog_.SetChecked(box.id, identity_.*box.flag);
  dialog_.SetText(kImagePath, identity_.access.image_file);
  dialog_.SetText(kDirectoryPath, identity_.access.directory_file);
  dialog_.SetText(kSpeed, platform::Format("%d", identity_.spindle_speed));
  dialog_.SetText(kWedges, platform::Format("%d", identity_.servo_wedges));
  dialog_.SetText(kDefaultModel, FamilyNameOf(identity_.model_index));
  EnableControls();
}

AccessMode ConfigDialog::SelectedMode() const {
  for (const ModeRadio& radio : kModeRadios) {
    if (dialog_.IsChecked(radio.id)) return radio.mode;
  }
  return AccessMode::kFile;
}

void ConfigDialog::EnableControls() {
  const AccessMode mode = SelectedMode();
  const bool from_drive = mode == AccessMode::kDisk;
  const bool from_image = mode == AccessMode::kMcf || mode == AccessMode::kMcw;
  const bool from_directory_file = from_drive && dialog_.IsChecked(kUseDirectoryFile);
  dialog_.Enable(kSpeed, !dialog_.IsChecked(kUpdateSpeed));
  dialog_.Enable(kWedges, !dialog_.IsChecked(kUpdateWedges));
  dialog_.Enable(kDefaultModel, !dialog_.IsChecked(kUpdateModel));
  dialog_.Enable(kImagePath, from_image);
  dialog_.Enable(kBrowseImage, from_image);
  dialog_.Enable(kUseDirectoryFile, from_drive);
  dialog_.Enable(kDirectoryPath, from_directory_file);
  dialog_.Enable(kBrowseDirectory, from_directory_file);
}

void ConfigDialog::OnClick(int id) {
  Guarded([&] { HandleClick(id); });
}

void ConfigDialog::HandleClick(int id) {
  switch (id) {
    case kBrowseImage:
      return BrowseFor(kImagePath, "*.mcf", "MCFS Files (*.mcf)|*.mcf|MCW File(*.dat)|*.dat||");
    case kBrowseDirectory:
      return BrowseFor(kDirectoryPath, "*.mcd", "MCFS Directory Files (*.mcd)|*.mcd||");
    case kSendReset:
      ResetDrive();
      return;
    case kIdentify:
      return IdentifyAndTell();
    case platform::kDialogCancel:
      return dialog_.End(platform::kDialogCancel);
    case platform::kDialogOk:
      Apply();
      if (g_main_window) g_main_window->Run();
      return dialog_.End(platform::kDialogOk);
    default:
      return EnableControls();
  }
}

void ConfigDialog::BrowseFor(int edit, const char* extension, const char* filter) {
  std::string path;
  if (platform::AskFileToOpen({"Open", extension, filter}, &path)) dialog_.SetText(edit, path);
}

void ConfigDialog::Apply() {
  for (const CheckBox& box : kCheckBoxes) identity_.*box.flag = dialog_.IsChecked(box.id);
  identity_.spindle_speed = platform::ReadDecimal(dialog_.Text(kSpeed));
  identity_.servo_wedges = platform::ReadDecimal(dialog_.Text(kWedges));
  identity_.model_index = ModelIndexByName(dialog_.Text(kDefaultModel));
  identity_.access.image_file = dialog_.Text(kImagePath);
  identity_.access.directory_file = dialog_.Text(kDirectoryPath);
  switch (SelectedMode()) {
    case AccessMode::kDisk:
      identity_.access.mode = AccessMode::kDisk;
      break;
    case AccessMode::kMcf:
      g_records->SwitchToMcf();
      break;
    case AccessMode::kMcw:
      g_records->SwitchToMcw();
      break;
    case AccessMode::kFile:
      identity_.access.mode = AccessMode::kFile;
      break;
  }
}

void ConfigDialog::IdentifyAndTell() {
  Apply();
  if (!pelix::Identify(&identity_, false)) return;
  const C_DRIVEVUINFO* drive = DriveInfo();
  std::string text =
      platform::Format("Model ID : %s\r\n", platform::WithoutTrailingBlanks(identity_.family_name).c_str());
  text += platform::Format("Model Name : %s\r\n", ModelName().c_str());
  text += platform::Format("F/W Version : %s (%s)\r\n", FirmwareVersion().c_str(), FirmwareCode().c_str());
  text += platform::Format("Serial Number : %s\r\n", SerialNumber().c_str());
  text += platform::Format("Zone Number : %d\r\n", drive->zones);
  text += platform::Format("Head Number : %d\r\n", drive->heads);
  text += platform::Format("User Area : From Cylinder%u", drive->last_reserved_cylinder + 1);
  dialog_.SetText(kDriveInformation, text);
}

// The host's resources are current while the object lives.
class ResourceModuleScope {
 public:
  explicit ResourceModuleScope(std::uintptr_t module) : before_(platform::InstallResourceModule(module)) {}
  ~ResourceModuleScope() { platform::InstallResourceModule(before_); }
  ResourceModuleScope(const ResourceModuleScope&) = delete;
  ResourceModuleScope& operator=(const ResourceModuleScope&) = delete;

 private:
  std::uintptr_t before_;
};

}  // namespace

std::span<const platform::ControlDescription> ConfigDialogControls() {
  return kControls;
}

void ShowConfigDialog() {
  const ResourceModuleScope resources(g_host->resource_module);
  ConfigDialog(&*g_identity).Show();
}

}  // namespace pelix
