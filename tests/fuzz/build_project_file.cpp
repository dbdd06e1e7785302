#include "core/build_project_file.h"

#include <algorithm>
#include <vector>

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

std::string OpenedAndSaved(MemoryProgram& made, const std::string& text) {
  made.platform.files.AddFile(kPath, text);
  Require(made.program.buildProject.OpenProject(kPath), "errors are passed over");
  return Saved(made);
}

std::vector<std::string> QueuedProjects(const MemoryProgram& made) {
  std::vector<std::string> projects;
  for (const auto& row : made.program.window.lvwQueue.Rows()) projects.push_back(row->SubItem(1));
  std::sort(projects.begin(), projects.end());
  return projects;
}

// Only a row that depends on itself is known to be lost, and those that depend on it.
bool MayLoseRows(const MemoryProgram& made) {
  const auto& rows = made.program.window.lvwQueue.Rows();
  return std::any_of(rows.begin(), rows.end(),
                     [](const auto& row) { return row->SubItem(1) == row->SubItem(2); });
}

}  // namespace

void ReadInput(std::string_view input) {
  MemoryProgram made;
  AddProjects(made.platform.files);
  const std::string saved = OpenedAndSaved(made, std::string(input));
  Require(OpenedAndSaved(made, saved) == saved, "a file that was saved is opened as it was");

  const auto before = QueuedProjects(made);
  const bool mayLoseRows = MayLoseRows(made);
  made.program.window.menu.mnuQueueArrange.Execute();
  const auto after = QueuedProjects(made);
  Require(std::includes(before.begin(), before.end(), after.begin(), after.end()),
          "arranging adds no rows");
  Require(mayLoseRows || before == after, "arranging keeps the rows");
}

}  // namespace gorbex::test
