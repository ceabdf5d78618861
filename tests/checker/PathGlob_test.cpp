// Which paths a glob means.

#include "checker/options/PathGlob.h"

#include <gtest/gtest.h>

#include <ctime>

#include "checker/options/UserError.h"

namespace {

bool matches(const std::string& glob, const std::string& path) {
  return PathGlob(glob).matches(PathGlob::partsOf(path));
}

TEST(PathGlob, StandsForNamesAnywhereOrForPathsFromTheRoot) {
  struct Row {
    std::string glob;
    std::vector<std::string> meant, others;
  };
  for (const Row& row : std::vector<Row>{
           {"node_modules",
            {"node_modules", "node_modules/a.js", "www/node_modules/x/a.js", "./www//node_modules/"},
            {"node_modules2/a.js", "www/Node_modules", "", "."}},
           {"**/node_modules/**", {"node_modules/a.js", "www/node_modules/x/a.js"}, {"www/a.js"}},
           {"*.min.js", {"a.min.js", "www/.min.js", "x.min.js/a.js"}, {"a.min.jsx", "min.js"}},
           {"/a.js", {"a.js", "a.js/b"}, {"www/a.js"}},
           {"./a.js", {"a.js"}, {"www/a.js"}},
           {"www/*.js", {"www/a.js", "./www/a.js"}, {"www/js/a.js", "x/www/a.js"}},
           {"www/lib/", {"www/lib", "www/lib/a/b"}, {"www/library", "www"}},
           {"**/lib/*.js", {"lib/a.js", "x/y/lib/a.js"}, {"lib/x/a.js", "a.js"}},
           {"**", {"a", "a/b"}, {""}},
           {"?[ab]", {"xa", "d/xb"}, {"xc", "/a"}},
           {"\\[a\\]\\*", {"[a]*"}, {"a*", "[a]b"}},
           {"[", {"["}, {"a"}},
           {"\xFF?", {"\xFF\xFE"}, {"\xFE\xFF"}},
       }) {
    for (const std::string& path : row.meant)
      EXPECT_TRUE(matches(row.glob, path)) << row.glob << ' ' << path;
    for (const std::string& path : row.others)
      EXPECT_FALSE(matches(row.glob, path)) << row.glob << ' ' << path;
  }
  for (const std::string& glob : {std::string(), std::string("/"), std::string("./"), std::string("a/**/b"),
                                  std::string("**/a/**/b"), std::string("a\0b", 3)})
    EXPECT_THROW((void)matches(glob, "a"), UserError) << glob;
}

// Names are the application's: none may make a pattern of the user's a long search.
TEST(PathGlob, ALongNameTakesNoTime) {
  const std::clock_t start = std::clock();
  EXPECT_FALSE(matches("*a*a*a*a*a*a*a*a*b", std::string(4000, 'a')));
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 2);
}

}  // namespace
