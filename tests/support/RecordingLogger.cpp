#include "support/RecordingLogger.h"

#include <regex>
#include <utility>

#include <gtest/gtest.h>

void RecordingLogger::Write(int level, const std::string& line) {
  static const std::regex form(R"(\[([^:\]]*):(\d+) ([^\]]*)\]([^]*))");
  std::smatch parts;
  if (!std::regex_match(line, parts, form)) {
    ADD_FAILURE() << "not a record's form: " << line;
    return;
  }
  records.push_back({level, parts[1], std::stoi(parts[2]), parts[3], parts[4]});
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
