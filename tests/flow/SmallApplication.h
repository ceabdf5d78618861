#pragma once

#include <string>

#include "flow/Flow.h"

// An application of one page and one script, with the plug-ins `au`, `cam` and `kob`.

namespace flow_test {

flow::Database database();

// The elements, as the page has them.
extern const char* const kElements;

flow::Result analyse(const std::string& script);

// "AUDIO.X CAMERA.Y": what is undocumented and at least likely, in the order of the places.
std::string found(const flow::Result& result);

struct Row {
  const char* script;
  const char* expected;
};

}  // namespace flow_test
