#include "report/run_page.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "core/file_tools.h"
#include "platform/code_page.h"
#include "platform/plain_text.h"
#include "report/page_style.h"
#include "report/run_words.h"
#include "report/timeline_svg.h"

namespace gorbex {
namespace {

using Project = RunRecord::Project;

// Texts are given as the program has them, and escaped here. Markup is what is ready for the page.

std::string Heading(int level, std::string_view text) {
  const std::string tag = "h" + std::to_string(level) + ">";
  return "<" + tag + MarkupText(text) + "</" + tag + "\n";
}

std::string Paragraph(std::string_view text, const std::string& style = "") {
  return "<p" + (style.empty() ? "" : " class=\"" + style + "\"") + ">" + MarkupText(text) +
         "</p>\n";
}

std::string Cell(std::string_view text, const std::string& style = "") {
  return "<td" + (style.empty() ? "" : " class=\"" + style + "\"") + ">" + MarkupText(text) +
         "</td>";
}

std::string RowHeading(std::string_view text) {
  return "<th scope=\"row\">" + MarkupText(text) + "</th>";
}

struct Column {
  const char* heading = "";
  const char* style = "";
};

/// A table whose rows are markup.
class Table {
 public:
  Table(std::string_view caption, std::initializer_list<Column> columns) {
    markup_ =
        "<div class=\"wide\"><table>\n<caption>" + MarkupText(caption) + "</caption>\n<thead><tr>";
    for (const Column& column : columns) {
      markup_ += "<th scope=\"col\"" +
                 (*column.style == 0 ? "" : " class=\"" + std::string(column.style) + "\"") + ">" +
                 column.heading + "</th>";
    }
    markup_ += "</tr></thead>\n<tbody>\n";
  }

  void Add(const std::string& cells) { markup_ += "<tr>" + cells + "</tr>\n"; }
  [[nodiscard]] std::string End() const { return markup_ + "</tbody>\n</table></div>\n"; }

