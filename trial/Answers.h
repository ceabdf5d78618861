#pragma once

#include <map>
#include <string>
#include <vector>

// What scripts compare with what they were told: state === 'ready', switch (reply.kind) { case 'set': ... }.

namespace trial {

// Values by the name of the property, variable or method that they are compared with; as texts of script, 'set' or 3.
using Answers = std::map<std::string, std::vector<std::string>>;

// Adds what the text of a script compares, looks up in a table of its own (handlers[reply.kind]) or distinguishes.
// There are at most 80 names, each with at most 12 values.
void addAnswers(const std::string& text, Answers& answers);

// Adds the origins of addresses in a text, "https://server.example"; at most 8.
void addOrigins(const std::string& text, std::vector<std::string>& origins);

}  // namespace trial
