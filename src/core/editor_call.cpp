#include "core/editor_call.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"
#include "platform/command_line.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::string_view kFileMark = "%FILE%";
constexpr std::string_view kLineMark = "%LINE%";

// In one pass: a file may itself be called "%LINE%".
std::string Filled(std::string_view argument, const std::string& file, const std::string& line) {
  std::string filled;
  while (!argument.empty()) {
    std::size_t taken = 1;
    if (argument.starts_with(kFileMark)) {
      filled += file;
      taken = kFileMark.size();
    } else if (argument.starts_with(kLineMark)) {
      filled += line;
      taken = kLineMark.size();
    } else {
      filled += argument.front();
    }
    argument.remove_prefix(taken);
  }
  return filled;
}

// The system overlooks dots and blanks at the end of a name.
bool IsBatchFile(std::string_view program) {
  const auto last = program.find_last_not_of(". ");
  const std::string name = LowerCase(program.substr(0, last + 1));
  return name.ends_with(".bat") || name.ends_with(".cmd");
}

std::string_view AfterProgram(std::string_view setting, std::size_t program) {
  const std::size_t quotes = setting.starts_with('"') ? 2 : 0;
  return setting.substr(std::min(program + quotes, setting.size()));
}

}  // namespace

std::optional<std::string> EditorProblem(std::string_view setting) {
  if (TrimBlanks(setting).empty()) return std::nullopt;
  const auto isControl = [](char letter) {
    return static_cast<unsigned char>(letter) < ' ' && letter != '\t';
  };
  if (std::ranges::any_of(setting, isControl)) {
    return "it has a line break or another control character";
  }
  if (std::ranges::count(setting, '"') % 2 != 0) return "a double quote is missing";
  const std::string program = ProgramText(setting);
  if (TrimBlanks(program).empty()) return "it names no program";
  if (program.find(kFileMark) != std::string::npos ||
      program.find(kLineMark) != std::string::npos) {
    return "a program must come first, before %FILE% and %LINE%";
  }
  if (IsBatchFile(program)) return "a batch file; name the program that it starts";
  return std::nullopt;
}

EditorCall EditorCallOf(const std::string& setting, const std::string& file, std::size_t line) {
  const auto start = std::min(setting.find_first_not_of(" \t"), setting.size());
  const std::string_view text = std::string_view(setting).substr(start);
  if (const auto problem = EditorProblem(text)) {
    throw RuntimeError::WithReason(ErrorNumber::InvalidCall, text, *problem);
  }
  EditorCall call{ProgramText(text), {}};
  bool takesFile = false;
  for (const std::string& argument : SplitArguments(AfterProgram(text, call.program.size()))) {
    takesFile = takesFile || argument.find(kFileMark) != std::string::npos;
    call.arguments.push_back(Filled(ToUtf8(argument), file, std::to_string(line)));
  }
  if (!takesFile) call.arguments.push_back(file);
  return call;
}

}  // namespace gorbex
