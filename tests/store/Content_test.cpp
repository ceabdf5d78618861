#include "store/Content.h"

#include <fstream>

#include "StoreFixture.h"

namespace fs = std::filesystem;

namespace store {
namespace {

void put(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST_F(StoreTest, AFileIsHashedAsItStands) {
  put(file("abc.wgt"), "abc");
  const auto content = contentOf(file("abc.wgt"));
  ASSERT_TRUE(content);
  EXPECT_EQ(hexOf(content->sha256), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(content->size, 3U);
  EXPECT_EQ(content->suffix, ".wgt");
  EXPECT_EQ(bytesOfHex(hexOf(content->sha256)), content->sha256);
  EXPECT_EQ(bytesOfHex("0g"), "");
  EXPECT_FALSE(contentOf(file("none")));
  EXPECT_FALSE(contentOf("/dev/null"));
}

TEST_F(StoreTest, AFolderIsWhatItsFilesAre) {
  const auto hashOf = [&](const std::string& name) { return contentOf(file(name))->sha256; };
  for (const char* folder : {"one", "two", "moved", "split"})
    fs::create_directories(file(folder) + "/js");
  for (const char* folder : {"one", "two"}) {
    put(file(folder) + "/js/a.js", "abc");
    put(file(folder) + "/b.js", "def");
  }
  put(file("moved/a.js"), "abc");
  put(file("moved/b.js"), "def");
  put(file("split/js/a.js"), "ab");
  put(file("split/b.js"), "cdef");
  EXPECT_EQ(hashOf("one"), hashOf("two"));
  EXPECT_NE(hashOf("one"), hashOf("moved"));
  EXPECT_NE(hashOf("one"), hashOf("split"));
  EXPECT_EQ(contentOf(file("one"))->size, 6U);
  EXPECT_EQ(contentOf(file("one"))->suffix, "/");
}

TEST_F(StoreTest, AFileThatWasWrittenMeanwhileIsSeen) {
  put(file("a.wgt"), "abc");
  const auto before = contentOf(file("a.wgt"));
  EXPECT_TRUE(*before == *contentOf(file("a.wgt")));
  put(file("a.wgt"), "abd");
  EXPECT_TRUE(*before != *contentOf(file("a.wgt")));
  put(file("new"), "abc");  // and back again, as another file
  fs::rename(file("new"), file("a.wgt"));
  EXPECT_TRUE(*before != *contentOf(file("a.wgt")));
  EXPECT_EQ(before->sha256, contentOf(file("a.wgt"))->sha256);
}

}  // namespace
}  // namespace store
