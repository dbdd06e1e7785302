#include "cli/annotations.h"

#include <algorithm>
#include <initializer_list>
#include <ostream>
#include <string_view>
#include <utility>

namespace gorbex::cli {
namespace {

using Replacement = std::pair<char, std::string_view>;

std::string Escaped(std::string_view text, std::initializer_list<Replacement> replacements) {
  std::string escaped;
  for (const char letter : text) {
    const auto* found = std::ranges::find(replacements, letter, &Replacement::first);
    if (found == replacements.end()) {
      escaped += letter;
    } else {
      escaped += found->second;
    }
  }
  return escaped;
}

std::string GitHubText(std::string_view text) {
  return Escaped(text, {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}});
}

std::string GitHubProperty(std::string_view text) {
  return Escaped(text, {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}, {':', "%3A"}, {',', "%2C"}});
}

std::string GitHubLine(const Finding& finding) {
  std::string line = "::" + std::string(NameOf(finding.severity)) + " ";
  if (!finding.file.empty()) line += "file=" + GitHubProperty(finding.file) + ",";
  if (finding.line) line += "line=" + std::to_string(*finding.line) + ",";
  return line + "title=" + GitHubProperty(finding.id) + "::" + GitHubText(finding.text);
}

std::string AzureProperty(std::string_view text) {
  return Escaped(text, {{'%', "%AZP25"}, {'\r', "%0D"}, {'\n', "%0A"}, {';', "%3B"}, {']', "%5D"}});
}

std::string AzureText(std::string_view text) {
  return Escaped(text, {{'%', "%AZP25"}, {'\r', "%0D"}, {'\n', "%0A"}});
}

std::string AzureLine(const Finding& finding) {
  std::string line = "##vso[task.logissue type=" + std::string(NameOf(finding.severity)) + ";";
  if (!finding.file.empty()) line += "sourcepath=" + AzureProperty(finding.file) + ";";
  if (finding.line) line += "linenumber=" + std::to_string(*finding.line) + ";";
  return line + "code=" + AzureProperty(finding.id) + ";]" + AzureText(finding.text);
}

std::string TeamCityText(std::string_view text) {
  return Escaped(text,
                 {{'|', "||"}, {'\'', "|'"}, {'\r', "|r"}, {'\n', "|n"}, {'[', "|["}, {']', "|]"}});
}

// The server shows no files beside such a message, so that its text names them.
std::string TeamCityLine(const Finding& finding) {
  std::string text = WithLine(finding.file, finding.line);
  text.append(text.empty() ? "" : ": ").append(finding.text);
  text.append(" [").append(finding.id).append("]");
  const bool isError = finding.severity == Severity::Error;
  return "##teamcity[message text='" + TeamCityText(text) + "' status='" +
         (isError ? "ERROR" : "WARNING") + "']";
}

// The command, with its line end, by which a build server takes a finding.
std::string LineOf(CiSystem system, const Finding& finding) {
  switch (system) {
    case CiSystem::GitHub:
      return GitHubLine(finding) + "\n";
    case CiSystem::Azure:
      return AzureLine(finding) + "\n";
    case CiSystem::TeamCity:
      return TeamCityLine(finding) + "\n";
    case CiSystem::None:
      break;
  }
  return {};
}

}  // namespace

void Annotate(const Frame& frame, const Finding& finding) {
  const Streams& streams = frame.streams;
  std::ostream* to = frame.json ? streams.commandErr : streams.commandOut;
  if (to == nullptr) return;
  (frame.json ? streams.err : streams.out).flush();
  *to << LineOf(streams.ci, finding) << std::flush;
}

}  // namespace gorbex::cli
