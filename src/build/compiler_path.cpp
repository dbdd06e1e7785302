#include "build/compiler_path.h"

namespace gorbex {
namespace {

// The command begins with the quoted path of the executable.
std::string CompilerOf(const std::string& registeredCommand) {
  if (registeredCommand.size() < 2) return {};
  const auto quote = registeredCommand.find('"', 2);
  return registeredCommand.substr(1, quote == std::string::npos ? quote : quote - 1);
}

}  // namespace

std::string CompilerPath::RegisteredCommand() const {
  return registry_.fnsGetRegistryValue(kKey, "");
}

void CompilerPath::TakeRegistered() {
  window_.compilerPath = CompilerOf(RegisteredCommand());
}

void CompilerPath::Find() {
  TakeRegistered();
  if (!window_.compilerPath.empty()) return;
  const auto chosen = dialogs_.OpenFile(
      {"Please enter path to Visual Basic executable file", "Executables (*.exe)|*.exe", ""});
  if (chosen) {
    window_.compilerPath = *chosen;
  } else {
    dialogs_.Show({"You must specify the VB path if you want to compile projects"});
  }
}

}  // namespace gorbex
