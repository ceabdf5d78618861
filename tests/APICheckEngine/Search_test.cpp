// The finders of source/APICheckEngine/search against plain searches: the rules as they are told, without any knowledge
// of how to save work, on text made of the pieces that matter to them.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "APICheckEngine/CallText.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/Records.h"
#include "APICheckEngine/search/AccessText.h"
#include "APICheckEngine/search/ArgumentCalls.h"
#include "APICheckEngine/search/CommonObjects.h"
#include "APICheckEngine/search/DefinedFunctions.h"
#include "APICheckEngine/search/EnclosingFunctions.h"
#include "APICheckEngine/search/ExcerptAccesses.h"
#include "APICheckEngine/search/Excerpts.h"
#include "APICheckEngine/search/LookupCalls.h"
#include "APICheckEngine/search/NamePattern.h"
#include "APICheckEngine/search/NamedSymbol.h"
#include "regex/Pattern.h"

using namespace FlashEngine_1_00;
using namespace FlashEngine_1_00::detail;
using Texts = std::vector<std::string>;

namespace {

class Text {
 public:
  explicit Text(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t count) { return random_() % count; }
  const std::string& oneOf(const Texts& pieces) { return pieces[below(pieces.size())]; }
  std::string of(const Texts& pieces, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
      text += oneOf(pieces);
    return text;
  }

 private:
  std::mt19937 random_;
};

Texts plainMatches(const std::string& pattern, const std::string& text) {
  Texts matches;
  const Pattern compiled(pattern);
  for (MatchCursor at(compiled, text.c_str()); at.next();)
    matches.push_back(at.match());
  return matches;
}

// ---- accesses in excerpts
// --------------------------------------------------------------------------------------------

const std::string kLookUp =
    R"((([\w\_]+)[\.]*)*\s*=*\s*[\$]\s*[\_]*\s*[(]["'\s]*[\w\_]+["'\s]*\)\s*\.*[\w\d\s\_]*\(*[\"'\s]*[\w\_]*[\"'\s]*)";

TEST(Search, AccessesAreThoseOfEachExcerptByItself) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    Text text(seed);
    const std::string source = text.of({"a", "b.c", " ", " = ", "=", "$('tv')", "$(tv", "'", ")", ".x(", "$_ ( \"t\" )",
                                        "\n", "$$", "y.z=$('q')", "(", std::string(40, 'x'), std::string(90, ' ')},
                                       5 + text.below(120));
    const Pattern pattern(kLookUp);
    std::vector<Excerpt> excerpts;
    for (std::size_t begin = 0; (begin += text.below(20)) < source.size();)
      excerpts.push_back({std::string_view(source).substr(begin, text.below(150)), 1});
    ExcerptAccesses finder(pattern, source.c_str(), excerpts);
    for (const Excerpt& excerpt : excerpts) {
      Texts found;
      for (const std::size_t access : finder.in(excerpt.text))
        found.emplace_back(finder.texts()[access]);
      ASSERT_EQ(found, plainMatches(kLookUp, std::string(excerpt.text))) << excerpt.text << "\nin\n" << source;
    }
  }
}

// ---- what is read out of an access
// -----------------------------------------------------------------------------------

