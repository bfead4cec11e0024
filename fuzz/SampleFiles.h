// One small file of each kind, for the corpus, which the tests of damage start from as well.
#pragma once

#include <string>
#include <vector>

#include "ImageFiles.h"

struct SampleFile {
  std::string name;
  std::string format;  // png, jpeg, gif, bmp
  Bytes bytes;
};

std::vector<SampleFile> MakeSampleFiles();
