// What the recorder told, as calls. The same call from several pages and worlds is one; a name that holds the mark came
// out of the network or the user, and is not determined.
// Test: tests/trial/Places_test.cpp.

#include "trial/Findings.h"

namespace trial {

namespace {

constexpr std::size_t kMaxCalls = 5000;     // and as many undetermined ones
constexpr std::string_view kUnknown = "…";  // stands for what only the network or the user knows
constexpr std::size_t kMaxText = 3000;
constexpr std::size_t kMaxWritten = 500;

std::string unquoted(const std::string& text) {
  const Json value = Json::parse(text, nullptr, false);
  return value.is_string() ? value.get<std::string>() : std::string();
}

}  // namespace

Message messageOf(const std::string& text, const std::string& secret) {
  Message message;
  if (text.compare(0, secret.size(), secret) != 0) return message;
  std::vector<std::string> lines;
  for (std::size_t begin = secret.size(); lines.size() < 4 && begin <= text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, std::min(end - begin, kMaxText)));
    begin = end + 1;
  }
  lines.resize(4);
  message.first = unquoted(lines[1]);
  message.method = unquoted(lines[2]);
  message.arguments = lines[3];
  message.isGiven = lines[0] == "word";
  if (lines[0] == "call" || message.isGiven) message.kind = Message::Kind::call;
  if (lines[0] == "unknown") message.kind = Message::Kind::unknown;
  if (lines[0] == "navigation") message.kind = Message::Kind::navigation;
  if (lines[0] == "broken") message.kind = Message::Kind::broken;
  return message;
}

std::string Findings::shown(std::string text) const {
  for (std::size_t at = 0; (at = text.find(mark_, at)) != std::string::npos;)
    text.replace(at, mark_.size(), kUnknown);
  return text;
}

// Where the method is written. Each one is looked for once, and no more of them than anybody reads.
Frame Findings::written(const std::string& method, const Frame& user) {
  const bool isHandler = user.function.compare(0, 2, "on") == 0;  // it was not made where it is told to be
  const Frame place = isHandler ? Frame() : user;
  const auto key = std::make_tuple(method, place.path, place.line);
  const auto known = written_.find(key);
  if (known != written_.end()) return known->second;
  if (written_.size() >= kMaxWritten) return {};
  return written_[key] = writtenPlace(files_, method, place);
}

void Findings::add(const Message& message, const Json& callFrames, const Places& places, bool isForced) {
  const bool isUnknown = message.kind == Message::Kind::unknown;
  Call call;
  call.plugin = message.first;
  call.method = shown(message.method);
  call.arguments = shown(message.arguments);
  call.trace = places.frames(callFrames, isUnknown ? std::string() : message.method);
  call.place = placeOf(call.trace);
  call.isForced = isForced;
  const bool isElsewhere = call.trace.empty() || call.trace.front().isMade || isLibrary(call.place.path);
  if (isElsewhere && !call.place.isSpelled && !isUnknown) {
    const Frame place = written(call.method, call.trace.empty() ? Frame() : call.trace.front());
    if (!place.path.empty()) call.place = place;
  }
  if (isUnknown && call.method.find(kUnknown) != std::string::npos) {
    std::string rest = call.method;
    rest.erase(rest.find(kUnknown), kUnknown.size());
    empty_.insert({call.place.path, call.place.line, call.place.column, rest, call.plugin});
  }
  if (message.isGiven && !call.place.isSpelled) return;
  Calls& calls = isUnknown ? undetermined_ : calls_;
  Key key{call.place.path, call.place.line, call.place.column, isUnknown ? std::string() : call.method, call.plugin};
  if (calls.size() >= kMaxCalls && calls.count(key) == 0) {
    isCut_ = true;
    return;
  }
  const auto [known, isNew] = calls.emplace(std::move(key), call);
  if (isNew) return;
  // Of several with different arguments the smallest is shown: which one comes first is chance.
  const auto rank = [](const Call& one) { return std::tie(one.isForced, one.arguments); };
  if (rank(call) < rank(known->second)) known->second = call;
}

std::vector<Call> Findings::calls() const {
  Calls told = calls_;
  for (const Key& key : empty_)
    told.erase(key);
  return sorted(told);
}

std::vector<Call> Findings::sorted(const Calls& calls) {
  std::vector<Call> list;
  for (const auto& [key, call] : calls)
    list.push_back(call);
  return list;
}

}  // namespace trial
