#include "platform/git/initialisation_file.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Editors that save as UTF-8 say so with a mark; all other files are in the code page.
std::string TextOf(std::string bytes) {
  if (!bytes.starts_with(kByteOrderMark)) return bytes;
  bytes.erase(0, kByteOrderMark.size());
  return FromUtf8(bytes).value_or(bytes);
}

std::optional<GitSettings> Parse(std::string_view text) {
  std::optional<GitSettings> settings;
  bool isGit = false;
  while (!text.empty()) {
    const auto line = Trimmed(text.substr(0, text.find('\n')));
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    if (line.starts_with('[')) {
      isGit = EqualsIgnoringCase(line, "[git]");
      if (isGit && !settings) settings.emplace();
    }
    const auto equals = line.find('=');
    if (!isGit || equals == std::string_view::npos || line.find_first_of(";#") == 0) continue;
    const auto key = Trimmed(line.substr(0, equals));
    const auto value = std::string(Trimmed(line.substr(equals + 1)));
    if (EqualsIgnoringCase(key, "worktree")) settings->worktree = value;
    if (EqualsIgnoringCase(key, "branch")) settings->branch = value;
    if (EqualsIgnoringCase(key, "remote") && !value.empty()) settings->remote = value;
  }
  return settings;
}

bool IsAbsolute(std::string_view path) {
  return path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

// "C:\A\B\..\.\C" as "C:\A\C", with no "\" at the end but a drive's own.
std::string Resolved(const std::string& path) {
  const std::size_t start = path.starts_with("\\\\") ? 2 : path.find('\\') + 1;
  std::vector<std::string_view> names;
  std::string_view rest = std::string_view(path).substr(start);
  while (!rest.empty()) {
    const auto name = rest.substr(0, rest.find('\\'));
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    if (name == ".." && !names.empty()) names.pop_back();
    if (!name.empty() && name != "." && name != "..") names.push_back(name);
  }
  std::string resolved = path.substr(0, start);
  for (std::size_t i = 0; i < names.size(); ++i)
    resolved.append(i > 0 ? "\\" : "").append(names[i]);
  return resolved;
}

}  // namespace

std::optional<GitSettings> ReadGitSettings(const FileReader& files, const std::string& path) {
  auto settings = Parse(TextOf(files.Read(path)));
  if (!settings) return std::nullopt;
  if (settings->worktree.empty()) {
    throw RuntimeError::WithDescription(
        ErrorNumber::InvalidCall, "The [git] section of '" + path + "' has no line 'worktree='");
  }
  auto& worktree = settings->worktree;
  std::replace(worktree.begin(), worktree.end(), '/', '\\');
  if (!IsAbsolute(worktree)) {
    worktree.insert(0, path.substr(0, path.find_last_of("\\/") + 1));
    std::replace(worktree.begin(), worktree.end(), '/', '\\');
  }
  if (IsAbsolute(worktree)) worktree = Resolved(worktree);
  return settings;
}

}  // namespace gorbex
