#include "build/reference_consent.h"

#include "core/list_columns.h"
#include "core/text.h"

namespace gorbex {

bool ReferenceConsent::ForRun(const std::function<bool(const ListRow&)>& takes) {
  isGiven_ = false;
  const bool isBuiltThere = window_.buildDirectory.ends_with('\\');
  const auto isComing = [&](const std::string& path) {
    const ListRow* row = isBuiltThere ? window_.lvwQueue.Find(path) : nullptr;
    return row != nullptr && takes(*row);
  };
  std::vector<std::string> lost;
  for (const auto& row : window_.lvwQueue.Rows()) {
    if (!takes(*row)) continue;
    const std::string& path = row->SubItem(queue_column::kProject);
    for (const auto& file : references_.ComponentsWithoutIdentity(path, isComing)) {
      lost.push_back(std::string(path).append(": ").append(file));
    }
  }
  if (lost.empty()) return true;
  isGiven_ = Ask(lost, "Do you wish to continue with your build?");
  return isGiven_;
}

bool ReferenceConsent::ForProject(const std::string& path) {
  if (isGiven_ || work_.Ends()) return isGiven_;
  auto lost = references_.ComponentsWithoutIdentity(path, [](const auto&) { return false; });
  for (std::string& file : lost) file.insert(0, path + ": ");
  return lost.empty() || Ask(lost, "Do you wish to update this project's references?");
}

bool ReferenceConsent::Ask(const std::vector<std::string>& references, std::string_view question) {
  std::string text = "The references to these components would lose their identities, because ";
  text.append("no built component with one is found there:").append(kLineBreak).append(kLineBreak);
  text.append(ShortList(references)).append(kLineBreak).append(question);
  return dialogs_.Show({text, Buttons::YesNo, MessageIcon::Exclamation}) == Answer::Yes;
}

}  // namespace gorbex
