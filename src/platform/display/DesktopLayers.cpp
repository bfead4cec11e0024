#include "platform/display/DesktopLayers.h"

#include "platform/threads/Mutex.h"

#include <vector>

namespace {

// Its lock is taken before any layer's own.
struct Layers {
  Mutex mutex;
  std::vector<const DesktopLayer*> list PARCHLET_GUARDED_BY(mutex);  // the topmost one last
};

Layers& AllLayers() {
  // Never destroyed: a host's static window may outlive every other static object.
  static Layers& layers = *new Layers;
  return layers;
}

}  // namespace

void AddDesktopLayer(const DesktopLayer& layer) {
  Layers& layers = AllLayers();
  MutexLock lock(layers.mutex);
  layers.list.push_back(&layer);
}

void RemoveDesktopLayer(const DesktopLayer& layer) {
  Layers& layers = AllLayers();
  MutexLock lock(layers.mutex);
  std::erase(layers.list, &layer);
}

void BlendDesktopLayers(const RECT& area, std::uint32_t* pixels) {
  Layers& layers = AllLayers();
  MutexLock lock(layers.mutex);
  for (const DesktopLayer* layer : layers.list) {
    layer->BlendOver(area, pixels);
  }
}