TEST(Search, AccessesAreReadAsTheirPatternsDo) {
  const Texts pieces{"document",
                     ".",
                     "getElementById",
                     "$",
                     "(",
                     ")",
                     "'",
                     "\"",
                     " ",
                     "\n",
                     "\t",
                     "_",
                     "=",
                     "==",
                     "a.b",
                     "tv",
                     "1",
                     "..",
                     "$(",
                     "('",
                     "')",
                     ").",
                     "#",
                     "\xe9",
                     "x = $('tv')",
                     "document.getElementById(\"tv\")"};
  std::size_t used = 0;
  std::size_t variables = 0;
  std::size_t ids = 0;
  for (unsigned seed = 0; seed < 30'000; ++seed) {
    Text text(seed);
    std::string access = text.of(pieces, 1 + text.below(12));
    // Repetitions end after 65,536 bytes.
    if (seed % 1000 == 0) access.insert(text.below(access.size() + 1), 65'530 + text.below(12), " _a."[text.below(4)]);
    used += isUsedDirectly(access) ? 1 : 0;
    ASSERT_EQ(isUsedDirectly(access), !plainMatches(kDirectUse, access).empty()) << access;

    Texts assigned;
    for (const std::string& match : plainMatches(kAssignment, access)) {
      const std::string variable = without(withoutBlanks(match), "=");
      if (!variable.empty()) assigned.push_back(variable);
    }
    variables += assigned.size();
    ASSERT_EQ(assignedVariables(access), assigned) << access;

    const Texts lookedUp = plainMatches(kLookedUpId, access);
    const std::string match = lookedUp.empty() ? "" : lookedUp.front();
    ids += lookedUp.empty() ? 0 : 1;
    ASSERT_EQ(lookedUpId(access), match.substr(match.find_last_of("(\"' \t\n\v\f\r") + 1)) << access;
  }
  EXPECT_GT(used, 500U);
  EXPECT_GT(variables, 500U);
  EXPECT_GT(ids, 500U);
}

// ---- calls with an argument
// ------------------------------------------------------------------------------------------

TEST(Search, ArgumentCallsAreTheMatchesOfThePattern) {
  const Texts symbols{"tv", "t", "tv1", "tv12", "a", "ab", "1", "_", "v", "x", "function", "", "t\tv", "'tv'"};
  std::size_t calls = 0;
  for (unsigned seed = 0; seed < 300; ++seed) {
    Text text(seed);
    const std::string source = text.of({"f(",
                                        "init (",
                                        "(",
                                        ")",
                                        ",",
                                        " ",
                                        "'tv'",
                                        "tv",
                                        "tv1",
                                        "ab",
                                        "\t\n",
                                        "a",
                                        "x",
                                        ";",
                                        "t",
                                        "1.5",
                                        "\"",
                                        "+",
                                        "f(tv, 'tv1', a)",
                                        "tv12",
                                        "_(",
                                        std::string(30, ' ')},
                                       5 + text.below(150));
    std::size_t room = 1 << 20;
    SourceIndex index(source, room);
    ArgumentCalls finder(index);
    for (int round = 0; round < 3; ++round) {  // the first ones are searched for plainly
      for (const std::string& symbol : symbols) {
        Texts found;
        PassedSymbol passed(symbol);
        for (const std::string_view call : finder.passing(passed))
          found.emplace_back(call);
        ASSERT_EQ(found, plainMatches(callWithArgument(symbol), source)) << symbol << "\nin\n" << source;
        calls += round == 2 ? found.size() : 0;
      }
    }
  }
  EXPECT_GT(calls, 5'000U);
}

// A repetition takes 65,536 bytes: more white space in front of an argument makes the argument the first one's first
// byte, and more arguments are no call.
TEST(Search, ArgumentCallsEndWithTheirRepetitions) {
  std::size_t calls = 0;
  for (const std::size_t size : {65'520U, 65'535U, 65'536U, 65'537U, 70'000U, 140'000U}) {
    const std::string blanks(size, ' ');
    const std::string source = "f(" + blanks + "tv);g(" + blanks + "a,tv) ;h(a" + blanks + "tv);i(a,tv" + blanks +
                               ");j(a,tv)" + blanks + ";k(" + std::string(size, 'a') + "tv) ;l(a,tv)";
    std::size_t room = 0;
    SourceIndex index(source, room);
    ArgumentCalls finder(index);
    PassedSymbol passed("tv");
    const Texts expected = plainMatches(callWithArgument("tv"), source);
    for (int search = 0; search < 20; ++search) {  // the first ones are searched for plainly
      const std::vector<std::string_view> found = finder.passing(passed);
      ASSERT_EQ(Texts(found.begin(), found.end()), expected) << size;
    }
    calls += expected.size();
  }
  EXPECT_GT(calls, 20U);
}

TEST(Search, DefinedFunctionsAreThoseOfTheirName) {
  std::size_t found = 0;
  for (unsigned seed = 1; seed <= 200; ++seed) {
    Text text(seed);
    Texts headers;
    for (std::size_t i = 0; i < 20; ++i)
      headers.push_back(text.of({"function", " ", ":", "a", "b", "(x)", "(", "func", "tion"}, 2 + text.below(6)));
    std::vector<FlashFunctionInfo> records;
    for (const std::string& header : headers)
      records.push_back({header, "", "", nullptr});
    std::vector<FlashFunctionInfo*> functions;
    for (std::size_t i = 0; i < 40; ++i)
      functions.push_back(&records[text.below(records.size())]);
    DefinedFunctions finder(functions);
    for (const char* name : {"", "a", "b", "ab", "ba", "function", "a"}) {
      Texts expected;
      for (const FlashFunctionInfo* function : functions) {
        const std::string header = without(without(withoutBlanks(std::string(function->header)), "function"), ":");
        const bool isNew = std::find(expected.begin(), expected.end(), header) == expected.end();
        if (header.substr(0, header.find('(')) == name && isNew) expected.push_back(header);
      }
      ASSERT_EQ(finder.headersOf(name), expected) << name << ", " << seed;
      found += expected.size();
    }
  }
  EXPECT_GT(found, 500U);
}

// ---- common objects
// --------------------------------------------------------------------------------------------------

bool plainlyFollow(const std::string& name, std::string_view text) {
  for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
    for (const char* object : {"Common.API.Plugin", "Common.API.Widget", "Common.API.TVKeyValue"}) {
      if (text.substr(at, 50).find(object) != std::string_view::npos) return true;
    }
  }
  return false;
}

TEST(Search, CommonObjectsFollowWithinFiftyBytes) {
  // The window begins with the name and holds the whole object: 50 bytes, of which 17 are the object's.
  for (const auto& [blanks, isNear] : {std::pair(50 - 2 - 17, true), std::pair(50 - 2 - 17 + 1, false)}) {
    const std::string source = "tv" + std::string(static_cast<std::size_t>(blanks), ' ') + "Common.API.Widget";
    EXPECT_EQ(CommonObjects().follow("tv", source, source, nullptr), isNear) << blanks;
  }
  int near = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Text text(seed);
    const std::string source =
        text.of({"tv", "t", "tvtv", " ", std::string(25, '-'), "Common.API.Widget", "Common.API.",
                 "Common.API.TVKeyValue", "Common.API.Plugin", std::string(11, 'x')},
                2 + text.below(30));
    std::size_t room = 1 << 20;
    TextIndex index(source, room);
    const std::size_t begin = text.below(source.size());
    const std::string_view part = std::string_view(source).substr(begin, text.below(source.size() - begin + 1));
    CommonObjects objects;
    for (const char* name : {"tv", "t", "tvt", "Common", "x-"}) {
      const bool expected = plainlyFollow(name, part);
      ASSERT_EQ(objects.follow(name, part, source, seed % 2 == 0 ? &index : nullptr), expected) << name << "\n" << part;
      near += expected ? 1 : 0;
    }
  }
  EXPECT_GT(near, 1000);
}

