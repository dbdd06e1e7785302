#include "platform/git/source_control.h"

#include <sstream>
#include <vector>

#include "platform/code_page.h"
#include "platform/git/spec.h"
#include "platform/git/words.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::string_view kBranches = "refs/heads/";

/// One folder or file of a working tree as a source-control item.
class GitItem : public SourceControlItem {
 public:
  GitItem(std::shared_ptr<GitWorkingTree> tree, GitTree::Entry entry)
      : tree_(std::move(tree)), entry_(std::move(entry)) {}

  [[nodiscard]] std::string LocalSpec() const override { return tree_->LocalPath(entry_.path); }
  [[nodiscard]] SourceItemType Type() const override {
    return entry_.isFolder ? SourceItemType::Project : SourceItemType::File;
  }
  [[nodiscard]] std::vector<std::unique_ptr<SourceControlItem>> Items() override {
    std::vector<std::unique_ptr<SourceControlItem>> items;
    if (!entry_.isFolder) return items;
    for (auto& child : tree_->Children(entry_)) {
      items.push_back(std::make_unique<GitItem>(tree_, std::move(child)));
    }
    return items;
  }
  [[nodiscard]] bool IsDifferent() override { return tree_->Differs(entry_); }

  /// Brings the whole branch up to date, whatever the item and the flags: only so the working copy
  /// is that of one commit. Error 5 for any place but the working copy.
  std::string Get(const std::string& localPath, std::uint32_t /*flags*/) override {
    if (EqualsIgnoringCase(localPath, LocalSpec())) return tree_->Get(entry_);
    throw RuntimeError(ErrorNumber::InvalidCall, localPath);
  }

  /// Labels the whole tip: a tag of git's names no folder.
  void Label(const std::string& label, const std::string& comment) override {
    tree_->Label(entry_, label, comment);
  }

  /// Git does not record check-outs, so the comment is not kept.
  void Checkout(const std::string& /*comment*/) override { tree_->Checkout(entry_); }
  void Checkin(const std::string& comment) override { tree_->Checkin(entry_, comment); }

 private:
  std::shared_ptr<GitWorkingTree> tree_;
  GitTree::Entry entry_;
};

GitSettings RequireSettings(const FileReader& files, const std::string& iniPath,
                            const HostPathReader& hostPath) {
  const auto settings = ReadGitSettings(files, iniPath, hostPath);
  if (!settings) {
    Refuse("'" + iniPath +
           "' has no [git] section: SourceSafe databases can only be opened on Windows");
  }
  if (!FolderExists(files, settings->worktree)) {
    throw RuntimeError(ErrorNumber::PathNotFound, settings->worktree);
  }
  return *settings;
}

void RequireTop(const GitRunner& git, const std::string& folder) {
  const auto answer =
      git.Run(GitCall::Question, {"rev-parse", "--is-inside-work-tree", "--show-cdup"});
  if (!answer.starts_with("true")) Refuse("'" + folder + "' is not a git working tree");
  if (answer != "true\n\n") Refuse("'" + folder + "' is not the top of its git working tree");
}

// The branch to follow, and whether it is the one checked out.
GitPlace PlaceOf(const GitRunner& git, const GitSettings& settings) {
  GitPlace place{settings.worktree, ToUtf8(settings.remote), ToUtf8(settings.branch)};
  const auto head = git.Try(GitCall::Question, {"symbolic-ref", "--quiet", "HEAD"});
  place.isDetached = head.exitCode != 0;
  if (place.isDetached && place.branch.empty()) {
    Refuse("No branch is checked out in '" + settings.worktree +
           "', and the initialisation file names none with 'branch='");
  }
  if (!place.isDetached) {
    const auto reference = Line(head.output);
    if (!reference.starts_with(kBranches))
      Refuse("'" + FromUtf8Roughly(reference) + "' is not a branch");
    const auto name = reference.substr(kBranches.size());
    if (place.branch.empty()) place.branch = name;
    if (place.branch != name) {
      Refuse("The branch checked out in '" + settings.worktree + "' is '" + FromUtf8Roughly(name) +
             "', not '" + settings.branch + "'");
    }
  }
  const auto reference = std::string(kBranches) + place.branch;
  if (git.Try(GitCall::Question, {"check-ref-format", reference}).exitCode != 0) {
    Refuse("'" + settings.branch + "' cannot be the name of a branch");
  }
  return place;
}

