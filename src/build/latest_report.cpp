#include "build/latest_report.h"

#include <algorithm>

#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::size_t kMostNamed = 10;

void AddReportLine(std::string& text, const std::string& line) {
  if (!text.empty()) text += kLineBreak;
  text += line;
}

}  // namespace

// One refusal of the database often concerns every project; its words are told once.
void LatestReport::Add(const std::string& path, const LatestResult& result) {
  if (!result.toDo.empty()) toDo_.push_back(result.toDo);
  if (result.Succeeded()) return;
  auto same = std::ranges::find(failures_, result.problem, &Failure::first);
  if (same == failures_.end()) same = failures_.insert(same, {result.problem, {}});
  same->second.push_back(path);
}

std::string LatestReport::Text() const {
  std::string text;
  for (const auto& [problem, projects] : failures_) {
    AddReportLine(
        text, "The latest sources of these projects were not got; they were built as they are:");
    const std::size_t named = std::min(projects.size(), kMostNamed);
    for (std::size_t i = 0; i < named; ++i) AddReportLine(text, projects[i]);
    if (projects.size() > named) {
      AddReportLine(text, "and " + std::to_string(projects.size() - named) + " more");
    }
    AddReportLine(text, "Reason: " + problem);
  }
  for (const auto& line : toDo_) AddReportLine(text, line);
  return text;
}

}  // namespace gorbex
