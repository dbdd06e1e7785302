#include "core/build_project_file.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>

#include "tests/fuzz/memory_program.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

const std::string kPath = "C:\\Group\\Group.bpf";

void AddProjects(MemoryFileSystem& files) {
  files.AddFile("C:\\Group\\A.vbp", "Type=OleDll\r\nExeName32=\"A.dll\"\r\nName=\"A\"\r\n");
  files.AddFile("C:\\Group\\B.vbp",
                "Type=OleDll\r\nExeName32=\"B.dll\"\r\nCompatibleMode=\"2\"\r\n"
                "Reference=*\\G{1}#1.0#0#Bin\\A.dll#A\r\n");
  files.AddFile("C:\\Group\\C.vbp",
                "Type=Exe\r\nExeName32=\"C.exe\"\r\n"
                "Object={2}#1.0#0; B.dll\r\nForm=C.frm\r\n");
}

std::string Saved(MemoryProgram& made) {
  Require(made.program.buildProject.SaveProject(kPath), "what is open can be saved");
  return made.platform.files.Text(kPath);
}

bool Opened(MemoryProgram& made, const std::string& text) {
  made.platform.files.AddFile(kPath, text);
  return made.program.buildProject.OpenProject(kPath);
}

/// The projects of the queue, each with the one it depends on.
using Row = std::pair<std::string, std::string>;
using Queue = std::multiset<Row>;

Queue QueueOf(const MemoryProgram& made) {
  Queue queue;
  for (const auto& row : made.program.window.lvwQueue.Rows()) {
    queue.emplace(row->SubItem(1), row->SubItem(2));
  }
  return queue;
}

// Only a row that depends on itself is known to be lost, and those that depend on it.
bool MayBeLost(const Queue& queue, Row row) {
  for (std::size_t steps = 0; steps <= queue.size() && !row.second.empty(); ++steps) {
    if (row.first == row.second) return true;
    const auto next = queue.lower_bound({row.second, ""});
    if (next == queue.end() || next->first != row.second) return false;
    row = *next;
  }
  return false;
}

void RequireArranged(const Queue& before, const Queue& after) {
  Require(std::includes(before.begin(), before.end(), after.begin(), after.end()),
          "arranging adds and changes no row");
  for (const auto& row : before) {
    Require(MayBeLost(before, row) || after.count(row) == before.count(row),
            "arranging keeps the rows that lead to none which depends on itself");
  }
}

}  // namespace

void ReadInput(std::string_view input) {
  MemoryProgram made;
  AddProjects(made.platform.files);
  if (!Opened(made, std::string(input))) {
    Require(made.platform.files.Text(kPath) == input, "a file that is refused stays as it is");
    return;
  }
  const std::string saved = Saved(made);
  Require(Opened(made, saved), "a file that was saved can be opened");
  Require(Saved(made) == saved, "a file that was saved is opened as it was");

  const auto before = QueueOf(made);
  made.program.window.menu.mnuQueueArrange.Execute();
  RequireArranged(before, QueueOf(made));
}

}  // namespace gorbex::test
