// Failure.h - why a replay ends early.
#pragma once

#include <stdexcept>

namespace replay {

// One message for the person at the keyboard; the tool prints it and ends with status 2.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace replay
