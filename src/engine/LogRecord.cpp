#include "engine/LogRecord.h"

#include <parchlet/ILogger.h>

#include <locale>
#include <string_view>

namespace {

std::string_view BaseName(std::string_view file) {
  const std::size_t separator = file.find_last_of("/\\");
  return separator == std::string_view::npos ? file : file.substr(separator + 1);
}

}  // namespace

LogRecord::LogRecord(int level, const char* tag, const char* file, int line, const char* function,
                     const std::string& loggerName)
    : level(level), loggerName(loggerName) {
  // In the host's locale, line numbers could get digit separators.
  text.imbue(std::locale::classic());
  if (tag == nullptr || file == nullptr || function == nullptr) {
    return;
  }
  if (*tag != '\0') {
    text << '[' << tag << ']';
  }
  text << '[' << BaseName(file) << ':' << line << ' ' << function << ']';
}

LogRecord::~LogRecord() {
  try {
    ILogger::GetLogerInst(loggerName).Write(level, text.str());
  } catch (...) {
    return;
  }
}
