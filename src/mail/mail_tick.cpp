#include "mail/mail_tick.h"

#include <algorithm>

#include "build/program_argument.h"
#include "core/procedure.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr const char* kFolder = "Builder";
constexpr std::string_view kSubject = "build request";
constexpr std::int16_t kReplyToUser = 1;
constexpr std::size_t kMostRefused = 1000;

// A path that cannot be looked up is not a project file.
bool IsFile(const FileReader& files, const std::string& path) {
  try {
    return !path.empty() && FileExists(files, path);
  } catch (const RuntimeError&) {
    return false;
  }
}

// Looking at another machine's share shows it who looks, which a sender must not bring about.
bool StandsOnAShare(const std::string& path) {
  const auto isSeparator = [](char letter) { return letter == '\\' || letter == '/'; };
  return path.size() > 1 && isSeparator(path[0]) && isSeparator(path[1]);
}

// Cut before the carriage return before the first line feed.
void CutAtLineEnd(std::string& text) {
  const auto end = text.find('\n');
  if (end != std::string::npos) text.resize(end == 0 ? 0 : end - 1);
}

}  // namespace

void MailTick::Run() {
  At([&] { uses_.window.mousePointer.Set(MousePointer::Hourglass); });
  At([&] { uses_.window.SetStatus("Checking for Email Requests"); });
  SendWaiting();
  const auto folder = At([&] { return uses_.mail.Folder(kFolder); });
  if (folder == nullptr) {
    uses_.waits("Email requests are answered by another program; looking again later");
    return;
  }
  sawMailbox_ = true;
  const std::size_t count = At([&] { return folder->Count(); });
  for (std::size_t i = 1; i <= count && !uses_.work.LookStops(); ++i) {
    mail_.reset();
    sender_.clear();
    mail_ = At([&] { return folder->Item(i); });
    if (mail_ == nullptr || !IsRequest(*mail_)) continue;
    if (At([&] { return uses_.mail.TooManyWait(); })) {
      uses_.waits("Email requests wait, because too many replies could not be sent yet");
      break;
    }
    At([&] { uses_.events.DoEvents(); });
    if (!uses_.work.LookStops()) Serve();
  }
}

void MailTick::SendWaiting() {
  for (const auto& line : At([&] { return uses_.mail.SendWaiting(); })) {
    At([&] { uses_.log.WriteLog(line); });
  }
}

bool MailTick::IsRequest(const MailItem& mail) {
  const bool isNew =
      At([&] { return EqualsIgnoringCase(mail.Subject(), kSubject) && mail.UnRead(); });
  if (!isNew) return false;
  if (mail.IsAutomatic()) {
    NoteRefusal(mail, "sent by a program or a list");
    return false;
  }
  if (!IsWelcome(mail)) return false;
  if (mail.IsFlagged()) NoteRefusal(mail, "it is flagged because of an error");
  return !mail.IsFlagged();
}

bool MailTick::IsWelcome(const MailItem& mail) {
  if (mail.ReplyAddress().empty()) {
    NoteRefusal(mail, "there is nobody to answer");
    return false;
  }
  // The built file goes to the recipient of the answer.
  if (uses_.senders.Allows(mail.SenderAddress()) && uses_.senders.Allows(mail.ReplyAddress())) {
    return true;
  }
  const bool isSender = !uses_.senders.Allows(mail.SenderAddress());
  NoteRefusal(mail, isSender
                        ? "not allowed"
                        : "its Reply-To " + OnOneLine(mail.ReplyAddress()) + " is not allowed");
  return false;
}

// The mail stays unread, so every tick finds it again. The log gets one line for each sender and
// reason.
void MailTick::NoteRefusal(const MailItem& mail, const std::string& reason) {
  // Thousands of invented senders must fill neither the log nor the memory.
  if (uses_.refused.size() >= kMostRefused) return;
  const std::string address = mail.SenderAddress();
  const std::string sender = OnOneLine(address.empty() ? mail.SenderName() : address);
  const std::string line = "Email Request from " + sender + " left alone: " + reason;
  if (uses_.refused.insert(line).second) At([&] { uses_.log.WriteLog(line); });
}

