#include "platform/windows_path.h"

#include <algorithm>
#include <filesystem>

#include "core/text.h"
#include "platform/code_page.h"
#include "platform/linux/prefix.h"
#include "tests/fuzz/target.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {
namespace {

/// A prefix with few files and no way out but the drive of the host's root.
struct SmallPrefix {
  TemporaryFolder folder;
  Prefix prefix{folder.Path()};

  SmallPrefix() {
    folder.Put("drive_c/Group/Core/Core.vbp", "");
    folder.Put("drive_c/Group/core/Other.vbp", "");
    folder.Put("drive_c/\u00C4\u20AC.txt", "");
    folder.Put("dosdevices/unc/server/share/f.txt", "");
  }
};

void RequireNames(const ParsedPath& path) {
  for (const auto name : path.names) {
    Require(!name.empty() && name != "." && name != "..", "a path is resolved");
    Require(std::all_of(name.begin(), name.end(), IsNameCharacter), "a name is a possible one");
  }
}

// The start of a host path for a path that is not relative to the current folder.
std::string StartOf(const Prefix& prefix, const ParsedPath& path) {
  const std::string drive = path.drive == 0 ? "unc" : std::string(1, path.drive) + ":";
  return prefix.Root().native() + "/dosdevices/" + drive;
}

void RequireInside(const Prefix& prefix, const ParsedPath& path, const std::string& host) {
  const std::string start = StartOf(prefix, path);
  Require(host.starts_with(start), "a path stays in its drive");
  const auto rest = std::string_view(host).substr(start.size());
  Require(rest.empty() || rest.front() == '/', "a path stays in its drive");
  const auto names = Split(rest.substr(std::min<std::size_t>(rest.size(), 1)), '/');
  Require(names.size() == path.names.size(), "every name is one of the host's");
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto name = FromUtf8(names[i]);
    Require(name && EqualsIgnoringCase(*name, path.names[i]), "the host's name is the same");
  }
}

// Named from the host again, the path leads to the same file.
void RequireSameWayBack(const Prefix& prefix, const std::string& host) {
  const auto back = prefix.Existing(prefix.WindowsPath(host));
  Require(back && std::filesystem::equivalent(*back, host), "the host's path leads back");
}

}  // namespace

void ReadInput(std::string_view input) {
  static const SmallPrefix small;
  const auto path = ParseWindowsPath(input);
  if (path) RequireNames(*path);
  const auto target = small.prefix.Target(std::string(input));
  Require(path || !target, "an impossible path leads nowhere");
  if (!target || path->start == ParsedPath::Start::CurrentFolder) return;
  RequireInside(small.prefix, *path, *target);
  const auto existing = small.prefix.Existing(std::string(input));
  Require(!existing || *existing == *target, "what exists is the target");
  if (existing && path->drive == 'c') RequireSameWayBack(small.prefix, *existing);
}

}  // namespace gorbex::test
