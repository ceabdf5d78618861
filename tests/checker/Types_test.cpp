// The declarations of an application. What the compiler of TypeScript makes of them is tested in tests/groups/types.

#include "CheckerFixture.h"

namespace {

class Types : public Checker {
 protected:
  static std::string types(const std::string& arguments, const std::string& database = DATABASE) {
    const Output output = check("types --no-config --database '" + database + "' " + arguments);
    EXPECT_EQ(output.status, 0) << output.text;
    return output.text;
  }
};

TEST_F(Types, DeclareVariablesThatAreTheElements) {
  const auto object = [](const std::string& id) {
    return "<object id='" + id + "' classid='clsid:MORVANE-NAVERTIX-TUNER'></object>\n";
  };
  std::string page;
  for (const char* id : {"tv", "declared", "inPage", "implicit", "status", "Audio", "class", "a-b", "a.b", "7up", "m"})
    page += object(id);
  write("www/index.html", page +
                              "<script>var inPage = 1;</script><script src='a.js'></script><script type='module' "
                              "src='b.mjs'></script>");
  write("www/a.js", "let declared; implicit = document.getElementById('implicit'); implicit.GetSerial();");
  write("www/b.mjs", "import './a.js'; const m = document.getElementById('m'); m.GetSerial();");
  const std::string text = types("www");
  std::set<std::string> variables;
  for (std::size_t at = 0; (at = text.find("declare var ", at)) != std::string::npos;) {
    at += std::string("declare var ").size();
    variables.insert(text.substr(at, text.find(':', at) - at));
  }
  EXPECT_EQ(variables, (std::set<std::string>{"implicit", "inPage", "m", "tv"}));
  for (const char* line : {"getElementById(elementId: \"7up\"): TarvoPlugins.MORVANE_NAVERTIX_TUNER;",
                           "getElementById(elementId: \"a.b\")", "querySelector(selectors: \"#a-b\")"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
  EXPECT_EQ(text.find("\"#a.b\""), std::string::npos) << "that is an element with a class";
}

TEST_F(Types, KnowElementsOfPackagesOfScriptAndOfTwoPages) {
  write("www/index.html", kPage +
                              "<script>var a = document.createElement('object'); a.id = 'made';\n"
                              "a.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-AUDIO'); a.GetGain();</script>");
  write("www/two.html", "<object id='tv' classid='clsid:MORVANE-NAVERTIX-PLAYER'></object>");
  ASSERT_EQ(runCommand("zip -qr app.wgt www").status, 0);
  const std::string text = types("app.wgt");
  EXPECT_NE(text.find("(elementId: \"made\"): TarvoPlugins.MORVANE_NAVERTIX_AUDIO;"), std::string::npos) << text;
  EXPECT_NE(
      text.find("(elementId: \"tv\"): TarvoPlugins.MORVANE_NAVERTIX_PLAYER & TarvoPlugins.MORVANE_NAVERTIX_TUNER;"),
      std::string::npos)
      << text;
}

TEST_F(Types, MarkDeprecatedMethods) {
  write("www/index.html", kPage);
  write("db.xml",
        "<APIAnalysisDB><Plugin classid='MORVANE-NAVERTIX-TUNER'><Function deprecated='2' replacement='B'>A</Function>"
        "<Function>B</Function><Function deprecated='2' replacement='*/ x'>C</Function></Plugin></APIAnalysisDB>");
  const std::string text = types("www", "db.xml");
  EXPECT_NE(text.find("/** @deprecated Call B instead. */\n    A(...args"), std::string::npos) << text;
  EXPECT_NE(text.find("any;\n    B(...args"), std::string::npos) << text;
  EXPECT_NE(text.find("/** @deprecated */\n    C(...args"), std::string::npos) << text;
}

TEST_F(Types, GoWhereTheyAreWanted) {
  write("www/index.html", kPage);
  const std::string text = types("www");
  EXPECT_EQ(types("--output types.d.ts www"), "");
  EXPECT_EQ(runCommand("cat types.d.ts").text, text);
  write(".tarvo-check.toml", "output = ['report.html']\n");
  EXPECT_EQ(check("types --database '" DATABASE "' www 2>/dev/null").text, text);
  EXPECT_FALSE(fs::exists("report.html")) << "that is for reports";
  EXPECT_EQ(check("types --no-config --output types.d.ts nowhere 2>/dev/null").status, 2);
  EXPECT_EQ(runCommand("cat types.d.ts").text, text) << "a run that fails keeps what was there";
}

}  // namespace
