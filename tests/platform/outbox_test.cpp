#include "platform/outbox.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/platform/temporary_folder.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Outcome = Delivery::Outcome;
using Texts = std::vector<std::string>;

class OutboxTest : public testing::Test {
 protected:
  Outbox::Uses Uses() {
    return {root.Path() / "outbox",
            [](const fs::path& file, const std::string& bytes) {
              std::ofstream(file, std::ios::binary) << bytes;
            },
            [this](const fs::path&) { return isTaken ? nullptr : std::make_shared<int>(); },
            [this] { return now; }};
  }

  void Put(const std::string& text, const std::string& smaller = "") {
    now += 1s;
    outbox.Put({"b@h.example", {text + "@y.example"}, text, smaller});
  }

  /// One round; what the server was given, each text once for each try.
  Texts Deliver() {
    Texts given;
    news = outbox.Deliver([&](const WaitingMail&, const std::string& text) {
      given.push_back(text);
      return Delivery{answers.empty() ? Outcome::Taken : answers[text], "why"};
    });
    return given;
  }

  /// How many mails of that ending are in a folder.
  [[nodiscard]] std::size_t Count(const std::string& folder, const std::string& ending) const {
    std::size_t count = 0;
    std::error_code none;
    for (const auto& file : fs::directory_iterator(root.Path() / folder, none)) {
      if (file.path().extension() == ending) ++count;
    }
    return count;
  }
  [[nodiscard]] std::size_t WaitingMails() const { return Count("outbox", ".mail"); }
  [[nodiscard]] std::size_t FailedMails() const { return Count("outbox/failed", ".eml"); }

  TemporaryFolder root;
  std::chrono::system_clock::time_point now =
      std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  bool isTaken = false;
  Outbox outbox{Uses()};
  std::map<std::string, Outcome> answers;  ///< empty: the server takes everything
  Texts news;
};

TEST_F(OutboxTest, SendsEachMailOnceInOrder) {
  EXPECT_EQ(Deliver(), Texts{});
  Put("1");
  Put("2");
  if constexpr (fs::path::preferred_separator == '/') {
    EXPECT_EQ(fs::status(root.Path() / "outbox").permissions(), fs::perms::owner_all);
  }
  isTaken = true;
  EXPECT_EQ(Deliver(), Texts{}) << "another program is sending";
  isTaken = false;
  outbox = Outbox(Uses());
  EXPECT_EQ(Deliver(), (Texts{"1", "2"})) << "a new start finds what waits";
  EXPECT_EQ(news, Texts{});
  EXPECT_EQ(Deliver(), Texts{});
  EXPECT_EQ(WaitingMails() + FailedMails(), 0U);
}

TEST_F(OutboxTest, TriesAgainWithGrowingPausesForFiveDays) {
  const auto start = now;
  answers = {{"1", Outcome::NotNow}};
  Put("1");
  std::vector<int> minutes;
  Texts told;
  for (; WaitingMails() > 0 && now - start < 24h * 6; now += 1min) {
    if (!Deliver().empty()) {
      minutes.push_back(
          static_cast<int>(std::chrono::round<std::chrono::minutes>(now - start).count()));
    }
    told.insert(told.end(), news.begin(), news.end());
  }
  minutes.resize(10);
  EXPECT_EQ(minutes, (std::vector<int>{0, 1, 2, 4, 8, 16, 32, 64, 124, 184}));
  EXPECT_EQ(told, (Texts{"The reply to 1@y.example waits in the outbox. why",
                         "The reply to 1@y.example could not be sent for five days and is in "
                         "Outbox\\failed. why"}));
  EXPECT_LT(now - start, 24h * 5 + 2h);
  EXPECT_EQ(FailedMails(), 1U);
}

TEST_F(OutboxTest, AsksAServerThatIsAwayOnceForAll) {
  for (const char* text : {"1", "2", "3"}) Put(text);
  answers = {{"1", Outcome::ServerAway}, {"2", Outcome::ServerAway}, {"3", Outcome::ServerAway}};
  EXPECT_EQ(Deliver(), Texts{"1"});
  Texts waits;
  for (const std::string number : {"1", "2", "3"}) {
    waits.push_back("The reply to " + number + "@y.example waits in the outbox. why");
  }
  EXPECT_EQ(news, waits) << "each is told of";
  now += 70s;
  EXPECT_EQ(Deliver(), Texts{"1"});
  EXPECT_EQ(news, Texts{}) << "once";
  answers.clear();
  Put("4");
  EXPECT_EQ(Deliver(), (Texts{"1", "2", "3", "4"})) << "it is back";
  EXPECT_EQ(news, (Texts{"The reply to 1@y.example is sent", "The reply to 2@y.example is sent",
                         "The reply to 3@y.example is sent"}));
}

TEST_F(OutboxTest, SetsAsideWhatWillNeverBeTaken) {
  answers = {{"refused", Outcome::Refused},
             {"huge", Outcome::TooLarge},
             {"big", Outcome::TooLarge},
             {"small", Outcome::Taken}};
  Put("refused");
  Put("huge");
  Put("big", "small");
  std::ofstream(root.Path() / "outbox" / "1-1.mail") << "torn";
  now += 2h;
  EXPECT_EQ(Deliver(), (Texts{"refused", "huge", "big", "small"}));
  const std::string failed = "@y.example was refused and is in Outbox\\failed. why";
  EXPECT_EQ(news, (Texts{"The reply to refused" + failed, "The reply to huge" + failed,
                         "The reply to big@y.example goes without its attachment. why",
                         "The file '1-1.mail' in the outbox is not a mail"}));
  EXPECT_EQ(WaitingMails(), 0U);
  EXPECT_EQ(FailedMails(), 3U);
  for (const auto& file : fs::directory_iterator(root.Path() / "outbox" / "failed")) {
    EXPECT_EQ(fs::file_time_type::clock::to_sys(file.last_write_time()), now) << file.path();
  }
}

TEST_F(OutboxTest, HasBounds) {
  answers = {{"1", Outcome::Refused}};
  for (std::size_t i = 0; i < Outbox::kMostFailedMails + 20; ++i) {
    Put("1");
    Deliver();
  }
  EXPECT_EQ(FailedMails(), Outbox::kMostFailedMails);
  for (std::size_t i = 0; i < Outbox::kMostMails; ++i) {
    EXPECT_FALSE(i == 0 && outbox.IsFull());
    Put("1");
  }
  EXPECT_TRUE(outbox.IsFull());
}

}  // namespace
}  // namespace gorbex::test
