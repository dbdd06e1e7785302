#include "cli/finding_views.h"

#include <cstdio>
#include <ostream>

#include "check/check.h"
#include "check/group_check.h"
#include "cli/annotations.h"
#include "cli/shown_paths.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

struct Colours {
  const char* severity = "";
  const char* dim = "";
  const char* off = "";
};

Colours ColoursOf(Severity severity, bool isShown) {
  if (!isShown) return {};
  return {severity == Severity::Error ? "\033[1;31m" : "\033[1;33m", "\033[2m", "\033[0m"};
}

std::string PlaceOf(const ShownPaths& paths, const Finding& finding) {
  return finding.file.empty() ? "gorbex" : WithLine(paths.Short(finding.file), finding.line);
}

Json FindingJson(const Finding& finding) {
  return {{"id", finding.id},
          {"severity", NameOf(finding.severity)},
          {"file", JsonText(finding.file)},
          {"line", finding.line ? Json(*finding.line) : Json()},
          {"text", JsonText(finding.text)},
          {"remedy", JsonText(finding.remedy)},
          {"projects", JsonTexts(finding.projects)}};
}

std::string UriPath(const std::string& path) {
  std::string uri;
  for (const char letter : WithSlashes(path)) {
    const bool isPlain = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                         (letter >= 'a' && letter <= 'z') ||
                         std::string_view("-._~/:").find(letter) != std::string_view::npos;
    if (isPlain) {
      uri += letter;
      continue;
    }
    char escaped[4];
    std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned char>(letter));
    uri += escaped;
  }
  return uri;
}

std::string FileUri(const std::string& path) {
  const std::string uri = UriPath(path);
  if (uri.starts_with("//")) return "file:" + uri;
  return (uri.starts_with('/') ? "file://" : "file:///") + uri;
}

// The folder that the program was started in is the top of a working tree, as a rule.
Json ArtifactJson(const ShownPaths& paths, const std::string& file) {
  const std::string full = paths.Full(file);
  const std::string shown = paths.Short(file);
  if (full == shown) return {{"uri", FileUri(full)}};
  return {{"uri", UriPath(shown)}, {"uriBaseId", "%SRCROOT%"}};
}

Json LocationJson(const ShownPaths& paths, const Finding& finding) {
  Json place = {{"artifactLocation", ArtifactJson(paths, finding.file)}};
  if (finding.line) place["region"] = {{"startLine", *finding.line}};
  return {{"physicalLocation", place}};
}

Json ResultJson(const ShownPaths& paths, const Finding& finding) {
  const auto number = static_cast<std::size_t>(FindCheck(finding.id) - AllChecks().data());
  Json result = {{"ruleId", finding.id},
                 {"ruleIndex", number},
                 {"level", NameOf(finding.severity)},
                 {"message", {{"text", Plain(finding.text)}}}};
  if (!finding.file.empty()) result["locations"] = Json::array({LocationJson(paths, finding)});
  return result;
}

Json RuleJson(const Check& check) {
  return {{"id", check.id},
          {"shortDescription", {{"text", check.summary}}},
          {"help", {{"text", check.remedy}}},
          {"defaultConfiguration", {{"level", NameOf(check.severity)}}}};
}

}  // namespace

void PrintFindings(const Session& session, std::ostream& out, const Findings& findings) {
  const Streams& streams = session.frame().streams;
  const ShownPaths paths(session.host());
  for (const Finding& finding : findings) {
    const Colours colours = ColoursOf(finding.severity, streams.colours);
    out << PlaceOf(paths, finding) << ": " << colours.severity << NameOf(finding.severity) << ": "
        << colours.off << OnOneLine(Plain(finding.text)) << colours.dim << " [" << finding.id << "]"
        << colours.off << '\n';
  }
  out << SummaryOf(findings) << '\n';
}

Json FindingsJson(const Findings& findings) {
  Json all = Json::array();
  for (const Finding& finding : findings) all.push_back(FindingJson(finding));
  const auto errors = ErrorsIn(findings);
  return {{"findings", all}, {"errors", errors}, {"warnings", findings.size() - errors}};
}

Json FindingsSarif(const Host& host, const Findings& findings) {
  Json rules = Json::array();
  for (const Check& check : AllChecks()) rules.push_back(RuleJson(check));
  const ShownPaths paths(host);
  Json results = Json::array();
  for (const Finding& finding : findings) results.push_back(ResultJson(paths, finding));
  const Json driver = {
      {"name", "gorbex"}, {"version", GORBEX_VERSION}, {"rules", std::move(rules)}};
  const Json run = {{"tool", {{"driver", driver}}},
                    {"originalUriBaseIds", {{"%SRCROOT%", {{"uri", FileUri(paths.Top())}}}}},
                    {"columnKind", "utf16CodeUnits"},
                    {"results", std::move(results)}};
  return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
          {"version", "2.1.0"},
          {"runs", Json::array({run})}};
}

void AnnotateFindings(const Session& session, const Findings& findings) {
  if (session.frame().streams.ci == CiSystem::None) return;
  const ShownPaths paths(session.host());
  for (Finding finding : findings) {
    if (!finding.file.empty()) finding.file = paths.Short(finding.file);
    finding.text = Plain(finding.text);
    Annotate(session.frame(), finding);
  }
}

}  // namespace gorbex::cli
