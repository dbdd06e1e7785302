#include "platform/linux/wine.h"

#include <chrono>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/linux/child_process.h"
#include "platform/linux/tool.h"

namespace gorbex {
namespace {

// The output of the tool; nothing when it fails or takes too long.
std::optional<std::string> Hear(const Prefix& prefix, const std::string& program,
                                std::vector<std::string> arguments) {
  ToolCall call{program, std::move(arguments), "C:\\"};
  call.environment = {{"WINEPREFIX", prefix.Root().native()}, {"WINEDEBUG", "-all"}};
  call.patience = std::chrono::seconds(60);
  const auto outcome = LinuxToolRunner(prefix).Run(call);
  const auto* result = std::get_if<ToolResult>(&outcome);
  return result != nullptr && result->exitCode == 0 ? std::optional(result->output) : std::nullopt;
}

}  // namespace

std::optional<std::string> FindWine() {
  auto wine = FindOnHost("wine");
  return wine ? wine : FindOnHost("wine64");
}

bool IsWineRunning(const Prefix& prefix) {
  auto server = FindOnHost("wineserver");
  if (!server) server = FindOnHost("wineserver64");
  if (!server || !prefix.IsWine()) return false;
  // The signal that does nothing reaches a server that is there.
  return Hear(prefix, *server, {"-k0"}).has_value();
}

std::optional<std::string> ExportWineKey(const Prefix& prefix, const std::string& key) {
  const auto wine = FindWine();
  if (!wine) return std::nullopt;
  auto said = Hear(prefix, *wine, {"regedit", "/E", "-", ToUtf8(key)});
  // Instead of an export there is a message that the key does not exist.
  if (said && !said->starts_with("\xFF\xFE")) said->clear();
  return said;
}

}  // namespace gorbex