// ---- enclosing functions
// ---------------------------------------------------------------------------------------------

TEST(Search, TheFunctionAroundAnAccessIsTheLastOneThatHoldsIt) {
  for (unsigned seed = 0; seed < 1500; ++seed) {
    Text text(seed);
    const std::string source =
        text.of({"{", "}", "a", "$('tv')", "b", " ", "t=$('tv')", "{}", "}{"}, 4 + text.below(40));
    const std::string path = "main.js";
    std::vector<std::unique_ptr<FlashFunctionInfo>> owned;
    std::vector<FlashFunctionInfo*> functions;
    for (std::size_t i = text.below(12); i > 0; --i) {
      const std::size_t begin = text.below(source.size());
      const std::size_t end = source.find('}', begin + text.below(source.size() - begin));
      if (end == std::string::npos) continue;
      const std::string_view body = std::string_view(source).substr(begin, end + 1 - begin);
      owned.push_back(std::make_unique<FlashFunctionInfo>(FlashFunctionInfo{{}, body, path, &source}));
      functions.push_back(owned.back().get());
      if (text.below(4) == 0) functions.push_back(functions[text.below(functions.size())]);
    }
    const std::vector<std::string*> none;
    Knowledge known(none, none, none);
    EnclosingFunctions enclosing(functions, known);
    for (const std::string access : {"$('tv')", "t=$('tv')", "a", "ab", "b$('tv')", ""}) {
      std::string_view last;
      for (const FlashFunctionInfo* function : functions) {
        if (function->body.find(access) != std::string_view::npos) last = function->body;
      }
      const std::string_view found = enclosing.body(path, access);
      ASSERT_EQ(found.data(), last.data()) << access << "\nin\n" << source;
      ASSERT_EQ(found.size(), last.size()) << access << "\nin\n" << source;
    }
    EXPECT_EQ(enclosing.body("other.js", "a").data(), nullptr);
  }
}

