#include "core/build_project_file.h"

#include <utility>

#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/node_key.h"
#include "core/project_file.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

std::string RecentName(std::size_t number) {
  return "MRU" + std::to_string(number);
}

// A flag that is none is named together with its key.
bool FlagOf(const Pair& pair) {
  try {
    return ToFlag(pair.value);
  } catch (const RuntimeError& error) {
    throw RuntimeError(error.Code(), std::string(pair.key).append("=").append(pair.value));
  }
}

std::string Line(std::string_view key, std::string_view value) {
  return std::string(key).append("=").append(value).append(kLineBreak);
}

}  // namespace

std::optional<std::string> BuildProjectProblem(std::string_view text) {
  if (const auto problem = LineEndProblem(text)) {
    return *problem + "; a build project file has CR LF";
  }
  if (const auto problem = ByteOrderMarkProblem(text)) {
    return *problem + "; a build project file has none";
  }
  const bool isText = text.find('\0') == std::string_view::npos;
  const bool hasLines = text.empty() || text.find('=') != std::string_view::npos;
  if (isText && hasLines) return std::nullopt;
  return "no build project file";
}

std::vector<std::string> ProjectsNamedIn(const FileReader& files, const std::string& buildProject) {
  const std::string text = ReadOrEmpty(files, buildProject);
  std::vector<std::string> named;
  PairReader pairs(text);
  for (;;) {
    const auto pair = pairs.Next();
    if (!pair.has_value()) return named;
    if (EqualsIgnoringCase(pair->key, "project")) named.emplace_back(pair->value);
  }
}

// Nothing when the file could not be read or is refused: without its text there is nothing to go on
// with.
std::optional<std::string> BuildProjectFile::ReadFile(Procedure& on, const std::string& path) {
  auto text = on([&] { return std::make_optional(uses_.files.Read(path)); });
  if (!text) return std::nullopt;
  const auto problem = BuildProjectProblem(*text);
  if (!problem) return text;
  on([&] {
    uses_.dialogs.Show(
        {path + " is not opened: " + *problem, Buttons::Ok, MessageIcon::Exclamation});
  });
  return std::nullopt;
}

bool BuildProjectFile::LoadProject(const std::string& path, Unread unread) {
  frmBuilder& window = uses_.window;
  TreeNode* lastRead = nullptr;
  bool loaded = false;
  Procedure(uses_.report, ": frmBuilder.LoadProject").Run([&](Procedure& on) {
    const auto text = ReadFile(on, path);
    if (!text) return;
    window.fileName.clear();
    leftOut_.clear();
    ForgetMissing();
    notesMissing_ = unread != Unread::IsLeftOut;
    on([&] { window.ClearBuildProject(); });
    PairReader pairs(*text);
    while (const auto pair = pairs.Next()) Take(on, *pair, lastRead);
    notesMissing_ ? NoteMissingRows() : LeaveOutUnreadRows();
    on([&] { uses_.views.RefreshQueue(); });
    ShowBuiltFiles(on);
    on([&] { uses_.log.WriteLog("Opened Project " + path); });
    on([&] { uses_.views.ScanLoadedProjects(); });
    loaded = true;
  });
  if (loaded) {
    window.fileName = path;
    kept_ = FileText();
    window.ProjectChanged = false;
  }
  if (lastRead != nullptr) uses_.reader.Show(*lastRead);
  if (loaded && MayRemoveMissing(unread)) RemoveMissing();
  for (auto& project : uses_.findings.Tell()) leftOut_.push_back(std::move(project));
  return loaded;
}

void BuildProjectFile::Take(Procedure& on, const Pair& pair, TreeNode*& lastRead) {
  struct Taker {
    std::string_view key;
    void (BuildProjectFile::*take)(Procedure&, const Pair&, TreeNode*&);
  };
  static constexpr Taker kTakers[] = {
      {"project", &BuildProjectFile::TakeProject},
      {"queue", &BuildProjectFile::TakeQueueRow},
      {"breakonerror", &BuildProjectFile::TakeFlag<&clsOptions::StopProcessing>},
      {"changerefs", &BuildProjectFile::TakeFlag<&clsOptions::ChangeRefs>},
      {"version", &BuildProjectFile::TakeVersion},
      {"builddir", &BuildProjectFile::TakeBuildFolder},
      {"breakcompat", &BuildProjectFile::TakeBreaking},
      {"getonbuild", &BuildProjectFile::TakeFlag<&clsOptions::GetLatest>},
  };
  const std::string key = LowerCase(pair.key);
  for (const Taker& taker : kTakers) {
    if (taker.key == key) (this->*taker.take)(on, pair, lastRead);
  }
}

