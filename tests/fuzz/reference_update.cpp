#include "analysis/reference_update.h"

#include "platform/code_page.h"
#include "tests/fuzz/memory_program.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

// The plainest way to say what replacing means.
std::string Replaced(const std::string& text, const std::string& oldText,
                     const std::string& newText) {
  const std::string lower = LowerCase(text);
  const std::string wanted = LowerCase(oldText);
  std::string result;
  std::size_t start = 0;
  for (auto at = lower.find(wanted); !wanted.empty() && at != std::string::npos;
       at = lower.find(wanted, start)) {
    result += text.substr(start, at - start) + newText;
    start = at + wanted.size();
  }
  return result + text.substr(start);
}

}  // namespace

// The first line is an identity, the second the one in its place, the rest a file with references.
void ReadInput(std::string_view input) {
  static MemoryProgram made;
  const std::string oldText = TakeFirstLine(input);
  const std::string newText = TakeFirstLine(input);
  const std::string before(input.substr(0, 65'536));
  const std::string path = "C:\\Group\\Core.vbp";
  made.platform.journal.clear();
  made.platform.files.AddFile(path, before, file_attribute::kReadOnly);
  Require(made.program.referenceUpdate.ReplaceInFile(path, oldText, newText),
          "a file is rewritten");
  Require(made.platform.files.Text(path) == Replaced(before, oldText, newText),
          "the identities alone are replaced");
}

}  // namespace gorbex::test
