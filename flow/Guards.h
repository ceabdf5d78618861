#pragma once

#include <cstdint>

#include "flow/Solver.h"

// Guards: what a condition asks of a value, and what of the code behind it can be left out for it.
//
// Values only ever come, so a guard may only let through what it has seen a reason for. Where nobody knows anything of
// the value once all is at rest, the guard opens: the code may run.

namespace flow {

struct Test {
  enum class What : std::uint8_t {
    equals,      // one of the values of `other`
    isTrue,      //
    isInstance,  // of a function among the values of `other`
    isAmong,     // the elements of `other`
    isNameIn,    // the properties of `other`
    isOfType,    // what `typeof` gives for it, among the texts of `other`
  };

  What what = What::equals;
  bool holds = true;  // whether the code runs where it is so, or where it is not
  NodeId other = 0;
};

}  // namespace flow