void BuildProjectFile::TakeProject(Procedure& on, const Pair& pair, TreeNode*& lastRead) {
  const std::string path(pair.value);
  if (notesMissing_ && !FileExists(uses_.files, path)) {
    NoteMissing(path);
    missingLines_ = missing_.size();
    return;
  }
  TreeNode* read = on([&] { return uses_.reader.ReadUnmarked(path); });
  if (read != nullptr) lastRead = read;
}

template <bool clsOptions::*Option>
void BuildProjectFile::TakeFlag(Procedure& on, const Pair& pair, TreeNode*& /*lastRead*/) {
  on([&] { uses_.options.*Option = FlagOf(pair); });
}

void BuildProjectFile::TakeBreaking(Procedure& on, const Pair& pair, TreeNode*& /*lastRead*/) {
  on([&] { uses_.options.Compatible = !FlagOf(pair); });
}

void BuildProjectFile::TakeVersion(Procedure& /*on*/, const Pair& pair, TreeNode*& /*lastRead*/) {
  if (!EqualsIgnoringCase(pair.value, "default")) uses_.options.VersionComponents = pair.value;
}

void BuildProjectFile::TakeBuildFolder(Procedure& on, const Pair& pair, TreeNode*& /*lastRead*/) {
  uses_.window.buildDirectory = pair.value;
  uses_.options.BuildPath = pair.value;
  on([&] { uses_.window.SetStatus("Building to " + uses_.window.buildDirectory); });
}

void BuildProjectFile::TakeQueueRow(Procedure& on, const Pair& pair, TreeNode*& /*lastRead*/) {
  std::string_view value = pair.value;
  const bool checked = value.starts_with('*');
  if (checked) value.remove_prefix(1);
  const auto comma = value.find(',');
  const std::string project(value.substr(0, comma));
  ListRow* row = on([&] { return &uses_.window.lvwQueue.Add(project, "", Image::VbProject); });
  if (row == nullptr) return;
  row->SetSubItem(queue_column::kProject, project);
  if (comma != std::string_view::npos)
    row->SetSubItem(queue_column::kDependency, std::string(value.substr(comma + 1)));
  row->SetChecked(checked);
}

void BuildProjectFile::LeaveOutUnreadRows() {
  ListView& queue = uses_.window.lvwQueue;
  std::vector<std::string> unread;
  for (const auto& row : queue.Rows()) {
    if (!uses_.window.ProjectMembers.Contains(row->SubItem(1))) unread.push_back(row->Key());
  }
  for (const std::string& key : unread) {
    queue.Remove(*queue.Find(key));
    rowLeftOut.Emit(key);
  }
}

void BuildProjectFile::NoteMissing(const std::string& path) {
  if (isMissing_.insert(path).second) missing_.push_back(path);
}

void BuildProjectFile::ForgetMissing() {
  missing_.clear();
  missingLines_ = 0;
  isMissing_.clear();
}

// A row can name a file that has no line of its own.
void BuildProjectFile::NoteMissingRows() {
  for (const auto& row : uses_.window.lvwQueue.Rows()) {
    const std::string& path = row->SubItem(queue_column::kProject);
    if (uses_.window.ProjectMembers.Contains(path) || FileExists(uses_.files, path)) continue;
    NoteMissing(path);
    row->SetTextColour(Colour::ButtonShadow);
  }
}

bool BuildProjectFile::MayRemoveMissing(Unread unread) {
  if (missing_.empty() || unread == Unread::IsKept) return false;
  if (unread == Unread::IsRemoved) return true;
  std::string text = "These project files are missing:";
  text.append(kLineBreak).append(ShortList(missing_)).append(kLineBreak);
  text.append("Do you wish to remove them from the build project?");
  return uses_.dialogs.Show({text, Buttons::YesNo, MessageIcon::Exclamation}) == Answer::Yes;
}

