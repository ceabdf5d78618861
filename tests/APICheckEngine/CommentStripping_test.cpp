#include "APICheckEngine/CommentStripping.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Into a buffer of exactly the input's size, so that the address sanitizer sees a byte too many.
std::string apply(int (*strip)(const char*, int, char*), const std::string& text) {
  std::vector<char> in(text.begin(), text.end());
  std::vector<char> out(text.size());
  const int length = strip(in.data(), static_cast<int>(in.size()), out.data());
  return std::string(out.data(), static_cast<std::size_t>(length));
}

struct Row {
  std::string text, expected;
};

TEST(CommentStripping, RemovesCommentsByBytes) {
  const std::string zero(1, '\0');
  for (const Row& row : std::vector<Row>{
           {"a/* x */b", "ab"},
           {"a // x\nb", "a \nb"},
           {"var s = \"a//b\"; t();\nu();", "var s = \"a\nu();"},
           {"a/b/c/", "a/b/c/"},
           {"/", "/"},
           {"a/*/b*/c", "ac"},
           {"a/***/b", "ab"},
           {"/*\n\n*/x", "x"},
           {"//\n//\nx", "\n\nx"},
           {"a/* never", "a" + zero},
           {"a/*", "a" + zero},
           {"a//", "a" + zero},
           {"a/* x */", "a" + zero},
           {"a/* x */" + zero, "a" + zero},
           {"a// x" + zero, "a" + zero},
           {"", ""},
       }) {
    EXPECT_EQ(apply(delete_comment, row.text), row.expected) << row.text;
  }
}

TEST(CommentStripping, CommentRightBehindACommentStays) {
  EXPECT_EQ(apply(delete_comment, "a/* x *//* y */b"), "a/* y */b");
  EXPECT_EQ(apply(delete_comment, "a/* x *///y\nb"), "a//y\nb");
}

TEST(CommentStripping, RemovesBlankLines) {
  const std::string longLine(5000, 'x');
  for (const Row& row : std::vector<Row>{
           {"a\n \t\n\n\nb\n", "a\n\nb\n"},
           {"\n\na\n", "\na\n"},
           {"a\n\n  b", "a\n  b"},
           {"a\n\n", "a\n"},
           {"  ", "  "},
           {longLine + "\n" + longLine, longLine + "\n" + longLine},
           {"", ""},
       }) {
    EXPECT_EQ(apply(delete_blankline, row.text), row.expected) << row.text;
  }
}

}  // namespace
