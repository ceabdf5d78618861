#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "checker/report/Report.h"

// What a report shows of the lines around a call. Lines and columns of the report count from 1; here, lines count from
// 0, and what is shown of each is cut between characters of UTF-8.

constexpr std::size_t kMaxExcerpt = 160;  // bytes of a line that are shown

// The lines of a text, which must outlive it. A line ends with a line feed, which is no part of it, nor is a carriage
// return before that.
class Lines {
 public:
  explicit Lines(std::string_view text);

  std::size_t count() const { return starts_.size(); }
  std::size_t lineOf(std::size_t offset) const;
  std::size_t startOf(std::size_t line) const { return starts_[line]; }
  std::string_view textOf(std::size_t line) const;

 private:
  std::string_view text_;
  std::vector<std::size_t> starts_{0};
};

// The part of a text from about `from`.
std::string_view shownPart(std::string_view text, std::size_t from);

// Sets the excerpt's text and mark of the call that stands at [begin, end) of `line`.
void takeExcerpt(std::string_view line, std::size_t begin, std::size_t end, Call& call);

// Appends the lines before and after the one of the call.
void takeLinesAround(const Lines& lines, std::size_t line, Call& call);

// The files of an application, under the names that it knows them by, as its report names and shows them. For findings
// of those who know the place of a call and not more.
class ReportedFiles {
 public:
  // `bytes` must outlive this.
  void add(const std::string& path, const std::string& shownAs, std::string_view bytes);

  // The path that people see; that of a file that is not there is itself.
  std::string shown(const std::string& path) const;

  // Sets path and place of a call, and what is shown around it if there is such a place. A call without code gets that
  // which stands there, to the next closing parenthesis.
  void place(const std::string& path, Position place, Call& call) const;

  // What is shown of the line of a place; empty if there is none.
  std::string lineAt(const std::string& path, Position place) const;

 private:
  struct Shown {
    std::string path;
    Lines lines;
  };

  const Shown* find(const std::string& path) const;

  std::map<std::string, Shown> files_;
};
