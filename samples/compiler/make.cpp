#include "compiler/make.h"

#include <optional>
#include <variant>

#include "compiler/block_check.h"
#include "compiler/component_image.h"
#include "compiler/identity.h"
#include "compiler/project.h"
#include "compiler/references.h"
#include "compiler/registration.h"
#include "compiler/result_log.h"
#include "compiler/source_text.h"
#include "compiler/windows_path.h"
#include "platform/runtime_error.h"

namespace gorbex::standin {
namespace {

constexpr const char* kFirstLibraryVersion = "1.0";

class Build {
 public:
  Build(FileSystem& files, Registry& registry, const Project& project,
        const std::string& outputFolder)
      : files_(files),
        registry_(registry),
        project_(project),
        folder_(
            Absolute(outputFolder.empty() ? project.outputFolder : outputFolder, project.folder)),
        output_(Absolute(project.exeName, folder_)) {}

  std::optional<Fault> Run() {
    for (const auto& item : project_.items) {
      if (auto fault = CheckItem(item)) return fault;
    }
    for (const auto& item : project_.items) {
      if (item.kind != ProjectItem::Kind::Source) continue;
      if (auto fault = CheckCode(Absolute(item.value, project_.folder))) return fault;
    }
    return Produce();
  }

 private:
  std::optional<Fault> CheckItem(const ProjectItem& item) const {
    if (item.kind != ProjectItem::Kind::Source) {
      return CheckReference(files_, registry_, project_, item);
    }
    const auto path = Absolute(item.value, project_.folder);
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

  std::optional<Fault> Produce() {
    if (!FolderExists(files_, folder_)) {
      return BuildFault(RuntimeError(ErrorNumber::PathNotFound, folder_).Description());
    }
    ComponentFacts facts{project_.name,
                         project_.major + "." + project_.minor + "." + project_.revision, "", ""};
    if (!IsComponent(project_.type)) {
      files_.Write(output_, ComponentImage(ImageKind::Program, facts));
      return std::nullopt;
    }
    TakeIdentity(facts);
    const bool isLibrary = project_.type != ProjectType::OleExe;
    files_.Write(output_,
                 ComponentImage(isLibrary ? ImageKind::Library : ImageKind::Program, facts));
    return Register(facts);
  }

  void TakeIdentity(ComponentFacts& facts) const {
    facts.libraryVersion = kFirstLibraryVersion;
    if (project_.compatibleMode != "1" && project_.compatibleMode != "2") {
      facts.library = BracedText(RandomUuid());
      return;
    }
    const auto kept = KeptComponent();
    facts.library = kept ? kept->library : FirstIdentity(project_.name);
    if (kept) facts.libraryVersion = kept->libraryVersion;
  }

  // The component that this build must stay compatible with.
  std::optional<ComponentFacts> KeptComponent() const {
    const auto& named = project_.compatibleFile;
    if (!named.empty()) {
      if (auto found = ComponentAt(Absolute(named, project_.folder))) return found;
    }
    return ComponentAt(output_);
  }

  std::optional<ComponentFacts> ComponentAt(const std::string& path) const {
    if (!FileExists(files_, path)) return std::nullopt;
    return ReadComponent(files_.Read(path));
  }

  std::optional<Fault> Register(const ComponentFacts& facts) {
    const auto& title = project_.description.empty() ? project_.name : project_.description;
    if (RegisterLibrary(registry_, {facts.library, facts.libraryVersion, title, output_})) {
      return std::nullopt;
    }
    return BuildFault("'" + output_ + "' could not be registered");
  }

  FileSystem& files_;
  Registry& registry_;
  const Project& project_;
  std::string folder_;
  std::string output_;
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
                const std::string& outputFolder) {
  const auto loaded = TryLoad(files, project);
  if (const auto* fault = std::get_if<Fault>(&loaded)) return {false, {fault->text}};
  const auto& found = std::get<Project>(loaded);
  const auto fault = Attempt(Build(files, registry, found, outputFolder));
  if (!fault) return {true, {Succeeded(found.exeName)}};
  MakeResult result{false, {fault->text}};
  if (fault->stage == Fault::Stage::Build) result.lines.push_back(Failed(found.exeName));
  return result;
}

}  // namespace gorbex::standin
