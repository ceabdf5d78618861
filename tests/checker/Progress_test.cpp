// How far a run is: the line, and where it is shown.

#include "checker/report/Progress.h"

#include <pty.h>
#include <unistd.h>

#include "CheckerFixture.h"

namespace {

TEST(ProgressLine, IsCutToTheWidth) {
  const RunState half{50, 100, "packages/an-application.wgt"};
  struct Row {
    RunState state;
    double seconds;
    std::size_t width;
    std::string line;
  };
  for (const Row& row : std::vector<Row>{
           {half, 20, 79, "50/100  2.5/s  0:20 left  packages/an-application.wgt"},
           {half, 20'000, 79, "50/100  0.0/s  5:33:20 left  packages/an-application.wgt"},
           {half, 20, 40, "50/100  2.5/s  0:20 left  ...ication.wgt"},
           {half, 20, 33, "50/100  2.5/s  0:20 left"},
           {half, 20, 8, "50/100  "},
           {{0, 2, "\x1b[31m.wgt"}, 2, 79, "0/2  \\x1b[31m.wgt"},
           {{0, 2, "\xE9\x9B\xBB\xE8\xA6\x96\xE9\x9B\xBB\xE8\xA6\x96.js"}, 2, 14, "0/2  ...\xE8\xA6\x96.js"},
           {{0, 2, "a.js"}, 2, 79, "0/2  a.js"},
           {{0, 2, "\x9B.js"}, 2, 79, "0/2  \\x9b.js"},
       }) {
    EXPECT_EQ(progressLine(row.state, row.seconds, row.width), row.line);
  }
}

class OnATerminal : public Checker {
 protected:
  // What a terminal of 40 columns shows of a checker whose standard error it is.
  static std::string shown(const std::string& arguments) {
    int terminal = -1;
    const winsize size{10, 40, 0, 0};
    const pid_t process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0) {
      setenv("TERM", "xterm", 1);
      execl("/bin/sh", "sh", "-c", (CHECKER " " + arguments).c_str(), nullptr);
      _exit(127);
    }
    std::string text;
    char buffer[4096];
    for (ssize_t n; (n = read(terminal, buffer, sizeof buffer)) > 0;)
      text.append(buffer, static_cast<std::size_t>(n));
    close(terminal);
    waitpid(process, nullptr, 0);
    return text;
  }
};

TEST_F(OnATerminal, LongRunsShowHowFarTheyAre) {
  for (const char* name : {"clean.js", "fault-hang.js"})
    write(name, "");
  const std::string run = "--timeout 2 --jobs 1 clean.js fault-hang.js";
  const std::string text = shown(run + " >out");
  EXPECT_NE(text.find("\r\x1b[K1/2  "), std::string::npos) << text;
  EXPECT_NE(text.find("left  fault-hang.js"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.rfind('\r')), "\r\x1b[K") << "nothing of it stays";
  for (const std::string& hidden :
       {"--quiet " + run, "--no-progress " + run + " >out", run + " >out 2>err", std::string("clean.js >out")}) {
    EXPECT_EQ(shown(hidden), "") << hidden;
  }
  EXPECT_EQ(runCommand("cat err").text, "");
}

}  // namespace
