#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// Syntax: a script as a flat array of nodes.
//
// The array is in preorder: the children of node n begin at n + 1, each ends where the next one begins, and the last
// one ends where n does. Comments and punctuation are left out; what they say (operators, "static", "get") stands in
// their parent. Text that no grammar fits is an `error` node around what could be read of it.

namespace flow {

enum class Kind : std::uint8_t {
  other,
  error,
  program,
  exportStatement,
  namespaceExport,
  exportClause,
  exportSpecifier,
  importWord,
  importStatement,
  importClause,
  namespaceImport,
  namedImports,
  importSpecifier,
  expressionStatement,
  variableDeclaration,
  lexicalDeclaration,
  variableDeclarator,
  statementBlock,
  elseClause,
  ifStatement,
  switchStatement,
  forStatement,
  forInStatement,
  whileStatement,
  doStatement,
  tryStatement,
  withStatement,
  breakStatement,
  continueStatement,
  returnStatement,
  throwStatement,
  labeledStatement,
  switchBody,
  switchCase,
  switchDefault,
  catchClause,
  finallyClause,
  parenthesizedExpression,
  yieldExpression,
  object,
  objectPattern,
  assignmentPattern,
  objectAssignmentPattern,
  array,
  arrayPattern,
  classExpression,
  classDeclaration,
  classHeritage,
  functionExpression,
  functionDeclaration,
  generatorFunction,
  generatorFunctionDeclaration,
  arrowFunction,
  callExpression,
  newExpression,
  awaitExpression,
  memberExpression,
  subscriptExpression,
  assignmentExpression,
  augmentedAssignmentExpression,
  spreadElement,
  ternaryExpression,
  binaryExpression,
  unaryExpression,
  updateExpression,
  sequenceExpression,
  string,
  stringFragment,
  escapeSequence,
  templateString,
  templateSubstitution,
  regex,
  number,
  identifier,
  privatePropertyIdentifier,
  metaProperty,
  thisWord,
  superWord,
  literalWord,  // true, false, null, undefined
  arguments,
  classBody,
  fieldDefinition,
  formalParameters,
  classStaticBlock,
  restPattern,
  methodDefinition,
  pair,
  pairPattern,
  computedPropertyName,
  propertyIdentifier,
  shorthandProperty,
  shorthandPattern,
  statementIdentifier,
};

enum class Field : std::uint8_t {
  none,
  alias,
  alternative,
  arguments,
  argument,
  body,
  condition,
  consequence,
  constructor,
  declaration,
  finalizer,
  function,
  handler,
  increment,
  index,
  initializer,
  key,
  kind,
  label,
  left,
  member,
  name,
  object,
  operatorSign,
  parameter,
  parameters,
  property,
  right,
  source,
  value,
};

// What the words and signs of a node say.
enum Mark : std::uint16_t {
  kStatic = 1,
  kGet = 2,
  kSet = 4,
  kAsync = 8,
  kStar = 16,
  kDefault = 32,
  kOf = 64,
  kVar = 128,
  kLexical = 256,   // let, const
  kPlus = 512,      // + and +=
  kLogical = 1024,  // && || ??, and with =
  kOr = 2048,       // || or ??
  kCommaMark = 4096,
};

struct Node {
  Kind kind = Kind::other;
  Field field = Field::none;
  std::uint16_t marks = 0;
  std::uint32_t begin = 0;  // bytes in the script
  std::uint32_t end = 0;
  std::uint32_t last = 0;  // index after the last node inside
};

using Ast = std::uint32_t;  // index of a node; 0 is the program, and stands for "none" where a child is meant

struct Tree {
  std::vector<Node> nodes;
  bool isWhole = true;  // false: it was too much work, has more nodes than are kept, or is nested deeper than is parsed
  std::uint64_t work = 0;        // that it took, as ParseLimits counts it
  std::uint64_t keptTokens = 0;  // their memory is not given back
};

struct ParseLimits {
  std::size_t nodes = 3'000'000;
  std::uint64_t tokens = 2'000'000;  // each takes up to 400 bytes while the parser's tree lives
  // How much the parser may do: one for each token, and what recovering from errors costs. A million take a second, of
  // what costs most three.
  std::uint64_t work = 5'000'000;
  // How often the parser may read each part of the text, on the average: again and again where it is no script. Time
  // is for parsers that do not even read; it ends nothing that a slower machine would parse in seconds.
  std::uint32_t readings = 24;
  std::uint64_t micros = 15'000'000;
};

// Never fails: any text has a tree. It is empty, and not whole, where the parser gave up.
Tree parseScript(std::string_view text, const ParseLimits& limits);

// The first child of `parent` in that field, or 0.
Ast childIn(const std::vector<Node>& nodes, Ast parent, Field field);

// The first child of `parent`, or 0.
inline Ast firstChild(const std::vector<Node>& nodes, Ast parent) {
  return parent + 1 < nodes[parent].last ? parent + 1 : 0;
}

}  // namespace flow
