#include <parchlet/ILogger.h>

#include <map>

#include "platform/threads/Mutex.h"

namespace {

class SilentLogger final : public ILogger {
 public:
  void Write(int /*level*/, const std::string& /*line*/) override {}
};

struct Loggers {
  Mutex mutex;
  std::map<std::string, ILogger*> byName PARCHLET_GUARDED_BY(mutex);
  SilentLogger silent;
};

Loggers& AllLoggers() {
  // Never destroyed: an engine that is a static object of the host logs its own destruction.
  static Loggers& loggers = *new Loggers;
  return loggers;
}

}  // namespace

ILogger& ILogger::GetLogerInst(const std::string& name) {
  Loggers& loggers = AllLoggers();
  MutexLock lock(loggers.mutex);
  const auto found = loggers.byName.find(name);
  if (found == loggers.byName.end()) {
    return loggers.silent;
  }
  return *found->second;
}

void ILogger::SetLogger(const std::string& name, ILogger* logger) {
  Loggers& loggers = AllLoggers();
  MutexLock lock(loggers.mutex);
  if (logger == nullptr) {
    loggers.byName.erase(name);
  } else {
    loggers.byName[name] = logger;
  }
}
