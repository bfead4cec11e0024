// Progress.h - shows how far the replay is.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace replay {

// On a terminal one line that is redrawn; elsewhere a plain line for every quarter of a page. One
// thread.
class Progress {
 public:
  // The stream must outlive this; `terminal` says whether it is one.
  Progress(std::ostream& stream, bool terminal);
  // Ends a line that is still being redrawn, so that the next output starts on its own line.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // Starts a page whose drawing takes `newTotal` steps.
  void Begin(const std::string& newTitle, std::size_t newTotal);
  // One step is done.
  void Step();
  // The page is done, however many steps it had.
  void End();

 private:
  void Show(std::size_t percent);

  std::ostream& stream;
  bool terminal;
  bool lineOpen = false;
  std::string title;
  std::size_t total = 0;
  std::size_t done = 0;
  std::size_t shown = 0;  // percent
};

}  // namespace replay
