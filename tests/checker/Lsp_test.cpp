// The language server: as a program with a client that is scripted, and behaves badly; and its parts.

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "CheckerFixture.h"
#include "checker/lsp/MessageReader.h"
#include "checker/lsp/Placeholder.h"
#include "checker/lsp/Server.h"
#include "checker/lsp/TextPosition.h"
#include "checker/run/WorkerProcess.h"

namespace {

using Json = nlohmann::json;

// tarvo-check lsp, and the client's end of its streams.
class Client {
 public:
  explicit Client(const std::string& options = "") {
    int to[2], from[2];
    if (pipe(to) != 0 || pipe(from) != 0) throw std::runtime_error("no pipe");
    process_ = fork();
    if (process_ == 0) {
      dup2(to[0], STDIN_FILENO);
      dup2(from[1], STDOUT_FILENO);
      closefrom(STDERR_FILENO + 1);
      const std::string command = "exec " CHECKER " lsp --database '" DATABASE "' " + options + " 2>/dev/null";
      execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      _exit(127);
    }
    close(to[0]);
    close(from[1]);
    in_ = to[1];
    out_ = from[0];
  }
  ~Client() {
    if (process_ > 0) (void)end();
  }

  void write(const std::string& bytes) const {
    for (std::size_t at = 0; at < bytes.size();) {
      const ssize_t count = ::write(in_, bytes.data() + at, bytes.size() - at);
      ASSERT_GT(count, 0);
      at += static_cast<std::size_t>(count);
    }
  }
  void send(Json message) const {
    message["jsonrpc"] = "2.0";
    write(framed(message.dump()));
  }
  void notify(const std::string& method, const Json& params) const { send({{"method", method}, {"params", params}}); }
  int request(const std::string& method, const Json& params) {
    send({{"id", ++last_}, {"method", method}, {"params", params}});
    return last_;
  }

  // The answer to a request; what else comes is taken note of.
  Json answer(const Json& id) {
    for (;;) {
      const Json message = next();
      if (message.is_null() || (!message.contains("method") && message["id"] == id)) return message;
    }
  }
  Json ask(const std::string& method, const Json& params) { return answer(request(method, params))["result"]; }

