#include "freshness/freshness_check.h"

#include <algorithm>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

// "2.1.0" however its numbers are written; the text itself when it holds none.
std::string PlainVersion(const std::string& version) {
  try {
    std::string plain;
    for (const std::string_view field : Split(version, '.')) {
      if (!plain.empty()) plain += '.';
      plain += std::to_string(ToLong(NumericValue(field)));
    }
    return plain;
  } catch (const RuntimeError&) {
    return version;
  }
}

}  // namespace

void Freshness::Check::Add(Kind kind, const std::string& subject, const std::string& text) {
  reasons_.push_back({kind, subject, text});
}

Judgement Freshness::Check::Run() {
  const clsMember* member = owner_.uses_.window.ProjectMembers.Find(project_);
  if (member == nullptr) {
    const std::string file = GetFileFromPath(project_);
    return {{{Kind::ProjectFile, file, file + " is missing"}}, "", std::nullopt};
  }
  const std::string output = BuiltFile(*member, owner_.uses_.window.buildDirectory);
  auto record = owner_.records_.Find(project_, output);
  if (!record) {
    const bool isElsewhere = owner_.records_.Knows(project_);
    return {{isElsewhere ? Reason{Kind::BuildFolder, output, "another build folder"}
                         : Reason{Kind::NeverBuilt, output, "never built here"}},
            "",
            std::nullopt};
  }
  record_ = std::move(*record);
  CheckSources();
  CheckShared();
  CheckTerms();
  std::ranges::stable_sort(reasons_, {}, &Reason::kind);
  return {std::move(reasons_), record_.when, record_.duration};
}

void Freshness::Check::TakeLook(Fingerprint& known, const std::optional<FileStamp>& stamp) {
  if (!stamp || stamp == known.stamp) return;
  known.stamp = stamp;
  hasNewLooks_ = true;
}

Fingerprint Freshness::Check::Now(BuildInput& input, const std::string& path, Covered covered) {
  const Fingerprint now = owner_.looks_.Of(path, covered, input.print);
  if (now.Matches(input.print)) TakeLook(input.print, now.stamp);
  return now;
}

// Looks at the project file and its sources together, because they are in few folders.
void Freshness::Check::CheckSources() {
  using Input = BuildInput::Kind;
  const std::string file = GetFileFromPath(project_);
  std::vector<std::string_view> names;
  names.reserve(record_.own.size());
  const auto isElsewhere = [](const BuildInput& input) {
    return input.kind == Input::Compatible || input.kind == Input::Binary;
  };
  for (const BuildInput& input : record_.own) {
    if (!isElsewhere(input)) names.push_back(input.kind == Input::ProjectFile ? file : input.name);
  }
  const auto looks = owner_.looks_.LookIn(StripPath(project_), names);
  auto look = looks.begin();
  for (BuildInput& input : record_.own) {
    if (input.kind == Input::Compatible) {
      CheckCompatible(input);
    } else if (input.kind == Input::Binary) {
      CheckBinary(input);
    } else if (input.kind == Input::ProjectFile) {
      CheckProjectFile(input.print, (look++)->stamp);
    } else {
      CheckSource(input, *look++);
    }
  }
}

void Freshness::Check::CheckSource(BuildInput& input, const FileLook& look) {
  const auto path = [&] { return ResolvedPath(StripPath(project_), input.name); };
  const bool isSame =
      look.state == Fingerprint::State::Read && look.stamp && look.stamp == input.print.stamp;
  if (isSame) return;
  const Fingerprint now = owner_.looks_.ContentsOf(path(), look, input.print);
  if (now.Matches(input.print)) return TakeLook(input.print, now.stamp);
  const std::string file = GetFileFromPath(input.name);
  if (now.state == Fingerprint::State::Missing)
    return Add(Kind::MemberMissing, file, file + " is missing");
  const bool isRead = now.state == Fingerprint::State::Read;
  Add(Kind::Member, file, file + (isRead ? " changed" : " cannot be read"));
}

void Freshness::Check::CheckCompatible(BuildInput& input) {
  const std::string path = ResolvedPath(StripPath(project_), input.name);
  if (Now(input, path, Covered::Interface).Matches(input.print)) return;
  Add(Kind::CompatibleBinary, path, "the compatible binary changed");
}

void Freshness::Check::CheckShared() {
  for (SharedInput& input : record_.shared) {
    const SharedFinding& finding = owner_.FindingOf(input);
    if (finding.reason) reasons_.push_back(*finding.reason);
    if (finding.renewed == nullptr) continue;
    input = finding.renewed;
    hasNewLooks_ = true;
  }
}

void Freshness::Check::CheckProjectFile(Fingerprint& known, const std::optional<FileStamp>& stamp) {
  if (stamp && stamp == known.stamp) return CheckDebug(record_.debug);
  const std::string file = GetFileFromPath(project_);
  try {
    const ProjectSources sources = ReadSources(owner_.uses_.files.Read(project_));
    if (sources.text != known.hash) {
      Add(Kind::ProjectFile, file, "the project file changed");
    } else {
      TakeLook(known, sources.debug == record_.debug ? stamp : std::nullopt);
    }
    CheckDebug(sources.debug);
  } catch (const RuntimeError&) {
    Add(Kind::ProjectFile, file, "the project file cannot be read");
  }
}

// Only a debug build makes the two values other ones than the project's own.
void Freshness::Check::CheckDebug(const DebugTexts& own) {
  const bool isWanted = EqualsIgnoringCase(owner_.uses_.options.DebugBuild, "true");
  const DebugTexts wanted = isWanted ? WithDebug(own) : own;
  if (wanted == record_.debug) return;
  const bool wasDebug = record_.debug == WithDebug(record_.debug);
  if (isWanted) {
    Add(Kind::Debug, "", "a debug build is wanted");
  } else if (wasDebug) {
    Add(Kind::Debug, "", "a build without debug values is wanted");
  } else if (std::ranges::find(reasons_, Kind::ProjectFile, &Reason::kind) == reasons_.end()) {
    Add(Kind::ProjectFile, GetFileFromPath(project_), "the project file changed");
  }
}

void Freshness::Check::CheckBinary(BuildInput& input) {
  const Fingerprint now = Now(input, input.place, Covered::Contents);
  const std::string file = GetFileFromPath(input.place);
  if (now.state == Fingerprint::State::Missing) {
    return Add(Kind::BinaryMissing, file, file + " is missing");
  }
  if (!now.Matches(input.print)) {
    Add(Kind::BinaryReplaced, file, file + " is not the one that was built");
  } else if (!input.name.empty() && !EqualsIgnoringCase(owner_.Lead(input.name), input.place)) {
    Add(Kind::BinaryReplaced, file, file + " is not the one that is registered");
  }
}

void Freshness::Check::CheckTerms() {
  const clsOptions& options = owner_.uses_.options;
  const std::string& wanted = options.VersionComponents;
  if (!wanted.empty() && PlainVersion(wanted) != PlainVersion(record_.version)) {
    Add(Kind::Version, wanted, wanted + " is wanted, " + record_.version + " was built");
  }
  if (!options.Compatible) Add(Kind::BreakCompatibility, "", "compatibility is to be broken");
  if (options.ChangeRefs && owner_.uses_.references.WouldChange(project_)) {
    Add(Kind::Reference, "", "references are to be updated");
  }
}

}  // namespace gorbex
