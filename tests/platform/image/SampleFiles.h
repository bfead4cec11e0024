// One small file of each kind, for the tests of damage and the seeds of the fuzzers.
#pragma once

#include <string>
#include <vector>

#include "ImageFiles.h"

struct SampleFile {
  std::string name;
  std::string format;  // png, jpeg, gif, bmp
  Bytes bytes;
  std::size_t unusedTail = 0;  // bytes at the end that a reader of the first frame never needs
};

std::vector<SampleFile> MakeSampleFiles();