void MailTick::Serve() {
  At([&] { uses_.window.menu.mnuFileBuild.enabled.Set(false); });
  if (serving_ == nullptr) serving_ = uses_.work.Begin(Task::Request);
  sender_ = OnOneLine(mail_->SenderName());
  const auto body = At([&] { return mail_->Body(); });
  if (!body) return;
  reply_ = At([&] { return uses_.mail.CreateReply(*mail_); });
  At([&] { reply_->AddRecipient(mail_->SenderName()); });
  text_ = {};
  request_ = ReadMailRequest(*body);
  if (request_.strProject) strProject_ = *request_.strProject;
  At([&] { uses_.log.WriteLog("Processing Email Request from " + sender_); });
  RequestSucceeded_ = At([&] { return FindProject(); });
  if (request_.GetRequested) Get();
  At([&] { uses_.window.SetStatus("Processing Request from " + sender_); });
  if (request_.BuildRequested && RequestSucceeded_) Build();
  Finish();
}

void MailTick::Resume() {
  SendWaiting();
  Finish();
}

void MailTick::Finish() {
  isPerformed_ = true;
  At([&] { mail_->MarkRead(); });
  isPerformed_ = false;
  Answer();
}

bool MailTick::FindProject() {
  CutAtLineEnd(strProject_);
  if (strProject_.starts_with("$/")) {
    const LocalPlace place = uses_.session.GetLocalPath(strProject_);
    strLocal_ = place.path;
    if (strLocal_.empty()) {
      At([&] { Log("Nothing is known of " + strProject_ + ": " + place.problem); });
    } else {
      strProject_ = strLocal_;
    }
  }
  UseLoadedPath();
  const bool isLoaded = uses_.window.ProjectMembers.Contains(strProject_);
  if ((isLoaded || !StandsOnAShare(strProject_)) && IsFile(uses_.files, strProject_)) return true;
  request_.GetRequested = false;
  request_.BuildRequested = false;
  text_.Fail("Project file not found/specified");
  return false;
}

// Users type paths in any letter case.
void MailTick::UseLoadedPath() {
  const MemberCollection& projects = uses_.window.ProjectMembers;
  if (projects.Contains(strProject_)) return;
  const auto found = std::find_if(projects.begin(), projects.end(), [&](const auto& project) {
    return EqualsIgnoringCase(project->path, strProject_);
  });
  if (found != projects.end()) strProject_ = (*found)->path;
}

void MailTick::Get() {
  const LatestResult got = At([&] { return uses_.latest.GetLatestForProject(strProject_); });
  RequestSucceeded_ = got.Succeeded();
  if (!got.toDo.empty()) At([&] { Log(got.toDo); });
  if (!RequestSucceeded_) {
    text_.Fail("Failed to Get Latest");
    At([&] { Log("Failed to Get Latest: " + got.problem); });
  } else if (!request_.BuildRequested) {
    text_.Succeed();
  }
}

// The compiler asks in a window about a folder that is not there.
std::string MailTick::ProblemWithFolder() const {
  const std::string& folder = request_.strBuildPath;
  try {
    RequireArgument(folder);
    return folder.empty() || FolderExists(uses_.files, folder) ? ""
                                                               : "There is no folder " + folder;
  } catch (const RuntimeError& error) {
    return error.Description();
  }
}

void MailTick::Build() {
  uses_.options.GetLatest = request_.GetRequested;
  if (const auto problem = At([&] { return ProblemWithFolder(); }); !problem.empty()) {
    FailBuild(problem);
    return;
  }
  const std::string& folder = request_.strBuildPath;
  RequestSucceeded_ = At([&] {
    return folder.empty() ? uses_.compile.CompileInPlace(strProject_)
                          : uses_.compile.CompileProject(strProject_, folder);
  });
  if (RequestSucceeded_) {
    text_.Succeed();
    return;
  }
  FailBuild(uses_.compile.LastProblem());
}

