#include "build/project_value.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"
#include "tests/fuzz/target.h"
#include "tests/support/memory_file_system.h"

namespace gorbex::test {

// The first line is a key, the second a value to write, the rest a project file.
void ReadInput(std::string_view input) {
  const std::string key = TakeFirstLine(input);
  const std::string value = TakeFirstLine(input);
  const std::string before(input);
  const std::string path = "C:\\Core.vbp";
  Journal journal;
  MemoryFileSystem files(journal);
  files.AddFile(path, before);
  ProjectValue values(files);

  const auto found = LowerCase(before).find(LowerCase(key) + "=");
  const std::string old = values.ReadProjectValue(path, key);
  static_cast<void>(values.WriteProjectValue(path, key, value));
  const std::string after = files.Text(path);
  if (found == std::string::npos) {
    Require(old == before, "without a key the whole text is read");
    Require(after == before + "\r\n", "a missing key is not added");
    return;
  }
  const auto start = found + key.size() + 1;
  const auto end = std::min(before.find_first_of(kLineBreak, start), before.size());
  const std::string whole = before.substr(start, end - start);
  Require(old == (end == before.size() ? "=" + whole : whole), "the value is read");
  Require(after == before.substr(0, start) + value + before.substr(end) + "\r\n",
          "the value alone is replaced");
  Require(values.ReadProjectValue(path, key) == value.substr(0, value.find('\r')),
          "a value that was written is read");
}

}  // namespace gorbex::test
