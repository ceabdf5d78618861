// Help and config files are made from the table of options. The table of the completions must say the same; what the
// manual page must say is compared with --help by tests/install/check-names.

#include "checker/options/OptionTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "checker/options/UserError.h"

namespace {

using Row = std::vector<std::string>;

// "tarvo-check/database/diff" for "database diff"; the check's is that of the program.
std::string pathOf(const CommandRow& command) {
  std::string path = std::string("tarvo-check/") + command.words;
  for (char& c : path) {
    if (c == ' ') c = '/';
  }
  return path;
}

// In the order of the table: the options of a command that are made elsewhere, then those of the table.
std::vector<Row> rowsOf(const std::string& path, Command command) {
  std::vector<Row> rows{{path, "-h,--help", "-", "print help and exit"}};
  if (command == Command::check) rows.push_back({path, "--version", "-", "print the version and exit"});
  for (const OptionRow& option : kOptions) {
    if (!takes(command, option)) continue;
    const std::string argument = option.argument;
    const std::string shown = argument.empty() ? "-" : argument.substr(0, argument.find('['));
    rows.push_back({path, std::string("--") + option.name, shown, option.text});
  }
  return rows;
}

std::vector<Row> expectedRows() {
  std::vector<Row> rows{{"tarvo-check", "+", "-", "find calls of undocumented platform APIs"}};
  const auto add = [&](const std::vector<Row>& more) { rows.insert(rows.end(), more.begin(), more.end()); };
  add(rowsOf("tarvo-check", Command::check));
  for (const CommandRow& command : kCommands) {
    const bool isCheck = command.command == Command::check;
    rows.push_back({pathOf(command), isCheck ? "=" : "+", "-", command.text});
    if (!isCheck) add(rowsOf(pathOf(command), command.command));
  }
  return rows;
}

TEST(OptionTable, CompletionsSayTheSame) {
  std::ifstream file(COMPLETIONS);
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream words(line);
    Row row(3);
    words >> row[0] >> row[1] >> row[2] >> std::ws;
    std::getline(words, row.emplace_back());
    rows.push_back(row);
  }
  const std::vector<Row> expected = expectedRows();
  for (std::size_t i = 0; i < std::max(rows.size(), expected.size()); ++i)
    EXPECT_EQ(i < rows.size() ? rows[i] : Row{}, i < expected.size() ? expected[i] : Row{});
}

TEST(OptionTable, TextsCanBeShownByShells) {
  for (const OptionRow& option : kOptions)
    EXPECT_EQ(std::string(option.text).find_first_of("'\"`[]():$\\"), std::string::npos) << option.text;
  for (const CommandRow& command : kCommands)
    EXPECT_EQ(std::string(command.text).find_first_of("'\"`[]():$\\"), std::string::npos) << command.text;
}

TEST(OptionTable, EveryValueReachesItsField) {
  Options options;
  for (const OptionRow& option : kOptions) {
    if (*option.argument == '\0') continue;
    const std::vector<std::string> choices = choicesOf(option);
    const std::string value = option.max > 0 ? "3" : choices.empty() ? "value" : choices.back();
    setOption(options, option, value);
    if (option.max == 0) continue;
    for (const char* wrong : {"", "abc", "0", "-1", "3x", "99999999999999999999999"})
      EXPECT_THROW(setOption(options, option, wrong), UserError) << option.name << ' ' << wrong;
    EXPECT_NO_THROW(setOption(options, option, std::to_string(option.max)));
    EXPECT_THROW(setOption(options, option, std::to_string(option.max + 1ULL)), UserError);
  }
  EXPECT_EQ(options.jobs, kMaxJobs);
  EXPECT_EQ(options.bounds.unpacked, 4096U);
  EXPECT_EQ(options.color, "never");
  EXPECT_EQ(options.acceptFiles, std::vector<std::string>{"value"});
  EXPECT_THROW(setOption(options, *optionNamed("color"), "blue"), UserError);
}

TEST(OptionTable, JobsWithoutAnApplicationAreShared) {
  const struct {
    unsigned jobs;
    std::size_t applications;
    unsigned threads;
  } rows[] = {{1, 1, 1}, {4, 1, 4}, {4, 0, 4}, {4, 2, 2}, {4, 3, 1}, {4, 500, 1}, {5, 2, 2}, {1024, 1, 16}};
  for (const auto& row : rows) {
    Options options;
    options.jobs = row.jobs;
    EXPECT_EQ(options.threadsFor(row.applications), row.threads) << row.jobs << " jobs, " << row.applications;
  }
}

}  // namespace
