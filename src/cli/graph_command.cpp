#include <ostream>

#include "analysis/dependency_graph.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/session.h"
#include "cli/text_output.h"

namespace gorbex::cli {
namespace {

std::vector<const clsMember*> Numbered(const MemberCollection& members) {
  std::vector<const clsMember*> numbered;
  for (const auto& member : members) numbered.push_back(member.get());
  return numbered;
}

// A JSON string is a valid DOT string.
std::string Quoted(const std::string& path) {
  return Written(JsonText(path));
}

void WriteDot(std::ostream& out, const DependencyGraph& graph,
              const std::vector<const clsMember*>& members) {
  out << "digraph group {\n  rankdir=BT;\n  node [shape=box];\n";
  std::vector<std::string> names;
  names.reserve(members.size());
  for (const clsMember* member : members) {
    const std::string& label = member->Name.empty() ? member->path : member->Name;
    const std::string& name = names.emplace_back(Quoted(member->path));
    out << "  " << name << " [label=" << Quoted(label) << "];\n";
  }
  for (std::size_t i = 0; i < graph.Count(); ++i) {
    for (const std::size_t used : graph.UsesOf(i)) {
      out << "  " << names[i] << " -> " << names[used] << ";\n";
    }
  }
  out << "}\n";
}

Json GraphJson(const DependencyGraph& graph, const std::vector<const clsMember*>& members) {
  Json projects = Json::array();
  Json edges = Json::array();
  for (std::size_t i = 0; i < graph.Count(); ++i) {
    projects.push_back(JsonText(members[i]->path));
    for (const std::size_t used : graph.UsesOf(i)) {
      edges.push_back(
          {{"from", JsonText(members[i]->path)}, {"to", JsonText(members[used]->path)}});
    }
  }
  return {{"projects", projects}, {"edges", edges}};
}

void Graph(Frame& frame, const std::string& file) {
  Session session(frame);
  session.OpenToLook(file);
  const MemberCollection& collection = session.program().window.ProjectMembers;
  const DependencyGraph graph(collection, session.program().group);
  const auto members = Numbered(collection);
  if (frame.json) {
    frame.streams.out << Written(GraphJson(graph, members)) << '\n';
  } else {
    WriteDot(frame.streams.out, graph, members);
  }
  WarnOfCycles(session, CyclesOf(graph, collection));
}

}  // namespace

void WarnOfCycles(const Session& session, const std::vector<std::vector<std::string>>& cycles) {
  for (const auto& cycle : cycles) {
    std::string names;
    for (const std::string& path : cycle)
      names.append(names.empty() ? "" : ", ").append(Plain(path));
    session.Warn("these projects use one another in a circle: " + names);
  }
}

void AddGraphCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "graph", "Who uses whom in the group, as DOT");
  auto file = std::make_shared<std::string>();
  command.add_option("FILE.bpf", *file, "Build project file")->required();
  command.callback([&frame, file] { Graph(frame, *file); });
}

}  // namespace gorbex::cli
