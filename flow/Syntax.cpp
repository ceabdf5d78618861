// Syntax: the parser's tree, copied to a flat array and freed. Its memory is a hundred times that of the script.
// Test: tests/flow/Analysis_test.cpp.

#include "flow/Syntax.h"

#include <tree_sitter/api.h>
#include <tree_sitter/parser.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>

extern "C" const TSLanguage* tree_sitter_javascript();

namespace flow {
namespace {

struct KindName {
  const char* name;
  Kind kind;
};

// The grammar's names; those that are not here are `other`.
constexpr KindName kKinds[] = {
    {"program", Kind::program},
    {"export_statement", Kind::exportStatement},
    {"namespace_export", Kind::namespaceExport},
    {"export_clause", Kind::exportClause},
    {"export_specifier", Kind::exportSpecifier},
    {"import", Kind::importWord},
    {"import_statement", Kind::importStatement},
    {"import_clause", Kind::importClause},
    {"namespace_import", Kind::namespaceImport},
    {"named_imports", Kind::namedImports},
    {"import_specifier", Kind::importSpecifier},
    {"expression_statement", Kind::expressionStatement},
    {"variable_declaration", Kind::variableDeclaration},
    {"lexical_declaration", Kind::lexicalDeclaration},
    {"variable_declarator", Kind::variableDeclarator},
    {"statement_block", Kind::statementBlock},
    {"else_clause", Kind::elseClause},
    {"if_statement", Kind::ifStatement},
    {"switch_statement", Kind::switchStatement},
    {"for_statement", Kind::forStatement},
    {"for_in_statement", Kind::forInStatement},
    {"while_statement", Kind::whileStatement},
    {"do_statement", Kind::doStatement},
    {"try_statement", Kind::tryStatement},
    {"with_statement", Kind::withStatement},
    {"break_statement", Kind::breakStatement},
    {"continue_statement", Kind::continueStatement},
    {"return_statement", Kind::returnStatement},
    {"throw_statement", Kind::throwStatement},
    {"labeled_statement", Kind::labeledStatement},
    {"switch_body", Kind::switchBody},
    {"switch_case", Kind::switchCase},
    {"switch_default", Kind::switchDefault},
    {"catch_clause", Kind::catchClause},
    {"finally_clause", Kind::finallyClause},
    {"parenthesized_expression", Kind::parenthesizedExpression},
    {"yield_expression", Kind::yieldExpression},
    {"object", Kind::object},
    {"object_pattern", Kind::objectPattern},
    {"assignment_pattern", Kind::assignmentPattern},
    {"object_assignment_pattern", Kind::objectAssignmentPattern},
    {"array", Kind::array},
    {"array_pattern", Kind::arrayPattern},
    {"class", Kind::classExpression},
    {"class_declaration", Kind::classDeclaration},
    {"class_heritage", Kind::classHeritage},
    {"function_expression", Kind::functionExpression},
    {"function_declaration", Kind::functionDeclaration},
    {"generator_function", Kind::generatorFunction},
    {"generator_function_declaration", Kind::generatorFunctionDeclaration},
    {"arrow_function", Kind::arrowFunction},
    {"call_expression", Kind::callExpression},
    {"new_expression", Kind::newExpression},
    {"await_expression", Kind::awaitExpression},
    {"member_expression", Kind::memberExpression},
    {"subscript_expression", Kind::subscriptExpression},
    {"assignment_expression", Kind::assignmentExpression},
    {"augmented_assignment_expression", Kind::augmentedAssignmentExpression},
    {"spread_element", Kind::spreadElement},
    {"ternary_expression", Kind::ternaryExpression},
    {"binary_expression", Kind::binaryExpression},
    {"unary_expression", Kind::unaryExpression},
    {"update_expression", Kind::updateExpression},
    {"sequence_expression", Kind::sequenceExpression},
    {"string", Kind::string},
    {"string_fragment", Kind::stringFragment},
    {"escape_sequence", Kind::escapeSequence},
    {"template_string", Kind::templateString},
    {"template_substitution", Kind::templateSubstitution},
    {"regex", Kind::regex},
    {"number", Kind::number},
    {"identifier", Kind::identifier},
    {"private_property_identifier", Kind::privatePropertyIdentifier},
    {"meta_property", Kind::metaProperty},
    {"this", Kind::thisWord},
    {"super", Kind::superWord},
    {"true", Kind::literalWord},
    {"false", Kind::literalWord},
    {"null", Kind::literalWord},
    {"undefined", Kind::literalWord},
    {"arguments", Kind::arguments},
    {"class_body", Kind::classBody},
    {"field_definition", Kind::fieldDefinition},
    {"formal_parameters", Kind::formalParameters},
    {"class_static_block", Kind::classStaticBlock},
    {"rest_pattern", Kind::restPattern},
    {"method_definition", Kind::methodDefinition},
    {"pair", Kind::pair},
    {"pair_pattern", Kind::pairPattern},
    {"computed_property_name", Kind::computedPropertyName},
    {"property_identifier", Kind::propertyIdentifier},
    {"shorthand_property_identifier", Kind::shorthandProperty},
    {"shorthand_property_identifier_pattern", Kind::shorthandPattern},
    {"statement_identifier", Kind::statementIdentifier},
};

struct FieldName {
  const char* name;
  Field field;
};

constexpr FieldName kFields[] = {
    {"alias", Field::alias},
    {"alternative", Field::alternative},
    {"arguments", Field::arguments},
    {"argument", Field::argument},
    {"body", Field::body},
    {"condition", Field::condition},
    {"consequence", Field::consequence},
    {"constructor", Field::constructor},
    {"declaration", Field::declaration},
    {"finalizer", Field::finalizer},
    {"function", Field::function},
    {"handler", Field::handler},
    {"increment", Field::increment},
    {"index", Field::index},
    {"initializer", Field::initializer},
    {"key", Field::key},
    {"kind", Field::kind},
    {"label", Field::label},
    {"left", Field::left},
    {"member", Field::member},
    {"name", Field::name},
    {"object", Field::object},
    {"operator", Field::operatorSign},
    {"parameter", Field::parameter},
    {"parameters", Field::parameters},
    {"property", Field::property},
    {"right", Field::right},
    {"source", Field::source},
    {"value", Field::value},
};

struct SignName {
  const char* text;
  std::uint16_t mark;
};

// Words and signs that are nodes without a name, and what they say of their parent.
constexpr SignName kSigns[] = {
    {"static", kStatic},
    {"get", kGet},
    {"set", kSet},
    {"async", kAsync},
    {"await", kAsync},
    {"*", kStar},
    {"of", kOf},
    {"default", kDefault},
    {"var", kVar},
    {"let", kLexical},
    {"const", kLexical},
    {"+", kPlus},
    {"+=", kPlus},
    {"&&", kLogical},
    {"&&=", kLogical},
    {"||", kLogical | kOr},
    {"||=", kLogical | kOr},
    {"??", kLogical | kOr},
    {"?\?=", kLogical | kOr},
    {",", kCommaMark},
};

// The grammar's numbers for all these.
struct Numbers {
  std::vector<Kind> kinds;
  std::vector<bool> isKept;
  std::vector<std::uint16_t> marks;
  std::vector<Field> fields;
};

Numbers readNumbers() {
  const TSLanguage* language = tree_sitter_javascript();
  const std::uint32_t count = ts_language_symbol_count(language);
  Numbers numbers;
  numbers.kinds.assign(count, Kind::other);
  numbers.isKept.assign(count, false);
  numbers.marks.assign(count, 0);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto symbol = static_cast<TSSymbol>(i);
    const char* name = ts_language_symbol_name(language, symbol);
    const TSSymbolType type = ts_language_symbol_type(language, symbol);
    numbers.isKept[i] =
        type == TSSymbolTypeRegular && std::strcmp(name, "comment") != 0 && std::strcmp(name, "html_comment") != 0;
    if (type == TSSymbolTypeRegular) {
      for (const KindName& row : kKinds)
        if (std::strcmp(row.name, name) == 0) numbers.kinds[i] = row.kind;
    } else {
      for (const SignName& row : kSigns)
        if (std::strcmp(row.text, name) == 0) numbers.marks[i] = row.mark;
    }
  }
  numbers.fields.assign(ts_language_field_count(language) + 1, Field::none);
  for (const FieldName& row : kFields)
    numbers
        .fields[ts_language_field_id_for_name(language, row.name, static_cast<std::uint32_t>(std::strlen(row.name)))] =
        row.field;
  numbers.fields[0] = Field::none;
  return numbers;
}

constexpr TSSymbol kErrorSymbol = 0xFFFF;

class Copy {
 public:
  Copy(const Numbers& numbers, std::size_t most) : numbers_(numbers), most_(most) {}