void MailTick::FailBuild(const std::string& problem) {
  RequestSucceeded_ = false;
  text_.Fail("Failed to create binary");
  if (!problem.empty()) At([&] { uses_.log.WriteLog("Failed to create binary: " + problem); });
}

void MailTick::Answer() {
  At([&] { reply_->SetSubject(MailReply::Subject(request_, RequestSucceeded_)); });
  At([&] { reply_->SetBody(text_.Body(request_, RequestSucceeded_)); });
  if (request_.BuildRequested) Attach();
  At([&] { reply_->Send(); });
  reply_.reset();
  SendWaiting();
}

// An attachment that cannot be made is left out.
void MailTick::Attach() {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const std::string& resultLog = uses_.window.resultLogPath;
    if (!RequestSucceeded_ && resultLog.empty()) return;
    const bool isAttached = on([&] {
      reply_->AddAttachment(RequestSucceeded_ ? BuiltFile() : WithoutQuotes(resultLog));
      return true;
    });
    if (isAttached && !RequestSucceeded_) on([&] { NoteResultLog(); });
  });
}

// After a failed get, the attached result log is the one of an earlier build.
void MailTick::NoteResultLog() {
  const std::string& project = uses_.compile.ResultLogProject();
  Log("The reply carries the result log of " +
      (project.empty() ? "a build before the program started" : "the build of " + project));
}

std::string MailTick::BuiltFile() const {
  const clsMember& project = uses_.window.ProjectMembers.Item(strProject_);
  return request_.strBuildPath.empty() ? OwnBinary(project)
                                       : request_.strBuildPath + project.EXEName;
}

// Flagged, it neither fails the next look as well nor keeps the mails after it waiting.
void MailTick::FlagFailed() {
  if (sender_.empty() || mail_ == nullptr) return;
  Procedure::IgnoringErrors().Do([&] { mail_->Flag(); });
}

bool MailTick::ReportFailure(const RuntimeError& error) {
  FlagFailed();
  if (reply_ == nullptr) return false;
  bool isTold = false;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { reply_->SetSubject("GorbexBuilder Encountered an error"); });
    // A file that could not be sent with the answer could not be sent with this, either.
    on([&] { reply_->RemoveAttachments(); });
    if (!AddressFailure()) return;
    on([&] { reply_->SetBody(FailureText(error)); });
    on([&] { reply_->Send(); });
    isTold = true;
    SendWaiting();
  });
  return isTold;
}

// Only the administrator, when the settings say so; else the recipient of the reply.
bool MailTick::AddressFailure() {
  if (uses_.options.ReplyTo != kReplyToUser) return reply_->RecipientCount() > 0;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    if (reply_->RecipientCount() > 0) on([&] { reply_->RemoveRecipient(1); });
    on([&] { reply_->AddRecipient(uses_.options.ReplyUser); });
  });
  return true;
}

std::string MailTick::FailureText(const RuntimeError& error) const {
  std::string text = "GorbexBuilder could not process your request!\r\n";
  text += "Reason was " + error.Description() + "\r\n";
  text += "Which occured in tmrOutlook_Timer at line " + std::to_string(line_) + "\r\n\r\n";
  text += "strProject   : " + strProject_ + "\r\n";
  text += "strLocal     : " + strLocal_ + "\r\n";
  text += "strBuildPath : " + request_.strBuildPath + "\r\n";
  text += "UB(arrP)     : " + std::to_string(request_.lastField) + "\r\n\r\n";
  return text + "Please forward this message to your GorbexBuilder Administrator\r\n";
}

}  // namespace gorbex
