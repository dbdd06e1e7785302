#include "compiler/windows_path.h"

namespace gorbex::standin {
namespace {

bool HasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':';
}

}  // namespace

std::string FolderOf(std::string_view path) {
  const auto end = path.rfind('\\');
  if (end == std::string_view::npos) return {};
  const bool atRoot = end == 2 && HasDrive(path);
  return std::string(path.substr(0, atRoot ? end + 1 : end));
}

std::string FileNameOf(std::string_view path) {
  return std::string(path.substr(path.rfind('\\') + 1));
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace gorbex::standin
