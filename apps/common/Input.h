// Input.h - what a person hands to a program: sizes and numbers on the command line, files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <parchlet/Pictures.h>

namespace apps {

// Ends what a program was asked for, with one message for the person at the keyboard.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads a whole number of 0 or more. Empty for anything else.
std::optional<std::uint64_t> ReadNumber(std::string_view text);

struct PageSize {
  int width;  // pixels
  int height;
};

// Reads WIDTHxHEIGHT, each 1 or more. Empty for anything else.
std::optional<PageSize> ReadSize(std::string_view text);

// The most that a file may hold, so that a wrong one ends in a message and not in a full memory.
inline constexpr std::size_t kMaxFileBytes = std::size_t{64} << 20;

// Reads a file whole. Throws Failure, naming the file, when it cannot be read or is too large.
std::string ReadFileBytes(const std::string& path);

// Decodes the bytes of the file of that name. Throws Failure, naming it, when they are no picture
// that the engine knows.
parchlet::Picture DecodeFileBytes(const std::string& bytes, const std::string& path);

}  // namespace apps
