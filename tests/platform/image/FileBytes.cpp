#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>

#include "ImageFiles.h"

Bytes ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), {});
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

void WriteWholeFile(const std::string& path, const Bytes& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  if (!out.flush()) {
    throw std::runtime_error("cannot write " + path);
  }
}
