// What a browser sends is data of a page that means harm.

#include "trial/Protocol.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

#include "trial/Framing.h"

namespace {

using trial::Clock;
using trial::Json;
using trial::MessageReader;
using trial::Protocol;
using trial::ProtocolError;
using Messages = std::vector<std::string>;

std::string withNuls(std::string text) {
  for (char& c : text)
    if (c == '|') c = '\0';
  return text;
}

TEST(Framing, CutsAtNulsHoweverBytesArrive) {
  const std::string bytes = withNuls("one||two|three|ha");
  for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
    MessageReader reader(100);
    Messages all;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
      for (const std::string& message : reader.take(std::string_view(bytes).substr(at, piece)))
        all.push_back(message);
    EXPECT_EQ(all, (Messages{"one", "two", "three"})) << piece;
  }
}

TEST(Framing, PassesOverWhatIsTooLong) {
  MessageReader reader(5);
  EXPECT_EQ(reader.take(withNuls("12345|123456|1|")), (Messages{"12345", "1"}));
  for (int i = 0; i < 1000; ++i)
    EXPECT_TRUE(reader.take("xxxx").empty());
  EXPECT_EQ(reader.take(withNuls("|ok|")), (Messages{"ok"}));
  EXPECT_EQ(reader.passedOver(), 2U);
}

// A browser that the test plays.
class Talk : public testing::Test {
 protected:
  Talk() {
    EXPECT_EQ(pipe(toUs_.data()), 0);
    EXPECT_EQ(pipe(toBrowser_.data()), 0);
    protocol_.emplace(toUs_[0], toBrowser_[1],
                      [this](const std::string& session, const std::string& method, const Json&) {
                        events_.push_back(session + ' ' + method);
                      });
  }
  ~Talk() override {
    hangUp();
    for (const int end : {toUs_[0], toBrowser_[0], toBrowser_[1]})
      close(end);
  }

  void say(const std::string& text) {
    const std::string bytes = withNuls(text + '|');
    EXPECT_EQ(write(toUs_[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  void hangUp() {
    if (toUs_[1] >= 0) close(toUs_[1]);
    toUs_[1] = -1;
  }
  void pump() { protocol_->pump(Clock::now() + std::chrono::milliseconds(20)); }

  std::array<int, 2> toUs_{};
  std::array<int, 2> toBrowser_{};
  std::optional<Protocol> protocol_;
  Messages events_;
  Messages answers_;

  Protocol::Answer noting() {
    return [this](const Json& result, const std::string& error) { answers_.push_back(error + result.dump()); };
  }
};

TEST_F(Talk, AnswersFindTheirCommandsOnceOnly) {
  protocol_->send("S", "One", Json::object(), noting());
  protocol_->send("", "Two", Json::object(), noting());
  say(R"({"id":2,"error":{"message":"no"}})");
  say(R"({"id":1,"result":{"a":1},"sessionId":"S"})");
  say(R"({"id":1,"result":{"a":2}})");
  say(R"({"id":77,"result":{}})");
  say(R"({"id":-1,"result":{}})");
  say(R"({"id":"1"})");
  say(R"({"method":"Here","sessionId":"S","params":[1]})");
  pump();
  EXPECT_EQ(answers_, (Messages{"nonull", R"({"a":1})"}));
  EXPECT_EQ(events_, (Messages{"S Here"}));
}

TEST_F(Talk, ErrorsThatNobodyWaitsForAreLoud) {
  Messages errors;
  protocol_->onError = [&](const std::string&, const std::string& message) { errors.push_back(message); };
  protocol_->send("S", "Fetch.enable", Json::object());
  say(R"({"id":1,"error":7})");
  pump();
  EXPECT_EQ(errors, (Messages{"Fetch.enable: an error without a message"}));
}

TEST_F(Talk, NonsenseIsRefused) {
  const std::string deep(50'000, '[');
  for (const std::string& text : {std::string("hello"), std::string("[1]"), std::string("{\"id\":"), deep}) {
    say(text);
    EXPECT_THROW(pump(), ProtocolError) << text.substr(0, 20);
  }
}

TEST_F(Talk, ABrowserThatIsGoneIsTold) {
  hangUp();
  EXPECT_THROW(pump(), ProtocolError);
}

TEST_F(Talk, ABrowserThatReadsNothingDoesNotHoldUsUp) {
  protocol_->send("", "Large", {{"text", std::string(1 << 20, 'x')}});
  pump();  // a write that waits for the browser would not return
  std::array<char, 100> begun{};
  EXPECT_EQ(read(toBrowser_[0], begun.data(), begun.size()), static_cast<ssize_t>(begun.size()));
}

TEST_F(Talk, CommandsOfASessionThatEndsAreAnswered) {
  protocol_->send("S", "One", Json::object(), noting());
  protocol_->send("T", "Two", Json::object(), noting());
  protocol_->endSession("S");
  EXPECT_EQ(answers_, (Messages{"the page has endednull"}));
}

}  // namespace
