#include "platform/git/working_tree.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "platform/code_page.h"
#include "platform/git/fast_forward.h"
#include "platform/git/under_way.h"
#include "platform/git/words.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

// An argument ends at the first zero, as the system sees it.
std::string ArgumentOf(const std::string& text) {
  return ToUtf8(text.substr(0, text.find('\0')));
}

// ":MODE MODE HASH HASH LETTER": plain files of equal content, which only the permission to run
// tells apart.
bool IsOfModeAlone(std::string_view difference) {
  std::istringstream fields{std::string(difference)};
  std::string oldMode;
  std::string newMode;
  std::string oldHash;
  std::string newHash;
  fields >> oldMode >> newMode >> oldHash >> newHash;
  return oldMode.starts_with(":100") && newMode.starts_with("100") && oldHash == newHash;
}

// A name of that spelling comes first, then one that differs only in letter case.
bool IsLinkIn(const std::vector<FolderEntry>& entries, const std::string& name) {
  const FolderEntry* similar = nullptr;
  for (const auto& entry : entries) {
    if (entry.name == name) return entry.isLink;
    if (EqualsIgnoringCase(entry.name, name) && (similar == nullptr || entry.isLink)) {
      similar = &entry;
    }
  }
  return similar != nullptr && similar->isLink;
}

std::string Quoted(const std::string& text) {
  return "'" + text + "'";
}

}  // namespace

std::string GitWorkingTree::Tip() const {
  return "refs/remotes/" + place_.remote + "/" + place_.branch;
}

std::string GitWorkingTree::LocalPath(const std::string& path) const {
  auto local = place_.folder;
  if (!path.empty() && !local.ends_with('\\')) local += '\\';
  local += path;
  std::replace(local.begin(), local.end(), '/', '\\');
  return local;
}

std::shared_ptr<GitWorkingTree::Picture> GitWorkingTree::Held() const {
  auto picture = picture_.lock();
  if (picture && picture->failure) std::rethrow_exception(picture->failure);
  return picture;
}

void GitWorkingTree::Fetch() const {
  git_.Run(GitCall::Remote, {"fetch", "--quiet", "--no-tags", "--no-recurse-submodules", "--",
                             place_.remote, "+refs/heads/" + place_.branch + ":" + Tip()});
}

GitWorkingTree::Tree GitWorkingTree::NewTree() const {
  return std::make_shared<const GitTree>(
      git_.Run(GitCall::Question, {"ls-tree", "-r", "-t", "-z", "--full-tree", Tip()}));
}

// Before the first fetch there may be no tip.
GitWorkingTree::Tree GitWorkingTree::KnownTree() const {
  const auto listing =
      git_.Try(GitCall::Question, {"ls-tree", "-r", "-t", "-z", "--full-tree", Tip()});
  return std::make_shared<const GitTree>(listing.exitCode == 0 ? listing.output : std::string());
}

GitWorkingTree::PathSet GitWorkingTree::ReadDifferences() const {
  const auto answer =
      git_.Run(GitCall::Question, {"-c", "diff.autoRefreshIndex=true", "diff", "--raw",
                                   "--no-abbrev", "-z", "--no-renames", "--no-ext-diff",
                                   "--no-relative", "--ignore-submodules=all", Tip(), "--"});
  const auto records = Records(answer);
  PathSet paths;
  for (std::size_t i = 1; i < records.size(); i += 2) {
    auto path = FromUtf8(records[i]);
    if (path && !IsOfModeAlone(records[i - 1])) paths.insert(std::move(*path));
  }
  return paths;
}

void GitWorkingTree::Read(Picture& picture) const {
  try {
    picture.tree = NewTree();
    picture.differences = ReadDifferences();
  } catch (const RuntimeError&) {
    picture.failure = std::current_exception();
  }
}

std::shared_ptr<void> GitWorkingTree::TakePicture() {
  if (auto held = picture_.lock()) return held;
  auto picture = std::make_shared<Picture>();
  try {
    Fetch();
    Read(*picture);
  } catch (const RuntimeError&) {
    picture->failure = std::current_exception();
  }
  picture_ = picture;
  return picture;
}

std::optional<GitWorkingTree::Entry> GitWorkingTree::Find(const std::string& path) {
  const auto picture = Held();
  auto entry = (picture ? picture->tree : KnownTree())->Find(path);
  if (!entry && !picture) {
    Fetch();
    entry = NewTree()->Find(path);
  }
  if (entry) return entry;
  const auto local = files_.Look(LocalPath(path));
  if (!local) return std::nullopt;
  return Entry{path, local->isFolder, false};
}

