#pragma once

#include <functional>
#include <string>

#include "tests/support/memory_file_system.h"
#include "tests/support/memory_mail.h"

namespace gorbex::test {

inline std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.Description();
  }
  return "<none>";
}

/// What every mail system is put through: its folder, what it sent, and the files it attaches.
class MemoryMailBench {
 public:
  std::string drive = "C:\\";
  Journal journal;
  MemoryFileSystem files{journal};
  MemoryMail mail{journal, files};

  [[nodiscard]] MailAccount Account() const { return {}; }
  void Deliver(const std::string& subject, const std::string& body) {
    mail.received.push_back({subject, body});
  }
  void Vanish() { mail.received.front().isGone = true; }
  std::string Sent() {
    const auto& sent = mail.sent.back();
    // Names are addresses where nothing needs to travel.
    std::string text = "anna@dev.example|" + sent.subject + "|" + sent.body;
    for (const auto& [path, bytes] : sent.attachments) {
      text += "|" + path.substr(path.rfind('\\') + 1) + "=" + Hexadecimal(bytes);
    }
    return text;
  }

  static std::string Hexadecimal(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
      constexpr const char* kDigits = "0123456789abcdef";
      const auto value = static_cast<unsigned char>(byte);
      text.append({kDigits[value / 16], kDigits[value % 16]});
    }
    return text;
  }
};

}  // namespace gorbex::test
