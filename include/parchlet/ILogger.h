// ILogger.h - where the engine's log records go.
#pragma once

#include <string>

#include <parchlet/Platform.h>

// Receives log records. A host derives from it and sets it under the name "SDK" to get the engine's
// records. Each is one line, "[FILE:LINE FUNCTION]MESSAGE". Level 0 is a failure, level 2 the
// construction or destruction of an engine.
class PARCHLET_API ILogger {
 public:
  virtual ~ILogger() = default;

  // Takes one record. Called on the thread that calls the engine, while the engine holds no lock.
  // If it throws, the record is lost and the engine's call goes on.
  virtual void Write(int level, const std::string& line) = 0;

  // Returns the logger of that name, or one that drops its records if none is set. Any thread.
  static ILogger& GetLogerInst(const std::string& name);

  // Sets the logger of that name; null removes it. `logger` is not owned: remove it before you
  // delete it, while no call of an engine is under way. Any thread.
  static void SetLogger(const std::string& name, ILogger* logger);
};
