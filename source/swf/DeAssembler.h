#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "swf/ByteReader.h"
#include "swf/ListedLine.h"
#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {

// Lists the script of one SWF file as text lines: every DoAction tag, also inside sprites, and every action record in
// it.
//
// The lines are all that the decompiler gets. A record is a name line, "[ActionPush]", and for records with operands
// field lines: the bare name, then "#@x441#" key "#@x442#" value pairs. "A position" of a record is its offset in the
// uncompressed file, whose first byte is that of the signature.
//
// The SWF's own counts and lengths are never trusted: what lies past the end reads as zero or is cut off, nested blocks
// are walked with a stack of our own, and the time budget and kMaxListingBytes end the work quietly.
class DeAssembler {
 public:
  DeAssembler();
  ~DeAssembler();

  // ---- reader: DeAssembler.cpp --------------------------------------------------------------------------------------

  // Appends the listing of the file at `path` to `lines`. RUN_SUCCESS, or one of the RUN_SWF_... codes or
  // RUN_TIME_LIMIT; what could be listed of a damaged file is in `lines` all the same.
  RunResult SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines);

  // The same with each line given to `taker` as it is made.
  RunResult listFile(const std::string& path, ListingTaker& taker);

  // The first three bytes; empty if there are fewer.
  std::string getSWFHeader(std::FILE* file);

  // Inflates a "CWS" file whose signature has been read to the image of a plain one. RUN_SUCCESS, or
  // RUN_SWF_UNCOMPRESS_FAILED with what came out of it in `image`.
  RunResult unCompressSWF(std::FILE* file, std::vector<unsigned char>& image);

  // Walks the header and the tags of a file image from its version byte on (the signature is not passed).
  RunResult SWFDeAssemble(const ByteView& data, std::vector<std::string>& lines);

  // Reads one tag header (SWF file format, RECORDHEADER).
  void TagHeaderParsing(const ByteView& data, Position& position, int* code, std::uint32_t* length);

  // Walks the tags nested in a sprite, whose body starts at `position`.
  void movieClipTagParse(const ByteView& data, Position& position, std::vector<std::string>& lines);

  // The name of a tag code, null if it has none. For diagnostics.
  const char* getTagStr(int code);

  // 1: the host is little-endian. Not consulted, the reader does not depend on it.
  int checkByteOrder();

  // A checkpoint that takes no time. For the host's profiler to break on.
  void CheckProcessingTime(std::string name);

  // Forgets what was learned of the last file.
  void resetMemberVariable();

  // Whether kMaxListingBytes cut the listing of the last file.
  bool isCut() const { return listingFull_; }

  // Calls `visit` with the place and the bytes of each script block that SWFDeAssemble lists of `data`, one behind the
  // other. Neither the time budget nor a bound ends it, and nothing is logged.
  using Visit = std::function<void(Position place, const ByteView& block)>;
  void visitScripts(const ByteView& data, const Visit& visit);

  // ---- listing: ActionListing.cpp -----------------------------------------------------------------------------------

  // Appends the listing of one script block, whose first byte has the position `base`.
  void getActionBlock(const ByteView& block, Position base, std::vector<std::string>& lines);

  // One action record inside a block.
  struct Record {
    int code;        // action code
    ByteView bytes;  // the block up to the end of the record's operands
    Position at;     // where the operands start in it
    Position base;   // position of the block's first byte
    int next;        // code of the record behind it in the same block, -1 if there is none

    Position end() const { return bytes.size(); }
  };

  // Appends a record's name line and field lines; of With and Try, those that stand before the nested block.
  void printActionRecord(const Record& record, std::vector<std::string>& lines);

 private:
  friend class RecordPrinter;

  bool stops() const;
  void addLine(ListingTaker& taker, const ListedLine& line);
  bool nextTag(const ByteView& data, Position& position, int* code, std::uint32_t* length);
  void skipTag(const ByteView& data, Position& position, std::uint32_t length);
  RunResult listTags(const ByteView& data, ListingTaker& taker);
  void listSprite(const ByteView& data, Position& position, ListingTaker& taker);
  void listScript(const ByteView& data, Position& position, std::uint32_t length, ListingTaker& taker);
  void listBlock(const ByteView& block, Position base, ListingTaker& taker);
  void listRecord(const Record& record, ListingTaker& taker);
  RunResult readImage(std::FILE* file, std::vector<unsigned char>& image);

  Util util_;
  std::set<std::uint32_t> branchTargets_;  // positions, kMaxBranchTargets at most
  std::size_t listedBytes_ = 0;
  bool listingFull_ = false;
  std::vector<std::string> constantPool_;
  bool poolSeen_ = false;
  const Visit* visit_ = nullptr;  // instead of a listing
};

// Whether a branch of a script block leads into the middle of a record, where a player runs what no listing shows.
bool branchesIntoRecord(const ByteView& block);

}  // namespace FlashEngine_1_00
