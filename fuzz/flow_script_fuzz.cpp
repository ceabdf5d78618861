// A script from anywhere, in a page with plug-ins. Its calls stand in the text.

#include "Support.h"
#include "flow/Flow.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string script(reinterpret_cast<const char*>(data), size);
  flow::Database database;
  database.identifiers = {"MORVANE-NAVERTIX-AUDIO"};
  flow::Limits limits;
  limits.nodes = 50'000;
  limits.steps = 500'000;
  const flow::Result result = flow::analyse(
      {{"i.html", "<object id=p classid=MORVANE-NAVERTIX-AUDIO></object><script src=a.js></script>"}, {"a.js", script}},
      database, limits);
  for (const flow::FoundCall& call : result.calls)
    if (call.place.line < 1 || call.place.column < 1) __builtin_trap();
  return 0;
}
