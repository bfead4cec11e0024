// main.cpp - parchlet-replay: draws board files through the engine, as a meeting, and writes the
// pages as pictures.
#include <unistd.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "replay/Board.h"
#include "replay/Meeting.h"
#include "replay/Options.h"
#include "replay/PageFiles.h"
#include "replay/Progress.h"
#include "replay/Replay.h"

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

// Returns the names of the files that are read.
std::vector<std::string> InputsOf(const std::vector<replay::Board>& boards) {
  std::vector<std::string> inputs;
  for (const replay::Board& board : boards) {
    inputs.push_back(board.name);
    inputs.insert(inputs.end(), board.pictureFiles.begin(), board.pictureFiles.end());
  }
  return inputs;
}

// Reads and checks everything before drawing anything, so that a mistake leaves no picture behind.
void Run(const replay::Options& options) {
  std::vector<replay::Board> boards;
  for (const std::string& path : options.boards) {
    boards.push_back(replay::ReadBoard(path));
  }
  const std::vector<replay::PageFiles> files = replay::NamePageFiles(options, InputsOf(boards));
  replay::Replay replay(options, replay::AuthorsOf(boards));
  {
    replay::Progress progress(std::cerr, isatty(STDERR_FILENO) == 1);
    for (std::size_t page = 0; page < boards.size(); ++page) {
      replay::WritePicture(replay.Draw(boards[page], progress), files[page].picture);
      if (!files[page].exported.empty()) {
        replay.SavePage(files[page].exported);
      }
    }
  }
  if (!options.exportFolder.empty() && options.exportFormat.empty()) {
    replay.SaveDocument(options.exportFolder);
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
