#pragma once

#include <string>
#include <utility>

#include "core/dialogs.h"
#include "core/file_tools.h"
#include "core/signal.h"
#include "platform/clock.h"
#include "platform/file_system.h"

namespace gorbex {

/// The record of what the program did: one text file per day in the program folder's "Logs" folder.
/// The file is opened, written and closed for every line.
class ActivityLog {
 public:
  ActivityLog(FileSystem& files, const Clock& clock, Dialogs& dialogs, std::string programFolder);

  /// Writes one line, with date and time before it when asked. A line that cannot be written is
  /// lost after a message.
  void WriteLog(const std::string& text, bool timeStamp = true);

  /// From now on lines are added to this text instead of the file, until this is called with null;
  /// WriteCollected writes them. Returns the text that was in use before.
  std::string* Collect(std::string* into) { return std::exchange(collected_, into); }

  /// Writes lines that were collected. They are lost after a message when that fails.
  void WriteCollected(const std::string& lines) { Write(clock_.LocalNow(), lines); }

  /// The folder of the log files, without a trailing "\".
  [[nodiscard]] std::string Folder() const { return JoinPath(programFolder_, "Logs"); }

  /// The file of one day named "ddmmyyyy".
  [[nodiscard]] std::string FileOf(const std::string& day) const {
    return Folder() + "\\" + day + ".log";
  }
  [[nodiscard]] std::string Today() const { return CompactDate(clock_.LocalNow()); }

  Signal<std::string> written;

 private:
  void Write(const CivilTime& now, const std::string& lines);
  void Append(const std::string& file, const std::string& line);

  FileSystem& files_;
  const Clock& clock_;
  Dialogs& dialogs_;
  std::string programFolder_;
  std::string* collected_ = nullptr;
};

}  // namespace gorbex
