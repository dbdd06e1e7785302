#include "compiler/windows_path.h"

namespace gorbex::standin {

std::string FileNameOf(std::string_view path) {
  return std::string(path.substr(path.rfind('\\') + 1));
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace gorbex::standin
