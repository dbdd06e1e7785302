#include "cli/json_views.h"

#include <ostream>

#include "cli/settings_table.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

std::string_view ColourName(Colour colour) {
  return colour == Colour::ButtonShadow ? "buttonShadow" : "windowText";
}

Json JsonTexts(const std::vector<std::string>& texts) {
  Json array = Json::array();
  for (const std::string& text : texts) array.push_back(JsonText(text));
  return array;
}

Json SubItemsJson(const ListRow& row, std::size_t count) {
  Json array = Json::array();
  for (std::size_t i = 1; i <= count; ++i) array.push_back(JsonText(row.SubItem(i)));
  return array;
}

Json ProjectJson(const clsMember& member) {
  return {{"path", JsonText(member.path)},
          {"name", JsonText(member.Name)},
          {"memberType", JsonText(member.MemberType)},
          {"exeName", JsonText(member.EXEName)},
          {"buildName", JsonText(member.BuildName)},
          {"version", JsonText(member.Version)},
          {"compatibility", JsonText(member.Compatibility)},
          {"binaryCompat", member.BinaryCompat},
          {"vssProject", JsonText(member.VSSProject)},
          {"members", JsonTexts(member.Members)},
          {"userControls", JsonTexts(member.UserControls)},
          {"refs", JsonTexts(member.Refs)},
          {"objects", JsonTexts(member.Objects)}};
}

Json NodeJson(const TreeNode& node) {
  return {{"key", JsonText(node.Key())},
          {"parent", node.Parent() == nullptr ? Json("") : JsonText(node.Parent()->Key())},
          {"text", JsonText(node.Text())},
          {"image", ImageKey(node.ImageOf())},
          {"tag", JsonText(node.Tag())},
          {"checked", node.Checked()},
          {"colour", ColourName(node.TextColour())}};
}

// Nodes stand in the order a reader of the tree sees them, which removals and additions may have
// made another than the order of adding.
template <class Visit>
void InTreeOrder(const TreeNode& node, const Visit& visit) {
  visit(node);
  for (const TreeNode* child : node.Children()) InTreeOrder(*child, visit);
}

}  // namespace

Json JsonText(std::string_view text) {
  return ToUtf8(text);
}

Json QueueJson(const ListView& queue) {
  Json rows = Json::array();
  for (const auto& row : queue.Rows()) {
    rows.push_back({{"key", JsonText(row->Key())},
                    {"text", JsonText(row->Text())},
                    {"subItems", SubItemsJson(*row, 4)},
                    {"checked", row->Checked()},
                    {"icon", ImageKey(row->Icon())}});
  }
  return rows;
}

Json ReferencesJson(const ListView& references) {
  Json rows = Json::array();
  for (const auto& row : references.Rows()) {
    rows.push_back({{"text", JsonText(row->Text())},
                    {"subItems", SubItemsJson(*row, 5)},
                    {"icon", ImageKey(row->Icon())},
                    {"colour", ColourName(row->TextColour())}});
  }
  return rows;
}

Json SettingsJson(const clsOptions& options) {
  Json object = Json::object();
  for (const Setting& setting : AllSettings()) {
    object[std::string(setting.name)] = setting.Get(options);
  }
  return object;
}

void WriteShowJson(std::ostream& out, const Program& program) {
  const frmBuilder& window = program.window;
  out << "{\"title\":" << JsonText(window.caption.Get()).dump() << ",\"projects\":[";
  const char* separator = "\n";
  for (const auto& member : window.ProjectMembers) {
    out << std::exchange(separator, ",\n") << ProjectJson(*member).dump();
  }
  out << "],\n\"tree\":[";
  separator = "\n";
  for (const TreeNode* node : window.tvwProjects.Tops()) {
    InTreeOrder(*node, [&](const TreeNode& each) {
      out << std::exchange(separator, ",\n") << NodeJson(each).dump();
    });
  }
  out << "],\n\"queue\":" << QueueJson(window.lvwQueue).dump()
      << ",\n\"settings\":" << SettingsJson(program.options).dump() << "}\n";
}

}  // namespace gorbex::cli
