#include "platform/git/initialisation_file.h"

#include <algorithm>
#include <string_view>

#include "platform/code_page.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};

[[noreturn]] void RefuseFile(const std::string& path, const std::string& why) {
  throw RuntimeError::WithDescription(ErrorNumber::InvalidCall, "'" + path + "' " + why);
}

std::string_view CutLine(std::string_view& text) {
  const auto line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

// A file with such a character is not a text, or one in another encoding.
void RequireText(const std::string& path, std::string_view text) {
  const auto isControl = [](char letter) {
    constexpr std::string_view kOfTexts = "\t\r\n\f";
    return static_cast<unsigned char>(letter) < 0x20 && kOfTexts.find(letter) == kOfTexts.npos;
  };
  const auto found = std::find_if(text.begin(), text.end(), isControl);
  if (found == text.end()) return;
  RefuseFile(path, "is not a plain text: character " + std::to_string(found - text.begin() + 1) +
                       " is the control character " + std::to_string(static_cast<int>(*found)));
}

// Editors that save as UTF-8 say so with a mark; all other files are in the code page. Those of old
// end their files with a special character.
std::string TextOf(const std::string& path, std::string bytes) {
  constexpr char kEndOfFile = '\x1A';
  for (const auto mark : kUtf16Marks) {
    if (bytes.starts_with(mark)) RefuseFile(path, "is in UTF-16; save it as UTF-8 or as ANSI text");
  }
  if (bytes.starts_with(kUtf8Mark)) {
    const auto text = FromUtf8(bytes.substr(kUtf8Mark.size()));
    if (!text) RefuseFile(path, "is not UTF-8, or holds characters that Windows paths here cannot");
    bytes = *text;
  }
  if (bytes.ends_with(kEndOfFile)) bytes.pop_back();
  RequireText(path, bytes);
  return bytes;
}

// "[git]", whatever follows it.
bool IsGitHeader(std::string_view line) {
  const auto end = line.find(']');
  return end != std::string_view::npos &&
         EqualsIgnoringCase(Trimmed(line.substr(1, end - 1)), "git");
}

// A value in quotation marks ends with the second one.
std::string_view ValueOf(std::string_view text) {
  text = Trimmed(text);
  if (!text.starts_with('"') && !text.starts_with('\'')) return text;
  const auto end = text.find(text.front(), 1);
  return end == std::string_view::npos ? text : Trimmed(text.substr(1, end - 1));
}

std::optional<GitSettings> Parse(std::string_view text) {
  std::optional<GitSettings> settings;
  bool isGit = false;
  while (!text.empty()) {
    const auto line = Trimmed(CutLine(text));
    if (line.starts_with('[')) {
      isGit = IsGitHeader(line);
      if (isGit && !settings) settings.emplace();
      continue;
    }
    const auto equals = line.find('=');
    if (!isGit || equals == std::string_view::npos || line.find_first_of(";#") == 0) continue;
    const auto key = Trimmed(line.substr(0, equals));
    const std::string value(ValueOf(line.substr(equals + 1)));
    if (EqualsIgnoringCase(key, "worktree")) settings->worktree = value;
    if (EqualsIgnoringCase(key, "branch")) settings->branch = value;
    if (EqualsIgnoringCase(key, "remote") && !value.empty()) settings->remote = value;
  }
  return settings;
}

}  // namespace

std::optional<GitSettings> ReadGitSettings(const FileReader& files, const std::string& path,
                                           const HostPathReader& hostPath) {
  auto settings = Parse(TextOf(path, files.Read(path)));
  if (!settings) return std::nullopt;
  if (settings->worktree.empty()) {
    throw RuntimeError::WithDescription(
        ErrorNumber::InvalidCall, "The [git] section of '" + path + "' has no line 'worktree='");
  }
  auto& worktree = settings->worktree;
  const bool isOfHost = worktree.starts_with('/') && !worktree.starts_with("//");
  if (isOfHost && hostPath) worktree = hostPath(ToUtf8(worktree));
  worktree = ResolvedPath(path.substr(0, path.find_last_of("\\/") + 1), worktree);
  return settings;
}

}  // namespace gorbex
