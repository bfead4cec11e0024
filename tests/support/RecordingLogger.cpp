#include "support/RecordingLogger.h"

#include <utility>

#include <gtest/gtest.h>

void RecordingLogger::Write(int level, const std::string& line) {
  const std::size_t colon = line.find(':');
  const std::size_t blank = line.find(' ', colon);
  const std::size_t end = line.find(']', blank);
  const bool isWhole = line[0] == '[' && end != std::string::npos;
  const std::string number = isWhole ? line.substr(colon + 1, blank - colon - 1) : "";
  if (number.empty() || number.find_first_not_of("0123456789") != std::string::npos) {
    ADD_FAILURE() << "not a record's form: " << line;
    return;
  }
  records.push_back({level, line.substr(1, colon - 1), std::stoi(number),
                     line.substr(blank + 1, end - blank - 1), line.substr(end + 1)});
}

std::vector<std::string> RecordingLogger::Take() {
  std::vector<std::string> lines;
  for (const LoggedRecord& record : TakeRecords()) {
    lines.push_back(std::to_string(record.level) + " " + record.function + ": " + record.message);
  }
  return lines;
}

std::vector<LoggedRecord> RecordingLogger::TakeRecords() {
  return std::exchange(records, {});
}
