#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_pump.h"
#include "platform/windows/automation_thread.h"

namespace gorbex {

/// Outlook as it was opened, with the thread that its objects live on.
struct OutlookSession {
  OutlookSession(EventPump* events, std::chrono::milliseconds patience)
      : thread(events, patience) {}

  AutomationThread thread;  // outlives the objects
  KeptObject application;
  KeptObject nameSpace;
};

/// A mail as it was in its folder when that was listed.
struct ListedMail {
  std::string id;
  std::string folderId;
  std::string subject;
  std::string senderName;
  bool isUnread = false;
};

/// Outlook, ready for use. Error 429 where it is not installed.
[[nodiscard]] std::shared_ptr<OutlookSession> OpenOutlook(EventPump* events,
                                                          std::chrono::milliseconds patience);

/// The mails of a folder below the inbox, in its order. One that goes meanwhile may be left out.
[[nodiscard]] std::vector<ListedMail> ListMails(const std::shared_ptr<OutlookSession>& session,
                                                const std::string& folder);

/// The mail itself, for work of the session's thread; no object when it is in its folder no
/// more.
[[nodiscard]] Dispatch FindMail(const Dispatch& nameSpace, const ListedMail& listed);

/// A property's text; empty where this kind of object, or this Outlook, has no such property.
[[nodiscard]] std::string TextIfAny(const Dispatch& object, const std::string& property);

}  // namespace gorbex
