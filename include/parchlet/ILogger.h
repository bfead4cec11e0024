// ILogger.h - where the engine's log records go.
#pragma once

#include <string>

#include <parchlet/Platform.h>

// A host derives from it and sets it under the name "SDK" to receive the engine's records: one line
// each, "[FILE:LINE FUNCTION]MESSAGE", level 0 for failures, level 2 for construction and
// destruction.
class PARCHLET_API ILogger {
 public:
  virtual ~ILogger() = default;

  // Takes one record. Called on the thread that makes the engine call; what it throws is dropped.
  virtual void Write(int level, const std::string& line) = 0;

  // The logger of that name; a silent one when none is set. Never fails. Any thread.
  static ILogger& GetLogerInst(const std::string& name);

  // Sets the logger of that name; null takes it away again. Not owned: it must outlive its last
  // use, so take it away before deleting it, while no engine call is under way. Any thread.
  static void SetLogger(const std::string& name, ILogger* logger);
};
