// tarvo-check disassemble and decompile, and applications with Flash files.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "RunCommand.h"

namespace {

// The checker's answer to `command` about a movie of this text.
Output ask(const std::string& command, const std::string& movie) {
  const std::string path = testing::TempDir() + "tarvo-flash-test-" + std::to_string(getpid()) + ".swf";
  const Output made = runCommand("printf '%s' '" + movie + "' | " ASSEMBLER " - " + path + " 2>&1");
  EXPECT_EQ(made.status, 0) << made.text;
  Output answer = runCommand(CHECKER " " + command + " " + path + " 2>&1");
  std::remove(path.c_str());
  return answer;
}

const std::string kCall = "doaction {\nPush 0 \"a\\x80\" \"b\"\nCallMethod\n}\n";

TEST(FlashCommands, PrintListingAndStatements) {
  EXPECT_EQ(ask("decompile", kCall).text, "a\\x80.b()\n");
  EXPECT_NE(ask("disassemble", kCall).text.find("[ActionCallMethod]\n"), std::string::npos);
  const auto statements = nlohmann::json::parse(ask("decompile --json", kCall).text);
  EXPECT_EQ(statements["code"], 1000);
  EXPECT_EQ(statements["statements"], std::vector<std::string>{"a\xC2\x80.b()"});
  const auto lines = nlohmann::json::parse(ask("disassemble --json", kCall).text);
  EXPECT_EQ(lines["code"], 1000);
  EXPECT_EQ(lines["lines"][1], "[ActionPush]");
}

TEST(FlashCommands, SayWhyAFileCannotBeRead) {
  const Output notFlash = ask("disassemble", "signature ZWS\n");
  EXPECT_EQ(notFlash.status, 2);
  EXPECT_NE(notFlash.text.find("compressed with LZMA"), std::string::npos);
  const Output damaged = ask("decompile", "signature CWS\n" + kCall + "tag 9 bytes 00\ncut 9\n");
  EXPECT_EQ(damaged.status, 0);
  EXPECT_NE(damaged.text.find(".swf: its tags are damaged or cut short\n"), std::string::npos);
  EXPECT_EQ(runCommand(CHECKER " disassemble /no/such.swf 2>&1").status, 2);
}

TEST(FlashCommands, ApplicationsWithFlashAreJudged) {
  const std::string undocumented = EXAMPLES "/flash-undocumented.wgt";
  EXPECT_EQ(runCommand(CHECKER " --device " + undocumented).text,
            undocumented +
                "!/www/movie.swf: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER (Flash variable)\n" +
                undocumented + ": 1 use of undocumented APIs\nrules: engine\n");
  EXPECT_EQ(runCommand(CHECKER " " EXAMPLES "/flash-clean.wgt").status, 0);
}

}  // namespace