  // A message of the server; null if there is none for long, or it has gone.
  Json next() {
    for (;;) {
      if (const auto message = reader_.next()) {
        Json json = Json::parse(message->body);
        const std::string method = json.value("method", "");
        if (method == "textDocument/publishDiagnostics") marks_[json["params"]["uri"]] = json["params"]["diagnostics"];
        if (method == "window/showMessage") shown_ += json["params"]["message"].get<std::string>() + '\n';
        return json;
      }
      pollfd wait{out_, POLLIN, 0};
      char buffer[4096];
      if (poll(&wait, 1, 60'000) != 1) return nullptr;
      const ssize_t count = read(out_, buffer, sizeof buffer);
      if (count <= 0) return nullptr;
      reader_.feed({buffer, static_cast<std::size_t>(count)});
    }
  }

  Json initialize(const std::vector<std::string>& folders) {
    Json list = Json::array();
    for (const std::string& folder : folders)
      list.push_back({{"uri", "file://" + folder}, {"name", "a"}});
    const Json related{{"relatedInformation", true}};
    const Json result = ask("initialize", {{"workspaceFolders", list},
                                           {"capabilities", {{"textDocument", {{"publishDiagnostics", related}}}}}});
    notify("initialized", Json::object());
    return result;
  }
  void open(const std::string& path, const std::string& text) const {
    notify("textDocument/didOpen",
           {{"textDocument", {{"uri", "file://" + path}, {"languageId", "x"}, {"version", 1}, {"text", text}}}});
  }
  void change(const std::string& path, const Json& changes) const {
    notify("textDocument/didChange",
           {{"textDocument", {{"uri", "file://" + path}, {"version", 2}}}, {"contentChanges", changes}});
  }
  void replace(const std::string& path, const std::string& text) const { change(path, {{{"text", text}}}); }

  // The messages at a file, once the newest texts were looked at.
  std::string marks(const std::string& path) {
    (void)ask("textDocument/hover", at(path, 0, 0));
    std::string text;
    for (const Json& mark : marks_["file://" + path]) {
      const Json& start = mark["range"]["start"];
      text += start["line"].dump() + ':' + start["character"].dump() + ' ' + mark["message"].get<std::string>() + '\n';
    }
    return text;
  }
  const Json& marksOf(const std::string& path) { return marks_["file://" + path]; }
  std::string shown() const { return shown_; }

  static Json at(const std::string& path, int line, int character) {
    return {{"textDocument", {{"uri", "file://" + path}}}, {"position", {{"line", line}, {"character", character}}}};
  }

  pid_t process() const { return process_; }

  // Closes its standard input, and gives the exit status, or that of the shell for a signal.
  int end() {
    close(in_);
    int status = 0;
    waitpid(process_, &status, 0);
    close(out_);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  pid_t process_ = -1;
  int in_ = -1;
  int out_ = -1;
  int last_ = 0;
  MessageReader reader_{std::size_t{1} << 30};
  std::map<std::string, Json> marks_;
  std::string shown_;
};

class Lsp : public Checker {
 protected:
  Lsp() : root_(directory_ + "/cwd/www") {
    ::fs::create_directories(root_);
    write("www/index.html", kPage + "<script src='a.js'></script>\n");
    write("www/a.js", kCall);
  }

  std::string root_;
  const std::string kMark = "undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER\n";
};

TEST_F(Lsp, MarksTheNewestTexts) {
  Client client;
  client.initialize({root_});
  const std::string script = root_ + "/a.js";
  EXPECT_EQ(client.marks(script), "2:4 " + kMark) << "as it is on the disk";
  const Json related = client.marksOf(script)[0]["relatedInformation"];
  EXPECT_EQ(related.front()["location"]["uri"], "file://" + root_ + "/index.html");
  EXPECT_EQ(related.front()["location"]["range"]["end"]["character"], 49);

  // Two characters that are four units, and one that is one.
  client.open(
      script,
      "/* \xF0\x9F\x93\xBA\xF0\x9F\x93\xBA\xC3\xA4 */ var tv = document.getElementById('tv'); tv.GetVersion();\n");
  EXPECT_EQ(client.marks(script), "");
  const auto insert = [](int line, int begin, int end, const std::string& text) -> Json {
    return {
        {"range", {{"start", {{"line", line}, {"character", begin}}}, {"end", {{"line", line}, {"character", end}}}}},
        {"text", text}};
  };
  client.change(script, {insert(0, 58, 65, "Serial"), insert(0, 8, 8, "!"), insert(0, 12, 12, "\r\n")});
  EXPECT_EQ(client.marks(script), "1:44 " + kMark);
  client.change(script, {insert(7, 0, 0, "\ntv.GetUuid();"), insert(0, 3, 7, "")});
  EXPECT_EQ(client.marks(script), "1:44 " + kMark + "3:3 undocumented API 'GetUuid' on MORVANE-NAVERTIX-TUNER\n");
  client.open(root_ + "/index.html", "<p>no element</p><script src='a.js'></script>");
  EXPECT_EQ(client.marks(script), "");
  client.open(root_ + "/new.html", kPage + "<script src='fresh.js'></script>");
  client.open(root_ + "/fresh.js", "tv.GetModel();");
  EXPECT_EQ(client.marks(root_ + "/fresh.js"), "0:3 undocumented API 'GetModel' on MORVANE-NAVERTIX-TUNER\n")
      << "of files that are not there yet";
  for (const char* name : {"/new.html", "/fresh.js", "/index.html", "/a.js"})
    client.notify("textDocument/didClose", {{"textDocument", {{"uri", "file://" + root_ + name}}}});
  EXPECT_EQ(client.marks(script), "2:4 " + kMark);
  EXPECT_EQ(client.marks(root_ + "/fresh.js"), "");
  (void)client.ask("shutdown", nullptr);
  client.notify("exit", nullptr);
  EXPECT_EQ(client.end(), 0);
}

// What is known of a place: its text has a | where the cursor is.
TEST_F(Lsp, CompletesWhatAVariableHolds) {
  Client client;
  client.initialize({root_});
  const std::string script = root_ + "/a.js";
  const std::string tuner = "GetChannel", audio = "GetVolume", none;
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"var t = document.getElementById('tv');\nt.|\nvar x = 1;", tuner},
      {"var t = document.getElementById('tv');\nif (t.Get|) { t.GetSerial(); }", tuner},
      {"function f(t) { return t?.| }\nf(document.getElementById('tv'));", tuner},
      {"document.getElementById('tv')\n  .Ge|(1)", tuner},
      {"var a = document.createElement('object');\na.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-AUDIO');\n"
       "function g() {\n  a.|",
       audio},
      {"var t = {}; t.|", none},
      {"var t = document.getElementById('tv'); t|", none},
      {"f(...|)", none},
      {"|", none},
  };
  client.open(script, "");
  for (const auto& [marked, expected] : rows) {
    const std::size_t cursor = marked.find('|');
    const std::string text = marked.substr(0, cursor) + marked.substr(cursor + 1);
    client.replace(script, text);
    const TextPosition place = positionOf(Lines(text), cursor);
    const Json items = client.ask("textDocument/completion", Client::at(script, place.line, place.character));
    std::set<std::string> labels;
    for (const Json& item : items.is_array() ? items : Json::array())
      labels.insert(item["label"]);
    EXPECT_EQ(labels.count(expected), expected.empty() ? 0U : 1U) << marked << items;
    EXPECT_TRUE(expected.empty() == labels.empty() && labels.count("GetSerial") == 0) << marked << items;
  }
}

TEST_F(Lsp, TellsOfCallsAndMendsThem) {
  Client client("--accept GetModel");
  client.initialize({root_});
  const std::string script = root_ + "/a.js";
  client.open(
      script,
      "var tv = document.getElementById('tv');\ntv.GetChanel();\ntv.GetVersion();\ntv.GetModel();\nkeep = tv;\n");
  EXPECT_EQ(client.marks(script),
            "1:3 undocumented API 'GetChanel' on MORVANE-NAVERTIX-TUNER; did you mean 'GetChannel'?\n");
  const auto hover = [&](int line, int character) -> std::string {
    const Json result = client.ask("textDocument/hover", Client::at(script, line, character));
    return result.is_null() ? "" : result["contents"]["value"].get<std::string>();
  };
  EXPECT_EQ(hover(1, 5).find("MORVANE-NAVERTIX-TUNER.GetChanel: undocumented\n"), 0U);
  EXPECT_NE(hover(1, 5).find("\nlook-up 'tv': " + script + ":1\n"), std::string::npos) << hover(1, 5);
  EXPECT_EQ(hover(2, 0).find("MORVANE-NAVERTIX-TUNER.GetVersion: documented\nelement: "), 0U) << hover(2, 0);
  EXPECT_EQ(hover(3, 5).find("MORVANE-NAVERTIX-TUNER.GetModel: undocumented, but accepted"), 0U) << hover(3, 5);
  EXPECT_EQ(hover(4, 8), "");
  for (const auto& [line, character] : std::vector<std::pair<int, int>>{{0, 5}, {1, 1}, {2, 8}, {4, 8}}) {
    const Json place = client.ask("textDocument/definition", Client::at(script, line, character));
    ASSERT_TRUE(place.is_object()) << line;
    EXPECT_EQ(place["uri"], "file://" + root_ + "/index.html") << line;
    EXPECT_EQ(place["range"]["start"], (Json{{"line", 0}, {"character", 0}})) << line;
  }
  EXPECT_EQ(client.ask("textDocument/definition", Client::at(script, 4, 2)), nullptr);
  Json place = Client::at(script, 1, 4);
  place["range"] = {{"start", place["position"]}, {"end", place["position"]}};
  const Json actions = client.ask("textDocument/codeAction", place);
  ASSERT_EQ(actions.size(), 1U);
  const Json& edit = actions[0]["edit"]["changes"]["file://" + script][0];
  client.change(script, {{{"range", edit["range"]}, {"text", edit["newText"]}}});
  EXPECT_EQ(client.marks(script), "");
}

TEST_F(Lsp, OverloadsEndWithTheNewestText) {
  Client client;
  client.initialize({root_});
  const std::string script = root_ + "/a.js";
  client.open(script, kCall);
  std::vector<int> asked;
  for (int i = 0; i < 300; ++i) {
    client.replace(script, kCall + std::string(static_cast<std::size_t>(i % 7), '\n') + "// " + std::to_string(i));
    asked.push_back(
        client.request(i % 2 == 0 ? "textDocument/hover" : "textDocument/completion", Client::at(script, 2, 4)));
  }
  client.replace(script, "\n\n\n" + kCall);
  client.notify("$/cancelRequest", {{"id", asked.back()}});
  const int last = client.request("textDocument/hover", Client::at(script, 5, 5));
  std::set<int> answered;
  while (answered.count(last) == 0) {
    const Json message = client.next();
    ASSERT_FALSE(message.is_null());
    if (!message.contains("method")) answered.insert(message["id"].get<int>());
  }
  EXPECT_EQ(client.marks(script), "5:4 " + kMark);
  for (const int id : asked)
    EXPECT_EQ(answered.count(id), 1U) << "every request is answered";
}

TEST_F(Lsp, OutlivesNonsense) {
  Client client;
  EXPECT_EQ(client.answer(client.request("textDocument/hover", Json::object()))["error"]["code"], -32002);
  client.write("hello\r\n\r\n\n\nContent-Length: x\r\nContent-Length: -5\r\n\r\n" + std::string(5000, 'z') + "\r\n");
  client.initialize({root_});
  const std::vector<std::pair<std::string, int>> bodies = {
      {"", -32700},
      {"{", -32700},
      {"\xFF\xFE", -32700},
      {std::string(100'000, '['), -32700},
      {"[]", -32600},
      {"null", -32600},
      {R"({"id": 1, "method": 7})", -32600},
      {R"({"id": 1, "method": "no/such"})", -32601},
      {R"({"id": 1, "method": "initialize"})", -32600},
      {R"({"id": 1, "method": "textDocument/hover"})", -32602},
      {R"({"id": 1, "method": "textDocument/hover", "params": [1]})", -32602},
      {R"({"id": 1, "method": "textDocument/hover", "params": {"textDocument": {"uri": 1}, "position": {}}})", -32602},
  };
  for (const auto& [body, code] : bodies) {
    client.write(framed(body));
    Json message = client.next();
    while (message.contains("method"))
      message = client.next();
    EXPECT_EQ(message["error"]["code"], code) << body.substr(0, 80) << message;
  }
  const std::string script = root_ + "/a.js";
  for (const char* body : {R"({"method": "textDocument/didChange", "params": {}})", R"({"id": 9, "result": null})",
                           R"({"method": "textDocument/didOpen", "params": {"textDocument": {"uri": "untitled:1"}}})"})
    client.write(framed(body));
  client.open(script, kCall);
  client.change(script, {{{"text", 5}}});
  client.change(
      script,
      {{{"text", "x"},
        {"range",
         {{"start", {{"line", -7}, {"character", 1'000'000}}}, {"end", {{"line", 1'000'000}, {"character", -1}}}}}}});
  client.replace(script, kCall);
  client.write("Content-Length: 70000000\r\n\r\n");
  for (int i = 0; i < 70; ++i)
    client.write(std::string(1'000'000, 'x'));
  EXPECT_EQ(client.answer(nullptr)["error"]["code"], -32600);
  EXPECT_EQ(client.marks(script), "2:4 " + kMark) << "and works on";
  client.write("Content-Length: 100\r\n\r\n{\"half\":");
  EXPECT_EQ(client.end(), 1);
}

TEST_F(Lsp, OutlivesApplicationsThatBreakTheirProcess) {
  std::vector<std::string> folders{root_};
  for (const char* fault : {"fault-crash", "fault-hang", "fault-silent", "fault-memory"}) {
    if (!kIsMemoryBounded && fault == std::string("fault-memory")) continue;
    folders.push_back(directory_ + "/cwd/" + fault);
    fs::create_directories(folders.back());
  }
  Client client("--timeout 2 --memory 512");
  client.initialize(folders);
  for (std::size_t i = 1; i < folders.size(); ++i)
    EXPECT_EQ(client.marks(folders[i] + "/a.js"), "");
  for (const char* text :
       {"fault-crash: the process that checked it was ended by SIGSEGV", "fault-hang: it takes longer",
        "fault-silent: the process that checks it ended", kIsMemoryBounded ? "fault-memory: it takes " : ""})
    EXPECT_NE(client.shown().find(text), std::string::npos) << text << client.shown();
  EXPECT_EQ(client.marks(root_ + "/a.js"), "2:4 " + kMark);
  kill(client.process(), SIGTERM);
  EXPECT_EQ(client.end(), 128 + SIGTERM);
  EXPECT_TRUE(isTidy());
}

TEST_F(Lsp, TakesAFileOutsideOfAllFoldersForAnApplication) {
  Client client;
  client.initialize({});
  client.notify("textDocument/didOpen", {{"textDocument", {{"uri", "file://" + root_ + "/a%20b.html"}, {"text", ""}}}});
  client.notify("textDocument/didChange",
                {{"textDocument", {{"uri", "file://" + root_ + "/a%20b.html"}}},
                 {"contentChanges", {{{"text", kPage + "<script>tv.GetSerial();</script>"}}}}});
  const Json place = {{"textDocument", {{"uri", "file://" + root_ + "/a%20b.html"}}},
                      {"position", {{"line", 1}, {"character", 12}}}};
  const Json hover = client.ask("textDocument/hover", place);
  ASSERT_TRUE(hover.is_object());
  EXPECT_EQ(client.marksOf(root_ + "/a%20b.html").size(), 1U) << "by the client's own name";
  EXPECT_EQ(client.marksOf(root_ + "/a.js").size(), 0U) << "that is another application";
}

TEST(LspServer, SaysWhatItCannotDoWithoutFlowAnalysis) {
  Server server({}, false);
  server.receive(R"({"id": 1, "method": "initialize", "params": {"rootUri": "file:///app"}})", {});
  server.receive(R"({"method": "initialized", "params": {}})", {});
  const std::string output = server.takeOutput();
  EXPECT_EQ(output.find("completionProvider"), std::string::npos);
  EXPECT_NE(output.find("built without flow analysis"), std::string::npos);
  const auto request = server.nextLook({});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->application, "/app");
}

TEST(LspServer, ThrowsAwayWhatOlderTextsGave) {
  Server server({}, true);
  const auto take = [&](const std::string& body) { server.receive(body, {}); };
  take(R"({"id": 1, "method": "initialize", "params": {"rootUri": "file:///app"}})");
  ASSERT_TRUE(server.nextLook({}));
  take(R"({"method": "textDocument/didOpen", "params": {"textDocument": {"uri": "file:///app/a.js", "text": "1"}}})");
  (void)server.takeOutput();
  LookCall call;
  call.place.path = "/app/a.js";
  call.severity = LookCall::Severity::error;
  Look look;
  look.calls.push_back(call);
  server.takeLook(look);
  EXPECT_EQ(server.takeOutput(), "");
  const auto request = server.nextLook({});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->unsaved, (UnsavedTexts{{"/app/a.js", "1"}}));
  server.takeLook(look);
  EXPECT_NE(server.takeOutput().find("publishDiagnostics"), std::string::npos);
  EXPECT_FALSE(server.nextLook({}));
  EXPECT_FALSE(server.nextTime());
}

TEST(LspMessages, AreReadInAnyPieces) {
  const std::string stream = "rubbish\nContent-Type: x\r\nCONTENT-LENGTH:  3 \r\n\r\nabc" + framed("") +
                             framed("12345") + "Content-Length: 2\n\nno";
  for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{7}, stream.size()}) {
    MessageReader reader(4);
    std::vector<std::string> bodies;
    for (std::size_t at = 0; at < stream.size(); at += piece) {
      reader.feed(stream.substr(at, piece));
      while (const auto message = reader.next())
        bodies.push_back(message->isTooLarge ? "too large" : message->body);
    }
    EXPECT_EQ(bodies, (std::vector<std::string>{"abc", "", "too large", "no"})) << piece;
  }
}

}  // namespace
