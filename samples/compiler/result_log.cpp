#include "compiler/result_log.h"

namespace gorbex::standin {
namespace {

constexpr std::size_t kLongestQuotation = 200;

}  // namespace

Fault FileNotFound(const std::string& path) {
  return {Fault::Stage::Load, "File not found: '" + path + "'"};
}

Fault CouldNotBeLoaded(const std::string& path, const std::string& reason) {
  return {Fault::Stage::Load,
          "'" + path + "' could not be loaded" + (reason.empty() ? "" : ": " + reason)};
}

Fault NotAReference(const std::string& value) {
  return {Fault::Stage::Load, "'" + value.substr(0, kLongestQuotation) + "' is not a reference"};
}

Fault CompileError(const std::string& path, std::size_t line, const std::string& text) {
  return {Fault::Stage::Build,
          "Compile Error in File '" + path + "', Line " + std::to_string(line) + " : " + text};
}

Fault BuildFault(const std::string& text) {
  return {Fault::Stage::Build, text};
}

std::string Succeeded(const std::string& binary) {
  return "Build of '" + binary + "' succeeded.";
}

std::string Failed(const std::string& binary) {
  return "Build of '" + binary + "' failed.";
}

void AppendResult(FileSystem& files, const std::string& log,
                  const std::vector<std::string>& lines) {
  std::string text = "\r\n";
  for (const auto& line : lines) text.append(line).append("\r\n");
  files.Append(log, text);
}

}  // namespace gorbex::standin
