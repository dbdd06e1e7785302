#include "core/failure_place.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "core/file_tools.h"
#include "core/source_name.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

constexpr std::size_t kNoLine = std::string_view::npos;

/// A place in the compiler's words: a source, and a line of its code from 0.
struct NamedPlace {
  std::string_view file{};
  std::size_t codeLine = kNoLine;
  std::string_view text{};
};

std::string_view LineAt(std::string_view text, std::size_t from) {
  const auto end = std::min(text.find_first_of("\r\n", from), text.size());
  return text.substr(from, end - from);
}

std::string_view FirstLine(std::string_view log) {
  const auto start = log.find_first_not_of("\r\n\t ");
  return start == std::string_view::npos ? std::string_view() : LineAt(log, start);
}

// Such as: Compile Error in File 'C:\Shop\Cart.cls', Line 7 : Next without For
std::optional<NamedPlace> PlaceInCode(std::string_view log) {
  constexpr std::string_view kBeforeFile = "Compile Error in File '";
  constexpr std::string_view kBeforeLine = "', Line ";
  const auto start = FindIgnoringCase(log, kBeforeFile);
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view words = LineAt(log, start + kBeforeFile.size());
  const auto end = FindIgnoringCase(words, kBeforeLine);
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view rest = words.substr(end + kBeforeLine.size());
  std::size_t line = 0;
  const auto number = std::from_chars(rest.data(), rest.data() + rest.size(), line);
  if (number.ec != std::errc() || !IsSourceName(words.substr(0, end))) return std::nullopt;
  std::string_view text = rest.substr(static_cast<std::size_t>(number.ptr - rest.data()));
  text.remove_prefix(std::min(text.find_first_not_of(" :"), text.size()));
  return NamedPlace{words.substr(0, end), line, text};
}

// Such as: 'C:\Shop\Form1.frm' could not be loaded. Components are in such lines, too.
std::optional<NamedPlace> SourceNotLoaded(std::string_view log) {
  const auto end = FindIgnoringCase(log, "' could not be loaded");
  if (end == std::string_view::npos || end == 0) return std::nullopt;
  const auto start = log.rfind('\'', end - 1);
  if (start == std::string_view::npos) return std::nullopt;
  const std::string_view file = log.substr(start + 1, end - start - 1);
  return IsSourceName(file) ? std::optional(NamedPlace{file}) : std::nullopt;
}

std::string ReasonOf(std::string_view words, const std::string& log, const std::string& problem) {
  constexpr std::size_t kLongest = 1000;
  if (words.empty()) words = problem;
  if (words.empty()) words = FirstLine(log);
  if (words.empty()) words = "the compiler wrote an empty result log";
  return OnOneLine(Shortened(words, kLongest));
}

// Whether a line begins with a word, in any letter case.
bool BeginsWith(std::string_view line, std::string_view word) {
  const std::string_view text = Trimmed(line, " \t\r");
  return EqualsIgnoringCase(text.substr(0, word.size()), word) &&
         (text.size() == word.size() || text[word.size()] == ' ' || text[word.size()] == '\t');
}

// The index of the line after the designer's part, or of the last one: the part ends with its one
// block, in which others may be.
std::size_t EndOfDesign(const std::vector<std::string_view>& lines) {
  std::size_t depth = 0;
  std::size_t at = 0;
  for (; at + 1 < lines.size(); ++at) {
    if (BeginsWith(lines[at], "Begin") || BeginsWith(lines[at], "BeginProperty")) ++depth;
    const bool ends = BeginsWith(lines[at], "End") || BeginsWith(lines[at], "EndProperty");
    if (ends && depth > 0 && --depth == 0) return at + 1;
  }
  return at;
}

}  // namespace

std::optional<std::size_t> LineInFile(std::string_view source, std::size_t codeLine) {
  auto lines = Split(source, '\n');
  if (lines.empty()) lines.emplace_back();
  for (auto at = BeginsWith(lines[0], "VERSION") ? EndOfDesign(lines) : 0; at < lines.size();
       ++at) {
    const bool isAttribute =
        BeginsWith(lines[at], "Attribute") && lines[at].find("VB_") != std::string_view::npos;
    if (!isAttribute && codeLine-- == 0) return at + 1;
  }
  return std::nullopt;
}

FailurePlace PlaceOfFailure(const FileReader& files, const std::string& project,
                            const std::string& log, const std::string& problem) {
  FailurePlace place{project, {}, ReasonOf({}, log, problem)};
  auto named = PlaceInCode(log);
  if (!named) named = SourceNotLoaded(log);
  if (!named) return place;
  try {
    const std::string file = ResolvedPath(StripPath(project), named->file);
    const std::string source = files.Read(file);
    if (named->codeLine != kNoLine) place.line = LineInFile(source, named->codeLine);
    place.file = file;
    place.text = ReasonOf(named->text, log, problem);
  } catch (const RuntimeError&) {
    // The compiler saw another file system, or the file is gone.
  }
  return place;
}

std::string FailureText(const FailurePlace& place) {
  return "(" + std::to_string(place.line.value_or(1)) + "): error: " + place.text;
}

}  // namespace gorbex
