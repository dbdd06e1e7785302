#include <map>
#include <ostream>

#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/settings_table.h"
#include "cli/text_output.h"
#include "core/list_columns.h"
#include "core/reference_nodes.h"

namespace gorbex::cli {
namespace {

void PrintProjects(std::ostream& out, const frmBuilder& window) {
  out << "\nProjects (" << window.ProjectMembers.Count() << ")\n";
  for (const auto& member : window.ProjectMembers) {
    out << "  " << Padded(Plain(member->Name), 24) << ' ' << Padded(Plain(member->MemberType), 8)
        << ' ' << Padded(Plain(member->Version), 8) << ' ' << Plain(member->path) << '\n';
  }
}

void PrintVerdicts(std::ostream& out, const frmBuilder& window) {
  std::map<Image, std::size_t> counts;
  std::string invalid;
  for (const TreeNode* project : window.ProjectNodes()) {
    ForEachReference(*project, [&](const TreeNode& node) {
      ++counts[node.ImageOf()];
      if (node.ImageOf() != Image::InvalidReference) return;
      invalid += "  " + FileName(project->Text()) + ": " + Plain(node.Text()) + '\n';
    });
  }
  out << "\nReferences: " << counts[Image::Dependancy] << " to projects of the group, "
      << counts[Image::VbReference] << " registered, " << counts[Image::CheckReference]
      << " registered elsewhere, " << counts[Image::InvalidReference] << " not registered\n"
      << invalid;
}

void PrintSettings(std::ostream& out, const clsOptions& options) {
  out << "\nSettings\n";
  for (const Setting& setting : AllSettings()) {
    out << "  " << Padded(std::string(setting.name), 20) << Shown(setting, options) << '\n';
  }
}

void Show(Frame& frame, const std::string& file) {
  Session session(frame);
  session.OpenToLook(file);
  std::ostream& out = frame.streams.out;
  const Program& program = session.program();
  if (frame.json) return WriteShowJson(out, program);
  out << Plain(program.window.caption.Get()) << '\n';
  PrintProjects(out, program.window);
  PrintVerdicts(out, program.window);
  out << '\n';
  PrintQueue(out, program.window.lvwQueue);
  PrintSettings(out, program.options);
}

}  // namespace

void PrintQueue(std::ostream& out, const ListView& queue) {
  out << "Queue (" << queue.Count() << ")\n";
  for (const auto& row : queue.Rows()) {
    out << "  " << Padded(Plain(row->Text()), 5) << (row->Checked() ? "[x] " : "[ ] ")
        << Padded(FileName(row->SubItem(queue_column::kProject)), 28) << ' '
        << Padded(Plain(row->SubItem(queue_column::kCompatibility)), 16) << ' '
        << Padded(Plain(row->SubItem(queue_column::kBuilt)), 17);
    if (!row->SubItem(queue_column::kDependency).empty())
      out << " after " << FileName(row->SubItem(queue_column::kDependency));
    out << '\n';
  }
}

void AddShowCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "show", "Projects, verdicts, queue and settings");
  auto file = std::make_shared<std::string>();
  command.add_option("FILE.bpf", *file, "Build project file")->required();
  command.callback([&frame, file] { Show(frame, *file); });
}

}  // namespace gorbex::cli
