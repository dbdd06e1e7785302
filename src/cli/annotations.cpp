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
    const auto* found = std::find_if(replacements.begin(), replacements.end(),
                                     [&](const auto& each) { return each.first == letter; });
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

std::string GitHubLine(const Annotation& annotation) {
  std::string line = "::" + std::string(NameOf(annotation.severity)) + " ";
  if (!annotation.file.empty()) line += "file=" + GitHubProperty(annotation.file) + ",";
  if (annotation.line) line += "line=" + std::to_string(*annotation.line) + ",";
  return line + "title=" + GitHubProperty(annotation.id) + "::" + GitHubText(annotation.text);
}

std::string AzureProperty(std::string_view text) {
  return Escaped(text, {{'%', "%AZP25"}, {'\r', "%0D"}, {'\n', "%0A"}, {';', "%3B"}, {']', "%5D"}});
}

std::string AzureText(std::string_view text) {
  return Escaped(text, {{'%', "%AZP25"}, {'\r', "%0D"}, {'\n', "%0A"}});
}

std::string AzureLine(const Annotation& annotation) {
  std::string line = "##vso[task.logissue type=" + std::string(NameOf(annotation.severity)) + ";";
  if (!annotation.file.empty()) line += "sourcepath=" + AzureProperty(annotation.file) + ";";
  if (annotation.line) line += "linenumber=" + std::to_string(*annotation.line) + ";";
  return line + "code=" + AzureProperty(annotation.id) + ";]" + AzureText(annotation.text);
}

std::string TeamCityText(std::string_view text) {
  return Escaped(text,
                 {{'|', "||"}, {'\'', "|'"}, {'\r', "|r"}, {'\n', "|n"}, {'[', "|["}, {']', "|]"}});
}

// The server shows no files beside such a message, so that its text names them.
std::string TeamCityLine(const Annotation& annotation) {
  std::string text = annotation.file;
  if (annotation.line) text += ":" + std::to_string(*annotation.line);
  text.append(text.empty() ? "" : ": ").append(annotation.text);
  const bool isError = annotation.severity == Severity::Error;
  return "##teamcity[message text='" + TeamCityText(text + " [" + annotation.id + "]") +
         "' status='" + (isError ? "ERROR" : "WARNING") + "']";
}

}  // namespace

std::string AnnotationLine(CiSystem system, const Annotation& annotation) {
  switch (system) {
    case CiSystem::GitHub:
      return GitHubLine(annotation) + "\n";
    case CiSystem::Azure:
      return AzureLine(annotation) + "\n";
    case CiSystem::TeamCity:
      return TeamCityLine(annotation) + "\n";
    case CiSystem::None:
      break;
  }
  return {};
}

void Annotate(const Frame& frame, const Annotation& annotation) {
  const Streams& streams = frame.streams;
  std::ostream* to = frame.json ? streams.commandErr : streams.commandOut;
  if (to == nullptr) return;
  (frame.json ? streams.err : streams.out).flush();
  *to << AnnotationLine(streams.ci, annotation) << std::flush;
}

}  // namespace gorbex::cli
