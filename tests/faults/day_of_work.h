#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/program.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {

/// A user with one answer to every error report, except that nobody tries again twice, who agrees
/// to everything else.
class AgreeingUser : public ScriptedDialogs {
 public:
  AgreeingUser(Journal& journal, Answer toReports);
  Answer Ask(const Message& message) override;

  Answer instead = Answer::Ignore;  ///< of trying again
  int reports = 0;
};

/// What all parts of the program do with files and registry, one after the other: a build project
/// is loaded and saved, a group of two is got, stamped, repointed and built, a request by mail is
/// served, and settings are stored. The files are where the test says; all other services are
/// those of a system in memory.
class DayOfWork {
 public:
  /// How files are reached past every fault.
  struct Disk {
    std::function<void(const std::string& path, const std::string& bytes)> put;
    std::function<std::string(const std::string& path)> get;  ///< "<absent>" when there is none
  };

  DayOfWork(FileSystem& files, Registry& registry, Disk disk, Answer toReports);

  /// Puts the product on the disk.
  void Prepare();
  void Run();

  /// The files of the product that the work may change, by path.
  [[nodiscard]] std::map<std::string, std::string> Files() const;

  /// What is not as it must be after a run, whatever failed.
  [[nodiscard]] std::vector<std::string> Complaints() const { return complaints_; }

  [[nodiscard]] int Reports() const { return user_.reports; }

  MemoryPlatform platform;

 private:
  void LoadAndSave();
  void Build();
  void ServeMail();
  void RequireWholeFiles();
  void RequireWhole(const std::string& path, const std::vector<std::string>& mayChange);
  void RequireWholeLog();
  void Require(bool fulfilled, const std::string& what);

  Disk disk_;
  MemoryMail mail_;
  AgreeingUser user_;
  Program program_;
  int notAmended_ = 0;
  Subscription listening_;
  std::vector<std::string> complaints_;
};

}  // namespace gorbex::test
