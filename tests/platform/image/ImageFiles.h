// Whole files. The pictures of the tests are in fuzz/corpus, where they are the fuzzers' seeds as
// well; those that are too large for a seed are in limits/. They were written once, by libpng,
// libjpeg and giflib, or byte by byte, from the pixels that the tests expect.
#pragma once

#include <cstddef>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

using Bytes = std::vector<std::byte>;

inline Bytes ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), {});
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

inline Bytes ReadSeed(const std::string& name) {
  return ReadWholeFile(PARCHLET_CORPUS "/" + name);
}
