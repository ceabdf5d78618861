// A report with its places as editors count them. The texts are only read here, in the process that is bounded.
// Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/Look.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>

#include "checker/formats/Wording.h"
#include "checker/lsp/Placeholder.h"
#include "checker/report/Characters.h"

namespace {

constexpr std::size_t kMaxText = std::size_t{16} << 20;  // bytes of a file that places are looked up in
constexpr std::size_t kMaxCall = 4096;                   // bytes of a call, to the end of its method's name

bool isWord(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

// The files of an application by the paths of its report.
class Texts {
 public:
  explicit Texts(const UnsavedTexts& unsaved) : unsaved_(unsaved) {}

  struct Text {
    std::string bytes;
    Lines lines;
    explicit Text(std::string from) : bytes(std::move(from)), lines(bytes) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
  };

  const Text& of(const std::string& path) {
    const auto known = texts_.find(path);
    if (known != texts_.end()) return known->second;
    const auto unsaved = unsaved_.find(path);
    return texts_.try_emplace(path, unsaved != unsaved_.end() ? unsaved->second : read(path)).first->second;
  }

 private:
  static std::string read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    std::vector<char> part(1 << 16);
    while (bytes.size() < kMaxText &&
           (file.read(part.data(), static_cast<std::streamsize>(part.size())) || file.gcount() > 0))
      bytes.append(part.data(), static_cast<std::size_t>(file.gcount()));
    return bytes;
  }

  const UnsavedTexts& unsaved_;
  std::map<std::string, Text> texts_;
};

// Where `method` stands as a word, not before `from`; none if it does not.
std::optional<std::size_t> wordFrom(const std::string& text, std::size_t from, const std::string& method) {
  if (method.empty()) return std::nullopt;
  for (std::size_t at = from; (at = text.find(method, at)) < std::min(text.size(), from + kMaxCall); ++at) {
    const std::size_t end = at + method.size();
    if ((at == 0 || !isWord(text[at - 1])) && (end == text.size() || !isWord(text[end]))) return at;
  }
  return std::nullopt;
}

class Maker {
 public:
  Maker(const UnsavedTexts& unsaved, Look& look) : texts_(unsaved), look_(look) {}

  void add(const Finding& finding, const char* state, LookCall::Severity severity) {
    LookCall call = placed(finding.call, finding.trace);
    call.state = state;
    call.severity = severity;
    call.message = messageOf(finding) + (finding.advice.empty() ? "" : "; " + finding.advice);
    call.replacement = replacementIn(finding.advice);
    look_.calls.push_back(std::move(call));
  }

  void add(const Undetermined& item) {
    LookCall call = placed(item.call, item.trace);
    call.state = "not determined";
    call.severity = LookCall::Severity::information;
    call.message = messageOf(item) + ": " + item.reason;
    look_.calls.push_back(std::move(call));
  }

 private:
  // What an advice suggests: the database's, or the nearest name.
  static std::string replacementIn(const std::string& advice) {
    for (const std::string_view before : {"call '", "did you mean '"}) {
      const std::size_t at = advice.find(before);
      if (at == std::string::npos) continue;
      const std::size_t begin = at + before.size();
      const std::size_t end = advice.find('\'', begin);
      if (end != std::string::npos) return advice.substr(begin, end - begin);
    }
    return {};
  }

  LookCall placed(const Call& from, const std::vector<TraceStep>& trace) {
    LookCall call;
    call.plugin = from.plugin;
    call.method = from.method;
    call.place.path = from.path;
    const Texts::Text& text = texts_.of(from.path);
    const std::size_t begin = offsetOf(text.lines, from.place);
    const std::size_t search = trace.empty() ? begin : std::max(begin, offsetOf(text.lines, trace.back().place));
    const std::optional<std::size_t> word =
        from.place.line < 1 ? std::nullopt : wordFrom(text.bytes, search, from.method);
    const std::size_t name = word.value_or(begin);
    const std::size_t end = std::min(text.bytes.size(), word ? name + from.method.size() : begin + from.code.size());
    call.name = {positionOf(text.lines, name), positionOf(text.lines, end)};
    call.place.range = {positionOf(text.lines, begin), call.name.end};
    call.trace.reserve(trace.size());
    for (const TraceStep& step : trace)
      call.trace.push_back({step.text, placeOf(step)});
    return call;
  }

  // To the end of the word there, or of the tag.
  LookPlace placeOf(const TraceStep& step) {
    const Texts::Text& text = texts_.of(step.path);
    const std::size_t begin = offsetOf(text.lines, step.place);
    std::size_t end = begin;
    if (end < text.bytes.size() && text.bytes[end] == '<') {
      end = std::min({text.bytes.find('>', begin), text.bytes.find('\n', begin), text.bytes.size() - 1}) + 1;
    } else {
      while (end < text.bytes.size() && isWord(text.bytes[end]))
        ++end;
    }
    return {step.path, {positionOf(text.lines, begin), positionOf(text.lines, end)}};
  }

