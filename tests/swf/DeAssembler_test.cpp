#include "swf/DeAssembler.h"

#include <zlib.h>

#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/TimeBudget.h"
#include "support/EngineFixture.h"

using FlashEngine_1_00::ByteView;
using FlashEngine_1_00::DeAssembler;
using FlashEngine_1_00::Position;
using FlashEngine_1_00::Util;

namespace {

const std::string kStart = " ------------ ActionScript ASM Code From TAG_DOACTION Start ------------- \r";
const std::string kEnd = " ------------ ActionScript ASM Code From TAG_DOACTION End   ------------- \r";
const std::string kSpriteStart = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP Start ------------- \r";
const std::string kSpriteEnd = " ------------ ActionScript ASM Code From TAG_DEFINEMOVIECLIP End   ------------- \r";

// SWF file format, header: signature, version, file length, a frame of no bits, rate, count; then `tags`.
std::string plain(const std::string& tags) {
  return std::string("FWS\6\0\0\0\0\0\0\14\1\0", 13) + tags;
}

std::string compressed(const std::string& swf) {
  uLongf size = compressBound(swf.size());
  std::string body(size, '\0');
  compress(reinterpret_cast<Bytef*>(body.data()), &size, reinterpret_cast<const Bytef*>(swf.data()) + 8,
           swf.size() - 8);
  return "CWS" + swf.substr(3, 5) + body.substr(0, size);
}

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values)
    text += static_cast<char>(value);
  return text;
}

class Reader : public EngineTest {
 protected:
  // Reads a file of these bytes; its listing goes to lines_.
  RunResult read(const std::string& swf) {
    FlashEngine_1_00::startTimeBudget();
    lines_.clear();
    return DeAssembler().SWFDeAssemblerMain(addFile("movie.swf", swf), lines_);
  }

  Texts lines_;
  const std::string kStop = bytes({0x01, 0x03, 0x07});  // a DoAction tag of one byte, ActionStop
  const Texts kStopLines = {kStart, "[ActionStop]", kEnd};
};

TEST_F(Reader, ReadsPlainAndCompressedFiles) {
  for (const std::string& swf : {plain(kStop), compressed(plain(kStop))}) {
    EXPECT_EQ(read(swf), RUN_SUCCESS);
    EXPECT_EQ(lines_, kStopLines);
  }
  EXPECT_EQ(log("swfHeader"), (Texts{"SWFDeAssemblerMain: [SWFDeAssemblerMain] [swfHeader] [FWS]",
                                     "SWFDeAssemblerMain: [SWFDeAssemblerMain] [swfHeader] [CWS]"}));
}

TEST_F(Reader, SaysWhatItCannotRead) {
  std::string damaged = compressed(plain(std::string(3000, '\x43')));
  damaged[20] = static_cast<char>(damaged[20] ^ 0x55);
  for (const auto& [swf, code] :
       std::vector<std::pair<std::string, RunResult>>{{"", RUN_SWF_BAD_SIGNATURE},
                                                      {"FW", RUN_SWF_BAD_SIGNATURE},
                                                      {"ZWS\xD", RUN_SWF_BAD_SIGNATURE},
                                                      {"FWS", RUN_SUCCESS},
                                                      {"FWS\6\0\0\0", RUN_SUCCESS},
                                                      {"CWS", RUN_SUCCESS},
                                                      {"CWS\6\1\1\1\1x", RUN_SUCCESS},
                                                      {"CWS\6\1\1\1\1no zlib", RUN_SWF_UNCOMPRESS_FAILED},
                                                      {damaged, RUN_SWF_UNCOMPRESS_FAILED}}) {
    EXPECT_EQ(read(swf), code) << swf;
  }
  Texts lines;
  EXPECT_EQ(DeAssembler().SWFDeAssemblerMain(directory() + "/missing.swf", lines), RUN_SWF_OPEN_FAILED);
  EXPECT_EQ(DeAssembler().SWFDeAssemblerMain(directory(), lines), RUN_SWF_BAD_SIGNATURE);
}

