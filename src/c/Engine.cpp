#include <map>
#include <memory>

#include <parchlet/ILogger.h>
#include <parchlet/Utils.h>
#include "platform/threads/Mutex.h"

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
  // Never destroyed: its loggers may still be in use while the process exits.
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
      return;
    }
    auto logger = std::make_unique<CallbackLogger>(write, context);
    std::unique_ptr<CallbackLogger>& kept = loggers.byName[key];
    ILogger::SetLogger(key, logger.get());
    kept = std::move(logger);
  });
}

ParchletTexts* ParchletTextsNew(void) {
  return new (std::nothrow) ParchletTexts;
}

void ParchletTextsFree(ParchletTexts* texts) {
  delete texts;
}

size_t ParchletTextsCount(const ParchletTexts* texts) {
  return texts != nullptr ? texts->list.size() : 0;
}

const char* ParchletTextsAt(const ParchletTexts* texts, size_t index) {
  return index < ParchletTextsCount(texts) ? texts->list[index].c_str() : nullptr;
}

int32_t ParchletGenerateGuid(ParchletTexts* guid) {
  return Guarded([&] { return ReplaceIfAny(guid, Utils::GenerateGuid()); }, {guid});
}

ParchletEngine* ParchletEngineNew(void) {
  return OrNull([] { return new ParchletEngine; });
}

void ParchletEngineFree(ParchletEngine* engine) {
  delete engine;
}

int32_t ParchletInit(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { return parchlet.Init(); });
}

int32_t ParchletDestroy(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { parchlet.Destroy(); });
}

int32_t ParchletSetPen(ParchletEngine* engine, uint32_t color, uint32_t width) {
  return OnEngine(engine, [&](Parchlet& parchlet) { parchlet.SetPen(color, width); });
}

int32_t ParchletSetAnnotationType(ParchletEngine* engine, int32_t type, int32_t subType) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.SetAnnotationType(static_cast<AnnotationType>(type),
                               static_cast<AnnotationSubType>(subType));
  });
}

int32_t ParchletSetUserInfo(ParchletEngine* engine, const char* userId, const char* userSubId,
                            const char* nickname) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.SetUserInfo(Text(userId), Text(userSubId), Text(nickname));
  });
}

int32_t ParchletSetPageBackgroundColor(ParchletEngine* engine, uint32_t color) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.SetPageBackgroundColor(color); });
}

int32_t ParchletSetZoom(ParchletEngine* engine, const char* docId, float zoom, int32_t x,
                        int32_t y) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.SetZoom(Text(docId), zoom, x, y); });
}

int32_t ParchletSetPageSize(ParchletEngine* engine, const char* docId, const char* pageId,
                            int32_t width, int32_t height) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SetPageSize(Text(docId), Text(pageId), width, height);
  });
}

int32_t ParchletSetNicknameTip(ParchletEngine* engine, uint32_t textColor, uint32_t fontSize,
                               const char* fontName, uint32_t boxColor) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SetNicknameTip(textColor, fontSize, Text(fontName), boxColor);
  });
}
