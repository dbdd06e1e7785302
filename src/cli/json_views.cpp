#include "cli/json_views.h"

#include <array>
#include <cstdio>
#include <ostream>
#include <utility>

#include "cli/json_line.h"
#include "cli/settings_table.h"
#include "platform/code_page.h"

namespace gorbex::cli {
namespace {

std::string_view ColourName(Colour colour) {
  return colour == Colour::ButtonShadow ? "buttonShadow" : "windowText";
}

Json SubItemsJson(const ListRow& row, std::size_t count) {
  Json array = Json::array();
  for (std::size_t i = 1; i <= count; ++i) array.push_back(JsonText(row.SubItem(i)));
  return array;
}

std::string_view ProjectLine(JsonLine& line, const clsMember& member) {
  line.Add("path", member.path);
  line.Add("name", member.Name);
  line.Add("memberType", member.MemberType);
  line.Add("exeName", member.EXEName);
  line.Add("buildName", member.BuildName);
  line.Add("version", member.Version);
  line.Add("compatibility", member.Compatibility);
  line.Add("binaryCompat", member.BinaryCompat);
  line.Add("vssProject", member.VSSProject);
  line.Add("members", member.Members);
  line.Add("userControls", member.UserControls);
  line.Add("refs", member.Refs);
  line.Add("objects", member.Objects);
  return line.End();
}

std::string_view NodeLine(JsonLine& line, const TreeNode& node) {
  line.Add("key", node.Key());
  line.Add("parent", node.Parent() == nullptr ? std::string() : node.Parent()->Key());
  line.Add("text", node.Text());
  line.Add("image", ImageKey(node.ImageOf()));
  line.Add("tag", node.Tag());
  line.Add("checked", node.Checked());
  line.Add("colour", ColourName(node.TextColour()));
  return line.End();
}

// Nodes come in the order in which a reader of the tree sees them, which removals and additions may
// have made another than the order of adding.
template <class Visit>
void InTreeOrder(const TreeNode& node, const Visit& visit) {
  visit(node);
  for (const TreeNode* child : node.Children()) InTreeOrder(*child, visit);
}

// The properties of the settings object by their names.
Json SettingsJson(const clsOptions& options) {
  Json object = Json::object();
  for (const Setting& setting : AllSettings()) {
    object[std::string(setting.name)] = SettingJson(setting, options);
  }
  return object;
}

}  // namespace

Json JsonText(std::string_view text) {
  return ToUtf8(text);
}

Json JsonTexts(const std::vector<std::string>& texts) {
  Json array = Json::array();
  for (const std::string& text : texts) array.push_back(JsonText(text));
  return array;
}

// The library escapes all but those above the letters of ASCII.
std::string Written(const Json& json) {
  std::string text = json.dump();
  std::string written;
  std::size_t done = 0;
  for (std::size_t at = 0; (at = text.find_first_of("\x7F\xC2", at)) != std::string::npos; ++at) {
    const bool isLong = text[at] == '\xC2';
    const auto code = static_cast<unsigned char>(text[isLong ? at + 1 : at]);
    if (code > 0x9F) continue;
    std::array<char, 8> escaped{};
    std::snprintf(escaped.data(), escaped.size(), "\\u%04x", code);
    written.append(text, done, at - done).append(escaped.data());
    done = at + (isLong ? 2 : 1);
  }
  if (done == 0) return text;
  return written.append(text, done);
}

void PrintJson(const Frame& frame, const Json& json) {
  frame.streams.out << Written(json) << '\n';
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

void WriteShowJson(std::ostream& out, const Program& program) {
  const frmBuilder& window = program.window;
  out << "{\"title\":" << Written(JsonText(window.caption.Get())) << ",\"projects\":[";
  JsonLine line;
  const char* separator = "\n";
  for (const auto& member : window.ProjectMembers) {
    out << std::exchange(separator, ",\n") << ProjectLine(line, *member);
  }
  out << "],\n\"tree\":[";
  separator = "\n";
  for (const TreeNode* node : window.tvwProjects.Tops()) {
    InTreeOrder(*node, [&](const TreeNode& each) {
      out << std::exchange(separator, ",\n") << NodeLine(line, each);
    });
  }
  out << "],\n\"queue\":" << Written(QueueJson(window.lvwQueue))
      << ",\n\"settings\":" << Written(SettingsJson(program.options)) << "}\n";
}

}  // namespace gorbex::cli
