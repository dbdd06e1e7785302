#include "core/failure_place.h"

#include <algorithm>
#include <charconv>

#include "core/file_tools.h"
#include "core/source_name.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/plain_text.h"
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

/// Goes through the lines of a source file.
class SourceLines {
 public:
  explicit SourceLines(std::string_view source) : rest_(source) {}

  /// False after the last line, which may be empty.
  bool Next() {
    if (isDone_) return false;
    const auto end = rest_.find('\n');
    isDone_ = end == std::string_view::npos;
    line_ = rest_.substr(0, end);
    if (!isDone_) rest_.remove_prefix(end + 1);
    ++number_;
    return true;
  }

  [[nodiscard]] std::size_t Number() const { return number_; }

  /// Whether the line begins with a word, in any letter case.
  [[nodiscard]] bool BeginsWith(std::string_view word) const {
    const std::string_view text = Trimmed(line_, " \t\r");
    return EqualsIgnoringCase(text.substr(0, word.size()), word) &&
           (text.size() == word.size() || text[word.size()] == ' ' || text[word.size()] == '\t');
  }

  [[nodiscard]] bool IsAttribute() const {
    return BeginsWith("Attribute") && line_.find("VB_") != std::string_view::npos;
  }

 private:
  std::string_view rest_;
  std::string_view line_;
  std::size_t number_ = 0;
  bool isDone_ = false;
};

// The designer's part: up to the end of its one block, in which others may be.
void SkipDesign(SourceLines& lines) {
  std::size_t depth = 0;
  do {
    if (lines.BeginsWith("Begin") || lines.BeginsWith("BeginProperty")) ++depth;
    const bool ends = lines.BeginsWith("End") || lines.BeginsWith("EndProperty");
    if (ends && depth > 0 && --depth == 0) {
      static_cast<void>(lines.Next());
      return;
    }
  } while (lines.Next());
}

}  // namespace

std::optional<std::size_t> LineInFile(std::string_view source, std::size_t codeLine) {
  SourceLines lines(source);
  static_cast<void>(lines.Next());
  if (lines.BeginsWith("VERSION")) SkipDesign(lines);
  do {
    if (lines.IsAttribute()) continue;
    if (codeLine == 0) return lines.Number();
    --codeLine;
  } while (lines.Next());
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
