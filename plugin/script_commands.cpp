#include "plugin/script_commands.h"

#include <algorithm>
#include <exception>
#include <string>

#include "drive/host_services.h"
#include "drive/output_names.h"
#include "listwin/list_window.h"
#include "platform/files.h"
#include "plugin/application.h"
#include "ui/main_window.h"
#include "ui/requests.h"

namespace pelix {
namespace {

constexpr std::size_t kLongestFolder = 260;
constexpr char kTextExtension[] = ".txt";
constexpr char kPictureExtension[] = ".gif";

std::string TextArgument(const C_VM* vm, std::size_t number) {
  const SymbolNode* symbol = vm->arguments[number - 1];
  return symbol == nullptr || symbol->text == nullptr ? "" : symbol->text;
}

std::uint32_t NumberArgument(const C_VM* vm, std::size_t number) {
  const SymbolNode* symbol = vm->arguments[number - 1];
  return symbol == nullptr ? 0 : static_cast<std::uint32_t>(symbol->value);
}

std::string FolderOr(const std::string& given) {
  return given.empty() ? NumberedFolder(g_script_state->folder_counter) : given.substr(0, kLongestFolder);
}

// Runs the leaf at a menu path with its output appended to the file.
bool RunMenuPath(const std::string& menu_path, const std::string& file_path) {
  platform::File file = platform::File::Open(file_path, "a");
  if (!file.IsOpen() || !g_main_window) return false;
  const MainWindow::Item item = platform::FindTreeItem(g_main_window->Walk(), menu_path);
  const ActionEntry* action = item == nullptr ? nullptr : g_main_window->ActionOf(item);
  if (action == nullptr) return false;
  {
    const ValueScope<platform::File*> output(&g_script_output, &file);
    if (!g_main_window->RunAction(ActionEntry(*action))) return false;
  }
  (void)file.Write(std::string(70, '-') + "\n");
  return file.Close();
}

RequestBlock MakeRequestBlock(C_VM* vm, const std::string& file, const std::string& folder) {
  RequestBlock block = {};
  for (int i = 0; i < 14; ++i) {
    const SymbolNode* symbol = vm->GetSymbolData(platform::Format("::R%d", i).c_str());
    if (symbol != nullptr) block.registers[i] = symbol->value;
  }
  block.file = file.c_str();
  block.folder = folder.c_str();
  return block;
}

std::int32_t RemoveDataFile(const std::string& path) {
  if (platform::RemoveFile(path) == platform::RemoveResult::kFailed) {
    Output("cannot remove \"%s\".\n", path.c_str());
    return kFailed;
  }
  Output("\"%s\" was removed.\n", path.c_str());
  return kDone;
}

// With nobody at the screen, from the identification on: a message box would stop the script for good.
std::int32_t GetData(C_VM* vm) {
  const SwitchScope quiet(&g_host->interactive, false);
  const SwitchScope still(&g_host->progress, false);
  const std::string request = TextArgument(vm, 1);
  const std::string given_folder = TextArgument(vm, 2);
  const std::string given_file = TextArgument(vm, 3);
  RunMainWindow();
  const std::string folder = FolderOr(given_folder);
  const std::string path = given_file.empty() ? NumberedFile(folder, g_script_state->file_counter, kTextExtension)
                                              : platform::Format("%s\\%s", folder.c_str(), given_file.c_str());
  if (request.empty()) return RemoveDataFile(path);
  if (!platform::MakeFolder(folder)) {
    Output("fail - cannot create \"%s\".\n", folder.c_str());
    return kNoFolder;
  }
  const RequestBlock block = MakeRequestBlock(vm, path, folder);
  Output("Adding \"%s\" into \"%s\" : ", request.c_str(), path.c_str());
  std::uintptr_t code = 0;
  bool done = false;
  if (FindRequest(request, &code)) {
    done = g_main_window &&
           g_main_window->SendPrivateMessage(kRequestMessage, code, reinterpret_cast<std::uintptr_t>(&block)) == 0;
  } else {
    done = RunMenuPath(request, path);
  }
  Output(done ? "done.\n" : "fail.\n");
  return done ? kDone : kFailed;
}

std::int32_t SetStepMask(C_VM* vm) {
  ScriptState& state = *g_script_state;
  const std::uint32_t step = std::min(NumberArgument(vm, 2), kBurnInSteps - 1);
  // Steps count from 1; step 0 has no flag.
  switch (NumberArgument(vm, 1)) {
    case 0:
      if (step > 0) state.step_mask[step - 1] = 1;
      break;
    case 1:
      if (step > 0) state.step_mask[step - 1] = 0;
      break;
    case 2:
      state.step_mask.fill(1);
      break;
    case 3:
      state.step_mask.fill(0);
      break;
    default:
      break;
  }
  const auto last = std::find(state.step_mask.rbegin(), state.step_mask.rend(), 1u);
  state.highest_step = static_cast<std::uint32_t>(state.step_mask.rend() - last);
  return kDone;
}

std::int32_t StartNewFile(C_VM* vm, const char* extension) {
  const std::string folder = FolderOr(TextArgument(vm, 1));
  g_script_state->file_counter = FirstFreeFile(folder, extension);
  Output("New file name for data is %s\n", NumberedFile(folder, g_script_state->file_counter, extension).c_str());
  return kDone;
}

std::int32_t StartNewDataFile(C_VM* vm) {
  return StartNewFile(vm, kTextExtension);
}

std::int32_t StartNewPictureFile(C_VM* vm) {
  return StartNewFile(vm, kPictureExtension);
}

std::int32_t StartNewDataFolder(C_VM*) {
  g_script_state->folder_counter = FirstFreeFolder();
  Output("New directory name for data is %s\n", NumberedFolder(g_script_state->folder_counter).c_str());
  return kDone;
}

// Nothing may be thrown into the host.
template <std::int32_t (*kCommand)(C_VM*)>
std::int32_t Guarded(C_VM* vm) {
  if (!g_script_state || vm == nullptr) return kFailed;  // start-up had failed, or there is no script
  try {
    return kCommand(vm);
  } catch (const std::exception&) {
    return kFailed;
  }
}

constexpr HostWord kHostCodeA = 265;
constexpr HostWord kHostCodeB = 302;  // plus the number of arguments

constexpr PLUGIN_COMMAND Row(const char* name, HostWord arguments, std::int32_t (*handler)(C_VM*)) {
  return {arguments << 16, name, handler, kHostCodeA, kHostCodeB + arguments};
}

}  // namespace

const PLUGIN_COMMAND kCommandTable[] = {
    Row("pelixgetdata", 3, Guarded<GetData>),
    Row("pelixstepmask", 2, Guarded<SetStepMask>),
    Row("pelixnewdatafile", 1, Guarded<StartNewDataFile>),
    Row("pelixnewgiffile", 1, Guarded<StartNewPictureFile>),
    Row("pelixnewdatadir", 0, Guarded<StartNewDataFolder>),
    {},
};

}  // namespace pelix
