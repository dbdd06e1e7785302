#include "tests/support/group_builder.h"

#include <functional>
#include <iomanip>
#include <sstream>

namespace gorbex::test {
namespace {

const std::string kBuildFolder = "C:\\Group\\Bin";

std::string GuidOf(const std::string& name) {
  std::ostringstream text;
  text << '{' << std::uppercase << std::hex << std::setfill('0') << std::setw(8)
       << (std::hash<std::string>{}(name)&0xFFFFFFFFU) << "-0000-4000-8000-0000C0DEC0DE}";
  return text.str();
}

}  // namespace

GroupProject::GroupProject(Group& group, const std::string& name, const std::string& type,
                           const std::string& extension)
    : group_(group), name_(name), binary_(kBuildFolder + "\\" + name + extension) {
  Line("Type=" + type).Line("ExeName32=\"" + name + extension + "\"");
  Line("Path32=\"" + kBuildFolder + "\"").Line("Name=\"" + name + "\"");
}

std::string GroupProject::Path() const {
  return Group::Path(name_);
}

std::string GroupProject::Guid() const {
  return GuidOf(name_);
}

GroupProject& GroupProject::Uses(const std::string& library) {
  std::string binary = kBuildFolder + "\\" + library + ".dll";  // if the group does not hold it yet
  for (const GroupProject& project : group_.projects_) {
    if (project.name_ == library) binary = project.binary_;
  }
  if (dependency_.empty()) dependency_ = Group::Path(library);
  return Line("Reference=*\\G" + GuidOf(library) + "#1.0#0#" + binary + "#" + library);
}

GroupProject& GroupProject::Line(const std::string& line) {
  lines_ += line + "\r\n";
  group_.platform_.files.AddFile(Path(), lines_);
  return *this;
}

GroupProject& GroupProject::Built() {
  group_.platform_.files.AddFile(binary_, "MZ");
  return *this;
}

std::string Group::Path(const std::string& name) {
  return "C:\\Group\\" + name + "\\" + name + ".vbp";
}

GroupProject& Group::Add(const std::string& name, const std::string& type,
                         const std::string& extension) {
  platform_.files.AddFolder(kBuildFolder);
  return projects_.emplace_back(*this, name, type, extension);
}

std::string Group::BuildProject(const std::vector<std::string>& lines) const {
  std::string text;
  for (const GroupProject& project : projects_) text += "project=" + project.Path() + "\r\n";
  for (const GroupProject& project : projects_) {
    text += "queue=*" + project.Path() + "," + project.dependency_ + "\r\n";
  }
  text += "builddir=" + kBuildFolder + "\r\n";
  for (const std::string& line : lines) text += line + "\r\n";
  platform_.files.AddFile("C:\\Group\\Group.bpf", text);
  return "C:\\Group\\Group.bpf";
}

}  // namespace gorbex::test
