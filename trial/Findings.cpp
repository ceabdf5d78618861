// Test: tests/trial/Places_test.cpp.

#include "trial/Findings.h"

namespace trial {

namespace {

constexpr std::size_t kMaxCalls = 5000;  // and as many undetermined ones
constexpr std::size_t kMaxText = 3000;

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
  if (lines[0] == "call") message.kind = Message::Kind::call;
  if (lines[0] == "unknown") message.kind = Message::Kind::unknown;
  if (lines[0] == "navigation") message.kind = Message::Kind::navigation;
  return message;
}

std::string Findings::shown(std::string text) const {
  for (std::size_t at = 0; (at = text.find(mark_, at)) != std::string::npos;)
    text.replace(at, mark_.size(), "…");
  return text;
}

void Findings::add(const Message& message, const Json& callFrames, const Places& places) {
  const bool isUnknown = message.kind == Message::Kind::unknown;
  Call call;
  call.plugin = message.first;
  call.method = shown(message.method);
  call.arguments = shown(message.arguments);
  call.trace = places.frames(callFrames, isUnknown ? std::string() : message.method);
  call.place = placeOf(call.trace);
  if (call.place.path.empty()) call.place = writtenPlace(files_, call.method);
  Calls& calls = isUnknown ? undetermined_ : calls_;
  Key key{call.place.path, call.place.line, call.place.column, isUnknown ? std::string() : call.method, call.plugin};
  if (calls.size() >= kMaxCalls && calls.count(key) == 0) {
    isCut_ = true;
    return;
  }
  // Of several with different arguments the smallest is shown: which one comes first is chance.
  const auto [known, isNew] = calls.emplace(std::move(key), call);
  if (!isNew && call.arguments < known->second.arguments) known->second = call;
}

std::vector<Call> Findings::sorted(const Calls& calls) {
  std::vector<Call> list;
  for (const auto& [key, call] : calls)
    list.push_back(call);
  return list;
}

}  // namespace trial