// ---- named symbols
// ---------------------------------------------------------------------------------------------------

TEST(Search, TheNamedSymbolIsTheFirstWhosePatternMatches) {
  const Texts symbolPieces{"tv", "t", "\"tv\"", "'a'", "''", "", "a.b", "a|b", "tv2", "\"", "a b", "[", "_x"};
  for (unsigned seed = 0; seed < 1500; ++seed) {
    Text text(seed);
    std::vector<Key> symbols;
    for (std::size_t i = text.below(8); i > 0; --i)
      symbols.push_back({"C", text.oneOf(symbolPieces)});
    NamedSymbol named(symbols);
    for (int i = 0; i < 20; ++i) {
      const std::string access = text.of(
          {"(", ")", "tv", "'", "\"", " ", "\n", "a", "$('tv')", "( \"a\" )", ".b", "tv2", "('')"}, 1 + text.below(8));
      std::size_t first = 0;
      while (first < symbols.size() && plainMatches(parenthesised(symbols[first].symbol), access).empty())
        ++first;
      ASSERT_EQ(named.in(access), first < symbols.size() ? first : NamedSymbol::kNone) << access;
    }
  }
}

// ---- matches around names
// -------------------------------------------------------------------------------------------------

Texts matchesAround(const NamePattern& pattern, const std::string& name, std::string_view text, TextIndex* index) {
  Texts matches;
  for (NameMatches at(pattern, name, text, index); at.next();)
    matches.push_back(at.match());
  return matches;
}

TEST(Search, MatchesAroundNamesAreThoseOfTheirPattern) {
  const NamePattern variables = callsOnVariables();
  const NamePattern lookUps = callsOnLookUps();
  const Texts names{"tv",  "t", "_",  "a_tv", "this.tv", "a.b", "a..b", "tv.",
                    ".tv", "",  "aa", "t*",   "a|b",     "(",   ")",    "$t"};
  const Texts pieces{"tv", "t",   "_", "a_",   "this.",     "a",  "b",   ".", "$t", " ",  "\n", "(", "'", "\"",
                     ")",  ").x", ";", ".Go(", ".Go(1, 2)", "aa", " . ", "*", ",",  "()", ")",  "x", "é", "a_tv.A()"};
  std::size_t matches = 0;
  for (unsigned seed = 0; seed < 2000; ++seed) {
    Text random(seed);
    const std::string source = random.of(pieces, 5 + random.below(60));
    const std::string name = random.oneOf(names);
    // A part of the source: the byte behind it belongs to what a pattern can see, as the zero behind the whole does.
    const std::string_view text = std::string_view(source).substr(0, source.size() - random.below(5));
    std::size_t room = 1 << 20;
    TextIndex index(source, room);
    for (const NamePattern* pattern : {&variables, &lookUps}) {
      const Pattern whole(pattern == &variables ? callOn(name) : callOnLookupOf(name));
      Texts plain;
      for (MatchCursor at(whole, text, nullptr); at.next();)
        plain.push_back(at.match());
      matches += plain.size();
      ASSERT_EQ(matchesAround(*pattern, name, text, nullptr), plain) << name << "\nin\n" << text;
      ASSERT_EQ(matchesAround(*pattern, name, text, &index), plain) << name << "\nin\n" << text;
    }
  }
  EXPECT_GT(matches, 500U);
}

// ---- calls on look-ups, built-in names
// -------------------------------------------------------------------------------

TEST(Search, LookupCallsAreTheMatchesOfThePattern) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    Text text(seed);
    const std::string source =
        text.of({"('tv')", "(\"tv\" )", ".", "Play(", " . Stop (", "go(", ";", " ", "('a')"}, 40);
    std::size_t room = 1 << 20;
    SourceIndex index(source, room);
    LookupCallFinder finder(3);
    Texts kept;
    std::map<std::string, int> times;
    for (const std::string& match : plainMatches(callOnLookupOf("tv"), source)) {
      if (times[match]++ < 3) kept.push_back(match);
    }
    const LookupCalls& calls = finder.callsOn("tv", index);
    Texts found;
    for (const LookupCalls::Find& find : calls.finds) {
      found.emplace_back(find.place);
      EXPECT_EQ(calls.candidates[find.candidate].text, find.place);
    }
    EXPECT_EQ(found, kept) << source;
    EXPECT_EQ(&finder.callsOn("tv", index), &calls);
  }
}

}  // namespace