// Only a remote that the repository knows: a URL could make git run any program.
std::vector<std::string> UrlsOf(const GitRunner& git, const std::string& remote) {
  std::vector<std::string> urls;
  for (const char* which : {"--all", "--push"}) {
    std::istringstream lines(
        git.Run(GitCall::Question, {"remote", "get-url", "--all", which, "--", remote}));
    for (std::string url; std::getline(lines, url);) urls.push_back(Line(url));
  }
  return urls;
}

// "ssh://host/path" and "host:path"; a single letter is a drive.
bool IsOverSsh(const std::string& url) {
  const auto scheme = url.find("://");
  if (scheme != std::string::npos) return url.substr(0, scheme).find("ssh") != std::string::npos;
  const auto colon = url.find(':');
  return colon != std::string::npos && colon > 1 && url.find_first_of("/\\") > colon;
}

// Where the login may be shown.
std::vector<std::string> OriginsFor(const GitLogin& login, const std::vector<std::string>& urls) {
  std::vector<std::string> origins;
  for (const auto& url : urls) {
    if (!login.password.empty() && IsOverSsh(url)) {
      Refuse("The remote is reached over ssh, which takes keys only; leave the password empty");
    }
    if (OverridesLogin(url, login)) {
      Refuse(
          "The URL of the remote contains a user or a password, which git takes instead "
          "of the login typed; leave the login empty or take them out of the URL");
    }
    auto origin = OriginInUrl(url);
    if (!origin.empty()) origins.push_back(std::move(origin));
  }
  return origins;
}

void RequireRemoteBranch(const GitRunner& git, const GitPlace& place) {
  constexpr std::uint32_t kNoneFound = 2;
  const auto reference = std::string(kBranches) + place.branch;
  const auto found = git.Try(
      GitCall::Remote, {"ls-remote", "--exit-code", "--quiet", "--", place.remote, reference});
  if (found.exitCode == kNoneFound) {
    Refuse("'" + FromUtf8Roughly(place.remote) + "' has no branch '" +
           FromUtf8Roughly(place.branch) + "'");
  }
  if (found.exitCode != 0) git.Raise(found);
}

// Git passes both to its helpers line by line: a line end in one would forge the next line.
void RequirePlain(const std::string& what, const std::string& text) {
  if (OnOneLine(text) == text) return;
  Refuse("The " + what + " holds a control character, such as a line end");
}

std::string UserOf(const GitRunner& git) {
  const auto answer = git.Try(GitCall::Question, {"config", "--get", "user.name"});
  const auto name = answer.exitCode == 0 ? FromUtf8Roughly(Line(answer.output)) : std::string();
  return name.empty() ? "git" : name;
}

}  // namespace

void GitSourceControl::Open(const std::string& iniPath, const std::string& user,
                            const std::string& password) {
  const auto settings = RequireSettings(files_, iniPath, hostPath_);
  RequirePlain("user name", user);
  RequirePlain("password", password);
  const GitLogin login{ToUtf8(user), ToUtf8(password)};
  GitRunner git(tools_, settings.worktree, login, askPassProgram_);
  RequireTop(git, settings.worktree);
  const auto place = PlaceOf(git, settings);
  git.UseLoginAt(OriginsFor(login, UrlsOf(git, place.remote)));
  RequireRemoteBranch(git, place);
  auto name = user.empty() ? UserOf(git) : user;
  tree_ = std::make_shared<GitWorkingTree>(std::move(git), files_, place);
  user_ = std::move(name);
}

bool GitSourceControl::KnowsUsers(const std::string& iniPath) const {
  try {
    return ReadGitSettings(files_, iniPath).has_value();
  } catch (const RuntimeError&) {
    return false;
  }
}

std::unique_ptr<SourceControlItem> GitSourceControl::VSSItem(const std::string& spec) {
  if (!tree_) Refuse("The source-control database is not open");
  // A copy: while git runs the user may open another database.
  const auto tree = tree_;
  auto entry = tree->Find(PathOfSpec(spec));
  return entry ? std::make_unique<GitItem>(tree, std::move(*entry)) : nullptr;
}

std::shared_ptr<void> GitSourceControl::Snapshot() {
  const auto tree = tree_;
  return tree ? tree->TakePicture() : nullptr;
}

}  // namespace gorbex
