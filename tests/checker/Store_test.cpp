// The program with a store. What a store does is tested in tests/store.

#include <sqlite3.h>

#include "CheckerFixture.h"
#include "checker/commands/StoreRun.h"
#include "store/Content.h"

namespace {

class StoreChecker : public Checker {
 protected:
  StoreChecker() {
    writePage("a", "GetSerial");
    writePage("b", "GetVolume");
  }

  static void writePage(const std::string& name, const std::string& method) {
    fs::create_directories(name);
    write(name + "/index.html",
          R"(<html><body><object id="tv" classid="MORVANE-NAVERTIX-AUDIO"></object></body></html>)");
    write(name + "/main.js",
          "function show() {\n  var tv = document.getElementById(\"tv\");\n  tv." + method + "();\n}\n");
  }

  static Output stored(const std::string& arguments) { return check("--store s " + arguments); }

  // The first column of the first row.
  static std::string value(const std::string& query) {
    sqlite3* store = nullptr;
    std::string text;
    if (sqlite3_open_v2("s", &store, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
      sqlite3_stmt* statement = nullptr;
      if (sqlite3_prepare_v2(store, query.c_str(), -1, &statement, nullptr) != SQLITE_OK) text = sqlite3_errmsg(store);
      if (sqlite3_step(statement) == SQLITE_ROW)
        text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
      (void)sqlite3_finalize(statement);
    }
    (void)sqlite3_close(store);
    return text;
  }
};

TEST_F(StoreChecker, WhatIsStoredIsNotCheckedAgainAndCountsAsBefore) {
  const Output first = stored("a b");
  EXPECT_EQ(first.status, 1);
  EXPECT_EQ(value("SELECT count(*) FROM calls"), "2") << "documented ones, too";
  EXPECT_EQ(value("SELECT documented FROM calls WHERE method = 'GetVolume'"), "1");
  EXPECT_EQ(value("SELECT on_device FROM calls WHERE method = 'GetSerial'"), "1");
  fs::rename("a", "moved");
  const Output again = stored("--format json moved b");
  EXPECT_EQ(again.status, 1);
  EXPECT_NE(again.text.find("\"stored\": true"), std::string::npos) << again.text;
  EXPECT_NE(again.text.find("\"path\": \"moved/main.js\""), std::string::npos) << again.text;
  EXPECT_EQ(value("SELECT count(*) FROM result"), "2");
  EXPECT_EQ(stored("--accept GetSerial moved b").status, 0) << "exceptions are not stored";
  writePage("b", "GetModel");
  EXPECT_NE(stored("b").text.find("GetModel"), std::string::npos) << "another content";
}

TEST_F(StoreChecker, ADatabaseIsJudgedByWithoutTheApplications) {
  ASSERT_EQ(stored("a b").status, 1);
  fs::remove_all("a");
  write("new.xml",
        "<APIAnalysisDB><P classid='MORVANE-NAVERTIX-AUDIO'><Function>GetSerial</Function></P></APIAnalysisDB>");
  const Output judged = check("judge --store s --database new.xml --output changes.json");
  EXPECT_EQ(judged.status, 1);
  EXPECT_EQ(judged.text,
            "a: was findings, now clean: 'GetSerial' on MORVANE-NAVERTIX-AUDIO is documented now (1 call)\n"
            "b: was clean, now findings: 'GetVolume' on MORVANE-NAVERTIX-AUDIO is no longer documented (1 call)\n"
            "2 applications, 2 judged calls: 2 changed; 1 with findings now, 1 without any now\n");
  std::ifstream file("changes.json");
  const std::string json{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(json.find("\"change\": \"b: was clean"), std::string::npos) << json;
  EXPECT_EQ(check("judge --store s --database " DATABASE).status, 0);
  EXPECT_EQ(check("judge --store none --database new.xml").status, 2);
}

TEST_F(StoreChecker, TheCatalogueHasAllFormats) {
  writePage("</title><b>\xff", "GetSerial");
  ASSERT_EQ(stored("a b '</title><b>\xff'").status, 1);
  const Output text = check("catalogue --store s");
  EXPECT_NE(text.text.find("  findings: 2\n"), std::string::npos) << text.text;
  EXPECT_NE(text.text.find("MORVANE-NAVERTIX-AUDIO.GetSerial, undocumented"), std::string::npos) << text.text;
  EXPECT_NE(check("catalogue --store s --format json").text.find("\"findings\": 2"), std::string::npos);
  EXPECT_NE(check("catalogue --store s --format csv").text.find("verdict,\"findings\",\"\",2,0\r\n"),
            std::string::npos);
  const Output uses = check("catalogue --store s --uses AUDIO.GetSerial");
  EXPECT_NE(uses.text.find("a/main.js:3:3: MORVANE-NAVERTIX-AUDIO.GetSerial (variable, likely)\n"), std::string::npos)
      << uses.text;
  EXPECT_NE(uses.text.find("AUDIO.GetSerial: 2 calls in 2 applications\n"), std::string::npos) << uses.text;
  write("b/index.html", R"(<object id="tv" classid="MORVANE-NAVERTIX-AUDIO"></object>
                           <object id="tu" classid="MORVANE-NAVERTIX-TUNER"></object>)");
  write("b/main.js", "function f() { $('tv').GetSerial2(); }\nfunction g() { $('tu').GetSerial2(); }\n");
  fs::copy("b", "c", fs::copy_options::recursive);
  ASSERT_EQ(stored("--run two b c").status, 1);
  const Output two = check("catalogue --store s --uses GetSerial2");
  EXPECT_NE(two.text.find("GetSerial2: 4 calls in 2 applications\n"), std::string::npos) << two.text;
  EXPECT_EQ(check("catalogue --store s --output c.html --output c.csv").status, 2);
  ASSERT_EQ(check("catalogue --store s --output c.html").status, 0);
  std::ifstream file("c.html");
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(page.find("<svg"), std::string::npos);
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find("http://"), std::string::npos);
  EXPECT_EQ(page.find("https://"), std::string::npos);
}

TEST_F(StoreChecker, PartsOfAListMakeTheWhole) {
  for (int i = 0; i < 6; ++i)
    writePage("app" + std::to_string(i), i % 2 == 0 ? "GetSerial" : "GetVolume" + std::to_string(i));
  for (int part = 1; part <= 3; ++part)
    (void)check("--quiet --store s" + std::to_string(part) + " --shard " + std::to_string(part) + "/3 app?");
  ASSERT_EQ(check("merge s s3 s1 s2").status, 0);
  EXPECT_EQ(value("SELECT count(*) FROM applications"), "6");
  EXPECT_EQ(check("--shard 4/3 app0").status, 2);
  EXPECT_EQ(check("merge s none").status, 2);
}

TEST_F(StoreChecker, AnApplicationThatChangesWhileItIsReadIsTold) {
  Options options;
  options.store = "s";
  options.database = DATABASE;
  StoreRun run(options, {DATABASE});
  const auto report = [&](const std::string& name, const std::function<void()>& meanwhile) {
    return run.inspect(name, [&] {
      meanwhile();
      return ApplicationReport();
    });
  };
  const std::string before = store::hexOf(store::contentOf("a")->sha256);
  const ApplicationReport quiet = report("a", [] {});
  EXPECT_EQ(quiet.failure, "");
  EXPECT_EQ(quiet.content, before);
  std::vector<std::function<void()>> changes;
  changes.emplace_back([] { writePage("a", "GetModel"); });
  changes.emplace_back([] { write("a/more.js", ""); });
  changes.emplace_back([] { fs::remove("a/more.js"); });
  // Back again, by when it is hashed; what was read in between is not known.
  changes.emplace_back(
      [] { fs::last_write_time("a/main.js", fs::last_write_time("a/main.js") + std::chrono::seconds(1)); });
  changes.emplace_back([] { fs::remove_all("a"); });
  for (const std::function<void()>& change : changes) {
    const ApplicationReport told = report("a", change);
    EXPECT_EQ(told.failure, "it changed while it was read");
    EXPECT_EQ(told.verdict, Verdict::notChecked);
    EXPECT_EQ(told.content, "") << "it is tried again";
  }
}

TEST_F(StoreChecker, AStoreThatCannotBeWrittenEndsTheRun) {
  write("s", "no store at all, but something that the user needs");
  const Output output = stored("a b 2>&1");
  EXPECT_EQ(output.status, 2);
  EXPECT_NE(output.text.find("the store 's': it is no store"), std::string::npos) << output.text;
}

}  // namespace
