// What flow analysis reads of Flash files, from the bytes to the calls that it finds.

#include "checker/run/FlashMovie.h"

#include <gtest/gtest.h>
#include <lzma.h>

#include <algorithm>
#include <string>
#include <vector>

#include "checker/run/FlashHints.h"
#include "flow/Flow.h"
#include "swf-assembler/Assembler.h"

namespace {

using FlashEngine_1_00::Gap;
using swf_assembler::assemble;

flow::Database database() {
  flow::Database database;
  database.methods["MORVANE-NAVERTIX-TUNER"] = {"GetVersion"};
  database.identifiers = {"MORVANE-NAVERTIX-TUNER"};
  return database;
}

std::string found(const flow::Result& result) {
  std::string text;
  for (const flow::FoundCall& call : result.calls)
    if (call.judgement == flow::Judgement::undocumented) text += (text.empty() ? "" : " ") + call.method;
  return text;
}

// The methods that are called on the plug-in of a page that shows the movie.
std::string foundIn(const std::string& bytes) {
  const std::string page =
      "<object id=tuner classid='clsid:MORVANE-NAVERTIX-TUNER'></object><embed id=movie src=movie.swf>\n"
      "<script>function onPage(name) { tuner[name](); }\n"
      "document.getElementById('movie').SetVariable('given', tuner);</script>";
  return found(flow::analyse({{"index.html", page}, {"movie.swf", readFlash(bytes).script, true}}, database()));
}

const std::string kCall = "Push 0 \"tuner\"\nGetVariable\nPush \"X\"\nCallMethod\nPop\nEnd\n";

TEST(FlashMovie, FollowsActionsToTheirCalls) {
  struct Row {
    const char* what;
    std::string actions;
    const char* expected;
  };
  const std::vector<Row> rows = {
      {"call", kCall, "X"},
      {"documented", "Push 0 \"tuner\"\nGetVariable\nPush \"GetVersion\"\nCallMethod\nPop\n", ""},
      {"a variable",
       "Push \"tv\" \"tuner\"\nGetVariable\nSetVariable\nPush 0 \"tv\"\nGetVariable\nPush \"Y\"\nCallMethod\n", "Y"},
      {"its own object",
       "Push \"tuner\" 0\nInitObject\nSetVariable\nPush 0 \"tuner\"\nGetVariable\nPush \"Y\"\nCallMethod\n", ""},
      {"what the page sets", "Push 0 \"given\"\nGetVariable\nPush \"Y\"\nCallMethod\n", "Y"},
      {"a register", "Push \"tuner\"\nGetVariable\nStoreRegister 1\nPop\nPush 0 reg 1 \"Y\"\nCallMethod\n", "Y"},
      {"a function with registers",
       "function2 use registers 3 flags 2 (2:p) {\nPush 0 reg 2 \"Y\"\nCallMethod\nReturn\n}\n"
       "Push \"tuner\"\nGetVariable\nPush 1 \"use\"\nCallFunction\nPop\n",
       "Y"},
      {"an object's method",
       "Push \"o\"\nPush \"go\"\nfunction (p) {\nPush 0 \"p\"\nGetVariable\nPush \"Y\"\nCallMethod\nPop\n}\nPush 1\n"
       "InitObject\nSetVariable\nPush \"tuner\"\nGetVariable\nPush 1 \"o\"\nGetVariable\nPush "
       "\"go\"\nCallMethod\nPop\n",
       "Y"},
      {"behind a condition", "Push 0 \"tuner\"\nGetVariable\nPush \"Y\"\nCallMethod\nNot\nIf end\nStop\nend:\n", "Y"},
      {"caught",
       "try {\nPush \"tuner\"\nGetVariable\nThrow\n} catch e {\nPush 0 \"e\"\nGetVariable\nPush \"Y\"\nCallMethod\n}\n",
       "Y"},
      {"a name that is put together", "Push 0 \"tuner\"\nGetVariable\nPush \"Get\" \"It\"\nAdd2\nCallMethod\n",
       "GetIt"},
      {"an address", "GetURL \"javascript:tuner.Y()\" \"\"\n", "Y"},
      {"an address that is put together", "Push \"javascript:tuner.\" \"Y()\"\nStringAdd\nPush \"_self\"\nGetURL2 0\n",
       "Y"},
      {"the page's function",
       "Push \"Z\" \"onPage\" 2 \"flash\"\nGetVariable\nPush \"external\"\nGetMember\nPush \"ExternalInterface\"\n"
       "GetMember\nPush \"call\"\nCallMethod\nPop\n",
       "Z"},
      {"code behind an odd jump", "Jump 3\nbytes 96 00 40\n" + kCall, "X"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(foundIn(assemble("doaction {\n" + row.actions + "}\nshowframe\nend\n")), row.expected)
        << row.what << '\n'
        << readFlash(assemble("doaction {\n" + row.actions + "}\nend\n")).script;
}

std::string lzmaOf(std::string plain) {
  lzma_options_lzma options;
  (void)lzma_lzma_preset(&options, 6);
  lzma_stream stream = LZMA_STREAM_INIT;
  EXPECT_EQ(lzma_alone_encoder(&stream, &options), LZMA_OK);
  std::string coded(plain.size() + 1000, '\0');
  stream.next_in = reinterpret_cast<const std::uint8_t*>(plain.data()) + 8;
  stream.avail_in = plain.size() - 8;
  stream.next_out = reinterpret_cast<std::uint8_t*>(coded.data());
  stream.avail_out = coded.size();
  EXPECT_EQ(lzma_code(&stream, LZMA_FINISH), LZMA_STREAM_END);
  coded.resize(coded.size() - stream.avail_out);
  lzma_end(&stream);
  plain[0] = 'Z';
  return plain.substr(0, 8) + std::string(4, '\0') + coded.substr(0, 5) + coded.substr(13);
}

TEST(FlashMovie, GoesIntoAllThatRunsActions) {
  const std::string actions = "{\n" + kCall + "}\n";
  const std::string movie = "doaction " + actions + "end\n";
  const std::vector<std::string> movies = {
      assemble("signature CWS\n" + movie),
      lzmaOf(assemble(movie)),
      assemble("sprite 77 1 {\nshowframe\ndoaction " + actions + "end\n}\nend\n"),
      assemble("tag 59 bytes 46 00 " + actions + "end\n"),
      assemble("tag 7 bytes 01 00 01 02 00 01 00 00 00 " + actions + "end\n"),
      assemble("tag 34 bytes 01 00 00 0a 00 01 02 00 01 00 00 00 00 00 00 01 00 " + actions + "end\n"),
      // On the stage at a depth, without anything else, for one event whose actions are 27 bytes long.
      assemble("tag 26 bytes 80 01 00 00 00 01 00 00 00 01 00 00 00 1b 00 00 00 " + actions + "end\n"),
  };
  for (std::size_t i = 0; i < movies.size(); ++i)
    EXPECT_EQ(foundIn(movies[i]), "X") << i << '\n' << readFlash(movies[i]).script;
}

TEST(FlashMovie, IsReadAsFarAsItGoes) {
  const std::string whole = assemble("doaction {\n" + kCall + "}\nshowframe\nend\n");
  for (std::size_t size = 0; size < whole.size(); ++size)
    (void)readFlash(whole.substr(0, size));
  EXPECT_EQ(foundIn(assemble("doaction length 4000 {\n" + kCall + "}\n")), "X");
  // An expression that doubles itself, and more script than is kept.
  std::string doubling = "Push \"a\"\nGetVariable\n";
  for (int i = 0; i < 200; ++i)
    doubling += "PushDuplicate\nAdd2\n";
  EXPECT_LT(readFlash(assemble("doaction {\n" + doubling + "}\nend\n")).script.size(), 50'000U);
  std::string much = "again:\n";
  for (int i = 0; i < 3000; ++i)
    much += "Push \"" + std::string(1000, 'a') + "\"\nPush \"b\"\nSetVariable\n";
  EXPECT_TRUE(readFlash(assemble("doaction {\n" + much + "}\nend\n")).closed.empty());
  EXPECT_FALSE(readFlash(whole).closed.empty());
}

TEST(FlashMovie, HintsAtWhatVersionThreeNames) {
  // Versions, no numbers, and four strings.
  const std::string pool = "10 00 2e 00 00 00 00 06 03 61 62 63 ";
  const auto text = [](const std::string& string) {
    std::string bytes;
    for (const char c : static_cast<char>(string.size()) + string) {
      static const char* const kDigits = "0123456789abcdef";
      bytes += kDigits[static_cast<unsigned char>(c) >> 4];
      bytes += kDigits[static_cast<unsigned char>(c) & 15];
      bytes += ' ';
    }
    return bytes;
  };
  const std::string movie = assemble("tag 82 long bytes 01 00 00 00 00 " + pool + text("GetVersion") +
                                     text("GetSerial") + text("javascript:tuner.Y()") + text("MovieClip") + "\nend\n");
  EXPECT_EQ(foundIn(movie), "Y");
  const FlashHints hints(database().identifiers, database().methods);
  std::vector<std::string> named;
  for (const Undetermined& hint : hints.in(readFlash(movie), "movie.swf"))
    named.push_back(hint.call.code);
  EXPECT_EQ(named, (std::vector<std::string>{"GetSerial", "GetVersion"}));
  const std::string other = assemble("tag 82 long bytes 01 00 00 00 00 " + pool + text("GetSerial") + "\nend\n");
  EXPECT_TRUE(hints.in(readFlash(other), "movie.swf").empty());
}

}  // namespace
