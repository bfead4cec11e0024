#include <map>
#include <memory>

#include <parchlet/ILogger.h>
#include <parchlet/Mutex.h>

#include "c/Call.h"

namespace {

class CallbackLogger final : public ILogger {
 public:
  CallbackLogger(ParchletLogWriter write, void* context) : write(write), context(context) {}
  void Write(int level, const std::string& line) override { write(context, level, line.c_str()); }

 private:
  ParchletLogWriter write;
  void* context;
};

struct CallbackLoggers {
  Mutex mutex;
  std::map<std::string, std::unique_ptr<CallbackLogger>> byName PARCHLET_GUARDED_BY(mutex);
};

CallbackLoggers& AllLoggers() {
  // Never destroyed, as the loggers that it owns are still set when the process ends.
  static CallbackLoggers& loggers = *new CallbackLoggers;
  return loggers;
}

}  // namespace

const char* ParchletVersion(void) {
  return PARCHLET_VERSION;
}

uint64_t ParchletTickCount(void) {
  return GetTickCount64();
}

int32_t ParchletSetLogger(const char* name, ParchletLogWriter write, void* context) {
  return Guarded([&] {
    const std::string key = Text(name);
    CallbackLoggers& loggers = AllLoggers();
    MutexLock lock(loggers.mutex);
    if (write == nullptr) {
      ILogger::SetLogger(key, nullptr);
      loggers.byName.erase(key);
      return PARCHLET_YES;
    }
    auto logger = std::make_unique<CallbackLogger>(write, context);
    std::unique_ptr<CallbackLogger>& kept = loggers.byName[key];
    ILogger::SetLogger(key, logger.get());
    kept = std::move(logger);
    return PARCHLET_YES;
  });
}
