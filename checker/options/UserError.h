#pragma once

#include <stdexcept>

// Something that keeps the program from its work, with a message that tells the user what to do.
struct UserError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