  Tree run(const TSTree* parsed) {
    Tree tree;
    TSTreeCursor cursor = ts_tree_cursor_new(ts_tree_root_node(parsed));
    std::vector<Ast> open;
    bool isDescending = true;
    for (;;) {
      if (isDescending) {
        const bool isKept = take(cursor, open, tree);
        if (tree.nodes.size() >= most_) {
          tree.isWhole = false;
          break;
        }
        if (isKept && ts_tree_cursor_goto_first_child(&cursor)) continue;
        if (isKept) close(open, tree);
      }
      if (ts_tree_cursor_goto_next_sibling(&cursor)) {
        isDescending = true;
        continue;
      }
      if (!ts_tree_cursor_goto_parent(&cursor)) break;
      close(open, tree);
      isDescending = false;
    }
    ts_tree_cursor_delete(&cursor);
    while (!open.empty())
      close(open, tree);
    return tree;
  }

 private:
  // Whether the cursor's node is kept; what others say goes to the node around them.
  bool take(const TSTreeCursor& cursor, std::vector<Ast>& open, Tree& tree) const {
    const TSNode node = ts_tree_cursor_current_node(&cursor);
    const TSSymbol symbol = ts_node_symbol(node);
    const bool isError = symbol == kErrorSymbol;
    if (!isError && (symbol >= numbers_.isKept.size() || !numbers_.isKept[symbol])) {
      if (!open.empty() && symbol < numbers_.marks.size()) tree.nodes[open.back()].marks |= numbers_.marks[symbol];
      return false;
    }
    Node made;
    made.kind = isError ? Kind::error : numbers_.kinds[symbol];
    const TSFieldId field = ts_tree_cursor_current_field_id(&cursor);
    made.field = field < numbers_.fields.size() ? numbers_.fields[field] : Field::none;
    made.begin = ts_node_start_byte(node);
    made.end = ts_node_end_byte(node);
    open.push_back(static_cast<Ast>(tree.nodes.size()));
    tree.nodes.push_back(made);
    return true;
  }

