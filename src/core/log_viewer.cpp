#include "core/log_viewer.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::string_view kExtension = ".log";

bool IsLog(const FolderEntry& entry) {
  return !entry.isFolder && entry.isReachable && LowerCase(entry.name).ends_with(kExtension);
}

}  // namespace

LogViewer::LogViewer(frmLogs& form, const ActivityLog& log, const FileReader& files,
                     Dialogs& dialogs, ErrorReport& report)
    : form_(form),
      log_(log),
      files_(files),
      dialogs_(dialogs),
      report_(report),
      chosen_(form.cboLogDate.selected.changed.Connect([this](const auto& item) {
        if (item) cboLogDate_Click();
      })) {
  form_.cmdClose.SetHandler([this] { cmdClose_Click(); });
}

void LogViewer::mnuWindowViewLogs_Click() {
  Procedure(report_, ": frmBuilder.mnuWindowViewLogs_Click").Run([&](Procedure& on) {
    on([&] { SetLogFilePath(log_.Folder()); });
    on([&] { ShowLogs(); });
    on([&] { ChooseToday(); });
  });
}

void LogViewer::ChooseToday() {
  const auto& days = form_.cboLogDate.items.Get();
  const auto today = std::ranges::find(days, log_.Today());
  if (!form_.visible.Get() || today == days.end()) return;
  form_.cboLogDate.selected.Set(static_cast<std::size_t>(today - days.begin()));
}

void LogViewer::SetLogFilePath(std::string folder) {
  Procedure(report_, ": frmLogs.LogFilePath").Run([&](Procedure& on) {
    form_.LogFilePath = std::move(folder);
    if (!form_.LogFilePath.ends_with('\\')) on([&] { form_.LogFilePath += '\\'; });
  });
}

std::vector<std::string> LogViewer::LogNames() const {
  std::vector<std::string> names;
  if (!FolderExists(files_, form_.LogFilePath)) return names;
  for (const FolderEntry& entry : files_.List(form_.LogFilePath)) {
    if (IsLog(entry)) names.push_back(entry.name.substr(0, entry.name.size() - kExtension.size()));
  }
  return names;
}

std::optional<std::vector<std::string>> LogViewer::LogNamesOrMessage() {
  try {
    return LogNames();
  } catch (const RuntimeError& error) {
    dialogs_.Show({"Error setting Logpath :" + error.Description()});
    return std::nullopt;
  }
}

void LogViewer::ShowLogs() {
  Procedure(report_, ": frmLogs.ShowLogs").Run([&](Procedure& on) {
    const auto names = on([&] { return LogNamesOrMessage(); });
    if (!names) return;
    on([&] { form_.cboLogDate.selected.Set(std::nullopt); });
    on([&] { form_.cboLogDate.items.Set(*names); });
    on([&] { form_.txtLog.text.Set(""); });
    on([&] { form_.visible.Set(true); });
  });
}

std::string LogViewer::TextOf(const std::string& path) const {
  try {
    return files_.Read(path);
  } catch (const RuntimeError& error) {
    return "Error loading logfile :" + error.Description();
  }
}

void LogViewer::cboLogDate_Click() {
  Procedure(report_, ": frmLogs.cboLogDate_Click").Run([&](Procedure& on) {
    const std::string file = form_.LogFilePath + form_.cboLogDate.Text() + std::string(kExtension);
    const std::string text = on([&] { return TextOf(file); });
    on([&] { form_.txtLog.text.Set(text); });
  });
}

void LogViewer::cmdClose_Click() {
  Procedure(report_, ": frmLogs.cmdClose_Click").Do([&] { form_.visible.Set(false); });
}

}  // namespace gorbex
