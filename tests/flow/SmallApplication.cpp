#include "tests/flow/SmallApplication.h"

namespace flow_test {

flow::Database database() {
  flow::Database database;
  database.methods["MORVANE-NAVERTIX-AUDIO"] = {"GetVolume", "SetVolume"};
  database.methods["MORVANE-NAVERTIX-CAMERA"] = {"Capture"};
  database.methods["MORVANE-NAVERTIX-KOB"] = {"Execute", "Start"};
  database.identifiers = {"MORVANE-NAVERTIX-AUDIO", "MORVANE-NAVERTIX-CAMERA", "MORVANE-NAVERTIX-KOB"};
  return database;
}

const char* const kElements =
    "<object id=\"au\" classid=\"clsid:MORVANE-NAVERTIX-AUDIO\"></object>"
    "<object id=\"cam\" classid=\"clsid:MORVANE-NAVERTIX-CAMERA\"></object>"
    "<object id=\"kob\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>";

flow::Result analyse(const std::string& script) {
  return flow::analyse({{"index.html", kElements + std::string("<script src=\"a.js\"></script>")}, {"a.js", script}},
                       database());
}

// "AUDIO.X CAMERA.Y", in the order of the places.
std::string found(const flow::Result& result) {
  std::string text;
  for (const flow::FoundCall& call : result.calls) {
    if (call.judgement != flow::Judgement::undocumented || call.confidence == flow::Confidence::possible) continue;
    text += (text.empty() ? "" : " ") + call.plugin.substr(std::string("MORVANE-NAVERTIX-").size()) + '.' + call.method;
  }
  return text;
}

}  // namespace flow_test
