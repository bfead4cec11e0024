// Writes one small file of each kind into the fuzzers' corpus, a folder a decoder.
#include <cstdio>
#include <exception>
#include <filesystem>

#include "SampleFiles.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: parchlet-fuzz-seeds FOLDER\n", stderr);
    return 2;
  }
  try {
    for (const SampleFile& file : MakeSampleFiles()) {
      const auto folder = std::filesystem::path(argv[1]) / file.format;
      std::filesystem::create_directories(folder);
      WriteWholeFile((folder / file.name).string(), file.bytes);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
