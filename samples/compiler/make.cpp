#include "compiler/make.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

#include "compiler/block_check.h"
#include "compiler/component_identity.h"
#include "compiler/declarations.h"
#include "compiler/image_resources.h"
#include "compiler/library_members.h"
#include "compiler/project.h"
#include "compiler/references.h"
#include "compiler/result_log.h"
#include "compiler/source_digest.h"
#include "compiler/source_text.h"
#include "compiler/type_library_image.h"
#include "platform/code_page.h"
#include "platform/component/component_keys.h"
#include "platform/component/library_file.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex::standin {
namespace {

class Build {
 public:
  Build(FileSystem& files, Registry& registry, const Project& project,
        const std::string& outputFolder, const Foundation& foundation)
      : files_(files),
        registry_(registry),
        project_(project),
        foundation_(foundation),
        folder_(ResolvedPath(project.folder,
                             outputFolder.empty() ? project.outputFolder : outputFolder)),
        output_(ResolvedPath(folder_, project.exeName)) {}

  std::optional<Fault> Run() {
    for (const auto& item : project_.items) {
      if (auto fault = CheckItem(item)) return fault;
    }
    digest_.AddProject(files_.Read(project_.path));
    for (const auto& item : project_.items) {
      if (!item.IsSource()) {
        digest_.AddInterface(files_, RegisteredFileOf(registry_, item).value_or(""));
        continue;
      }
      const auto path = ResolvedPath(project_.folder, item.value);
      digest_.AddSource(files_, path);
      if (auto fault = CheckCode(path)) return fault;
      if (!IsComponent(project_.type)) continue;
      if (item.kind == ProjectItem::Kind::Source) AddEnums(ReadDeclarations(files_.Read(path)));
      if (item.kind == ProjectItem::Kind::Source) continue;
      if (auto fault = TakeClass(item, path)) return fault;
    }
    return Produce();
  }

 private:
  std::optional<Fault> CheckItem(const ProjectItem& item) const {
    if (!item.IsSource()) {
      return CheckReference(files_, registry_, project_, item);
    }
    const auto path = ResolvedPath(project_.folder, item.value);
    return FileExists(files_, path) ? std::nullopt : std::optional(FileNotFound(path));
  }

  std::optional<Fault> CheckCode(const std::string& path) const {
    const std::string text = files_.Read(path);
    if (!IsPlainText(text)) return Unloadable(path, "it is not text with CR LF line ends");
    const auto code = CodeView(text);
    if (!code) return Unloadable(path, "its header has no end");
    const auto fault = CheckBlocks(*code);
    if (!fault) return std::nullopt;
    return CompileError(path, fault->line, fault->text);
  }

  static Fault Unloadable(const std::string& path, const std::string& reason) {
    return BuildFault(CouldNotBeLoaded(path, reason).text);
  }

  // Names in a type library ignore letter case.
  std::optional<Fault> TakeClass(const ProjectItem& item, const std::string& path) {
    auto offered = ReadOffer(item, files_.Read(path));
    if (!IsName(offered.name)) {
      return Unloadable(path, "'" + offered.name + "' is not a class name");
    }
    const auto bearsName = [&](const OfferedClass& other) {
      return EqualsIgnoringCase(other.name, offered.name);
    };
    if (EqualsIgnoringCase(offered.name, project_.name) ||
        std::any_of(classes_.begin(), classes_.end(), bearsName)) {
      return Unloadable(path, "Name conflicts with existing module or project");
    }
    AddEnums(offered.declarations);
    classes_.push_back(std::move(offered));
    return std::nullopt;
  }

  std::optional<Fault> Produce() {
    if (!FolderExists(files_, folder_)) {
      return BuildFault(RuntimeError(ErrorNumber::PathNotFound, folder_).Description());
    }
    if (!IsComponent(project_.type)) {
      files_.Write(output_, foundation_.programImage + digest_.Bytes());
      return std::nullopt;
    }
    if (!IsName(project_.name)) return BuildFault("'" + project_.name + "' is not a project name");
    const auto library =
        ComponentLibrary(project_, classes_, KeptLibrary(), foundation_.identities);
    AddEnumsOfReferences();
    const auto members = MembersOf(classes_, library, [this](std::string_view name) {
      return enums_.contains(LowerCase(name));
    });
    const auto& image = IsInProcess() ? foundation_.libraryImage : foundation_.programImage;
    files_.Write(output_,
                 WithTypeLibrary(image, TypeLibraryImage(library, members)) + digest_.Bytes());
    return Register(library);
  }

  void AddEnums(const Declarations& declarations) {
    for (const auto& each : declarations.enums) enums_.insert(LowerCase(each.name));
  }

  void AddEnumsOfReferences() {
    for (const auto& item : project_.items) {
      const auto library = item.IsSource() ? std::nullopt : LibraryOf(files_, registry_, item);
      if (!library) continue;
      for (const auto& type : library->types) {
        if (type.kind == TypeKind::Enum) enums_.insert(LowerCase(type.name));
      }
    }
  }

  [[nodiscard]] bool IsInProcess() const {
    return project_.type == ProjectType::OleDll || project_.type == ProjectType::Control;
  }

  // The library that this build must stay compatible with.
  std::optional<TypeLibrary> KeptLibrary() const {
    const auto& named = project_.compatibleFile;
    if (!named.empty()) {
      if (auto found = TypeLibraryOf(files_, ResolvedPath(project_.folder, named))) return found;
    }
    return TypeLibraryOf(files_, output_);
  }

  std::optional<Fault> Register(const TypeLibrary& library) {
    auto keys = KeysOf(library, output_);
    keys.inProcess = IsInProcess();
    if (WriteComponentKeys(registry_, keys)) return std::nullopt;
    return BuildFault("'" + output_ + "' could not be registered");
  }

  FileSystem& files_;
  Registry& registry_;
  const Project& project_;
  const Foundation& foundation_;
  std::string folder_;
  std::string output_;
  std::vector<OfferedClass> classes_;
  SourceDigest digest_;
  std::set<std::string> enums_;  ///< that types may name, in small letters
};

std::optional<Fault> Attempt(Build build) {
  try {
    return build.Run();
  } catch (const RuntimeError& error) {
    return BuildFault(error.Description());
  }
}

std::variant<Project, Fault> TryLoad(const FileReader& files, const std::string& path) {
  try {
    return LoadProject(files, path);
  } catch (const RuntimeError& error) {
    return CouldNotBeLoaded(path, error.Description());
  }
}

}  // namespace

MakeResult Make(FileSystem& files, Registry& registry, const std::string& project,
                const std::string& outputFolder, const Foundation& foundation) {
  const auto loaded = TryLoad(files, project);
  if (const auto* fault = std::get_if<Fault>(&loaded)) return {false, {fault->text}};
  const auto& found = std::get<Project>(loaded);
  const auto fault = Attempt(Build(files, registry, found, outputFolder, foundation));
  if (!fault) return {true, {Succeeded(found.exeName)}};
  MakeResult result{false, {fault->text}};
  if (fault->stage == Fault::Stage::Build) result.lines.push_back(Failed(found.exeName));
  return result;
}

}  // namespace gorbex::standin
