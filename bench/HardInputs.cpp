#include "bench/HardInputs.h"

#include <algorithm>

#include "bench/FlashCode.h"
#include "bench/ScriptText.h"

namespace bench {
namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

// `piece(0)`, `piece(1)`, ... up to `bytes`.
template <typename Piece>
std::string series(std::size_t bytes, const Piece& piece) {
  std::string text;
  for (std::size_t n = 0; text.size() < bytes; ++n)
    text += piece(std::to_string(n));
  return text;
}

std::string repeated(std::size_t bytes, const std::string& piece) {
  return series(bytes, [&](const std::string&) { return piece; });
}

// `levels` of `open` around nothing, closed again, up to `bytes`.
std::string nested(std::size_t bytes, std::size_t levels, const std::string& open, const std::string& close) {
  std::string one;
  for (std::size_t i = 0; i < levels; ++i)
    one += open;
  for (std::size_t i = 0; i < levels; ++i)
    one += close;
  return repeated(bytes, one + '\n');
}

// Half of the text in digits of a run that no search finds a period in, up to a look-up without a blank between, twice.
std::string runs(std::size_t bytes, const std::string& digits) {
  Picks picks(7);
  std::string text;
  for (std::size_t end : {bytes / 2, bytes}) {
    text += "var image='";
    while (text.size() < end)
      text += digits[picks.below(digits.size())];
    text += "';image=document.getElementById('tvTuner');\n";
  }
  return text;
}

const std::string kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string pageWith(const std::string& id) {
  return "<object id=\"" + id + "\" classid=\"clsid:MORVANE-NAVERTIX-TUNER\"></object>\n";
}

constexpr std::size_t kHundredKilobytes = 100'000;

// An application with plugInPage() and one script.
HardInput script(const char* name, std::string (*text)(std::size_t), int documented = 300) {
  return {name,
          [text](std::size_t bytes) {
            return Files{{"index.html", plugInPage()}, {"main.js", text(bytes)}};
          },
          documented};
}

// The same with one plug-in element of this id.
HardInput scriptFor(const char* id, const char* name, std::string (*text)(std::size_t)) {
  return {name, [text, id](std::size_t bytes) {
            return Files{{"index.html", pageWith(id)}, {"main.js", text(bytes)}};
          }};
}

std::string lookUps(std::size_t bytes) {
  return series(bytes, [](const std::string& n) { return "a" + n + "=$('tv');a" + n + ".GetVolume();"; });
}

std::string differentLookUps(std::size_t bytes) {
  return series(bytes, [](const std::string& n) { return "a" + n + "=$('tv" + n + "');a" + n + ".GetVolume();"; });
}

// The number `n` in `digits` letters of an alphabet.
std::string inLetters(std::size_t n, std::size_t digits, const std::string& alphabet) {
  std::string name;
  for (; name.size() < digits; n /= alphabet.size())
    name += alphabet[n % alphabet.size()];
  return name;
}

// Look-ups whose variables and ids are all made of the letters of one small alphabet, in an order like chance.
std::string namesOver(std::size_t bytes, const std::string& alphabet) {
  Picks picks(11);
  std::string text;
  while (text.size() < bytes) {
    const std::string name = inLetters(picks.below(std::size_t{1} << 30), 14, alphabet);
    text += name + "=$('" + inLetters(picks.below(std::size_t{1} << 30), 14, alphabet) + "');";
  }
  return text;
}

// A page of elements with these ids and a script that mentions them, half of `bytes` each.
template <typename Id, typename Script>
HardInput manyIds(const char* name, Id id, Script script) {
  return {name, [id, script](std::size_t bytes) {
            std::string page;
            std::vector<std::string> ids;
            while (page.size() < bytes / 2) {
              ids.push_back(id(ids.size()));
              page += pageWith(ids.back());
            }
            return Files{{"index.html", page}, {"main.js", script(ids, bytes / 2)}};
          }};
}

// One call with all ids, again and again.
std::string longCalls(const std::vector<std::string>& ids, std::size_t bytes) {
  std::string call = "function f(a) {}\nf(0";
  for (const std::string& id : ids)
    call += ",'" + id + "'";
  return repeated(bytes, call + ");\n");
}

// A look-up, a call and an assignment for each id.
std::string usesOf(const std::vector<std::string>& ids, std::size_t bytes) {
  std::string text;
  for (std::size_t i = 0; i < ids.size() && text.size() < bytes; ++i)
    text += "a = $('" + ids[i] + "'); init('" + ids[i] + "'); $('" + ids[i] + "').GetVolume();\n";
  return text;
}

std::vector<HardInput> makeInputs() {
  return {
      scriptFor("tv", "look-ups without a blank", lookUps),
      scriptFor("tv", "look-ups without a blank, 100 KB",
                [](std::size_t bytes) { return lookUps(std::min(bytes, kHundredKilobytes)); }),
      scriptFor("tv1", "different look-ups without a blank", differentLookUps),
      scriptFor("tv1", "different look-ups without a blank, 100 KB",
                [](std::size_t bytes) { return differentLookUps(std::min(bytes, kHundredKilobytes)); }),
      script("'function(' repeated", [](std::size_t bytes) { return repeated(bytes, "function("); }),
      script("'<' repeated", [](std::size_t bytes) { return repeated(bytes, "<"); }),
      script("'<' repeated, one '>' at the end", [](std::size_t bytes) { return repeated(bytes, "<") + ">"; }),
      script("'<object' repeated", [](std::size_t bytes) { return repeated(bytes, "<object>"); }),
      script("hexadecimal run", [](std::size_t bytes) { return runs(bytes, "0123456789abcdef"); }),
      script("base64 run", [](std::size_t bytes) { return runs(bytes, kBase64); }),
      scriptFor("", "empty id, thousands of calls",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) { return "f" + n + "('a', " + n + ");\n"; });
                }),
      scriptFor("a", "one-letter id, thousands of calls",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) { return "f" + n + "('a', " + n + ");\n"; });
                }),
      scriptFor("a", "one-letter id, thousands of functions that get it",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) {
                    return "function f" + n + "(p" + n + ") { p" + n + ".GetVolume(); } f" + n + "('a');\n";
                  });
                }),
      script("functions nested 300 deep",
             [](std::size_t bytes) { return nested(bytes, 300, "function f(a) { ", "}"); }),
      script("20,000 nested functions", [](std::size_t bytes) { return nested(bytes, 20'000, "function f(){", "}"); }),
      script("braces nested 300 deep", [](std::size_t bytes) { return nested(bytes, 300, "{", "}"); }),
      script("parentheses nested 300 deep", [](std::size_t bytes) { return nested(bytes, 300, "f(", ")"); }),
      scriptFor("tuner", "'(tuner.a(' repeated",
                [](std::size_t bytes) {
                  return "function f() { var tuner = $('tuner'); " + repeated(bytes, "(tuner.a(") + " }";
                }),
      script("white space", [](std::size_t bytes) { return "var a;" + repeated(bytes, "  \t\n") + "var b;"; }),
      script("blanks only", [](std::size_t bytes) { return "var a;" + repeated(bytes, " ") + "var b;"; }),
      script("'x =', 200,000 blanks, 'document'",
             [](std::size_t bytes) {
               return repeated(bytes, "x =" + std::string(200'000, ' ') + "document.getElementById('tvTuner');");
             }),
      script("'x =', 400 blanks, 'document'",
             [](std::size_t bytes) {
               return repeated(bytes, "x =" + std::string(400, ' ') + "document.getElementById('tvTuner');");
             }),
      scriptFor("tv", "undocumented calls on one variable",
                [](std::size_t bytes) {
                  return "function f() { var t = $('tv'); " +
                         series(bytes, [](const std::string& n) { return "t.A" + n + "(); "; }) + "}";
                }),
      scriptFor("tv", "undocumented calls, each in its function",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) {
                    return "function f" + n + "() { var t" + n + " = $('tv'); t" + n + ".A" + n + "(); }\n";
                  });
                }),
      scriptFor("tv", "undocumented calls on look-ups",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) { return "$('tv').A" + n + "();\n"; });
                }),
      script("ordinary script, 100,000 documented names", ordinaryScript, 100'000),
      scriptFor("tv", "documented calls, 100,000 documented names",
                [](std::size_t bytes) {
                  return "function f() { var t = $('tv'); " +
                         series(bytes, [](const std::string& n) { return "t.GetVolume(" + n + "); "; }) + "}";
                }),
      scriptFor("tuner", "'document' repeated in a function",
                [](std::size_t bytes) {
                  return "function f(){ var t = document.getElementById(\"tuner\");" + repeated(bytes, "document");
                }),
      scriptFor("tuner", "'document ' repeated in a function",
                [](std::size_t bytes) {
                  return "function f(){ var t = document.getElementById(\"tuner\");" + repeated(bytes, "document ");
                }),
      script("names over two letters", [](std::size_t bytes) { return namesOver(bytes, "ab"); }),
      script("names over three letters", [](std::size_t bytes) { return namesOver(bytes, "abc"); }),
      manyIds(
          "ids over two letters", [](std::size_t n) { return inLetters(n * 7919, 16, "ab"); }, usesOf),
      manyIds(
          "ids alike", [](std::size_t n) { return "identifier" + std::to_string(100'000 + n); }, usesOf),
      manyIds(
          "ids alike in the same long calls", [](std::size_t n) { return "identifier" + std::to_string(100'000 + n); },
          longCalls),
      manyIds(
          "different ids in the same long calls",
          [](std::size_t n) { return inLetters(n * 7919, 4, kBase64.substr(0, 62)); }, longCalls),
      scriptFor("tv", "look-ups on lines of their own",
                [](std::size_t bytes) {
                  return series(bytes,
                                [](const std::string& n) { return "a" + n + "=$('tv');\n$('tv').GetVolume();\n"; });
                }),
      scriptFor("tv", "look-ups with different blanks",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) {
                    return "$('tv'" + std::string(1 + n.size() * 3 + static_cast<unsigned char>(n.back()) % 7, ' ') +
                           ")" + std::string(1 + static_cast<unsigned char>(n.front()) % 7, ' ') + ".GetVersion();\n";
                  });
                }),
      scriptFor("tv", "look-ups beside quoted parameters",
                [](std::size_t bytes) {
                  return "f('tv');" +
                         series(bytes / 2, [](const std::string& n) { return "function f('a" + n + "') {}"; }) +
                         series(bytes / 2, [](const std::string& n) { return "b = $('c" + n + "');"; });
                }),
      scriptFor("tv", "variables of the whole file",
                [](std::size_t bytes) {
                  return series(bytes, [](const std::string& n) {
                    return "this.v" + n + "=$('tv');f(this.v" + n + ".GetVolume());\n";
                  });
                }),
      {"jumps in a SWF",
       [](std::size_t bytes) {
         return Files{{"index.html", plugInPage()}, {"movie.swf", movieOf(jumps(bytes / 5))}};
       }},
  };
}

}  // namespace

const std::vector<HardInput>& hardInputs() {
  static const std::vector<HardInput> inputs = makeInputs();
  return inputs;
}

}  // namespace bench
