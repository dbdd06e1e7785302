#include "mail/mail_request.h"

#include <algorithm>

#include "mail/sender_list.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

std::string Written(const MailRequest& request) {
  std::string body;
  if (request.GetRequested) body += "GET,";
  if (request.BuildRequested) body += "BUILD,";
  if (!request.strBuildPath.empty()) body += "PATH " + request.strBuildPath + ",";
  if (request.strProject) body += "PROJECT \"" + *request.strProject + "\",";
  return body;
}

}  // namespace

// The body of a request. Its first line serves as list of senders as well, the rest as a sender.
void ReadInput(std::string_view input) {
  const auto request = ReadMailRequest(input);
  Require(request.lastField == (input.empty() ? -1 : std::count(input.begin(), input.end(), ',')),
          "fields end with a comma");
  Require(request.strBuildPath.empty() || request.strBuildPath.ends_with('\\'),
          "a folder ends with a backslash");
  const auto again = ReadMailRequest(Written(request));
  Require(again.GetRequested == request.GetRequested && again.strProject == request.strProject &&
              again.BuildRequested == request.BuildRequested &&
              again.strBuildPath == request.strBuildPath,
          "a request that was written is read");

  const SenderList senders(TakeFirstLine(input));
  Require(!senders.IsClear() || !senders.Allows("nobody"), "who has no address may not ask");
  static_cast<void>(senders.Allows(input));
}

}  // namespace gorbex::test