TEST_F(Reader, ListsWhatIsThereOfADamagedStream) {
  std::string wrongSum = compressed(plain(kStop));
  wrongSum.back() = static_cast<char>(wrongSum.back() ^ 1);
  EXPECT_EQ(read(wrongSum), RUN_SWF_UNCOMPRESS_FAILED);
  EXPECT_EQ(lines_, kStopLines);
  std::string noise;  // that compresses to about its size
  for (unsigned i = 0, x = 1; i < 3000; ++i)
    noise += static_cast<char>((x = x * 1664525U + 1013904223U) >> 24);
  const std::string cut = compressed(plain(kStop + bytes({0x7F, 0x10, 0xB8, 0x0B, 0, 0}) + noise));
  EXPECT_EQ(read(cut.substr(0, cut.size() / 2)), RUN_SUCCESS);  // it ends without an error of its own
  EXPECT_EQ(lines_, kStopLines);
}

// zlib keeps output back where ours is full, also at the end of the file.
TEST_F(Reader, ACutStreamGivesAllThatOneLargeBufferWouldGet) {
  const std::size_t chunk = FlashEngine_1_00::kSwfChunk;
  for (const std::size_t size : {chunk - 1, chunk, chunk + 9, chunk + 300, 2 * chunk + 40}) {
    const std::string swf = compressed(std::string(8 + size, '\0'));
    for (std::size_t cut = 0; cut < 12; ++cut) {
      std::string whole(3 * chunk, '\0');
      z_stream stream{};
      inflateInit(&stream);
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(swf.data())) + 8;
      stream.avail_in = static_cast<uInt>(swf.size() - 8 - cut);
      stream.next_out = reinterpret_cast<Bytef*>(whole.data());
      stream.avail_out = static_cast<uInt>(whole.size());
      inflate(&stream, Z_SYNC_FLUSH);
      inflateEnd(&stream);
      const FlashEngine_1_00::File file =
          FlashEngine_1_00::openFile(addFile("movie.swf", swf.substr(0, swf.size() - cut)), "rb");
      std::fseek(file.get(), 3, SEEK_SET);
      std::vector<unsigned char> image;
      EXPECT_EQ(DeAssembler().unCompressSWF(file.get(), image), RUN_SUCCESS);
      EXPECT_EQ(image.size(), 8 + stream.total_out) << size << " bytes, cut by " << cut;
    }
  }
}

TEST_F(Reader, WalksTags) {
  const std::string longStop = bytes({0x3F, 0x03, 1, 0, 0, 0, 0x07});
  struct Row {
    const char* what;
    std::string tags;
    Texts lines;
  };
  for (const Row& row : std::vector<Row>{
           {"a tag that is skipped", bytes({0x42, 0x02, 1, 2}) + kStop, kStopLines},
           {"a long header", longStop, kStopLines},
           {"the end tag", bytes({0, 0}) + kStop, {}},
           {"a code above 91", bytes({0x00, 0x17}) + kStop, {}},
           {"an empty script", bytes({0x00, 0x03}) + kStop, kStopLines},
           {"a script that is too long", bytes({0x3F, 0x03, 0x80, 0x96, 0x98, 0x00}) + kStop, kStopLines},
           {"a script past the end", bytes({0x0A, 0x03, 0x07, 0x06}), {kStart, "[ActionStop]", "[ActionPlay]", kEnd}},
           {"half a header", kStop + bytes({0x01}), kStopLines},
           {"a length near 2^32", kStop + bytes({0x7F, 0x02, 0xFA, 0xFF, 0xFF, 0xFF}) + kStop, kStopLines},
       }) {
    clearLog();
    EXPECT_EQ(read(plain(row.tags)), RUN_SUCCESS);
    EXPECT_EQ(lines_, row.lines) << row.what;
    const bool pastTheEnd = row.what == std::string("a length near 2^32");
    EXPECT_EQ(log("Unexpected").size(), pastTheEnd ? 1U : 0U) << row.what;
  }
  read(plain(bytes({0x42, 0x02, 1, 2})));
  EXPECT_EQ(log("Unexpected"), (Texts{"skipTagLengh: [skipTagLengh] Unexpected end of Data  ",
                                      "skipTagLengh: [skipTagLengh] Unexpected end of Data  "}));
}

