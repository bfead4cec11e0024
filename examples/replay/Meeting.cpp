#include "Meeting.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "Failure.h"

namespace replay {

void RequireEqual(const MemoryFrame& drawn, const MemoryFrame& seen, const std::string& name) {
  if (drawn.width != seen.width || drawn.height != seen.height) {
    throw Disagreement(name + ": the participants' pages have different sizes");
  }
  const auto first = std::mismatch(drawn.pixels.begin(), drawn.pixels.end(), seen.pixels.begin());
  if (first.first == drawn.pixels.end()) {
    return;
  }
  std::size_t count = 0;
  for (std::size_t pixel = 0; pixel < drawn.pixels.size(); ++pixel) {
    count += drawn.pixels[pixel] != seen.pixels[pixel] ? 1 : 0;
  }
  const auto offset = first.first - drawn.pixels.begin();
  throw Disagreement(name + ": the participants' pages differ in " + std::to_string(count) +
                     " pixels, first at " + std::to_string(offset % drawn.width) + ", " +
                     std::to_string(offset / drawn.width));
}

Meeting::Meeting(PageSize size, std::optional<std::uint64_t> lossySeed)
    : drawer(size, {"drawer", "desk"}), viewer(size, {"viewer", "desk"}), network(lossySeed) {}

void Meeting::OpenPage(const std::string& pageId) {
  drawer.OpenPage(pageId);
  viewer.OpenPage(pageId);
}

Participant& Meeting::Drawer() {
  return drawer;
}

void Meeting::RelayDrawing() {
  Relay(drawer.Release());
}

void Meeting::Erase(const std::vector<POINT>& path) {
  Settle();
  if (path.size() == 1) {
    EraseUnder(path);
    return;
  }
  for (std::size_t end = 1; end < path.size(); ++end) {
    EraseUnder({path[end - 1], path[end]});
  }
}

void Meeting::Select(POINT from, POINT to) {
  Settle();
  drawer.Select(from, to);
}

bool Meeting::Drag(const std::vector<POINT>& way) {
  Settle();
  if (!drawer.Drag(way)) {
    return false;
  }
  for (const auto& [id, mark] : drawer.Selected()) {
    Relay(*mark);
  }
  return true;
}

void Meeting::Clear(Clearing clearing) {
  Settle();
  const Identity author = clearing == Clearing::kMine ? drawer.Who() : Identity();
  drawer.Clear(author);
  viewer.Clear(author);
}

MemoryFrame Meeting::ClosePage(const std::string& boardName) {
  // The frames around the selected marks are the drawer's alone.
  drawer.DropSelection();
  Settle();
  MemoryFrame drawn = drawer.CopyFrame();
  RequireEqual(drawn, viewer.CopyFrame(), boardName);
  return drawn;
}

std::uint64_t Meeting::FrameCount() const {
  return drawer.FrameCount() + viewer.FrameCount();
}

void Meeting::Relay(const Annotation& mark) {
  // All of them first: the first echo changes the drawer's mark.
  const std::vector<Fragment> fragments = Split(mark, ++order);
  for (const Fragment& fragment : fragments) {
    network.Send(viewer, fragment);
    network.Send(drawer, fragment);
  }
}

void Meeting::Settle() {
  network.Flush();
  const std::uint64_t drawn = drawer.NextFullFrame();
  const std::uint64_t seen = viewer.NextFullFrame();
  drawer.AwaitFrame(drawn);
  viewer.AwaitFrame(seen);
}

void Meeting::EraseUnder(const std::vector<POINT>& path) {
  for (const std::string& id : drawer.FindErased(path)) {
    // The viewer draws nothing, so that every mark is the drawer's.
    drawer.Erase(drawer.Who().userId, id);
    viewer.EraseFromRemote(drawer.Who().userId, id);
  }
}

}  // namespace replay
