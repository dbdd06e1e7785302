#include "platform/linux/wine.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <chrono>
#include <system_error>
#include <vector>

#include "platform/code_page.h"
#include "platform/linux/child_process.h"
#include "platform/linux/host_file.h"

namespace gorbex {
namespace {

constexpr auto kPatience = std::chrono::seconds(60);

std::string WholeOf(const Descriptor& file) {
  std::string bytes;
  const auto size = lseek(file.Number(), 0, SEEK_END);
  if (size > 0) bytes.resize(static_cast<std::size_t>(size));
  const auto count = pread(file.Number(), bytes.data(), bytes.size(), 0);
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

// The output of the tool; nothing when it fails or takes too long.
std::optional<std::string> Hear(ChildStart start) {
  const Descriptor heard(memfd_create("registry", MFD_CLOEXEC));
  const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
  if (heard.Number() < 0 || nowhere.Number() < 0) return std::nullopt;
  start.output = heard.Number();
  start.errorOutput = nowhere.Number();
  ChildProcess process(start);
  const auto code = process.ExitCode(kPatience);
  if (!code) process.Terminate();
  return code == 0U ? std::optional(WholeOf(heard)) : std::nullopt;
}

std::vector<std::string> EnvironmentFor(const Prefix& prefix) {
  return EnvironmentWith({{"WINEPREFIX", prefix.Root().native()}, {"WINEDEBUG", "-all"}});
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
  try {
    // The signal that does nothing reaches a server that is there.
    return Hear({{*server, "-k0"}, EnvironmentFor(prefix)}).has_value();
  } catch (const std::system_error&) {
    return false;
  }
}

std::optional<std::string> ExportWineKey(const Prefix& prefix, const std::string& key) {
  const auto wine = FindWine();
  if (!wine) return std::nullopt;
  try {
    const ChildStart start{{*wine, "regedit", "/E", "-", ToUtf8(key)}, EnvironmentFor(prefix)};
    auto said = Hear(start);
    // Instead of an export there is a message that the key does not exist.
    if (said && !said->starts_with("\xFF\xFE")) said->clear();
    return said;
  } catch (const std::system_error&) {
    return std::nullopt;
  }
}

}  // namespace gorbex
