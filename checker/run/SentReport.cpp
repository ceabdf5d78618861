// Reports between processes. A worker may have been broken into: what it sends is read with bounds, and taken for a
// report only if all of it is one.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/SentReport.h"

#include <stdexcept>

#include "checker/report/ReportJson.h"

namespace {

// A worker that was broken into can send anything. Values cost far more memory here than bytes in the pipe.
constexpr std::size_t kMaxValues = 10'000'000;
constexpr int kMaxDepth = 16;

// Stops at what is too deep or too much for a report, before memory is taken for it.
class Bounds : public nlohmann::json_sax<nlohmann::ordered_json> {
 public:
  bool null() override { return value(); }
  bool boolean(bool) override { return value(); }
  bool number_integer(number_integer_t) override { return value(); }
  bool number_unsigned(number_unsigned_t) override { return value(); }
  bool number_float(number_float_t, const string_t&) override { return value(); }
  bool string(string_t&) override { return value(); }
  bool binary(binary_t&) override { return value(); }
  bool key(string_t&) override { return value(); }
  bool start_object(std::size_t) override { return begin(); }
  bool start_array(std::size_t) override { return begin(); }
  bool end_object() override { return end(); }
  bool end_array() override { return end(); }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

 private:
  bool value() { return ++values_ <= kMaxValues; }
  bool begin() { return ++depth_ <= kMaxDepth && value(); }
  bool end() {
    --depth_;
    return true;
  }

  std::size_t values_ = 0;
  int depth_ = 0;
};

// What a report says that was sent before the worker failed.
void breakOff(ApplicationReport& report, const std::string& application, const std::string& failure) {
  std::string rules;
  for (const std::string& rule : report.rules)
    rules += (rules.empty() ? "" : ", ") + rule;
  report.brokenOff = failure;
  report.notChecked.push_back({application, "no other rules than these came to an end: " + rules + "; " + failure});
}

}  // namespace

std::string bytesOf(const ApplicationReport& report) {
  std::string bytes;
  nlohmann::ordered_json::to_cbor(toJson(report), bytes);
  return bytes;
}

ApplicationReport reportOf(const std::string& application, const WorkerResult& result) {
  using Json = nlohmann::ordered_json;
  ApplicationReport report;
  try {
    Bounds bounds;
    if (!Json::sax_parse(result.sent, &bounds, Json::input_format_t::cbor)) throw std::invalid_argument("not a report");
    report = reportFrom(Json::from_cbor(result.sent));
    if (!result.failure.empty()) breakOff(report, application, result.failure);
  } catch (const std::exception&) {
    report = {};
    report.failure =
        result.failure.empty() ? "the process that checked it gave no report that can be read" : result.failure;
  }
  report.application = application;
  if (!report.failure.empty() && report.seconds == 0) report.seconds = result.seconds;
  conclude(report);
  return report;
}