void BuildProjectFile::RemoveMissing() {
  ListView& queue = uses_.window.lvwQueue;
  ListView::Storage kept;
  ListView::Storage removed;
  for (auto& row : queue.TakeRows()) {
    const bool goes = isMissing_.contains(row->SubItem(queue_column::kProject));
    (goes ? removed : kept).push_back(std::move(row));
  }
  queue.PutRows(std::move(kept));
  ForgetMissing();
  uses_.views.RefreshQueue();
}

void BuildProjectFile::ShowBuiltFiles(Procedure& on) {
  const frmBuilder& window = uses_.window;
  for (const auto& row : window.lvwQueue.Rows()) {
    if (isMissing_.contains(row->SubItem(queue_column::kProject))) continue;
    const clsMember* member =
        on([&] { return &window.ProjectMembers.Item(row->SubItem(queue_column::kProject)); });
    if (member == nullptr) continue;
    on([&] {
      row->SetSubItem(
          queue_column::kBuilt,
          GetFileAmmendedTime(uses_.files, JoinPath(window.buildDirectory, member->EXEName)));
    });
    row->SetSubItem(queue_column::kCompatibility, CompatibilityText(member->BinaryCompat));
  }
}

std::string BuildProjectFile::FileText() const {
  std::string text;
  for (const TreeNode* node : uses_.window.ProjectNodes()) text += Line("project", node->Text());
  for (std::size_t i = 0; i < missingLines_; ++i) {
    const bool isThereAgain = uses_.window.ProjectMembers.Contains(missing_[i]);
    if (!isThereAgain) text += Line("project", missing_[i]);
  }
  for (const auto& row : uses_.window.lvwQueue.Rows()) {
    text += Line("queue", (row->Checked() ? "*" : "") + row->SubItem(queue_column::kProject) + "," +
                              row->SubItem(queue_column::kDependency));
  }
  const clsOptions& options = uses_.options;
  text += Line("breakonerror", FlagText(options.StopProcessing));
  text += Line("changerefs", FlagText(options.ChangeRefs));
  text += Line("builddir", options.BuildPath);
  // The file has always had this line twice; when loading, the last one wins.
  text += Line("changerefs", FlagText(options.ChangeRefs));
  text += Line("breakcompat", FlagText(!options.Compatible));
  text += Line("getonbuild", FlagText(options.GetLatest));
  text += Line("version", options.VersionComponents);
  return text;
}

bool BuildProjectFile::SaveProject(const std::string& path) {
  return Procedure(uses_.report, ": frmBuilder.SaveProject").Run([&](Procedure& on) {
    on([&] { uses_.files.Write(path, FileText()); });
    RememberRecent(on, path);
    on([&] { SetTitle(path); });
    uses_.window.fileName = path;
    uses_.window.ProjectChanged = false;
    leftOut_.clear();
    kept_ = FileText();
  });
}

bool BuildProjectFile::Changed() const {
  return uses_.window.ProjectChanged || (kept_ && *kept_ != FileText());
}

bool BuildProjectFile::OfferToSave(Procedure& on) {
  if (!Changed()) return true;
  const Answer answer = on([&] {
    return uses_.dialogs.Show(
        {"Save your Builder project?", Buttons::YesNo, MessageIcon::Question});
  });
  if (answer == Answer::Cancel) return false;
  if (answer != Answer::Yes) return true;
  on([&] { mnuFileSave_Click(); });
  return !Changed();
}

// The file is written from the tree, and what could not be read is not there.
bool BuildProjectFile::MayDrop() {
  std::vector<std::string> dropped;
  for (const std::string& path : leftOut_) {
    const auto key = NodeKey(node_prefix::kProject, path);
    if (uses_.window.tvwProjects.Find(key) == nullptr) dropped.push_back(path);
  }
  if (dropped.empty()) return true;
  std::string text = "These projects could not be read and would be lost from the file:";
  text.append(kLineBreak).append(ShortList(dropped)).append(kLineBreak);
  text.append("Do you wish to save without them?");
  return uses_.dialogs.Show({text, Buttons::YesNo, MessageIcon::Exclamation}) == Answer::Yes;
}

