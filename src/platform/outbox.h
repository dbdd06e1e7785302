#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gorbex {

/// A mail that is on its way to a server.
struct WaitingMail {
  std::string from{};             ///< address of the envelope
  std::vector<std::string> to{};  ///< addresses of the envelope
  std::string text{};             ///< the whole message as it travels
  std::string smallerText{};      ///< the same without attachments; empty when it has none
};

/// The result of handing a mail to its server.
struct Delivery {
  enum class Outcome {
    Taken,
    ServerAway,  ///< the server takes no mail now
    NotNow,      ///< the server does not take this mail now
    TooLarge,
    Refused,
  };
  Outcome outcome = Outcome::Taken;
  std::string words{};  ///< why it was not taken
};

/// Mails that wait on the disk for their server. A mail that was put in is sent once, even if the
/// server or this program ends meanwhile. Each mail is a file that only its owner can
/// read, and that is complete or missing. Programs that share the folder take turns. Failures of
/// the disk are std::system_error.
class Outbox {
 public:
  using Time = std::chrono::system_clock::time_point;

  struct Uses {
    std::filesystem::path folder;  ///< made when the first mail is put in

    /// Writes a new file that only its owner can read, on the disk when it returns.
    std::function<void(const std::filesystem::path& file, const std::string& bytes)> write;

    /// Keeps other programs out while the turn lives; null while another one has it.
    std::function<std::shared_ptr<void>(const std::filesystem::path& file)> takeTurn;

    std::function<Time()> now = [] { return std::chrono::system_clock::now(); };
  };

  /// Hands one text of a mail to the server.
  using Send = std::function<Delivery(const WaitingMail& mail, const std::string& text)>;

  static constexpr std::chrono::hours kLongestWait{24 * 5};
  static constexpr std::size_t kMostMails = 1000;
  static constexpr std::size_t kMostFailedMails = 100;
  static constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 30U;

  explicit Outbox(Uses uses) : uses_(std::move(uses)) {}

  void Put(const WaitingMail& mail);

  /// Tries the new mails, and those whose pause is over: each pause is as long as the mail has
  /// waited, between a minute and an hour. A mail that is refused, or has waited for five days,
  /// goes to the folder "failed". Returns a line for each thing that somebody should know.
  [[nodiscard]] std::vector<std::string> Deliver(const Send& send);

  /// True when no further mail should be put in: too many wait already.
  [[nodiscard]] bool IsFull() const;

 private:
  struct Entry;
  using News = std::vector<std::string>;

  [[nodiscard]] std::vector<Entry> Waiting() const;
  [[nodiscard]] bool IsDue(const Entry& entry) const;
  Delivery DeliverOne(const Entry& entry, const Send& send, News& news);
  void PutOff(const Entry& entry, const std::string& words, News& news) const;
  void SetTried(const Entry& entry) const;
  void SetAside(const Entry& entry) const;

  Uses uses_;
  bool isServerAway_ = false;
};

}  // namespace gorbex
