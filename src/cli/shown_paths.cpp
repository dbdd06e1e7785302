#include "cli/shown_paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "cli/text_output.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

std::string CurrentFolder() {
  std::error_code error;
  const auto folder = std::filesystem::current_path(error).u8string();
  const std::string text = WithSlashes({folder.begin(), folder.end()});
  return error || text.ends_with('/') ? text : text + "/";
}

}  // namespace

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

ShownPaths::ShownPaths(const Host& host) : host_(host), top_(CurrentFolder()) {}

std::string ShownPaths::Full(const std::string& path) const {
  const std::string shown = host_.HostPath(path);
  const bool isPlain = !shown.empty() && Plain(FromUtf8Roughly(shown)) == shown;
  return isPlain ? shown : Plain(path);
}

std::string ShownPaths::Short(const std::string& path) const {
  const std::string full = Full(path);
  const bool isBelow = !top_.empty() && WithSlashes(full).starts_with(top_);
  return isBelow ? full.substr(top_.size()) : full;
}

}  // namespace gorbex::cli
