#include "tests/faults/day_of_work.h"

#include <array>
#include <regex>
#include <utility>

#include "core/text.h"

namespace gorbex::test {
namespace {

const std::string kBuildProject = "C:\\Group\\Group.bpf";
const std::string kBase = "C:\\Group\\Base\\Base.vbp";
const std::string kShop = "C:\\Group\\Shop\\Shop.vbp";
const std::string kForm = "C:\\Group\\Shop\\frmMain.frm";
constexpr const char* kOld = "{0DD00000-0000-4000-8000-0000C0DEC0DE}";
constexpr const char* kNew = "{5E700000-0000-4000-8000-0000C0DEC0DE}";

const std::string kValues =
    "Path32=\"C:\\Out\"\r\nCompatibleMode=\"2\"\r\nMajorVer=1\r\nMinorVer=0\r\nRevisionVer=7\r\n"
    "OptimizationType=1\r\nCodeViewDebugInfo=-7\r\n";

/// What the work starts from.
const std::map<std::string, std::string>& Product() {
  static const std::map<std::string, std::string> kFiles = {
      {kBase, "Type=OleDll\r\nExeName32=\"Base.dll\"\r\nName=\"Base\"\r\n" + kValues},
      {kShop, std::string("Type=Exe\r\nReference=*\\G") + kOld +
                  "#1.0#0#C:\\Out\\Base.dll#Base\r\nForm=frmMain.frm\r\nExeName32=\"Shop.exe\"\r\n"
                  "Name=\"Shop\"\r\n" +
                  kValues},
      {kForm, std::string("VERSION 5.00\r\nObject = \"") + kOld + "#1.0#0\"; \"Base.dll\"\r\n"},
      {"C:\\Group\\Shop\\mssccprj.scc", "SCC_Project_Name = \"$/Shop\", AAAA"},
      {kBuildProject, "project=" + kBase + "\r\nproject=" + kShop + "\r\nqueue=*" + kBase +
                          ",\r\nqueue=*" + kShop + "," + kBase + "\r\nbuilddir=C:\\Out\\\r\n"},
      {"C:\\Out\\Base.dll", "MZ"},
      {"C:\\Program Files\\GorbexBuilder\\VBResult.log", "Build of 'Old' failed."}};
  return kFiles;
}

// A text with each value that the work may change replaced by its key. An identity that the
// registry does not know is replaced by nothing.
std::string Masked(std::string text) {
  static const std::regex kAmended(
      "(CompatibleMode|MajorVer|MinorVer|RevisionVer|OptimizationType|CodeViewDebugInfo)=[^\r]*");
  text = std::regex_replace(text, kAmended, "$1=?");
  for (const char* guid : {kOld, kNew}) {
    ReplaceIgnoringCase(text, guid, "");
  }
  while (text.ends_with("\r\n")) text.resize(text.size() - 2);
  return text;
}

std::string ValueIn(const std::string& text, const std::string& key) {
  const auto start = text.find(key + "=");
  return start == std::string::npos ? "" : text.substr(start, text.find('\r', start) - start);
}

}  // namespace

AgreeingUser::AgreeingUser(Journal& journal, Answer answer) : ScriptedDialogs(journal) {
  toReports = answer;
  LogsIn();
}

Answer AgreeingUser::Ask(const Message& message) {
  if (message.buttons != Buttons::AbortRetryIgnore) {
    return message.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
  }
  const bool isAgain = reports++ > 0 && toReports == Answer::Retry;
  return isAgain ? instead : *toReports;
}

DayOfWork::DayOfWork(FileSystem& files, Registry& registry, Disk disk, Answer toReports)
    : disk_(std::move(disk)),
      mail_(platform.journal, files),
      user_(platform.journal, toReports),
      program_({files, registry, platform.processes, platform.clock, platform.events,
                platform.components, platform.objects, platform.sourceControl, mail_,
                platform.programFolder, [](const auto&) { return std::make_shared<int>(); }},
               user_),
      listening_(program_.values.failed.Connect(
          [this](const std::string&, const RuntimeError&) { ++notAmended_; })) {
  platform.processes.otherwise = [this](const std::string&) {
    disk_.put(platform.programFolder + "\\VBResult.log", "Build of 'X' succeeded.\r\n");
    return 0U;
  };
  platform.components.guids["C:\\Out\\Base.dll"] = "{1F}";
  platform.sourceControl.localSpecs["$/Shop"] = "C:\\Group\\Shop";
}

void DayOfWork::Prepare() {
  for (const auto& [path, bytes] : Product()) disk_.put(path, bytes);
}

std::map<std::string, std::string> DayOfWork::Files() const {
  std::map<std::string, std::string> files;
  for (const auto& path : {kBase, kShop, kForm, kBuildProject}) files[path] = disk_.get(path);
  return files;
}

void DayOfWork::Require(bool fulfilled, const std::string& what) {
  if (!fulfilled) complaints_.push_back(what);
}

void DayOfWork::Run() {
  program_.window.ClearBuildProject();
  program_.options.LoadSettings();
  LoadAndSave();
  Build();
  ServeMail();
  program_.options.SaveSettings();
  RequireWholeFiles();
  RequireWholeLog();
}

// Who watches an unattended program answers Abort, and nothing is saved that was not loaded.
void DayOfWork::LoadAndSave() {
  const auto answer = user_.toReports;
  if (answer != Answer::Retry) user_.toReports = Answer::Abort;
  user_.instead = Answer::Abort;
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (program_.buildProject.OpenProject(kBuildProject)) break;
    Require(attempt == 0, "a build project loads when nothing fails any more");
  }
  // A project that cannot be read is left out; saving would then lose it.
  if (program_.window.ProjectMembers.Count() < 2) program_.buildProject.OpenProject(kBuildProject);
  Require(program_.window.ProjectMembers.Count() == 2, "both projects are loaded");
  static_cast<void>(program_.buildProject.SaveProject(kBuildProject));
  user_.toReports = answer;
  user_.instead = Answer::Ignore;
}

