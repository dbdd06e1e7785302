#include "core/activity_log.h"

#include "core/text.h"
#include "platform/runtime_error.h"

namespace gorbex {

ActivityLog::ActivityLog(FileSystem& files, const Clock& clock, Dialogs& dialogs,
                         std::string programFolder)
    : files_(files), clock_(clock), dialogs_(dialogs), programFolder_(std::move(programFolder)) {}

void ActivityLog::WriteLog(const std::string& text, bool timeStamp) {
  const CivilTime now = clock_.LocalNow();
  std::string line = timeStamp ? "[" + TimeStamp(now) + "] " : std::string();
  line.append(text).append(kLineBreak);
  if (collected_ != nullptr) {
    collected_->append(line);
  } else {
    Write(now, line);
  }
  written.Emit(text);
}

void ActivityLog::Write(const CivilTime& now, const std::string& lines) {
  try {
    Append(FileOf(CompactDate(now)), lines);
  } catch (const RuntimeError& error) {
    dialogs_.Show({.text = "Failed to write to log-file :" + error.Description()});
  }
}

void ActivityLog::Append(const std::string& file, const std::string& line) {
  try {
    files_.Append(file, line);
  } catch (const RuntimeError& error) {
    if (error.Code() != ErrorNumber::PathNotFound || FolderExists(files_, Folder())) throw;
    // The folder is looked for under one name and made under another, as it always was; the two
    // differ only when the program's folder ends in "\".
    files_.CreateFolder(programFolder_ + "\\logs");
    files_.Append(file, line);
  }
}

}  // namespace gorbex
