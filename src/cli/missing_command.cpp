#include <ostream>

#include "analysis/missing_components.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"

namespace gorbex::cli {
namespace {

void Print(std::ostream& out, const MissingComponent& component) {
  out << Plain(component.name) << '\n'
      << "  GUID      " << Plain(component.guid) << '\n'
      << "  version   " << Plain(component.version) << '\n'
      << "  file      " << Plain(component.file) << '\n'
      << "  verdict   " << Plain(component.verdict) << '\n'
      << "  projects  " << component.uses.size() << '\n';
  for (const auto& use : component.uses) out << "    " << Plain(use.project) << '\n';
}

Json ComponentJson(const MissingComponent& component) {
  Json projects = Json::array();
  for (const auto& use : component.uses) {
    projects.push_back({{"path", JsonText(use.project)}, {"reference", JsonText(use.reference)}});
  }
  return {{"name", JsonText(component.name)},       {"guid", JsonText(component.guid)},
          {"version", JsonText(component.version)}, {"file", JsonText(component.file)},
          {"verdict", JsonText(component.verdict)}, {"projects", projects}};
}

void Missing(Frame& frame, const std::string& file) {
  Session session(frame);
  session.OpenToLook(file);
  const auto components = MissingComponents(session.program().window);
  if (frame.json) {
    Json rows = Json::array();
    for (const auto& component : components) rows.push_back(ComponentJson(component));
    return PrintJson(frame, rows);
  }
  for (const auto& component : components) Print(frame.streams.out, component);
  frame.streams.out << MissingText(components.size()) << '\n';
}

}  // namespace

void AddMissingCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "missing",
                                     "Components that are not registered, and who references them");
  auto file = std::make_shared<std::string>();
  command.add_option("FILE.bpf", *file, "Build project file")->required();
  command.callback([&frame, file] { Missing(frame, *file); });
}

}  // namespace gorbex::cli
