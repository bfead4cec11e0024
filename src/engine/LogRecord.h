#pragma once

#include <sstream>
#include <string>

// One log record: "[FILE:LINE FUNCTION]" and what is appended to Text(). The destructor writes it
// to the logger named `loggerName`. Lives on one thread's stack.
class LogRecord {
 public:
  // A non-empty `tag` is put in brackets before the header. If tag, file or function is null, there
  // is no header. Only the base name of `file` is written.
  LogRecord(int level, const char* tag, const char* file, int line, const char* function,
            const std::string& loggerName);
  // Writes the record. Ignores what the logger throws: logging must not change what a call does.
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

// Makes a record of the engine, to append to: PARCHLET_LOG(...) << "text" << id.c_str().
#define PARCHLET_LOG(level, function) \
  LogRecord((level), "", __FILE__, __LINE__, (function), "SDK").Text()
