// main.cpp - parchlet-replay: draws board files through the engine, as a meeting of two, and writes
// the pages as pictures.
#include <unistd.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "Board.h"
#include "Failure.h"
#include "Options.h"
#include "Picture.h"
#include "Progress.h"
#include "Replay.h"

namespace {

constexpr int kDisagreed = 1;
constexpr int kFailed = 2;

void Print(const replay::Tally& tally) {
  constexpr double kMilliseconds = 1000.0;
  std::cout << "marks:           " << tally.marks << '\n'
            << "points:          " << tally.points << '\n'
            << "frames pushed:   " << tally.frames << '\n'
            << "CPU per frame:   " << std::fixed << std::setprecision(3)
            << tally.secondsPerFrame * kMilliseconds << " ms" << std::endl;
}

// Reads and checks everything before it draws anything, so that a mistake leaves no picture behind.
void Run(const replay::Options& options) {
  std::vector<replay::Board> boards;
  for (const std::string& path : options.boards) {
    boards.push_back(replay::ReadBoard(path));
  }
  std::vector<std::string> pictures;
  for (std::size_t page = 0; page < boards.size(); ++page) {
    pictures.push_back(replay::PictureName(options.out, page, boards.size()));
    replay::CheckPicture(pictures.back(), options.boards);
  }
  replay::Replay replay(options.size, options.pace, options.lossySeed);
  {
    replay::Progress progress(std::cerr, isatty(STDERR_FILENO) == 1);
    for (std::size_t page = 0; page < boards.size(); ++page) {
      replay::WritePicture(replay.Draw(boards[page], progress), pictures[page]);
    }
  }
  Print(replay.GetTally());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (const auto options = replay::ParseOptions(argc, argv)) {
      Run(*options);
    }
    return 0;
  } catch (const replay::Disagreement& disagreement) {
    std::cerr << "parchlet-replay: " << disagreement.what() << '\n';
    return kDisagreed;
  } catch (const std::bad_alloc&) {
    std::cerr << "parchlet-replay: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "parchlet-replay: " << error.what() << '\n';
  }
  return kFailed;
}
