#include "core/build_project_file.h"

#include <string>

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
}

}  // namespace gorbex::test
