// CpuTime.h - the CPU time that the other threads of this process use.
#pragma once

namespace replay {

// Measures from its construction on. Belongs to the thread that made it: that thread's own time is
// left out.
class OtherThreadsCpuTime {
 public:
  OtherThreadsCpuTime();

  double Seconds() const;

 private:
  double start;
};

}  // namespace replay
