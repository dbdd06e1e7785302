#include <ostream>

#include "analysis/dependency_graph.h"
#include "analysis/group_layout.h"
#include "analysis/group_svg.h"
#include "cli/commands.h"
#include "cli/json_views.h"
#include "cli/output_option.h"
#include "cli/session.h"
#include "cli/text_output.h"
#include "core/text.h"

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

Json GraphJson(const DependencyGraph& graph, const std::vector<const clsMember*>& members,
               const std::vector<std::vector<std::string>>& cycles) {
  Json nodes = Json::array();
  Json edges = Json::array();
  Json circles = Json::array();
  const auto levels = LevelsOf(graph);
  for (std::size_t i = 0; i < graph.Count(); ++i) {
    const Json path = JsonText(members[i]->path);
    nodes.push_back({{"path", path}, {"name", JsonText(members[i]->Name)}, {"level", levels[i]}});
    for (const std::size_t used : graph.UsesOf(i)) {
      edges.push_back(Json::array({path, JsonText(members[used]->path)}));
    }
  }
  for (const auto& cycle : cycles) circles.push_back(JsonTexts(cycle));
  return {{"nodes", nodes}, {"edges", edges}, {"cycles", circles}};
}

struct GraphArguments {
  std::string file;
  std::string svg;
};

void WriteSvg(Session& session, const std::string& typed, const DependencyGraph& graph) {
  const auto& window = session.program().window;
  const auto projects = PictureProjectsOf(window.ProjectMembers);
  session.Write(typed, GroupSvg(LayOut(graph, projects), projects,
                                "Dependencies of " + FileName(window.fileName)));
}

void Graph(Frame& frame, const GraphArguments& arguments) {
  Session session(frame);
  session.OpenToLook(arguments.file);
  const MemberCollection& collection = session.program().window.ProjectMembers;
  const DependencyGraph graph(collection, session.program().group);
  const auto members = Numbered(collection);
  const auto cycles = CyclesOf(graph, collection);
  if (!arguments.svg.empty()) WriteSvg(session, arguments.svg, graph);
  if (frame.json) {
    PrintJson(frame, GraphJson(graph, members, cycles));
  } else if (arguments.svg.empty()) {
    WriteDot(frame.streams.out, graph, members);
  }
  WarnOfCycles(session, cycles);
}

}  // namespace

void WarnOfCycles(const Session& session, const std::vector<std::vector<std::string>>& cycles) {
  for (const auto& cycle : cycles) {
    session.Warn("these projects use one another in a circle: " + Plain(Joined(cycle)));
  }
}

void AddGraphCommand(CLI::App& app, Frame& frame) {
  CLI::App& command = AddJsonCommand(app, frame, "graph", "Who uses whom in the group, as DOT");
  auto arguments = std::make_shared<GraphArguments>();
  command.add_option("FILE.bpf", arguments->file, "Build project file")->required();
  AddOutput(command, "--svg", arguments->svg, "Draw it as a picture (SVG) into this file instead");
  command.callback([&frame, arguments] { Graph(frame, *arguments); });
}

}  // namespace gorbex::cli
