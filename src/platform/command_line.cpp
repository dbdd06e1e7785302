#include "platform/command_line.h"

#include <algorithm>
#include <utility>

namespace gorbex {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view WithoutLeadingBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

bool HasExtension(std::string_view program) {
  const auto name = program.find_last_of("\\/:");
  return program.find('.', name == std::string_view::npos ? 0 : name + 1) != std::string_view::npos;
}

std::optional<std::string> Accepted(std::string_view candidate,
                                    const std::function<bool(const std::string&)>& isFile) {
  std::string program(candidate);
  if (program.empty()) return std::nullopt;
  if (isFile(program)) return program;
  if (HasExtension(program)) return std::nullopt;
  program += ".exe";
  if (isFile(program)) return program;
  return std::nullopt;
}

/// The meaning of a backslash before a quote that a blank or the end of the line follows.
enum class LastBackslash { EscapesQuote, EndsFolder };

/// Splits by the run-time library's rules for quotes and backslashes.
class ArgumentReader {
 public:
  ArgumentReader(std::string_view text, LastBackslash last)
      : rest_(WithoutLeadingBlanks(text)), last_(last) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  std::string Take() {
    std::string argument;
    bool isQuoted = false;
    while (!rest_.empty()) {
      if (!isQuoted && kBlanks.find(rest_.front()) != std::string_view::npos) break;
      const auto backslashes = TakeBackslashes();
      const bool atQuote = rest_.starts_with('"');
      argument.append(atQuote ? backslashes / 2 : backslashes, '\\');
      if (atQuote) {
        TakeQuote(argument, isQuoted, backslashes % 2 != 0);
      } else if (backslashes == 0) {
        argument += rest_.front();
        rest_.remove_prefix(1);
      }
    }
    rest_ = WithoutLeadingBlanks(rest_);
    return argument;
  }

 private:
  std::size_t TakeBackslashes() {
    const auto count = std::min(rest_.find_first_not_of('\\'), rest_.size());
    rest_.remove_prefix(count);
    return count;
  }

  // A quote is text after an odd backslash or, inside quotes, when doubled.
  void TakeQuote(std::string& argument, bool& isQuoted, bool isEscaped) {
    rest_.remove_prefix(1);
    if (isEscaped && isQuoted && EndsFolder()) {
      argument += '\\';
      isQuoted = false;
    } else if (isEscaped) {
      argument += '"';
    } else if (isQuoted && rest_.starts_with('"')) {
      argument += '"';
      rest_.remove_prefix(1);
    } else {
      isQuoted = !isQuoted;
    }
  }

  [[nodiscard]] bool EndsFolder() const {
    const bool isLast = rest_.empty() || kBlanks.find(rest_.front()) != std::string_view::npos;
    return last_ == LastBackslash::EndsFolder && isLast;
  }

  std::string_view rest_;
  LastBackslash last_;
};

std::vector<std::string> Split(std::string_view arguments, LastBackslash last) {
  std::vector<std::string> split;
  for (ArgumentReader reader(arguments, last); !reader.AtEnd();) split.push_back(reader.Take());
  return split;
}

// Backslashes mean something only before a quote, the closing one included.
std::string Quoted(std::string_view argument) {
  std::string quoted = "\"";
  std::size_t backslashes = 0;
  for (const char character : argument) {
    if (character == '"') quoted.append(backslashes + 1, '\\');
    backslashes = character == '\\' ? backslashes + 1 : 0;
    quoted += character;
  }
  return quoted.append(backslashes, '\\') + '"';
}

}  // namespace

std::optional<CommandLine> FindProgram(std::string_view commandLine,
                                       const std::function<bool(const std::string&)>& isFile) {
  const auto text = WithoutLeadingBlanks(commandLine);
  if (text.starts_with('"')) {
    const auto end = std::min(text.find('"', 1), text.size());
    auto program = Accepted(text.substr(1, end - 1), isFile);
    if (!program) return std::nullopt;
    return CommandLine{std::move(*program), text.substr(std::min(end + 1, text.size()))};
  }
  for (std::size_t end = 0; end < text.size();) {
    end = std::min(text.find_first_of(kBlanks, end), text.size());
    if (auto program = Accepted(text.substr(0, end), isFile)) {
      return CommandLine{std::move(*program), text.substr(end)};
    }
    end = std::min(text.find_first_not_of(kBlanks, end), text.size());
  }
  return std::nullopt;
}

std::string ProgramText(std::string_view commandLine) {
  const auto text = WithoutLeadingBlanks(commandLine);
  if (text.starts_with('"')) return std::string(text.substr(1, text.find('"', 1) - 1));
  return std::string(text.substr(0, text.find_first_of(kBlanks)));
}

std::vector<std::string> SplitArguments(std::string_view arguments) {
  return Split(arguments, LastBackslash::EscapesQuote);
}

std::vector<std::string> SplitFolderArguments(std::string_view arguments) {
  return Split(arguments, LastBackslash::EndsFolder);
}

std::string JoinArguments(const std::vector<std::string>& arguments) {
  std::string joined;
  for (const auto& argument : arguments) joined += " " + Quoted(argument);
  return joined;
}

}  // namespace gorbex
