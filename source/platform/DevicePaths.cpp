// The paths of the shared library: fixed on the device.

#include "platform/Paths.h"

namespace FlashEngine_1_00 {

const EnginePaths& enginePaths() {
  static const EnginePaths paths{"/usr/share/lumeric/APIAnalEngineDB.xml", "/tmp", "/tmp/AnalysisResult"};
  return paths;
}

}  // namespace FlashEngine_1_00
