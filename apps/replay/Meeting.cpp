#include "replay/Meeting.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <parchlet/Fragments.h>

namespace replay {

namespace {

constexpr const char* kDesk = "desk";  // nobody has a second device

}  // namespace

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

Meeting::Meeting(apps::PageSize size, const std::vector<std::string>& authors,
                 std::optional<std::uint64_t> lossySeed)
    : network(lossySeed) {
  participants.emplace_back(size, Identity{"drawer", kDesk, ""});
  participants.emplace_back(size, Identity{"viewer", kDesk, ""});
  for (const std::string& author : authors) {
    participants.emplace_back(size, Identity{"author " + author, kDesk, author});
  }
}

void Meeting::ShowNames(unsigned int size) {
  nameSize = size;
  for (Participant& participant : participants) {
    participant.ShowNames(nameSize, true);
  }
}

void Meeting::OpenPage(const std::string& pageId) {
  for (Participant& participant : participants) {
    participant.OpenPage(pageId);
  }
}

Participant& Meeting::Author(const std::string& name) {
  return *std::find_if(participants.begin(), participants.end(),
                       [&](const Participant& one) { return one.Who().nickname == name; });
}

void Meeting::RelayDrawing(Participant& author) {
  Relay(author.Release(), nullptr);
}

void Meeting::Place(Participant& author, const PictureSource& picture,
                    const std::vector<POINT>& corners) {
  Relay(author.Place(picture.file, corners), picture.bytes);
}

void Meeting::SetBackground(const PictureSource& picture) {
  for (Participant& participant : participants) {
    if (&participant == &Drawer()) {
      participant.SetBackground(picture.file);
    } else {
      participant.SetBackgroundFromRemote(*picture.bytes);
    }
  }
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
  Drawer().Select(from, to);
}

bool Meeting::Drag(const std::vector<POINT>& way) {
  Settle();
  if (!Drawer().Drag(way)) {
    return false;
  }
  for (const auto& [id, mark] : Drawer().Selected()) {
    Relay(*mark, nullptr);
  }
  return true;
}

void Meeting::Clear(Clearing clearing) {
  Settle();
  const Identity author = clearing == Clearing::kMine ? Drawer().Who() : Identity();
  for (Participant& participant : participants) {
    participant.Clear(author);
  }
}

void Meeting::Settle() {
  network.Flush();
  std::vector<std::uint64_t> frames;
  for (const Participant& participant : participants) {
    frames.push_back(participant.NextFullFrame());
  }
  for (std::size_t one = 0; one < participants.size(); ++one) {
    participants[one].AwaitFrame(frames[one]);
  }
}

MemoryFrame Meeting::ClosePage(const std::string& boardName) {
  // Only the drawer sees the frames around selected marks.
  Drawer().DropSelection();
  for (Participant& participant : participants) {
    if (nameSize > 0) {
      participant.ShowNames(nameSize, false);
    }
  }
  Settle();
  MemoryFrame drawn = Drawer().CopyFrame();
  for (const Participant& participant : participants) {
    RequireEqual(drawn, participant.CopyFrame(), boardName);
  }
  if (nameSize == 0) {
    return drawn;
  }
  ShowNames(nameSize);
  Settle();
  return Drawer().CopyFrame();
}

void Meeting::SavePage(const std::string& path) {
  Drawer().SavePage(path);
}

void Meeting::SaveDocument(const std::string& folder) {
  Drawer().SaveDocument(folder);
}

std::uint64_t Meeting::FrameCount() const {
  std::uint64_t count = 0;
  for (const Participant& participant : participants) {
    count += participant.FrameCount();
  }
  return count;
}

Participant& Meeting::Drawer() {
  return participants.front();
}

void Meeting::Relay(const Annotation& mark, const PictureBytes& picture) {
  // Split it before sending: the first echo changes the mark.
  for (std::unique_ptr<Annotation>& part : parchlet::SplitMark(mark, ++order)) {
    const std::shared_ptr<const Annotation> fragment = std::move(part);
    // In reverse order, so that in a good network the drawer's echo comes last.
    for (auto to = participants.rbegin(); to != participants.rend(); ++to) {
      network.Send(*to, {fragment, picture});
    }
  }
}

void Meeting::EraseUnder(const std::vector<POINT>& path) {
  for (const std::string& id : Drawer().FindErased(path)) {
    const auto author = std::find_if(
        participants.begin(), participants.end(),
        [&](const Participant& one) { return Drawer().HasMark(one.Who().userId, id); });
    Drawer().Erase(author->Who().userId, id);
    for (Participant& participant : participants) {
      if (&participant != &Drawer()) {
        participant.EraseFromRemote(author->Who().userId, id);
      }
    }
  }
}

}  // namespace replay
