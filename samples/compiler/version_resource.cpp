#include "compiler/version_resource.h"

#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

#include "compiler/byte_writer.h"
#include "platform/code_page.h"

namespace gorbex::standin {
namespace {

constexpr std::uint32_t kVersionType = 16;
constexpr std::uint32_t kEnglish = 0x409;
constexpr std::uint32_t kUnicode = 0x4B0;

std::string WideText(std::string_view text) {
  ByteWriter out;
  for (const char letter : text) out.U16(static_cast<std::uint32_t>(ToUnicode(letter)));
  return out.U16(0).Bytes();
}

/// A node of the resource's tree: its key, then its value or its nodes.
struct Node {
  std::string_view key;
  std::string value{};
  std::uint32_t valueLength = 0;  ///< a text's is counted in letters
  bool isText = true;
  std::vector<Node> nodes{};
};

Node TextNode(std::string_view key, std::string_view text) {
  return {key, WideText(text), static_cast<std::uint32_t>(text.size() + 1)};
}

std::string Bytes(const Node& node) {
  constexpr std::size_t kLengthSize = 2;
  ByteWriter rest;
  // The step counts from the length that comes before.
  rest.U16(0).U16(node.valueLength).U16(node.isText ? 1 : 0).Text(WideText(node.key)).Align(4);
  rest.Text(node.value);
  for (const auto& child : node.nodes) rest.Align(4).Text(Bytes(child));
  ByteWriter out;
  out.U16(rest.Size()).Text(std::string_view(rest.Bytes()).substr(kLengthSize));
  return out.Bytes();
}

std::string FixedInfo(const FileVersion& version) {
  const auto& [major, minor, revision] = version.numbers;
  ByteWriter out;
  out.U32(0xFEEF04BD).U32(0x10000);
  for (int i = 0; i < 2; ++i) out.U16(minor).U16(major).U16(revision).U16(0);  // file, product
  out.U32(0).U32(0).U32(4).U32(version.isLibrary ? 2 : 1).U32(0).U32(0).U32(0);
  return out.Bytes();
}

// "1.02.0003", as the development environment writes it.
std::string VersionText(const FileVersion& version) {
  const auto& [major, minor, revision] = version.numbers;
  char text[24];
  std::snprintf(text, sizeof text, "%u.%02u.%04u", unsigned{major}, unsigned{minor},
                unsigned{revision});
  return text;
}

}  // namespace

Resource VersionResource(const FileVersion& version) {
  const auto text = VersionText(version);
  const auto& file = version.fileName;
  Node texts{"040904B0"};
  texts.nodes = {TextNode("FileDescription", version.description),
                 TextNode("ProductName", version.product),
                 TextNode("FileVersion", text),
                 TextNode("ProductVersion", text),
                 TextNode("InternalName", file.substr(0, file.rfind('.'))),
                 TextNode("OriginalFilename", file)};
  const Node translation{"Translation", ByteWriter().U16(kEnglish).U16(kUnicode).Bytes(), 4, false};
  Node all{"VS_VERSION_INFO", FixedInfo(version), 52, false};
  all.nodes.push_back({"StringFileInfo", {}, 0, true, {texts}});
  all.nodes.push_back({"VarFileInfo", {}, 0, true, {translation}});
  return {"", kVersionType, 1, kEnglish, Bytes(all)};
}

}  // namespace gorbex::standin
