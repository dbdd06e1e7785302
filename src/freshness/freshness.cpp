#include "freshness/freshness.h"

#include <utility>

#include "core/file_tools.h"
#include "core/project_file.h"
#include "core/reference_value.h"
#include "core/text.h"
#include "freshness/component_lead.h"
#include "freshness/freshness_check.h"
#include "freshness/shared_check.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {

std::string NoteOf(const Judgement& judgement) {
  if (judgement.IsUpToDate()) return "Up to date since " + judgement.since;
  std::vector<std::string> texts;
  texts.reserve(judgement.reasons.size());
  for (const Reason& reason : judgement.reasons) texts.push_back(reason.text);
  std::string note = "To be built:\n" + ShortList(texts);
  std::erase(note, '\r');
  note.pop_back();
  return note;
}

Freshness::Freshness(const Uses& uses)
    : uses_(uses),
      looks_(uses.files, uses.components, uses.clock),
      records_(uses.files, JoinPath(uses.programFolder, "gorbexbuilder.built")) {}

void Freshness::LookAgain() {
  looks_.LookAgain();
  records_.LookAgain();
  leads_.clear();
  findings_.clear();
}

const std::string& Freshness::Lead(const std::string& libraryKey) {
  const auto [place, isNew] = leads_.try_emplace(libraryKey);
  if (isNew) place->second = RegisteredFile(uses_.registry, libraryKey);
  return place->second;
}

const Freshness::SharedFinding& Freshness::FindingOf(const SharedInput& input) {
  const auto [place, isNew] = findings_.try_emplace(input);
  if (isNew) place->second = SharedCheck(*this, *input).Run();
  return place->second;
}

// A reference that the registry does not know leads to the file that it names.
BuildInput Freshness::ReferenceInput(const std::string& folder, const std::string& value) {
  using Kind = BuildInput::Kind;
  BuildInput input{Kind::Stray, value, ""};
  if (const auto file = ProjectFileOf(value)) {
    input.place = ResolvedPath(folder, *file);
  } else if (const auto key = LibraryKeyOf(value)) {
    input.name = *key;
    input.place = Lead(*key);
    if (!input.place.empty()) {
      input.kind = Kind::Reference;
    } else {
      Procedure::IgnoringErrors().Do(
          [&] { input.place = ResolvedPath(folder, ComponentPath(value)); });
    }
  }
  return input;
}

// Most sources have no binary part; one that names a part which is missing does not compile.
void Freshness::TakeSources(BuildRecord& record, const ProjectSources& sources) {
  using Kind = BuildInput::Kind;
  const std::string folder = StripPath(record.project);
  const auto take = [&](Kind kind, const std::vector<std::string>& names) {
    const auto looks = looks_.LookIn(folder, {names.begin(), names.end()});
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (kind == Kind::Companion && looks[i].state == Fingerprint::State::Missing) continue;
      const std::string path = ResolvedPath(folder, names[i]);
      record.own.push_back({kind, names[i], "", looks_.ContentsOf(path, looks[i])});
    }
  };
  take(Kind::Member, sources.members);
  take(Kind::Companion, sources.companions);
  const std::string& compatible = sources.compatibleBinary;
  const std::string path = ResolvedPath(folder, compatible);
  if (compatible.empty() || EqualsIgnoringCase(path, record.output)) return;
  record.own.push_back({Kind::Compatible, compatible, "", looks_.Of(path, Covered::Interface)});
}

void Freshness::TakeShared(BuildRecord& record, const ProjectSources& sources) {
  const auto take = [&](BuildInput input, Covered covered) {
    input.print = looks_.Of(input.place, covered);
    record.shared.push_back(std::make_shared<const BuildInput>(std::move(input)));
  };
  const std::string folder = StripPath(record.project);
  for (const auto& value : sources.references) {
    take(ReferenceInput(folder, value), Covered::Interface);
  }
  const std::string compiler = WithoutQuotes(uses_.window.compilerPath);
  take({BuildInput::Kind::Compiler, "", compiler}, Covered::Contents);
}

std::optional<Freshness::Taken> Freshness::Take(const std::string& project,
                                                const std::string& folder) {
  LookAgain();
  try {
    const std::string name = GetFileFromPath(project);
    const auto look = looks_.LookIn(StripPath(project), {name}).front();
    const std::string text = uses_.files.Read(project);
    const ProjectSources sources = ReadSources(text);
    Taken taken;
    BuildRecord& record = taken.record;
    record.project = project;
    record.output = BuiltFile(ParseProjectFile(project, text).member, folder);
    record.version = sources.version;
    record.debug = sources.debug;
    const Fingerprint print{Fingerprint::State::Read, sources.text, look.stamp};
    record.own.push_back({BuildInput::Kind::ProjectFile, "", "", print});
    TakeSources(record, sources);
    TakeShared(record, sources);
    taken.start = uses_.clock.Elapsed();
    return taken;
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

void Freshness::Note(std::optional<Taken> taken) {
  LookAgain();
  if (!taken) return;
  BuildRecord& record = taken->record;
  record.duration = uses_.clock.Elapsed() - taken->start;
  record.when = TimeStamp(uses_.clock.LocalNow());
  BuildInput binary{BuildInput::Kind::Binary, "", record.output};
  binary.print = looks_.Of(record.output, Covered::Contents);
  if (binary.print.state != Fingerprint::State::Read) return;
  try {
    const std::string bytes = uses_.files.Read(record.output);
    if (const auto library = uses_.components.LibraryIn(bytes)) {
      const std::string key = library->guid + "#" + library->version + "#0";
      if (EqualsIgnoringCase(Lead(key), record.output)) binary.name = key;
    }
  } catch (const RuntimeError&) {
    return;
  }
  record.own.push_back(std::move(binary));
  Save(record);
}

void Freshness::Save(const BuildRecord& record) {
  try {
    records_.Add(record);
  } catch (const RuntimeError& error) {
    const std::string line =
        "What was built could not be noted, so that it will be built again: " + error.Description();
    if (hasTold_) return;
    hasTold_ = true;
    uses_.log.WriteLog(line);
    told.Emit(line);
  }
}

std::optional<std::chrono::milliseconds> Freshness::LastDuration(const clsMember& project,
                                                                 const std::string& folder) {
  const auto record = records_.Find(project.path, BuiltFile(project, folder));
  return record ? std::optional(record->duration) : std::nullopt;
}

Judgement Freshness::Judge(const std::string& project) {
  return Check(*this, project).Run();
}

Judgement Freshness::JudgeInRun(const std::string& project) {
  // A get may have brought other files.
  if (uses_.options.GetLatest) LookAgain();
  Check check(*this, project);
  Judgement judgement = check.Run();
  if (judgement.IsUpToDate() && check.HasNewLooks()) {
    Procedure::IgnoringErrors().Do([&] { records_.Add(check.Renewed()); });
  }
  return judgement;
}

}  // namespace gorbex
