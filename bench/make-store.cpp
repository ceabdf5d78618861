// make-store FILE APPLICATIONS CALLS: writes a store with that many applications, and that many calls in each, as a
// check would. Then measures how fast it is judged:
//
//   make-store big.store 100000 50
//   time tarvo-check judge --quiet --store big.store --database other.xml

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

#include "store/Store.h"

namespace {

// A few methods are called everywhere, most by few.
Finding callIn(const std::string& application, int number, std::mt19937& random) {
  const auto rare = std::min(random() % 400, random() % 400);
  Finding finding{};
  finding.call.path = application + "!/www/js/script" + std::to_string(number % 7) + ".js";
  finding.call.place = {static_cast<int>(random() % 2000) + 1, static_cast<int>(random() % 80) + 1};
  finding.call.engineLine = finding.call.place.line;
  finding.call.plugin = "MORVANE-NAVERTIX-PLUGIN" + std::to_string(rare % 40);
  finding.call.method = "Method" + std::to_string(rare);
  finding.call.code = "plugin." + finding.call.method + "(" + std::to_string(random() % 20) + ")";
  finding.isOnDevice = true;
  for (int i = 0; i < 16; ++i)
    finding.fingerprint += "0123456789abcdef"[random() % 16];
  return finding;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: make-store FILE APPLICATIONS CALLS\n";
    return 2;
  }
  const int applications = static_cast<int>(std::strtol(argv[2], nullptr, 10));
  const int calls = static_cast<int>(std::strtol(argv[3], nullptr, 10));
  try {
    store::Database database{"generated.xml", store::sha256("generated"), {}};
    for (int i = 0; i < 350; ++i)  // the others are undocumented, and few call them
      database.methods.emplace_back("MORVANE-NAVERTIX-PLUGIN" + std::to_string(i % 40), "Method" + std::to_string(i));
    store::Store opened(argv[1], store::Store::Mode::write);
    store::RunWriter run(opened, {"1.30", "generated", "rules=engine"}, database, "generated");
    std::mt19937 random(18);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same store each time
    for (int i = 0; i < applications; ++i) {
      ApplicationReport report;
      report.application = "/packages/app-" + std::to_string(i) + ".wgt";
      report.content = store::hexOf(store::sha256(report.application));
      report.contentSuffix = ".wgt";
      for (int number = 0; number < calls; ++number)
        report.documented.push_back(callIn(report.application, number, random));
      run.add(report);
    }
    run.finish();
  } catch (const std::exception& error) {
    std::cerr << "make-store: " << error.what() << '\n';
    return 2;
  }
  return 0;
}
