// Failure.h - why the whiteboard ends early or cannot do what it was asked.
#pragma once

#include <stdexcept>

namespace whiteboard {

// One message for the person at the keyboard.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace whiteboard
