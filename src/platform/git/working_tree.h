#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/git/runner.h"
#include "platform/git/status.h"
#include "platform/git/tree.h"

namespace gorbex {

/// The place of a working tree and the branch that it follows. Remote and branch are UTF-8.
struct GitPlace {
  std::string folder;  ///< Windows path of its top
  std::string remote;
  std::string branch;
  bool isDetached = false;  ///< no branch is checked out, and need not be
};

/// The working copy of one branch of a remote, with the operations of a source-control database on
/// it. The database is the tip of the remote's branch; every question about it fetches that tip
/// first unless a picture is held. Failures are RuntimeErrors with git's words.
class GitWorkingTree {
 public:
  using Entry = GitTree::Entry;

  GitWorkingTree(GitRunner git, FileSystem& files, GitPlace place)
      : git_(std::move(git)), files_(files), place_(std::move(place)) {}

  /// Searches the last fetched commit; if that lacks the path, a newly fetched one; then the
  /// working tree.
  [[nodiscard]] std::optional<Entry> Find(const std::string& path);

  /// Error for a folder that the database lacks.
  [[nodiscard]] std::vector<Entry> Children(const Entry& folder);

  /// True when the working copy of the file, or of any file below the folder, differs from the
  /// tip's.
  [[nodiscard]] bool Differs(const Entry& entry);

  /// Brings the whole branch up to date. Error for an item that the database lacks. While a picture
  /// is held one attempt is made: each further get ends as the first one did. Returns what the user
  /// still has to do, empty for nothing.
  std::string Get(const Entry& entry);

  /// Brings the branch up to date and lets the file be written. Error when it is changed already.
  void Checkout(const Entry& entry);

  /// Commits the one file and pushes it; a commit that cannot be pushed is taken back.
  void Checkin(const Entry& entry, const std::string& comment);

  /// Tags the tip and pushes the tag, for an item that the database has; one that cannot be pushed
  /// is taken back. Error for a label that cannot be the name of a tag.
  void Label(const Entry& entry, const std::string& label, const std::string& comment);

  /// While the result is held, questions are answered from what git says now.
  [[nodiscard]] std::shared_ptr<void> TakePicture();

  [[nodiscard]] std::string LocalPath(const std::string& path) const;

 private:
  using Tree = std::shared_ptr<const GitTree>;
  using PathSet = std::set<std::string, std::less<>>;

  struct Picture {
    Tree tree;
    PathSet differences;
    std::exception_ptr failure;  ///< why there is neither
    bool isUpToDate = false;     ///< a get was made since
    std::exception_ptr refusal;  ///< why a get failed since
  };

  [[nodiscard]] std::string Tip() const;
  [[nodiscard]] std::shared_ptr<Picture> Held() const;
  void Fetch() const;
  [[nodiscard]] Tree NewTree() const;
  [[nodiscard]] Tree KnownTree() const;
  [[nodiscard]] PathSet ReadDifferences() const;
  [[nodiscard]] static bool Differs(const Entry& entry, const PathSet& differences,
                                    const Tree& tree);
  void Read(Picture& picture) const;
  void RequireKnown(const Entry& entry) const;
  [[noreturn]] void RefuseUnknown(const Entry& entry, const GitTree& tree) const;
  void RequireTagName(const std::string& label) const;
  void RequireBranch(const GitStatus& status) const;
  void RequireNoLink(const Entry& entry) const;
  void RequirePublished() const;
  [[nodiscard]] std::string Staged(const std::string& path) const;
  void Stage(const std::string& path, const std::string& staged) const;
  std::string Update(const std::optional<std::string>& unchanged);
  [[nodiscard]] std::string ToDoFor(const PathSet& submodules) const;
  void Push(const std::string& commit, const std::string& reference) const;

  GitRunner git_;
  FileSystem& files_;
  GitPlace place_;
  std::weak_ptr<Picture> picture_;
};

}  // namespace gorbex
