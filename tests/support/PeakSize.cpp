#include "PeakSize.h"

#include <fstream>
#include <string>

long PeakSize() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmPeak:") {
  }
  status >> word;
  return std::stol(word) / 1024;
}
