#pragma once

#include <string>
#include <variant>
#include <vector>

#include "checker/options/Options.h"

// The one table of commands and options. Command line, help, config files, completions and the manual page follow it: a
// new option is a row here. A test compares completions/options and docs/man/tarvo-check.1 with it.

constexpr unsigned kMaxJobs = 1024;

struct CommandRow {
  Command command;
  const char* words;  // as typed, "database diff"; the check's may be left out
  const char* text;   // what it does, without quotes, brackets and colons
};
extern const std::vector<CommandRow> kCommands;

// Where the value of an option goes; the type tells what a value is. A bool is a switch, without an argument.
using Field = std::variant<bool Options::*, unsigned Options::*, unsigned WorkerBounds::*, std::string Options::*,
                           std::vector<std::string> Options::*>;

struct OptionRow {
  const char* name;      // without dashes
  const char* argument;  // FILE is a path, "a|b" a choice; empty for a switch
  const char* group;     // heading in the help
  unsigned commands;     // the set of those that take it, see `takes`
  bool isInFiles;        // whether a config file can have it
  Field field;
  unsigned max;        // of a number, which is at least 1
  const char* text;    // what it does, without quotes, brackets and colons: a shell shows it
  const char* detail;  // goes on behind that in the help
};
extern const std::vector<OptionRow> kOptions;  // in the order of the help

// Whether `command` has the option.
bool takes(Command command, const OptionRow& option);

// The option of that name; null if there is none.
const OptionRow* optionNamed(const std::string& name);

// The choices of an argument like "auto|always|never"; none of another.
std::vector<std::string> choicesOf(const OptionRow& option);

// Sets an option that has an argument, or adds to a list. Throws UserError if the value is not one of its choices, or
// no number in its range.
void setOption(Options& options, const OptionRow& option, const std::string& value);
