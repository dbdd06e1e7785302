#include "mail/mail_reply.h"

#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::string_view kOpening =
    "This is the GorbexBuilder auto-response\r\nYour project request was ";
constexpr std::string_view kAttachments =
    "If your build failed, you will receive a copy of the log-file as an attachment to this "
    "message.\r\nHowever, if the build was successfull, the output file will be included as an "
    "attachment";
constexpr std::string_view kGetOnly =
    "Since you have not decided to build a project, this is simply to confirm that your GET "
    "request "
    "was processed and ";
constexpr std::string_view kNothingDone =
    "GorbexBuilder encountered an error whilst processing your request, and unfortunatley your "
    "build/get has failed";

std::string GetResult(bool succeeded) {
  return succeeded ? "succeeded." : "failed.";
}

std::string Closing(const MailRequest& request, bool succeeded) {
  if (request.BuildRequested) return std::string(kAttachments);
  if (request.GetRequested) return std::string(kGetOnly) + GetResult(succeeded);
  return std::string(kNothingDone);
}

}  // namespace

void MailReply::Fail(std::string_view reason) {
  outcome_.append("unsuccesfull\r\n\r\nReason : ").append(reason);
}

std::string MailReply::Subject(const MailRequest& request, bool succeeded) {
  if (request.BuildRequested) {
    return std::string("Your Build ") + (succeeded ? "was successfull." : "failed.");
  }
  if (request.GetRequested) return "GorbexBuilder GET " + GetResult(succeeded);
  return "GorbexBuilder failed to process your request";
}

std::string MailReply::Body(const MailRequest& request, bool succeeded) const {
  const std::string apart = std::string(kLineBreak).append(kLineBreak);
  return std::string(kOpening) + outcome_ + apart + Closing(request, succeeded) + apart;
}

}  // namespace gorbex
