// The trial run with a real Chromium: what is recorded, and that no page escapes its bounds.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <ostream>

#include "trial/Browser.h"
#include "trial/TrialFixture.h"

namespace {

constexpr const char* kObjects =
    "<object id=tuner classid='clsid:MORVANE-NAVERTIX-TUNER'></object>"
    "<object id=audio classid='clsid:MORVANE-NAVERTIX-AUDIO'></object>"
    "<object id=kob classid='clsid:MORVANE-NAVERTIX-KOB'></object>"
    "<object id=film type='video/mp4'></object>";

trial::Result runInput(const trial::Input& input, unsigned seconds) {
  const TrialDirectory directory;
  trial::Options options;
  options.directory = directory.path();
  options.secondsPerPage = seconds;
  return trial::run(input, options);
}

std::string pageOf(const std::string& body) {
  return "<!DOCTYPE html><html><body>" + std::string(kObjects) + "\n" + body + "</body></html>";
}

// Time enough for a machine that has much else to do.
trial::Result runPage(const std::string& body, std::vector<trial::File> others = {}, unsigned seconds = 60) {
  return runInput(applicationOf(pageOf(body), std::move(others)), seconds);
}

std::string scriptOf(const std::string& code) {
  return "<script>\nvar tuner = document.getElementById('tuner');\n" + code + "\n</script>";
}

std::string incompleteOf(const trial::Result& result) {
  std::string text = result.failure;
  for (const trial::Incomplete& one : result.incomplete)
    text += one.page + ": " + one.reason + '\n';
  return text;
}

struct Recorded {
  const char* name;
  std::string body;
  std::multiset<std::string> calls;
  std::size_t undetermined = 0;
};

const std::vector<Recorded> kRecorded{
    {"Direct", scriptOf("tuner.Open(); tuner.GetSerial(); tuner.Missing; film.GetSerial && 1;"), {"GetSerial"}},
    {"AllWaysOfCalling",
     scriptOf(
         "tuner.A1.call(tuner); tuner.A2.apply(tuner, [1]); tuner.A3.bind(tuner)(); Reflect.apply(tuner.A4, tuner, []);"
         "var f = tuner['A' + 5]; f(); new tuner.A6(); [1].forEach(tuner.A7); with (document) tuner.A8();"),
     {"A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8"}},
    {"WaysToTheObject",
     scriptOf("document.embeds[0].B1(); document.embeds.audio.B2(); window.tuner.B3(); document.plugins[1].B4();"
              "document.querySelector('object').B5(); document.getElementsByTagName('object')[0].B6();"),
     {"B1", "B2", "B3", "B4", "B5", "B6"}},
    {"MadeByScript",
     scriptOf(
         "var o = document.createElement('object'); o.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-TUNER'); o.C1();"
         "o.setAttribute('classid', 'other'); try { o.C2(); } catch (e) {}"
         "var d = document.createElement('div'); document.body.appendChild(d);"
         "d.innerHTML = '<embed id=e classid=\"clsid:MORVANE-NAVERTIX-AUDIO\">'; e.C3();"
         "film.classid = 'clsid:MORVANE-NAVERTIX-AUDIO'; film.C4();"),
     {"C1", "C3", "C4"}},
    {"ExtensionPlugIn",
     scriptOf("kob.Execute('Start'); kob.Execute('Stop', 1); kob.Execute(location.hash.slice(1));"),
     {"Stop"},
     1},
    {"Handlers",
     "<a id=x onclick=\"tuner.D1()\">x</a><select onchange='tuner.D2()'><option>1<option>2</select>"
     "<img src=none.png onerror='tuner.D3()'><form onsubmit='tuner.D4(); return false'></form>" +
         scriptOf("document.onkeydown = function (e) { if (e.keyCode === 403) tuner.D5(); if (e.key == 'Enter') "
                  "tuner.D6(); };"
                  "window.addEventListener('hashchange', function () { tuner.D7(); });"
                  "document.addEventListener('my:event', function () { tuner.D8(); });"
                  "tuner.OnReady = function () { tuner.D9(); }; tuner.Open({done: function () { tuner.D10(); }});"
                  "window.onunload = function () { tuner.D11(); };"),
     {"D1", "D10", "D11", "D2", "D3", "D4", "D5", "D6", "D7", "D8", "D9"}},
    {"OtherWaysOfUse",
     "<div id=box draggable=true style='width: 90px; height: 3000px'>x</div><video id=v></video><tv-menu></tv-menu>" +
         scriptOf(
             "box.addEventListener('touchstart', function (e) { if (e.touches[0].clientX > 0) tuner.J1(); });"
             "box.addEventListener('dragstart', function (e) { e.dataTransfer.setData('text', 'own'); });"
             "box.addEventListener('drop', function (e) { if (e.dataTransfer.getData('text') === 'own') tuner.J2(); });"
             "box.addEventListener('wheel', function (e) { if (e.deltaY < 0) tuner.J3(); });"
             "box.onmousedown = function (e) { document.onmousemove = function (m) {"
             "if (m.clientX !== e.clientX) tuner.J4(); }; };"
             "v.addEventListener('seeked', function () { tuner.J5(); });"
             "customElements.define('tv-menu', class extends HTMLElement { connectedCallback() {"
             "var r = this.attachShadow({mode: 'closed'}); r.innerHTML = '<i>x</i>';"
             "r.firstChild.onclick = function () { tuner.J6(); }; } });"
             "var t, last = ''; document.addEventListener('keydown', function (e) {"
             "if (e.keyCode === 13) t = setTimeout(function () { tuner.J7(); }, 1500);"
             "if (e.ctrlKey && e.key === 's') tuner.J8();"
             "last = (last + e.key).slice(-4); if (last === '1379') tuner.J9(); });"
             "document.addEventListener('keyup', function () { clearTimeout(t); });"
             "tuner.OnEvent = function (type) { if (type === 'muted') tuner.J10(); tuner['On' + type](); };"
             "addEventListener('scroll', function () { if (scrollY > 50) tuner.J11(); });"
             "new Audio().onended = function () { tuner.J12(); };"),
     {"J1", "J10", "J11", "J12", "J2", "J3", "J4", "J5", "J6", "J7", "J8", "J9"},
     1},
    {"LaterCode",
     scriptOf("setTimeout(function () { tuner.E1(); }, 3600000); setTimeout('tuner.E2()', 10);"
              "Promise.resolve().then(function () { tuner.E3(); }); requestAnimationFrame(function () { tuner.E4(); });"
              "(async function () { await tuner.Open(); tuner.E5(); })(); var n = 0;"
              "setInterval(function () { if (++n === 3) tuner.E6(); }, 1000);"
              "eval('tuner.E7()'); new Function('tuner.E8()')(); var s = document.createElement('script');"
              "s.text = 'tuner.E9()'; document.body.appendChild(s);"),
     {"E1", "E2", "E3", "E4", "E5", "E6", "E7", "E8", "E9"}},
    {"BothWorlds",
     scriptOf(
         "var x = new XMLHttpRequest(); x.open('GET', 'http://far.away/x'); x.onload = function () { tuner.F1(); };"
         "x.onerror = function () { tuner.F2(); }; x.send();"
         "fetch('http://far.away/y').then(function () { tuner.F3(); }, function () { tuner.F4(); });"
         "if (confirm('?')) tuner.F5(); else tuner.F6();"),
     {"F1", "F2", "F3", "F4", "F5", "F6"}},
    {"NamesNobodyKnows",
     scriptOf("tuner[prompt('?')]();\nvar v = tuner.Open();\ntuner['Get' + v.name]();\n"
              "var x = new XMLHttpRequest(); x.open('GET', 'http://far.away/x'); x.onload = function () {\n"
              "tuner[JSON.parse(x.responseText).method]();\ntuner[JSON.parse(x.responseText).call](); };\n"
              "x.send();\ntuner[undefined]();"),
     {},
     5},
    // The name is a part of what nobody knows, or stands behind a word that the page knows.
    {"NamesInParts",
     "<form id=f><input name=typed></form>" +
         scriptOf(
             "var at = location.hash.split('/')[1]; if (at) tuner[at]();\n"
             "var m = /do=(\\w+)/.exec(location.search); if (m) tuner[m[1]]();\n"
             "var q = new URLSearchParams(location.search); if (q.has('x')) tuner[q.get('x')]();\n"
             "document.cookie.replace(/last=(\\w+)/, function (all, name) { tuner[name](); });\n"
             "addEventListener('message', function (e) {\n"
             "if (/\\.care\\.example$/.test(e.origin) && e.data.kind === 'call' && typeof e.data.name == 'string')\n"
             "tuner['Get' + e.data.name]();\n});\n"
             "f.typed.onchange = function () { var words = this.value.split(' ');\n"
             "if (words[0] === 'sound' && words[1]) audio[words[1]]();\n};\n"
             "var far = 'wss://a.care.example';\n"
             "var does = {set: function (o) {\ntuner['Set' + o.name](); }, get: function (o) {\ntuner[o.name](); }};\n"
             "fetch('http://far.away/orders').then(function (r) { return r.json(); }).then(function (list) {\n"
             "list.forEach(function (order) { if (does[order.kind]) does[order.kind](order); }); });"),
     {},
     7},
    {"AnswersThatFit",
     scriptOf("if (tuner.Open() === 1) tuner.K1(); if (tuner.Start() === 'X200') tuner.K2();\n"
              "var state = tuner.GetVolume(); switch (state) { case 7: tuner.K3(); }\n"
              "tuner.Open(function (result) { if (result === 1) tuner.K5(); });\n"
              "if (localStorage.getItem('step') === 'done') tuner.K6();\n"
              "fetch('http://far.away/a').then(function (r) { return r.json(); }).then(function (reply) {\n"
              "if (reply.status == 'paired' && reply.items.length > 0) tuner.K7(); });\n"
              "var good = 0; function poll() { fetch('http://far.away/b').then(function () { ++good; },\n"
              "function () { if (good > 0) tuner.K8(); }); } poll(); setInterval(poll, 60000);"),
     {"K1", "K2", "K3", "K5", "K6", "K7", "K8"}},
    {"StepsInOrder",
     scriptOf("var on = {live: {R: 'back', P: 'pause'}, pause: {P: 'live', S: 'stop'}, back: {S: 'shot'},\n"
              "stop: {P: 'live'}, shot: {}}, state = 'live';\n"
              "addEventListener('keydown', function (e) {\n"
              "state = on[state][{412: 'R', 19: 'P', 413: 'S'}[e.keyCode]] || state;\n"
              "if (state === 'shot') tuner.L2(); });"),
     {"L2"}},
    {"ResultsGoOn",
     scriptOf("var i, n = tuner.Open(); for (i = 0; i < n.length + 3; ++i) ; while (tuner.Open()) ; for (var a of "
              "tuner.Open()) ;"
              "var o = tuner.Open().list[3].name.split('|')[0].toUpperCase(); tuner.G1(o);"),
     {"G1"}},
    {"LibrariesAsk",
     scriptOf("if (tuner.then) tuner.then(); if (tuner.attachEvent) tuner.attachEvent('onclick', alert);"
              "if (tuner.jQuery1234567890) tuner.jQuery1234567890(); JSON.stringify(tuner); Promise.resolve(tuner);"
              "for (var k in tuner) ; tuner.click(); tuner.toString(); tuner.version.indexOf('x');"),
     {}},
    // What a page patches does not blind the recorder.
    {"PatchedBuiltIns",
     scriptOf(
         "RegExp.prototype.test = RegExp.prototype.exec = function () { return false; };"
         "String.prototype.indexOf = String.prototype.includes = String.prototype.slice = function () { return ''; };"
         "Array.prototype.push = Array.prototype.forEach = Array.prototype[Symbol.iterator] = function () {};"
         "Map.prototype.get = Map.prototype.set = WeakMap.prototype.get = function () { return true; };"
         "Function.prototype.call = Function.prototype.apply = function () {};"
         "JSON.stringify = function () { return ''; }; console.debug = console.log = function () {};"
         "Object.defineProperty(Array.prototype, 0, {set: function () {}});"
         "Error.stackTraceLimit = 0; Error.prepareStackTrace = function () { throw 1; };"
         "Element.prototype.getAttribute = function () { return null; }; Reflect.apply = Reflect.get = null;"
         "Object.prototype.get = Object.prototype.set = Object.prototype.value = Object.prototype.writable = 1;"
         "Proxy = Map = WeakMap = Error = JSON = null; Object.defineProperty = null;"
         "tuner.H1(); tuner.H2.call; setTimeout(function () { tuner.H3(); }, 1);"),
     {"H1", "H3"}},
    {"NamesOfSources", scriptOf("eval('tuner.I1()\\n//# sourceURL=http://application.invalid/www/other.js');"), {"I1"}},
};

// All pages in one browser: what one of them patches or leaves behind must not change what the next one is seen to do.
TEST(Chromium, RecordsCalls) {
  trial::Input input = applicationOf("");
  input.files.clear();
  input.startPages.clear();
  for (const Recorded& row : kRecorded) {
    const std::string path = std::string("www/") + row.name + ".html";
    input.files.push_back({path, pageOf(row.body)});
    input.startPages.push_back(path);
  }
  const trial::Result result = runInput(input, 60);
  EXPECT_EQ(result.failure, "");
  for (const trial::Incomplete& one : result.incomplete)
    EXPECT_EQ(one.page + one.reason.substr(0, 12), "www/PatchedBuiltIns.htmlit has made ") << one.reason;
  for (const char* name : {"RegExp.prototype.test", "WeakMap.prototype.get", "Function.prototype.call",
                           "JSON.stringify", "Error.stackTraceLimit", "Element.prototype.getAttribute"})
    EXPECT_NE(incompleteOf(result).find(std::string(name) + " useless"), std::string::npos) << name;
  EXPECT_EQ(result.pages, input.startPages);
  std::map<std::string, std::multiset<std::string>> calls;
  std::map<std::string, std::size_t> undetermined;
  for (const trial::Call& call : result.calls)
    calls[call.place.path].insert(call.method);
  for (const trial::Call& call : result.undetermined)
    ++undetermined[call.place.path];
  for (const Recorded& row : kRecorded) {
    SCOPED_TRACE(row.name);
    const std::string path = std::string("www/") + row.name + ".html";
    EXPECT_EQ(calls[path], row.calls);
    EXPECT_EQ(undetermined[path], row.undetermined);
    calls.erase(path);
    undetermined.erase(path);
  }
  EXPECT_TRUE(calls.empty() && undetermined.empty()) << "calls without a page";
}

// ---- hostile pages: each within its bounds, with all findings made before
// ----------------------------------------------

constexpr const char* kAnything = "www/index.html: ";

struct Hostile {
  const char* name;
  std::string body;
  std::set<std::string> calls;
  const char* told;  // stands in what was incomplete; kAnything: which bound is met first is a matter of speed
  unsigned seconds = 20;
};

// Names of rows stand in the names of tests; their bytes do not.
void PrintTo(const Hostile& row, std::ostream* stream) {
  *stream << row.name;
}

class HostilePage : public testing::TestWithParam<Hostile> {};

TEST_P(HostilePage, StaysWithinItsBounds) {
  const trial::Result result = runPage(GetParam().body, {}, GetParam().seconds);
  EXPECT_EQ(result.failure, "");
  // The bounds and what a machine takes that has much else to do; without bounds these pages never end.
  EXPECT_LT(result.seconds, GetParam().seconds * trial::kPagesOfTime + 60);
  EXPECT_LT(result.memory, std::uint64_t{3} << 30);
  const auto methods = methodsOf(result.calls);
  for (const std::string& call : GetParam().calls)
    EXPECT_EQ(methods.count(call) > 0, true) << call;
  EXPECT_NE(incompleteOf(result).find(GetParam().told), std::string::npos) << incompleteOf(result);
}

const std::vector<Hostile> kHostile{
    {"EndlessLoopAtLoad", scriptOf("tuner.A1(); for (;;) ;") + scriptOf("tuner.A2();"), {"A1", "A2"}, "ran too long"},
    {"EndlessLoopInEachHandler",
     "<a onclick='tuner.B1(); for (;;) ;'>x</a><a onclick='tuner.B2(); while (true) ;'>y</a>" +
         scriptOf("document.onkeydown = function () { tuner.B3(); for (;;) ; }; tuner.Open(function () { tuner.B4(); "
                  "for (;;) ; });"
                  "setTimeout(function () { tuner.B5(); for (;;) ; }, 1);"),
     {"B1", "B2", "B3", "B4", "B5"},
     "ran too long",
     60},
    {"EndlessMicrotasks", scriptOf("tuner.C1(); (function f() { Promise.resolve().then(f); })();"), {"C1"}, "long"},
    {"Allocation",
     scriptOf("tuner.D1(); var all = []; for (;;) all.push(new Uint8Array(64 << 20).fill(1));"),
     {"D1"},
     "memory"},
    {"AllocationOfTexts",
     scriptOf("tuner.E1(); var part = Array(8192).join('x'), all = []; for (;;) all.push(Array(1024).join(part));"),
     {"E1"},
     kAnything},
    {"PopUps",
     "<a onclick='for (var i = 0; i < 20; ++i) window.open(location.href); tuner.F1();' href='other.html' "
     "target=_blank>x</a>" +
         scriptOf("for (var i = 0; i < 20; ++i) window.open('about:blank'); tuner.F2();"),
     {"F1", "F2"},
     ""},
    {"SelfNestingFrames",
     scriptOf("tuner.G1(); for (var i = 0; i < 3; ++i) { var f = document.createElement('iframe'); "
              "f.src = location.pathname + '?' + location.search.slice(1) + i; document.body.appendChild(f); }"),
     {"G1"},
     kAnything},
    {"SelfNestingText",
     scriptOf("tuner.H1(); var me = document.documentElement.outerHTML; setInterval(function () {"
              "var f = document.createElement('iframe'); f.srcdoc = me; document.body.appendChild(f); }, 1);"),
     {"H1"},
     kAnything},
    {"Workers",
     scriptOf("tuner.I1(); var u = URL.createObjectURL(new Blob(['for (;;) ;'])); for (var i = 0; i < 50; ++i) new "
              "Worker(u);"
              "var f = document.createElement('iframe'); document.body.appendChild(f);"
              "for (i = 0; i < 50; ++i) new f.contentWindow.Worker(u);"),
     {"I1"},
     ""},
    {"Dialogs",
     scriptOf("for (var i = 0; i < 10000; ++i) { alert(1); confirm(2); prompt(3); print(); } tuner.J1();"),
     {"J1"},
     ""},
    {"NavigationToItself",
     scriptOf("tuner.K1(); location.reload(); setInterval(function () { location.href = location.pathname; }, 1);"),
     {"K1"},
     ""},
    {"OtherSchemes",
     scriptOf(
         "['file:///etc/passwd', 'chrome://crash', 'about:blank', 'mailto:a@b', 'tel:1', 'javascript:1', "
         "'data:text/html,x',"
         "'view-source:http://a/', URL.createObjectURL(new Blob(['x'], {type: 'text/html'}))].forEach(function (u) {"
         "try { location.href = u; } catch (e) {} }); setTimeout(function () { tuner.L1(); }, 50);"),
     {"L1"},
     ""},
    {"Downloads",
     "<a id=d download='x' href='data:application/octet-stream,x'>x</a>" +
         scriptOf("for (var i = 0; i < 100; ++i) d.click(); location = 'x.bin'; setTimeout(function () { tuner.M1(); "
                  "}, 5);"),
     {"M1"},
     ""},
    {"ManyElements",
     "<div id=many onclick='tuner.N1()'></div>" + scriptOf("var h = ''; for (var i = 0; i < 100000; ++i) h += '<i "
                                                           "onclick=\"tuner.N2()\">x</i>'; many.innerHTML = h + '<b "
                                                           "onclick=\"tuner.N3()\">x</b>';"),
     {"N1", "N2", "N3"},
     "",
     60},
    {"AMillionCalls",
     scriptOf("for (var i = 0; i < 1000000; ++i) tuner.O1(i);") + scriptOf("tuner.O2();"),
     {"O1", "O2"},
     ""},
    {"AMillionMethods",
     scriptOf("tuner.P1(); for (var i = 0; i < 1000000; ++i) tuner['P' + i + 'x']();"),
     {"P1"},
     kAnything},
    {"NoisyConsole",
     scriptOf("tuner.Q1(); for (var i = 0; i < 200000; ++i) { console.log('x'.repeat(1000)); console.debug(i); } "
              "tuner.Q2();"),
     {"Q1", "Q2"},
     ""},
    {"LargeErrors",
     scriptOf("tuner.R1(); setTimeout(function () { throw new Error('x'.repeat(1 << 28)); }, 1); tuner.R2();"),
     {"R1", "R2"},
     kAnything},
    {"LargeArguments", scriptOf("tuner.S1('x'.repeat(1 << 28), {toString: function () { for (;;) ; }});"), {"S1"}, ""},
    {"DetectsAutomation",
     scriptOf("if (!navigator.webdriver && !/Headless/.test(navigator.userAgent) && !window.callPhantom) tuner.T1();"
              "if (Object.keys(window).filter(function (k) { return /driver|record|tarvo|trial/i.test(k); }).length "
              "=== 0) tuner.T2();"),
     {"T1", "T2"},
     ""},
    {"ClosesItself",
     scriptOf("tuner.U1(); window.close(); document.open(); document.write('x'); document.close(); tuner.U2();"),
     {"U1", "U2"},
     ""},
    {"DeepRecursion",
     scriptOf(
         "tuner.V1(); function f() { try { f(); } finally { tuner.V2(); } } try { f(); } catch (e) {} tuner.V3();"),
     {"V1", "V3"},
     ""},
    {"Debugger", scriptOf("tuner.W1(); debugger; tuner.W2();"), {"W1", "W2"}, ""},
    {"TimerFlood", scriptOf("tuner.X1(); function f() { setTimeout(f, 0); setTimeout(f, 0); } f();"), {"X1"}, ""},
};

INSTANTIATE_TEST_SUITE_P(Pages, HostilePage, testing::ValuesIn(kHostile),
                         [](const auto& row) { return std::string(row.param.name); });

// Each meets one bound, and no other.
struct Bound {
  const char* name;
  std::string body;
  const char* told;
};

const std::vector<Bound> kBounds{
    {"Frames",
     scriptOf("var h = ''; for (var i = 0; i < 38; ++i) h += '<iframe src=\"none.html?' + i + '\"></iframe>';"
              "document.body.insertAdjacentHTML('beforeend', h);"),
     "it has more frames than are loaded"},
    {"DrivenFrames",
     scriptOf("for (var i = 0; i < 45; ++i) document.body.appendChild(document.createElement('iframe')).srcdoc = 'x';"),
     "it has more frames than are driven"},
    {"Methods", scriptOf("for (var i = 0; i < 2100; ++i) tuner['P' + i + 'x']();"),
     "it called more methods than are recorded"},
    {"Elements",
     scriptOf("var h = ''; for (var i = 0; i < 16000; ++i) h += '<i id=x' + i + ' onclick=\"void ' + i + '\">x</i>';"
              "document.body.insertAdjacentHTML('beforeend', h);"),
     "it has more elements than are tried"},
    {"Callbacks", scriptOf("for (var i = 0; i < 600; ++i) (function () { tuner.Open(function () { return 1; }); })();"),
     "it gave plug-ins more functions than are called"},
};

TEST(ChromiumBounds, AreMetOneByOne) {
  trial::Input input = applicationOf("");
  input.files.clear();
  input.startPages.clear();
  std::set<std::string> told;
  for (const Bound& row : kBounds) {
    const std::string path = std::string("www/") + row.name + ".html";
    input.files.push_back({path, pageOf(row.body + scriptOf("tuner.After();"))});
    input.startPages.push_back(path);
    told.insert(path + ": " + row.told);
  }
  const trial::Result result = runInput(input, 60);
  std::set<std::string> found;
  for (const trial::Incomplete& one : result.incomplete)
    found.insert(one.page + ": " + one.reason);
  EXPECT_EQ(found, told);
  std::set<std::string> after;
  for (const trial::Call& call : result.calls)
    if (call.method == "After") after.insert(call.place.path);
  EXPECT_EQ(after.size(), kBounds.size() - 1);  // the methods were spent before
}

// ---- places, pages, and what stays behind
// --------------------------------------------------------------------------------

TEST(ChromiumPlaces, StandInShippedFiles) {
  const trial::Result result = runPage(
      "<script src='js/jquery-1.8.js'></script><script src='js/main.js'></script>\n<p>\n"
      "<b id=b onclick='tuner.InHandler()'>x</b>\n<script>\n  tuner.Inline();</script>",
      {{"www/js/jquery-1.8.js", "function each(f) { f(); }\nfunction callIt(o, m) { o[m](); }"},
       {"www/js/main.js",
        "var x = 'ä';\neach(function () {\n  x = 'ä'; tuner.InMain();\n});\n"
        "callIt(tuner, 'ByLibrary');\nvar made = eval('(function () { tuner.Made(); })');\nmade();"}});
  std::multiset<std::string> places;
  for (const trial::Call& call : result.calls)
    places.insert(call.method + " " + call.place.path + ":" + std::to_string(call.place.line) + ":" +
                  std::to_string(call.place.column));
  EXPECT_EQ(places, (std::multiset<std::string>{"ByLibrary www/js/main.js:5:1", "InHandler www/index.html:4:24",
                                                "InMain www/js/main.js:3:18", "Inline www/index.html:6:9",
                                                "Made www/js/main.js:6:12"}));
}

// A frame is driven before another one puts a page in its place.
TEST(ChromiumFrames, AreDrivenBeforeTheyGo) {
  const trial::Result result = runPage(
      "<iframe src=menu.html></iframe><iframe name=content src=home.html></iframe>",
      {{"www/menu.html", "<script>onkeydown = function () { parent.content.location = 'other.html'; }</script>"},
       {"www/home.html", "<a onclick='parent.tuner.A1()'>x</a>"},
       {"www/other.html", "<a onclick='parent.tuner.A2()'>x</a>"}});
  EXPECT_EQ(incompleteOf(result), "");
  EXPECT_EQ(methodsOf(result.calls), (std::multiset<std::string>{"A1", "A2"}));
}

TEST(ChromiumPages, AreThoseThatTheApplicationGoesTo) {
  const auto page = [](const std::string& call) { return kObjects + scriptOf(call); };
  const trial::Result result = runPage("<a href='second.html?x=1'>x</a><iframe src='frame.html'></iframe>",
                                       {{"www/second.html", page("tuner.Second(); location.replace('/third.html');")},
                                        {"www/third.html", page("tuner.Third();")},
                                        {"www/frame.html", page("tuner.Frame();")},
                                        {"www/alone.html", page("tuner.Alone();")},
                                        {"www/js/never.js", "function f() {}"}});
  EXPECT_EQ(methodsOf(result.calls), (std::multiset<std::string>{"Alone", "Frame", "Second", "Third"}));
  EXPECT_EQ(result.pages,
            (std::vector<std::string>{"www/index.html", "www/second.html", "www/third.html", "www/alone.html"}));
  bool isNeverTold = false;
  for (const trial::FileCoverage& file : result.coverage)
    isNeverTold = isNeverTold || (file.path == "www/js/never.js" && file.bytes == 15 && file.bytesRun == 0);
  EXPECT_TRUE(isNeverTold);
}

TEST(ChromiumCoverage, TellsWhatNeverRan) {
  const trial::Result result = runPage("<script src=a.js></script>",
                                       {{"www/a.js", "function never() { return 1; }\nfunction ran() {}\nran();"}});
  ASSERT_EQ(result.coverage.size(), 1U);
  EXPECT_EQ(result.coverage[0].functions, 3U);
  EXPECT_EQ(result.coverage[0].functionsRun, 2U);
  EXPECT_EQ(result.coverage[0].bytes - result.coverage[0].bytesRun, 30U);
}

// Functions that never ran, and those of the last page, which nothing but such a function goes to.
constexpr const char* kUncalled =
    "var tuner = document.getElementById('tuner');\n"
    "function plain(a) { tuner.A1(a); tuner['Get' + a](); }\n"
    "var app = {dev: tuner, method: function () { this.dev.A2(); }, get it() { return this.dev.A3(); }};\n"
    "class Base { constructor() { this.d = tuner; tuner.A4(); } run() { this.d.A5(); } }\n"
    "class Derived extends Base { more() { this.d.A6(); } }\n"
    "(function () { function closure() { return function inner() { tuner.A7(); }; } window.kept = [closure]; })();\n"
    "function later() { setTimeout(function () { tuner.A8(); }, 1000); location.href = 'alone.html'; }\n"
    "function hangs() { tuner.A9(); for (;;) ; }\n"
    "function behind() { tuner.A10(); both(); return tuner; }\n"
    "function* steps() { tuner.A11(); }\n"
    "function both() { tuner.B1(); } both();\n";

TEST(ChromiumUncalled, IsCalledWhenThatIsAskedForAndMarked) {
  const auto page = [](const char* script) { return kObjects + std::string("<script src=") + script + "></script>"; };
  trial::Input input = applicationOf(page("a.js"), {{"www/a.js", kUncalled},
                                                    {"www/alone.html", kObjects + scriptOf("tuner.C1();")},
                                                    {"www/jquery.js", "function f() { tuner.D1(); }"},
                                                    {"www/library.html", page("jquery.js")}});
  const auto found = [&](bool callsUncalled) {
    const TrialDirectory directory;
    trial::Options options;
    options.directory = directory.path();
    options.secondsPerPage = 60;
    options.callsUncalled = callsUncalled;
    const trial::Result result = trial::run(input, options);
    EXPECT_EQ(result.failure, "");
    EXPECT_TRUE(result.undetermined.empty());
    std::pair<std::set<std::string>, std::set<std::string>> methods;
    for (const trial::Call& call : result.calls)
      (call.isForced ? methods.second : methods.first).insert(call.method);
    std::uint64_t functions = 0;
    for (const trial::FileCoverage& file : result.coverage)
      functions += file.functionsRun;
    return std::make_tuple(methods.first, methods.second, functions);
  };
  const std::set<std::string> called{"B1", "C1"};
  const auto [first, none, functions] = found(false);
  EXPECT_EQ(first, called);
  EXPECT_TRUE(none.empty());
  const auto [second, forced, functionsAgain] = found(true);
  EXPECT_EQ(second, called);
  EXPECT_EQ(forced, (std::set<std::string>{"A1", "A10", "A11", "A2", "A3", "A4", "A5", "A6", "A7", "A8", "A9"}));
  EXPECT_EQ(functionsAgain, functions);  // what the trial called is no part of what ran
}

// The tab that it is called in has that page already.
TEST(ChromiumUncalled, IsCalledInTheOnlyPage) {
  const TrialDirectory directory;
  trial::Options options;
  options.directory = directory.path();
  options.secondsPerPage = 60;
  options.callsUncalled = true;
  const trial::Result result = trial::run(applicationOf(pageOf(scriptOf("function f() { tuner.A1(); }"))), options);
  EXPECT_EQ(incompleteOf(result), "");
  EXPECT_EQ(methodsOf(result.calls), (std::multiset<std::string>{"A1"}));
}

TEST(ChromiumProcesses, AreIsolatedAndGoWithTheirParent) {
  const TrialDirectory directory;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    const trial::Browser browser("", directory.path());
    const std::string tab = R"({"id":1,"method":"Target.createTarget","params":{"url":"about:blank"}})";
    (void)!write(browser.output(), tab.c_str(), tab.size() + 1);
    trial::ProcessSum sum;
    for (int i = 0; i < 300 && sum.largestRenderer < 0; ++i) {
      usleep(100'000);
      sum = browser.measure();
    }
    (void)!write(ends[1], &sum.largestRenderer, sizeof sum.largestRenderer);
    for (;;)
      pause();
  }
  pid_t renderer = -1;
  ASSERT_EQ(read(ends[0], &renderer, sizeof renderer), static_cast<ssize_t>(sizeof renderer));
  ASSERT_GT(renderer, 0);
  const std::string proc = "/proc/" + std::to_string(renderer);
  std::string status;
  // It shuts itself in before it runs anything of a page, but some time after it starts.
  for (int i = 0; i < 300 && status.find("Seccomp:\t2") == std::string::npos; ++i) {
    usleep(100'000);
    std::ifstream file(proc + "/status");
    status.assign(std::istreambuf_iterator<char>(file), {});
  }
  EXPECT_NE(status.find("NoNewPrivs:\t1"), std::string::npos);
  EXPECT_NE(status.find("Seccomp:\t2"), std::string::npos);
  EXPECT_NE(status.find("CapEff:\t0000000000000000"), std::string::npos);
  EXPECT_EQ(status.find("Uid:\t0\t"), std::string::npos);
  const auto linkOf = [](const std::string& path) { return std::filesystem::read_symlink(path).string(); };
  for (const char* space : {"net", "pid", "mnt", "ipc", "user"})
    EXPECT_NE(linkOf(proc + "/ns/" + space), linkOf(std::string("/proc/self/ns/") + space)) << space;
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  for (int i = 0; i < 100 && std::filesystem::exists(proc + "/ns"); ++i)
    usleep(50'000);
  EXPECT_FALSE(std::filesystem::exists(proc + "/exe") && kill(renderer, 0) == 0);
  close(ends[0]);
  close(ends[1]);
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(ChromiumRuns, AreAlike) {
  const std::string body = scriptOf(
      "if (Math.random() < 0.5) tuner.A1(); else tuner.A2(); if (Date.now() % 2) tuner.A3(Date.now());"
      "setTimeout(function () { tuner.A4(); }, 100); setTimeout(function () { tuner.A5(); }, 50);");
  const auto told = [](const trial::Result& result) {
    std::string text;
    for (const trial::Call& call : result.calls)
      text += call.method + call.arguments + std::to_string(call.place.line) + std::to_string(call.place.column) + '\n';
    return text;
  };
  EXPECT_EQ(told(runPage(body)), told(runPage(body)));
}

}  // namespace
