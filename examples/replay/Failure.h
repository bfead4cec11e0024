// Failure.h - why a replay ends early.
#pragma once

#include <stdexcept>

namespace replay {

// One message for the person at the keyboard; the tool prints it and ends with status 2.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The participants of a meeting see different pages: no mistake in the input, but one in the
// engine. The tool prints the message and ends with status 1.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace replay
