#include "tests/support/group_builder.h"

#include <cstdint>
#include <utility>

namespace gorbex::test {
namespace {

// A library that the group does not hold (yet) is taken for a DLL.
std::string BinaryPath(const std::string& name, const std::string& extension = ".dll") {
  return "C:\\Group\\Bin\\" + name + extension;
}

std::string GuidOf(const std::string& name) {
  std::uint32_t hash = 2166136261U;
  for (const char letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
  std::string digits;
  for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789ABCDEF"[(hash >> shift) & 0xFU];
  return "{" + digits + "-0000-4000-8000-0000C0DEC0DE}";
}

std::string ReferenceTo(const std::string& name, const std::string& binary) {
  return "*\\G" + GuidOf(name) + "#1.0#0#" + binary + "#" + name;
}

}  // namespace

GroupProject::GroupProject(Group& group, std::string name, const std::string& type,
                           std::string extension)
    : group_(group), name_(std::move(name)), extension_(std::move(extension)) {
  Line("Type=" + type).Line("ExeName32=\"" + name_ + extension_ + "\"");
  Line("Path32=\"" + group_.Folder() + "\"").Line("Name=\"" + name_ + "\"");
}

std::string GroupProject::Path() const {
  return Group::Path(name_);
}

std::string GroupProject::Binary() const {
  return BinaryPath(name_, extension_);
}

std::string GroupProject::Guid() const {
  return GuidOf(name_);
}

std::string GroupProject::ReferenceValue() const {
  return ReferenceTo(name_, Binary());
}

GroupProject& GroupProject::Uses(const std::string& library) {
  std::string value = ReferenceTo(library, BinaryPath(library));
  for (const GroupProject& project : group_.projects_) {
    if (project.name_ == library) value = project.ReferenceValue();
  }
  if (dependency_.empty()) dependency_ = Group::Path(library);
  return Line("Reference=" + value);
}

GroupProject& GroupProject::Line(const std::string& line) {
  lines_ += line + "\r\n";
  return Written();
}

GroupProject& GroupProject::Module(const std::string& fileName, const std::string& text) {
  group_.platform_.files.AddFile("C:\\Group\\" + name_ + "\\" + fileName, text);
  return Line("Module=" + name_ + "; " + fileName);
}

GroupProject& GroupProject::Built() {
  group_.platform_.files.AddFile(Binary(), "MZ");
  group_.platform_.registry.AddText(RegistryRoot::ClassesRoot,
                                    "TypeLib\\" + Guid() + "\\1.0\\0\\win32", "", Binary());
  return *this;
}

GroupProject& GroupProject::Written() {
  group_.platform_.files.AddFile(Path(), lines_);
  return *this;
}

std::string Group::Path(const std::string& name) {
  return "C:\\Group\\" + name + "\\" + name + ".vbp";
}

GroupProject& Group::Add(const std::string& name, const std::string& type,
                         const std::string& extension) {
  platform_.files.AddFolder(Folder());
  return projects_.emplace_back(*this, name, type, extension);
}

std::string Group::BuildProject(const std::vector<std::string>& lines) const {
  std::string text;
  for (const GroupProject& project : projects_) text += "project=" + project.Path() + "\r\n";
  for (const GroupProject& project : projects_) {
    text += "queue=*" + project.Path() + "," + project.dependency_ + "\r\n";
  }
  text += "builddir=" + Folder() + "\r\n";
  for (const std::string& line : lines) text += line + "\r\n";
  platform_.files.AddFile("C:\\Group\\Group.bpf", text);
  return "C:\\Group\\Group.bpf";
}

}  // namespace gorbex::test
