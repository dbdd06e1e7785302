#include "build/compile.h"

#include "platform/code_page.h"
#include "tests/fuzz/memory_program.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {

// The compiler's result log, and the judgement over it.
void ReadInput(std::string_view input) {
  static MemoryProgram made;
  const std::string log = "C:\\Program Files\\GorbexBuilder\\VBResult.log";
  auto& shown = made.program.window.txtLogFile.text;
  made.platform.files.AddFile(log, std::string(input));
  shown.Set("");
  const bool succeeded =
      made.program.compile.CheckLogFile("\"" + log + "\"", "C:\\Group\\Core.vbp");

  const std::string lower = LowerCase(input);
  const auto tells = lower.find("build of");
  const bool isBuild = tells != std::string::npos;
  Require(succeeded == (isBuild && lower.find("failed.", tells) == std::string::npos),
          "a build succeeded that did not fail");
  Require(shown.Get().empty() == (succeeded || !isBuild), "a failure is shown");
  Require(shown.Get().empty() || shown.Get().find(input) != std::string::npos,
          "a failure is shown whole");
}

}  // namespace gorbex::test
