#include "cli/run_json.h"

#include <array>
#include <chrono>

#include "platform/code_page.h"
#include "report/run_words.h"

namespace gorbex::cli {
namespace {

// Each in the order of its enumeration.
constexpr std::array kOutcomeNames = {"notBuilt", "built", "failed", "upToDate"};
constexpr std::array kEndNames = {"refused", "refused", "noCompiler",
                                  "aborted", "stopped", "finished"};

double InSeconds(std::chrono::milliseconds time) {
  return std::chrono::duration<double>(time).count();
}

std::chrono::milliseconds Duration(const Json& seconds) {
  return std::chrono::round<std::chrono::milliseconds>(
      std::chrono::duration<double>(seconds.get<double>()));
}

Json FailureJson(const std::optional<FailurePlace>& failure) {
  if (!failure) return {};
  return {{"file", JsonText(failure->file)},
          {"line", failure->line ? Json(*failure->line) : Json()},
          {"text", JsonText(failure->text)}};
}

std::string TextOf(const Json& json) {
  return FromUtf8(json.get<std::string>()).value_or("");
}

std::optional<FailurePlace> TakenFailure(const Json& project) {
  const auto failure = project.find("failure");
  if (failure == project.end() || failure->is_null()) return std::nullopt;
  FailurePlace place{TextOf(failure->at("file")), {}, TextOf(failure->at("text"))};
  const Json& line = failure->at("line");
  if (line.is_number_unsigned()) place.line = line.get<std::size_t>();
  return place;
}

void TakeProject(RunRecord& record, const Json& project) {
  const std::string path = TextOf(project.at("path"));
  const std::string result = project.at("result").get<std::string>();
  if (result == "notBuilt") return;
  ProjectStarted started{path, 1, 1};
  started.start = Duration(project.at("start"));
  record.On(started);
  if (const Json& got = project.at("got"); got.is_boolean()) {
    using Kind = LatestResult::Kind;
    record.On(LatestGot{path, {got.get<bool>() ? Kind::Got : Kind::Failed}});
  }
  if (result == "upToDate") {
    record.On(ProjectUpToDate{path, ""});
  } else {
    record.On(ProjectCompiled{path, result == "built", Duration(project.at("seconds")),
                              TextOf(project.at("log")), "", TakenFailure(project)});
  }
}

}  // namespace

Json RunJson(const RunRecord& record, const std::string& script) {
  Json projects = Json::array();
  for (const auto& project : record.Projects()) {
    const auto ifBegun = [&](auto value) { return project.HasBegun() ? Json(value) : Json(); };
    const bool isUpToDate = project.outcome == RunRecord::Outcome::UpToDate;
    projects.push_back({{"path", JsonText(project.path)},
                        {"result", kOutcomeNames.at(static_cast<std::size_t>(project.outcome))},
                        {"start", ifBegun(InSeconds(project.start))},
                        {"seconds", ifBegun(InSeconds(project.duration))},
                        {"place", isUpToDate ? Json() : ifBegun(project.place)},
                        {"log", JsonText(WordsOf(record, project))},
                        {"failure", FailureJson(project.failure)},
                        {"got", project.got ? Json(*project.got) : Json()}});
  }
  return {{"built", record.End().built},
          {"errors", record.End().errors},
          {"projects", projects},
          {"end", kEndNames.at(static_cast<std::size_t>(record.End().result))},
          {"messages", JsonTexts(record.Messages())},
          {"script", JsonText(script)}};
}

bool TakeRunJson(RunRecord& record, const std::string& text) {
  try {
    const Json json = Json::parse(text);
    for (const Json& project : json.at("projects")) TakeProject(record, project);
    return true;
  } catch (const Json::exception&) {
    return false;
  }
}

}  // namespace gorbex::cli
