#include "freshness/freshness_check.h"

#include <algorithm>

#include "core/file_tools.h"
#include "core/reference_value.h"
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

std::string_view Fault(Fingerprint::State state) {
  return state == Fingerprint::State::Missing ? " is missing" : " cannot be read";
}

}  // namespace

void Freshness::Check::Add(Kind kind, const std::string& subject, const std::string& text,
                           const std::string& component) {
  reasons_.push_back({kind, subject, text, component});
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
  for (BuildInput& input : record_.inputs) CheckInput(input);
  CheckTerms();
  std::stable_sort(reasons_.begin(), reasons_.end(),
                   [](const Reason& one, const Reason& other) { return one.kind < other.kind; });
  return {std::move(reasons_), record_.when, record_.duration};
}

std::string Freshness::Check::PathOf(const BuildInput& input) const {
  return input.place.empty() ? ResolvedPath(StripPath(project_), input.name) : input.place;
}

void Freshness::Check::TakeLook(Fingerprint& known, const std::optional<FileStamp>& stamp) {
  if (!stamp || stamp == known.stamp) return;
  known.stamp = stamp;
  hasNewLooks_ = true;
}

Fingerprint Freshness::Check::Now(BuildInput& input, Covered covered) {
  const Fingerprint now = owner_.looks_.Of(PathOf(input), covered, input.print);
  if (now.Matches(input.print)) TakeLook(input.print, now.stamp);
  return now;
}

void Freshness::Check::CheckInput(BuildInput& input) {
  using Input = BuildInput::Kind;
  switch (input.kind) {
    case Input::ProjectFile:
      return CheckProjectFile(input.print);
    case Input::Member:
    case Input::Companion:
      return CheckSource(input);
    case Input::Reference:
      return CheckReference(input);
    case Input::Stray:
      return CheckStray(input);
    case Input::Compatible:
      if (!Now(input, Covered::Interface).Matches(input.print)) {
        Add(Kind::CompatibleBinary, PathOf(input), "the compatible binary changed");
      }
      return;
    case Input::Compiler:
      return CheckCompiler(input);
    case Input::Binary:
      return CheckBinary(input);
  }
}

void Freshness::Check::CheckProjectFile(Fingerprint& known) {
  const auto stamp = owner_.looks_.StampOf(project_);
  if (stamp && stamp == known.stamp) return CheckDebug(record_.debug);
  const std::string file = GetFileFromPath(project_);
  try {
    const ProjectSources sources = ReadSources(owner_.uses_.files.Read(project_));
    if (sources.text != known.hash) {
      return Add(Kind::ProjectFile, file, "the project file changed");
    }
    TakeLook(known, sources.debug == record_.debug ? stamp : std::nullopt);
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
  } else {
    Add(Kind::ProjectFile, GetFileFromPath(project_), "the project file changed");
  }
}

void Freshness::Check::CheckSource(BuildInput& input) {
  using State = Fingerprint::State;
  const Fingerprint now = Now(input, Covered::Contents);
  if (now.Matches(input.print)) return;
  const std::string file = GetFileFromPath(input.name);
  if (now.state == State::Missing) return Add(Kind::MemberMissing, file, file + " is missing");
  const bool isRead = now.state == State::Read;
  Add(Kind::Member, file, file + (isRead ? " changed" : " cannot be read"));
}

void Freshness::Check::CheckReference(BuildInput& input) {
  const std::string& lead = owner_.Lead(input.name);
  if (EqualsIgnoringCase(lead, input.place)) return CheckInterface(input);
  AddReference(input, lead.empty() ? " is not registered any more" : " leads to another file now");
}

void Freshness::Check::CheckStray(BuildInput& input) {
  const bool isKnownNow = !GetGUID(input.name).empty() && !owner_.Lead(input.name).empty();
  if (!isKnownNow) return CheckInterface(input);
  AddReference(input, " leads to another file now");
}

void Freshness::Check::AddReference(const BuildInput& input, std::string_view change) {
  const std::string file = GetFileFromPath(input.place);
  std::string text(GetGUID(input.name));
  text.append(change);
  if (!file.empty()) text.append(" (").append(file).append(")");
  Add(Kind::Reference, file, text, input.place);
}

void Freshness::Check::CheckInterface(BuildInput& input) {
  const Fingerprint now = Now(input, Covered::Interface);
  if (now.Matches(input.print)) return;
  const std::string file = GetFileFromPath(input.place.empty() ? input.name : input.place);
  if (now.state == Fingerprint::State::Read) {
    return Add(Kind::Interface, file, "the interface of " + file + " changed", input.place);
  }
  Add(Kind::Interface, file, file + ", which it uses," + std::string(Fault(now.state)),
      input.place);
}

void Freshness::Check::CheckCompiler(BuildInput& input) {
  const std::string compiler = WithoutQuotes(owner_.uses_.window.compilerPath);
  const bool isSame = EqualsIgnoringCase(compiler, input.place) &&
                      Now(input, Covered::Contents).Matches(input.print);
  if (!isSame) Add(Kind::Compiler, compiler, "another compiler");
}

void Freshness::Check::CheckBinary(BuildInput& input) {
  const Fingerprint now = Now(input, Covered::Contents);
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