TEST_F(Reader, SpriteIdIsReadAsTag) {
  const std::string sprite = bytes({0xCB, 0x09});  // DefineSprite, 11 bytes
  // An id of 3 is a tag header of code 0: the nested walk ends at once, and the frame count of 1 is the next tag.
  EXPECT_EQ(read(plain(sprite + bytes({3, 0, 1, 0}) + kStop + bytes({0, 0}) + kStop)), RUN_SUCCESS);
  EXPECT_EQ(lines_, (Texts{kSpriteStart, kSpriteEnd}));
  // An id of 0x42 is a tag of code 1 and two bytes, the frame count; the script is listed without banners.
  EXPECT_EQ(read(plain(sprite + bytes({0x42, 0, 1, 0}) + kStop + bytes({0, 0}) + kStop)), RUN_SUCCESS);
  EXPECT_EQ(lines_, (Texts{kSpriteStart, "[ActionStop]", kSpriteEnd, kStart, "[ActionStop]", kEnd}));
}

timespec late() {
  return {firstCheckTime.tv_sec + 21, firstCheckTime.tv_nsec};
}

TEST_F(Reader, ASpentBudgetEndsEveryLoopQuietly) {
  FlashEngine_1_00::startTimeBudget();
  FlashEngine_1_00::TESTING_ONLY_setClock(late);
  Texts lines;
  EXPECT_EQ(DeAssembler().SWFDeAssemblerMain(addFile("movie.swf", plain(kStop)), lines), RUN_TIME_LIMIT);
  const std::string data = plain(kStop).substr(3);
  const ByteView view(reinterpret_cast<const unsigned char*>(data.data()), static_cast<Position>(data.size()));
  DeAssembler listing;
  EXPECT_EQ(listing.SWFDeAssemble(view, lines), RUN_SUCCESS);
  listing.getActionBlock(view, 0, lines);
  Position position = 10;
  listing.movieClipTagParse(view, position, lines);
  EXPECT_EQ(position, 10);
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
  EXPECT_TRUE(lines.empty());
}

TEST(ByteReader, ReadsZeroesOutsideItsData) {
  const unsigned char data[] = {0xA5, 0x0F};
  const ByteView view(data, 2);
  Util util;
  Position position = 1;
  EXPECT_EQ(util.getDoubleWord(view, position), 0x0FU);
  EXPECT_EQ(position, 5);
  position = 1;
  unsigned current = data[0];
  int left = 8;
  EXPECT_EQ(util.getBitsValue(left, current, view, position, 3), 5U);
  EXPECT_EQ(util.getBitsValue(left, current, view, position, 9), 0x50U);  // 0 0101 0000
  EXPECT_EQ(position, 2);
  EXPECT_EQ(util.getBitsValue(left, current, view, position, 20), 0U);  // 1111 and zeroes, the low 16 bits
  EXPECT_EQ(view.slice(-5, 3).size(), 2);
  EXPECT_EQ(view.slice(9, 3).size(), 0);
}

TEST(TagNames, AreKnownForTheirCodesOnly) {
  DeAssembler listing;
  EXPECT_STREQ(listing.getTagStr(0), "TAG_END");
  EXPECT_STREQ(listing.getTagStr(1023), "TAG_DEFINEBITSPTR");
  EXPECT_EQ(listing.getTagStr(27), nullptr);
  EXPECT_EQ(listing.checkByteOrder(), 1);
}

}  // namespace
