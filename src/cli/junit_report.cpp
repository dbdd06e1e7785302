#include "cli/junit_report.h"

#include <cstdio>

#include "cli/text_output.h"
#include "report/run_words.h"

namespace gorbex::cli {
namespace {

std::string Time(std::chrono::milliseconds duration) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.3f", static_cast<double>(duration.count()) / 1000);
  return buffer;
}

std::string FirstLine(const std::string& log) {
  const auto start = log.find_first_not_of("\r\n");
  if (start == std::string::npos) return "no result log";
  return log.substr(start, log.find_first_of("\r\n", start) - start);
}

std::string NotGot(const RunRecord::Project& project) {
  return "The latest sources were not got: " + project.notGot;
}

// Built, but not from what was asked for.
std::string Error(const RunRecord::Project& project) {
  const std::string words = NotGot(project);
  return "<error message=\"" + MarkupText(FirstLine(words)) + "\">" + MarkupText(words) +
         "</error>";
}

std::string Property(const std::string& name, const std::string& value) {
  return "<property name=\"" + name + "\" value=\"" + value + "\"/>";
}

// When and where a project was built; of interest only where several were built at once.
std::string Properties(const RunRecord::Project& project) {
  if (project.place == 0) return "";
  return "<properties>" + Property("start", Time(project.start)) +
         Property("place", std::to_string(project.place)) + "</properties>";
}

// Where editors and servers look for the file; the compiler counts lines in its own way.
std::string SourceLine(const RunRecord::Project& project) {
  const auto& failure = project.failure;
  if (!failure || !failure->line) return "";
  return MarkupText(failure->file + FailureText(*failure) + "\n");
}

std::string TestCase(const RunRecord& record, const RunRecord::Project& project) {
  const std::string properties = record.IsSideBySide() ? Properties(project) : "";
  const std::string words = WordsOf(record, project);
  std::string xml = "  <testcase classname=\"" + MarkupText(project.path) + "\" name=\"" +
                    MarkupText(FileName(project.path)) + "\" time=\"" + Time(project.duration) +
                    "\"";
  switch (project.outcome) {
    case RunRecord::Outcome::Built:
      return xml + (!project.IsNotGot() && properties.empty()
                        ? "/>\n"
                        : ">" + properties + (project.IsNotGot() ? Error(project) : "") +
                              "</testcase>\n");
    case RunRecord::Outcome::UpToDate:
      if (project.IsNotGot()) return xml + ">" + properties + Error(project) + "</testcase>\n";
      [[fallthrough]];
    case RunRecord::Outcome::NotBuilt:
      return xml + ">" + properties + "<skipped" +
             (words.empty() ? "" : " message=\"" + MarkupText(words) + "\"") + "/></testcase>\n";
    case RunRecord::Outcome::Failed:
      break;
  }
  return xml + ">" + properties + "<failure message=\"" + MarkupText(FirstLine(project.log)) +
         "\">" + (project.IsNotGot() ? MarkupText(NotGot(project) + "\n") : "") +
         SourceLine(project) + MarkupText(project.log) + "</failure></testcase>\n";
}

// The run itself when it did not come to its end, or not as asked; nothing otherwise.
std::string RunCase(const RunRecord& record, const std::string& title) {
  const std::string problem(ProblemOf(record.End()));
  if (problem.empty()) return "";
  std::string words = record.Messages().empty() ? "" : record.Messages().back();
  if (record.End().result == RunResult::Stopped) {
    words = CountsText(record.End(), record.Projects().size()) + "\n" + words;
  }
  return "  <testcase classname=\"" + MarkupText(title) + "\" name=\"run\" time=\"" +
         Time(record.End().duration) + "\"><error message=\"" + problem + "\">" +
         MarkupText(words) + "</error></testcase>\n";
}

}  // namespace

std::string JUnitReport(const RunRecord& record, const std::string& title) {
  std::size_t skipped = 0;
  std::size_t failed = 0;
  std::size_t errors = 0;
  std::string cases;
  for (const auto& project : record.Projects()) {
    using Outcome = RunRecord::Outcome;
    const bool isFresh = project.outcome == Outcome::UpToDate;
    const bool isDone = isFresh || project.outcome == Outcome::Built;
    const bool isError = isDone && project.IsNotGot();
    skipped += project.outcome == Outcome::NotBuilt || (isFresh && !isError) ? 1U : 0U;
    failed += project.outcome == Outcome::Failed ? 1U : 0U;
    errors += isError ? 1U : 0U;
    cases += TestCase(record, project);
  }
  const std::string run = RunCase(record, title);
  const std::size_t runs = run.empty() ? 0 : 1;
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"" + MarkupText(title) +
         "\" tests=\"" + std::to_string(record.Projects().size() + runs) + "\" failures=\"" +
         std::to_string(failed) + "\" errors=\"" + std::to_string(errors + runs) + "\" skipped=\"" +
         std::to_string(skipped) + "\" time=\"" + Time(record.End().duration) + "\">\n" + cases +
         run + "</testsuite>\n";
}

}  // namespace gorbex::cli
