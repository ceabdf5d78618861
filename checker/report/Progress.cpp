// One line on the terminal, drawn again in place at most seven times a second, and cut to the terminal's width.
// Test: tests/checker/Progress_test.cpp.

#include "checker/report/Progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "checker/report/Characters.h"

namespace {

constexpr auto kQuietStart = std::chrono::seconds(1);
constexpr auto kPause = std::chrono::milliseconds(150);
constexpr const char* kClearLine = "\r\x1b[K";
constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kLeastName = 8;  // columns; a shorter one says nothing

void print(const std::string& text) {
  (void)!write(STDERR_FILENO, text.data(), text.size());
}

// Asked for each time, so that it follows the window.
std::size_t terminalWidth() {
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualWidth;
}

// Some characters are two columns wide. Those that are not ASCII count as such: none here is worth a table.
std::size_t columnsOf(const Character& character) {
  return character.code < 0x80 ? 1 : 2;
}

// The end of a path that fits, which tells applications apart better than its beginning.
std::string endOf(std::string_view path, std::size_t width) {
  constexpr std::string_view kCut = "...";
  std::size_t columns = 0;
  for (std::string_view rest = path; !rest.empty(); rest.remove_prefix(firstCharacter(rest).size))
    columns += columnsOf(firstCharacter(rest));
  if (columns <= width) return std::string(path);
  while (!path.empty() && columns + kCut.size() > width) {
    const Character first = firstCharacter(path);
    columns -= columnsOf(first);
    path.remove_prefix(first.size);
  }
  return std::string(kCut) + std::string(path);
}

std::string timeText(double seconds) {
  const auto whole = std::llround(seconds);
  char text[64];
  if (whole >= 3600) {
    (void)std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
  } else {
    (void)std::snprintf(text, sizeof text, "%lld:%02lld", whole / 60, whole % 60);
  }
  return text;
}

}  // namespace

bool isCapableTerminal(int descriptor) {
  const char* terminal = std::getenv("TERM");
  return isatty(descriptor) == 1 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::string progressLine(const RunState& state, double seconds, std::size_t width) {
  std::string line = std::to_string(state.done) + "/" + std::to_string(state.total);
  if (state.done > 0 && seconds > 0) {
    const double rate = static_cast<double>(state.done) / seconds;
    char text[64];
    (void)std::snprintf(text, sizeof text, "  %.1f/s  ", rate);
    line += text + timeText(static_cast<double>(state.total - state.done) / rate) + " left";
  }
  if (line.size() > width) return line.substr(0, width);
  if (line.size() + 2 + kLeastName <= width && !state.current.empty())
    line += "  " + endOf(printable(state.current), width - line.size() - 2);
  return line;
}

void Progress::show(const RunState& state) {
  const Clock::time_point now = Clock::now();
  if (!isShown_ || now - start_ < kQuietStart || now - lastShown_ < kPause) return;
  lastShown_ = now;
  isThere_ = true;
  // The last column stays free: some terminals begin a new line when it is written.
  print(kClearLine + progressLine(state, std::chrono::duration<double>(now - start_).count(), terminalWidth() - 1));
}

void Progress::clear() {
  if (!isThere_) return;
  isThere_ = false;
  lastShown_ = {};
  print(kClearLine);
}
