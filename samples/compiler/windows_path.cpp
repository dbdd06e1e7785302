#include "compiler/windows_path.h"

#include <algorithm>
#include <vector>

namespace gorbex::standin {
namespace {

bool HasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':';
}

std::string Resolved(std::string_view root, std::string_view rest) {
  std::vector<std::string_view> parts;
  while (!rest.empty()) {
    const auto end = std::min(rest.find('\\'), rest.size());
    const auto part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else if (!parts.empty()) {
      parts.pop_back();
    }
  }
  std::string path(root);
  for (const auto part : parts) path.append("\\").append(part);
  if (parts.empty()) path += '\\';
  return path;
}

}  // namespace

std::string Absolute(std::string_view path, std::string_view folder) {
  std::string text(path);
  std::replace(text.begin(), text.end(), '/', '\\');
  if (HasDrive(text)) return Resolved(text.substr(0, 2), text.substr(2));
  // The first of the two backslashes of a network path is its root.
  if (text.starts_with("\\\\")) return Resolved("\\", text);
  if (text.starts_with("\\")) return Resolved(folder.substr(0, 2), text);
  const std::string joined = std::string(folder) + "\\" + text;
  if (HasDrive(joined)) return Resolved(joined.substr(0, 2), joined.substr(2));
  return Resolved("\\", joined);
}

std::string FolderOf(std::string_view path) {
  const auto end = path.rfind('\\');
  if (end == std::string_view::npos) return {};
  const bool atRoot = end == 2 && HasDrive(path);
  return std::string(path.substr(0, atRoot ? end + 1 : end));
}

std::string FileNameOf(std::string_view path) {
  return std::string(path.substr(path.rfind('\\') + 1));
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace gorbex::standin