void BuildProjectFile::RememberRecent(Procedure& on, const std::string& path) {
  if (const auto problem = RegistryTools::LengthProblem(path)) {
    on([&] {
      uses_.dialogs.Show(
          {"The file is saved, but not listed as a recent one: its path " + *problem});
    });
    return;
  }
  for (std::size_t n = kRecentFiles - 1; n >= 1; --n) {
    on([&] {
      const auto entry = uses_.registry.fnsGetRegistryValue(kProgramKey, RecentName(n));
      // An entry equal to the saved path stays where it is, so the list can hold a path twice.
      if (EqualsIgnoringCase(entry, path)) return;
      uses_.registry.subSetRegistryValue(kProgramKey, RecentName(n + 1), entry);
    });
  }
  on([&] { uses_.registry.subSetRegistryValue(kProgramKey, RecentName(1), path); });
  on([&] { ShowRecentFiles(); });
}

void BuildProjectFile::ShowRecentFiles() {
  std::size_t number = 0;
  for (Command& entry : uses_.window.menu.mnuFileMRU) {
    const auto path = uses_.registry.fnsGetRegistryValue(kProgramKey, RecentName(++number));
    entry.caption.Set(path);
    entry.visible.Set(!path.empty());
  }
}

void BuildProjectFile::SetTitle(const std::string& path) {
  std::string title(kApplicationTitle);
  if (!path.empty()) title += " [" + path + "]";
  uses_.window.caption.Set(title);
}

bool BuildProjectFile::OpenProject(const std::string& path, Unread unread) {
  const bool loaded = LoadProject(path, unread);
  SetTitle(uses_.window.fileName);
  if (uses_.window.fileName.empty()) kept_.reset();
  return loaded;
}

void BuildProjectFile::BeginNew() {
  uses_.window.ClearBuildProject();
  SetTitle("");
  uses_.window.fileName.clear();
  leftOut_.clear();
  ForgetMissing();
  uses_.window.ProjectChanged = false;
  kept_.reset();
}

void BuildProjectFile::mnuFileNew_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileNew_Click").Run([&](Procedure& on) {
    if (OfferToSave(on)) on([&] { BeginNew(); });
  });
}

void BuildProjectFile::mnuFileOpen_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileOpen_Click").Run([&](Procedure& on) {
    if (!OfferToSave(on)) return;
    const auto path = on([&] {
      return uses_.dialogs.OpenFile(
          {"Select a Build Project to load", "Builder Project Files (*.bpf)|*.bpf", "*.bpf"});
    });
    if (!path) {
      on([&] { uses_.window.SetStatus("Cancelled"); });
      return;
    }
    on([&] { OpenProject(*path); });
  });
}

void BuildProjectFile::mnuFileSave_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileSave_Click").Run([&](Procedure& on) {
    if (uses_.window.fileName.empty()) {
      on([&] { mnuFileSaveAs_Click(); });
      return;
    }
    const bool saves = on([&] { return MayDrop(); });
    if (!saves) on([&] { uses_.window.SetStatus("Not Saved"); });
    if (saves && on([&] { return SaveProject(uses_.window.fileName); })) {
      on([&] { uses_.window.SetStatus("Saved OK"); });
    }
  });
}

void BuildProjectFile::mnuFileSaveAs_Click() {
  Procedure(uses_.report, ": frmBuilder.mnuFileSaveAs_Click").Run([&](Procedure& on) {
    const auto path = on([&] {
      return uses_.dialogs.SaveFile({"", "Builder Projects (*.bpf)|*.bpf", "Untitled.bpf"});
    });
    const bool saves = path && on([&] { return MayDrop(); });
    const bool saved = saves && on([&] { return SaveProject(*path); });
    on([&] { uses_.window.SetStatus(saved ? "Saved OK" : "Not Saved"); });
  });
}

void BuildProjectFile::mnuFileMRU_Click(std::size_t entry) {
  Procedure(uses_.report, ": frmBuilder.mnuFileMRU_Click").Run([&](Procedure& on) {
    // Saving moves the entries.
    const std::string path =
        on([&] { return uses_.window.menu.mnuFileMRU.at(entry).caption.Get(); });
    if (OfferToSave(on)) on([&] { OpenProject(path); });
  });
}

}  // namespace gorbex
