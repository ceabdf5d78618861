#pragma once

#include <memory>
#include <string>

#include "swf/ByteReader.h"

// ActionScript byte code as script, for those who follow objects and not the course of a program: calls, functions,
// assignments, objects and lists are there; of comparisons and sums there is a number, and no branch is taken.
//
// The engine's replay is no help here: it joins the value of a text with the name of a variable, forgets registers, and
// cuts texts at 1255 bytes.
class FlashActions {
 public:
  FlashActions();
  ~FlashActions();

  // Appends the script of one block of actions; past a bound on all of them, nothing. A branch that leads into the
  // middle of a record is followed, as a player does.
  void add(const FlashEngine_1_00::ByteView& block);

  // A call with this text, where a tag names an address.
  void addUrl(const std::string& url);

  // Whether all was taken.
  bool isWhole() const;

  // The script of all blocks; empty if there is none.
  std::string text() const;

 private:
  class Writer;
  std::unique_ptr<Writer> writer_;
};
