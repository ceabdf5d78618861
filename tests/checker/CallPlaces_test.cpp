// Where calls stand in the files as they were shipped.

#include "checker/report/CallPlaces.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <fstream>

#include "APICheckEngine/CommentStripping.h"

namespace {

class CallPlaces : public ::testing::Test {
 protected:
  ~CallPlaces() override { std::remove(path_.c_str()); }

  // What the engine makes of a file of these bytes.
  std::string clean(std::string bytes) const {
    std::ofstream(path_, std::ios::binary) << bytes;
    bytes.resize(std::min(bytes.find('\0'), bytes.size()));
    bytes.push_back('\0');
    const int length = delete_comment(bytes.data(), static_cast<int>(bytes.size()), bytes.data());
    bytes.resize(std::min(bytes.find('\0'), static_cast<std::size_t>(length)));
    return bytes;
  }

  // The call in a file of these bytes that is `code` for the engine.
  Call place(const std::string& bytes, const std::string& code) const {
    const std::string cleaned = clean(bytes);
    Call call;
    placeInSource(path_, cleaned, {{cleaned.find(code), code.size(), &call}});
    return call;
  }

  std::string path_ = testing::TempDir() + "tarvo-places-test-" + std::to_string(getpid()) + ".js";
};

std::string markOf(const Call& call) {
  return call.excerpt.text.substr(call.mark, call.markLength);
}

TEST_F(CallPlaces, AreThoseOfTheShippedFile) {
  struct Row {
    std::string bytes, code;
    int line, column;
    std::string excerpt, mark;
  } rows[] = {
      {"tv.X()", "tv.X()", 1, 1, "tv.X()", "tv.X()"},
      {"/* a\n b */tv.X(); // c\n", "tv.X()", 2, 6, " b */tv.X(); // c", "tv.X()"},
      {"a // b\n/* c */ /* d\n */ /**/ tv.X()", "tv.X()", 3, 10, " */ /**/ tv.X()", "tv.X()"},
      {"tv./* a */X(1 /* b */)", "tv.X(1 )", 1, 1, "tv./* a */X(1 /* b */)", "tv./* a */X(1 /* b */)"},
      {"/* a *//* b */tv.X()", "tv.X()", 1, 15, "/* a *//* b */tv.X()", "tv.X()"},  // the second one stays
      {"a\r\n tv.X();\r\nb", "tv.X()", 2, 2, " tv.X();", "tv.X()"},
      {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80 tv.X()", "tv.X()", 1, 5, "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80 tv.X()",
       "tv.X()"},
      {"/*\xED\xA0\x80*/ tv.X()", "tv.X()", 1, 9, "/*\xED\xA0\x80*/ tv.X()", "tv.X()"},  // half a pair: three bytes
      {"\xE2\x82 \xFF\xC3(tv.X()", "tv.X()", 1, 7, "\xE2\x82 \xFF\xC3(tv.X()", "tv.X()"},
      {"a\ntv.X(1,\n 2)", "tv.X(1,\n 2)", 2, 1, "tv.X(1,", "tv.X(1,"},
      {std::string("\ntv.X()\0 // tv.Y()", 18), "tv.X()", 2, 1, "tv.X()", "tv.X()"},
      {"tv.X() /* the end", "tv.X()", 1, 1, "tv.X() /* the end", "tv.X()"},
  };
  for (const Row& row : rows) {
    const Call call = place(row.bytes, row.code);
    EXPECT_EQ(std::pair(call.place.line, call.place.column), std::pair(row.line, row.column)) << row.bytes;
    EXPECT_EQ(call.excerpt.text, row.excerpt) << row.bytes;
    EXPECT_EQ(call.excerpt.number, row.line) << row.bytes;
    EXPECT_EQ(markOf(call), row.mark) << row.bytes;
    EXPECT_EQ(call.code, row.code) << row.bytes;
  }
}

TEST_F(CallPlaces, LinesAroundACallAreThoseThatThereAre) {
  const auto shown = [](const std::vector<SourceLine>& lines) {
    std::string text;
    for (const SourceLine& line : lines)
      text += std::to_string(line.number) + line.text + ' ';
    return text;
  };
  const Call first = place("tv.X()\nb\r\nc\nd", "tv.X()");
  EXPECT_EQ(shown(first.before) + "|" + shown(first.after), "|2b 3c ");
  const Call last = place("a\nb\nc\ntv.X()", "tv.X()");
  EXPECT_EQ(shown(last.before) + "|" + shown(last.after), "2b 3c |");
}

TEST_F(CallPlaces, AFileThatIsAnotherNowHasNoPlaces) {
  const std::string cleaned = clean("a\n tv.X()");
  (void)clean("other");
  Call call;
  placeInSource(path_, cleaned, {{3, 6, &call}});
  EXPECT_EQ(call.place.line, 0);
  EXPECT_EQ(call.excerpt.text + "|" + markOf(call), " tv.X()|tv.X()");
  std::remove(path_.c_str());
  placeInSource(path_, cleaned, {{3, 6, &call}});
  EXPECT_EQ(call.place.line, 0);
}

TEST_F(CallPlaces, ExcerptsAreShortAndHoldWholeCharacters) {
  std::string umlauts;
  for (int i = 0; i < 500; ++i)
    umlauts += "\xC3\xA4";
  for (const std::string& lead : {umlauts, "x" + umlauts, std::string()}) {
    for (const std::string& rest : {umlauts, std::string(";")}) {
      const Call call = place(lead + "(tv.X()" + rest, "tv.X()");
      const std::string& text = call.excerpt.text;
      EXPECT_GE(text.size(), std::min<std::size_t>(lead.size() + 7 + rest.size(), 157));
      EXPECT_LE(text.size(), 160U);
      EXPECT_NE(static_cast<unsigned char>(text.front()), 0xA4);
      EXPECT_NE(static_cast<unsigned char>(text.back()), 0xC3);
      EXPECT_EQ(markOf(call), "tv.X()");
    }
  }
  const Call wide = place("tv.X(" + std::string(500, '1') + ")", "tv.X(" + std::string(500, '1') + ")");
  EXPECT_EQ(wide.code.size(), 160U);
  EXPECT_EQ(markOf(wide), wide.excerpt.text);
}

constexpr std::size_t kManyCalls = 100'000;

// Places of `kManyCalls` calls in a text that repeats `piece`, of which a call is the last six bytes.
std::vector<Sighting> sightingsIn(const std::string& piece, std::deque<Call>& calls) {
  std::vector<Sighting> sightings;
  for (std::size_t i = 1; i <= kManyCalls; ++i) {
    calls.emplace_back();
    sightings.push_back({i * piece.size() - 6, 6, &calls.back()});
  }
  return sightings;
}

std::string repeated(const std::string& piece) {
  std::string text;
  for (std::size_t i = 0; i < kManyCalls; ++i)
    text += piece;
  return text;
}

TEST_F(CallPlaces, ManyInOneLineTakeNoLonger) {
  const auto start = std::chrono::steady_clock::now();
  std::deque<Call> calls;
  placeInSource(path_, clean(repeated("/**/ \xC3\xA4 tv.X()")), sightingsIn(" \xC3\xA4 tv.X()", calls));
  EXPECT_EQ(calls.back().place.line, 1);
  EXPECT_EQ(calls.back().place.column, static_cast<int>(kManyCalls) * 13 - 5);
  EXPECT_EQ(markOf(calls.back()), "tv.X()");

  calls.clear();
  const std::string statements = repeated("0123456789 tv.X()");
  for (const Sighting& sighting : sightingsIn("0123456789 tv.X()", calls))
    placeInStatements(statements, sighting);
  EXPECT_EQ(markOf(calls.back()), "tv.X()");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));  // or minutes
}

TEST_F(CallPlaces, StatementsAreLines) {
  const std::string statements = "a()\nb(tv.X())\nc()";
  Call call;
  placeInStatements(statements, {6, 6, &call});
  EXPECT_EQ(call.excerpt.text + "|" + markOf(call) + "|" + call.code, "b(tv.X())|tv.X()|tv.X()");
  placeInStatements(statements, {0, 3, &call});
  EXPECT_EQ(call.excerpt.text + "|" + markOf(call), "a()|a()");
  placeInStatements(statements, {14, 3, &call});
  EXPECT_EQ(call.excerpt.text + "|" + markOf(call), "c()|c()");
}

}  // namespace
