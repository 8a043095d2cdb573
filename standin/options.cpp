#include "standin/options.h"

#include <CLI/CLI.hpp>
#include <sstream>

#include "platform/files.h"
#include "platform/format.h"
#include "platform/shared_library.h"
#include "standin/output.h"
#include "standin/statements.h"

namespace standin {
namespace {

constexpr char kSimulated[] = "sim:";
constexpr std::uint32_t kFirstModel = 11;
constexpr std::uint32_t kLastModel = 64;

// A whole number, decimal digits only.
bool ReadWhole(const std::string& text, std::uint32_t* number) {
  constexpr std::size_t kMostDigits = 9;
  if (text.empty() || text.size() > kMostDigits || text.find_first_not_of("0123456789") != std::string::npos) {
    return false;
  }
  *number = static_cast<std::uint32_t>(platform::ReadDecimal(text));
  return true;
}

// For the options that take one.
std::string CheckWhole(const std::string& text) {
  std::uint32_t number = 0;
  return ReadWhole(text, &number) ? "" : "\"" + text + "\" is no whole number";
}

bool IsModel(std::uint32_t model) {
  return model >= kFirstModel && model <= kLastModel;
}

// "sim:64,common,seed=3"
bool ReadSimulated(const std::string& text, DriveKind* kind) {
  const std::string rest = text.substr(sizeof kSimulated - 1);
  if (!rest.empty() && rest.back() == ',') return false;
  const std::vector<std::string> parts = CLI::detail::split(rest, ',');
  if (parts.empty() || !ReadWhole(parts[0], &kind->model)) return false;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (parts[i] == "common") {
      kind->common_header = true;
    } else if (parts[i].compare(0, 5, "seed=") != 0 || !ReadWhole(parts[i].substr(5), &kind->seed)) {
      return false;
    }
  }
  return IsModel(kind->model);
}

}  // namespace

bool ReadOptions(int argc, char** argv, Options* options, int* status) {
  CLI::App app("Stand-in host: runs the plug-in on a simulated drive, driven by statements.", "wtarn");
  app.allow_windows_style_options(false);
  options->plugin = platform::ProgramFolder() + "/" + platform::SharedLibraryFile("pelix");
  std::string drive = "sim:64";
  app.add_option("--plugin", options->plugin, "Plug-in library (default: beside this program)");
  app.add_option("--drive", drive, "sim:MODEL[,common][,seed=N], or a folder that --make-drive has written");
  app.add_option("--profile", options->profile, "Profile with the configuration (default: wtarn.ini)");
  app.add_option("--fault", options->faults, "COMMAND@N[+][=ECODE]: the N-th call of a host command fails")
      ->allow_extra_args(false);
  app.add_option("-e", options->statements, "Statement to run before the scripts")->allow_extra_args(false);
  app.add_option("SCRIPT", options->scripts, "Script files; - is standard input");
  CLI::Option* make_drive = app.add_option("--make-drive", options->make_drive, "Write a drive into a folder and end");
  CLI::Option* make_mcw = app.add_option("--make-mcw", options->make_mcw, "Write a drive's MCW image and end");
  std::string model;
  std::string seed;
  app.add_option("--model", model, "Model index of the drive to write, 11 to 64")->check(CheckWhole);
  app.add_flag("--common", options->drive.common_header, "The drive to write has the Common Header");
  app.add_option("--seed", seed, "Seed of the drive to write")->check(CheckWhole);
  app.set_version_flag("--version", "wtarn stand-in 1.0, plug-in interface 3");
  make_drive->excludes(make_mcw)->excludes("--drive");
  make_mcw->excludes("--drive");
  try {
    app.parse(argc, argv);
    const bool makes = make_drive->count() + make_mcw->count() > 0;
    if (makes && app.get_option("--model")->count() == 0) throw CLI::RequiredError("--model");
    for (const char* option : {"--model", "--common", "--seed"}) {
      if (!makes && app.get_option(option)->count() > 0) throw CLI::RequiresError(option, "--make-drive");
    }
    if (makes) {
      if ((options->make_drive + options->make_mcw).empty()) throw CLI::RequiredError("the name of what to write");
      ReadWhole(model, &options->drive.model);
      if (!seed.empty()) ReadWhole(seed, &options->drive.seed);
      if (IsModel(options->drive.model)) return true;
      throw CLI::ValidationError("--model", "models are 11 to 64");
    }
    if (drive.compare(0, sizeof kSimulated - 1, kSimulated) != 0) {
      options->drive_folder = drive;
    } else if (!ReadSimulated(drive, &options->drive)) {
      throw CLI::ValidationError("--drive", "a simulated drive reads sim:MODEL[,common][,seed=N], MODEL from 11 to 64");
    }
    return true;
  } catch (const CLI::ParseError& error) {
    std::ostringstream asked_for;
    std::ostringstream wrong;
    *status = app.exit(error, asked_for, wrong) == 0 ? 0 : kUsageStatus;
    if (!asked_for.str().empty()) Print(asked_for.str());
    if (*status != 0) Complain(wrong.str().substr(0, wrong.str().find_last_not_of('\n') + 1));
    return false;
  }
}

}  // namespace standin