  static void close(std::vector<Ast>& open, Tree& tree) {
    if (open.empty()) return;
    tree.nodes[open.back()].last = static_cast<std::uint32_t>(tree.nodes.size());
    open.pop_back();
  }

  const Numbers& numbers_;
  std::size_t most_;
};

// Brackets that are open at once: no code has so many, and the parser does not survive a hundred thousand. Those in
// literals count, too.
constexpr long kMaxBrackets = 10'000;

// The text with blanks for what stands deeper, and a number for it in parentheses, which must not be empty. Nothing
// where nothing is so deep.
std::string withoutDepths(std::string_view text) {
  std::string shallow;
  long depth = 0;
  char deepest = ' ';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool isEnd = c == ')' || c == ']' || c == '}';
    if (c == '(' || c == '[' || c == '{') ++depth;
    if (depth > kMaxBrackets) {
      if (shallow.empty()) shallow = text;
      const bool isFirst = depth == kMaxBrackets + 1 && shallow[i - 1] == deepest;
      shallow[i] = isFirst && deepest == '(' ? '0' : ' ';
    } else if (depth == kMaxBrackets && !isEnd) {
      deepest = c == '(' || c == '[' || c == '{' ? c : deepest;
    }
    if (isEnd && depth > 0) --depth;
  }
  return shallow;
}

// What the parser does with a text, and when it is to stop. No clock: each machine parses the same.
class Work {
 public:
  explicit Work(const ParseLimits& limits) : limits_(limits) {}

  // `isError` where the parser takes any token, as none fits, and `isThere` whether there was one: it tries each byte.
  void countToken(bool isError, bool isThere) {
    if (++tokens_ > limits_.tokens) stop();
    count(1);
    // What was skipped before becomes a part of a new node, again.
    if (isError && !isSkipping_) count(kError + ++errors_ / kErrorsForOne);
    isSkipping_ = isError && !isThere;
  }

  // Something is looked for that the grammar's tables do not describe.
  void countScan(bool isThere) {
    if (isThere && ++tokens_ > limits_.tokens) stop();
    count(1);
  }

  void stop() { stop_ = 1; }
  const std::size_t* isStopped() const { return &stop_; }
  std::uint64_t done() const { return done_; }
  std::uint64_t tokens() const { return tokens_; }
  bool hasErrors() const { return errors_ > 0; }

 private:
  void count(std::uint64_t work) {
    done_ += work;
    if (done_ > limits_.work) stop();
  }

  // What an error costs beside a token: so much, and one more for each so many errors before it.
  static constexpr std::uint64_t kError = 12;
  static constexpr std::uint64_t kErrorsForOne = 18;

  const ParseLimits& limits_;
  std::uint64_t done_ = 0;
  std::uint64_t tokens_ = 0;
  std::uint64_t errors_ = 0;
  bool isSkipping_ = false;
  std::size_t stop_ = 0;
};