std::vector<GitWorkingTree::Entry> GitWorkingTree::Children(const Entry& folder) {
  const auto picture = Held();
  if (!picture) Fetch();
  const auto tree = picture ? picture->tree : NewTree();
  const bool isKnown = folder.isInDatabase || tree->Find(folder.path);
  if (!isKnown) RefuseUnknown(folder, *tree);
  return tree->Children(folder.path);
}

bool GitWorkingTree::Differs(const Entry& entry) {
  if (const auto picture = Held()) return Differs(entry, picture->differences, picture->tree);
  Fetch();
  // Files that git does not follow are in no list of differences, so the tip has to be asked.
  return Differs(entry, ReadDifferences(), entry.isInDatabase ? nullptr : NewTree());
}

bool GitWorkingTree::Differs(const Entry& entry, const PathSet& differences, const Tree& tree) {
  if (!entry.isInDatabase && !tree->Find(entry.path)) return true;
  if (!entry.isFolder) return differences.contains(entry.path);
  const auto below = entry.path.empty() ? std::string() : entry.path + "/";
  const auto next = differences.lower_bound(below);
  return next != differences.end() && next->starts_with(below);
}

void GitWorkingTree::RequireBranch(const GitStatus& status) const {
  if (status.branch == place_.branch || (place_.isDetached && status.branch == "(detached)")) {
    return;
  }
  Refuse("The branch checked out in " + Quoted(place_.folder) + " is " +
         Quoted(FromUtf8Roughly(status.branch)) + ", not " +
         Quoted(FromUtf8Roughly(place_.branch)));
}

void GitWorkingTree::RequireKnown(const Entry& entry) const {
  if (entry.isInDatabase) return;
  const auto picture = Held();
  RefuseUnknown(entry, picture ? *picture->tree : *KnownTree());
}

void GitWorkingTree::RefuseUnknown(const Entry& entry, const GitTree& tree) const {
  const auto submodule = tree.SubmoduleOf(entry.path);
  if (!submodule.empty()) {
    Refuse(Quoted("$/" + entry.path) + " is in the submodule " + Quoted(submodule) +
           ", a separate repository, which is neither compared nor got here");
  }
  Refuse("There is no item " + Quoted("$/" + entry.path) + " in the branch " +
         Quoted(FromUtf8Roughly(place_.branch)) + " of " + Quoted(FromUtf8Roughly(place_.remote)));
}

std::string GitWorkingTree::Get(const Entry& entry) {
  RequireKnown(entry);
  const auto picture = Held();
  if (picture && picture->refusal) std::rethrow_exception(picture->refusal);
  try {
    return Update(std::nullopt);
  } catch (const RuntimeError&) {
    if (picture) picture->refusal = std::current_exception();
    throw;
  }
}

// A submodule's own files are the user's to move: they may hold work that git would leave behind.
std::string GitWorkingTree::ToDoFor(const PathSet& submodules) const {
  if (submodules.empty()) return {};
  std::string names;
  for (const auto& path : submodules)
    names += (names.empty() ? "" : ", ") + Quoted(FromUtf8Roughly(path));
  return "The get has moved the submodule " + names +
         ", whose files git leaves as they are: run 'git submodule update --init' in " +
         Quoted(place_.folder);
}

std::string GitWorkingTree::Update(const std::optional<std::string>& unchanged) {
  const auto picture = Held();
  if (picture && picture->isUpToDate && !unchanged) return {};
  RequireNothingUnderWay(git_, files_, place_.folder);
  if (!picture) Fetch();
  const auto status = ReadStatus(git_);
  RequireBranch(status);
  if (unchanged && status.changed.contains(ToUtf8(*unchanged))) {
    Refuse(Quoted(LocalPath(*unchanged)) + " is changed in the working copy already");
  }
  auto toDo = ToDoFor(FastForward(git_, Tip(), status));
  if (!picture) return toDo;
  picture->isUpToDate = true;
  picture->refusal = nullptr;
  Read(*picture);
  return toDo;
}

void GitWorkingTree::Checkout(const Entry& entry) {
  const auto local = LocalPath(entry.path);
  if (entry.isFolder) Refuse(Quoted(local) + " is a folder; only a file can be checked out");
  RequireKnown(entry);
  RequireNoLink(entry);
  Update(entry.path);
  RequireNoLink(entry);
  const auto info = files_.Look(local);
  if (!info) throw RuntimeError(ErrorNumber::FileNotFound, local);
  if ((info->attributes & file_attribute::kReadOnly) == 0) return;
  files_.SetAttributes(local, info->attributes & ~file_attribute::kReadOnly);
}

