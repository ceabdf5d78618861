// The same packages on the disk and in memory: the same files, log lines, codes and gaps. Order is the package's.

#include "checker/run/MemoryPlace.h"

#include <algorithm>
#include <random>

#include "support/CraftedZip.h"
#include "support/EngineFixture.h"
#include "unzip/unzip_job.h"

using FlashEngine_1_00::currentPlace;
using FlashEngine_1_00::File;
using FlashEngine_1_00::openInput;

namespace {

std::string contentOf(const std::string& path) {
  const File file = openInput(path);
  std::string bytes(static_cast<std::size_t>(FlashEngine_1_00::sizeOf(file.get())), '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return bytes;
}

class MemoryPlaceTest : public EngineTest {
 protected:
  struct Expanded {
    Texts files;  // "path=content", in the order found
    Texts log;
    Texts gaps;
  };

  // A run's expansion of one package by an engine of its own, on the disk or in `place`.
  Expanded expand(const std::string& bytes, MemoryPlace* place) {
    const std::string package = addFile("app.wgt", bytes);
    setPlace(place);
    GapList gaps;
    APIAnalysis engine;
    engine.observer = &gaps;
    engine.expansionBounds = {300'000, 40, 20};
    clearLog();
    engine.addFilePathbyUnzipping({package});
    Expanded all{{}, log(), gaps.texts};
    for (const std::string& path : engine.extractedFileList)
      all.files.push_back(path.substr(directory().size()) + '=' + contentOf(path));
    for (const std::string& path : engine.extractedDirList)
      currentPlace().remove(path);
    engine.observer = nullptr;
    setPlace(nullptr);
    return all;
  }

  // On the disk, and in memory with one thread and with several.
  void expectSame(const std::string& bytes) {
    Expanded disk = expand(bytes, nullptr);
    std::sort(disk.files.begin(), disk.files.end());
    for (const std::size_t lanes : {1U, 3U}) {
      MemoryPlace place([](const std::string&) { return true; }, lanes);
      Expanded memory = expand(bytes, &place);
      std::sort(memory.files.begin(), memory.files.end());
      EXPECT_EQ(memory.files, disk.files) << lanes;
      EXPECT_EQ(memory.log, disk.log) << lanes;
      EXPECT_EQ(memory.gaps, disk.gaps) << lanes;
    }
  }
};

class RandomPackages {
 public:
  explicit RandomPackages(unsigned seed) : random_(seed) {}

  std::string next() {
    hasInner_ = false;  // one: whose turn is first among several is up to the disk
    std::vector<CraftedEntry> entries;
    for (unsigned count = 1 + below(6); count > 0; --count)
      entries.push_back(entry());
    std::string bytes = below(8) == 0 ? craftedZip(entries, below(8)) : craftedZip(entries);
    if (below(5) == 0) bytes[below(static_cast<unsigned>(bytes.size()))] = static_cast<char>(below(256));
    if (below(20) == 0) bytes.resize(below(static_cast<unsigned>(bytes.size())));
    return bytes;
  }

 private:
  unsigned below(unsigned count) { return static_cast<unsigned>(random_() % count); }

  std::string name() {
    static const char* const kParts[] = {"a", "b", "a.js", "b.js", "d", ".", "", "..", "x.swf", "a\\b", "Z"};
    std::string name;
    for (unsigned count = 1 + below(3); count > 0; --count)
      name += std::string(name.empty() ? "" : "/") + kParts[below(count == 1 || below(6) == 0 ? 11 : 5)];
    return name + (below(6) == 0 ? "/" : "");
  }

  std::string content() {
    std::string text(below(4) == 0 ? below(150'000) : below(40), 'x');
    for (std::size_t i = 0; i < text.size(); i += 1 + below(9))
      text[i] = static_cast<char>(below(256));
    if (hasInner_ || below(12) != 0) return text;
    hasInner_ = true;
    return craftedZip({{name(), "inside", below(2) == 0}});
  }

  CraftedEntry entry() {
    CraftedEntry entry{name(), content(), below(2) == 0};
    const auto size = static_cast<unsigned>(entry.content.size());
    if (below(20) == 0) entry.crc = below(1000);
    if (below(12) == 0) entry.size = below(2) == 0 ? below(size + 2) : size + below(20'000);
    if (below(20) == 0) entry.packedSize = below(size + 20);
    if (below(30) == 0) entry.localName = name();
    if (below(30) == 0) entry.flags = 1;
    if (below(15) == 0) entry.extra = {'\x99', '\x99', static_cast<char>(below(256)), static_cast<char>(below(256))};
    return entry;
  }

  std::mt19937 random_;
  bool hasInner_ = false;
};

TEST_F(MemoryPlaceTest, PackagesComeOutAsOnTheDisk) {
  RandomPackages packages(14);
  for (int i = 0; i < 100 && !HasFailure(); ++i) {
    SCOPED_TRACE(i);
    expectSame(packages.next());
  }
}

TEST_F(MemoryPlaceTest, FilesStandInTheOrderOfTheirPackage) {
  MemoryPlace place(nullptr);
  const std::string package = craftedZip({{"z.js", "1"}, {"d/b", "2"}, {"a.js", "3"}, {"d/a", "4"}, {"z.js", "5"}});
  EXPECT_EQ(expand(package, &place).files, (Texts{"/0/d/b=2", "/0/a.js=3", "/0/d/a=4", "/0/z.js=5"}));
}

// Of large files, what somebody reads.
TEST_F(MemoryPlaceTest, FilesAreKeptAsFarAsTheyAreRead) {
  constexpr std::size_t kLarge = std::size_t{18} << 20;
  constexpr std::size_t kMost = (std::size_t{16} << 20) + 1;
  const std::string text(kLarge, 't');
  std::string withZeroLate = text;
  withZeroLate[kLarge - 9] = '\0';
  std::string withZero = text;
  withZero[5] = '\0';
  const std::string movie = "FWS" + text.substr(3);
  const std::string package = craftedZip({{"inside.js", text}}) + std::string(kLarge, 'p');
  const struct {
    const char* name;
    const std::string& content;
    std::size_t kept;
    std::size_t keptIfWanted;
  } rows[] = {
      {"a.js", text, kLarge, kLarge},
      {"a.swf", movie, kLarge, kLarge},
      {"none.swf", text, std::size_t{64} << 10, kMost},
      {"a.png", text, std::size_t{64} << 10, kMost},
      {"late.js", withZeroLate, kLarge - 8, kLarge - 8},
      {"zero.js", withZero, std::size_t{64} << 10, kMost},
      {"package.png", package, package.size(), package.size()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (const bool isWanted : {false, true}) {
      MemoryPlace place([&](const std::string&) { return isWanted; });
      setPlace(&place);
      FlashEngine_1_00::ExpansionBudget budget;
      bool replaced = false;
      (void)place.makeExtractionDirectory("/r/0");
      (void)place.enterDirectory("/r/0");
      const auto sink = place.createFile(row.name, budget, replaced);
      for (std::size_t at = 0; at < row.content.size(); at += 8192)
        EXPECT_TRUE(sink->write(row.content.data() + at, std::min<std::size_t>(8192, row.content.size() - at)));
      EXPECT_TRUE(sink->finish());
      const std::string kept = contentOf(std::string("/r/0/") + row.name);
      EXPECT_EQ(kept.size(), isWanted ? row.keptIfWanted : row.kept);
      EXPECT_TRUE(row.content.compare(0, kept.size(), kept) == 0);
      setPlace(nullptr);
    }
  }
}

}  // namespace