  Texts texts_;
  Look& look_;
};

// ---- between processes ---------------------------------------------------------------------------------------------

// Numbers and texts, one behind the other. A tree of values would cost more than the analysis: there are thousands of
// calls, each with its trace.
class Writer {
 public:
  // Less than 2^32, as everything is that fits into the memory of a look.
  void number(std::uint64_t number) {
    for (unsigned shift = 0; shift < 32; shift += 8)
      bytes_ += static_cast<char>(number >> shift);
  }
  void text(const std::string& text) {
    number(text.size());
    bytes_ += text;
  }
  void range(const TextRange& range) {
    for (const int part : {range.start.line, range.start.character, range.end.line, range.end.character})
      number(static_cast<std::uint32_t>(part));
  }
  void place(const LookPlace& place) {
    text(place.path);
    range(place.range);
  }
  std::string take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

// Throws std::runtime_error where the bytes end too early.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  std::uint32_t number() {
    std::uint32_t number = 0;
    unsigned shift = 0;
    for (const char byte : part(sizeof number)) {
      number |= std::uint32_t{static_cast<unsigned char>(byte)} << shift;
      shift += 8;
    }
    return number;
  }
  std::string text() { return std::string(part(number())); }
  TextRange range() {
    TextRange range;
    for (int* value : {&range.start.line, &range.start.character, &range.end.line, &range.end.character})
      *value = static_cast<int>(number() & 0x7FFFFFFF);
    return range;
  }
  LookPlace place() {
    std::string path = text();
    return {std::move(path), range()};
  }
  bool isEnd() const { return rest_.empty(); }

 private:
  std::string_view part(std::size_t size) {
    if (size > rest_.size()) throw std::runtime_error("these bytes are cut");
    const std::string_view part = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return part;
  }

  std::string_view rest_;
};

void write(const LookCall& call, Writer& out) {
  out.place(call.place);
  out.range(call.name);
  for (const std::string* text : {&call.plugin, &call.method, &call.state, &call.message, &call.replacement})
    out.text(*text);
  out.number(static_cast<std::uint32_t>(call.severity));
  out.number(call.trace.size());
  for (const LookStep& step : call.trace) {
    out.text(step.text);
    out.place(step.place);
  }
}

LookCall readCall(Reader& in) {
  LookCall call;
  call.place = in.place();
  call.name = in.range();
  for (std::string* text : {&call.plugin, &call.method, &call.state, &call.message, &call.replacement})
    *text = in.text();
  const std::uint32_t severity = in.number();
  call.severity = severity == 1   ? LookCall::Severity::error
                  : severity == 3 ? LookCall::Severity::information
                                  : LookCall::Severity::none;
  for (std::uint32_t left = in.number(); left > 0; --left) {
    std::string text = in.text();
    call.trace.push_back({std::move(text), in.place()});
  }
  return call;
}

}  // namespace

Look look(const LookRequest& request, const InspectionOptions& inspection, AcceptedCalls& accepted,
          flow::ParseCache* cache) {
  InspectionOptions options = inspection;
  options.all = true;
  options.unsaved = request.unsaved;
  options.flow.isOn = FlowRun::isThere();
  options.flow.isDocumented = true;
  options.flow.cache = cache;
  options.flow.isPossible = request.isQuestion;
  ApplicationReport report;
  if (request.isQuestion) {
    // Without the engine: it does not know who calls the placeholder.
    report.application = request.application;
    FlowRun(request.application, options.exclusions, &request.unsaved).run(options.flow, {}, {}, PathNames(""), report);
  } else {
    report = inspect(request.application, options);
    accepted.apply(report);
  }
  Look look;
  look.failure = report.failure;
  Maker maker(request.unsaved, look);
  for (const Finding& finding : report.findings) {
    if (request.isQuestion && finding.call.method != kPlaceholder) continue;
    const bool isAccepted = finding.status == Finding::Status::accepted;
    const bool isCounted = finding.status == Finding::Status::reported;
    maker.add(finding,
              finding.kind == Finding::Kind::deprecated    ? "documented, and deprecated"
              : isAccepted                                 ? "undocumented, but accepted"
              : finding.kind == Finding::Kind::otherPlugin ? "documented for another plug-in only"
                                                           : "undocumented",
              isAccepted  ? LookCall::Severity::none
              : isCounted ? LookCall::Severity::error
                          : LookCall::Severity::information);
  }
  if (request.isQuestion) return look;
  for (const Finding& finding : report.documented)
    maker.add(finding, "documented", LookCall::Severity::none);
  for (const Undetermined& item : report.undetermined)
    maker.add(item);
  for (const NotChecked& item : report.notChecked)
    look.notes.push_back({item.part, item.reason});
  return look;
}

std::string bytesOf(const LookRequest& request) {
  Writer out;
  out.text(request.application);
  out.number(std::uint32_t{request.isQuestion});
  for (const auto& [path, text] : request.unsaved) {
    out.text(path);
    out.text(text);
  }
  return out.take();
}

LookRequest requestOf(const std::string& bytes) {
  Reader in(bytes);
  LookRequest request;
  request.application = in.text();
  request.isQuestion = in.number() != 0;
  while (!in.isEnd()) {
    std::string path = in.text();
    request.unsaved[path] = in.text();
  }
  return request;
}

std::string bytesOf(const Look& look) {
  Writer out;
  out.text(look.failure);
  out.number(look.calls.size());
  for (const LookCall& call : look.calls)
    write(call, out);
  for (const LookNote& note : look.notes) {
    out.text(note.path);
    out.text(note.text);
  }
  return out.take();
}

Look lookOf(const std::string& bytes) {
  Reader in(bytes);
  Look look;
  look.failure = in.text();
  for (std::uint32_t left = in.number(); left > 0; --left)
    look.calls.push_back(readCall(in));
  while (!in.isEnd()) {
    std::string path = in.text();
    look.notes.push_back({std::move(path), in.text()});
  }
  return look;
}
