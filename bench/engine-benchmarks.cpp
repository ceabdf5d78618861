// What each stage of the engine costs, in bytes of input a second, and what inputs that are hard to search cost
// relative to ordinary script.
//
// Stages are run through the engine's own members, so that their patterns are those in use. $TARVO_BENCH_SCRIPT names a
// file to measure with instead of generated script, $TARVO_BENCH_MOVIES a folder whose movies with the most script are
// listed and replayed as well.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/Verdicts.h"
#include "APICheckEngine/search/Excerpts.h"
#include "APICheckEngine/search/ScriptFunctions.h"
#include "bench/Application.h"
#include "bench/FlashCode.h"
#include "bench/HardRuns.h"
#include "bench/ScriptText.h"
#include "platform/TimeBudget.h"
#include "tarvo/api_check_engine.h"

namespace {

using bench::Application;
using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::SWFStateMentInfo;
namespace detail = FlashEngine_1_00::detail;

constexpr std::size_t kScriptBytes = 1'000'000;
constexpr std::size_t kRealMovies = 5;

const std::string& script() {
  static const std::string text = [] {
    const char* given = std::getenv("TARVO_BENCH_SCRIPT");
    return given == nullptr ? bench::ordinaryScript(kScriptBytes) : bench::readFile(given);
  }();
  return text;
}

std::string withoutComments(const std::string& text) {
  std::string cleaned(text.size() + 1, '\0');
  cleaned.resize(static_cast<std::size_t>(delete_comment(text.c_str(), static_cast<int>(text.size()), cleaned.data())));
  return cleaned;
}

const std::string& cleanedScript() {
  static const std::string text = withoutComments(script());
  return text;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

// Takes the records from position `kept` on out of a list that owns them.
template <typename T>
void shorten(std::vector<T*>& list, std::size_t kept = 0) {
  std::vector<T*> rest(list.begin() + static_cast<std::ptrdiff_t>(kept), list.end());
  list.resize(kept);
  FlashEngine_1_00::releaseAll(rest);
}

// An engine that has worked on the script up to a stage.
class Prepared {
 public:
  enum Stage { kDatabase, kSources, kTags, kSymbols, kDeclarations, kBindings };

  explicit Prepared(Stage stage, int documented = 300, const std::string& text = script())
      : application_({{"index.html", bench::plugInPage()}, {"main.js", text}}, documented),
        files_(application_.paths()) {
    APIAnalysis& e = engine;
    const std::function<RunResult()> stages[] = {[&] { return e.Init(); },
                                                 [&] { return e.FirstScanSource(&files_); },
                                                 [&] { return e.FindObjectTagToken(); },
                                                 [&] { return e.FindObjectID(); },
                                                 [&] { return e.FindDeclareListValidation(); },
                                                 [&] { return e.FindObjectVariable(); }};
    for (int i = 0; i <= stage; ++i)
      ok_ = ok_ && stages[i]() == RUN_SUCCESS;
  }

  bool ok() const { return ok_; }
  std::vector<std::string>& files() { return files_; }
  // The script's cleaned text and its path, behind those of the page.
  std::string* text() { return engine.worthfulSourceList.back(); }
  std::string* path() { return engine.worthfulPathList.back(); }

  APIAnalysis engine;

 private:
  Application application_;
  std::vector<std::string> files_;
  bool ok_ = true;
};

// ---- sources --------------------------------------------------------------------------------------------------------

void commentStripping(benchmark::State& state) {
  std::string output(script().size() + 1, '\0');
  for (auto _ : state)
    benchmark::DoNotOptimize(delete_comment(script().c_str(), static_cast<int>(script().size()), output.data()));
  countBytes(state, script().size());
}
BENCHMARK(commentStripping)->Name("sources/comment stripping");

void excerpts(benchmark::State& state) {
  std::size_t found = 0;
  for (auto _ : state)
    found = detail::findExcerpts(cleanedScript().c_str()).size();
  countBytes(state, cleanedScript().size());
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(excerpts)->Name("sources/excerpts");

void functionBlocks(benchmark::State& state) {
  std::size_t found = 0;
  for (auto _ : state)
    found = detail::findFunctions(cleanedScript().c_str()).finds.size();
  countBytes(state, cleanedScript().size());
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(functionBlocks)->Name("sources/function blocks");

// Reading, cleaning and the look-up and embeds patterns over the excerpts of the script; with its functions or, to see
// the patterns alone, without.
void firstScan(benchmark::State& state, bool withFunctions) {
  std::string text = script();
  for (std::size_t at = 0; !withFunctions && (at = text.find("function", at)) != std::string::npos;)
    text.replace(at, 8, "functIon");
  Prepared run(Prepared::kDatabase, 300, text);
  APIAnalysis& engine = run.engine;
  std::size_t found = 0;
  for (auto _ : state) {
    (void)engine.FirstScanSource(&run.files());
    state.PauseTiming();
    found = engine.objectAccessList.size() + engine.embedsAccessList.size();
    engine.worthfulSourceList.clear();
    shorten(engine.functionBlockList);
    shorten(engine.cleanedSourceList);
    shorten(engine.worthfulPathList);
    shorten(engine.worthfulExtList);
    shorten(engine.objectAccessList);
    shorten(engine.embedsAccessList);
    state.ResumeTiming();
  }
  countBytes(state, text.size());
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK_CAPTURE(firstScan, all, true)->Name("sources/first scan");
BENCHMARK_CAPTURE(firstScan, lookUps, false)
    ->Name("sources/first scan without functions (look-up and embeds patterns)");

// ---- objects and bindings -------------------------------------------------------------------------------------------

void tags(benchmark::State& state) {
  Prepared run(Prepared::kSources);
  for (auto _ : state)
    benchmark::DoNotOptimize(run.engine.FindObjectTags(run.text(), run.path()));
  countBytes(state, run.text()->size());
}
BENCHMARK(tags)->Name("objects/tag pattern");

void elementId(benchmark::State& state) {
  Prepared run(Prepared::kTags);
  const std::string element = *run.engine.objectTagList.front()->expression;
  for (auto _ : state)
    benchmark::DoNotOptimize(run.engine.parseObjectID(element));
  countBytes(state, element.size());
}
BENCHMARK(elementId)->Name("objects/id patterns");

// The first round adds the symbols, so that all the measured ones find them known. Bytes: of script, for all objects.
void aliases(benchmark::State& state) {
  Prepared run(Prepared::kSymbols);
  for (auto _ : state)
    (void)run.engine.FindObjectID();
  countBytes(state, run.text()->size());
  state.counters["objects"] = static_cast<double>(run.engine.objectTagList.size());
}
BENCHMARK(aliases)->Name("objects/alias search, 5 objects (alias pattern)");

void declarations(benchmark::State& state) {
  Prepared run(Prepared::kSymbols);
  std::size_t found = 0;
  for (auto _ : state) {
    (void)run.engine.FindDeclareListValidation();
    state.PauseTiming();
    found = run.engine.declareList.size();
    shorten(run.engine.declareList);
    state.ResumeTiming();
  }
  countBytes(state, run.text()->size());
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(declarations)->Name("bindings/look-ups of plug-ins");

void bindings(benchmark::State& state) {
  Prepared run(Prepared::kDeclarations);
  std::size_t found = 0;
  for (auto _ : state) {
    (void)run.engine.FindObjectVariable();
    state.PauseTiming();
    found = run.engine.objectVariableList.size();
    shorten(run.engine.objectVariableList);
    state.ResumeTiming();
  }
  countBytes(state, run.text()->size());
  state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(bindings)->Name("bindings/binding");

// ---- calls and verdicts ---------------------------------------------------------------------------------------------

// Measures `search` over the whole script and empties its list after each round.
void callSearch(benchmark::State& state, const std::function<void(Prepared&)>& search) {
  Prepared run(Prepared::kBindings);
  std::size_t found = 0;
  for (auto _ : state) {
    search(run);
    state.PauseTiming();
    found = run.engine.foundCallList.size();
    shorten(run.engine.foundCallList);
    shorten(run.engine.lookupCandidateList);
    state.ResumeTiming();
  }
  countBytes(state, run.text()->size());
  state.counters["found"] = static_cast<double>(found);
  if (!run.engine.resultList.empty()) state.SkipWithError("a call of the script is not documented");
}

void callsOnVariable(benchmark::State& state) {
  callSearch(state, [](Prepared& run) {
    (void)run.engine.findAPIsFromPool("MORVANE-NAVERTIX-TUNER", "tvTunerObject", run.text(), *run.path());
  });
}
BENCHMARK(callsOnVariable)->Name("calls/on one variable in the whole script (call pattern)");

void callsOnBindings(benchmark::State& state) {
  callSearch(state, [](Prepared& run) { (void)run.engine.FindAPIFunctionName4JS(); });
}
BENCHMARK(callsOnBindings)->Name("calls/on all bindings");

void callsOnLookUps(benchmark::State& state) {
  callSearch(state, [](Prepared& run) { (void)run.engine.FindAPIFunctionName4JSSpe(); });
}
BENCHMARK(callsOnLookUps)->Name("calls/on look-ups");

void methodNames(benchmark::State& state) {
  const std::string calls[] = {" tvTunerObject.GetChannel()", "(tvAudioObject . SetVolume (level, 1)", "GetVersion"};
  std::size_t bytes = 0;
  for (const std::string& call : calls)
    bytes += call.size();
  for (auto _ : state) {
    for (const std::string& call : calls)
      benchmark::DoNotOptimize(detail::methodName(call));
  }
  countBytes(state, bytes);
}
BENCHMARK(methodNames)->Name("verdicts/method names");

void verdicts(benchmark::State& state) {
  const auto documented = static_cast<int>(state.range(0));
  Prepared run(Prepared::kDatabase, documented);
  SWFStateMentInfo call;
  call.expression =
      std::make_unique<std::string>("MORVANE-NAVERTIX-TUNER#tv.GetProperty" + std::to_string(documented - 1) + "()");
  for (auto _ : state) {
    if (run.engine.DetermineAPISecurity(run.engine.resultList, &call) != RUN_SUCCESS) {
      return state.SkipWithError("the last name of the database is not documented");
    }
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK(verdicts)->Name("verdicts/documented names")->Arg(300)->Arg(100'000);

void database(benchmark::State& state) {
  Prepared run(Prepared::kDatabase, static_cast<int>(state.range(0)));
  for (auto _ : state)
    (void)run.engine.Init();
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(database)->Name("database/load names")->Arg(300)->Arg(100'000)->Unit(benchmark::kMillisecond);

// ---- Flash ----------------------------------------------------------------------------------------------------------

using Lines = std::vector<std::string>;

Lines listingOf(const std::string& movie) {
  Lines lines;
  FlashEngine_1_00::startTimeBudget();
  (void)FlashEngine_1_00::DeAssembler().SWFDeAssemblerMain(movie, lines);
  return lines;
}

Lines statementsOf(Lines& listing) {
  Lines statements;
  FlashEngine_1_00::startTimeBudget();
  (void)FlashEngine_1_00::DeCompiler().SWFDeCompilerMain(listing, statements);
  return statements;
}

// A movie of so many megabytes of code.
struct Movie {
  explicit Movie(int64_t megabytes)
      : code(bench::flashMovie(static_cast<std::size_t>(megabytes) * 1'000'000)), application({{"movie.swf", code}}) {}

  // False if one of the engine's bounds cut the listing or the replay: there is nothing to compare with then.
  static bool whole(const Lines& statements) {
    return !statements.empty() && statements.back() == bench::kLastStatement;
  }

  std::string code;
  Application application;
};

void swfListing(benchmark::State& state) {
  const Movie movie(state.range(0));
  Lines lines;
  for (auto _ : state)
    lines = listingOf(movie.application.paths()[0]);
  if (!Movie::whole(statementsOf(lines))) return state.SkipWithError("not listed to the end");
  countBytes(state, movie.code.size());
  state.counters["lines"] = static_cast<double>(lines.size());
}
BENCHMARK(swfListing)->Name("flash/listing, MB")->Arg(1)->Arg(4)->Arg(8)->Unit(benchmark::kMillisecond);

void swfDecompiling(benchmark::State& state) {
  const Movie movie(state.range(0));
  Lines listing = listingOf(movie.application.paths()[0]);
  Lines statements;
  for (auto _ : state)
    statements = statementsOf(listing);
  if (!Movie::whole(statements)) return state.SkipWithError("not replayed to the end");
  countBytes(state, movie.code.size());
  state.counters["statements"] = static_cast<double>(statements.size());
}
BENCHMARK(swfDecompiling)->Name("flash/decompiling, MB")->Arg(1)->Arg(4)->Arg(8)->Unit(benchmark::kMillisecond);

// A real movie, as it is. Bytes: of script.
void realMovie(benchmark::State& state, const std::string& path, std::size_t bytes, bool decompiled) {
  Lines listing = listingOf(path);
  for (auto _ : state)
    benchmark::DoNotOptimize(decompiled ? statementsOf(listing) : listingOf(path));
  countBytes(state, bytes);
  state.counters["lines"] = static_cast<double>(listing.size());
}

void registerRealMovies(const std::string& folder) {
  std::vector<std::pair<std::size_t, std::filesystem::path>> movies;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".swf") continue;
    const std::size_t bytes = bench::scriptBytes(bench::plainMovie(bench::readFile(entry.path().string())));
    if (bytes > 0) movies.emplace_back(bytes, entry.path());
  }
  std::sort(movies.rbegin(), movies.rend());
  movies.resize(std::min(movies.size(), kRealMovies));
  for (const auto& [bytes, path] : movies) {
    const std::string name = path.stem().string() + ", " + std::to_string(bytes) + " bytes of script";
    benchmark::RegisterBenchmark(("flash/listing " + name).c_str(), realMovie, path.string(), bytes, false);
    benchmark::RegisterBenchmark(("flash/decompiling " + name).c_str(), realMovie, path.string(), bytes, true);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  if (const char* movies = std::getenv("TARVO_BENCH_MOVIES")) registerRealMovies(movies);
  bench::registerHardRuns();
  if (benchmark::RunSpecifiedBenchmarks() == 0) return 1;
  benchmark::Shutdown();
  return 0;
}
