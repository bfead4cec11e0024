#include "replay/Progress.h"

namespace replay {

namespace {

constexpr std::size_t kAll = 100;

}  // namespace

Progress::Progress(std::ostream& stream, bool terminal) : stream(stream), terminal(terminal) {}

Progress::~Progress() {
  if (lineOpen) {
    stream << '\n' << std::flush;
  }
}

void Progress::Begin(const std::string& newTitle, std::size_t newTotal) {
  title = newTitle;
  total = newTotal;
  done = 0;
  Show(0);
}

void Progress::Step() {
  ++done;
  // The last percent is the wait for the frame that shows the whole page.
  const std::size_t percent = done * (kAll - 1) / total;
  constexpr std::size_t kQuarter = 25;
  const std::size_t grain = terminal ? 1 : kQuarter;
  if (percent / grain != shown / grain) {
    Show(percent);
  }
}

void Progress::End() {
  Show(kAll);
  if (lineOpen) {
    stream << '\n' << std::flush;
    lineOpen = false;
  }
}

void Progress::Show(std::size_t percent) {
  shown = percent;
  if (!terminal) {
    stream << title << ": " << percent << " %\n" << std::flush;
    return;
  }
  constexpr std::size_t kBarLength = 30;
  const std::size_t filled = percent * kBarLength / kAll;
  // Return to the start of the line, and erase what a longer text left.
  stream << "\r\x1b[K" << title << "  [" << std::string(filled, '#')
         << std::string(kBarLength - filled, '.') << "] " << percent << " %" << std::flush;
  lineOpen = true;
}

}  // namespace replay
