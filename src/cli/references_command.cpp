#include <ostream>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "core/list_columns.h"

namespace gorbex::cli {
namespace {

void PrintRow(std::ostream& out, const ListRow& row) {
  out << Plain(row.Text()) << '\n'
      << "  version      " << Plain(row.SubItem(reference_column::kVersion)) << '\n'
      << "  component    " << Plain(row.SubItem(reference_column::kComponent)) << '\n'
      << "  registered   " << Plain(row.SubItem(reference_column::kRegistryPath)) << '\n'
      << "  description  " << Plain(row.SubItem(reference_column::kDescription)) << '\n'
      << "  verdict      " << Plain(row.SubItem(reference_column::kVerdict)) << '\n';
}

void ShowReferences(Frame& frame, const std::string& file, const std::string& project) {
  Session session(frame);
  session.OpenToLook(file);
  Program& program = session.program();
  const std::string path = session.LoadedProject(project);
  // Every row is taken again, now that all projects of the group are known.
  program.window.lvwData.SetTag("");
  program.display.ShowProjectReferences(path);
  const ListView& rows = program.window.lvwData;
  if (frame.json) return PrintJson(frame, ReferencesJson(rows));
  for (const auto& row : rows.Rows()) PrintRow(frame.streams.out, *row);
}

}  // namespace

void AddReferencesCommand(CLI::App& app, Frame& frame) {
  CLI::App& command =
      AddJsonCommand(app, frame, "references", "The references of one project with their verdicts");
  auto file = std::make_shared<std::string>();
  auto project = std::make_shared<std::string>();
  command.add_option("FILE.bpf", *file, "Build project file")->required();
  command.add_option("PROJECT.vbp", *project, "One of its projects")->required();
  command.callback([&frame, file, project] { ShowReferences(frame, *file, *project); });
}

}  // namespace gorbex::cli
