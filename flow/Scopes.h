#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "flow/Names.h"
#include "flow/Syntax.h"

// Scopes: a parsed script with its functions, and for each identifier the variable that it means.

namespace flow {

using DefIndex = std::uint32_t;
using ScopeIndex = std::uint32_t;
constexpr std::uint32_t kNone = 0xFFFFFFFF;

// A variable of a function, of whichever block in it.
struct Variable {
  Name name = 0;
  bool isWrittenInside = false;  // by a function inside the one that declares it
  bool isReadInside = false;
  bool isGlobal = false;  // `var` and functions of a classic script: properties of the window
};

// What runs as one: a script, a function, the value of a field of a class, and the body of a loop over names or
// values, which is run once for each of them.
struct Def {
  enum class What : std::uint8_t { script, function, arrow, method, field, loopBody };

  What what = What::function;
  bool isAsync = false;
  bool isGenerator = false;
  bool usesArguments = false;
  DefIndex parent = kNone;
  Ast ast = 0;
  Ast body = 0;
  Ast parameters = 0;  // formal parameters, or the one parameter of an arrow
  Name name = 0;
  std::uint32_t selfSlot = kNone;  // of the name of a function expression
  ScopeIndex scope = 0;
  std::vector<Variable> variables;
  std::vector<Ast> functions;  // declarations that are hoisted
};

struct Scope {
  ScopeIndex parent = kNone;
  DefIndex def = 0;
  std::vector<std::pair<Name, std::uint32_t>> slots;
};

struct VariableRef {
  DefIndex def = kNone;  // none: a global
  std::uint32_t slot = 0;
  bool isWrite = false;
};

// A script, wherever it stands: a file, an element, an attribute, a string.
struct Unit {
  std::uint32_t file = 0;
  std::uint32_t base = 0;  // offset of the text in the file
  bool isExact = true;     // each byte of the text stands in the file; else all of it is placed at `base`
  bool isModule = false;
  bool isModel = false;  // of a library: its places are not shown
  std::string text;
  std::vector<Node> nodes;
  std::vector<Def> defs;            // the first is the script
  std::vector<Scope> scopes;        // the first is the script's
  std::vector<std::uint32_t> link;  // by node: of an identifier its entry in `refs`, of a function its def
  std::vector<VariableRef> refs;
  std::vector<std::uint32_t> tags;  // where they may begin in the text

  std::string_view textOf(Ast ast) const {
    return std::string_view(text).substr(nodes[ast].begin, nodes[ast].end - nodes[ast].begin);
  }

  bool hasTag(Ast ast) const {
    const auto tag = std::lower_bound(tags.begin(), tags.end(), nodes[ast].begin);
    return tag != tags.end() && *tag + 1 < nodes[ast].end;
  }
};

// Fills in all that follows `nodes`.
void resolveScopes(Unit& unit, Names& names);

}  // namespace flow