void DayOfWork::Build() {
  clsOptions& options = program_.options;
  options.GetLatest = options.ChangeRefs = options.StopProcessing = options.AutoLaunchVBP = true;
  options.Compatible = false;
  options.DebugBuild = "True";
  options.VersionComponents = "1.2.3";
  frmBuilder& window = program_.window;
  window.compilerPath = "C:\\VB\\VB6.EXE";
  window.IniPath = "srcsafe.ini";
  options.Interval = 30;
  if (!window.menu.mnuToolsInBox.checked.Get()) window.menu.mnuToolsInBox.Execute();
  program_.run.mnuFileBuild_Click();
  Require(window.menu.mnuFileBuild.enabled.Get(), "Build is enabled after a run");
  Require(window.mousePointer.Get() == MousePointer::Default, "the pointer is back after a run");
  Require(window.tmrOutlook.enabled.Get(), "the timer is on again after a run");
  const auto files = Files();
  for (const auto& path : {kBase, kShop}) {
    for (const char* value : {"OptimizationType=1", "CodeViewDebugInfo=-7"}) {
      const bool isBack = files.at(path).find(value) != std::string::npos;
      Require(isBack || notAmended_ > 0, "the debug values of " + path + " are back");
    }
  }
}

void DayOfWork::ServeMail() {
  mail_.received = {{.body = "BUILD,PATH C:\\Drops,PRO " + kBase + ","}};
  program_.window.tmrOutlook.elapsed.Emit();
  Require(program_.window.mousePointer.Get() == MousePointer::Default,
          "the pointer is back after a look");
  Require(mail_.sent.size() == 1, "a request has one answer");
}

void DayOfWork::RequireWholeFiles() {
  RequireWhole(kBase, {"\"0\"", "1", "2", "3", "2", "-1"});
  RequireWhole(kShop, {"\"0\"", "1", "2", "3", "2", "-1"});
  RequireWhole(kForm, {});
  const std::string text = disk_.get(kBuildProject);
  const bool isNew = text.starts_with(Product().at(kBuildProject).substr(0, 100)) &&
                     text.ends_with("\r\nversion=\r\n");
  Require(text == Product().at(kBuildProject) || isNew, "the build project is old or new: " + text);
}

// Every value is the old one or the one that the work was to write, and nothing else has changed.
void DayOfWork::RequireWhole(const std::string& path, const std::vector<std::string>& mayChange) {
  constexpr std::array kKeys = {"CompatibleMode", "MajorVer",         "MinorVer",
                                "RevisionVer",    "OptimizationType", "CodeViewDebugInfo"};
  const std::string& before = Product().at(path);
  const std::string after = disk_.get(path);
  Require(Masked(after) == Masked(before), path + " is torn: " + after);
  for (std::size_t i = 0; i < mayChange.size(); ++i) {
    const std::string value = ValueIn(after, kKeys.at(i));
    Require(value == ValueIn(before, kKeys.at(i)) || value == kKeys.at(i) + ("=" + mayChange[i]),
            path + " has a value nobody wrote: " + value);
  }
}

void DayOfWork::RequireWholeLog() {
  static const std::regex kLine(R"(\[\d\d/\d\d/\d{4} \d\d:\d\d:\d\d\] [^\r\n]+)");
  const std::string text = disk_.get(program_.log.FileOf(program_.log.Today()));
  if (text == "<absent>") return;
  Require(text.ends_with("\r\n"), "the log's last line is torn");
  const auto lines = std::string_view(text).substr(0, text.size() - 2);
  for (const auto line : Split(lines, '\n')) {
    const std::string whole(line.substr(0, line.find('\r')));
    Require(std::regex_match(whole, kLine), "a torn log line: " + whole);
  }
}

}  // namespace gorbex::test
