#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

enum class Severity { Error, Warning };

/// "error" or "warning".
[[nodiscard]] inline std::string_view NameOf(Severity severity) {
  return severity == Severity::Error ? "error" : "warning";
}

/// Something that would make a run fail or do harm. Equal ones of many projects are one finding.
struct Finding {
  std::string file{};                   ///< full path; empty when it is not about a file
  std::optional<std::size_t> line{};    ///< from 1
  std::string subject{};                ///< what the projects have in common, such as a component
  std::vector<std::string> projects{};  ///< full paths of the projects that are concerned
  std::string text{};

  // As the table of checks has them.
  std::string_view id{};
  Severity severity = Severity::Error;
  std::string_view remedy{};

  /// Adds a project, unless it is the one that was added last.
  void Concern(const std::string& project) {
    if (projects.empty() || projects.back() != project) projects.push_back(project);
  }

  /// Ends the text with the number of projects, such as "; 38 projects use it"; not for one.
  void TellNumber(std::string_view verb) {
    if (projects.size() < 2) return;
    text.append("; ").append(std::to_string(projects.size())).append(" projects ").append(verb);
  }
};

using Findings = std::vector<Finding>;

/// A finding on one project.
[[nodiscard]] inline Finding FindingIn(const std::string& project, const std::string& subject,
                                       const std::string& text,
                                       std::optional<std::size_t> line = {}) {
  return {.file = project, .line = line, .subject = subject, .projects = {project}, .text = text};
}

/// Such as "Core.vbp:12"; only the file where no line is meant.
[[nodiscard]] inline std::string WithLine(const std::string& file,
                                          std::optional<std::size_t> line) {
  return line ? file + ":" + std::to_string(*line) : file;
}

}  // namespace gorbex
