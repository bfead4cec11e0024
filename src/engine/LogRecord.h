#pragma once

#include <sstream>
#include <string>

// One line of log, composed where it is made and handed to the logger of `loggerName` when it goes
// out of scope: "[FILE:LINE FUNCTION]" and what was appended to Text().
class LogRecord {
 public:
  // `tag` stands in brackets before the header unless it is empty. A null tag, file or function
  // leaves the header out. `file` is cut to its base name.
  LogRecord(int level, const char* tag, const char* file, int line, const char* function,
            const std::string& loggerName);
  // Emits the record; what the logger throws is dropped, as logging must not change what a call
  // does.
  ~LogRecord();
  LogRecord(const LogRecord&) = delete;
  LogRecord& operator=(const LogRecord&) = delete;

  std::ostringstream& Text() { return text; }

 private:
  std::ostringstream text;
  int level;
  std::string loggerName;
};

inline constexpr int kLogFailure = 0;
inline constexpr int kLogLifetime = 2;

// A record of the engine. Append to it: PARCHLET_LOG(...) << "text" << id.c_str().
#define PARCHLET_LOG(level, function) \
  LogRecord((level), "", __FILE__, __LINE__, (function), "SDK").Text()
