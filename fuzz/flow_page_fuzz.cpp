// A page from anywhere.

#include "Support.h"
#include "flow/Flow.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  flow::Database database;
  database.identifiers = {"MORVANE-NAVERTIX-AUDIO"};
  flow::Limits limits;
  limits.nodes = 50'000;
  limits.steps = 500'000;
  const std::string page(reinterpret_cast<const char*>(data), size);
  const flow::Result result = flow::analyse({{"i.html", page}}, database, limits);
  for (const flow::FoundCall& call : result.calls)
    if (call.place.line < 1) __builtin_trap();
  return 0;
}
