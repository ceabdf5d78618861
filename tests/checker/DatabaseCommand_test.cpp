// What the keeper of an API database is told, which must be what the engine does with it.

#include "checker/commands/DatabaseCommand.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "OwnDirectory.h"
#include "RunCommand.h"
#include "checker/run/EngineRun.h"

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace {

class DatabaseCommand : public OwnDirectory {
 protected:
  DatabaseCommand() { write("page.js", "x"); }

  // Writes a file and gives its whole path.
  std::string write(const std::string& name, const std::string& bytes) const {
    OwnDirectory::write(name, bytes);
    return directory_ + "/" + name;
  }

  // Lists the text, which the engine must read the same way.
  DatabaseListing list(const std::string& text) const {
    const std::string path = write("database.xml", text);
    const Outcome run = runEngine(directory_ + "/page.js", EngineRunOptions{path});
    Texts names;
    for (const std::string* name : run.engine->whiteAPIList)
      names.push_back(*name);
    DatabaseListing listing = listDatabase(path);
    EXPECT_EQ(listing.names(), names) << text.substr(0, 1000);
    EXPECT_EQ(listing.isRead, run.code != RUN_DB_NO_ROOT) << text.substr(0, 1000);
    return listing;
  }
};

Texts textsOf(const DatabaseListing& listing) {
  Texts texts;
  for (const DatabaseWarning& warning : listing.warnings)
    texts.push_back(std::to_string(warning.line) + ": " + warning.text);
  return texts;
}

std::string inGroup(const std::string& elements) {
  return "<APIAnalysisDB>\n<g>\n" + elements + "</g></APIAnalysisDB>\n";
}

TEST_F(DatabaseCommand, WarnsOfWhatTheEngineDoesNotRead) {
  const std::string a = "<Function>A</Function>\n";
  const std::string notRead = " not read by the engine: ";
  const std::string badBytes = " has characters that the method of a call cannot have: letters, digits, '_'";
  struct Row {
    std::string text;
    Texts warnings;
  } rows[] = {
      {inGroup(a), {}},
      {inGroup(a + "<!-- c --><?d?>\r\n<Function a='b'>'It_2'</Function>"), {}},
      {inGroup(a) + "<APIAnalysisDB/>\n<x/>",
       {"5: element 'APIAnalysisDB' is" + notRead + "only the first 'APIAnalysisDB' is, and that in this spelling",
        "6: element 'x' is" + notRead + "only the first 'APIAnalysisDB' is, and that in this spelling"}},
      {"<apianalysisdb><g>" + a + "</g></apianalysisdb>",
       {"1: the file is" + notRead + "it has no element 'APIAnalysisDB' on its first level",
        "1: element 'apianalysisdb' is" + notRead + "only the first 'APIAnalysisDB' is, and that in this spelling"}},
      {"<APIAnalysisDB>text<g>" + a + "</g>\n<Function>B</Function></APIAnalysisDB>",
       {"1: text 'text' is" + notRead + "it stands between the elements",
        "3: 'B' is" + notRead + "its Function stands outside a group"}},
      {"<APIAnalysisDB><Function>" + a + "</Function></APIAnalysisDB>", {}},  // a group may have any name
      {"<APIAnalysisDB><g classid='MORVANE-NAVERTIX-TUNER'>" + a +
           "</g>\n<g classid='MORVANE-NAVERTIX-TUNER'/></APIAnalysisDB>",
       {"3: group 'MORVANE-NAVERTIX-TUNER' documents no function",
        "3: group 'MORVANE-NAVERTIX-TUNER' stands in line 1, too"}},
      {"<APIAnalysisDB><g classid='MORVANE-NAVERTIX-TUNR'>" + a + "</g>\n<g classid='P'>" + a + "</g></APIAnalysisDB>",
       {"1: the engine knows no plug-in with the class identifier 'MORVANE-NAVERTIX-TUNR'; did you mean "
        "'MORVANE-NAVERTIX-TUNER'?",
        "3: the engine knows no plug-in with the class identifier 'P'"}},
      {inGroup("<Function depricated='1'>A</Function><Function note='x' since='1'>B</Function>\n"
               "<Function deprecated='' replacement='B'>C</Function>\n"
               "<Function deprecated='NO' replacement='D'>D</Function>\n"
               "<Function deprecated='2.0' replacement='b'>E</Function>"),
       {"3: attribute 'depricated' of 'A' says nothing; did you mean 'deprecated'?",
        "5: 'D' has a replacement and is not deprecated", "6: 'b', which replaces 'E', is not documented"}},
      {inGroup(a + "<h><i><Function>B</Function></i>\n<Function/></h>loose"),
       {"4: element 'h' is" + notRead + "only 'Function' elements are",
        "4: 'B' is" + notRead + "its Function stands too deep",
        "5: a Function is" + notRead + "its Function stands too deep",
        "5: text 'loose' is" + notRead + "it stands between the elements"}},
      {inGroup(a + "<function>B</function>"),
       {"4: element 'function' is" + notRead + "it is to be spelled 'Function'"}},
      {inGroup(a + "<Function/><Function> \n</Function>\n<Function><!-- c -->B</Function>"),
       {"4: a Function is" + notRead + "it has no text", "4: a Function is" + notRead + "it has no text",
        "6: a Function is" + notRead + "its text is not the first thing in it"}},
      {inGroup("<Function>A<b/>B<Function>C</Function></Function>"),
       {"3: 'C' is" + notRead + "its Function stands too deep",
        "3: element 'b' is" + notRead + "it stands in a Function",
        "3: text 'B' is" + notRead + "of a Function only the first text is"}},
      {inGroup("<Function> A\n</Function><Function>&#32;B</Function>\n<Function><![CDATA[ C]]></Function>"),
       {"3: white space around 'A' is" + notRead + "write the name without any",
        "4: the name ' B' has blanks around it: no call has such a method",
        "5: the name ' C' has blanks around it: no call has such a method"}},
      {inGroup(a + a + "<Function>B</Function>\n<Function>b</Function>"),
       {"4: 'A' stands in line 3 of the group, too",
        "6: 'b' differs only in case from 'B' in line 5: a call must have the very letters"}},
      {inGroup(a + "</g><g>" + a), {}},  // many plug-ins have methods of the same name
      {inGroup("<Function>tv.Get()</Function>\n<Function>\xC3\xA4</Function>\n<Function>'</Function>"),
       {"3: 'tv.Get()'" + badBytes, "4: '\xC3\xA4'" + badBytes, "5: '''" + badBytes}},
      {inGroup(a + "</h>").substr(0, 50),
       {"4: what follows is" + notRead + "the XML is damaged here: Error reading end tag."}},
      {inGroup(a) + '\0' + inGroup(a),
       {"1: what stands behind its first zero byte is" + notRead + "the text ends there"}},
      {"", {"1: the file is empty: it documents nothing"}},
      {"\r", {"1: the file is" + notRead + "it has no element 'APIAnalysisDB' on its first level"}},
  };
  for (const Row& row : rows) {
    Texts warnings = textsOf(list(row.text));
    if (row.text == "\r") warnings.resize(1);  // and the parser's own words
    EXPECT_EQ(warnings, row.warnings) << row.text;
  }
}

TEST_F(DatabaseCommand, AFaultIsToldWithItsPlaceBeforeAnythingIsChecked) {
  const std::string a = inGroup("<Function>A</Function>\n");
  struct Row {
    std::string text, fault;  // without a fault: sound
  };
  for (const Row& row : std::vector<Row>{
           {a, ""},
           {"\xEF\xBB\xBF" + a, ""},
           {"<?xml version='1.0'?>\n<!-- c -->" + a + "<!-- c -->\n", ""},
           {"", "1:1: there is no element in it"},
           {"<!-- only a comment -->", "1:1: there is no element in it"},
           {"<a/>", "1:1: the first element must be 'APIAnalysisDB'"},
           {inGroup("<function>A</function>"), "1:1: no method is documented in it"},
           {inGroup(""), "1:1: no method is documented in it"},
           {"<APIAnalysisDB>\n<Function>A</Function></APIAnalysisDB>", "1:1: no method is documented in it"},
           {a + "text", "5:1: not well-formed: text outside of the first element"},
           {a + "text<b/>", "5:1: not well-formed: text outside of the first element"},
           {a + "\n  <b/>", "6:3: not well-formed: a second first element"},
           {a + std::string(1, '\0'), "5:1: not well-formed: there is a zero byte"},
           {inGroup("<Function>A</Function>\n<g a='1></g>"), "not well-formed: "},
           {a.substr(0, a.size() - 5), "not well-formed: "},
           {inGroup("<Function>A</Functoin>"), "3:"},
       }) {
    const std::string path = write("database.xml", row.text);
    const std::optional<DatabaseFault> fault = listDatabase(path).fault;
    const std::string told =
        fault ? std::to_string(fault->line) + ":" + std::to_string(fault->column) + ": " + fault->text : "";
    EXPECT_EQ(told.empty(), row.fault.empty()) << row.text << '\n' << told;
    EXPECT_NE(told.find(row.fault), std::string::npos) << row.text << '\n' << told;
    if (!fault) continue;
    EXPECT_GE(fault->line, 1);
    EXPECT_GE(fault->column, 1);
    for (const std::string command : {"", "explain ", "database "}) {
      const std::string file = command == "database " ? "" : " " + directory_ + "/page.js";
      const Output output = runCommand(CHECKER " " + command + "--database " + path + file + " 2>&1");
      EXPECT_NE(output.text.find("tarvo-check: the database cannot be used: " + path + ":" + told), std::string::npos)
          << output.text;
      EXPECT_EQ(output.status, 2) << command;
    }
  }
}

TEST_F(DatabaseCommand, HostileFilesAreReadAsTheEngineReadsThem) {
  std::size_t seeds = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(DATABASE_SEEDS)) {
    std::ifstream file(entry.path(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t star = std::min(text.rfind('*'), text.size());  // what follows is to be repeated
    const std::string piece = text.substr(std::min(star + 1, text.size()));
    text.resize(star);
    while (!piece.empty() && text.size() < 200'000)
      text += piece;
    (void)list(text);
    ++seeds;
  }
  EXPECT_GE(seeds, 9U);
  const std::string whole =
      "<?xml version='1.0' encoding='UTF-8'?><APIAnalysisDB>t<g classid='&lt;'><Function>A\xC3\xA4 "
      "B</Function><Function><![CDATA[C]]>D</Function><!--c--><Function/></g></APIAnalysisDB>";
  for (std::size_t i = 0; i < whole.size(); ++i) {
    (void)list(whole.substr(0, i));
    (void)list(std::string(whole).replace(i, 1, 1, "<\xF0&"[i % 3]));
  }
}

TEST_F(DatabaseCommand, PrintsListingAndDifferences) {
  const std::string older = write("old.xml", inGroup("<Function>A</Function><Function>B</Function>"));
  const std::string newer = write("new.xml",
                                  "<APIAnalysisDB><g><Function>B</Function></g><h><Function>C</Function>\n"
                                  "<Function>B</Function><Function> \x1B </Function></h></APIAnalysisDB>");
  const std::string marked =
      write("marked.xml", inGroup("<Function since='1.0' deprecated=' 2.0 ' replacement='B'>A</Function>"
                                  "<Function deprecated='True'>B</Function>"));
  const std::string command = CHECKER " database ";
  struct Row {
    std::string arguments;
    int status;
    std::string text;
  } rows[] = {
      {"--database " + marked, 0,
       "g\n  A  (since 1.0, deprecated since 2.0: call 'B')\n  B  (deprecated)\n"
       "groups: 1, functions: 2, different names: 2; each is documented for all plug-ins\ndeprecated: 2\n"},
      {"--database " + older, 0,
       "g\n  A\n  B\ngroups: 1, functions: 2, different names: 2; each is documented for all plug-ins\n"},
      {"--database " + newer + " 2>&1 >/dev/null", 1,
       newer + ":2: warning: '\\x1b' has characters that the method of a call cannot have: letters, digits, '_'\n"},
      {"--database / 2>&1", 2, "tarvo-check: the database '/' cannot be read; pass --database FILE\n"},
      {"diff " + older + " /no/such 2>&1", 2, "tarvo-check: /no/such: No such file or directory\n"},
      {"diff / " + older + " 2>&1", 2, "tarvo-check: /: cannot be read as a file\n"},
      {"diff " + older + " " + older, 0, ""},
      {"diff " + older + " " + newer, 1,
       "documented: \\x1b\ndocumented: C\nno longer documented: A\ng:\n  - A\nh:\n  + \\x1b\n"
       "  + B  (was documented by another group)\n  + C\n"},
      {"diff " + older + " " + directory_ + "/page.js 2>/dev/null", 2, ""},
  };
  for (const Row& row : rows) {
    const Output output = runCommand(command + row.arguments);
    EXPECT_EQ(output.status, row.status) << row.arguments;
    EXPECT_EQ(output.text, row.text) << row.arguments;
  }
  const auto listing = nlohmann::json::parse(runCommand(command + "--json --database " + newer).text);
  EXPECT_EQ(listing["groups"][1]["functions"][1], (nlohmann::json{{"name", "B"}, {"line", 2}}));
  EXPECT_EQ(listing["names"], (Texts{"\x1B", "B", "C"}));
  EXPECT_EQ(listing["warnings"].size(), 1U);
  EXPECT_EQ(
      nlohmann::json::parse(runCommand(command + "--json --database " + marked).text)["groups"][0]["functions"][0],
      (nlohmann::json{{"name", "A"},
                      {"line", 3},
                      {"since", "1.0"},
                      {"deprecated", true},
                      {"deprecatedSince", "2.0"},
                      {"replacement", "B"}}));
  const auto difference = nlohmann::json::parse(runCommand(command + "diff --json " + older + " " + newer).text);
  EXPECT_EQ(difference["undocumented"], Texts{"A"});
  EXPECT_EQ(difference["groups"][1]["documented"], (Texts{"\x1B", "B", "C"}));
  EXPECT_TRUE(listDatabase(DATABASE).warnings.empty());
}

}  // namespace
