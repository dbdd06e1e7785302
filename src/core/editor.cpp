#include "core/editor.h"

#include <utility>
#include <variant>

#include "core/editor_call.h"
#include "core/source_name.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {

void Editor::Open(const std::string& file, std::optional<std::size_t> line) {
  std::erase_if(started_, [](const auto& process) { return process->ExitCode({}).has_value(); });
  if (!TrimBlanks(options_.Editor).empty()) {
    try {
      Start(file, line.value_or(1));
    } catch (const RuntimeError& error) {
      std::string problem = "The editor cannot be started: " + error.Description();
      problem.append(kLineBreak)
          .append(
              "Build Options... names it; a program whose path has blanks is in double quotes.");
      Tell(problem);
    }
  } else if (!IsDocumentName(file)) {
    Tell("The system might run " + file +
         " instead of showing it. Name an editor in Build Options...");
  } else if (!openBySystem || !openBySystem(file)) {
    Tell("The system cannot show the file " + file);
  }
}

void Editor::Start(const std::string& file, std::size_t line) {
  const std::string path = hostPath ? hostPath(file) : ToUtf8(file);
  if (path.empty()) throw RuntimeError(ErrorNumber::FileNotFound, file);
  const EditorCall call = EditorCallOf(options_.Editor, path, line);
  StartResult started = processes_.StartProgram(call.program, call.arguments);
  if (const auto* failure = std::get_if<RuntimeError>(&started)) throw *failure;
  auto& process = std::get<std::unique_ptr<Process>>(started);
  process->OutliveProgram();
  started_.push_back(std::move(process));
}

void Editor::Tell(const std::string& problem) {
  dialogs_.Show({problem, Buttons::Ok, MessageIcon::Exclamation});
}

}  // namespace gorbex
