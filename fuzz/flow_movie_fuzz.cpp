// Any bytes as the Flash movie that a page shows: read beside the engine, and followed.

#include "Support.h"
#include "checker/run/FlashMovie.h"
#include "flow/Flow.h"

namespace {

constexpr const char* kPage =
    "<object id='tv' classid='clsid:MORVANE-NAVERTIX-AUDIO'></object><embed src='m.swf'>"
    "<script>function play(name) { tv[name](); }</script>";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FlashMovie movie = readFlash(fuzz::viewOf(data, size));
  flow::Database database;
  database.identifiers = {"MORVANE-NAVERTIX-AUDIO"};
  flow::Limits limits;
  limits.nodes = 50'000;
  limits.steps = 500'000;
  const flow::Result result =
      flow::analyse({{"i.html", kPage, false}, {"m.swf", std::move(movie.script), true}}, database, limits);
  for (const flow::FoundCall& call : result.calls)
    fuzz::require(call.place.line >= 1, "each call has a place");
  return 0;
}