 private:
  std::string markup_;
};

std::string NameOf(const Project& project) {
  return GetFileFromPath(project.path);
}

std::string TitleOf(const RunReport& report) {
  const std::string& file = report.terms.file;
  return (file.empty() ? "A build project without a file" : GetFileFromPath(file)) + ": " +
         CountsText(report.record.End(), report.record.Projects().size());
}

std::string Names(const RunReport& report, const std::vector<std::size_t>& projects) {
  std::string names;
  for (const std::size_t project : projects) {
    names.append(names.empty() ? "" : ", ").append(NameOf(report.record.Projects()[project]));
  }
  return names;
}

// The names of the slowest projects with their times.
std::string Slowest(const RunReport& report) {
  constexpr std::size_t kMost = 5;
  std::string text;
  const auto slowest = report.timeline.Slowest();
  for (std::size_t i = 0; i < std::min(kMost, slowest.size()); ++i) {
    const TimelineBar& bar = report.timeline.bars[slowest[i]];
    text.append(text.empty() ? "" : ", ").append(NameOf(report.record.Projects()[bar.project]));
    text.append(" ").append(TimeText(bar.Duration()));
  }
  return text;
}

std::string CriticalPath(const RunReport& report) {
  constexpr std::size_t kMost = 20;
  const std::size_t count = report.timeline.criticalPath.size();
  if (count > kMost) return std::to_string(count) + " projects, marked in the table below";
  std::string text;
  for (const std::size_t number : report.timeline.criticalPath) {
    const TimelineBar& bar = report.timeline.bars[number];
    text.append(text.empty() ? "" : ", then ")
        .append(NameOf(report.record.Projects()[bar.project]));
  }
  return text;
}

std::string SummarySection(const RunReport& report) {
  Table table("The run at a glance", {{"What"}, {"How it was"}});
  const auto add = [&](std::string_view heading, const std::string& text) {
    if (!text.empty()) table.Add(RowHeading(heading) + Cell(text));
  };
  const RunEnded& end = report.record.End();
  const auto& projects = report.record.Projects();
  add("Result", CountsText(end, projects.size()));
  add("Ended early", std::string(ProblemOf(end)));
  add("Projects of the run", std::to_string(projects.size()));
  add("Began", TimeStamp(report.terms.begun));
  add("Took", TimeText(report.timeline.length));
  add("Places", std::to_string(report.timeline.places));
  add("Slowest", Slowest(report));
  add("Settings", report.terms.terms);
  return Heading(2, "Summary") + table.End();
}

std::string MessagesSection(const RunReport& report) {
  if (report.record.Messages().empty()) return "";
  std::string markup = Heading(2, "Messages") + "<ul>\n";
  for (const std::string& message : report.record.Messages()) {
    markup += "<li>" + MarkupText(OnOneLine(message)) + "</li>\n";
  }
  return markup + "</ul>\n";
}

// Nothing jumps to a line from a page, so that none is made up.
std::string PlaceText(const FailurePlace& place) {
  return place.file + (place.line ? FailureText(place) : ": error: " + place.text);
}

// Without empty lines at the ends.
std::string_view CompilerWords(const Project& project) {
  const std::string_view words = Trimmed(project.log);
  return words.empty() ? std::string_view("the compiler wrote an empty result log") : words;
}

std::string FailuresSection(const RunReport& report) {
  std::string markup;
  for (const Project& project : report.record.Projects()) {
    if (project.outcome != RunRecord::Outcome::Failed) continue;
    markup += Heading(3, NameOf(project)) + Paragraph(project.path, "faint");
    if (project.failure) markup += Paragraph(PlaceText(*project.failure));
    markup += "<pre>" + MarkupText(CompilerWords(project)) + "</pre>\n";
  }
  return Heading(2, "Failures") + (markup.empty() ? Paragraph("No project failed.") : markup);
}

constexpr std::array kBarResults = {ProjectResult::Built, ProjectResult::Failed,
                                    ProjectResult::UpToDate, ProjectResult::NotBuilt};

// Bars have the colours of the same states in pictures of the group.
std::string BarStyles(Scheme scheme) {
  std::string rules;
  for (const ProjectResult result : kBarResults) {
    const BoxColours colours = ColoursOf(StateOf(result), scheme);
    const std::string name = "." + ClassOf(result);
    const std::string fill = Hex(colours.fill);
    const std::string border = Hex(colours.border);
    rules.append(".timeline ").append(name).append(" rect { fill: ").append(fill);
    rules.append("; stroke: ").append(border).append("; }\n.timeline ").append(name);
    rules.append(" text { fill: ").append(Hex(colours.text)).append("; }\ni").append(name);
    rules.append(" { background: ").append(fill).append("; border: 1px solid ").append(border);
    rules.append("; }\n");
  }
  return rules;
}

std::string Style() {
  return std::string(kPageStyle) + BarStyles(Scheme::Light) +
         "@media screen and (prefers-color-scheme: dark) {\n" + BarStyles(Scheme::Dark) + "}\n";
}

std::string Legend() {
  std::string markup = "<ul class=\"legend\">";
  for (const ProjectResult result : kBarResults) {
    const bool isOpen = result == ProjectResult::NotBuilt;
    markup += "<li><i class=\"" + ClassOf(result) + "\"></i>" +
              (isOpen ? "not finished" : std::string(NameOf(result))) + "</li>";
  }
  return markup + "<li><i class=\"critical\"></i>on the critical path</li></ul>\n";
}

std::string ProjectRow(const RunReport& report, std::size_t number) {
  const Project& project = report.record.Projects()[number];
  const auto& bar = report.timeline.barOf[number];
  const TimelineBar* begun = bar ? &report.timeline.bars[*bar] : nullptr;
  const bool isTimed = begun != nullptr && project.outcome != RunRecord::Outcome::UpToDate;
  return RowHeading(NameOf(project)) +
         Cell(NameOf(ResultOf(report.record, project)),
              "state " + ClassOf(ResultOf(report.record, project))) +
         Cell(begun == nullptr ? "" : TimeText(begun->start), "number extra") +
         Cell(isTimed ? TimeText(begun->Duration()) : "", "number") +
         Cell(begun == nullptr ? "" : std::to_string(begun->place), "number extra") +
         Cell(begun != nullptr && begun->isCritical ? "yes" : "", "extra") +
         Cell(ReasonText(report.record, project));
}

// Those that have begun in that order, then the others.
std::vector<std::size_t> InOrderOfTime(const RunReport& report) {
  std::vector<std::size_t> order;
  order.reserve(report.timeline.barOf.size());
  for (const TimelineBar& bar : report.timeline.bars) order.push_back(bar.project);
  for (std::size_t i = 0; i < report.timeline.barOf.size(); ++i) {
    if (!report.timeline.barOf[i]) order.push_back(i);
  }
  return order;
}

std::string TimelineSection(const RunReport& report) {
  std::string markup = Heading(2, "Timeline");
  if (report.record.Projects().empty()) return markup + Paragraph("The run had no projects.");
  if (report.timeline.bars.empty()) {
    markup += Paragraph("No project has begun.");
  } else {
    markup += "<figure>" + TimelineSvg(report.record, report.timeline) + Legend() + "</figure>\n";
  }
  if (!report.timeline.criticalPath.empty()) {
    markup += Paragraph("Critical path: " + CriticalPath(report) +
                        ". Each project of it waited for the one before, because it uses that or "
                        "had to have its place; a shorter run needs a shorter path.");
  }
  Table table("The projects in the order in which they began", {{"Project"},
                                                                {"Result"},
                                                                {"Start", "number extra"},
                                                                {"Time", "number"},
                                                                {"Place", "number extra"},
                                                                {"On the critical path", "extra"},
                                                                {"Why"}});
  for (const std::size_t number : InOrderOfTime(report)) table.Add(ProjectRow(report, number));
  return markup + table.End();
}

std::string DependenciesSection(const RunReport& report) {
  Table table("What each project of the run uses, directly or through projects outside the run",
              {{"Project"}, {"Result"}, {"Uses"}});
  bool isEmpty = true;
  const auto& projects = report.record.Projects();
  for (std::size_t i = 0; i < projects.size(); ++i) {
    isEmpty = isEmpty && report.uses[i].empty();
    table.Add(RowHeading(NameOf(projects[i])) +
              Cell(NameOf(ResultOf(report.record, projects[i])),
                   "state " + ClassOf(ResultOf(report.record, projects[i]))) +
              Cell(Names(report, report.uses[i])));
  }
  const std::string picture =
      report.picture.empty() ? "" : "<div class=\"wide\">" + report.picture + "</div>\n";
  return Heading(2, "Dependencies") + picture +
         (isEmpty ? Paragraph("No project of the run uses another one.") : table.End());
}

std::string SkippedSection(const RunReport& report) {
  Table table("Projects that were passed over or not reached", {{"Project"}, {"Result"}, {"Why"}});
  bool isEmpty = true;
  for (const Project& project : report.record.Projects()) {
    using Outcome = RunRecord::Outcome;
    if (project.outcome != Outcome::NotBuilt && project.outcome != Outcome::UpToDate) continue;
    isEmpty = false;
    table.Add(RowHeading(NameOf(project)) +
              Cell(NameOf(ResultOf(report.record, project)),
                   "state " + ClassOf(ResultOf(report.record, project))) +
              Cell(ReasonText(report.record, project)));
  }
  return Heading(2, "Not built") +
         (isEmpty ? Paragraph("Every project of the run was built or failed.") : table.End());
}

std::string CheckSection(const RunReport& report) {
  std::string markup = Heading(2, "Check");
  if (!report.findings) {
    return markup + Paragraph("Nobody looked for findings: \"gorbex build --check\" does.");
  }
  markup += Paragraph(SummaryOf(*report.findings) +
                      (report.isCheckedBefore ? ", before the run." : ", after the run."));
  if (report.findings->empty()) return markup;
  Table table("Findings", {{"Severity"}, {"Problem"}, {"Remedy"}, {"Where", "extra"}});
  for (const Finding& finding : *report.findings) {
    const std::string severity(NameOf(finding.severity));
    table.Add(Cell(severity, "state " + severity) +
              Cell(finding.text + " [" + std::string(finding.id) + "]") + Cell(finding.remedy) +
              Cell(WithLine(finding.file, finding.line), "extra"));
  }
  return markup + table.End();
}

// Without the characters that would steer a terminal that the page's source is shown on.
std::string CommandMarkup(const std::string& utf8) {
  std::string text = IsUtf8(utf8) ? utf8 : Plain(FromUtf8Roughly(utf8));
  const auto isControl = [](char byte) { return byte >= 0 && (byte < ' ' || byte == 0x7F); };
  std::ranges::replace_if(text, isControl, ' ');
  return MarkupUtf8(text);
}

std::string MakingSection(const RunReport& report) {
  Table table("Versions", {{"What"}, {"Version"}});
  table.Add(RowHeading("GorbexBuilder") + Cell(GORBEX_VERSION));
  const auto orNone = [](const std::string& text, const char* none) {
    return text.empty() ? std::string(none) : text;
  };
  table.Add(RowHeading("Compiler") + Cell(orNone(report.terms.compiler, "none was found")));
  table.Add(RowHeading("Version stamped") +
            Cell(orNone(report.terms.version, "none: each project kept its own")));
  table.Add(RowHeading("Build project") + Cell(orNone(report.terms.file, "not saved")));
  const std::string command =
      report.commandLine.empty()
          ? Paragraph("The run was started in the window.")
          : "<pre class=\"plain\">" + CommandMarkup(report.commandLine) + "</pre>\n";
  return Heading(2, "Versions") + table.End() + Heading(2, "Command line") + command;
}

}  // namespace

std::string RunPage(const RunReport& report) {
  const std::string title = TitleOf(report);
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      MarkupText(title) + "</title>\n<style>";
  page.append(Style()).append("</style>\n</head>\n<body>\n<main>\n");
  page += Heading(1, title) + Paragraph("Began " + TimeStamp(report.terms.begun) + ", took " +
                                            TimeText(report.timeline.length) + ".",
                                        "faint");
  page += SummarySection(report) + MessagesSection(report) + FailuresSection(report) +
          TimelineSection(report) + DependenciesSection(report) + SkippedSection(report) +
          CheckSection(report) + MakingSection(report);
  return page + "</main>\n</body>\n</html>\n";
}

}  // namespace gorbex
