#include "platform/windows/outlook_session.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "platform/runtime_error.h"
#include "platform/windows/automation_class.h"

namespace gorbex {
namespace {

constexpr std::int32_t kInbox = 6;

// Later versions no longer register the first name.
Dispatch MakeApplication() {
  const std::string first = "Outlook.Application.8";
  const std::string later = "Outlook.Application";
  return MakeObject(IsRegistered(first) || !IsRegistered(later) ? first : later);
}

// The three ways in which the mail store says that there is no such mail (any more).
bool IsGone(const RuntimeError& error) {
  constexpr std::array<std::uint32_t, 3> kNone = {0x8004010F, 0x8004010A, 0x80040107};
  const auto number = static_cast<std::uint32_t>(error.Number());
  return std::find(kNone.begin(), kNone.end(), number) != kNone.end();
}

std::string FolderIdOf(const Dispatch& mail) {
  return mail.Property("Parent").Object().Property("EntryID").Text();
}

ListedMail Listed(const Dispatch& mail, const std::string& folderId) {
  return {mail.Property("EntryID").Text(), folderId, TextIfAny(mail, "Subject"),
          TextIfAny(mail, "SenderName"), mail.Property("UnRead").Bool()};
}

// Nothing for a number that is no longer in the folder.
std::optional<ListedMail> MailNumber(const Dispatch& items, std::int32_t number,
                                     const std::string& folderId) {
  Dispatch mail;
  try {
    mail = items.Ask("Item", {number}).Object();
    return mail ? std::optional(Listed(mail, folderId)) : std::nullopt;
  } catch (const RuntimeError& error) {
    if (IsGone(error)) return std::nullopt;
    if (!mail && items.Property("Count").Long() < number) return std::nullopt;
    throw;
  }
}

}  // namespace

std::string TextIfAny(const Dispatch& object, const std::string& property) {
  try {
    return object.Property(property).Text();
  } catch (const RuntimeError& error) {
    if (error.Code() != ErrorNumber::NoSuchProperty) throw;
    return {};
  }
}

std::shared_ptr<OutlookSession> OpenOutlook(EventPump* events, std::chrono::milliseconds patience) {
  auto session = std::make_shared<OutlookSession>(events, patience);
  auto [application, nameSpace] = session->thread.Do([] {
    auto made = MakeApplication();
    auto space = made.Ask("GetNamespace", {"MAPI"}).Object();
    return std::pair(AutomationThread::Keep(std::move(made)),
                     AutomationThread::Keep(std::move(space)));
  });
  session->application = std::move(application);
  session->nameSpace = std::move(nameSpace);
  return session;
}

std::vector<ListedMail> ListMails(const std::shared_ptr<OutlookSession>& session,
                                  const std::string& folder) {
  auto [items, count, id] = session->thread.Do([nameSpace = session->nameSpace, folder] {
    const auto inbox = nameSpace->Ask("GetDefaultFolder", {kInbox}).Object();
    const auto chosen = inbox.Property("Folders").Object().Ask("Item", {folder}).Object();
    auto all = chosen.Property("Items").Object();
    const auto number = all.Property("Count").Long();
    return std::tuple(AutomationThread::Keep(std::move(all)), number,
                      chosen.Property("EntryID").Text());
  });
  std::vector<ListedMail> mails;
  for (std::int32_t number = 1; number <= count; ++number) {
    // Each mail is a job by itself, so that a long list does not run into the time limit.
    auto mail = session->thread.Do(
        [all = items, number, folderId = id] { return MailNumber(*all, number, folderId); });
    if (mail) mails.push_back(std::move(*mail));
  }
  return mails;
}

Dispatch FindMail(const Dispatch& nameSpace, const ListedMail& listed) {
  try {
    auto mail = nameSpace.Ask("GetItemFromID", {listed.id}).Object();
    if (mail && FolderIdOf(mail) == listed.folderId) return mail;
  } catch (const RuntimeError& error) {
    if (!IsGone(error)) throw;
  }
  return {};
}

}  // namespace gorbex