thread_local Work* currentWork = nullptr;  // the language's functions are not told for whom they work

constexpr TSStateId kErrorState = 0;

bool lexToken(TSLexer* lexer, TSStateId state) {
  const bool isThere = tree_sitter_javascript()->lex_fn(lexer, state);
  currentWork->countToken(state == kErrorState, isThere);
  return isThere;
}

bool scanToken(void* scanner, TSLexer* lexer, const bool* valid) {
  const bool isThere = tree_sitter_javascript()->external_scanner.scan(scanner, lexer, valid);
  currentWork->countScan(isThere);
  return isThere;
}

TSLanguage countedLanguage() {
  TSLanguage language = *tree_sitter_javascript();
  language.lex_fn = lexToken;
  language.external_scanner.scan = scanToken;
  return language;
}

// Hands the text to the parser in parts, and stops it when it has asked for too many.
class Source {
 public:
  Source(std::string_view text, std::uint32_t readings, Work& work)
      : text_(text), left_((text.size() / kPart + 2) * std::uint64_t{readings}), work_(work) {}

  TSInput input() { return {this, &Source::read, TSInputEncodingUTF8}; }

 private:
  static constexpr std::uint32_t kPart = 4096;

  static const char* read(void* self, std::uint32_t offset, TSPoint, std::uint32_t* length) {
    auto& source = *static_cast<Source*>(self);
    if (source.left_ == 0)
      source.work_.stop();
    else
      --source.left_;
    *length =
        offset >= source.text_.size()
            ? 0
            : static_cast<std::uint32_t>(std::min<std::size_t>(kPart - offset % kPart, source.text_.size() - offset));
    return *length == 0 ? "" : source.text_.data() + offset;
  }

  std::string_view text_;
  std::uint64_t left_;
  Work& work_;
};

// What is kept for ever: to delete it can free what was never allocated (tree-sitter 0.20), since nodes for what was
// skipped lose children beyond the first 65,535. That is a parser that was stopped in a broken text, and a tree whose
// root lost children.
void abandon(const void* what) {
  static auto* const abandoned = new std::vector<const void*>();  // never ends: who looks for leaks finds them there
  abandoned->push_back(what);
}

// Whether the root lost children: where a text ends within more than 65,535 things, only the rest of a division by
// 65,536 is left of their number, and all places in the tree are wrong.
bool isCut(const TSTree* tree, std::string_view text) {
  const std::uint32_t end = ts_node_end_byte(ts_tree_root_node(tree));
  return end + std::size_t{0xFFFF} < text.size() && text.find_first_not_of(" \t\r\n", end) != std::string_view::npos;
}

}  // namespace

Tree parseScript(std::string_view text, const ParseLimits& limits) {
  static const Numbers numbers = readNumbers();
  static const TSLanguage language = countedLanguage();
  std::unique_ptr<TSParser, void (*)(TSParser*)> parser(ts_parser_new(), ts_parser_delete);
  Tree none;
  none.isWhole = false;
  if (!ts_parser_set_language(parser.get(), &language) || text.size() > 0x7FFFFFFF) return none;
  const std::string shallow = withoutDepths(text);
  const std::string_view parsedText = shallow.empty() ? text : shallow;
  ts_parser_set_timeout_micros(parser.get(), limits.micros);
  Work work(limits);
  currentWork = &work;
  Source source(parsedText, limits.readings, work);
  ts_parser_set_cancellation_flag(parser.get(), work.isStopped());
  std::unique_ptr<TSTree, void (*)(TSTree*)> parsed(ts_parser_parse(parser.get(), nullptr, source.input()),
                                                    ts_tree_delete);
  currentWork = nullptr;
  none.work = work.done();
  if (!parsed) {
    if (work.hasErrors()) {
      abandon(parser.release());
      none.keptTokens = work.tokens();
    }
    return none;
  }
  if (isCut(parsed.get(), parsedText)) {
    abandon(parsed.release());
    none.keptTokens = work.tokens();
    return none;
  }
  Tree tree = Copy(numbers, limits.nodes).run(parsed.get());
  tree.work = work.done();
  tree.isWhole = tree.isWhole && shallow.empty();
  return tree;
}

Ast childIn(const std::vector<Node>& nodes, Ast parent, Field field) {
  for (Ast child = parent + 1; child < nodes[parent].last; child = nodes[child].last)
    if (nodes[child].field == field) return child;
  return 0;
}

}  // namespace flow