// The target of a link is elsewhere: neither a write nor a commit is meant for it.
void GitWorkingTree::RequireNoLink(const Entry& entry) const {
  for (std::size_t start = 0; start <= entry.path.size();) {
    const auto end = std::min(entry.path.find('/', start), entry.path.size());
    const auto folder = LocalPath(entry.path.substr(0, start > 0 ? start - 1 : 0));
    if (!FolderExists(files_, folder)) return;
    if (IsLinkIn(files_.List(folder), entry.path.substr(start, end - start))) {
      Refuse(Quoted(LocalPath(entry.path.substr(0, end))) +
             " is a link; only a file in the working copy itself can be checked out or in");
    }
    start = end + 1;
  }
}

// "MODE HASH STAGE<tab>PATH" of the index; empty for a path that it does not hold.
std::string GitWorkingTree::Staged(const std::string& path) const {
  return git_.Run(GitCall::Question, {"ls-files", "--stage", "-z", "--", LiteralPath(path)});
}

void GitWorkingTree::Stage(const std::string& path, const std::string& staged) const {
  std::istringstream fields(staged);
  std::string mode;
  std::string hash;
  std::vector<std::string> arguments = {"update-index"};
  if (fields >> mode >> hash) {
    arguments.insert(arguments.end(), {"--add", "--cacheinfo", mode, hash, path});
  } else {
    arguments.insert(arguments.end(), {"--force-remove", "--", path});
  }
  static_cast<void>(git_.Try(GitCall::Change, arguments));
}

// A push takes along every commit below it; the user's own are not ours to publish.
void GitWorkingTree::RequirePublished() const {
  const auto ahead = git_.Run(GitCall::Question, {"rev-list", "--count", Tip() + "..HEAD"});
  if (Line(ahead) == "0") return;
  Refuse("The working copy has commits that " + Quoted(FromUtf8Roughly(place_.remote)) +
         " does not have; push them first");
}

void GitWorkingTree::Push(const std::string& commit, const std::string& reference) const {
  git_.Run(GitCall::Remote, {"push", "--quiet", "--no-follow-tags", "--recurse-submodules=no", "--",
                             place_.remote, commit + ":" + reference});
}

void GitWorkingTree::Checkin(const Entry& entry, const std::string& comment) {
  const auto local = LocalPath(entry.path);
  if (entry.isFolder) Refuse(Quoted(local) + " is a folder; only a file can be checked in");
  if (!FileExists(files_, local)) throw RuntimeError(ErrorNumber::FileNotFound, local);
  RequireKnown(entry);
  RequireNoLink(entry);
  RequireNothingUnderWay(git_, files_, place_.folder);
  const auto path = ToUtf8(entry.path);
  const auto status = ReadStatus(git_, path);
  RequireBranch(status);
  if (status.changed.empty()) return;
  RequirePublished();
  const auto staged = Staged(path);
  git_.Run(GitCall::Change, {"commit", "--quiet", "--only", "--allow-empty-message",
                             "--message=" + ArgumentOf(comment), "--", LiteralPath(path)});
  const auto made = Line(git_.Run(GitCall::Question, {"rev-parse", "--verify", "HEAD"}));
  try {
    Push(made, "refs/heads/" + place_.branch);
  } catch (...) {
    const auto back = git_.Try(
        GitCall::Change, {"update-ref", "-m", "check-in taken back", "HEAD", status.commit, made});
    if (back.exitCode == 0) Stage(path, staged);
    throw;
  }
  if (const auto picture = Held()) Read(*picture);
}

// A tag with the name HEAD would make git doubt every later question about its HEAD.
void GitWorkingTree::RequireTagName(const std::string& label) const {
  const auto name = ArgumentOf(label);
  const bool isName =
      name != "HEAD" && !name.starts_with('-') &&
      git_.Try(GitCall::Question, {"check-ref-format", "refs/tags/" + name}).exitCode == 0;
  if (isName) return;
  Refuse(
      Quoted(label) +
      " is not a valid tag name: it must not be empty or HEAD, begin with - or ., end with ., / "
      "or .lock, or hold a blank, a control character, one of ~ ^ : ? * [ \\ or any of .. // @{");
}

void GitWorkingTree::Label(const Entry& entry, const std::string& label,
                           const std::string& comment) {
  RequireTagName(label);
  RequireKnown(entry);
  if (!Held()) Fetch();
  const auto name = ArgumentOf(label);
  const auto reference = "refs/tags/" + name;
  git_.Run(GitCall::Change, {"tag", "--annotate", "--cleanup=whitespace",
                             "--message=" + ArgumentOf(comment), "--", name, Tip()});
  const auto made = Line(git_.Run(GitCall::Question, {"rev-parse", "--verify", reference}));
  try {
    Push(made, reference);
  } catch (...) {
    static_cast<void>(git_.Try(GitCall::Change, {"update-ref", "-d", reference, made}));
    throw;
  }
}

}  // namespace gorbex
