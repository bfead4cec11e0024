#pragma once

#include <string>
#include <vector>

#include <parchlet/ILogger.h>

// One record taken apart: "[file:line function]message".
struct LoggedRecord {
  int level = 0;
  std::string file;
  int line = 0;
  std::string function;
  std::string message;
};

// Receives the engine's records for as long as it lives. The thread of the engine calls.
class RecordingLogger final : public ILogger {
 public:
  RecordingLogger() { SetLogger("SDK", this); }
  ~RecordingLogger() override { SetLogger("SDK", nullptr); }
  RecordingLogger(const RecordingLogger&) = delete;
  RecordingLogger& operator=(const RecordingLogger&) = delete;

  void Write(int level, const std::string& line) override;

  // The records since the last call, each as "LEVEL FUNCTION: MESSAGE".
  std::vector<std::string> Take();
  // The same, whole.
  std::vector<LoggedRecord> TakeRecords();

 private:
  std::vector<LoggedRecord> records;
};
